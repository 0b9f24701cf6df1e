// Folders named by the user's own registry: the product's per-user settings key and the user's
// shell folders (documents, application data, programs, desktop), which a standard user can
// point anywhere. This program runs elevated: it writes into those folders, records them in the
// machine's registry and log, and the removal deletes there what the log names. So such a folder
// is used only where the user could write anyway; any other value is ignored, the default taken
// instead, and the log names what was ignored.
#include "userfolders/userfolders.h"
#include "core/core.h"
#include "format/name_rules.h"
#include "strings/hoi_strings.h"

#include <shlobj.h>

#include <cstring>
#include <string_view>

namespace {

constexpr char kProfileList[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
constexpr std::size_t kDriveRootLength = 3;   // "C:\"

// The user's shell folders, with their value names below "User Shell Folders".
struct UserShellFolderName {
    int csidl;
    const char* name;
};
constexpr UserShellFolderName kUserShellFolders[] = {
    {CSIDL_PERSONAL, "Personal"},
    {CSIDL_APPDATA, "AppData"},
    {CSIDL_PROGRAMS, "Programs"},
    {CSIDL_DESKTOPDIRECTORY, "Desktop"},
};

// The machine's folders the rule measures a choice against, each canonical with its closing
// backslash; an empty one stands for no folder.
struct ReferenceFolders {
    char windows[kPathCapacity];
    char programFiles[kPathCapacity];
    char programFilesX86[kPathCapacity];
    char programData[kPathCapacity];
    char profiles[kPathCapacity];
    char ownProfile[kPathCapacity];      // the current user's, below profiles
    char publicProfile[kPathCapacity];   // the one that holds the public documents, below profiles
    char installFolder[kPathCapacity];   // the product's own
    char commonDataFolder[kPathCapacity];
};

bool isDriveLetter(char c)
{
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'z';
}

// "X:\" followed by plain names joined by single backslashes, ending in a backslash: no
// relative, UNC or "\\?\" path, no "." or "..", no "/" and no ":" of a stream, no name Windows
// would strip of a closing dot or blank, no device name.
bool isPlainDriveFolder(const char* folder)
{
    const std::size_t length = std::strlen(folder);
    if (length < kDriveRootLength || !isDriveLetter(folder[0]) || folder[1] != ':' || folder[2] != '\\' ||
        folder[length - 1] != '\\')
        return false;
    if (length == kDriveRootLength)
        return true;
    const std::string_view names(folder + kDriveRootLength, length - kDriveRootLength - 1);
    return !relativeFolderProblem(names, nullptr);
}

// folder with its closing backslash into a buffer of kPathCapacity; false when it does not fit.
bool withBackslash(const char* text, char* folder, std::size_t capacity)
{
    const std::size_t length = std::strlen(text);
    if (length == 0 || length + 1 >= capacity)
        return false;
    HOI_CopyA(folder, capacity, text);
    HOI_PathA(folder, capacity);
    return true;
}

// The path the file system gives an open folder, as "X:\...\"; false for a network path.
bool finalFolderOf(HANDLE handle, char* folder, std::size_t capacity)
{
    char final[kPathCapacity];
    if (!finalPathOf(handle, final, sizeof final))
        return false;
    if (!isDriveLetter(final[0]) || final[1] != ':' || final[2] != '\\')
        return false;   // "\\server\share\..."
    return withBackslash(final, folder, capacity);
}

// The canonical form of a plain drive folder: its longest part that exists as the file system
// names it (junctions and symbolic links followed, the names' stored case and long forms), then
// the rest as written. A part that cannot be opened is treated as missing; a part that opens but
// has no drive-letter name (a device, a network folder behind a link) makes the folder unusable.
// Wine makes no junctions, but resolves a host symbolic link here just as Windows a junction.
bool canonicalFolder(const char* folder, char* canonical)
{
    char head[kPathCapacity];
    HOI_CopyA(head, sizeof head, folder);
    std::size_t split = std::strlen(head);   // head is folder's first split characters
    for (;;) {
        HANDLE handle = CreateFileA(head, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (handle != INVALID_HANDLE_VALUE) {
            char resolved[kPathCapacity];
            const bool named = finalFolderOf(handle, resolved, sizeof resolved);
            CloseHandle(handle);
            return named && composePath(canonical, kPathCapacity, resolved, folder + split);
        }
        if (split <= kDriveRootLength)
            break;
        // Step back to the parent, which keeps its closing backslash.
        for (--split; split > 0 && head[split - 1] != '\\'; --split) {}
        head[split] = '\0';
    }
    // Nothing of it exists (a drive that is not there): as written, its drive letter in capitals.
    HOI_CopyA(canonical, kPathCapacity, folder);
    canonical[0] = static_cast<char>(canonical[0] & ~0x20);
    return true;
}

// A folder of the machine, canonical; left empty when it cannot be had.
void referenceFolder(const char* path, char* folder)
{
    char plain[kPathCapacity];
    if (!withBackslash(path, plain, sizeof plain) || !isPlainDriveFolder(plain) || !canonicalFolder(plain, folder))
        HOI_InitA(folder);
}

void shellReference(int csidl, char* folder)
{
    char path[MAX_PATH + 1] = "";
    if (SHGetFolderPathA(nullptr, csidl | CSIDL_FLAG_DONT_VERIFY, nullptr, SHGFP_TYPE_CURRENT, path) != S_OK)
        HOI_InitA(path);
    referenceFolder(path, folder);
}

// The profile below profiles that holds path ("C:\Users\Name\"); empty when path is not below.
void profileHolding(const char* profiles, const char* path, char* profile)
{
    HOI_InitA(profile);
    const std::size_t length = std::strlen(profiles);
    if (!PathStartsWithFolder(path, profiles) || std::strlen(path) == length)
        return;
    const char* end = std::strchr(path + length, '\\');
    if (end)
        HOI_CopyPartA(profile, kPathCapacity, path, static_cast<std::size_t>(end - path) + 1);
}

// The profiles folder from the machine's profile list (its value may name environment variables),
// else the parent of the current user's profile.
void profilesFolder(const char* ownProfile, char* folder)
{
    char value[kPathCapacity] = "";
    char expanded[kPathCapacity] = "";
    DWORD size = sizeof value - 1;
    DWORD type = 0;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kProfileList, 0, KEY_READ, &key) == ERROR_SUCCESS) {
        if (RegQueryValueExA(key, "ProfilesDirectory", nullptr, &type, reinterpret_cast<BYTE*>(value), &size) !=
                ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ))
            size = 0;
        value[size] = '\0';
        RegCloseKey(key);
    }
    const DWORD length = ExpandEnvironmentStringsA(value, expanded, sizeof expanded);
    if (value[0] && length > 0 && length <= sizeof expanded) {
        referenceFolder(expanded, folder);
        if (folder[0])
            return;
    }
    HOI_InitA(folder);
    if (ownProfile[0])
        ParentFolder(ownProfile, folder, kPathCapacity);
}

