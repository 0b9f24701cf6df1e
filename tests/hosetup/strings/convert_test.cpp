// Conversions between the ANSI code page and UTF-16, with the one element kept spare.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "strings/hoi_strings.h"

TEST(Convert, AnsiToUtf16KeepsOneUnitSpare)
{
    wchar_t wide[8];
    EXPECT_FALSE(HOI_ConvertAnsiToUTF16("abc", wide, 4)); // needs 4 units, offered 3
    EXPECT_TRUE(HOI_ConvertAnsiToUTF16("abc", wide, 5));
    EXPECT_STREQ(L"abc", wide);
    EXPECT_TRUE(HOI_ConvertAnsiToUTF16("", wide, 2));
    EXPECT_STREQ(L"", wide);
    EXPECT_FALSE(HOI_ConvertAnsiToUTF16("", wide, 1)); // nothing offered, nothing stored
}

TEST(Convert, Utf16ToAnsiKeepsOneByteSpare)
{
    char narrow[8];
    EXPECT_FALSE(HOI_ConvertUTF16ToAnsi(L"abc", narrow, 4));
    EXPECT_TRUE(HOI_ConvertUTF16ToAnsi(L"abc", narrow, 5));
    EXPECT_STREQ("abc", narrow);
    EXPECT_FALSE(HOI_ConvertUTF16ToAnsi(L"", narrow, 1));
}

TEST(Convert, NonAsciiThroughCodePage1252)
{
    if (GetACP() != 1252)
        GTEST_SKIP() << "the expectations are written for code page 1252";
    wchar_t wide[8];
    ASSERT_TRUE(HOI_ConvertAnsiToUTF16("\xE9t\xE9", wide, 8));
    EXPECT_STREQ(L"\u00e9t\u00e9", wide);

    // U+0141 (L with stroke) is missing from 1252; best fit would turn it into "L".
    char narrow[8];
    ASSERT_TRUE(HOI_ConvertUTF16ToAnsi(L"\u0141\u00e9\u03a9", narrow, 8));
    EXPECT_STREQ("?\xE9?", narrow);
}
