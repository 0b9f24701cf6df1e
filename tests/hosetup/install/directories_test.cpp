// Directory creation: each needed folder made and logged once, the backup tree for an update.
#include "install_fixture.h"
#include "install/install.h"
#include "holang.h"

namespace {

using Directories = InstallFixture;

std::vector<std::string> folderLines(const std::vector<std::string>& lines)
{
    std::vector<std::string> folders;
    for (const std::string& line : lines) {
        if (!line.empty() && line[0] == '#')
            folders.push_back(line.substr(1));
    }
    return folders;
}

TEST_F(Directories, EachFolderIsMadeAndLoggedOnce)
{
    CreateFolderChain(g_setup.installFolder, nullptr);
    CreateFolderChain(g_setup.commonDataFolder, nullptr);
    setRecords({{10, "a.exe", "Bin\\Deep"}, {10, "b.exe", "Bin\\Deep"}, {10, "c.exe", "Bin"},
                {19, "ignored.txt", "Never"}, {13, "backup.txt", "NotHere"}, {40, "lib.hol", "Std"}});
    ASSERT_TRUE(CreateDirectories());
    const std::string install = g_setup.installFolder;
    const std::vector<std::string> expected = {
        std::string(g_setup.userDataFolder).substr(0, strlen(g_setup.userDataFolder) - 8),  // the User folder
        g_setup.userDataFolder,
        install + "Bin\\", install + "Bin\\Deep\\",
        root_ + "Documents\\", g_setup.libraryFolder, std::string(g_setup.libraryFolder) + "Std\\",
    };
    EXPECT_EQ(folderLines(logLines()), expected);
    EXPECT_TRUE(PathExists((install + "Bin\\Deep\\").c_str()));
    EXPECT_FALSE(PathExists((install + "Never\\").c_str()));
    EXPECT_FALSE(PathExists((install + "NotHere\\").c_str()));
}

TEST_F(Directories, BeyondSixtyFourFoldersNothingIsLoggedTwice)
{
    CreateFolderChain(g_setup.commonDataFolder, nullptr);
    CreateFolderChain(g_setup.userDataFolder, nullptr);
    std::vector<RecordPlan> records;
    static char names[70][8];
    for (int i = 0; i < 70; ++i) {
        snprintf(names[i], sizeof names[i], "F%02d", i);
        records.push_back({10, "x.dll", names[i]});
    }
    records.push_back({10, "y.dll", "F68"});   // past the cache: made again, but exists, so not logged
    setRecords(records);
    ASSERT_TRUE(CreateDirectories());
    const std::vector<std::string> folders = folderLines(logLines());
    EXPECT_EQ(folders.size(), 71u);           // Program\ itself and the 70 folders
    EXPECT_TRUE(PathExists((std::string(g_setup.installFolder) + "F69\\").c_str()));
}

TEST_F(Directories, BackupTreeFollowsTheBackupRecords)
{
    CreateFolderChain(g_setup.commonDataFolder, nullptr);
    g_setup.updateInstall = 1;
    setRecords({{63, "hovistrel.ini"}, {203, "plan.hod", "Projects"}, {23, "old.exe"}, {13, "none.txt"}});
    ASSERT_TRUE(CreateBackupDirectories());
    const std::string backup = g_setup.backupFolder;
    EXPECT_TRUE(PathExists((backup + eRelativePaths[7]).c_str()));
    EXPECT_TRUE(PathExists((backup + eRelativePaths[10]).c_str()));
    EXPECT_TRUE(PathExists((backup + eRelativePaths[1]).c_str()));
    EXPECT_TRUE(PathExists((backup + eRelativePaths[3] + "Projects\\").c_str()));
    const std::vector<std::string> lines = logLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_NE(lines[1].find("Creating backup directories"), std::string::npos) << lines[1];
}

} // namespace
