// The removal's safety at unit level: what the setup log names is deleted, folders deepest first
// in bounded passes, the user's files and their folders stay, and a damaged log deletes nothing
// but what a whole line names.
#include "../install/install_fixture.h"

#include "remove/remove.h"
#include "ui/ui.h"

namespace {

class LoggedFiles : public InstallFixture {
protected:
    void SetUp() override
    {
        InstallFixture::SetUp();
        ASSERT_TRUE(ShowProgressStage(true, kStageRemoveReadLog, 0, 0));   // without a window every report says stop
    }

    // Writes the log, each line ended by CR LF; "#" lines and paths name places below root_.
    void writeLog(const std::vector<std::string>& lines)
    {
        std::string text;
        for (const std::string& line : lines)
            text += (line[0] == '#' ? "#" + root_ + line.substr(1) : line[0] == '*' ? line : root_ + line) + "\r\n";
        writeFile(logPath(), text);
    }

    bool exists(const char* below) const { return PathExists((root_ + below).c_str()); }
};

TEST_F(LoggedFiles, AThreeLevelChainGoesInThreePasses)
{
    CreateFolderChain((root_ + "Program\\A\\B\\C\\").c_str(), nullptr);
    writeLog({"#Program\\A\\", "#Program\\A\\B\\", "#Program\\A\\B\\C\\"});
    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_FALSE(exists("Program\\A\\"));
    EXPECT_TRUE(exists("Program\\"));            // not in the log
    EXPECT_EQ(g_setup.bytesDonePacked, 3u);      // no file lines, three passes
}

TEST_F(LoggedFiles, AUsersFileKeepsItsFoldersAndThePassesStayBounded)
{
    CreateFolderChain((root_ + "Program\\K\\L\\").c_str(), nullptr);
    for (const char* file : {"Program\\a.exe", "Program\\K\\b.dll", "Program\\K\\L\\mine.hod"})
        writeFile(root_ + file, "x");
    writeLog({"***** Vistrel standard installation: STARTING *****", "#Program\\K\\", "#Program\\K\\L\\",
              "Program\\a.exe", "***** Skipped file:", "Program\\K\\b.dll"});
    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_FALSE(exists("Program\\a.exe"));
    EXPECT_FALSE(exists("Program\\K\\b.dll"));   // kept by an update, still the product's
    EXPECT_TRUE(exists("Program\\K\\L\\mine.hod"));
    // Units: 4 counted lines plus 2 folder lines; 2 files and as many passes as folder lines.
    EXPECT_EQ(g_setup.bytesTotalPacked, 6u);
    EXPECT_EQ(g_setup.bytesDonePacked, 4u);
}

TEST_F(LoggedFiles, ADamagedLogDeletesOnlyWhatAWholeLineNames)
{
    const std::string at = root_ + "Program\\";
    std::string junk;
    for (int i = 0; i < 200; ++i)
        junk += static_cast<char>((i * 7919) % 240 + 14);   // binary, but no zero byte, CR or LF
    const struct { const char* damage; std::string log; std::vector<const char*> gone, kept; } rows[] = {
        {"junk lines", at + "a.dat\r\njunk " + at + "b.dat junk\r\n" + junk + "\r\n" + at + "c.dat\r\n",
         {"a.dat", "c.dat"}, {"b.dat"}},
        {"an overlong line ends the reading", std::string(400, 'L') + at + "a.dat\r\n" + at + "c.dat\r\n", {},
         {"a.dat", "c.dat"}},
        {"no final line end", at + "a.dat\r\n" + at + "b.dat", {"a.dat"}, {"b.dat"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.damage);
        for (const char* name : {"a.dat", "b.dat", "c.dat"})
            writeFile(at + name, "x");
        CloseLog(false);   // the last removal left it open
        writeFile(logPath(), row.log);
        EXPECT_TRUE(RemoveLoggedFiles());
        for (const char* name : row.gone)
            EXPECT_FALSE(fileExists(at + name)) << name;
        for (const char* name : row.kept)
            EXPECT_TRUE(fileExists(at + name)) << name;
    }
}

TEST_F(LoggedFiles, CountingReportsOncePerTenLinesFromTenPercentCutAtAHundred)
{
    const struct { int lines, folderEvery, reports, lastPercent; } rows[] = {
        {0, 0, 0, 0}, {25, 5, 2, 10}, {300, 0, 29, 58}, {760, 0, 75, 100}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.lines);
        std::vector<std::string> log = {"***** a banner, not counted *****"};
        for (int i = 0; i < row.lines; ++i)
            log.push_back(row.folderEvery && i % row.folderEvery == 0 ? "#F" + std::to_string(i) + "\\" : "f");
        writeLog(log);
        HANDLE file = nullptr;
        ASSERT_TRUE(OpenForReading(&file, logPath().c_str()));
        LogLineCount count;
        EXPECT_TRUE(countLogLines(file, &count));
        CloseFile(file);
        EXPECT_EQ(count.counted, row.lines);
        EXPECT_EQ(count.folders, row.folderEvery ? row.lines / row.folderEvery : 0);
        EXPECT_EQ(count.reports, row.reports);
        EXPECT_EQ(count.lastPercent, row.lastPercent);
    }
}

} // namespace
