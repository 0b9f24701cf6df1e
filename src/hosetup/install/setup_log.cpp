// The setup log hosetup.log: banners, "#" folder lines and bare file paths. It is the contract
// between installation and removal, so its lines are never translated.
#include "install/install.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "ui/ui.h"

#include <cstring>

namespace {

constexpr char kLogName[] = "hosetup.log";
constexpr int kLogQuestionKind = 13;   // file alert: the log cannot be opened, go on without?

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
    HOI_CopyA(earlier, sizeof earlier, g_setup.installFolder, kLogName);
    if (PathExists(earlier))
        CopyFileA(earlier, logPath, TRUE);
}

} // namespace

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

bool OpenLog()
{
    if (g_setup.logFile)
        return true;

    const bool folderExisted = PathExists(g_setup.commonDataFolder);
    if (!folderExisted && (!CreateFolderChain(g_setup.commonDataFolder, false) ||
                           !PathExists(g_setup.commonDataFolder)))
        return false;

    char logPath[kPathCapacity];
    HOI_CopyA(logPath, sizeof logPath, g_setup.commonDataFolder, kLogName);
    carryOverEarlierLog(logPath);

    HANDLE file = nullptr;
    if (!OpenForAppending(&file, logPath)) {
        g_setup.logFile = nullptr;
        if (ShowFileAlert(g_setup.mainWindow, logPath, kLogQuestionKind) == kButtonCancel)
            return false;
        return true;    // go on without a log: every later write is a no-op
    }
    g_setup.logFile = file;

    if (folderExisted) {
        LogBanner("***** Vistrel %s installation: STARTING, preparing log file, %s *****");
        return true;
    }
    LogBanner("***** Vistrel %s installation: STARTING, creating initial directory and preparing log file, %s *****");
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
