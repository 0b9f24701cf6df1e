// Whole removals: the sample product installed by the real hosetup.exe, then removed by the command
// its uninstall entry names, and the machine checked afterwards.
#include "setup_run.h"

#include "holang.h"

#include <fstream>

namespace {

constexpr char kNeighbour[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\HoNeighbour";

TEST_F(WholeRun, SilentRemovalTakesWhatTheLogNamesAndKeepsTheUsersDrawing)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    const std::string &program = folders_.install, drawings = folders_.documents + "Drawings\\";
    std::ofstream(drawings + "mine.hod", std::ios::binary) << "LINE 1 1 2 2";
    RegSetKeyValueA(HKEY_LOCAL_MACHINE, kNeighbour, "DisplayName", REG_SZ, "Neighbour", 10);
    CreateDirectoryA((folders_.programs + "Vistrel 2021").c_str(), nullptr);   // an earlier release's links
    for (const std::string& link : {folders_.desktop + "Vistrel 2021.lnk", folders_.programs + "Vistrel 2021\\Vistrel.lnk"})
        std::ofstream(link, std::ios::binary) << "old link";
    const std::vector<std::string> log = logLines(folders_.commonData + "hosetup.log");
    ASSERT_EQ(runProcess(uninstallCommand() + " -S", kRunTimeout), 0u);

    // Every logged file and folder is gone but the running program, its language module and help file
    // with their folders, and the folders that hold the user's drawing.
    for (const std::string& line : log) {
        const std::string path = line.substr(line.find('#') == 0 ? 1 : 0);
        const bool stays = program.find(path) == 0 || drawings.find(path) == 0 || path == program + "hosetup.exe" ||
                           path == program + "holang.dll" || path == program + "hosetup.chm";
        EXPECT_TRUE(line.empty() || line.front() == '*' || fileExists(path) == stays) << path;
    }
    EXPECT_EQ(readFile(drawings + "mine.hod"), "LINE 1 1 2 2");
    // The restart deletes the rest, in order, the help file too in case a viewer held it.
    const std::string at = CharLowerA(&std::string(program)[0]);
    const std::vector<std::string> restart = {at + "holang.dll", at + "hosetup.chm", at + "hosetup.gid", at + "hosetup.exe",
                                              at + "hosetup.dat", at.substr(0, at.size() - 1), at.substr(0, at.find_last_of('\\', at.size() - 2))};
    EXPECT_EQ(pendingDeletions(), restart);

    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kNeighbour, "DisplayName", "Neighbour");
    for (const char* key : {"Software\\Harwick-Orbel", kAppPath, kUninstall, "Software\\Classes\\.HOD"})
        EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, key);
    for (const std::string& link : {folders_.desktop + "Vistrel Test.lnk", folders_.desktop + "Vistrel 2021.lnk",
                                    folders_.programs + "Vistrel Test", folders_.programs + "Vistrel 2021"})
        EXPECT_FALSE(fileExists(link)) << link;
}

// Without its log or with one it cannot read, or without a recorded installation (silent, or told in
// an interactive run), the removal stops (2) before anything is deleted; a silent one waits for nobody.
TEST_F(WholeRun, RemovalWithoutAReadableLogOrARecordedInstallationDeletesNothing)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    const std::string command = uninstallCommand(), log = folders_.commonData + "hosetup.log";
    HANDLE held = CreateFileA(log.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(runProcess(command + " -S", kRunTimeout), 2u);
    CloseHandle(held);
    ASSERT_TRUE(MoveFileA(log.c_str(), (log + ".aside").c_str()));
    EXPECT_EQ(runProcess(command + " -S", kRunTimeout), 2u);
    ASSERT_TRUE(MoveFileA((log + ".aside").c_str(), log.c_str()));
    deleteRegTree(HKEY_LOCAL_MACHINE, kProductKey);
    EXPECT_EQ(runProcess(command + " -S", kRunTimeout), 2u);
    SetupChild run(command);
    ASSERT_TRUE(run.passPages(1));
    EXPECT_EQ(run.alertText(), eMessageText[kMsgNoInstallation]);
    ASSERT_TRUE(run.press(run.alert(), IDC_ALERT_BUTTON1));
    EXPECT_EQ(run.exitCode(), 2u);
    for (const std::string& path : {folders_.install + "hovistrel.exe", folders_.desktop + "Vistrel Test.lnk", log})
        EXPECT_TRUE(fileExists(path)) << path;
    EXPECT_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);
}

// An interactive removal through its pages ends at the finish page (0); a cancel confirmed while
// its last stage removes the links ends it without (2), with the installation still recorded, so
// that a removal started again finishes it.
TEST_F(WholeRun, InteractiveRemovalAndACancelInItsLastStage)
{
    const std::string dist = build(samplePackage());
    for (bool cancel : {false, true}) {
        SCOPED_TRACE(cancel);
        removeProductTraces();
        ASSERT_EQ(install(dist), 0u);
        SetupChild run(uninstallCommand());
        ASSERT_TRUE(run.passPages(2));
        ASSERT_TRUE(!cancel || run.cancelAt(eMessageText[kMsgProgressRemovingShortcuts], eMessageText[kMsgCancelRemoveQuestion]));
        ASSERT_TRUE(cancel || run.passPages(1));
        EXPECT_EQ(run.exitCode(), cancel ? 2u : 0u);
        EXPECT_FALSE(fileExists(folders_.install + "hovistrel.exe"));
        EXPECT_EQ(pendingDeletions().size(), cancel ? 0u : 7u);
        EXPECT_EQ(!cancel || runProcess(uninstallCommand() + " -S", kRunTimeout) == 0, true);
        EXPECT_EQ(pendingDeletions().size(), 7u);
    }
}

// A per-user installation puts the documents and links into the user's folders; its removal takes
// them and leaves an all-users link of the same name.
TEST_F(WholeRun, PerUserInstallationAndRemoval)
{
    const DefaultFolders user = defaultFolders(true);
    ASSERT_EQ(install(build(samplePackage()), "-S -U"), 0u);
    EXPECT_EQ(readFile(user.documents + "Drawings\\hovistrel.hod"), "LINE 0 0 10 10");
    EXPECT_NE(readFile(user.desktop + "Vistrel Test.lnk").find(user.programs + "Vistrel Test\\"), std::string::npos);
    std::ofstream(folders_.desktop + "Vistrel Test.lnk", std::ios::binary) << "all users' link";
    EXPECT_EQ(runProcess(uninstallCommand() + " -S", kRunTimeout), 0u);
    for (const std::string& path : {user.desktop + "Vistrel Test.lnk", user.programs + "Vistrel Test", user.documents})
        EXPECT_FALSE(fileExists(path)) << path;
    EXPECT_EQ(readFile(folders_.desktop + "Vistrel Test.lnk"), "all users' link");
}

} // namespace
