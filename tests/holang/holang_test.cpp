// The contract of both language modules, holang.dll (English) and the German one copied here as
// holang_de.dll, each loaded and read by export name. The German module matches the English one
// entry for entry: a format with other arguments is a crash in a printf-style call, a missing
// entry moves every later text, and a translated name breaks a path or key the other one uses.
#include "holang.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

struct LanguageModule { const char* file; WORD language; const char* name; };  // language: as init reports it
constexpr LanguageModule kModules[] = {{"holang.dll", LANG_ENGLISH, "English"},
                                       {"holang_de.dll", LANG_GERMAN, "German"}};

struct TableExtent { std::string name; int entries; };  // entries: the closing empty guard included
const TableExtent kTables[] = {
    {"eMessageText", kMsgCount},             {"eUniTexts", kUniCount},
    {"eAlertErrorText", kAlertTextCount},    {"eRelativePaths", kRelativeCount},
    {"eButtonText", kButtonTextCount},       {"eCaptionTexts", kCaptionCount},
    {"eDefaultNames", kDefaultNameCount},    {"eProfileTitle", kProfileCount},
    {"eMonthNames", kMonthCount}};

constexpr size_t kMessageCapacity = 760, kProductLineCapacity = 256;       // the callers' buffers
constexpr size_t kPath = 259, kProductLabel = 127, kDateText = 255;        // longest arguments

// One row per format the program fills: the conversions its caller passes ('s' text, 'i' 32-bit
// integer), its longest "%s" (0: a page, checked with its inserts) and whether the trailer follows.
struct Format {
    std::string table; int index; const char* conversions;
    size_t longest = kPath, capacity = kMessageCapacity; bool trailer = false;
};
const std::string kMessage = "eMessageText", kUni = "eUniTexts", kAlert = "eAlertErrorText";
const Format kFormats[] = {
    {kMessage, 5, "s"}, {kMessage, 7, "s"}, {kMessage, 8, "i", kPath, kMessageCapacity, true},
    {kMessage, 10, "ss", 0}, {kMessage, 13, "s"}, {kMessage, 16, "s"}, {kMessage, 18, "ss"},
    {kMessage, 28, "ssss", 0}, {kMessage, 29, "ss", 0}, {kMessage, 33, "ss", 0}, {kMessage, 34, "ss", 0},
    {kMessage, 35, "ss", 0}, {kUni, 17, "s", kProductLabel, kProductLineCapacity}, {kUni, 18, "is", kDateText},
    {kUni, 26, "s", kProductLabel, kProductLineCapacity}, {kAlert, 0, "s"}, {kAlert, 1, "s"}, {kAlert, 2, "s"},
    {kAlert, 3, "s", kPath, kMessageCapacity, true}, {kAlert, 4, "s"}, {kAlert, 5, "s"}, {kAlert, 8, "s"},
    {kAlert, 9, "s"}, {kAlert, 10, "s"}, {kAlert, 11, "s"}, {kAlert, 12, "ss", kPath, kMessageCapacity, true},
    {kAlert, 13, "s"}, {kAlert, 15, "s"}, {kAlert, 16, "s"}};

// The format with each conversion replaced by the next argument (none: by nothing) and "%%" by
// "%"; kinds is set to one letter per conversion as the Microsoft C runtime reads it: 's', 'i', or
// '?' for what the program never passes (wide texts, 64-bit sizes, "*" widths, floating point,
// "%n", a "%" at the very end).
std::string Expand(const char* format, std::string* kinds, const std::vector<std::string>& arguments = {})
{
    std::string text;
    kinds->clear();
    for (const char* p = format; *p != '\0';) {
        if (*p != '%' || p[1] == '%') {
            text += *p;
            p += *p == '%' ? 2 : 1;
            continue;
        }
        bool unusual = false;
        for (++p; *p != '\0' && std::strchr("-+ #0123456789.*", *p); ++p)
            unusual |= *p == '*';
        const bool isLong = *p == 'l' && p[1] != 'l';
        p += isLong ? 1 : 0;
        for (; *p != '\0' && std::strchr("hlLIzjtw", *p); ++p) {
            unusual = true;
            while (std::isdigit(static_cast<unsigned char>(p[1])))
                ++p;
        }
        char kind = *p == 's' && !isLong ? 's' : (*p != '\0' && std::strchr("diuxXo", *p)) ? 'i' : '?';
        *kinds += unusual ? '?' : kind;
        text += kinds->size() <= arguments.size() ? arguments[kinds->size() - 1] : "";
        p += *p != '\0' ? 1 : 0;
    }
    return text;
}

