// Path (trailing separator) and MakePath (composition from parts).
#include <gtest/gtest.h>

#include <string>

#include "strings/hoi_strings.h"

TEST(Path, AppendsOneBackslashOnlyWhenNeededAndPossible)
{
    char buffer[260];
    HOI_CopyA(buffer, sizeof buffer, "C:\\Program Files\\Vistrel");
    HOI_PathA(buffer, sizeof buffer);
    EXPECT_STREQ("C:\\Program Files\\Vistrel\\", buffer);
    HOI_PathA(buffer, sizeof buffer); // already ends in a separator
    EXPECT_STREQ("C:\\Program Files\\Vistrel\\", buffer);

    HOI_CopyA(buffer, sizeof buffer, "C:/tmp/");
    HOI_PathA(buffer, sizeof buffer);
    EXPECT_STREQ("C:/tmp/", buffer);

    HOI_InitA(buffer);
    HOI_PathA(buffer, sizeof buffer);
    EXPECT_STREQ("", buffer);

    HOI_CopyA(buffer, sizeof buffer, "*Programs");
    HOI_PathA(buffer, sizeof buffer);
    EXPECT_STREQ("*Programs", buffer);
}

TEST(Path, NoRoomLeavesTheTextAndBoundsTheScan)
{
    char buffer[6] = {'a', 'b', 'c', 0, '#', '#'};
    HOI_PathA(buffer, 4); // "abc" fills capacity 4
    EXPECT_EQ(std::string("abc\0##", 6), std::string(buffer, 6));
    HOI_PathA(buffer, 5); // one element to spare
    EXPECT_EQ(std::string("abc\\\0#", 6), std::string(buffer, 6));

    char unterminated[3] = {'x', 'y', 'z'};
    HOI_PathA(unterminated, 1);
    HOI_PathA(unterminated, 3);
    EXPECT_EQ(std::string("xyz"), std::string(unterminated, 3));
}

TEST(Path, Wide)
{
    wchar_t buffer[8];
    HOI_CopyW(buffer, 8, L"D:\\a");
    HOI_PathW(buffer, 8);
    EXPECT_STREQ(L"D:\\a\\", buffer);
    HOI_PathW(buffer, 8);
    EXPECT_STREQ(L"D:\\a\\", buffer);
    HOI_CopyW(buffer, 8, L"*x");
    HOI_PathW(buffer, 8);
    EXPECT_STREQ(L"*x", buffer);
    HOI_CopyW(buffer, 8, L"abcdefg"); // full
    HOI_PathW(buffer, 8);
    EXPECT_STREQ(L"abcdefg", buffer);
}

TEST(MakePath, ComposesDriveFolderNameAndExtension)
{
    char buffer[260];
    HOI_MakePathA(buffer, sizeof buffer, "C", "dir", "file", "txt");
    EXPECT_STREQ("C:dir\\file.txt", buffer);
    HOI_MakePathA(buffer, sizeof buffer, "C", "dir", "file", ".txt");
    EXPECT_STREQ("C:dir\\file.txt", buffer);
    HOI_MakePathA(buffer, sizeof buffer, "D:\\ignored", "\\x\\", "y", nullptr);
    EXPECT_STREQ("D:\\x\\y", buffer);
    HOI_MakePathA(buffer, sizeof buffer, nullptr, "a/", "", "log");
    EXPECT_STREQ("a/.log", buffer);
    HOI_MakePathA(buffer, sizeof buffer, "", nullptr, "name", "");
    EXPECT_STREQ("name", buffer);
    HOI_MakePathA(buffer, sizeof buffer, nullptr, nullptr, nullptr, nullptr);
    EXPECT_STREQ("", buffer);
}

TEST(MakePath, RefusesPartsOf260AndCutsAtCapacity)
{
    char buffer[300];
    const std::string dir(200, 'd');
    const std::string name(50, 'n');

    // 1 + 200 + 50 + 8 = 259: accepted, and the separators make the text 262 characters long.
    HOI_MakePathA(buffer, sizeof buffer, "C", dir.c_str(), name.c_str(), "extended");
    EXPECT_EQ("C:" + dir + "\\" + name + ".extended", std::string(buffer));

    // 260: cleared like Init, both first elements.
    HOI_MakePathA(buffer, sizeof buffer, "C", dir.c_str(), name.c_str(), "extended9");
    EXPECT_EQ(0, buffer[0]);
    EXPECT_EQ(0, buffer[1]);

    // The drive counts with its whole length although only its letter is used.
    const std::string drive(10, 'E');
    HOI_MakePathA(buffer, sizeof buffer, drive.c_str(), dir.c_str(), name.c_str(), nullptr);
    EXPECT_STREQ("", buffer);

    HOI_MakePathA(buffer, 6, "C", "dir", "file", "txt");
    EXPECT_STREQ("C:dir", buffer);
}
