// The installation sequence: data file, earlier installation, start page, the steps under the
// progress window, finish page, and the product started if the user asked for it. To stop means
// to return false at once; nothing is rolled back, and the log records what was done so that a
// removal can clear it.
#include "install/install.h"
#include "files/files.h"
#include "format/program_files.h"
#include "core/core.h"
#include "links/links.h"
#include "setuplog/setuplog.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "registry/registry.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"

#include <shellapi.h>

namespace {

constexpr char kEarliestCompileDate[] = "2003-04-01";

// An earlier installation that is newer than this package, or older than any this program can
// update, stops the run.
bool earlierInstallationAllowsUpdate()
{
    if (!DetectEarlierInstallation())
        return true;
    if (g_setup.laterVersionInstalled) {
        if (!g_setup.optionSilent)
            AlertError(g_setup.mainWindow, eMessageText[kMsgNewerVersionInstalled]);
        return false;
    }
    if (HOI_CompareA(g_setup.previousCompileDate, kEarliestCompileDate) < 0) {
        if (!g_setup.optionSilent)
            AlertError(g_setup.mainWindow, eMessageText[kMsgInstalledTooOld]);
        return false;
    }
    return true;
}

// A standard installation into a folder that already holds this program asks once.
bool confirmInstallOverExisting()
{
    if (g_setup.updateInstall || g_setup.optionSilent)
        return true;
    char program[kPathCapacity];
    HOI_CopyA(program, sizeof program, g_setup.installFolder, kSetupProgramName);
    if (!PathExists(program))
        return true;
    return AlertRetryCancelDefaultCancel(g_setup.mainWindow, eMessageText[kMsgProgramFilesFound]) != kButtonCancel;
}

void startProduct()
{
    char program[kPathCapacity];
    HOI_CopyA(program, sizeof program, g_setup.installFolder, "hovistrel.exe");
    ShellExecuteA(nullptr, nullptr, program, nullptr, nullptr, SW_SHOWNORMAL);
}

// Prepares the update's backup tree, or clears the standard installation's old log.
bool prepareBackupsOrLog()
{
    if (g_setup.updateInstall) {
        NameBackupFolder();
        return CreateBackupDirectories();
    }
    char log[kPathCapacity];
    if (SetupLogPath(g_setup.commonDataFolder, log, sizeof log))
        DeleteFileAt(log);
    return true;
}

// The link of a shortcut record points at its file record's target and shows the record's icon;
// a record whose icon or file has no place in this installation gets no link.
bool shortcutPathsOf(int index, char* icon, char* target)
{
    const ShortcutRecord& record = g_setup.shortcutRecords[index];
    return resolveShortcutIconPath(index, icon) == kIconPathFound &&
           resolveFilePath(static_cast<int>(record.fileIndex), target, nullptr, nullptr, nullptr) != kNoPathHere;
}

} // namespace

bool RunInstallation()
{
    // A data-file path that would be cut names another file: the folder itself is then read,
    // which fails with the alert of a file that cannot be opened.
    char dataFile[kPathCapacity];
    if (!composePath(dataFile, sizeof dataFile, g_setup.sourceFolder, kDataMemberName))
        HOI_CopyA(dataFile, sizeof dataFile, g_setup.sourceFolder);
    if (!readSetupDataFile(dataFile))
        return false;
    if (!earlierInstallationAllowsUpdate())
        return false;
    if (!ShowInstallStartPage(g_setup.mainWindow))
        return false;
    if (!confirmInstallOverExisting())
        return false;
    if (!checkAllFreeSpace())
        return false;

    ShowProgressStage(true, kStageInstallPrepare, 0, 0);
    CloseLog(false);
    if (!SetProgress(10, 100))
        return false;
    if (!prepareBackupsOrLog())
        return false;
    if (!paceProgress(20, 39, 1, 50))
        return false;
    if (!CreateDirectories())
        return false;
    if (g_setup.updateInstall) {
        if (!paceProgress(40, 89, 1, 50))
            return false;
        if (!BackupSettingsFiles())
            return false;
        if (!paceProgress(90, 100, 1, 50))
            return false;
    } else if (!paceProgress(40, 100, 1, 50)) {
        return false;
    }

    ShowProgressStage(true, kStageInstallCopy, 0, 0);
    if (g_setup.updateInstall && !BackupFiles())
        return false;
    if (!CopyFiles())
        return false;

    ShowProgressStage(true, kStageInstallRegister, 0, 0);
    if (g_setup.updateInstall)
        RegisterUpdateInstallation();
    else
        RegisterStandardInstallation();
    RecordCompileDate();
    // Registered, the installation is an update to every later run, which keeps this log: what the
    // journal holds is safe in it now.
    SettleJournal();
    if (!paceProgress(0, 100, 2, 40))
        return false;

    // A cancel confirmed while the links are made ends the run there; the installation stays
    // registered and logged, so the removal can clear it.
    ShowProgressStage(true, kStageInstallShortcuts, 0, 0);
    if (g_setup.shortcutCount > 0 && !CreateShortcuts(shortcutPathsOf))
        return false;

    ShowProgressStage(false, 0, 0, 0);
    ShowInstallFinishPage(g_setup.mainWindow);
    if (g_setup.launchAfterFinish && !g_setup.optionSilent)
        startProduct();
    return true;
}
