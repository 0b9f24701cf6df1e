// Composing a path from drive, folder, name and extension: separators, the limit of 260
// characters of parts, and the cut at the capacity.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "strings/hoi_strings.h"

TEST(MakePath, PartsSeparatorsAndLimits)
{
    const std::string dir(200, 'd'), name(50, 'n'), drive(10, 'E');
    const struct {
        const char *drive, *dir, *name, *extension; unsigned long long capacity; std::string expected;
    } rows[] = {
        {"C", "dir", "file", "txt", 300, "C:dir\\file.txt"},
        {"C", "dir", "file", ".txt", 300, "C:dir\\file.txt"},
        {"D:\\ignored", "\\x\\", "y", nullptr, 300, "D:\\x\\y"}, // drive letter only
        {nullptr, "a/", "", "log", 300, "a/.log"},
        {"", nullptr, "name", "", 300, "name"},
        {"C", "dir", "file", "txt", 6, "C:dir"}, // cut at capacity like Copy
        // Parts of 259 characters pass; the separators come on top: 262 characters.
        {"C", dir.c_str(), name.c_str(), "extended", 300, "C:" + dir + "\\" + name + ".extended"},
        {"C", dir.c_str(), name.c_str(), "extended9", 300, ""},       // 260: cleared
        {drive.c_str(), dir.c_str(), name.c_str(), nullptr, 300, ""}, // the whole drive counts
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.expected);
        char buffer[300];
        std::memset(buffer, '#', sizeof buffer);
        HOI_MakePathA(buffer, row.capacity, row.drive, row.dir, row.name, row.extension);
        EXPECT_EQ(row.expected, std::string(buffer));
        EXPECT_TRUE(!row.expected.empty() || buffer[1] == 0); // cleared as by Init: both elements
    }
}
