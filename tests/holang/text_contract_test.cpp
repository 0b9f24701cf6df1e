// The contract between the setup program and the texts it formats: every entry the program uses
// exists, takes exactly the arguments its caller passes (a wrong count or type is a crash in a
// printf-style call), and still fits the caller's buffer when the arguments are as long as they
// can be.
#include "conversions.h"
#include "holang.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>
#include <vector>

namespace {

// Buffers of the program: messages and page texts are formatted into 760 characters, the product
// line into 256; a path has at most 259 characters and a product label at most 127.
constexpr size_t kMessageCapacity = 760;
constexpr size_t kProductTextCapacity = 256;
constexpr size_t kDateTextCapacity = 256;
constexpr size_t kLongestPath = 259;
constexpr size_t kLongestProductLabel = 127;

struct TextUse {
    const char* tableName;
    const char* const* table;
    int index;
    const char* conversions; // one letter per argument the caller passes, see conversions.h
    const char* use;
};

// Every entry the program reads, with the arguments its caller passes, in order.
std::vector<TextUse> ProgramUses()
{
    return {
        {"eMessageText", eMessageText, 0, "", "system too old (shown as it stands)"},
        {"eMessageText", eMessageText, 1, "", "out of memory / window not created"},
        {"eMessageText", eMessageText, 2, "", "cancel question, installation progress"},
        {"eMessageText", eMessageText, 3, "", "cancel question, installation pages"},
        {"eMessageText", eMessageText, 4, "", "progress stage 0"},
        {"eMessageText", eMessageText, 5, "s", "invalid folder path: path"},
        {"eMessageText", eMessageText, 7, "s", "replace query: path"},
        {"eMessageText", eMessageText, 8, "i", "shortcut failure: code"},
        {"eMessageText", eMessageText, 9, "", "nothing to remove"},
        {"eMessageText", eMessageText, 10, "ss", "removal finish page: name, empty text"},
        {"eMessageText", eMessageText, 11, "", "progress stage 1"},
        {"eMessageText", eMessageText, 12, "", "progress stage 5"},
        {"eMessageText", eMessageText, 13, "s", "path too long: path"},
        {"eMessageText", eMessageText, 14, "", "no file to transfer"},
        {"eMessageText", eMessageText, 15, "", "cancel question, removal pages"},
        {"eMessageText", eMessageText, 16, "s", "not enough disk space: drive"},
        {"eMessageText", eMessageText, 17, "", "cancel question, removal progress"},
        {"eMessageText", eMessageText, 18, "ss", "copy failed: source, target"},
        {"eMessageText", eMessageText, 19, "", "newer version installed"},
        {"eMessageText", eMessageText, 21, "", "progress stage 2"},
        {"eMessageText", eMessageText, 22, "", "progress stage 4"},
        {"eMessageText", eMessageText, 23, "", "progress stage 6"},
        {"eMessageText", eMessageText, 24, "", "installed version too old"},
        {"eMessageText", eMessageText, 25, "", "progress stage 7"},
        {"eMessageText", eMessageText, 26, "", "progress stage 3"},
        {"eMessageText", eMessageText, 28, "ssss", "install welcome: per-user, update, name, empty"},
        {"eMessageText", eMessageText, 29, "ss", "remove welcome: name, empty text"},
        {"eMessageText", eMessageText, 30, "", "product running, installation pages"},
        {"eMessageText", eMessageText, 31, "", "product running, removal pages"},
        {"eMessageText", eMessageText, 32, "", "program files already in the folder"},
        {"eMessageText", eMessageText, 33, "ss", "install start page: update insert, label"},
        {"eMessageText", eMessageText, 34, "ss", "install finish page: update insert, label"},
        {"eMessageText", eMessageText, 35, "ss", "remove start page: name, empty text"},
        {"eMessageText", eMessageText, 36, "", "finish page check box"},

        {"eUniTexts", eUniTexts, 17, "s", "product line, installation: label"},
        {"eUniTexts", eUniTexts, 18, "is", "file description: size, date"},
        {"eUniTexts", eUniTexts, 19, "", "date pattern (# codes, not printf)"},
        {"eUniTexts", eUniTexts, 20, "", "unknown file description"},
        {"eUniTexts", eUniTexts, 26, "s", "product line, removal: label"},
        {"eUniTexts", eUniTexts, 29, "", "welcome insert, update (an argument)"},
        {"eUniTexts", eUniTexts, 30, "", "start/finish insert, update (an argument)"},
        {"eUniTexts", eUniTexts, 31, "", "welcome insert, per-user (an argument)"},

        {"eAlertErrorText", eAlertErrorText, 0, "s", "file cannot be opened: path"},
        {"eAlertErrorText", eAlertErrorText, 1, "s", "file alert kind 2: path"},
        {"eAlertErrorText", eAlertErrorText, 2, "s", "bad setup data file: path"},
        {"eAlertErrorText", eAlertErrorText, 3, "s", "file alert kind 4: path"},
        {"eAlertErrorText", eAlertErrorText, 4, "s", "file alert kind 5: path"},
        {"eAlertErrorText", eAlertErrorText, 5, "s", "file alert kind 6: path"},
        {"eAlertErrorText", eAlertErrorText, 8, "s", "file alert kind 8: path"},
        {"eAlertErrorText", eAlertErrorText, 9, "s", "backup copy failed: path"},
        {"eAlertErrorText", eAlertErrorText, 10, "s", "file alert kind 7: path"},
        {"eAlertErrorText", eAlertErrorText, 11, "s", "file alert kind 9: path"},
        {"eAlertErrorText", eAlertErrorText, 12, "ss", "unpacker failed: error text, archive"},
        {"eAlertErrorText", eAlertErrorText, 13, "s", "unpacker not started: archive"},
        {"eAlertErrorText", eAlertErrorText, 14, "", "transfer failed question (as it stands)"},
        {"eAlertErrorText", eAlertErrorText, 15, "s", "setup log unreadable: path"},
        {"eAlertErrorText", eAlertErrorText, 16, "s", "setup log not created: path"},
        {"eAlertErrorText", eAlertErrorText, 17, "", "appended trailer (never formatted)"},

        {"eCaptionTexts", eCaptionTexts, 0, "", "message box caption"},
        {"eDefaultNames", eDefaultNames, 1, "", "dialog font face name"},
        {"eProfileTitle", eProfileTitle, 2, "", "uninstall key name"},
        {"eProfileTitle", eProfileTitle, 4, "", "drawing type (an argument)"},
        {"eProfileTitle", eProfileTitle, 7, "", "uninstall key suffix"},
        {"eProfileTitle", eProfileTitle, 9, "", "library type (an argument)"},
    };
}

struct TableExtent {
    const char* name;
    const char* const* table;
    int guardIndex; // one past the highest index the program uses
};

std::vector<TableExtent> Tables()
{
    return {
        {"eMessageText", eMessageText, 37},   {"eUniTexts", eUniTexts, 32},
        {"eAlertErrorText", eAlertErrorText, 18}, {"eRelativePaths", eRelativePaths, 11},
        {"eButtonText", eButtonText, 8},      {"eCaptionTexts", eCaptionTexts, 1},
        {"eDefaultNames", eDefaultNames, 2},  {"eProfileTitle", eProfileTitle, 10},
        {"eMonthNames", eMonthNames, 12},
    };
}

// Formats a text whose conversions were already checked, the way the program does, with the
// given texts for its "%s" and the number for its integer conversion.
std::string Format(const char* format, const std::vector<std::string>& texts, long number = 0)
{
    const std::string kinds = ConversionsOf(format);
    char buffer[8192];
    int written = -1;
    if (kinds.empty())
        written = std::snprintf(buffer, sizeof buffer, "%s", format);
    else if (kinds == "s")
        written = std::snprintf(buffer, sizeof buffer, format, texts.at(0).c_str());
    else if (kinds == "ss")
        written = std::snprintf(buffer, sizeof buffer, format, texts.at(0).c_str(), texts.at(1).c_str());
    else if (kinds == "ssss")
        written = std::snprintf(buffer, sizeof buffer, format, texts.at(0).c_str(), texts.at(1).c_str(),
                                texts.at(2).c_str(), texts.at(3).c_str());
    else if (kinds == "i")
        written = std::snprintf(buffer, sizeof buffer, format, number);
    else if (kinds == "is")
        written = std::snprintf(buffer, sizeof buffer, format, number, texts.at(0).c_str());
    else
        ADD_FAILURE() << "no formatter for conversions \"" << kinds << "\" in: " << format;
    return written < 0 ? std::string() : std::string(buffer);
}

bool HasBlankEdges(const std::string& text)
{
    if (text.empty())
        return false;
    auto blank = [](char c) { return c == ' ' || c == '\n'; };
    return blank(text.front()) || blank(text.back());
}

} // namespace

