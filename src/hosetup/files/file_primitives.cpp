// File and folder primitives the installation and the removal stand on: each is one system call
// or a short loop of them with a fixed rule for success. The empty (zero) handle means no file:
// every handle operation fails for it without calling the system.
#include "files/files.h"
#include "strings/hoi_strings.h"

#include <io.h>
#include <cstring>

namespace {

bool isSeparator(char c)
{
    return c == '\\' || c == '/';
}

} // namespace

bool PathExists(const char* path)
{
    return _access(path, 0) == 0;
}

bool DeleteFileAt(const char* path)
{
    return deleteChecked(path, false);
}

bool RemoveFolder(const char* folder)
{
    return IsFolderPath(folder) && deleteChecked(folder, true);
}

bool OpenForReading(HANDLE* file, const char* path)
{
    HANDLE handle = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    *file = handle == INVALID_HANDLE_VALUE ? nullptr : handle;
    return *file != nullptr;
}

bool CreateForWriting(HANDLE* file, const char* path)
{
    *file = createChecked(path, true, FILE_SHARE_WRITE);
    return *file != nullptr;
}

bool CreateFolder(const char* folder)
{
    char path[kPathCapacity];
    if (!composePath(path, sizeof path, folder, nullptr))
        return false;
    HOI_PathA(path, sizeof path);
    return createFolderChecked(path);
}

bool OpenForAppending(HANDLE* file, const char* path)
{
    *file = openForAppendChecked(path);
    if (!*file)
        return false;
    return Seek(*file, 0, FILE_END);
}