// A shown text fits its buffer, starts and ends with a word and has no empty paragraph.
void ExpectWellFormed(const std::string& text, size_t capacity)
{
    EXPECT_LT(text.size(), capacity) << text;
    EXPECT_EQ(text.find("\n\n\n"), std::string::npos) << text;
    ASSERT_FALSE(text.empty());
    EXPECT_FALSE(std::strchr(" \n", text.front()) || std::strchr(" \n", text.back())) << text;
}

template <typename T>
T Export(HMODULE module, const char* name)
{
    return reinterpret_cast<T>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

class LanguageModules : public testing::TestWithParam<LanguageModule> {
protected:
    void SetUp() override
    {
        ASSERT_NE(english = LoadLibraryA(kModules[0].file), nullptr);
        ASSERT_NE(module = LoadLibraryA(GetParam().file), nullptr) << GetParam().file;
    }
    const char* Text(const std::string& table, int index, HMODULE from = nullptr) const
    {
        return Export<const char* const*>(from ? from : module, table.c_str())[index];
    }
    HMODULE english = nullptr;
    HMODULE module = nullptr;
};

// Every table has its entries up to the empty guard where English has them (empty in English:
// unused), as Windows-1252 paragraphs; names are the English ones; only the formats hold a "%".
TEST_P(LanguageModules, ExportEveryTableWithTheEnglishEntries)
{
    const char* applicationName = Export<const char*>(module, "eApplicationName");
    ASSERT_TRUE(applicationName && *applicationName);
    for (const TableExtent& table : kTables) {
        ASSERT_NE(GetProcAddress(module, table.name.c_str()), nullptr) << table.name;
        for (int i = 0; i < table.entries; ++i) {
            SCOPED_TRACE(table.name + "[" + std::to_string(i) + "]");
            ASSERT_NE(Text(table.name, i), nullptr);
            const std::string text = Text(table.name, i), englishText = Text(table.name, i, english);
            EXPECT_EQ(text.empty(), englishText.empty()) << text;
            // Names, not texts: folders that paths are built from, the uninstall entry, the font.
            const bool isName = table.name == "eRelativePaths" || (table.name == "eDefaultNames" && i == 1) ||
                                (table.name == "eProfileTitle" && (i == 2 || i == 7));
            EXPECT_TRUE(!isName || text == englishText) << text << " is a name: " << englishText;
            bool isFormat = false;
            for (const Format& format : kFormats)
                isFormat |= format.table == table.name && format.index == i;
            EXPECT_TRUE(isFormat || text.find('%') == std::string::npos) << text;
            for (size_t at = 0; at < text.size(); ++at) {
                const unsigned char c = text[at], next = text[at + 1];
                EXPECT_TRUE(c == '\n' || c >= 0x20) << "control character " << int(c);
                EXPECT_FALSE((c == 0xC2 || c == 0xC3) && next >= 0x80 && next <= 0xBF) << "UTF-8: " << text;
            }
            EXPECT_EQ(text.find("  "), std::string::npos) << text;
        }
        EXPECT_STREQ(Text(table.name, table.entries - 1), "") << "guard";
    }
}

// Each format takes exactly its caller's arguments and, with the longest ones, fits the buffer.
TEST_P(LanguageModules, EveryFormatTakesItsCallersArgumentsAndFits)
{
    for (const Format& format : kFormats) {
        SCOPED_TRACE(format.table + "[" + std::to_string(format.index) + "]: " + Text(format.table, format.index));
        std::vector<std::string> arguments;
        for (const char* kind = format.conversions; *kind; ++kind)
            arguments.push_back(*kind == 's' ? std::string(format.longest, 'x') : "-2147483648");
        std::string kinds, text = Expand(Text(format.table, format.index), &kinds, arguments);
        EXPECT_EQ(kinds, format.conversions);
        if (format.longest && kinds == format.conversions)
            ExpectWellFormed(text + (format.trailer ? Text("eAlertErrorText", 17) : ""), format.capacity);
    }
    // The date pattern is no printf format: its "#" codes are replaced one by one, and a code the
    // program does not know would show as a stray letter.
    const std::string pattern = Text("eUniTexts", 19);
    EXPECT_NE(pattern.find('#'), std::string::npos) << pattern;
    for (size_t at = pattern.find('#'); at != std::string::npos; at = pattern.find('#', at + 2))
        EXPECT_NE(std::string("YyoOdhms").find(pattern[at + 1]), std::string::npos) << pattern;
}

// The page texts read as whole paragraphs whichever inserts the program passes, and fit their
// buffer with the longest product label.
TEST_P(LanguageModules, PageTextsReadWellWithEveryInsert)
{
    std::string kinds;
    std::vector<std::string> pages;
    for (const char* perUser : {"", Text("eUniTexts", 31)})
        for (const char* update : {"", Text("eUniTexts", 29)})
            pages.push_back(Expand(Text("eMessageText", 28), &kinds, {perUser, update, "Vistrel", ""}));
    for (const char* update : {"", Text("eUniTexts", 30)})
        for (const std::string& label : {std::string("Vistrel Professional 2022"), std::string(kProductLabel, 'L')})
            for (int index : {33, 34})
                pages.push_back(Expand(Text("eMessageText", index), &kinds, {update, label}));
    for (int index : {10, 29, 35})
        pages.push_back(Expand(Text("eMessageText", index), &kinds, {"Vistrel", ""}));
    for (const std::string& page : pages)
        ExpectWellFormed(page, kMessageCapacity);
}

// The alert buttons shown together have distinct mnemonics, at most one per caption.
TEST_P(LanguageModules, ButtonsShownTogetherHaveDistinctMnemonics)
{
    for (const std::vector<int>& group : std::vector<std::vector<int>>{{6, 2}, {3, 4}, {7, 2}, {7, 8, 2}}) {
        std::set<int> keys;
        for (int code : group) {
            const std::string caption = Text("eButtonText", code - 1);
            const size_t amp = caption.find('&');
            if (amp == std::string::npos)
                continue;
            EXPECT_EQ(caption.find('&', amp + 1), std::string::npos) << caption;
            EXPECT_TRUE(keys.insert(std::tolower(static_cast<unsigned char>(caption[amp + 1]))).second) << caption;
        }
    }
}

// The init refuses any interface version but the program's, never writes beyond the 68 bytes of
// its info block, and reports the module's language; the exit answers true.
TEST_P(LanguageModules, EntryPointsAnswerAsTheProgramExpects)
{
    auto init = Export<HoiLanguageInitProc>(module, "HOI_LanguageInit");
    auto exitProc = Export<HoiLanguageExitProc>(module, "HOI_LanguageExit");
    ASSERT_TRUE(init && exitProc);
    unsigned char info[68 + 16];
    for (unsigned long version : {0ul, 6221ul, 6223ul, 0x1000186Eul /* 6222 in the low bits */}) {
        std::memset(info, 0xA5, sizeof info);
        EXPECT_EQ(init(GetModuleHandleA(nullptr), nullptr, version, info) & 0xFF, 0) << version;
        for (unsigned char byte : info)
            ASSERT_EQ(byte, 0xA5) << "a refused init wrote its info block, version " << version;
    }
    std::memset(info, 0xA5, sizeof info);
    EXPECT_NE(init(GetModuleHandleA(nullptr), nullptr, kLanguageInterfaceVersion, info) & 0xFF, 0);
    for (size_t i = 68; i < sizeof info; ++i)
        EXPECT_EQ(info[i], 0xA5) << "byte " << i << " behind the info block was written";
    EXPECT_EQ(PRIMARYLANGID(info[32] | info[33] << 8), GetParam().language);
    EXPECT_NE(exitProc() & 0xFF, 0);
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, LanguageModules, testing::ValuesIn(kModules),
                         [](const auto& info) { return std::string(info.param.name); });

// The reading of conversions is what makes the checks above able to fail: a reading that missed
// one would pass a text that crashes the program.
TEST(Conversions, AreReadAsTheRuntimeReadsThem)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", ""}, {"copy %s to %s", "ss"}, {"%lu bytes, %s", "is"}, {"error %d, %u, %x, %ld", "iiii"},
        {"%-20s|%.5s|%08d", "ssi"}, {"100%% done, %%s", ""}, {"%%%s", "s"}, {"%s and %", "s?"},
        {"%ls %S %I64u %llu %hs %*d %.*s %f %n", "?????????"}};
    std::string kinds;
    for (const auto& [format, conversions] : cases) {
        Expand(format, &kinds);
        EXPECT_EQ(kinds, conversions) << format;
    }
    EXPECT_EQ(Expand("%s: 100%% of %lu", &kinds, {"a", "7"}), "a: 100% of 7");
}

} // namespace
