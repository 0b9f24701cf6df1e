// Path texts: parts, parents and the folder-path test that the file primitives, the log and the
// removal rely on.
#include "strings/paths.h"
#include "strings/hoi_strings.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>

namespace {

bool isSeparator(char c)
{
    return c == '\\' || c == '/';
}

} // namespace

bool FolderOfPath(const char* path, char* folder, std::size_t capacity)
{
    HOI_InitA(folder);
    if (!path || path[0] == '*')
        return false;
    char drive[_MAX_DRIVE];
    char dir[_MAX_DIR];
    if (_splitpath_s(path, drive, sizeof drive, dir, sizeof dir, nullptr, 0, nullptr, 0) != 0)
        return false;
    HOI_CopyA(folder, capacity, drive, dir);
    HOI_PathA(folder, capacity);
    return folder[0] != '\0';
}

std::size_t folderRootLength(const char* path)
{
    if (path[0] == '\\' && path[1] == '\\') {
        std::size_t i = 2;
        const std::size_t server = i;
        while (path[i] && !isSeparator(path[i]))
            ++i;
        if (i == server || !isSeparator(path[i]))
            return 0;
        const std::size_t share = ++i;
        while (path[i] && !isSeparator(path[i]))
            ++i;
        if (i == share || !isSeparator(path[i]))
            return 0;
        return i + 1;
    }
    if (path[0] != '\0' && path[1] == ':' && path[2] == '\\')
        return 3;
    return 0;
}

bool IsFolderPath(const char* path)
{
    char copy[kPathCapacity];
    HOI_CopyA(copy, sizeof copy, path);
    HOI_PathA(copy, sizeof copy);
    const std::size_t root = folderRootLength(copy);
    if (root == 0 || copy[root] == '\0')
        return false;           // no root, or nothing after it ("C:\" alone)
    for (std::size_t i = root; copy[i]; ++i) {
        if (isSeparator(copy[i]) && isSeparator(copy[i - 1]))
            return false;       // an empty element
    }
    return true;
}

bool ParentFolder(const char* path, char* parent, std::size_t capacity)
{
    if (!IsFolderPath(path))
        return false;
    char copy[kPathCapacity];
    HOI_CopyA(copy, sizeof copy, path);
    HOI_PathA(copy, sizeof copy);
    const std::size_t length = std::strlen(copy);
    if (length < 2)
        return false;
    std::size_t n = length - 2;
    if (n == 0 || n > 258)
        return false;
    while (!isSeparator(copy[n])) {
        if (n <= 5)
            return false;
        --n;
    }
    if (n < 5)
        return false;
    copy[n + 1] = '\0';
    HOI_CopyA(parent, capacity, copy);
    return true;
}

bool composePath(char* path, std::size_t capacity, const char* first, const char* second, const char* third)
{
    const std::size_t length = std::strlen(first) + (second ? std::strlen(second) : 0) + (third ? std::strlen(third) : 0);
    if (capacity == 0)
        return false;
    if (length >= capacity) {
        path[0] = '\0';
        return false;
    }
    HOI_CopyA(path, capacity, first, second, third);
    return true;
}

bool PathStartsWithFolder(const char* path, const char* folder)
{
    const std::size_t length = std::strlen(folder);
    return length > 0 && std::strlen(path) >= length &&
           CompareStringA(LOCALE_INVARIANT, NORM_IGNORECASE, path, static_cast<int>(length), folder,
                          static_cast<int>(length)) == CSTR_EQUAL;
}

void StripTrailingSeparator(char* path)
{
    const std::size_t length = std::strlen(path);
    if (length > 0 && isSeparator(path[length - 1]))
        path[length - 1] = '\0';
}
