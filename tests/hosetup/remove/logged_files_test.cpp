// Deleting what a setup log names, on real folders: files of every kind of line, folder chains
// deepest first, the user's files left alone, and an unreadable log.
#include "../install/install_fixture.h"

#include "install/install.h"
#include "remove/remove.h"
#include "ui/ui.h"

namespace {

class LoggedFiles : public InstallFixture {
protected:
    void SetUp() override
    {
        InstallFixture::SetUp();
        CreateFolderChain(g_setup.commonDataFolder, nullptr);
        ASSERT_TRUE(ShowProgressStage(true, 4, 0, 0));
    }

    void TearDown() override
    {
        ShowProgressStage(false, 0, 0, 0);
        InstallFixture::TearDown();
    }

    void writeLog(const std::vector<std::string>& lines)
    {
        if (g_setup.logFile) {   // a removal leaves the log open, and open for reading only
            CloseFile(g_setup.logFile);
            g_setup.logFile = nullptr;
        }
        std::string text;
        for (const std::string& line : lines)
            text += line + "\r\n";
        writeFile(logPath(), text);
    }

    std::string at(const char* below) const { return root_ + below; }
};

TEST_F(LoggedFiles, DeletesFilesOfEveryInstallationAndEmptyFoldersDeepestFirst)
{
    for (const char* folder : {"Program\\Bin\\Tools\\", "Program\\Kept\\"})
        CreateFolderChain(at(folder).c_str(), nullptr);
    for (const char* file : {"Program\\hovistrel.exe", "Program\\Bin\\Tools\\render.dll", "Program\\Kept\\old.ini",
                             "Program\\Bin\\update.dll"})
        writeFile(at(file), "x");
    writeFile(at("Program\\Kept\\mine.txt"), "the user's own file");

    writeLog({
        "***** Vistrel Test standard installation: START, 2022-11-29 10:00:00 *****",
        "#" + at("Program\\"),
        "#" + at("Program\\Bin\\"),
        "#" + at("Program\\Bin\\Tools\\"),
        "#" + at("Program\\Kept\\"),
        at("Program\\hovistrel.exe"),
        at("Program\\Bin\\Tools\\render.dll"),
        "***** Skipped file:",
        at("Program\\Kept\\old.ini"),
        "***** Vistrel Test standard installation: END, 2022-11-29 10:00:05 *****",
        "",
        "***** Vistrel Test update installation: START, 2022-12-01 09:00:00 *****",
        at("Program\\Bin\\update.dll"),
        at("Program\\never-there.dll"),
    });

    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_TRUE(g_setup.logFile != nullptr);   // left open for the caller
    EXPECT_FALSE(PathExists(at("Program\\hovistrel.exe").c_str()));
    EXPECT_FALSE(PathExists(at("Program\\Kept\\old.ini").c_str()));   // kept by an update, still ours
    EXPECT_FALSE(PathExists(at("Program\\Bin\\").c_str()));
    // The user's file keeps its folder and every folder above it.
    EXPECT_EQ(readFile(at("Program\\Kept\\mine.txt")), "the user's own file");
    EXPECT_TRUE(PathExists(at("Program\\").c_str()));
    // Units: 10 counted lines (the banner behind the empty line counts as a file) plus 4 folder
    // lines in total; 6 files and 4 passes done (the kept folder keeps the passes going until
    // their number equals the folder lines).
    EXPECT_EQ(g_setup.bytesTotalPacked, 14u);
    EXPECT_EQ(g_setup.bytesDonePacked, 10u);
    EXPECT_EQ(g_setup.progressStage, 5u);
}

TEST_F(LoggedFiles, ThreeLevelChainTakesThreePassesAndAnEmptyLogDoesNothing)
{
    CreateFolderChain(at("P\\A\\B\\").c_str(), nullptr);
    writeLog({"#" + at("P\\"), "#" + at("P\\A\\"), "#" + at("P\\A\\B\\")});
    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_FALSE(PathExists(at("P\\").c_str()));
    EXPECT_EQ(g_setup.bytesDonePacked, 3u);   // no file lines, three passes

    writeLog({});
    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_EQ(g_setup.bytesTotalPacked, 0u);
    EXPECT_EQ(g_setup.bytesDonePacked, 0u);
}

TEST_F(LoggedFiles, ManyLinesMoveTheBarAndEndInTheDeletionStage)
{
    std::vector<std::string> log;
    for (int i = 0; i < 600; ++i) {
        const std::string file = at("f") + std::to_string(i) + ".dat";
        writeFile(file, "x");
        log.push_back(file);
    }
    writeLog(log);
    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_FALSE(PathExists(at("f0.dat").c_str()));
    EXPECT_FALSE(PathExists(at("f599.dat").c_str()));
    EXPECT_EQ(g_setup.progressValue, 600);
    EXPECT_EQ(g_setup.progressTotal, 600);
}

TEST_F(LoggedFiles, CountingMovesTheBarOncePerTenLinesFromTenPercent)
{
    std::vector<std::string> log = {"***** banner, not counted *****"};
    for (int i = 0; i < 25; ++i)
        log.push_back(i % 5 == 0 ? "#" + at("F") + std::to_string(i) + "\\" : at("f") + std::to_string(i));
    writeLog(log);
    HANDLE file = nullptr;
    ASSERT_TRUE(OpenForReading(&file, logPath().c_str()));
    LogLineCount count;
    EXPECT_TRUE(countLogLines(file, &count));
    EXPECT_EQ(count.counted, 25);
    EXPECT_EQ(count.folders, 5);
    // At the line after the 10th and after the 20th counted line; 2 % and 4 % are raised to 10.
    EXPECT_EQ(count.reports, 2);
    EXPECT_EQ(count.lastPercent, 10);

    std::vector<std::string> many(760, at("x"));
    CloseFile(file);
    writeLog(many);
    ASSERT_TRUE(OpenForReading(&file, logPath().c_str()));
    EXPECT_TRUE(countLogLines(file, &count));
    EXPECT_EQ(count.reports, 75);
    EXPECT_EQ(count.lastPercent, 100);   // 750 lines: cut to 100
    CloseFile(file);
}

TEST_F(LoggedFiles, ALineAfterAnEmptyLineCarriesItsLineEndAndDeletesNothing)
{
    writeFile(at("after-empty.dat"), "x");
    writeFile(at("named.dat"), "x");
    writeLog({at("named.dat"), "", at("after-empty.dat")});
    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_FALSE(PathExists(at("named.dat").c_str()));
    // Read as CR LF + path: no such file, so the deletion fails and the file stays.
    EXPECT_TRUE(PathExists(at("after-empty.dat").c_str()));
    EXPECT_EQ(g_setup.bytesTotalPacked, 2u);
}

TEST_F(LoggedFiles, ADamagedLogDeletesOnlyWhatAWholeLineNames)
{
    for (const char* name : {"whole.dat", "inside.dat", "behind.dat", "unended.dat"})
        writeFile(at(name), "x");
    std::string junk;
    for (int i = 0; i < 3000; ++i)
        junk += static_cast<char>((i * 7919) % 251 + 1);   // no zero bytes, a CR or LF now and then
    std::string text = at("whole.dat") + "\r\n";
    text += "junk " + at("inside.dat") + " junk\r\n";
    text += junk + "\r\n";
    text += std::string(400, 'L') + at("behind.dat") + "\r\n";   // longer than a line can be
    text += at("behind.dat") + "\r\n";                                 // never reached: reading ended
    text += at("unended.dat");                                          // no line end
    writeFile(logPath(), text);

    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_FALSE(PathExists(at("whole.dat").c_str()));
    EXPECT_TRUE(PathExists(at("inside.dat").c_str()));
    EXPECT_TRUE(PathExists(at("behind.dat").c_str()));
    EXPECT_TRUE(PathExists(at("unended.dat").c_str()));
}

TEST_F(LoggedFiles, AMissingLogStopsTheRemovalWithNothingDeleted)
{
    writeFile(at("Program.exe"), "x");
    EXPECT_FALSE(RemoveLoggedFiles());   // silent: the alert answers by itself
    EXPECT_TRUE(g_setup.logFile == nullptr);
    EXPECT_TRUE(PathExists(at("Program.exe").c_str()));
}

TEST_F(LoggedFiles, WithoutAProgressWindowNothingIsDeleted)
{
    // No window means SetProgress says stop, as after a confirmed cancel.
    ShowProgressStage(false, 0, 0, 0);
    writeFile(at("a.dat"), "x");
    writeLog({at("a.dat")});
    EXPECT_FALSE(RemoveLoggedFiles());
    EXPECT_TRUE(PathExists(at("a.dat").c_str()));
}

} // namespace
