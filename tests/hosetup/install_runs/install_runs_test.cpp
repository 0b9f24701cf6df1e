// Whole installations: a distribution built with hopack.exe, installed by the real hosetup.exe
// under Wine, and checked on the file system and the registry as a support engineer would.
#include "install_runs.h"

namespace {

TEST_F(InstallRuns, FreshSilentInstallation)
{
    const std::string dist = build(samplePackage());
    ASSERT_EQ(install(dist), 0u);

    const std::string& install = folders_.install;
    const std::string documents = folders_.documents;
    EXPECT_EQ(readFile(install + "hovistrel.exe"), "main program 2022-11-29");
    EXPECT_EQ(readFile(install + "hovistrellib.dll"), "icons");
    EXPECT_EQ(readFile(documents + "Libraries\\Standard\\standard.hol"), "library");
    EXPECT_EQ(readFile(documents + "Settings\\hovistrel.ini"), "[settings]");
    EXPECT_EQ(readFile(documents + "Drawings\\hovistrel.hod"), "LINE 0 0 10 10");
    EXPECT_EQ(readFile(install + "Help\\hovistrel.chm"), "help");
    EXPECT_EQ(readFile(folders_.commonData + "allusers.dat"), "common");
    EXPECT_EQ(readFile(install + "hosetup.dat"), readFile(dist + "_000000_"));
    for (const char* own : {"holang.dll", "hosetup.chm", "hosetup.exe", "hounzip.exe"})
        EXPECT_EQ(readFile(install + own), readFile(dist + own)) << own;

    EXPECT_REG_DWORD(HKEY_LOCAL_MACHINE, kProductKey, "UserMode", 0);
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "PathLocal", "*");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", "2022-11-29");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kAppPath, "", install + "hovistrel.exe");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "UninstallString", "\"" + install + "hosetup.exe\" -x");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "DisplayName", "Vistrel Test Release 2022");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "DisplayVersion", "2022.2.11.29, 2022.2.11.29, 2022-11-29");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "Version", "22.142.1129");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTREL\\shell\\open\\command", "", "\"" + install + "hovistrel.exe\" \"%1\"");

    EXPECT_EQ(lowerCase(linkTarget(folders_.programs + "Vistrel Test\\Vistrel.lnk")), lowerCase(install + "hovistrel.exe"));
    EXPECT_TRUE(fileExists(folders_.desktop + "Vistrel Test.lnk"));

    const std::vector<std::string> log = lines(readFile(folders_.commonData + "hosetup.log"));
    const std::regex stamp(", \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\*\\*\\*\\*\\*$");
    ASSERT_GT(log.size(), 120u);
    EXPECT_TRUE(startsWith(log[0], "***** Vistrel standard installation: STARTING, creating initial directory and "
                                   "preparing log file, ")) << log[0];
    EXPECT_EQ(log[1], "#" + folders_.commonData.substr(0, folders_.commonData.size() - 17));  // the maker's folder
    EXPECT_EQ(log[2], "#" + folders_.commonData);
    EXPECT_TRUE(std::regex_search(log[3], stamp)) << log[3];
    EXPECT_TRUE(startsWith(log[3], "***** Vistrel standard installation: Creating directories, ")) << log[3];
    std::size_t copying = 0;
    while (copying < log.size() && log[copying].find("Copying files") == std::string::npos)
        ++copying;
    ASSERT_LT(copying + 5, log.size());
    EXPECT_EQ(log[copying + 1], install + "hosetup.dat");
    EXPECT_NE(std::find(log.begin(), log.end(), install + "Help\\hovistrel.chw"), log.end());
    // The EXITING banner ends in CR LF of its own and the line writer adds another.
    EXPECT_TRUE(startsWith(log[log.size() - 2], "***** Vistrel standard installation: EXITING, ")) << log[log.size() - 2];
    EXPECT_EQ(log.back(), "");
}