// False when a folder the rule cannot do without is unknown.
bool readReferenceFolders(ReferenceFolders* folders)
{
    shellReference(CSIDL_WINDOWS, folders->windows);
    shellReference(CSIDL_PROGRAM_FILES, folders->programFiles);
    shellReference(CSIDL_PROGRAM_FILESX86, folders->programFilesX86);
    shellReference(CSIDL_COMMON_APPDATA, folders->programData);
    char path[kPathCapacity];
    shellReference(CSIDL_PROFILE, path);
    profilesFolder(path, folders->profiles);
    profileHolding(folders->profiles, path, folders->ownProfile);
    shellReference(CSIDL_COMMON_DOCUMENTS, path);
    profileHolding(folders->profiles, path, folders->publicProfile);
    referenceFolder(g_setup.installFolder, folders->installFolder);
    referenceFolder(g_setup.commonDataFolder, folders->commonDataFolder);
    return folders->windows[0] && folders->programFiles[0] && folders->programData[0] && folders->profiles[0];
}

const UserShellFolderName* userShellFolderName(int csidl)
{
    for (const UserShellFolderName& folder : kUserShellFolders) {
        if (folder.csidl == csidl)
            return &folder;
    }
    return nullptr;
}

// A shell folder's path with its backslash, nothing created; false when the shell names none.
bool lookUpShellFolder(int csidl, DWORD type, char* folder, std::size_t capacity)
{
    char path[MAX_PATH + 1] = "";
    if (SHGetFolderPathA(nullptr, csidl | CSIDL_FLAG_DONT_VERIFY, nullptr, type, path) == S_OK &&
        withBackslash(path, folder, capacity))
        return true;
    HOI_InitA(folder);
    return false;
}

} // namespace

