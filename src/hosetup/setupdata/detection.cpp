// Detection of the target folders and of an earlier installation. An installation records its
// folders below the product key in HKEY_LOCAL_MACHINE (the key itself for current versions, a
// language subkey for older ones); the product keeps per-user folders in HKEY_CURRENT_USER, taken
// only where the user could write anyway (user_folders.cpp).
// Folders that nothing recorded take defaults below the system's shell folders.
#include "setupdata/setupdata.h"
#include "userfolders/userfolders.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

#include <shlobj.h>

namespace {

// Key suffixes below registryKey, searched in this order; the per-user search starts at the
// second entry. Closed by an end mark.
const char* const kKeySuffixes[] = {"", "\\Deutsch", "\\English", nullptr};

constexpr char kNoEarlierCompileDate[] = "2003-04-01";

void showCursor(HCURSOR cursor)
{
    if (cursor)
        SetCursor(cursor);
}

// A text value, read into a buffer of `capacity` characters and always terminated. A value too
// long for the buffer or of another type counts as not readable.
bool readText(HKEY key, const char* name, char* buffer, std::size_t capacity)
{
    char value[kRegistryKeyCapacity];
    DWORD type = 0;
    DWORD size = sizeof value - 1;
    if (RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(value), &size) != ERROR_SUCCESS)
        return false;
    if (type != REG_SZ && type != REG_EXPAND_SZ)
        return false;
    value[size] = '\0';
    HOI_CopyA(buffer, capacity, value);
    return true;
}

// A folder value: copied with a trailing backslash. "*" (or any text beginning with "*") keeps
// the folder at its default; HOI_PathA leaves such a text as it is.
void readFolder(HKEY key, const char* name, char* folder, std::size_t capacity)
{
    if (readText(key, name, folder, capacity))
        HOI_PathA(folder, capacity);
}

bool readNumber(HKEY key, const char* name, DWORD* number)
{
    DWORD type = 0;
    DWORD value = 0;
    DWORD size = sizeof value;
    if (RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size) != ERROR_SUCCESS)
        return false;
    if (type != REG_DWORD || size != sizeof value)
        return false;
    *number = value;
    return true;
}

HKEY openKey(HKEY root, const char* suffix)
{
    char path[kRegistryKeyCapacity];
    HOI_CopyA(path, sizeof path, g_setup.registryKey, suffix);
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, path, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return nullptr;
    return key;
}

// Folders recorded by an installation. Only the product key itself (the first suffix) records
// the user mode and the three document folders; the language subkeys of older versions supply
// the installation folder alone. True when the first suffix yielded the installation folder.
bool readMachineFolders()
{
    for (int i = 0; kKeySuffixes[i]; ++i) {
        HKEY key = openKey(HKEY_LOCAL_MACHINE, kKeySuffixes[i]);
        if (!key)
            continue;
        const bool found = readText(key, "PathLocal", g_setup.installFolder, kPathCapacity);
        if (found) {
            HOI_PathA(g_setup.installFolder, kPathCapacity);
            if (i == 0) {
                DWORD userMode = 0;
                if (readNumber(key, "UserMode", &userMode))
                    g_setup.perUser = userMode != 0;
                readFolder(key, "PathLibrary", g_setup.libraryFolder, sizeof g_setup.libraryFolder);
                readFolder(key, "PathDrawing", g_setup.drawingFolder, sizeof g_setup.drawingFolder);
                readFolder(key, "PathSetting", g_setup.settingFolder, sizeof g_setup.settingFolder);
            }
        }
        RegCloseKey(key);
        if (found)
            return i == 0;
    }
    return false;
}

// A folder value of the user's own settings: taken only where the user could write anyway (a
// standard user may have written it for this elevated program to act on); any other value is
// noted for the log and the folder keeps its default. "*" keeps the default as it does anywhere.
void readUserFolder(HKEY key, const char* name, char* folder, std::size_t capacity)
{
    char value[kRegistryKeyCapacity];
    if (!readText(key, name, value, sizeof value) || value[0] == '*')
        return;
    if (!isUserWritableChoice(value)) {
        noteIgnoredFolderValue(name, value);
        return;
    }
    HOI_CopyA(folder, capacity, value);
    HOI_PathA(folder, capacity);
}

// The product's own per-user settings: the first language key that exists, subkey "General".
void readUserFolders()
{
    HKEY key = nullptr;
    for (int i = 1; kKeySuffixes[i] && !key; ++i)
        key = openKey(HKEY_CURRENT_USER, kKeySuffixes[i]);
    if (!key)
        return;
    HKEY general = nullptr;
    if (RegOpenKeyExA(key, "General", 0, KEY_READ, &general) == ERROR_SUCCESS) {
        char name[32];
        HOI_PrintA(name, sizeof name, "PathHOL %d", 1);
        readUserFolder(general, name, g_setup.libraryFolder, sizeof g_setup.libraryFolder);
        HOI_PrintA(name, sizeof name, "PathHOD %d", 1);
        readUserFolder(general, name, g_setup.drawingFolder, sizeof g_setup.drawingFolder);
        HOI_PrintA(name, sizeof name, "PathINF %d", 1);
        readUserFolder(general, name, g_setup.settingFolder, sizeof g_setup.settingFolder);
        RegCloseKey(general);
    }
    RegCloseKey(key);
}

