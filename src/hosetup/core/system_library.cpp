// DLLs the program loads at run time come from the system folder only. The program runs with
// administrator rights, usually from a Downloads folder where anyone's files land; a DLL of a
// system name placed beside it must never be loaded into the elevated process. The load-time
// imports are only DLLs Windows always takes from the system folder (KnownDLLs) and comctl32
// bound through the manifest; the language module is loaded by its full path after a check.
#include "core/core.h"
#include "strings/hoi_strings.h"

namespace {

using SetDefaultDllDirectoriesFunction = BOOL(WINAPI*)(DWORD);

} // namespace

void restrictDllSearch()
{
    // SetDefaultDllDirectories exists from Windows 8 on, and on Windows 7 with KB2533623.
    HMODULE kernel = GetModuleHandleA("kernel32.dll");
    auto setDefault = reinterpret_cast<SetDefaultDllDirectoriesFunction>(
        kernel ? GetProcAddress(kernel, "SetDefaultDllDirectories") : nullptr);
    if (setDefault && setDefault(LOAD_LIBRARY_SEARCH_SYSTEM32))
        return;
    // Without it, at least take the current folder out of the search.
    SetDllDirectoryA("");
}

HMODULE loadSystemLibrary(const char* name)
{
    char path[kPathCapacity];
    const UINT length = GetSystemDirectoryA(path, sizeof path);
    if (length == 0 || length >= sizeof path)
        return nullptr;
    if (!HOI_JoinA(path, sizeof path, "\\", name))
        return nullptr;
    // A full path: the DLL's own dependencies are then looked for beside it first.
    return LoadLibraryExA(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}
