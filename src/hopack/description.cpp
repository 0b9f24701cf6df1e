// Reads a package description (TOML) into a PackageDescription. Every entry is checked here as far
// as it can be on its own: types, unknown keys, identifiers, text lengths against the data file's
// fields, folder and file names, the compile date, and that each source file exists. Checks that
// need the whole package (duplicates, shortcut targets) belong to the layout.
#include "hopack.h"

#include <fstream>
#include <initializer_list>
#include <sstream>

#include <toml++/toml.h>

namespace {

struct Context {
    const fs::path& path;
    Diagnostics& diag;
    void Error(const toml::node& node, const std::string& entry, const std::string& text) const
    {
        diag.error(path.string() + ":" + std::to_string(node.source().begin.line) + ": " + entry +
                   ": " + text);
    }
};

void CheckKeys(const toml::table& table, std::initializer_list<const char*> allowed,
               const std::string& entry, const Context& ctx)
{
    for (auto&& [key, node] : table) {
        bool known = false;
        for (const char* name : allowed) known = known || key.str() == name;
        if (!known) ctx.Error(node, entry, "unknown key \"" + std::string(key.str()) + "\"");
    }
}

// Reads a text of at most fieldSize - 1 ANSI characters (the field keeps its terminator).
bool GetText(const toml::table& table, const char* key, bool required, std::size_t fieldSize,
             std::string& out, const std::string& entry, const Context& ctx)
{
    const toml::node* node = table.get(key);
    if (!node) {
        if (required) ctx.Error(table, entry, std::string("\"") + key + "\" is missing");
        return false;
    }
    const auto* text = node->as_string();
    if (!text) {
        ctx.Error(*node, entry, std::string("\"") + key + "\" must be a text");
        return false;
    }
    if (!Utf8ToAnsi(text->get(), out)) {
        ctx.Error(*node, entry, std::string("\"") + key + "\" holds a character that has no ANSI form");
        return false;
    }
    if (out.size() > fieldSize - 1) {
        ctx.Error(*node, entry, std::string("\"") + key + "\" is " + std::to_string(out.size()) +
                                    " characters long; at most " + std::to_string(fieldSize - 1) +
                                    " fit");
        return false;
    }
    return true;
}

bool GetNumber(const toml::table& table, const char* key, std::uint32_t& out,
               const std::string& entry, const Context& ctx)
{
    const toml::node* node = table.get(key);
    if (!node) {
        ctx.Error(table, entry, std::string("\"") + key + "\" is missing");
        return false;
    }
    const auto* number = node->as_integer();
    if (!number || number->get() < 0 || number->get() > 0xFFFFFFFFll) {
        ctx.Error(*node, entry, std::string("\"") + key + "\" must be a number from 0 to 4294967295");
        return false;
    }
    out = static_cast<std::uint32_t>(number->get());
    return true;
}

void CheckWith(const std::string& problem, const toml::node& node, const std::string& entry,
               const char* what, const Context& ctx)
{
    if (!problem.empty()) ctx.Error(node, entry, std::string(what) + " " + problem);
}

void ReadProduct(const toml::table& root, PackageDescription& d, const Context& ctx)
{
    const toml::table* product = root["product"].as_table();
    if (!product) {
        ctx.diag.error(ctx.path.string() + ": the table [product] is missing");
        return;
    }
    const std::string entry = "[product]";
    CheckKeys(*product, {"name", "label", "compile_date", "sign_command", "sign_product"}, entry, ctx);
    if (GetText(*product, "name", true, sizeof(SetupDataHeader::productName), d.productName, entry, ctx)) {
        // The name is the programs-menu group folder: one plain folder name, which the setup
        // program also insists on before it deletes a group of that name.
        const std::string problem = CheckFileName(d.productName);
        CheckWith(problem, *product->get("name"), entry, "the product name", ctx);
    }
    if (GetText(*product, "label", true, sizeof(SetupDataHeader::productLabel), d.productLabel, entry, ctx))
        CheckWith(CheckPlainText(d.productLabel), *product->get("label"), entry, "the label", ctx);

    const toml::node* date = product->get("compile_date");
    if (date && date->is_date()) {
        // An unquoted TOML date is taken as well as a text.
        const toml::date value = date->as_date()->get();
        std::ostringstream text;
        text.fill('0');
        text.width(4); text << value.year << '-';
        text.width(2); text << int(value.month) << '-';
        text.width(2); text << int(value.day);
        d.compileDate = text.str();
        CheckWith(CheckCompileDate(d.compileDate), *date, entry, "compile_date", ctx);
    } else if (GetText(*product, "compile_date", true, sizeof(SetupDataHeader::compileDate),
                       d.compileDate, entry, ctx)) {
        CheckWith(CheckCompileDate(d.compileDate), *date, entry, "compile_date", ctx);
    }

    // The signing command is the release engineer's own command line, kept as written (UTF-8).
    if (const toml::node* sign = product->get("sign_command")) {
        if (!sign->is_string())
            ctx.Error(*sign, entry, "\"sign_command\" must be a text");
        else if (!CheckSignCommand(sign->as_string()->get()).empty())
            ctx.Error(*sign, entry, "sign_command " + CheckSignCommand(sign->as_string()->get()));
        else
            d.signCommand = sign->as_string()->get();
    }
    if (const toml::node* signProduct = product->get("sign_product")) {
        if (!signProduct->is_boolean())
            ctx.Error(*signProduct, entry, "\"sign_product\" must be true or false");
        else
            d.signProduct = signProduct->as_boolean()->get();
    }
}

void ReadFile(const toml::table& table, std::size_t index, PackageDescription& d, const Context& ctx)
{
    DescribedFile file;
    file.origin = "file " + std::to_string(index);
    std::string source;
    const bool hasSource = table.get("source") != nullptr;
    if (hasSource && GetText(table, "source", true, 4096, source, file.origin, ctx))
        file.origin += " (\"" + source + "\")";
    CheckKeys(table, {"source", "directory", "subfolder", "name"}, file.origin, ctx);
    const bool idOk = GetNumber(table, "directory", file.directoryId, file.origin, ctx);
    const RecordKind kind = KindOfDirectoryId(file.directoryId);
    if (idOk && kind == RecordKind::Unknown)
        ctx.Error(table, file.origin, "unknown directory identifier " + std::to_string(file.directoryId));
    if (idOk && kind != RecordKind::Unknown) {
        if (CarriesFile(kind) && !hasSource)
            ctx.Error(table, file.origin, "\"source\" is missing: directory identifier " +
                                              std::to_string(file.directoryId) + " installs a file");
        if (!CarriesFile(kind) && hasSource)
            ctx.Error(table, file.origin, std::string("a ") + KindName(kind) +
                                              " record carries no file; remove \"source\"");
    }
    if (hasSource && source.empty() && table.get("source")->is_string())
        ctx.Error(table, file.origin, "\"source\" is empty");
    if (hasSource && !source.empty()) {
        file.source = d.path.parent_path() / fs::u8path(source);
        std::error_code ec;
        if (!fs::exists(file.source, ec))
            ctx.Error(table, file.origin, "source file " + file.source.string() + " not found");
        else if (!fs::is_regular_file(file.source, ec))
            ctx.Error(table, file.origin, "source " + file.source.string() + " is not a regular file");
    }
    if (table.get("name")) {
        if (GetText(table, "name", true, sizeof(FileRecord::fileName), file.fileName, file.origin, ctx))
            CheckWith(CheckFileName(file.fileName), *table.get("name"), file.origin, "the name", ctx);
    } else if (!source.empty()) {
        // The target name defaults to the source's own name.
        std::string name;
        if (!Utf8ToAnsi(fs::u8path(source).filename().u8string(), name))
            ctx.Error(table, file.origin, "the source's name has no ANSI form; give \"name\"");
        else if (name.size() > sizeof(FileRecord::fileName) - 1)
            ctx.Error(table, file.origin, "the source's name is longer than 63 characters; give \"name\"");
        else
            CheckWith(CheckFileName(name), table, file.origin, "the source's name", ctx);
        file.fileName = name;
    } else {
        ctx.Error(table, file.origin, "\"name\" is missing");
    }
    if (GetText(table, "subfolder", false, sizeof(FileRecord::subFolder), file.subFolder, file.origin, ctx))
        CheckWith(CheckRelativeFolder(file.subFolder), *table.get("subfolder"), file.origin,
                  "the subfolder", ctx);
    d.files.push_back(file);
}

void ReadShortcut(const toml::table& table, std::size_t index, PackageDescription& d,
                  const Context& ctx)
{
    DescribedShortcut shortcut;
    shortcut.origin = "shortcut " + std::to_string(index);
    if (GetText(table, "name", true, sizeof(ShortcutRecord::name), shortcut.name, shortcut.origin, ctx)) {
        CheckWith(CheckFileName(shortcut.name), *table.get("name"), shortcut.origin, "the name", ctx);
        shortcut.origin += " (\"" + shortcut.name + "\")";
    }
    CheckKeys(table, {"target", "icon_directory", "icon", "name", "arguments"}, shortcut.origin, ctx);
    const toml::node* target = table.get("target");
    if (!target) {
        ctx.Error(table, shortcut.origin, "\"target\" is missing");
    } else if (const auto* number = target->as_integer()) {
        if (number->get() < 0)
            ctx.Error(*target, shortcut.origin, "\"target\" must not be negative");
        shortcut.targetByIndex = true;
        shortcut.targetIndex = static_cast<std::size_t>(number->get() < 0 ? 0 : number->get());
    } else if (!target->is_string()) {
        ctx.Error(*target, shortcut.origin, "\"target\" must be a file's index or its name");
    } else if (!Utf8ToAnsi(target->as_string()->get(), shortcut.targetName)) {
        ctx.Error(*target, shortcut.origin, "\"target\" holds a character that has no ANSI form");
    }
    const bool iconDir = table.get("icon_directory") != nullptr;
    const bool iconPath = table.get("icon") != nullptr;
    if (iconDir != iconPath)
        ctx.Error(table, shortcut.origin, "give both \"icon_directory\" and \"icon\", or neither");
    if (iconDir && iconPath) {
        shortcut.iconGiven = true;
        if (GetNumber(table, "icon_directory", shortcut.iconDirectoryId, shortcut.origin, ctx) &&
            !IsIconDirectoryId(shortcut.iconDirectoryId))
            ctx.Error(*table.get("icon_directory"), shortcut.origin,
                      std::to_string(shortcut.iconDirectoryId) + " is not an allowed icon place");
        if (GetText(table, "icon", true, sizeof(ShortcutRecord::iconPath), shortcut.iconPath,
                    shortcut.origin, ctx)) {
            const std::string problem =
                shortcut.iconPath.empty() ? "is empty" : CheckRelativeFolder(shortcut.iconPath);
            CheckWith(problem, *table.get("icon"), shortcut.origin, "the icon path", ctx);
        }
    }
    if (GetText(table, "arguments", false, sizeof(ShortcutRecord::arguments), shortcut.arguments,
                shortcut.origin, ctx))
        CheckWith(CheckPlainText(shortcut.arguments), *table.get("arguments"), shortcut.origin,
                  "the arguments", ctx);
    d.shortcuts.push_back(shortcut);
}

// Walks an optional array of tables ([[file]] or [[shortcut]]).
template <typename ReadOne>
void ReadArray(const toml::table& root, const char* key, PackageDescription& d, const Context& ctx,
               ReadOne readOne)
{
    const toml::node* node = root.get(key);
    if (!node) return;
    const toml::array* array = node->as_array();
    if (!array) {
        ctx.Error(*node, std::string("[[") + key + "]]", std::string("must be written as [[") + key + "]] tables");
        return;
    }
    for (std::size_t i = 0; i < array->size(); ++i) {
        const toml::table* table = (*array)[i].as_table();
        if (table) readOne(*table, i, d, ctx);
        else ctx.Error((*array)[i], std::string(key) + " " + std::to_string(i), "must be a table");
    }
}

} // namespace

bool ReadDescription(const fs::path& path, PackageDescription& description, Diagnostics& diag)
{
    description = PackageDescription{};
    description.path = path;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        diag.error(path.string() + ": cannot open the description");
        return false;
    }
    std::ostringstream text;
    text << in.rdbuf();
    const std::string source = path.string();
    toml::parse_result parsed = toml::parse(text.str(), std::string_view(source));
    if (!parsed) {
        const auto& e = parsed.error();
        diag.error(source + ":" + std::to_string(e.source().begin.line) + ":" +
                   std::to_string(e.source().begin.column) + ": " + std::string(e.description()));
        return false;
    }
    const toml::table& root = parsed.table();
    const Context ctx{path, diag};
    CheckKeys(root, {"product", "file", "shortcut"}, "top level", ctx);
    ReadProduct(root, description, ctx);
    ReadArray(root, "file", description, ctx, ReadFile);
    ReadArray(root, "shortcut", description, ctx, ReadShortcut);
    return diag.ok();
}
