// The main window's size at 96 and 144 dpi and on screens too small for it, and the layout of
// the error report of an internal fault.
#include <gtest/gtest.h>

#include <string>

#include "shell/shell.h"

// A client area of 580 x 400 times the scale inside a one-pixel border (WS_BORDER), centred; a
// dimension the screen cannot hold is the screen's.
TEST(MainWindow, SizeAtScalesAndOnSmallScreens)
{
    const struct { double scale; int screenWidth, screenHeight, width, height; } rows[] = {
        {1.0, 2560, 1440, 582, 402}, {1.5, 2560, 1440, 872, 602}, // 96 and 144 dpi
        {1.5, 800, 600, 800, 600}, {1.5, 1024, 580, 872, 580},    // small screens
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.scale) + " on " + std::to_string(row.screenWidth));
        int x, y, width, height;
        mainWindowSize(row.scale, row.screenWidth, row.screenHeight, WS_POPUP | WS_BORDER, &x, &y,
            &width, &height);
        EXPECT_EQ(row.width, width);
        EXPECT_EQ(row.height, height);
        EXPECT_EQ((row.screenWidth - row.width) / 2, x);
        EXPECT_EQ((row.screenHeight - row.height) / 2, y);
    }
}

// "word\line", an empty line, the text; cut to 759 characters.
TEST(ErrorReport, Layout)
{
    const std::string longText(2000, 'x');
    const struct { const char* word; std::uint32_t line; const char* text; std::string report; } rows[] = {
        {"Init", 1424, "Out of memory.", "Init\\1424\n\nOut of memory."},
        {"*C:\\keep\\as is", 7, "t", "C:\\keep\\as is\\7\n\nt"}, // "*": the rest as it stands
        {"D:\\src\\setup\\Command.cpp", 1112, "x", "Command.cpp\\1112\n\nx"}, // a path: its file name
        {"Init", 5, nullptr, "Init\\5\n\n"},
        {"Init", 101, longText.c_str(), "Init\\101\n\n" + longText.substr(0, 749)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.report.substr(0, 20));
        std::string buffer(kErrorReportCapacity, '\x7f');
        formatErrorReport(row.word, row.line, row.text, &buffer[0], buffer.size());
        EXPECT_EQ(row.report, buffer.c_str());
    }
}
