// Whole installations: distributions built with hopack.exe, installed by the real hosetup.exe under
// Wine (silently, or through its pages and alerts), checked on the disk, in the registry and the log.
#include "setup_run.h"

#include "holang.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <regex>

namespace {

// Started elsewhere with -A, a copy reads the package from the named folder and has its own files deleted
// at restart, in order. Of 70 folders the directory step remembers 64: the last is made twice, logged once.
TEST_F(WholeRun, FreshSilentInstallationByACopyStartedWithASourceFolder)
{
    Package package = samplePackage();
    package.shortcuts.push_back({"hovistrel.exe", "Vistrel Help", "icon_directory = 210\nicon = 'hovistrel.chm'\n"});
    const std::string &runner = work_, &program = folders_.install, &documents = folders_.documents;
    std::vector<std::pair<std::string, std::string>> placed;   // path and content
    for (int i = 0; i < 72; ++i) {   // Part10 to Part79, then a second file in the first and the last
        const std::string n = std::to_string(i < 70 ? 10 + i : i == 70 ? 10 : 79), name = i < 70 ? "part.dat" : "second.dat";
        package.files.push_back({"parts/" + n + name, 1, "Part" + n, name, name});
        placed.push_back({program + "Part" + n + "\\" + name, name});
    }
    const std::string dist = build(package);
    for (const char* own : {"hosetup.exe", "holang.dll", "hosetup.chm", "hounzip.exe"})
        ASSERT_TRUE(copyFileTo(dist + own, runner + own)) << own;
    EXPECT_EQ(runProcess("\"" + runner + "hosetup.exe\" -S -A" + dist.substr(0, dist.size() - 1), kRunTimeout), 0u);
    std::vector<std::string> restart;
    for (const char* own : {"holang.dll", "hosetup.chm", "hosetup.gid", "hosetup.exe", "hosetup.log", "hounzip.exe"})
        restart.push_back(CharLowerA(&(runner + own)[0]));
    EXPECT_EQ(pendingDeletions(), restart);

    placed.insert(placed.end(), {{program + "hovistrel.exe", "main program 2022-11-29"}, {program + "hovistrellib.dll", "icons"},
        {documents + "Libraries\\Standard\\standard.hol", "library"}, {program + "Help\\hovistrel.chm", "help"},
        {documents + "Settings\\hovistrel.ini", "[settings]"}, {folders_.commonData + "allusers.dat", "common"},
        {documents + "Drawings\\hovistrel.hod", "LINE 0 0 10 10"}, {program + "hosetup.dat", readFile(dist + "_000000_")}});
    for (const char* own : {"holang.dll", "hosetup.chm", "hosetup.exe", "hounzip.exe"})
        placed.push_back({program + own, readFile(dist + own)});
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "UninstallString", "\"" + program + "hosetup.exe\" -x");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "InstallLocation", program);
    SYSTEMTIME today;
    GetLocalTime(&today);
    char date[16];
    snprintf(date, sizeof date, "%04u%02u%02u", today.wYear, today.wMonth, today.wDay);
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "InstallDate", date);
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kAppPath, "", program + "hovistrel.exe");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, ".HOD", "", "HOVISTREL");
    // A link holds its target's path as it is: the program, and on the desktop the programs-menu group.
    EXPECT_NE(readFile(folders_.programs + "Vistrel Test\\Vistrel.lnk").find(program + "hovistrel.exe"), std::string::npos);
    EXPECT_NE(readFile(folders_.desktop + "Vistrel Test.lnk").find(folders_.programs + "Vistrel Test\\"), std::string::npos);
    // A link's icon from a place of its own (help, 210) rather than its target's (10); Wine stores it in UTF-16.
    std::string icon;
    for (char c : program + "Help\\hovistrel.chm")
        icon += {c, '\0'};
    EXPECT_NE(readFile(folders_.programs + "Vistrel Test\\Vistrel Help.lnk").find(icon), std::string::npos);

    // The log: time-stamped banners from STARTING to EXITING (which ends in a CR LF of its own), "#"
    // lines for the folders made, lines for the files installed (each and its folder once) or made
    // later by the product, all in the product's folders.
    const std::vector<std::string> log = logLines(folders_.commonData + "hosetup.log");
    ASSERT_GT(log.size(), 3u);
    const std::regex banner(R"(\*{5} Vistrel standard installation: [^*]+, \d{4}-\d\d-\d\d \d\d:\d\d:\d\d \*{5})");
    EXPECT_NE(log.front().find(": STARTING, "), std::string::npos) << log.front();
    EXPECT_NE(log[log.size() - 2].find(": EXITING, "), std::string::npos) << log[log.size() - 2];
    EXPECT_EQ(log.back(), "");
    for (auto line = log.begin(); line + 1 != log.end(); ++line) {
        const bool inProduct = line->find(program) == 0 || line->find(folders_.commonData) == 0 ||
                               line->find(folders_.documents) == 0;
        if (line->front() == '*')
            EXPECT_TRUE(std::regex_match(*line, banner)) << *line;
        else if (line->front() == '#')
            EXPECT_TRUE(line->back() == '\\' && (GetFileAttributesA(line->c_str() + 1) & FILE_ATTRIBUTE_DIRECTORY)) << *line;
        else
            EXPECT_TRUE(inProduct) << *line;
    }
    EXPECT_EQ(std::count(log.begin(), log.end(), program + "Help\\hovistrel.chw"), 1);   // the help's index, made later
    for (const auto& [path, content] : placed) {
        EXPECT_EQ(readFile(path), content) << path;
        EXPECT_EQ(std::count(log.begin(), log.end(), path), 1) << path;
        EXPECT_EQ(std::count(log.begin(), log.end(), "#" + path.substr(0, path.find_last_of('\\') + 1)), 1) << path;
    }
}

