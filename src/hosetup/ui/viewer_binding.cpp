// Run-time binding of the HTML Help control. The control is found through the machine's COM
// registration first, and in the system folder otherwise; never through the search path, which
// would start in the program's own folder. Nothing here is reported to the user: help that cannot be reached
// only does nothing.
#include "ui/ui.h"
#include "strings/hoi_strings.h"
#include "strings/paths.h"
#include "core/core.h"

bool readViewerModulePath(const char* classKey, char* path, std::size_t capacity)
{
    HOI_CopyA(path, capacity, "");
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, classKey, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    char value[kHelpPathCapacity];
    DWORD type = REG_NONE;
    DWORD size = sizeof value;
    const LONG status = RegQueryValueExA(key, nullptr, nullptr, &type, reinterpret_cast<BYTE*>(value), &size);
    RegCloseKey(key);
    // ERROR_MORE_DATA: the value does not fit in 260 characters.
    if (status != ERROR_SUCCESS)
        return false;
    // A registry string need not carry its terminator; one that fills the whole buffer without
    // it is 260 characters long and was cut.
    if (size >= sizeof value) {
        if (value[sizeof value - 1] != '\0')
            return false;
    } else {
        value[size] = '\0';
    }

    if (type == REG_EXPAND_SZ) {
        const DWORD needed = ExpandEnvironmentStringsA(value, path, static_cast<DWORD>(capacity));
        if (needed == 0 || needed > capacity) {
            HOI_CopyA(path, capacity, "");
            return false;
        }
        return true;
    }
    // Any other type is taken as it stands; a path cut to fit is no path.
    return HOI_JoinA(path, capacity, value);
}

namespace {

// The registered module first, when the registration names a whole drive path, then the system
// folder's copy.
HMODULE loadViewerModule(const HelpViewer* viewer)
{
    char path[kHelpPathCapacity];
    if (readViewerModulePath(viewer->classKey, path, sizeof path) && folderRootLength(path) == 3) {
        HMODULE module = LoadLibraryExA(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        if (module)
            return module;
    }
    return loadSystemLibrary(viewer->moduleName);
}

} // namespace

FARPROC bindHelpEntry(HelpViewer* viewer, HelpEntry* entry)
{
    if (entry->failed)
        return nullptr;
    if (entry->function)
        return entry->function;
    if (!viewer->module)
        viewer->module = loadViewerModule(viewer);
    if (viewer->module)
        entry->function = GetProcAddress(viewer->module, MAKEINTRESOURCEA(entry->ordinal));
    if (!entry->function)
        entry->failed = true;
    return entry->function;
}
