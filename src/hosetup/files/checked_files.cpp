// Files and folders reached by handle, never through a link. The program runs elevated, and many
// of the folders it works in can be changed by a standard user: a per-user installation lives in
// the user's profile, and new folders below ProgramData and Public Documents are writable by every
// user. Such a user could turn a folder into a junction (or plant a link at a file's name) so that
// a write, a copy or a deletion meant for the product lands anywhere on the machine. So every file
// or folder is opened first, without following a link at its own name, and the system's final
// path of the open handle must be the path the program meant; deletion happens on that very
// handle, so nothing can be swapped between the check and the act.
//
// Wine follows a host symbolic link even when asked not to (FILE_FLAG_OPEN_REPARSE_POINT), so
// there a link at the name itself is seen through and refused by the path comparison; Windows
// opens the link itself, which the attribute test refuses for everything but a deletion.
#include "files/files.h"
#include "core/core.h"
#include "strings/hoi_strings.h"

#include <cstring>

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kCopyChunk = 1 << 20;

bool isSeparator(char c)
{
    return c == '\\' || c == '/';
}

// path without its closing separator, except for a drive root ("C:\"), which needs it to open.
bool nameToOpen(const char* path, char* name, std::size_t capacity)
{
    if (!composePath(name, capacity, path, nullptr))
        return false;
    const std::size_t length = std::strlen(name);
    if (length > 3 && isSeparator(name[length - 1]))
        name[length - 1] = '\0';
    return name[0] != '\0';
}

// Equal as paths: ignoring case and one closing separator on either side.
bool samePath(const char* a, const char* b)
{
    std::size_t lengthA = std::strlen(a);
    std::size_t lengthB = std::strlen(b);
    if (lengthA > 0 && isSeparator(a[lengthA - 1]))
        --lengthA;
    if (lengthB > 0 && isSeparator(b[lengthB - 1]))
        --lengthB;
    return lengthA == lengthB && CompareStringA(LOCALE_INVARIANT, NORM_IGNORECASE, a, static_cast<int>(lengthA), b,
                                                static_cast<int>(lengthB)) == CSTR_EQUAL;
}

// A reparse point that stands for another name: a junction, a mount point, a symbolic link.
// Others, such as the placeholders of a cloud-synced Documents folder, are the file itself.
bool isLink(HANDLE handle)
{
    FILE_ATTRIBUTE_TAG_INFO tag;
    if (!GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &tag, sizeof tag))
        return true;
    return (tag.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) && IsReparseTagNameSurrogate(tag.ReparseTag);
}