// An update backs up a settings file named by a backup record and the product's own settings files.
// Refused then: an update older than the installation, and one over an installation recorded before
// the oldest date this program can update; exactly that date is accepted.
TEST_F(WholeRun, UpdateBacksUpWhatItReplacesAndRefusesSomeDates)
{
    ASSERT_EQ(install(build(samplePackage("2022-11-29"))), 0u);
    std::ofstream(folders_.documents + "Settings\\hovistrel.ini", std::ios::binary) << "[edited by the user]";
    std::ofstream(folders_.commonData + "hovistrelallusers.ini", std::ios::binary) << "[all users]";
    const std::string dist = build(samplePackage("2022-12-24"));
    ASSERT_EQ(install(dist), 0u);
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-12-24");
    // The run's backup folder is named by its start to the millisecond; the log names each backup.
    const std::string log = readFile(folders_.commonData + "hosetup.log"), update = "\r\n***** Vistrel update installation: ";
    std::smatch stamp;
    ASSERT_TRUE(std::regex_search(log, stamp, std::regex(R"(\\Backups\\(\d{4}-\d\d-\d\d \d{9})\\Settings\\hovistrel\.ini\r\n)")));
    const std::string backup = folders_.commonData + "Backups\\" + stamp[1].str() + "\\";
    EXPECT_EQ(readFile(backup + "Settings\\hovistrel.ini"), "[edited by the user]");
    EXPECT_EQ(readFile(backup + "AllUsers\\hovistrelallusers.ini"), "[all users]");
    for (const std::string& text : {update + "Creating backup directories", update + "Backing up files",
                                    update + "Backing up Vistrel INI files", update + "Copying files",
                                    "\r\n" + backup + "AllUsers\\hovistrelallusers.ini\r\n"})
        EXPECT_NE(log.find(text), std::string::npos) << text;

    for (const auto& [recorded, exitCode] : {std::pair{"2022-12-25", 2u}, {"2003-03-31", 2u}, {"2003-04-01", 0u}}) {
        SCOPED_TRACE(recorded);
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", REG_SZ, recorded, 11);
        std::ofstream(folders_.install + "hovistrel.exe", std::ios::binary) << "untouched";
        EXPECT_EQ(install(dist), exitCode);
        EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", exitCode ? recorded : "2022-12-24");
        EXPECT_TRUE(exitCode == 0 || readFile(folders_.install + "hovistrel.exe") == "untouched");
    }
}

// The welcome page tells of an update only over an installed product.
TEST_F(WholeRun, TheWelcomePageTellsOfAnUpdateOnlyOverAnInstallation)
{
    const std::string dist = build(samplePackage());
    for (bool installed : {false, true}) {
        SCOPED_TRACE(installed);
        ASSERT_TRUE(!installed || install(dist) == 0);
        SetupChild run("\"" + dist + "hosetup.exe\"");
        EXPECT_EQ(controlText(run.page(), IDC_MAIN_TEXT).find(eUniTexts[kUniUpdateWelcomeInsert]) != std::string::npos, installed);
        pressEscape(run.page());
        ASSERT_TRUE(run.press(run.alert(), IDC_ALERT_BUTTON1));
        EXPECT_EQ(run.exitCode(), 1u);
    }
}

