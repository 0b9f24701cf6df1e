// The file primitives: path tests, line reading and folder chains, on the real file system.
#include "install_fixture.h"
#include "install/install.h"

namespace {

using Primitives = InstallFixture;

TEST(FolderPaths, WellFormedAbsoluteFolders)
{
    EXPECT_TRUE(IsFolderPath("C:\\A"));
    EXPECT_TRUE(IsFolderPath("C:\\A\\B\\"));
    EXPECT_TRUE(IsFolderPath("\\\\server\\share\\dir\\"));
    EXPECT_TRUE(IsFolderPath("C:\\A/B"));
    EXPECT_FALSE(IsFolderPath("C:\\"));          // the root alone
    EXPECT_FALSE(IsFolderPath("C:\\A\\\\B\\"));  // an empty element
    EXPECT_FALSE(IsFolderPath("\\\\server\\"));  // no share
    EXPECT_FALSE(IsFolderPath("\\\\server\\share\\")); // nothing after the root
    EXPECT_FALSE(IsFolderPath("A\\B\\"));
    EXPECT_FALSE(IsFolderPath(""));
}

TEST(FolderPaths, ParentNeedsItsSeparatorAtPositionFiveOrLater)
{
    char parent[kPathCapacity];
    EXPECT_TRUE(ParentFolder("C:\\AB\\C\\", parent, sizeof parent));
    EXPECT_STREQ(parent, "C:\\AB\\");
    EXPECT_TRUE(ParentFolder("C:\\Program Files\\Vistrel", parent, sizeof parent));
    EXPECT_STREQ(parent, "C:\\Program Files\\");
    EXPECT_FALSE(ParentFolder("C:\\A\\B\\", parent, sizeof parent));
    EXPECT_FALSE(ParentFolder("C:\\A\\", parent, sizeof parent));
    EXPECT_FALSE(ParentFolder("C:\\", parent, sizeof parent));
    EXPECT_STREQ(parent, "C:\\Program Files\\");   // a failure leaves the buffer as it was

    char path[] = "C:\\A\\";
    StripTrailingSeparator(path);
    EXPECT_STREQ(path, "C:\\A");
    StripTrailingSeparator(path);
    EXPECT_STREQ(path, "C:\\A");
}

TEST_F(Primitives, ReadTextLineNeedsALineEndPairAndSkipsBlankLedLines)
{
    const std::string path = root_ + "lines.txt";
    writeFile(path, "first\r\n second skipped\r\n\r\nthird\r\nx\ny\n\nlast without end");
    HANDLE file;
    ASSERT_TRUE(OpenForReading(&file, path.c_str()));
    char line[64];
    std::vector<std::string> lines;
    while (ReadTextLine(file, line, sizeof line))
        lines.push_back(line);
    CloseFile(file);
    // The empty line after "second" comes back as the first two characters of the next one; a
    // lone LF ends no line, and the last line without a pair is not returned.
    const std::vector<std::string> expected = {"first", "\r\nthird", "x\ny"};
    EXPECT_EQ(lines, expected);
    EXPECT_STREQ(line, "");
}

TEST_F(Primitives, ReadTextLineGivesUpOnAFullBuffer)
{
    const std::string path = root_ + "long.txt";
    writeFile(path, std::string(100, 'a') + "\r\nshort\r\n");
    HANDLE file;
    ASSERT_TRUE(OpenForReading(&file, path.c_str()));
    char line[16];
    EXPECT_FALSE(ReadTextLine(file, line, sizeof line));
    EXPECT_STREQ(line, "");
    CloseFile(file);
}

TEST_F(Primitives, AppendingCreatesOrKeepsContent)
{
    const std::string path = root_ + "append.txt";
    HANDLE file;
    ASSERT_TRUE(OpenForAppending(&file, path.c_str()));
    EXPECT_TRUE(WriteLogLine(file, "one", 3));
    CloseFile(file);
    ASSERT_TRUE(OpenForAppending(&file, path.c_str()));
    EXPECT_TRUE(WriteLogLine(file, "two", 3));
    EXPECT_EQ(GetSize(file), 10u);
    CloseFile(file);
    EXPECT_EQ(readFile(path), "one\r\ntwo\r\n");

    EXPECT_FALSE(WriteLogLine(nullptr, "x", 1));
    EXPECT_FALSE(CloseFile(nullptr));
    EXPECT_EQ(GetSize(nullptr), 0u);
    EXPECT_TRUE(PathExists(root_.c_str()));      // folders exist too
}

TEST_F(Primitives, FolderChainLogsOnlyTheLevelsItMakes)
{
    CreateDirectoryA((root_ + "a").c_str(), nullptr);
    const std::string log = root_ + "chain.log";
    ASSERT_TRUE(CreateForWriting(&g_setup.logFile, log.c_str()));
    EXPECT_TRUE(MakeFolderChain((root_ + "a\\b\\c").c_str(), true));
    EXPECT_TRUE(PathExists((root_ + "a\\b\\c\\").c_str()));
    CloseFile(g_setup.logFile);
    g_setup.logFile = nullptr;
    const std::vector<std::string> expected = {"#" + root_ + "a\\b\\", "#" + root_ + "a\\b\\c\\"};
    EXPECT_EQ(fileLines(log), expected);
}

TEST_F(Primitives, FolderTreeGoesWithEverythingInIt)
{
    const std::string tree = root_ + "tree\\";
    CreateFolderChain((tree + "x\\y").c_str(), nullptr);
    writeFile(tree + "f.txt", "1");
    writeFile(tree + "x\\y\\g.txt", "2");
    DeleteFolderTree(tree.c_str());
    EXPECT_FALSE(PathExists(tree.c_str()));
    EXPECT_TRUE(PathExists(root_.c_str()));
}

} // namespace