TEST(TextContract, EveryUsedEntryTakesExactlyItsCallersArguments)
{
    for (const TextUse& use : ProgramUses()) {
        SCOPED_TRACE(std::string(use.tableName) + "[" + std::to_string(use.index) + "]: " + use.use);
        const char* text = use.table[use.index];
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(ConversionsOf(text), use.conversions) << "text: " << text;
        if (use.conversions[0] == '\0') {
            // Shown as it stands or passed as an argument: a "%" would show literally, or break
            // a caller that formats it.
            EXPECT_EQ(std::string(text).find('%'), std::string::npos) << "text: " << text;
        }
    }
}

TEST(TextContract, EveryIndexUpToTheGuardHoldsAText)
{
    for (const TableExtent& table : Tables()) {
        for (int i = 0; i < table.guardIndex; ++i)
            EXPECT_NE(table.table[i], nullptr) << table.name << "[" << i << "]";
        ASSERT_NE(table.table[table.guardIndex], nullptr) << table.name << " guard";
        EXPECT_STREQ(table.table[table.guardIndex], "") << table.name << " guard";
    }
}

TEST(TextContract, TextsArePlainParagraphs)
{
    for (const TableExtent& table : Tables()) {
        for (int i = 0; i <= table.guardIndex; ++i) {
            const std::string text = table.table[i] ? table.table[i] : "";
            SCOPED_TRACE(std::string(table.name) + "[" + std::to_string(i) + "]: " + text);
            for (unsigned char c : text)
                EXPECT_TRUE(c == '\n' || c >= 0x20) << "control character " << int(c);
            EXPECT_EQ(text.find('!'), std::string::npos) << "exclamation mark";
            EXPECT_EQ(text.find("\n\n\n"), std::string::npos) << "empty paragraph";
            EXPECT_EQ(text.find("  "), std::string::npos) << "double blank";
        }
    }
}