// Leaving the welcome page ends the run as "left at the start" (1), leaving the start page fails it (2);
// the program's own file there without a recorded installation is asked about, and cancel fails it (2).
TEST_F(WholeRun, EndingBeforeTheInstallationStarts)
{
    const std::string dist = build(samplePackage());
    SHCreateDirectoryExA(nullptr, folders_.install.c_str(), nullptr);
    std::ofstream(folders_.install + "hosetup.exe", std::ios::binary) << "an old copy";
    for (const auto& [pagesPassed, button, exitCode] :   // the question after Escape: leave; or cancel
         {std::tuple{0, IDC_ALERT_BUTTON1, 1u}, {1, IDC_ALERT_BUTTON1, 2u}, {2, IDC_ALERT_BUTTON2, 2u}}) {
        SCOPED_TRACE(pagesPassed);
        SetupChild run("\"" + dist + "hosetup.exe\"");
        ASSERT_TRUE(run.passPages(pagesPassed));
        if (pagesPassed < 2)
            pressEscape(run.page());
        ASSERT_TRUE(run.press(run.alert(), button));
        EXPECT_EQ(run.exitCode(), exitCode);
        EXPECT_EQ(readFile(folders_.install + "hosetup.exe"), "an old copy");
    }
}

// The unpacker's failure is reported, then retry (the member mended meanwhile), skip (the file left
// out) or cancel (the run stops: 2) is asked; a silent run (button 0) tries a few times, then stops.
TEST_F(WholeRun, AFailedUnpackingIsRetriedSkippedOrCancelled)
{
    // Record 7 (after record 0, the four program files, the program and its icons) is the library.
    const std::string dist = build(samplePackage()), member = dist + "_000070_";
    const std::string library = folders_.documents + "Libraries\\Standard\\standard.hol";
    ASSERT_TRUE(copyFileTo(member, work_ + "library.zip"));
    for (const auto& [button, exitCode] :
         {std::pair{IDC_ALERT_BUTTON1, 0u}, {IDC_ALERT_BUTTON2, 0u}, {IDC_ALERT_BUTTON3, 2u}, {0, 2u}}) {
        SCOPED_TRACE(button);
        removeProductTraces();
        std::ofstream(member, std::ios::binary) << "not an archive";
        const DWORD start = GetTickCount();
        if (button == 0) {
            EXPECT_EQ(install(dist), exitCode);
            EXPECT_LT(GetTickCount() - start, 60000u);
        } else {
            SetupChild run("\"" + dist + "hosetup.exe\"");
            ASSERT_TRUE(run.passPages(2));
            // The report names the archive as the unpacker got it.
            const std::string report = run.alertText();
            EXPECT_TRUE(std::regex_search(report, std::regex(R"(HOUNZIP \([\s\S]*_000070_\.)"))) << report;
            ASSERT_TRUE(run.press(run.alert(), IDC_ALERT_BUTTON1));
            EXPECT_EQ(run.alertText(), eAlertErrorText[kAlertTextTransferFailedQuestion]);
            ASSERT_TRUE(button != IDC_ALERT_BUTTON1 || copyFileTo(work_ + "library.zip", member));
            ASSERT_TRUE(run.press(run.alert(), button));
            ASSERT_TRUE(exitCode != 0 || run.passPages(1));   // the finish page
            EXPECT_EQ(run.exitCode(), exitCode);
        }
        EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-11-29");   // before the library
        EXPECT_EQ(fileExists(library), button == IDC_ALERT_BUTTON1);
        EXPECT_EQ(fileExists(folders_.documents + "Settings\\hovistrel.ini"), exitCode == 0);   // after it
        const std::vector<std::string> log = logLines(folders_.commonData + "hosetup.log");
        EXPECT_EQ(std::count(log.begin(), log.end(), library), button == IDC_ALERT_BUTTON1 ? 1 : 0);   // not a file left out
    }
}

// A hounzip.exe that is not the one built with the program is never started: its first packed member fails
// as an unpacker that cannot be started does, and the silent run ends with 2.
TEST_F(WholeRun, AForeignUnpackerIsNeverStarted)
{
    const std::string dist = build(samplePackage());
    ASSERT_TRUE(copyFileTo(testBinFolder() + "foreign_unpacker.exe", dist + "hounzip.exe"));
    EXPECT_EQ(install(dist), 2u);
    EXPECT_FALSE(fileExists(dist + "hounzip.exe.ran"));
}