TEST_F(InstallRuns, UpdateBacksUpAndAppends)
{
    ASSERT_EQ(install(build(samplePackage("2022-11-29"))), 0u);
    // Changes an update must not undo, and a settings file the user edited.
    HKEY key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kAppPath, 0, KEY_WRITE, &key), ERROR_SUCCESS);
    RegSetValueExA(key, "", 0, REG_SZ, reinterpret_cast<const BYTE*>("kept"), 5);
    RegCloseKey(key);
    std::ofstream(folders_.documents + "Settings\\hovistrel.ini", std::ios::binary) << "[edited by the user]";

    ASSERT_EQ(install(build(samplePackage("2022-12-24"))), 0u);
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-12-24");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kAppPath, "", "kept");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", "2022-12-24");

    // The edited settings file was saved into this run's time-stamped backup folder first.
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA((folders_.commonData + "Backups\\*-*").c_str(), &found);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    FindClose(search);
    EXPECT_TRUE(std::regex_match(found.cFileName, std::regex("\\d{4}-\\d\\d-\\d\\d \\d{9}"))) << found.cFileName;
    const std::string backup = folders_.commonData + "Backups\\" + found.cFileName + "\\";
    EXPECT_EQ(readFile(backup + "Settings\\hovistrel.ini"), "[edited by the user]");

    const std::string log = readFile(folders_.commonData + "hosetup.log");
    EXPECT_NE(log.find("***** Vistrel standard installation: Copying files"), std::string::npos);
    EXPECT_NE(log.find("***** Vistrel update installation: Creating backup directories"), std::string::npos);
    EXPECT_NE(log.find("***** Vistrel update installation: Backing up files"), std::string::npos);
    EXPECT_NE(log.find("***** Vistrel update installation: Copying files"), std::string::npos);
    EXPECT_NE(log.find(backup + "Settings\\hovistrel.ini\r\n"), std::string::npos);
}

TEST_F(InstallRuns, RefusedDowngradeAndTooOldInstallation)
{
    ASSERT_EQ(install(build(samplePackage("2022-11-29"))), 0u);
    const std::string older = build(samplePackage("2022-11-28"));
    std::ofstream(folders_.install + "hovistrel.exe", std::ios::binary) << "untouched";
    EXPECT_EQ(install(older), 2u);
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "untouched");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", "2022-11-29");

    // An installation recorded before the oldest date this program can update is refused too,
    // and exactly that date is accepted.
    const std::string package = build(samplePackage("2023-01-01"));
    HKEY key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kProductKey, 0, KEY_WRITE, &key), ERROR_SUCCESS);
    RegSetValueExA(key, "CompileDate", 0, REG_SZ, reinterpret_cast<const BYTE*>("2003-03-31"), 11);
    RegCloseKey(key);
    EXPECT_EQ(install(package), 2u);
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kProductKey, 0, KEY_WRITE, &key), ERROR_SUCCESS);
    RegSetValueExA(key, "CompileDate", 0, REG_SZ, reinterpret_cast<const BYTE*>("2003-04-01"), 11);
    RegCloseKey(key);
    EXPECT_EQ(install(package), 0u);
}

TEST_F(InstallRuns, PerUserInstallationWithoutShortcuts)
{
    Package package = samplePackage();
    package.shortcuts.clear();
    ASSERT_EQ(install(build(package), "-S -U"), 0u);
    const DefaultFolders user = defaultFolders(true);
    EXPECT_EQ(readFile(user.documents + "Drawings\\hovistrel.hod"), "LINE 0 0 10 10");
    EXPECT_REG_DWORD(HKEY_LOCAL_MACHINE, kProductKey, "UserMode", 1);
    // No shortcut records: the shortcut step is not entered, so no group and no desktop link.
    EXPECT_FALSE(fileExists(user.programs + "Vistrel Test\\"));
    EXPECT_FALSE(fileExists(user.desktop + "Vistrel Test.lnk"));
}