// Each formatted message, filled with the longest arguments its callers can pass, fits the
// 760-character buffer; and a message that gets the support trailer appended still fits.
TEST(TextContract, MessagesFitTheirBufferWithLongestArguments)
{
    const std::string path(kLongestPath, 'p');
    const std::vector<std::string> paths = {path, path, path, path};
    struct Message {
        const char* const* table;
        int index;
        bool trailer;
    };
    const Message messages[] = {
        {eMessageText, 5, false},    {eMessageText, 7, false},    {eMessageText, 8, true},
        {eMessageText, 13, false},   {eMessageText, 16, false},   {eMessageText, 18, false},
        {eAlertErrorText, 0, false}, {eAlertErrorText, 1, false}, {eAlertErrorText, 2, false},
        {eAlertErrorText, 3, true},  {eAlertErrorText, 4, false}, {eAlertErrorText, 5, false},
        {eAlertErrorText, 8, false}, {eAlertErrorText, 9, false}, {eAlertErrorText, 10, false},
        {eAlertErrorText, 11, false}, {eAlertErrorText, 12, true}, {eAlertErrorText, 13, false},
        {eAlertErrorText, 15, false}, {eAlertErrorText, 16, false},
    };
    for (const Message& message : messages) {
        SCOPED_TRACE(message.table[message.index]);
        std::string text = Format(message.table[message.index], paths, LONG_MIN);
        if (message.trailer)
            text += eAlertErrorText[17];
        EXPECT_LT(text.size(), kMessageCapacity);
        EXPECT_FALSE(HasBlankEdges(text));
        EXPECT_EQ(text.find("\n\n\n"), std::string::npos);
    }
}

TEST(TextContract, ProductLinesAndFileDescriptionsFit)
{
    const std::string label(kLongestProductLabel, 'L');
    EXPECT_LT(Format(eUniTexts[17], {label}).size(), kProductTextCapacity);
    EXPECT_LT(Format(eUniTexts[26], {label}).size(), kProductTextCapacity);

    const std::string date(kDateTextCapacity - 1, 'd');
    const std::string description = Format(eUniTexts[18], {date}, static_cast<long>(0xFFFFFFFFul));
    EXPECT_LT(description.size(), kMessageCapacity);
    // "%lu" with the low 32 bits of a size: the number appears unsigned, as the size it is.
    EXPECT_NE(description.find("4294967295"), std::string::npos) << description;
}

// The page texts read as whole paragraphs whichever inserts the program passes, and fit their
// 760-character buffer with the longest product label.
TEST(TextContract, PageTextsReadWellWithEveryInsert)
{
    const std::string label(kLongestProductLabel, 'L');
    std::vector<std::string> pages;
    for (const char* perUser : {"", eUniTexts[31]})
        for (const char* update : {"", eUniTexts[29]})
            pages.push_back(Format(eMessageText[28], {perUser, update, "Vistrel", ""}));
    for (const char* update : {"", eUniTexts[30]})
        for (const std::string& productLabel : {std::string("Vistrel Professional 2022"), label}) {
            pages.push_back(Format(eMessageText[33], {update, productLabel}));
            pages.push_back(Format(eMessageText[34], {update, productLabel}));
        }
    for (int index : {10, 29, 35})
        pages.push_back(Format(eMessageText[index], {"Vistrel", ""}));

    for (const std::string& page : pages) {
        SCOPED_TRACE(page);
        EXPECT_LT(page.size(), kMessageCapacity);
        EXPECT_FALSE(HasBlankEdges(page));
        EXPECT_EQ(page.find("\n\n\n"), std::string::npos);
    }
}

// The date pattern is not a printf format: its "#" codes are replaced one by one, and a code
// the program does not know would show as a stray letter.
TEST(TextContract, DatePatternUsesKnownCodes)
{
    const std::string codes = DateCodesOf(eUniTexts[19]);
    EXPECT_FALSE(codes.empty());
    for (char code : codes)
        EXPECT_NE(std::string("YyoOdhms").find(code), std::string::npos) << "code #" << code;
}
