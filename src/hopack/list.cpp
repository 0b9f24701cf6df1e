// "hopack list DIR": shows what a distribution holds, as the setup program will read it, and
// checks that every member a record needs is there with the size its record gives.
#include "hopack.h"

#include <cstring>

#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <ostream>

namespace {

std::string Format(const char* format, ...)
{
    char line[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(line, sizeof(line), format, args);
    va_end(args);
    return line;
}

std::string OrDash(const std::string& text) { return text.empty() ? "-" : text; }

// A text the setup program hands to its file and link steps, checked with the same name rules it
// applies: one bad text makes it refuse the whole data file, so list says which and why.
void CheckName(const std::string& where, const char* field, std::size_t size, bool folder, Diagnostics& diag)
{
    if (!std::memchr(field, '\0', size)) {
        diag.error(where + " has no terminator; the setup program refuses this data file");
        return;
    }
    const std::string text = FieldText(field, size);
    std::string_view part;
    const char* problem = folder ? relativeFolderProblem(text, &part) : fileNameProblem(text);
    if (problem)
        diag.error(where + " \"" + text + "\" " + problem + "; the setup program refuses this data file");
}

// Member state of a record: its name, "-" when it needs none, or a problem.
std::string CheckMember(const fs::path& dir, std::size_t index, const FileRecord& r,
                        std::uint64_t dataFileSize, Diagnostics& diag)
{
    const RecordKind kind = KindOfDirectoryId(r.directoryId);
    if (kind == RecordKind::Unknown) {
        diag.error("record " + std::to_string(index) + ": unknown directory identifier " +
                   std::to_string(r.directoryId));
        return "-";
    }
    if (!CarriesFile(kind)) return "-";
    const std::string name = MemberName(index);
    std::error_code ec;
    const std::uint64_t size = index == 0 ? dataFileSize : fs::file_size(dir / name, ec);
    if (ec) {
        diag.error("record " + std::to_string(index) + ": member " + name + " is missing");
        return name + " MISSING";
    }
    if (size != r.transferSize) {
        diag.error("record " + std::to_string(index) + ": member " + name + " holds " +
                   std::to_string(size) + " bytes, the record says " + std::to_string(r.transferSize));
        return name + " WRONG SIZE";
    }
    return name;
}

void ListFiles(const fs::path& dir, const DataFileContents& c, std::uint64_t dataFileSize,
               std::ostream& out, Diagnostics& diag)
{
    out << "\nFiles\n"
        << Format("%5s  %5s  %-16s  %12s  %12s  %-10s  %-14s  %-20s  %s\n", "Index", "Id", "Kind",
                  "Size", "Transfer", "Member", "Place", "Sub-folder", "Name");
    for (std::size_t i = 0; i < c.files.size(); ++i) {
        const FileRecord& r = c.files[i];
        const std::string member = CheckMember(dir, i, r, dataFileSize, diag);
        CheckName("record " + std::to_string(i) + ": the name", r.fileName, sizeof(r.fileName), false, diag);
        CheckName("record " + std::to_string(i) + ": the sub-folder", r.subFolder, sizeof(r.subFolder), true, diag);
        out << Format("%5zu  %5u  %-16s  %12llu  %12llu  %-10s  %-14s  %-20s  %s\n", i,
                      unsigned(r.directoryId), KindName(KindOfDirectoryId(r.directoryId)),
                      static_cast<unsigned long long>(r.size),
                      static_cast<unsigned long long>(r.transferSize), member.c_str(),
                      PlaceName(r.directoryId).c_str(),
                      OrDash(FieldText(r.subFolder, sizeof(r.subFolder))).c_str(),
                      FieldText(r.fileName, sizeof(r.fileName)).c_str());
    }
}

void ListShortcuts(const DataFileContents& c, std::ostream& out, Diagnostics& diag)
{
    out << "\nShortcuts\n"
        << Format("%5s  %-24s  %-20s  %-24s  %-24s  %s\n", "Index", "Target", "Icon place",
                  "Icon path", "Name", "Arguments");
    for (std::size_t i = 0; i < c.shortcuts.size(); ++i) {
        const ShortcutRecord& s = c.shortcuts[i];
        CheckName("shortcut " + std::to_string(i) + ": the name", s.name, sizeof(s.name), false, diag);
        std::string target = std::to_string(s.fileIndex);
        if (s.fileIndex < c.files.size()) {
            const FileRecord& r = c.files[s.fileIndex];
            target += " " + FieldText(r.fileName, sizeof(r.fileName));
            if (!CarriesFile(KindOfDirectoryId(r.directoryId)))
                diag.error("shortcut " + std::to_string(i) + ": its target, record " +
                           std::to_string(s.fileIndex) + ", is not a file");
        } else {
            diag.error("shortcut " + std::to_string(i) + ": target record " +
                       std::to_string(s.fileIndex) + " does not exist");
        }
        if (!IsIconDirectoryId(s.iconDirectoryId))
            diag.error("shortcut " + std::to_string(i) + ": icon place " +
                       std::to_string(s.iconDirectoryId) + " is not allowed; the shortcut is not made");
        const std::string place = std::to_string(s.iconDirectoryId) + " " + PlaceName(s.iconDirectoryId);
        out << Format("%5zu  %-24s  %-20s  %-24s  %-24s  %s\n", i, target.c_str(), place.c_str(),
                      FieldText(s.iconPath, sizeof(s.iconPath)).c_str(),
                      FieldText(s.name, sizeof(s.name)).c_str(),
                      OrDash(FieldText(s.arguments, sizeof(s.arguments))).c_str());
    }
}

} // namespace

int ListDistribution(const fs::path& dir, std::ostream& out, Diagnostics& diag)
{
    const fs::path dataPath = dir / kDataMemberName;
    std::ifstream in(dataPath, std::ios::binary);
    if (!in) {
        diag.error(dataPath.string() + ": cannot open the data file");
        return 1;
    }
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                          std::istreambuf_iterator<char>());
    DataFileContents c;
    std::string problem;
    if (!DecodeDataFile(bytes, c, problem)) {
        diag.error(dataPath.string() + ": " + problem);
        return 1;
    }
    const SetupDataHeader& h = c.header;
    out << "Distribution   " << dir.string() << "\n"
        << "Magic          " << FieldText(h.magic, sizeof(h.magic)) << "\n"
        << "Compile date   " << FieldText(h.compileDate, sizeof(h.compileDate)) << "\n"
        << "Product name   " << FieldText(h.productName, sizeof(h.productName)) << "\n"
        << "Product label  " << FieldText(h.productLabel, sizeof(h.productLabel)) << "\n"
        << "Files          " << h.fileCount << "\n"
        << "Shortcuts      " << h.shortcutCount << "\n";
    CheckName("the product name", h.productName, sizeof(h.productName), false, diag);
    ListFiles(dir, c, bytes.size(), out, diag);
    ListShortcuts(c, out, diag);
    WarnIgnoredBeforeLast(c.files, diag);
    return diag.ok() ? 0 : 1;
}
