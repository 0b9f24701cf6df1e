// Writing the member into the target folder. The data goes to a new temporary file in the same folder first; only
// when it is complete and its CRC-32 matched is that file renamed over the target. So a failed run never leaves a
// partial file behind and never destroys the file it was meant to replace. The program runs elevated and the
// target folder may be writable by others: nothing here opens an existing name for writing or follows a link.
#define _CRT_RAND_S  // declares rand_s
#include "hounzip.h"

#include <stdlib.h>

// Seconds between 1601-01-01 (FILETIME) and 1970-01-01 (Unix time).
#define EPOCH_DIFFERENCE 11644473600LL

// Temporary names are "hzu" + 8 random hex digits + ".tmp"; this many names are tried before giving up.
#define TEMP_ATTEMPTS 16
#define TEMP_NAME_SIZE 16  // with the terminating zero

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

// The random part of the attempt-th temporary name. The first comes from what the process has at no cost: the
// performance counter, the process and thread ids and the stack address that address-space randomisation chose,
// mixed so that every bit counts. The system's cryptographic generator (rand_s) would cost more than the rest of a
// start under Wine, where loading it pulls in three more DLLs. A first name that exists already was planted (or
// collided): the following names come from rand_s, which nobody can foresee, so a plant costs one more attempt.
static unsigned int RandomPart(int attempt)
{
    unsigned int strong = 0;
    if (attempt > 0 && rand_s(&strong) == 0)
        return strong;
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    uint64_t x = (uint64_t)counter.QuadPart ^ ((uint64_t)GetCurrentProcessId() << 40) ^
                 ((uint64_t)GetCurrentThreadId() << 20) ^ (uint64_t)(uintptr_t)&counter;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;  // the SplitMix64 finaliser
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    x ^= x >> 31;
    return (unsigned int)(x ^ (x >> 32));
}

// Creates the temporary file in folder under a name that did not exist, and returns its only handle (path gets
// the name). CREATE_NEW fails on any existing name, so a file or link that someone planted there is never
// opened, and FILE_FLAG_OPEN_REPARSE_POINT keeps Windows from resolving a link at that name. A name that exists
// is followed by another, a bounded number of times.
static HANDLE CreateTemporary(const char *folder, char *path, size_t capacity)
{
    static const char hex[] = "0123456789abcdef";
    size_t folderLength = (size_t)lstrlenA(folder);
    if (folderLength + TEMP_NAME_SIZE > capacity)
        return INVALID_HANDLE_VALUE;
    lstrcpynA(path, folder, (int)capacity);
    for (int attempt = 0; attempt < TEMP_ATTEMPTS; attempt++) {
        unsigned int random = RandomPart(attempt);
        char *name = path + folderLength;
        lstrcpynA(name, "hzu", 4);
        for (int i = 0; i < 8; i++)
            name[3 + i] = hex[(random >> (28 - 4 * i)) & 15];
        lstrcpynA(name + 11, ".tmp", 5);
        HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, NULL, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN | FILE_FLAG_OPEN_REPARSE_POINT,
                                  NULL);
        DWORD error = GetLastError();
        if (file != INVALID_HANDLE_VALUE || (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS))
            return file;
    }
    return INVALID_HANDLE_VALUE;
}

// Sets or clears the read-only attribute of the file at path. The name is opened without following a link and
// changed only when it is an ordinary file with no other hard link, so that no file outside the target folder
// can be changed through a planted link. (Wine shows a Unix symbolic link as the file it points to, but there this
// is never needed: see MoveIntoPlace.) Returns true when the attribute was changed.
static int SetReadOnly(const char *path, int readOnly)
{
    HANDLE file = CreateFileA(path, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL, OPEN_EXISTING,
                              FILE_FLAG_OPEN_REPARSE_POINT, NULL);
    if (file == INVALID_HANDLE_VALUE)
        return 0;
    BY_HANDLE_FILE_INFORMATION info;
    int changed = 0;
    if (GetFileInformationByHandle(file, &info) && info.nNumberOfLinks == 1 &&
        (info.dwFileAttributes & (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY)) == 0 &&
        ((info.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) != (readOnly != 0)) {
        FILE_BASIC_INFO basic;
        ZeroMemory(&basic, sizeof(basic));  // times of zero are left as they are
        basic.FileAttributes = readOnly ? info.dwFileAttributes | FILE_ATTRIBUTE_READONLY
                                        : info.dwFileAttributes & ~(DWORD)FILE_ATTRIBUTE_READONLY;
        if (basic.FileAttributes == 0)
            basic.FileAttributes = FILE_ATTRIBUTE_NORMAL;  // zero would mean "leave the attributes alone"
        changed = SetFileInformationByHandle(file, FileBasicInfo, &basic, sizeof(basic)) != 0;
    }
    CloseHandle(file);
    return changed;
}

// Renames the finished temporary file to target; a rename acts on the name, so a link there is replaced, never
// followed. Without replace an existing target (one that appeared since the question) is kept: HZ_ERR_KEPT.
// Windows refuses to replace a read-only file (Wine does not, so there the first attempt succeeds): such a target
// loses that attribute for a second attempt and gets it back if that fails too.
static int MoveIntoPlace(const char *temporary, const char *target, int replace)
{
    if (!replace) {
        if (MoveFileExA(temporary, target, 0))
            return HZ_OK;
        DWORD error = GetLastError();
        return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ? HZ_ERR_KEPT : HZ_ERR_WRITE;
    }
    if (MoveFileExA(temporary, target, MOVEFILE_REPLACE_EXISTING))
        return HZ_OK;
    if (GetLastError() != ERROR_ACCESS_DENIED || !SetReadOnly(target, 0))
        return HZ_ERR_WRITE;
    if (MoveFileExA(temporary, target, MOVEFILE_REPLACE_EXISTING))
        return HZ_OK;
    SetReadOnly(target, 1);
    return HZ_ERR_WRITE;
}

// Unpacks entry from archive to target (a file in folder), replacing an existing target only when replace is set.
// Returns an exit code.
int HZ_Extract(HANDLE archive, const HzEntry *entry, const char *folder, const char *target, int replace)
{
    DWORD folderAttributes = GetFileAttributesA(folder);
    if (folderAttributes == INVALID_FILE_ATTRIBUTES || !(folderAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return HZ_ERR_WRITE;
    DWORD targetAttributes = GetFileAttributesA(target);
    if (targetAttributes != INVALID_FILE_ATTRIBUTES && (targetAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return HZ_ERR_WRITE;

    char temporary[MAX_PATH];
    HANDLE out = CreateTemporary(folder, temporary, sizeof(temporary));
    if (out == INVALID_HANDLE_VALUE)
        return HZ_ERR_WRITE;
    int result = HZ_Decode(archive, entry, out);
    if (result == HZ_OK)
        SetStoredTime(out, entry);
    if (!CloseHandle(out) && result == HZ_OK)
        result = HZ_ERR_WRITE;
    if (result == HZ_OK)
        result = MoveIntoPlace(temporary, target, replace);
    if (result != HZ_OK)
        DeleteFileA(temporary);
    return result;
}
