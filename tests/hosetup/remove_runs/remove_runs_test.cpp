// Whole removals: the sample product installed by the real hosetup.exe, then removed by the
// command its uninstall entry names, and the machine checked afterwards.
#include "../install_runs/install_runs.h"

#include "holang.h"

namespace {

constexpr char kNeighbourEntry[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\HoNeighbour";

std::string withoutBackslash(std::string folder)
{
    if (!folder.empty() && folder.back() == '\\')
        folder.pop_back();
    return folder;
}

class RemoveRuns : public InstallRuns {
protected:
    void TearDown() override
    {
        deleteRegTree(HKEY_LOCAL_MACHINE, kNeighbourEntry);
        DeleteFileA((folders_.desktop + "Vistrel 2021.lnk").c_str());
        removeTree(folders_.programs + "Vistrel 2021\\");
        InstallRuns::TearDown();
    }

    std::string uninstallCommand() { return readRegString(HKEY_LOCAL_MACHINE, kUninstall, "UninstallString"); }
};

TEST_F(RemoveRuns, SilentRemovalTakesTheProductAndKeepsTheUsersDrawing)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    const std::string& install = folders_.install;
    const std::string documents = folders_.documents;
    std::ofstream(documents + "Drawings\\mine.hod", std::ios::binary) << "LINE 1 1 2 2";
    // Another program's uninstall entry, and links an earlier release left behind.
    HKEY neighbour;
    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, kNeighbourEntry, 0, nullptr, 0, KEY_WRITE, nullptr, &neighbour,
                              nullptr), ERROR_SUCCESS);
    RegSetValueExA(neighbour, "DisplayName", 0, REG_SZ, reinterpret_cast<const BYTE*>("Neighbour"), 10);
    RegCloseKey(neighbour);
    std::ofstream(folders_.desktop + "Vistrel 2021.lnk", std::ios::binary) << "old link";
    CreateDirectoryA((folders_.programs + "Vistrel 2021").c_str(), nullptr);
    std::ofstream(folders_.programs + "Vistrel 2021\\Vistrel.lnk", std::ios::binary) << "old link";
    const std::string command = uninstallCommand();
    ASSERT_FALSE(command.empty());

    ASSERT_EQ(runProcess(command + " -S", kRunTimeout), 0u);

    for (const char* file : {"hovistrel.exe", "hovistrellib.dll", "hosetup.dat", "hounzip.exe", "hosetup.chm", "Help\\"})
        EXPECT_FALSE(fileExists(install + file)) << file;
    // The running program and its language module stay until the next restart; the list of
    // restart deletions names the help file too, in case a viewer held it open.
    for (const char* file : {"hosetup.exe", "holang.dll"})
        EXPECT_TRUE(fileExists(install + file)) << file;
    const std::string parent = install.substr(0, install.find_last_of('\\', install.size() - 2) + 1);
    const std::vector<std::string> expected = {
        lowerCase(install + "holang.dll"), lowerCase(install + "hosetup.chm"), lowerCase(install + "hosetup.gid"),
        lowerCase(install + "hosetup.exe"), lowerCase(withoutBackslash(install)), lowerCase(withoutBackslash(parent))};
    EXPECT_EQ(pendingDeletions(), expected);

    EXPECT_FALSE(fileExists(folders_.commonData));   // the log, the data and their folder
    EXPECT_EQ(readFile(documents + "Drawings\\mine.hod"), "LINE 1 1 2 2");
    EXPECT_FALSE(fileExists(documents + "Drawings\\hovistrel.hod"));
    EXPECT_FALSE(fileExists(documents + "Settings\\"));
    EXPECT_FALSE(fileExists(documents + "Libraries\\"));

    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kProductKey);
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kAppPath);
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kNeighbourEntry, "DisplayName", "Neighbour");
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, "Software\\Harwick-Orbel");   // nothing else of the maker
    EXPECT_NO_REG_KEY(HKEY_CLASSES_ROOT, "HOVISTREL");
    EXPECT_NO_REG_KEY(HKEY_CLASSES_ROOT, ".HOD");
    EXPECT_REG_KEY(HKEY_CLASSES_ROOT, "HOVISTRELLIB");   // the library type stays registered

    EXPECT_FALSE(fileExists(folders_.desktop + "Vistrel Test.lnk"));
    EXPECT_FALSE(fileExists(folders_.programs + "Vistrel Test\\"));
    EXPECT_FALSE(fileExists(folders_.desktop + "Vistrel 2021.lnk"));
    EXPECT_FALSE(fileExists(folders_.programs + "Vistrel 2021\\"));
}