// A shell folder with its backslash (created when missing); empty when the system cannot name
// it, or names for a user's own folder none the user could write anyway, or it does not fit.
void shellFolder(int csidl, char* folder, std::size_t capacity)
{
    char found[kPathCapacity];
    if (UserShellFolder(csidl, found, sizeof found) && composePath(folder, capacity, found, nullptr))
        SHCreateDirectoryExA(nullptr, folder, nullptr);
    else
        HOI_CopyA(folder, capacity, "");
}

// A folder still "*" takes shell folder + productFolderWord (+ relative folder); a folder that
// came from the registry clears its default flag instead. Without a shell folder it stays empty,
// which the later steps refuse: the product's word alone would be a relative path.
void settleFolder(char* folder, std::size_t capacity, unsigned char* defaultFlag, int csidl, int relative)
{
    if (folder[0] != '*') {
        *defaultFlag = 0;
        return;
    }
    char base[kPathCapacity];
    shellFolder(csidl, base, sizeof base);
    if (!base[0]) {
        HOI_CopyA(folder, capacity, "");
        return;
    }
    HOI_CopyA(folder, capacity, base, g_setup.productFolderWord,
              relative ? eRelativePaths[relative] : nullptr);
    HOI_PathA(folder, capacity);
}

} // namespace

void DetectFolders()
{
    showCursor(g_setup.waitCursor);
    char* const folders[] = {g_setup.installFolder, g_setup.commonDataFolder, g_setup.userDataFolder,
                             g_setup.documentsFolder, g_setup.settingFolder, g_setup.drawingFolder,
                             g_setup.libraryFolder};
    for (char* folder : folders)
        HOI_CopyA(folder, kPathCapacity, "*");
    g_setup.installFolderDefault = 1;
    g_setup.commonDataFolderDefault = 1;
    g_setup.userDataFolderDefault = 1;
    g_setup.documentsFolderDefault = 1;
    g_setup.settingFolderDefault = 1;
    g_setup.drawingFolderDefault = 1;
    g_setup.libraryFolderDefault = 1;
    g_setup.ignoredFolderCount = 0;

    // The per-user values are judged against the installation and data folders, so those two
    // settle first; no other folder depends on them.
    const bool recorded = readMachineFolders();
    settleFolder(g_setup.installFolder, sizeof g_setup.installFolder, &g_setup.installFolderDefault,
                 CSIDL_PROGRAM_FILES, kRelativeNone);
    settleFolder(g_setup.commonDataFolder, sizeof g_setup.commonDataFolder, &g_setup.commonDataFolderDefault,
                 CSIDL_COMMON_APPDATA, kRelativeNone);
    if (!recorded)
        readUserFolders();

    const int documents = g_setup.perUser ? CSIDL_PERSONAL : CSIDL_COMMON_DOCUMENTS;
    settleFolder(g_setup.userDataFolder, sizeof g_setup.userDataFolder, &g_setup.userDataFolderDefault,
                 g_setup.perUser ? CSIDL_APPDATA : CSIDL_COMMON_APPDATA, kRelativeNone);
    settleFolder(g_setup.documentsFolder, sizeof g_setup.documentsFolder, &g_setup.documentsFolderDefault,
                 documents, kRelativeNone);
    settleFolder(g_setup.libraryFolder, sizeof g_setup.libraryFolder, &g_setup.libraryFolderDefault, documents,
                 kRelativeLibraries);
    settleFolder(g_setup.drawingFolder, sizeof g_setup.drawingFolder, &g_setup.drawingFolderDefault, documents,
                 kRelativeDrawings);
    settleFolder(g_setup.settingFolder, sizeof g_setup.settingFolder, &g_setup.settingFolderDefault, documents,
                 kRelativeSettings);
    if (g_setup.perUser) {
        // The link steps look these up again; looking them up now notes a refused value before
        // the installation opens its log.
        char links[kPathCapacity];
        UserShellFolder(CSIDL_PROGRAMS, links, sizeof links);
        UserShellFolder(CSIDL_DESKTOPDIRECTORY, links, sizeof links);
    }

    NameBackupFolder();
    showCursor(g_setup.arrowCursor);
}

bool DetectEarlierInstallation()
{
    g_setup.laterVersionInstalled = 0;
    g_setup.updateInstall = 0;
    g_setup.logCarriedOver = 0;
    HOI_CopyA(g_setup.previousCompileDate, kTextCapacity, kNoEarlierCompileDate);

    for (int i = 0; kKeySuffixes[i] && !g_setup.updateInstall; ++i) {
        HKEY key = openKey(HKEY_LOCAL_MACHINE, kKeySuffixes[i]);
        if (!key)
            continue;
        char installed[kPathCapacity];
        if (readText(key, "PathLocal", installed, sizeof installed)) {
            g_setup.updateInstall = 1;
            // Only an installation recorded in the product key itself carries its log over.
            g_setup.logCarriedOver = i == 0;
            // "YYYY-MM-DD" texts: their text order is the date order.
            if (readText(key, "CompileDate", g_setup.previousCompileDate, kTextCapacity) &&
                HOI_CompareA(g_setup.packageCompileDate, g_setup.previousCompileDate) < 0)
                g_setup.laterVersionInstalled = 1;
        }
        RegCloseKey(key);
    }
    return g_setup.updateInstall != 0;
}
