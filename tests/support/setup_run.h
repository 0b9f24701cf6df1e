// The child-driving helper of the whole-run tests: the real hosetup.exe as a child, its pages and
// alerts answered through the dialog driver (tools/driver), its exit code, log and restart
// deletions; the sample product and its places; the fixture that builds and clears them.
#pragma once

#include "dialog_ids.h"
#include "dialogs.h"
#include "packages.h"
#include "process.h"
#include "registry_checks.h"

#include <shlobj.h>

#include <cstring>

// ---- constants ------------------------------------------------------------------------------

constexpr DWORD kRunTimeout = 180000;
constexpr DWORD kStepTimeout = 60000;   // for the next dialog of a run under load
constexpr char kProductFolder[] = "Harwick-Orbel\\Vistrel (64-bit)\\";
constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";
constexpr char kAppPath[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\hovistrel.exe";
constexpr char kUninstall[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Vistrel Professional 2022";

// ---- types ----------------------------------------------------------------------------------

// The default folders of an installation on this machine, each with its backslash.
struct DefaultFolders {
    std::string install, commonData, documents;   // the product's own below each
    std::string desktop, programs;                // the (common or user's) link folders
};

// One run of hosetup.exe; a child that a failed test left running is ended with the object.
struct SetupChild {
    ChildProcess child;

    explicit SetupChild(const std::string& commandLine) { startProcess(commandLine, &child); }
    ~SetupChild() { exitCode(0); }
    HWND find(int control1, int control2, int control3 = 0)
    {
        DialogQuery query = dialogWith(control1, control2, control3);
        query.processId = child.id;
        return child.process ? waitForDialog(query, kStepTimeout) : nullptr;
    }
    HWND page() { return find(IDC_MAIN_TEXT, IDC_CONTINUE, IDC_PAGE_HELP); }
    HWND progress() { return find(IDC_MAIN_TEXT, IDC_PROGRESS_BAR); }
    HWND alert() { return find(IDC_ALERT_BUTTON1, IDC_ALERT_TEXT); }
    std::string alertText() { return controlText(alert(), IDC_ALERT_TEXT); }
    // Presses the button and waits until its dialog has gone.
    bool press(HWND dialog, int button) { return dialog && (clickButton(dialog, button), waitForWindowGone(dialog)); }
    bool passPages(int count) { return count == 0 || (press(page(), IDC_CONTINUE) && passPages(count - 1)); }
    DWORD exitCode(DWORD timeoutMs = kRunTimeout) { return child.process ? waitForExit(&child, timeoutMs) : kNoExitCode; }
    // Once the progress window shows stage, presses its Cancel, expects question and answers Yes.
    bool cancelAt(const std::string& stage, const std::string& question)
    {
        HWND window = progress();
        for (const DWORD start = GetTickCount(); controlText(window, IDC_MAIN_TEXT) != stage && GetTickCount() - start < kRunTimeout;)
            Sleep(20);
        clickButton(window, IDCANCEL);
        EXPECT_EQ(alertText(), question);
        return press(alert(), IDC_ALERT_BUTTON1);
    }
};

// ---- functions ------------------------------------------------------------------------------

// A small product with a file in each kind of place the installer serves, and one shortcut.
inline Package samplePackage(const std::string& compileDate = "2022-11-29")
{
    Package package;
    package.compileDate = compileDate;
    package.files = {
        {"bin/hovistrel.exe", 10, "", "", "main program " + compileDate}, {"bin/hovistrellib.dll", 10, "", "", "icons"},
        {"lib/standard.hol", 40, "Standard", "", "library"}, {"settings/hovistrel.ini", 64, "", "", "[settings]"},
        {"drawings/hovistrel.hod", 200, "", "", "LINE 0 0 10 10"}, {"help/hovistrel.chm", 210, "", "", "help"},
        {"data/allusers.dat", 30, "", "", "common"}, {"", 63, "", "hovistrel.ini", ""},
    };
    package.shortcuts = {{"hovistrel.exe", "Vistrel", ""}};
    return package;
}

inline DefaultFolders defaultFolders(bool perUser)
{
    return {shellFolder(CSIDL_PROGRAM_FILES) + kProductFolder, shellFolder(CSIDL_COMMON_APPDATA) + kProductFolder,
            shellFolder(perUser ? CSIDL_PERSONAL : CSIDL_COMMON_DOCUMENTS) + kProductFolder,
            shellFolder(perUser ? CSIDL_DESKTOPDIRECTORY : CSIDL_COMMON_DESKTOPDIRECTORY),
            shellFolder(perUser ? CSIDL_PROGRAMS : CSIDL_COMMON_PROGRAMS)};
}

// Clears every trace a run may leave: registry entries, folders, links, restart deletions, and what
// the removal tests add (a neighbour's uninstall entry, an earlier release's links).
inline void removeProductTraces()
{
    const std::string windows = "Software\\Microsoft\\Windows\\CurrentVersion\\";
    for (const std::string& key : {std::string("Software\\Harwick-Orbel"), windows + "App Paths\\hovistrel.exe",
                                   windows + "Uninstall\\Vistrel Professional 2022", windows + "Uninstall\\HoNeighbour",
                                   std::string("Software\\Classes\\.HOD"), std::string("Software\\Classes\\HOVISTREL"),
                                   std::string("Software\\Classes\\.HOL"), std::string("Software\\Classes\\HOVISTRELLIB")}) {
        deleteRegTree(HKEY_LOCAL_MACHINE, key.c_str());
        deleteRegTree(HKEY_CURRENT_USER, key.c_str());
    }
    RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, "System\\CurrentControlSet\\Control\\Session Manager",
                       "PendingFileRenameOperations");
    for (bool perUser : {false, true}) {
        const DefaultFolders folders = defaultFolders(perUser);
        for (const std::string& path : {folders.install, folders.commonData, folders.documents,
                                        shellFolder(perUser ? CSIDL_APPDATA : CSIDL_COMMON_APPDATA) + kProductFolder,
                                        folders.programs + "Vistrel Test", folders.programs + "Vistrel 2021",
                                        folders.desktop + "Vistrel Test.lnk", folders.desktop + "Vistrel 2021.lnk"})
            removeTree(path);
    }
}

inline std::vector<std::string> logLines(const std::string& logFile)   // split at CR LF
{
    const std::string text = readFile(logFile);
    std::vector<std::string> lines;
    for (std::size_t start = 0, end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
        lines.push_back(text.substr(start, end - start));
    return lines;
}

// The sources of the pending restart deletions, in order and in lower case. Sources and targets
// alternate, each ending in a zero; a deletion's target is empty, and "\??\" begins each source.
inline std::vector<std::string> pendingDeletions()
{
    char data[32768] = {};
    DWORD size = sizeof data - 2;
    RegGetValueA(HKEY_LOCAL_MACHINE, "System\\CurrentControlSet\\Control\\Session Manager",
                 "PendingFileRenameOperations", RRF_RT_REG_MULTI_SZ, nullptr, data, &size);
    std::vector<std::string> sources;
    for (char* item = data; *item; item += std::strlen(item) + 1) {
        sources.push_back(CharLowerA(item) + (std::strncmp(item, "\\??\\", 4) == 0 ? 4 : 0));
        item += std::strlen(item) + 1;   // to its target, which the loop's step passes
    }
    return sources;
}

// The fixture (after the functions it uses): each test starts and ends on a machine without the product.
class WholeRun : public ::testing::Test {
protected:
    void SetUp() override { removeProductTraces(); }
    void TearDown() override { removeProductTraces(); removeTree(work_); }
    std::string build(const Package& package)   // into a fresh distribution folder
    {
        const std::string number = std::to_string(++builds_), dist = work_ + "dist" + number + "\\";
        EXPECT_EQ(buildPackage(package, work_ + "src" + number + "\\", dist), 0u);
        return dist;
    }
    DWORD install(const std::string& dist, const std::string& options = "-S")
    {
        return runProcess("\"" + dist + "hosetup.exe\" " + options, kRunTimeout);
    }
    std::string uninstallCommand() { return regString(HKEY_LOCAL_MACHINE, kUninstall, "UninstallString").c_str(); }

    std::string work_ = makeTempFolder("pkg");
    DefaultFolders folders_ = defaultFolders(false);
    int builds_ = 0;
};