bool isUserWritableChoice(const char* path)
{
    char folder[kPathCapacity];
    char canonical[kPathCapacity];
    if (!withBackslash(path, folder, sizeof folder) || !isPlainDriveFolder(folder) || !canonicalFolder(folder, canonical))
        return false;
    ReferenceFolders reference;
    if (!readReferenceFolders(&reference))
        return false;
    const bool ownInstallation = PathStartsWithFolder(canonical, reference.installFolder);
    if (PathStartsWithFolder(canonical, reference.windows) ||
        (PathStartsWithFolder(canonical, reference.programFiles) && !ownInstallation) ||
        (PathStartsWithFolder(canonical, reference.programFilesX86) && !ownInstallation) ||
        (PathStartsWithFolder(canonical, reference.programData) && !PathStartsWithFolder(canonical, reference.commonDataFolder)))
        return false;
    // The system drive's root itself; a folder below it is judged by the rules around.
    if (std::strlen(canonical) == kDriveRootLength && PathStartsWithFolder(reference.windows, canonical))
        return false;
    return !PathStartsWithFolder(canonical, reference.profiles) || PathStartsWithFolder(canonical, reference.ownProfile) ||
           PathStartsWithFolder(canonical, reference.publicProfile);
}

bool UserShellFolder(int csidl, char* folder, std::size_t capacity)
{
    const UserShellFolderName* name = userShellFolderName(csidl);
    if (!name)
        return lookUpShellFolder(csidl, SHGFP_TYPE_CURRENT, folder, capacity);
    if (lookUpShellFolder(csidl, SHGFP_TYPE_CURRENT, folder, capacity) && isUserWritableChoice(folder))
        return true;
    if (folder[0])
        noteIgnoredFolderValue(name->name, folder);
    if (lookUpShellFolder(csidl, SHGFP_TYPE_DEFAULT, folder, capacity) && isUserWritableChoice(folder))
        return true;
    HOI_InitA(folder);
    return false;
}

void noteIgnoredFolderValue(const char* name, const char* value)
{
    char text[kIgnoredFolderTextCapacity];
    HOI_PrintA(text, sizeof text, "%s: %s", name, value);
    // The text goes into a log line: a line end or other control character in the value must not
    // start a line of its own there.
    for (char* c = text; *c; ++c) {
        if (static_cast<unsigned char>(*c) < ' ')
            *c = '?';
    }
    for (std::uint32_t i = 0; i < g_setup.ignoredFolderCount; ++i) {
        if (std::strcmp(g_setup.ignoredFolderValues[i], text) == 0)
            return;   // looked up again by a later step
    }
    if (g_setup.ignoredFolderCount < kIgnoredFolderSlots)
        HOI_CopyA(g_setup.ignoredFolderValues[g_setup.ignoredFolderCount++], kIgnoredFolderTextCapacity, text);
}