// A cancel is asked about at the next report of each pacing loop, while it still runs: No goes on, Yes ends
// the run (2). Loops as bar positions, the first surely inside, the last no other report shares: stage 0
// (0 to 1000) reports 20 to 39 percent, then 40 to 100; stage 2 (7000 to 8000) 0 to 100 in steps of 2.
TEST_F(WholeRun, ACancelInEachPacingLoopIsAskedAbout)
{
    SetupChild run("\"" + build(samplePackage()) + "hosetup.exe\"");
    ASSERT_TRUE(run.passPages(2));
    HWND progress = run.progress();
    // The child answers only while it pumps its messages, as it does at every report.
    auto position = [progress] {
        DWORD_PTR at = 0;
        SendMessageTimeoutA(GetDlgItem(progress, IDC_PROGRESS_BAR), PBM_GETPOS, 0, 0, SMTO_NORMAL, 10000, &at);
        return static_cast<int>(at);
    };
    for (const auto& [first, last, button] :
         {std::tuple{200, 390, IDC_ALERT_BUTTON2}, {400, 990, IDC_ALERT_BUTTON2}, {7020, 7980, IDC_ALERT_BUTTON1}}) {
        SCOPED_TRACE(first);
        for (const DWORD start = GetTickCount(); position() < first && GetTickCount() - start < kRunTimeout;)
            Sleep(5);
        clickButton(progress, IDCANCEL);
        EXPECT_EQ(run.alertText(), eMessageText[kMsgCancelInstallQuestion]);
        EXPECT_TRUE(position() >= first && position() <= last) << position();
        ASSERT_TRUE(run.press(run.alert(), button));
    }
    EXPECT_EQ(run.exitCode(), 2u);
    EXPECT_TRUE(fileExists(folders_.install + "hovistrel.exe"));   // stopped after the files, before the links
    EXPECT_FALSE(fileExists(folders_.desktop + "Vistrel Test.lnk"));
}

// A cancel confirmed while the links are made ends the run there (2): the installation stays registered
// and its log closed, so its removal clears it.
TEST_F(WholeRun, ACancelConfirmedWhileTheLinksAreMadeEndsTheRun)
{
    SetupChild run("\"" + build(samplePackage()) + "hosetup.exe\"");
    ASSERT_TRUE(run.passPages(2));
    ASSERT_TRUE(run.cancelAt(eMessageText[kMsgProgressCreatingShortcuts], eMessageText[kMsgCancelInstallQuestion]));
    EXPECT_EQ(run.exitCode(), 2u);
    const std::vector<std::string> log = logLines(folders_.commonData + "hosetup.log");
    ASSERT_GT(log.size(), 2u);
    EXPECT_NE(log[log.size() - 2].find(": EXITING, "), std::string::npos) << log[log.size() - 2];
    EXPECT_EQ(runProcess(uninstallCommand() + " -S", kRunTimeout), 0u);
    for (const std::string& path : {folders_.install + "hovistrel.exe", folders_.programs + "Vistrel Test",
                                    folders_.desktop + "Vistrel Test.lnk"})
        EXPECT_FALSE(fileExists(path)) << path;
}

// Closing the main window (Alt+F4, the taskbar) while the files are copied is the cancel request: the
// question comes, No lets the installation finish (0), Yes stops it (2). In a silent run it is ignored.
TEST_F(WholeRun, ClosingTheMainWindowDuringTheCopyAsksToCancel)
{
    const std::string dist = build(samplePackage());
    for (const auto& [options, button, exitCode] :
         {std::tuple{"", IDC_ALERT_BUTTON2, 0u}, {"", IDC_ALERT_BUTTON1, 2u}, {"-S", 0, 0u}}) {
        SCOPED_TRACE(button);
        removeProductTraces();
        SetupChild run("\"" + dist + "hosetup.exe\" " + options);
        ASSERT_TRUE(*options || run.passPages(2));
        HWND main = nullptr;
        for (const DWORD start = GetTickCount(); !main && GetTickCount() - start < kStepTimeout; Sleep(5)) {
            DWORD owner = 0;
            while ((main = FindWindowExA(nullptr, main, "HOSETUP6_MainWClass", nullptr)) &&
                   (GetWindowThreadProcessId(main, &owner), owner != run.child.id)) {}
        }
        ASSERT_TRUE(main && (*options || run.progress()));
        PostMessageA(main, WM_CLOSE, 0, 0);
        if (button) {
            EXPECT_EQ(run.alertText(), eMessageText[kMsgCancelInstallQuestion]);
            ASSERT_TRUE(run.press(run.alert(), button));
            ASSERT_TRUE(exitCode != 0 || run.passPages(1));   // the finish page
        }
        EXPECT_EQ(run.exitCode(), exitCode);
        EXPECT_EQ(regString(HKEY_LOCAL_MACHINE, kUninstall, "UninstallString").empty(), exitCode != 0);
    }
}

} // namespace