bool isFolder(HANDLE handle)
{
    BY_HANDLE_FILE_INFORMATION info;
    return GetFileInformationByHandle(handle, &info) && (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool deleteOnHandle(HANDLE handle)
{
    FILE_DISPOSITION_INFO disposition = {TRUE};
    return SetFileInformationByHandle(handle, FileDispositionInfo, &disposition, sizeof disposition) != FALSE;
}

// Opens name (already in the form nameToOpen gives) as it stands; null on failure.
HANDLE openRaw(const char* name, DWORD access, DWORD share, DWORD disposition, bool folder)
{
    const DWORD flags = FILE_FLAG_OPEN_REPARSE_POINT | (folder ? FILE_FLAG_BACKUP_SEMANTICS : FILE_ATTRIBUTE_ARCHIVE);
    HANDLE handle = CreateFileA(name, access, share, nullptr, disposition, flags, nullptr);
    return handle == INVALID_HANDLE_VALUE ? nullptr : handle;
}

// A handle the check refused is closed; what this call itself created through a link is deleted
// first, so the refusal leaves nothing behind.
HANDLE refuse(HANDLE handle, bool createdHere)
{
    if (createdHere)
        deleteOnHandle(handle);
    CloseHandle(handle);
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

} // namespace

bool finalPathIs(HANDLE handle, const char* path)
{
    char final[kPathCapacity];
    if (!finalPathOf(handle, final, sizeof final))
        return false;
    if (samePath(final, path))
        return true;
    // A short (8.3) element names the same file as its long form; a link never does.
    char longPath[kPathCapacity];
    const DWORD length = GetLongPathNameA(path, longPath, sizeof longPath);
    return length > 0 && length < sizeof longPath && samePath(final, longPath);
}

namespace {

HANDLE openCheckedSharing(const char* path, DWORD access, DWORD share, bool folder)
{
    char name[kPathCapacity];
    if (!nameToOpen(path, name, sizeof name))
        return nullptr;
    HANDLE handle = openRaw(name, access, share, OPEN_EXISTING, folder);
    if (!handle)
        return nullptr;
    if (!finalPathIs(handle, name) || isLink(handle) || isFolder(handle) != folder)
        return refuse(handle, false);
    return handle;
}

// A copy's source in a foreign folder: only the file itself must not be a link.
HANDLE openForeignSource(const char* path)
{
    char name[kPathCapacity];
    if (!nameToOpen(path, name, sizeof name))
        return nullptr;
    HANDLE handle = openRaw(name, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING, false);
    if (handle && !isPlainFileIn(handle, name))
        return refuse(handle, false);
    return handle;
}

} // namespace

HANDLE openChecked(const char* path, DWORD access, bool folder)
{
    return openCheckedSharing(path, access, kShareAll, folder);
}

HANDLE createChecked(const char* path, bool replace, DWORD share)
{
    char name[kPathCapacity];
    if (!nameToOpen(path, name, sizeof name))
        return nullptr;
    // Delete access only for a file made here, which a refusal takes away again: asking it of an
    // existing file would fail where another program holds it without delete sharing.
    const DWORD access = GENERIC_READ | GENERIC_WRITE;
    // Two tries: a file that appears between "not there" and the creation is opened as existing.
    for (int attempt = 0; attempt < 2; ++attempt) {
        // An existing file is checked before anything is written to it; only then is it emptied.
        HANDLE handle = openRaw(name, access, share, OPEN_EXISTING, false);
        if (handle) {
            if (!replace) {
                CloseHandle(handle);
                SetLastError(ERROR_FILE_EXISTS);
                return nullptr;
            }
            if (!finalPathIs(handle, name) || isLink(handle) || isFolder(handle) || !SetEndOfFile(handle))
                return refuse(handle, false);
            return handle;
        }
        if (GetLastError() != ERROR_FILE_NOT_FOUND)
            return nullptr;
        handle = openRaw(name, access | DELETE, share, CREATE_NEW, false);
        if (handle)
            return finalPathIs(handle, name) ? handle : refuse(handle, true);
        if (GetLastError() != ERROR_FILE_EXISTS)
            return nullptr;
    }
    return nullptr;
}

HANDLE openForAppendChecked(const char* path)
{
    char name[kPathCapacity];
    if (!nameToOpen(path, name, sizeof name))
        return nullptr;
    // A missing file is made first and then opened as an existing one: the handle that made it
    // holds delete access, and with it open nobody could read the file (a person looking at the
    // log while the run goes on).
    for (int attempt = 0; attempt < 2; ++attempt) {
        HANDLE handle = openRaw(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING, false);
        if (handle) {
            if (!finalPathIs(handle, name) || isLink(handle) || isFolder(handle))
                return refuse(handle, false);
            return handle;
        }
        if (GetLastError() != ERROR_FILE_NOT_FOUND)
            return nullptr;
        HANDLE created = createChecked(path, false, FILE_SHARE_READ | FILE_SHARE_WRITE);
        if (!created)
            return nullptr;
        CloseHandle(created);
    }
    return nullptr;
}

bool deleteChecked(const char* path, bool folder)
{
    char name[kPathCapacity];
    if (!nameToOpen(path, name, sizeof name))
        return false;
    HANDLE handle = openRaw(name, DELETE | FILE_READ_ATTRIBUTES, kShareAll, OPEN_EXISTING, folder);
    if (!handle)
        return false;
    // A link at the name itself may go (it is removed, never followed); a link above it may not.
    const bool ok = finalPathIs(handle, name) && isFolder(handle) == folder && deleteOnHandle(handle);
    CloseHandle(handle);
    return ok;
}

bool createFolderChecked(const char* folder)
{
    char name[kPathCapacity];
    if (!nameToOpen(folder, name, sizeof name))
        return false;
    const bool made = CreateDirectoryA(name, nullptr) != FALSE;
    if (!made && GetLastError() != ERROR_ALREADY_EXISTS)
        return false;
    // Delete access only for a folder made here: an existing one (a profile's Temp, say) may be
    // open elsewhere without delete sharing, and is never deleted by this call anyway.
    HANDLE handle = openRaw(name, (made ? DELETE : 0) | FILE_READ_ATTRIBUTES, kShareAll, OPEN_EXISTING, true);
    if (!handle)
        return false;
    if (!finalPathIs(handle, name) || isLink(handle) || !isFolder(handle)) {
        // A folder this call made through a link is taken away again: it is empty.
        refuse(handle, made);
        return false;
    }
    CloseHandle(handle);
    return true;
}

bool isPlainFileIn(HANDLE handle, const char* path)
{
    char folder[kPathCapacity];
    char folderName[kPathCapacity];
    if (!FolderOfPath(path, folder, sizeof folder) || !nameToOpen(folder, folderName, sizeof folderName))
        return false;
    HANDLE folderHandle = openRaw(folderName, FILE_READ_ATTRIBUTES, kShareAll, OPEN_EXISTING, true);
    if (!folderHandle)
        return false;
    char finalFolder[kPathCapacity];
    char expected[kPathCapacity];
    const bool ok = finalPathOf(folderHandle, finalFolder, sizeof finalFolder);
    CloseHandle(folderHandle);
    HOI_PathA(finalFolder, sizeof finalFolder);
    return ok && composePath(expected, sizeof expected, finalFolder, path + std::strlen(folder)) &&
           finalPathIs(handle, expected) && !isLink(handle) && !isFolder(handle);
}

bool copyChecked(const char* source, const char* target, const CopyRules& rules)
{
    // Read sharing only: the source cannot change while it is copied.
    HANDLE in = rules.sourceInForeignFolder ? openForeignSource(source)
                                            : openCheckedSharing(source, GENERIC_READ, FILE_SHARE_READ, false);
    if (!in)
        return false;
    HANDLE out = createChecked(target, !rules.failIfExists, 0);
    if (!out) {
        CloseHandle(in);
        return false;
    }
    void* buffer = VirtualAlloc(nullptr, kCopyChunk, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    bool ok = buffer != nullptr;
    for (DWORD read = 0; ok; ) {
        ok = ReadFile(in, buffer, kCopyChunk, &read, nullptr) != FALSE;
        if (!ok || read == 0)
            break;
        DWORD written = 0;
        ok = WriteFile(out, buffer, read, &written, nullptr) && written == read;
        if (rules.eachChunk)
            rules.eachChunk();
    }
    if (buffer)
        VirtualFree(buffer, 0, MEM_RELEASE);
    // The copy keeps the source's last-write time and attributes, as the system's copy does: the
    // installation compares an installed file's time with its source's.
    BY_HANDLE_FILE_INFORMATION info;
    if (ok && GetFileInformationByHandle(in, &info)) {
        FILE_BASIC_INFO basic = {};
        basic.LastWriteTime.LowPart = info.ftLastWriteTime.dwLowDateTime;
        basic.LastWriteTime.HighPart = static_cast<LONG>(info.ftLastWriteTime.dwHighDateTime);
        basic.FileAttributes = info.dwFileAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                                        FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE);
        if (basic.FileAttributes == 0)
            basic.FileAttributes = FILE_ATTRIBUTE_NORMAL;
        ok = SetFileInformationByHandle(out, FileBasicInfo, &basic, sizeof basic) != FALSE;
    }
    CloseHandle(in);
    if (!ok)
        deleteOnHandle(out);   // a new file's partial copy goes; a replaced one is left to the caller
    CloseHandle(out);
    return ok;
}

bool setArchiveOnlyChecked(const char* path)
{
    HANDLE handle = openChecked(path, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES, false);
    if (!handle)
        return false;
    FILE_BASIC_INFO basic = {};
    basic.FileAttributes = FILE_ATTRIBUTE_ARCHIVE;
    const bool ok = SetFileInformationByHandle(handle, FileBasicInfo, &basic, sizeof basic) != FALSE;
    CloseHandle(handle);
    return ok;
}
