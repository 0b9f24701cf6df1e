// Error reports name where a fault lies: module word, fixed line number, text.
#include <gtest/gtest.h>

#include <thread>

#include "process.h"
#include "shell/shell.h"
#include "holang.h"

namespace {

std::string format(const char* word, std::uint32_t line, const char* text, std::size_t capacity = kErrorReportCapacity)
{
    std::string buffer(capacity, '\x7f');
    formatErrorReport(word, line, text, &buffer[0], capacity);
    return buffer.c_str();
}

TEST(ErrorReport, LayoutIsWordBackslashLineEmptyLineText)
{
    EXPECT_EQ(format("Init", 1424, "Out of memory."), "Init\\1424\n\nOut of memory.");
    EXPECT_EQ(format("*C:\\keep\\as is", 7, "t"), "C:\\keep\\as is\\7\n\nt");  // "*" keeps the rest
    EXPECT_EQ(format("D:\\src\\setup\\Command.cpp", 1112, "x"), "Command.cpp\\1112\n\nx");
}

TEST(ErrorReport, LongTextIsCutAt759Characters)
{
    const std::string text(2000, 'x');
    const std::string message = format("Init", 101, text.c_str());
    EXPECT_EQ(message.size(), 759u);
    EXPECT_EQ(message.substr(0, 10), "Init\\101\n\n");
}

// The report is a real message box, shown even in a silent run, with the language module's caption.
TEST(ErrorReport, ShownAsMessageBoxEvenWhenSilent)
{
    clearSetupState();
    g_setup.optionSilent = 1;
    MessageBoxSeen seen;
    bool answered = false;
    std::thread person([&] { answered = answerMessageBox(GetCurrentProcessId(), 20000, IDOK, &seen); });
    reportError("Init", 1424, "Not enough memory.");
    person.join();
    ASSERT_TRUE(answered);
    EXPECT_EQ(seen.caption, eCaptionTexts[0]);
    EXPECT_EQ(seen.text, "Init\\1424\n\nNot enough memory.");
}

} // namespace
