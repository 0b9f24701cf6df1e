// The setup log: where it starts, what its first lines say, and how an update carries it over.
#include <regex>

#include "install_fixture.h"
#include "install/install.h"

namespace {

using SetupLog = InstallFixture;

const std::regex kStamp("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d");

bool bannerMatches(const std::string& line, const std::string& before)
{
    return std::regex_match(line, std::regex("\\*\\*\\*\\*\\* " + before +
                                             ", \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\*\\*\\*\\*\\*"));
}

TEST_F(SetupLog, FirstInstallationCreatesTheFolderAndLogsItWithItsParent)
{
    ASSERT_TRUE(OpenLog());
    ASSERT_NE(g_setup.logFile, nullptr);
    EXPECT_TRUE(OpenLog());          // a second call writes nothing
    const std::vector<std::string> lines = logLines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_TRUE(bannerMatches(lines[0], "Vistrel standard installation: STARTING, creating initial directory and "
                                        "preparing log file")) << lines[0];
    EXPECT_EQ(lines[1], "#" + root_ + "Common\\");
    EXPECT_EQ(lines[2], "#" + root_ + "Common\\Vistrel\\");
}

TEST_F(SetupLog, ExistingFolderGetsTheShortBannerAndKeepsOldLines)
{
    CreateFolderChain(g_setup.commonDataFolder, nullptr);
    writeFile(logPath(), "old line without end");
    g_setup.updateInstall = 1;
    ASSERT_TRUE(OpenLog());
    const std::vector<std::string> lines = logLines();
    ASSERT_EQ(lines.size(), 1u);
    // Nothing is inserted to end the earlier unterminated line.
    EXPECT_EQ(lines[0].substr(0, 20), "old line without end");
    EXPECT_TRUE(bannerMatches(lines[0].substr(20), "Vistrel update installation: STARTING, preparing log file"));
    EXPECT_TRUE(g_setup.logCarriedOver);
}

TEST_F(SetupLog, UpdateCarriesTheLogOverFromTheInstallationFolder)
{
    CreateFolderChain(g_setup.installFolder, nullptr);
    CreateFolderChain(g_setup.commonDataFolder, nullptr);
    const std::string earlier = std::string(g_setup.installFolder) + "hosetup.log";
    writeFile(earlier, "C:\\earlier\\file.txt\r\n");
    g_setup.updateInstall = 1;
    ASSERT_TRUE(OpenLog());
    const std::vector<std::string> lines = logLines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "C:\\earlier\\file.txt");
    EXPECT_TRUE(bannerMatches(lines[1], "Vistrel update installation: STARTING, preparing log file"));
    EXPECT_EQ(readFile(earlier), "C:\\earlier\\file.txt\r\n");   // the old copy stays
}

TEST_F(SetupLog, StandardInstallationNeverCarriesOver)
{
    CreateFolderChain(g_setup.installFolder, nullptr);
    CreateFolderChain(g_setup.commonDataFolder, nullptr);
    writeFile(std::string(g_setup.installFolder) + "hosetup.log", "C:\\earlier\\file.txt\r\n");
    ASSERT_TRUE(OpenLog());
    const std::vector<std::string> lines = logLines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(bannerMatches(lines[0], "Vistrel standard installation: STARTING, preparing log file"));
}

TEST_F(SetupLog, WritersAreQuietWithoutALog)
{
    LogText("nothing");
    LogBanner("***** %s %s *****");
    EXPECT_FALSE(PathExists(logPath().c_str()));
}

} // namespace