TEST_F(RemoveRuns, SilentRemovalWithoutARecordedInstallationChangesNothing)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    const std::string command = uninstallCommand();
    deleteRegTree(HKEY_LOCAL_MACHINE, kProductKey);

    const DWORD start = GetTickCount();
    EXPECT_EQ(runProcess(command + " -S", kRunTimeout), 2u);
    EXPECT_LT(GetTickCount() - start, 30000u);   // no message waits for anyone
    EXPECT_TRUE(fileExists(folders_.install + "hovistrel.exe"));
    EXPECT_TRUE(fileExists(folders_.commonData + "hosetup.log"));
    EXPECT_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);
}

TEST_F(RemoveRuns, InteractiveRemovalThroughItsPages)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    ChildProcess child;
    ASSERT_TRUE(startProcess(uninstallCommand(), &child));
    for (const char* name : {"welcome", "start", "finish"})
        passPage(child, name);
    EXPECT_EQ(waitForExit(&child, kRunTimeout), 0u);
    EXPECT_FALSE(fileExists(folders_.install + "hovistrel.exe"));
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);
}

TEST_F(RemoveRuns, CancelConfirmedWhileTheLinksGoEndsWithoutTheFinishPage)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    ChildProcess child;
    ASSERT_TRUE(startProcess(uninstallCommand(), &child));
    passPage(child, "welcome");
    passPage(child, "start");
    HWND progress = waitForDialog(ofChild(dialogWith(370, 720), child), kStepTimeout);
    ASSERT_NE(progress, nullptr);
    // The last stage runs about two seconds: cancel as soon as its text shows.
    const DWORD start = GetTickCount();
    while (controlText(progress, 370) != eMessageText[25] && GetTickCount() - start < 60000)
        Sleep(20);
    ASSERT_EQ(controlText(progress, 370), eMessageText[25]);
    clickButton(progress, IDCANCEL);
    HWND question = nextAlert(child);
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(controlText(question, 720), eMessageText[17]);
    clickButton(question, 571);                        // Yes: stop the removal
    EXPECT_EQ(waitForExit(&child, kRunTimeout), 2u);   // no finish page waited for a click
    EXPECT_FALSE(fileExists(folders_.install + "hovistrel.exe"));
    EXPECT_FALSE(fileExists(folders_.desktop + "Vistrel Test.lnk"));
    EXPECT_EQ(pendingDeletions().size(), 6u);
}

TEST_F(RemoveRuns, WithoutARecordedInstallationThePersonIsTold)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    const std::string command = uninstallCommand();
    deleteRegTree(HKEY_LOCAL_MACHINE, kProductKey);
    ChildProcess child;
    ASSERT_TRUE(startProcess(command, &child));
    passPage(child, "welcome");
    HWND alert = nextAlert(child);
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(controlText(alert, 720), eMessageText[9]);
    clickButton(alert, 571);
    EXPECT_EQ(waitForExit(&child, kRunTimeout), 2u);
    EXPECT_TRUE(fileExists(folders_.install + "hovistrel.exe"));
}

TEST_F(RemoveRuns, AMissingLogStopsTheRemovalBeforeAnythingIsDeleted)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    ASSERT_TRUE(DeleteFileA((folders_.commonData + "hosetup.log").c_str()));
    EXPECT_EQ(runProcess(uninstallCommand() + " -S", kRunTimeout), 2u);
    EXPECT_TRUE(fileExists(folders_.install + "hovistrel.exe"));
    EXPECT_TRUE(fileExists(folders_.desktop + "Vistrel Test.lnk"));
    EXPECT_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);
}

TEST_F(RemoveRuns, PerUserRemovalLeavesTheAllUsersLinks)
{
    const DefaultFolders user = defaultFolders(true);
    ASSERT_EQ(install(build(samplePackage()), "-S -U"), 0u);
    ASSERT_TRUE(fileExists(user.desktop + "Vistrel Test.lnk"));
    std::ofstream(folders_.desktop + "Vistrel Test.lnk", std::ios::binary) << "all users' link";
    EXPECT_EQ(runProcess(uninstallCommand() + " -S", kRunTimeout), 0u);
    EXPECT_FALSE(fileExists(user.desktop + "Vistrel Test.lnk"));
    EXPECT_FALSE(fileExists(user.programs + "Vistrel Test\\"));
    EXPECT_EQ(readFile(folders_.desktop + "Vistrel Test.lnk"), "all users' link");
    EXPECT_FALSE(fileExists(user.documents + "Settings\\"));
}

} // namespace
