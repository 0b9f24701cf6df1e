// An update's backups: the files its backup records name, and the product's four settings files,
// copied into this run's backup tree before anything is replaced.
#include "install/install.h"
#include "setuplog/setuplog.h"
#include "files/files.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"

namespace {

struct SettingsFile {
    bool common;        // in the common data folder, else in the user data folder
    const char* name;
};

// In the order they are handled.
constexpr SettingsFile kSettingsFiles[] = {
    {true, "hovistrelallusers.ini"},
    {false, "hovistreluser.ini"},
    {true, "hovistrelpluginallusers.ini"},
    {false, "hovistrelpluginuser.ini"},
};

// Copies one backup record's live file; false when the user cancelled.
bool copyWithRetry(const char* live, const char* backup)
{
    for (int attempt = 1; !copyFilePumping(live, backup, false, false); ++attempt) {
        char message[kMessageCapacity];
        HOI_PrintA(message, sizeof message, eAlertErrorText[kAlertTextBackupFailed], live);
        const int answer = askAfterFailedCopy(message, attempt);
        if (answer == kButtonCancel)
            return false;
        if (answer == kButtonSkip)
            break;
    }
    return true;
}

} // namespace

bool BackupFiles()
{
    if (!OpenLog() || !LogBanner("***** Vistrel %s installation: Backing up files, %s *****"))
        return false;
    for (int i = 0; i < g_setup.fileCount; ++i) {
        if (g_setup.fileRecords[i].directoryId % 10 != kDirectoryKindBackup)
            continue;
        char live[kPathCapacity];
        char backup[kPathCapacity];
        const int resolved = resolveDirectoryPath(i, live, backup);
        if (resolved == kPathTooLong)
            return false;
        if (resolved != kPathComposed || !PathExists(live))
            continue;
        if (!JournalFile(backup) || !copyWithRetry(live, backup))
            return false;
        // Logged after a skipped copy too: the removal then merely fails to delete it.
        if (!LogText(backup))
            return false;
    }
    return true;
}

bool BackupSettingsFiles()
{
    if (!OpenLog() || !LogBanner("***** Vistrel %s installation: Backing up Vistrel INI files, %s *****"))
        return false;
    for (const SettingsFile& file : kSettingsFiles) {
        char live[kPathCapacity];
        char backup[kPathCapacity];
        if (!composePath(live, sizeof live, file.common ? g_setup.commonDataFolder : g_setup.userDataFolder,
                         file.name) ||
            !composePath(backup, sizeof backup, g_setup.backupFolder, eRelativePaths[file.common ? kRelativeAllUsersBackup : kRelativeUserBackup],
                         file.name) ||
            !PathExists(live))
            continue;
        if (!JournalFile(backup))
            return false;
        CopyPlainFile(live, backup);    // its alert names both paths; the update goes on
        if (!LogText(backup))
            return false;
    }
    return true;
}
