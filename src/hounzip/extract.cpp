// Writing the member into the target folder. The data goes to a new temporary file in the same folder first; only
// when it is complete and its CRC-32 matched is that file renamed over the target. So a failed run never leaves a
// partial file behind and never destroys the file it was meant to replace.
//
// The program runs elevated, and the target folder may be one that a standard user can change (a per-user
// installation in the profile, new folders below ProgramData or Public Documents). So every file it creates,
// renames or changes is held by a handle whose final path (GetFinalPathNameByHandle: every junction and link on
// the way resolved) must be the path meant; anything else is refused. Nothing opens an existing name for writing.
#include "hounzip.h"

#include "format/unpacker_temp.h"

// Seconds between 1601-01-01 (FILETIME) and 1970-01-01 (Unix time).
#define EPOCH_DIFFERENCE 11644473600LL

// This many random temporary names are tried before giving up.
#define TEMP_ATTEMPTS 16

// A final path comes with "\\?\" or "\\?\UNC\" before it: room for those and a path of MAX_PATH.
#define FINAL_PATH_SIZE (MAX_PATH + 8)

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

// Whether the open file or folder is, with every junction and link on its way resolved, at path (ANSI; a closing
// backslash on either side is ignored). The final path is compared without "\\?\" (and "\\?\UNC\" read as "\\")
// and without case, ordinally, as the file system compares names. A file reached through a junction or a link, at
// its own name or at any folder above it, shows where it really is and fails. (Under Wine a host symbolic link
// stands in for a junction: Wine resolves it in the final path too, but opens through it even with
// FILE_FLAG_OPEN_REPARSE_POINT, so there this check is the only one that sees it.)
static int IsAt(HANDLE file, const char *path)
{
    WCHAR expected[MAX_PATH], found[FINAL_PATH_SIZE];
    int expectedLength = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, path, -1, expected, MAX_PATH) - 1;
    int foundLength = (int)GetFinalPathNameByHandleW(file, found, FINAL_PATH_SIZE, FILE_NAME_NORMALIZED);
    if (expectedLength <= 0 || foundLength <= 0 || foundLength >= FINAL_PATH_SIZE)
        return 0;
    WCHAR *seen = found;
    if (foundLength >= 4 && CompareStringOrdinal(found, 4, L"\\\\?\\", 4, FALSE) == CSTR_EQUAL) {
        seen += 4;
        foundLength -= 4;
        if (foundLength >= 4 && CompareStringOrdinal(seen, 4, L"UNC\\", 4, TRUE) == CSTR_EQUAL) {
            seen += 2;  // "UNC\server\share" becomes "\\server\share"
            foundLength -= 2;
            seen[0] = L'\\';
        }
    }
    if (foundLength > 0 && seen[foundLength - 1] == L'\\')
        foundLength--;
    if (expected[expectedLength - 1] == L'\\')
        expectedLength--;
    return CompareStringOrdinal(seen, foundLength, expected, expectedLength, TRUE) == CSTR_EQUAL;
}

// Learns where the target folder is: where gets it as final paths show it, absolute and ending in a backslash,
// in its long form when it was given with short (8.3) names. False when it is missing, not a folder, or is (or
// lies below) a junction or link. The temporary file's own check decides; this one refuses before anything is
// created.
static int FindFolder(const char *folder, char *where, size_t capacity)
{
    DWORD length = GetFullPathNameA(folder, (DWORD)capacity, where, NULL);
    if (length == 0 || length + 1 >= capacity)
        return 0;
    HANDLE handle = CreateFileA(where, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                NULL, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, NULL);
    if (handle == INVALID_HANDLE_VALUE)
        return 0;
    // Not GetFileInformationByHandle: under Wine its volume serial number costs more than the rest of a start.
    FILE_ATTRIBUTE_TAG_INFO tag;
    int found = GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &tag, sizeof(tag)) &&
                (tag.FileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    if (found && !IsAt(handle, where)) {
        length = GetLongPathNameA(where, where, (DWORD)capacity);
        found = length > 0 && length + 1 < capacity && IsAt(handle, where);
    }
    CloseHandle(handle);
    if (found && where[length - 1] != '\\')
        lstrcpynA(where + length, "\\", 2);
    return found;
}

// Sets (or clears) the mark that deletes the file when its last handle is closed, which happens too when the
// process is killed. FILE_FLAG_DELETE_ON_CLOSE would do the first, but Windows cannot take it back.
static int MarkForDeletion(HANDLE file, BOOL deleteIt)
{
    FILE_DISPOSITION_INFO disposition;
    disposition.DeleteFile = deleteIt;
    return SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof(disposition)) != 0;
}

// Creates the temporary file in folder (as FindFolder gave it) under a name that did not exist, and returns its
// only handle, marked for deletion (path gets the name). CREATE_NEW fails on any existing name, so a file or link
// that someone planted there is never opened, and FILE_FLAG_OPEN_REPARSE_POINT keeps Windows from resolving a
// link at that name; a random name that exists is followed by another, a bounded number of times. A name the
// caller gave (tempPart not NULL) is the only one tried: the installer has recorded it, and a file under any other
// name would be one it does not know of. The new file must be where it was meant to be, or it is deleted again
// and the run refused: a folder that became a junction since FindFolder looked leads elsewhere. While this handle
// is open Windows renames no folder above the file, so the path stays what was checked. The check comes before the
// mark because Windows 7 reports no final path for a file marked for deletion.
static HANDLE CreateTemporary(const char *folder, const uint32_t *tempPart, char *path, size_t capacity)
{
    size_t folderLength = (size_t)lstrlenA(folder);
    if (folderLength >= capacity)
        return INVALID_HANDLE_VALUE;
    lstrcpynA(path, folder, (int)capacity);
    for (int attempt = 0; attempt < (tempPart ? 1 : TEMP_ATTEMPTS); attempt++) {
        uint32_t part = tempPart ? *tempPart : HZ_RandomPart(attempt);
        if (!FormatUnpackerTempName(part, path + folderLength, capacity - folderLength))
            return INVALID_HANDLE_VALUE;
        HANDLE file = CreateFileA(path, GENERIC_WRITE | DELETE, 0, NULL, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN | FILE_FLAG_OPEN_REPARSE_POINT,
                                  NULL);
        DWORD error = GetLastError();
        if (file != INVALID_HANDLE_VALUE) {
            int here = IsAt(file, path);
            if (MarkForDeletion(file, TRUE) && here)
                return file;
            CloseHandle(file);
            return INVALID_HANDLE_VALUE;
        }
        if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS)
            return INVALID_HANDLE_VALUE;
    }
    return INVALID_HANDLE_VALUE;
}

