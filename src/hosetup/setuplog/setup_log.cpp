// The setup log hosetup.log: banners, "#" folder lines and bare file paths. It is the contract
// between installation and removal, so its lines are never translated. The installation writes
// it here; the removal reads it back through the same module's line kinds (log_lines.cpp). Every line reaches the
// disk whole or not at all, and a line that cannot be written stops the step: a file on disk that
// the log does not name is one no removal would find.
#include "setuplog/setuplog.h"
#include "core/core.h"
#include "files/files.h"
#include "format/program_files.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "ui/ui.h"

#include <cstring>

namespace {

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

// Opens the log or its journal in the common data folder for appending. A file that cannot be
// opened is asked about: a person may go on without it (*file stays 0) or stop; a silent run
// tries again like any failed write and then stops. A path that would be cut names another file
// and is refused like one that cannot be opened.
bool openRecordFile(const char* name, HANDLE* file)
{
    char path[kPathCapacity];
    const bool fits = composePath(path, sizeof path, g_setup.commonDataFolder, name);
    for (int attempt = 1;; ++attempt) {
        if (fits && OpenForAppending(file, path))
            return true;
        *file = nullptr;
        if (g_setup.optionSilent) {
            if (askAfterFailedWrite(path, attempt) == kButtonCancel)
                return false;
            continue;
        }
        return ShowFileAlert(g_setup.mainWindow, fits ? path : g_setup.commonDataFolder, kFileAlertLogNotCreated) !=
               kButtonCancel;
    }
}

bool logFolderLine(const char* folder)
{
    char line[kMessageCapacity];
    formatFolderLine(line, sizeof line, folder);
    return LogText(line);
}

} // namespace

bool SetupLogPath(const char* folder, char* path, std::size_t capacity)
{
    return composePath(path, capacity, folder, kSetupLogName);
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

bool LogText(const char* text)
{
    return !g_setup.logFile || writeRecordLine(g_setup.logFile, kSetupLogName, text, false);
}

bool LogTimedLine(const char* format)
{
    char stamp[32];
    char line[kMessageCapacity];
    formatLogTime(stamp, sizeof stamp);
    HOI_PrintA(line, sizeof line, format, stamp);
    return LogText(line);
}

bool LogBanner(const char* format)
{
    char stamp[32];
    char line[kMessageCapacity];
    formatLogTime(stamp, sizeof stamp);
    HOI_PrintA(line, sizeof line, format, logModeWord(), stamp);
    return LogText(line);
}

bool LogIgnoredFolderValues()
{
    // A banner line: the removal skips every line that starts with "*", so it never acts on one.
    for (std::uint32_t i = 0; i < g_setup.ignoredFolderCount && i < kIgnoredFolderSlots; ++i) {
        char line[kMessageCapacity];
        HOI_PrintA(line, sizeof line, "***** Ignored per-user folder value %s *****", g_setup.ignoredFolderValues[i]);
        if (!LogText(line))
            return false;
    }
    return true;
}

bool LogSkippedFile(const char* path)
{
    return LogText(kSkippedFileMarker) && LogText(path);
}

bool TakeOverJournal()
{
    HANDLE journal = g_setup.journalFile;
    if (!journal || GetSize(journal) == 0)
        return true;
    bool ok = Seek(journal, 0, FILE_BEGIN);
    bool first = true;
    char line[kPathCapacity];
    while (ok && ReadTextLine(journal, line, sizeof line)) {
        // Banners are never journaled: a line that looks like one is not acted on anywhere.
        if (classifyLogLine(line) == LogLineKind::Banner)
            continue;
        if (first && !LogBanner("***** Vistrel %s installation: Taking over an interrupted run, %s *****"))
            return false;
        first = false;
        ok = LogText(line);
    }
    // The lines stay in the journal until this run settles it; later lines go after them.
    return ok && Seek(journal, 0, FILE_END);
}

bool MakeFolderChain(const char* path, bool logIt)
{
    char folder[kPathCapacity];
    HOI_CopyA(folder, sizeof folder, path);
    HOI_PathA(folder, sizeof folder);
    if (!IsFolderPath(path)) {
        char message[kMessageCapacity];
        HOI_PrintA(message, sizeof message, eMessageText[kMsgInvalidFolderPath], folder);
        AlertError(g_setup.mainWindow, message);
        return false;
    }
    // Each level is in the journal before it is made, so an interruption before its log line
    // still leaves it where the removal looks.
    FolderLevels missing;
    const ChainStep made = CreateFolderChain(path, &missing, logIt ? JournalFolder : nullptr);
    // Levels made before a refusal are logged all the same, so that the removal takes them away.
    for (std::size_t i = 0; logIt && i < missing.count; ++i) {
        if (!logFolderLine(missing.level[i]))
            return false;
    }
    if (made == ChainStep::Refused) {
        // A level is there but reached through a link: nothing may be made below it.
        ShowFileAlert(g_setup.mainWindow, folder, kFileAlertFolderNotCreated);
        return false;
    }
    return made == ChainStep::Made;
}

bool OpenLog()
{
    if (g_setup.logFile)
        return true;

    // An existing folder goes through the chain too: one reached through a link is refused.
    const bool folderExisted = PathExists(g_setup.commonDataFolder);
    if (!MakeFolderChain(g_setup.commonDataFolder, false) || !PathExists(g_setup.commonDataFolder))
        return false;

    char logPath[kPathCapacity];
    if (SetupLogPath(g_setup.commonDataFolder, logPath, sizeof logPath))
        carryOverEarlierLog(logPath);
    if (!openRecordFile(kSetupLogName, &g_setup.logFile))
        return false;
    if (!g_setup.logFile)
        return true;    // going on without a log: every later write is a no-op
    if (!openRecordFile(kSetupJournalName, &g_setup.journalFile))
        return false;

    if (!LogBanner(folderExisted
                       ? "***** Vistrel %s installation: STARTING, preparing log file, %s *****"
                       : "***** Vistrel %s installation: STARTING, creating initial directory and preparing log file, %s *****") ||
        !LogIgnoredFolderValues())
        return false;
    if (!folderExisted) {
        // The parent is logged whether or not this run made it: removing a non-empty folder
        // later fails harmlessly.
        char parent[kPathCapacity] = "";   // stays empty when there is no parent
        ParentFolder(g_setup.commonDataFolder, parent, sizeof parent);
        if (!logFolderLine(parent) || !logFolderLine(g_setup.commonDataFolder))
            return false;
    }
    return TakeOverJournal();
}

void CloseLog(bool exitBanner)
{
    if (g_setup.logFile && exitBanner) {
        // The run is ending: a banner that cannot be written is not asked about, and names
        // nothing the removal needs.
        char stamp[32];
        char line[kMessageCapacity];
        formatLogTime(stamp, sizeof stamp);
        HOI_PrintA(line, sizeof line, "***** Vistrel %s installation: EXITING, %s *****\r\n", logModeWord(), stamp);
        writeWholeLine(g_setup.logFile, line, false);
    }
    CloseFile(g_setup.logFile);
    CloseFile(g_setup.journalFile);
    g_setup.logFile = nullptr;
    g_setup.journalFile = nullptr;
}
