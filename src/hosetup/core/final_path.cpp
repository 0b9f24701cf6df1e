// The path by which the system knows an open file: every link, junction and mount point on the
// way resolved, long names. Two checks stand on it: that a file the program writes or deletes is
// the one it meant, and which file a checked program file of its own really is. Under Wine a host
// symbolic link stands in for a Windows link, and GetFinalPathNameByHandle resolves it the same.
#include "core/core.h"
#include "strings/hoi_strings.h"

#include <cstring>

namespace {

constexpr char kLongPrefix[] = "\\\\?\\";
constexpr char kLongUncPrefix[] = "\\\\?\\UNC\\";

} // namespace

bool finalPathOf(HANDLE handle, char* path, std::size_t capacity)
{
    char raw[kPathCapacity + sizeof kLongUncPrefix];
    const DWORD length = GetFinalPathNameByHandleA(handle, raw, sizeof raw, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    if (length == 0 || length >= sizeof raw)
        return false;
    if (std::strncmp(raw, kLongUncPrefix, sizeof kLongUncPrefix - 1) == 0)
        return composePath(path, capacity, "\\\\", raw + sizeof kLongUncPrefix - 1);
    if (std::strncmp(raw, kLongPrefix, sizeof kLongPrefix - 1) == 0)
        return composePath(path, capacity, raw + sizeof kLongPrefix - 1, nullptr);
    return composePath(path, capacity, raw, nullptr);
}