// Whether the existing target may be replaced: no file at that name, or a plain file that is where it seems to
// be. A link at that name (a symbolic link or a junction, dangling or not: a name-surrogate reparse point) is
// never replaced, nor a file whose final path is elsewhere (it lies below a junction, or, under Wine, it is a host
// symbolic link), nor a folder. Other reparse points (a cloud file's placeholder) are files in their own right.
// (Wine cannot see a dangling host link at all: there it counts as no file and the rename replaces the link.)
static int MayReplace(const char *target)
{
    HANDLE file = CreateFileA(target, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              NULL, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, NULL);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    FILE_ATTRIBUTE_TAG_INFO tag;
    int plain = GetFileInformationByHandleEx(file, FileAttributeTagInfo, &tag, sizeof(tag)) &&
                (tag.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
                ((tag.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 || !IsReparseTagNameSurrogate(tag.ReparseTag)) &&
                IsAt(file, target);
    CloseHandle(file);
    return plain;
}

// Sets or clears the read-only attribute of the file at path. The name is opened without following a link and
// changed only when it is an ordinary file with no other hard link, at the path meant, so that no file outside the
// target folder can be changed through a planted link. Returns true when the attribute was changed.
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
        ((info.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) != (readOnly != 0) && IsAt(file, path)) {
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

// Renames the open file to target (a full path), replacing a file there only when replace is set. The file is
// named by its handle, so nothing can be put in its place between the checks and the rename; a rename acts on the
// name at target, so a link put there meanwhile is replaced, never followed.
static int RenameTo(HANDLE file, const char *target, int replace)
{
    union {
        FILE_RENAME_INFO info;
        char bytes[sizeof(FILE_RENAME_INFO) + MAX_PATH * sizeof(WCHAR)];
    } rename;
    ZeroMemory(&rename, sizeof(FILE_RENAME_INFO));
    int length = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, target, -1, rename.info.FileName, MAX_PATH);
    if (length <= 1)
        return 0;
    rename.info.ReplaceIfExists = replace ? TRUE : FALSE;
    rename.info.FileNameLength = (DWORD)(length - 1) * sizeof(WCHAR);
    return SetFileInformationByHandle(file, FileRenameInfo, &rename.info,
                                      (DWORD)(sizeof(FILE_RENAME_INFO) + (size_t)length * sizeof(WCHAR))) != 0;
}

// Puts the finished temporary file in place as target. Without replace an existing target (one that appeared
// since the question) is kept: HZ_ERR_KEPT. Windows refuses to replace a read-only file (Wine does not, so there
// the first attempt succeeds): such a target loses that attribute for a second attempt and gets it back if that
// fails too. The deletion mark is cleared just before the rename and set again when it failed, so only the
// moment between the two could leave a temporary file behind a killed unpacker.
static int MoveIntoPlace(HANDLE file, const char *target, int replace)
{
    if (!MayReplace(target) || !MarkForDeletion(file, FALSE))
        return HZ_ERR_WRITE;
    int result = HZ_OK;
    if (!RenameTo(file, target, replace)) {
        DWORD error = GetLastError();
        if (!replace)
            result = error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ? HZ_ERR_KEPT : HZ_ERR_WRITE;
        else if (error != ERROR_ACCESS_DENIED || !SetReadOnly(target, 0))
            result = HZ_ERR_WRITE;
        else if (!RenameTo(file, target, TRUE)) {
            SetReadOnly(target, 1);
            result = HZ_ERR_WRITE;
        }
    }
    if (result != HZ_OK)
        MarkForDeletion(file, TRUE);
    return result;
}

// Unpacks entry from archive into folder under entry->name, replacing an existing file only when replace is set,
// through the temporary name of tempPart (NULL: random names). Returns an exit code.
int HZ_Extract(HANDLE archive, const HzEntry *entry, const char *folder, int replace, const uint32_t *tempPart)
{
    char where[MAX_PATH], target[MAX_PATH], temporary[MAX_PATH];
    if (!FindFolder(folder, where, sizeof(where)) || !HZ_TargetPath(where, entry->name, target, sizeof(target)))
        return HZ_ERR_WRITE;
    HANDLE out = CreateTemporary(where, tempPart, temporary, sizeof(temporary));
    if (out == INVALID_HANDLE_VALUE)
        return HZ_ERR_WRITE;
    int result = HZ_Decode(archive, entry, out);
    if (result == HZ_OK) {
        SetStoredTime(out, entry);
        result = MoveIntoPlace(out, target, replace);
    }
    // Closing deletes the file unless it was renamed into place.
    if (!CloseHandle(out) && result == HZ_OK)
        result = HZ_ERR_WRITE;
    return result;
}