std::uint64_t GetSize(HANDLE file)
{
    if (!file)
        return 0;
    DWORD high = 0;
    const DWORD low = GetFileSize(file, &high);
    if (low == INVALID_FILE_SIZE && GetLastError() != NO_ERROR)
        return 0;
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

std::uint32_t ReadBytes(HANDLE file, void* buffer, std::uint32_t count)
{
    DWORD read = 0;
    if (!file || !ReadFile(file, buffer, count, &read, nullptr))
        return 0;
    return read;
}

std::uint32_t WriteBytes(HANDLE file, const void* buffer, std::uint32_t count)
{
    DWORD written = 0;
    if (!file || !WriteFile(file, buffer, count, &written, nullptr))
        return 0;
    return written;
}

bool Seek(HANDLE file, std::int64_t distance, int origin)
{
    if (!file)
        return false;
    LARGE_INTEGER move;
    move.QuadPart = distance;
    const DWORD method = origin == 0 ? FILE_BEGIN : origin == 1 ? FILE_CURRENT : FILE_END;
    return SetFilePointerEx(file, move, nullptr, method) != FALSE;
}

bool ReadTextLine(HANDLE file, char* buffer, std::size_t capacity)
{
    std::size_t length = 0;
    HOI_InitA(buffer);
    for (;;) {
        char c;
        if (length >= capacity || ReadBytes(file, &c, 1) != 1) {
            // End of file, a read error or a full buffer: no line.
            buffer[0] = '\0';
            return false;
        }
        buffer[length++] = c;
        const bool lineEnd = c == '\r' || c == '\n';
        if (length >= 3 && lineEnd && (buffer[length - 2] == '\r' || buffer[length - 2] == '\n')) {
            // A pair of line-end bytes ends a line; an empty or blank-led line is skipped.
            if ((buffer[0] & ~0x20) != 0) {
                buffer[length - 2] = '\0';
                return true;
            }
            length = 0;
            buffer[0] = '\0';
        }
    }
}

bool WriteLogLine(HANDLE file, const char* text, std::size_t length)
{
    if (!file)
        return false;
    // Room for the text, CR LF and the terminator the formatter leaves behind.
    HGLOBAL block = GlobalAlloc(GMEM_FIXED, length + 3);
    if (!block)
        return false;
    char* line = static_cast<char*>(block);
    HOI_PrintA(line, length + 3, "%s\r\n", text);
    const std::uint32_t written = WriteBytes(file, line, static_cast<std::uint32_t>(length + 2));
    GlobalFree(block);
    return written == length + 2;
}

bool CloseFile(HANDLE file)
{
    if (!file)
        return false;
    return CloseHandle(file) != FALSE;
}

ChainStep CreateFolderChain(const char* path, FolderLevels* missing, bool (*beforeMaking)(const char* level))
{
    if (missing)
        missing->count = 0;
    char folder[kPathCapacity];
    HOI_CopyA(folder, sizeof folder, path);
    HOI_PathA(folder, sizeof folder);
    const std::size_t root = IsFolderPath(folder) ? folderRootLength(folder) : 0;
    if (root == 0)
        return ChainStep::Refused;
    char level[kPathCapacity];
    for (std::size_t i = root; folder[i]; ++i) {
        if (!isSeparator(folder[i]))
            continue;
        HOI_CopyPartA(level, sizeof level, folder, i + 1);
        const bool existed = PathExists(level);
        if (!existed && beforeMaking && !beforeMaking(level))
            return ChainStep::Stopped;
        // A level that is there but reached through a link (or no folder) ends the chain: what
        // is made below it would land elsewhere. One that cannot be made is left to the steps
        // that write into it, which report their own failures.
        if (!CreateFolder(level) && PathExists(level))
            return ChainStep::Refused;
        if (missing && missing->count < kMaxFolderLevels && !existed)
            HOI_CopyA(missing->level[missing->count++], kPathCapacity, level);
    }
    return ChainStep::Made;
}

TreeEntry classifyTreeEntry(DWORD attributes)
{
    const bool folder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (folder && (attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return TreeEntry::FolderLink;
    return folder ? TreeEntry::Folder : TreeEntry::File;   // a file link is deleted as a file
}

// Removes a folder and everything in it. A junction or symbolic link met on the way is removed
// itself and never entered: it may point at any folder of the system. Every entry goes through the
// checked deletion, so nothing below a link that appeared meanwhile is touched. A child whose path
// would not fit in kPathCapacity is left alone rather than deleted under a cut name, which would
// name another file or the folder itself.
void DeleteFolderTree(const char* folder)
{
    char base[kPathCapacity];
    if (!composePath(base, sizeof base, folder, nullptr))
        return;
    HOI_PathA(base, sizeof base);
    const std::size_t length = std::strlen(base);
    if (length == 0 || base[length - 1] != '\\')
        return;   // no room left for the closing backslash
    // Asked without the closing backslash: with it, Windows and Wine report the attributes of a
    // link's target, not of the link.
    char named[kPathCapacity];
    HOI_CopyA(named, sizeof named, base);
    StripTrailingSeparator(named);
    const DWORD attributes = GetFileAttributesA(named);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return;
    if (classifyTreeEntry(attributes) != TreeEntry::Folder) {
        deleteChecked(named, (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
        return;
    }
    HANDLE held = openChecked(base, FILE_READ_ATTRIBUTES, true);
    if (!held)
        return;   // reached through a link: not the folder meant
    CloseHandle(held);
    char pattern[kPathCapacity];
    if (!composePath(pattern, sizeof pattern, base, "*.*"))
        return;

    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA(pattern, &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if (HOI_EqualA(found.cFileName, ".") || HOI_EqualA(found.cFileName, ".."))
                continue;
            char path[kPathCapacity];
            if (!composePath(path, sizeof path, base, found.cFileName))
                continue;
            switch (classifyTreeEntry(found.dwFileAttributes)) {
            case TreeEntry::FolderLink:
                deleteChecked(path, true);   // the link, not its target
                break;
            case TreeEntry::Folder:
                DeleteFolderTree(path);
                break;
            case TreeEntry::File:
                deleteChecked(path, false);
                break;
            }
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    RemoveFolder(base);
}

// Asks the system to delete path at the next restart: for files in use by this very program.
// The result is not reported; callers have nothing better to do when it fails.
void DeleteAtRestart(const char* path)
{
    // What is there now must be reached without a link; the restart acts on the name.
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        HANDLE checked = openChecked(path, FILE_READ_ATTRIBUTES, (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
        if (!checked)
            return;
        CloseHandle(checked);
    }
    MoveFileExA(path, nullptr, MOVEFILE_REPLACE_EXISTING | MOVEFILE_DELAY_UNTIL_REBOOT);
}
