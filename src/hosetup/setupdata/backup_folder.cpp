// The backup folder of a run: below the common data folder's backups root, one folder per run
// named by the moment the run started, to the millisecond.
#include "setupdata/setupdata.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

void composeBackupFolder(const char* commonDataFolder, const char* backupsRoot,
                         const SYSTEMTIME& time, char* folder, std::size_t capacity)
{
    char stamp[64];
    HOI_PrintA(stamp, sizeof stamp, "%04d-%02d-%02d %02d%02d%02d%03d\\", time.wYear, time.wMonth,
               time.wDay, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
    // Cut, the stamp would name another run's folder or none: the folder stays empty instead,
    // which the backup step refuses.
    composePath(folder, capacity, commonDataFolder, backupsRoot, stamp);
}

void NameBackupFolder()
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    composeBackupFolder(g_setup.commonDataFolder, eRelativePaths[kRelativeBackupsRoot], now,
                        g_setup.backupFolder, kPathCapacity);
}