TEST_F(InstallRuns, SilentRunWithAFailingUnpackerEndsInSeconds)
{
    const std::string dist = build(samplePackage());
    // Record 5 (after record 0 and the four program files) is the packed hovistrel.exe.
    std::ofstream(dist + "_000050_", std::ios::binary) << "not an archive";
    const DWORD start = GetTickCount();
    EXPECT_EQ(install(dist), 2u);
    EXPECT_LT(GetTickCount() - start, 60000u);
    EXPECT_FALSE(fileExists(folders_.install + "hovistrel.exe"));
}

TEST_F(InstallRuns, StandardRunOverAnInstalledProgramAsksOnce)
{
    CreateDirectoryA((shellFolder(CSIDL_PROGRAM_FILES) + "Harwick-Orbel").c_str(), nullptr);
    CreateDirectoryA(folders_.install.c_str(), nullptr);
    std::ofstream(folders_.install + "hosetup.exe", std::ios::binary) << "an old copy";
    const std::string dist = build(samplePackage());
    ChildProcess child;
    ASSERT_TRUE(startProcess("\"" + dist + "hosetup.exe\"", &child));
    passPage(child, "welcome");
    HWND start = waitForDialog(ofChild(dialogWith(370, 570, 22), child), kStepTimeout);
    ASSERT_NE(start, nullptr);
    clickButton(start, 570);
    HWND question = nextAlert(child);
    ASSERT_NE(question, nullptr);
    clickButton(question, 572);                  // the second button: cancel
    EXPECT_EQ(waitForExit(&child, kRunTimeout), 2u);
    EXPECT_EQ(readFile(folders_.install + "hosetup.exe"), "an old copy");
}

// Leaving the first page ends the run as "left at the start" (1); leaving the start page that
// the installation shows afterwards stops the installation, a failed run (2).
TEST_F(InstallRuns, LeavingTheWelcomeOrTheStartPageEndsWithItsOwnCode)
{
    const std::string dist = build(samplePackage());
    for (int pagesPassed : {0, 1}) {
        ChildProcess child;
        ASSERT_TRUE(startProcess("\"" + dist + "hosetup.exe\"", &child));
        if (pagesPassed > 0)
            passPage(child, "welcome");
        HWND left = waitForDialog(ofChild(dialogWith(370, 570, 22), child), kStepTimeout);
        ASSERT_NE(left, nullptr);
        pressEscape(left);
        HWND question = nextAlert(child);
        ASSERT_NE(question, nullptr);
        clickButton(question, 571);   // Yes, leave
        EXPECT_EQ(waitForExit(&child, kRunTimeout), pagesPassed == 0 ? 1u : 2u) << pagesPassed;
        EXPECT_FALSE(fileExists(folders_.install + "hovistrel.exe"));
    }
}

// A copy of the program started from a temporary place with -A reads the package from the
// named folder and, when its window closes, has its own files deleted at the next restart.
TEST_F(InstallRuns, ACopyStartedWithASourceFolderRemovesItselfAtRestart)
{
    const std::string dist = build(samplePackage());
    const std::string runner = work_ + "runner\\";
    ASSERT_TRUE(CreateDirectoryA(runner.c_str(), nullptr));
    for (const char* own : {"hosetup.exe", "holang.dll", "hosetup.chm", "hounzip.exe"})
        ASSERT_TRUE(copyFileTo(dist + own, runner + own)) << own;
    const std::string source = dist.substr(0, dist.size() - 1);   // the program adds the backslash
    ASSERT_EQ(source.find(' '), std::string::npos) << "the option below is not quoted";

    EXPECT_EQ(runProcess("\"" + runner + "hosetup.exe\" -S -A" + source, kRunTimeout), 0u);
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-11-29");
    std::vector<std::string> expected;
    for (const char* own : {"holang.dll", "hosetup.chm", "hosetup.gid", "hosetup.exe", "hosetup.log", "hounzip.exe"})
        expected.push_back(lowerCase(runner + own));
    EXPECT_EQ(pendingDeletions(), expected);
}

} // namespace
