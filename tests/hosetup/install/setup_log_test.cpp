// The copy step's error path, the folder lines of the setup log, and how an update carries an
// earlier log over.
#include "install_fixture.h"

#include "ui/ui.h"

namespace {

using SetupLog = InstallFixture;

TEST_F(SetupLog, AFailingUnpackerEndsASilentRunAfterThreeAttemptsWithNothingLogged)
{
    setRecords({{10, "broken.dll"}});
    writeFile(std::string(g_setup.sourceFolder) + "_000000_", "this is no zip archive");
    ASSERT_TRUE(ShowProgressStage(true, kStageInstallCopy, 0, 0));
    EXPECT_FALSE(CopyFiles());
    const std::string target = std::string(g_setup.installFolder) + "broken.dll";
    EXPECT_FALSE(PathExists(target.c_str()));
    CloseLog(true);
    EXPECT_EQ(readFile(logPath()).find(target), std::string::npos);
    // Nobody answers a silent run: the same file is tried again twice, and the third failure cancels.
    const struct { int attempt, answer; } rows[] = {{1, kButtonRetryFile}, {2, kButtonRetryFile}, {3, kButtonCancel}};
    for (const auto& row : rows)
        EXPECT_EQ(askAfterFailedCopy("failed", row.attempt), row.answer) << "attempt " << row.attempt;
}

TEST_F(SetupLog, MakeFolderChainLogsExactlyTheLevelsItMade)
{
    ASSERT_TRUE(OpenForAppending(&g_setup.logFile, (root_ + "chain.log").c_str()));
    CreateDirectoryA((root_ + "a").c_str(), nullptr);
    EXPECT_TRUE(MakeFolderChain((root_ + "a\\b\\c").c_str(), true));
    EXPECT_TRUE(PathExists((root_ + "a\\b\\c\\").c_str()));
    CloseFile(g_setup.logFile);
    g_setup.logFile = nullptr;
    EXPECT_EQ(readFile(root_ + "chain.log"), "#" + root_ + "a\\b\\\r\n#" + root_ + "a\\b\\c\\\r\n");
}

TEST_F(SetupLog, AnUpdateCarriesTheEarlierLogOverOnlyFromTheInstallationFolder)
{
    // commonLog: the log already in the common data folder; before: the log's text ahead of the banner.
    const struct { const char* state; bool update, recordedInProductKey; const char *commonLog, *before; } rows[] = {
        {"update, log only in the installation folder", true, false, nullptr, "C:\\earlier\\file.txt\r\n"},
        {"update, log in common data: kept, nothing inserted", true, false, "old line", "old line"},
        {"standard installation", false, false, nullptr, ""},
        {"update recorded in the product key", true, true, nullptr, ""},
    };
    const std::string earlier = std::string(g_setup.installFolder) + "hosetup.log";
    writeFile(earlier, "C:\\earlier\\file.txt\r\n");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.state);
        DeleteFileA(logPath().c_str());
        if (row.commonLog)
            writeFile(logPath(), row.commonLog);
        g_setup.updateInstall = row.update;
        g_setup.logCarriedOver = row.recordedInProductKey;
        ASSERT_TRUE(OpenLog());
        CloseLog(false);
        // What was there, then the banner with a 19-character time stamp, and nothing else.
        const std::string text = readFile(logPath()), start = row.before + std::string("***** Vistrel ") +
                                 (row.update ? "update" : "standard") + " installation: STARTING, preparing log file, ";
        EXPECT_EQ(text.substr(0, start.size()), start);
        EXPECT_EQ(text.size(), start.size() + 27) << text;
        EXPECT_EQ(readFile(earlier), "C:\\earlier\\file.txt\r\n");   // the old copy stays
    }
}

} // namespace
