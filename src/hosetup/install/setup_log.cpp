// The setup log hosetup.log: banners, "#" folder lines and bare file paths. It is the contract
// between installation and removal, so its lines are never translated. The installation writes
// it here; the removal reads it back through the same module's line kinds.
#include "install/install.h"
#include "core/core.h"
#include "format/program_files.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"

#include <cstring>

namespace {

constexpr int kLogQuestionKind = 13;   // file alert: the log cannot be opened, go on without?
constexpr int kFolderAlertKind = 6;    // file alert: a folder cannot be created

// An update that finds the earlier log only in the installation folder carries it over, so the
// removal later sees both runs' lines.
void carryOverEarlierLog(const char* logPath)
{
    if (!g_setup.updateInstall || g_setup.logCarriedOver)
        return;
    if (PathExists(logPath)) {
        g_setup.logCarriedOver = 1;
        return;
    }
    char earlier[kPathCapacity];
    if (SetupLogPath(g_setup.installFolder, earlier, sizeof earlier) && PathExists(earlier))
        copyFilePumping(earlier, logPath, true, false);
}

} // namespace

bool SetupLogPath(const char* folder, char* path, std::size_t capacity)
{
    return composePath(path, capacity, folder, kSetupLogName);
}

LogLineKind classifyLogLine(const char* line)
{
    if (line[0] == '*')
        return LogLineKind::Banner;
    if (line[0] == '#')
        return LogLineKind::Folder;
    return LogLineKind::File;
}

void formatLogTime(char* buffer, std::size_t capacity)
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    HOI_PrintA(buffer, capacity, "%04d-%02d-%02d %02d:%02d:%02d", now.wYear, now.wMonth, now.wDay, now.wHour,
               now.wMinute, now.wSecond);
}

const char* logModeWord()
{
    return g_setup.updateInstall ? "update" : "standard";
}

void LogText(const char* text)
{
    if (g_setup.logFile)
        WriteLogLine(g_setup.logFile, text, std::strlen(text));
}

void LogTimedLine(const char* format)
{
    if (!g_setup.logFile)
        return;
    char stamp[32];
    char line[kMessageCapacity];
    formatLogTime(stamp, sizeof stamp);
    const std::size_t length = HOI_PrintA(line, sizeof line, format, stamp);
    WriteLogLine(g_setup.logFile, line, length);
}

void LogBanner(const char* format)
{
    if (!g_setup.logFile)
        return;
    char stamp[32];
    char line[kMessageCapacity];
    formatLogTime(stamp, sizeof stamp);
    const std::size_t length = HOI_PrintA(line, sizeof line, format, logModeWord(), stamp);
    WriteLogLine(g_setup.logFile, line, length);
}

void LogIgnoredFolderValues()
{
    // A banner line: the removal skips every line that starts with "*", so it never acts on one.
    for (std::uint32_t i = 0; i < g_setup.ignoredFolderCount && i < kIgnoredFolderSlots; ++i) {
        char line[kMessageCapacity];
        HOI_PrintA(line, sizeof line, "***** Ignored per-user folder value %s *****", g_setup.ignoredFolderValues[i]);
        LogText(line);
    }
}

bool MakeFolderChain(const char* path, bool logIt)
{
    char folder[kPathCapacity];
    HOI_CopyA(folder, sizeof folder, path);
    HOI_PathA(folder, sizeof folder);
    if (!IsFolderPath(path)) {
        char message[kMessageCapacity];
        HOI_PrintA(message, sizeof message, eMessageText[5], folder);
        AlertError(g_setup.mainWindow, message);
        return false;
    }
    FolderLevels missing;
    const bool made = CreateFolderChain(path, &missing);
    // Levels made before a refusal are logged all the same, so that the removal takes them away.
    for (std::size_t i = 0; logIt && i < missing.count; ++i) {
        char line[kMessageCapacity];
        HOI_PrintA(line, sizeof line, "#%s", missing.level[i]);
        LogText(line);
    }
    if (!made) {
        // A level is there but reached through a link: nothing may be made below it.
        ShowFileAlert(g_setup.mainWindow, folder, kFolderAlertKind);
        return false;
    }
    return true;
}

bool OpenLog()
{
    if (g_setup.logFile)
        return true;

    // An existing folder goes through the chain too: one reached through a link is refused.
    const bool folderExisted = PathExists(g_setup.commonDataFolder);
    if (!MakeFolderChain(g_setup.commonDataFolder, false) || !PathExists(g_setup.commonDataFolder))
        return false;

    // A log path that would be cut names another file: it is refused like one that cannot open.
    char logPath[kPathCapacity];
    const bool fits = SetupLogPath(g_setup.commonDataFolder, logPath, sizeof logPath);
    if (fits)
        carryOverEarlierLog(logPath);

    HANDLE file = nullptr;
    if (!fits || !OpenForAppending(&file, logPath)) {
        g_setup.logFile = nullptr;
        if (ShowFileAlert(g_setup.mainWindow, fits ? logPath : g_setup.commonDataFolder, kLogQuestionKind) ==
            kButtonCancel)
            return false;
        return true;    // go on without a log: every later write is a no-op
    }
    g_setup.logFile = file;

    LogBanner(folderExisted
                  ? "***** Vistrel %s installation: STARTING, preparing log file, %s *****"
                  : "***** Vistrel %s installation: STARTING, creating initial directory and preparing log file, %s *****");
    LogIgnoredFolderValues();
    if (folderExisted)
        return true;
    // The parent is logged whether or not this run made it: removing a non-empty folder later
    // fails harmlessly.
    char parent[kPathCapacity] = "";   // stays empty when there is no parent
    char line[kMessageCapacity];
    ParentFolder(g_setup.commonDataFolder, parent, sizeof parent);
    HOI_PrintA(line, sizeof line, "#%s", parent);
    LogText(line);
    HOI_PrintA(line, sizeof line, "#%s", g_setup.commonDataFolder);
    LogText(line);
    return true;
}

void CloseLog()
{
    if (!g_setup.logFile)
        return;
    LogBanner("***** Vistrel %s installation: EXITING, %s *****\r\n");
    CloseFile(g_setup.logFile);
    g_setup.logFile = nullptr;
}
