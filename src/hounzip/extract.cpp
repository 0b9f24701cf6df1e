// Writing the member into the target folder. The data goes to a temporary file in the same folder first; only
// when it is complete and its CRC-32 matched is that file renamed over the target. So a failed run never leaves a
// partial file behind and never destroys the file it was meant to replace.
#include "hounzip.h"

// Seconds between 1601-01-01 (FILETIME) and 1970-01-01 (Unix time).
#define EPOCH_DIFFERENCE 11644473600LL

// Joins folder (ending in a backslash) and name into out. Returns false when the path would not fit MAX_PATH.
int HZ_TargetPath(const char *folder, const char *name, char *out, size_t capacity)
{
    size_t folderLength = (size_t)lstrlenA(folder), nameLength = (size_t)lstrlenA(name);
    if (folderLength + nameLength + 1 > capacity)
        return 0;
    lstrcpynA(out, folder, (int)capacity);
    lstrcpynA(out + folderLength, name, (int)(capacity - folderLength));
    return 1;
}

// Gives the written file the member's stored modification time, as every unzip tool does. This matters for the
// installer: it compares an installed file's time with the packed member's to decide whether an existing file is
// newer, and a file stamped with the time of unpacking would look newer than every later package.
static void SetStoredTime(HANDLE file, const HzEntry *entry)
{
    FILETIME stamp;
    if (entry->hasUnixTime) {
        ULARGE_INTEGER ticks;
        ticks.QuadPart = (ULONGLONG)(entry->unixTime + EPOCH_DIFFERENCE) * 10000000ULL;
        stamp.dwLowDateTime = ticks.LowPart;
        stamp.dwHighDateTime = ticks.HighPart;
    } else {
        FILETIME local;
        if (!DosDateTimeToFileTime(entry->dosDate, entry->dosTime, &local) || !LocalFileTimeToFileTime(&local, &stamp))
            return;
    }
    SetFileTime(file, NULL, NULL, &stamp);
}

// Replaces target by the finished temporary file. A read-only target is made writable first and keeps its
// attribute if the rename fails after all.
static int MoveIntoPlace(const char *temporary, const char *target)
{
    DWORD attributes = GetFileAttributesA(target);
    int madeWritable = 0;
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY)) {
        if (!SetFileAttributesA(target, attributes & ~FILE_ATTRIBUTE_READONLY))
            return 0;
        madeWritable = 1;
    }
    if (MoveFileExA(temporary, target, MOVEFILE_REPLACE_EXISTING))
        return 1;
    if (madeWritable)
        SetFileAttributesA(target, attributes);
    return 0;
}

// Unpacks entry from archive to target (a file in folder). Returns an exit code.
int HZ_Extract(HANDLE archive, const HzEntry *entry, const char *folder, const char *target)
{
    DWORD folderAttributes = GetFileAttributesA(folder);
    if (folderAttributes == INVALID_FILE_ATTRIBUTES || !(folderAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return HZ_ERR_WRITE;
    DWORD targetAttributes = GetFileAttributesA(target);
    if (targetAttributes != INVALID_FILE_ATTRIBUTES && (targetAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return HZ_ERR_WRITE;

    // GetTempFileNameA creates the (empty) file under a name that is free in the target folder.
    char temporary[MAX_PATH];
    if (GetTempFileNameA(folder, "hzu", 0, temporary) == 0)
        return HZ_ERR_WRITE;
    HANDLE out = CreateFileA(temporary, GENERIC_WRITE, 0, NULL, TRUNCATE_EXISTING,
                             FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, NULL);
    if (out == INVALID_HANDLE_VALUE) {
        DeleteFileA(temporary);
        return HZ_ERR_WRITE;
    }
    int result = HZ_Decode(archive, entry, out);
    if (result == HZ_OK)
        SetStoredTime(out, entry);
    if (!CloseHandle(out) && result == HZ_OK)
        result = HZ_ERR_WRITE;
    if (result == HZ_OK && !MoveIntoPlace(temporary, target))
        result = HZ_ERR_WRITE;
    if (result != HZ_OK)
        DeleteFileA(temporary);
    return result;
}
