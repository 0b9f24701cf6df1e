// What a removal takes out of the registry: the keys the installation wrote, the keys the product
// keeps under the maker's key, and the maker's key itself once no other product of the maker is
// left in it. The work is cut into paced portions so that the bar moves and the user can cancel
// between them; the record of the installation (its uninstall entry and product key) goes apart,
// at the very end of a removal, so that one cut short can be started again. Every deletion result
// is ignored.
#include "registry/registry.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "strings/paths.h"
#include "ui/ui.h"

#include <shlobj.h>

#include <cstring>

namespace {

constexpr char kMakerKey[] = "Software\\Harwick-Orbel\\";
constexpr char kProductsKey[] = "Products";
constexpr char kPlugInsKey[] = "Vistrel Plug-Ins\\";
constexpr char kDrawingExtension[] = ".HOD";
constexpr char kDrawingType[] = "HOVISTREL";
constexpr std::size_t kKeyPathCapacity = 760;
// Subkey names are asked for into a buffer of this many characters; a longer name stops the walk.
constexpr DWORD kSubkeyNameCapacity = 499;
// The maker's key is looked into with a buffer of this size, and at most this many subkeys are
// asked for: one is enough to keep the key.
constexpr DWORD kMakerSubkeyNameCapacity = 759;
constexpr DWORD kMakerSubkeyProbes = 10;
constexpr DWORD kPaceSleepMs = 250;
// In the product key while a removal deletes what it needs to be started again: the log missing
// then is one this removal deleted, not one that was lost.
constexpr char kRemovalFinishingValue[] = "RemovalFinishing";

bool endsInSeparator(const char* path)
{
    const std::size_t length = std::strlen(path);
    return length > 0 && (path[length - 1] == '\\' || path[length - 1] == '/');
}

// Reports n of 100 within the current stage and gives the bar a moment to be seen.
bool pace(int n)
{
    return paceProgress(n, n, 1, kPaceSleepMs);
}

void deleteUnderBothRoots(const char* path)
{
    DeleteRegistryTree(HKEY_CURRENT_USER, path);
    DeleteRegistryTree(HKEY_LOCAL_MACHINE, path);
}

// Deletes the maker's key under root when it holds no subkey. Only the first ten subkeys are
// asked for; any answer but "no more items" counts as a subkey, so an unreadable key stays.
void deleteMakerKeyIfEmpty(HKEY root)
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, kMakerKey, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return;
    char name[kMakerSubkeyNameCapacity + 1];
    DWORD length = kMakerSubkeyNameCapacity;
    DWORD subkeys = 0;
    for (DWORD index = 0; index < kMakerSubkeyProbes; ++index) {
        if (RegEnumKeyExA(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_NO_MORE_ITEMS)
            break;
        ++subkeys;
    }
    RegCloseKey(key);
    if (subkeys == 0)
        RegDeleteKeyA(root, kMakerKey);
}

} // namespace

LONG DeleteRegistryTree(HKEY root, const char* path)
{
    // A closing separator would let the registry open the parent of what is meant; with the
    // Uninstall path that would take every program's entry with it.
    if (!path || !path[0] || endsInSeparator(path))
        return ERROR_BADKEY;
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, path, 0, KEY_ENUMERATE_SUB_KEYS, &key) != ERROR_SUCCESS)
        return ERROR_SUCCESS;   // a key that is not there counts as deleted

    LONG status = ERROR_SUCCESS;
    for (;;) {
        // Always subkey 0: each deleted child moves the next one into its place.
        char name[kSubkeyNameCapacity + 1];
        DWORD length = kSubkeyNameCapacity;
        const LONG result = RegEnumKeyExA(key, 0, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (result == ERROR_NO_MORE_ITEMS) {
            status = RegDeleteKeyA(root, path);
            break;
        }
        if (result != ERROR_SUCCESS) {
            status = result;
            break;
        }
        status = DeleteRegistryTree(key, name);
        if (status != ERROR_SUCCESS)
            break;
    }
    RegCloseKey(key);
    return status;
}

bool RemoveRegistryEntries()
{
    char path[kKeyPathCapacity];

    // The per-user half of the product key; the machine's half records the installation and goes
    // last, with the uninstall entry (RemoveInstallationRecord).
    DeleteRegistryTree(HKEY_CURRENT_USER, g_setup.registryKey);
    HOI_CopyA(path, sizeof path, "Software\\", "Harwick-Orbel\\", kProductsKey);
    deleteUnderBothRoots(path);
    if (!pace(20))
        return false;

    HOI_CopyA(path, sizeof path, "Software\\", "Harwick-Orbel\\", kPlugInsKey);
    StripTrailingSeparator(path);
    deleteUnderBothRoots(path);
    HOI_PrintA(path, sizeof path, "%s\\%s", kAppPathsKey, kMainProgram);
    DeleteRegistryTree(HKEY_LOCAL_MACHINE, path);
    // The library type stays registered: other products of the maker open libraries too.
    DeleteRegistryTree(HKEY_CLASSES_ROOT, kDrawingExtension);
    DeleteRegistryTree(HKEY_CLASSES_ROOT, kDrawingType);
    // Explorer drops its cached icon and verbs of the drawing type now, not at the next logon.
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
    if (!pace(40))
        return false;
    deleteMakerKeyIfEmpty(HKEY_CURRENT_USER);
    return pace(60);
}

void MarkRemovalFinishing()
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, g_setup.registryKey, 0, KEY_SET_VALUE, &key) != ERROR_SUCCESS)
        return;
    SetRegistryNumber(key, kRemovalFinishingValue, 1);
    RegCloseKey(key);
}

bool RemovalWasFinishing()
{
    DWORD value = 0;
    DWORD size = sizeof value;
    return RegGetValueA(HKEY_LOCAL_MACHINE, g_setup.registryKey, kRemovalFinishingValue, RRF_RT_REG_DWORD, nullptr,
                        &value, &size) == ERROR_SUCCESS &&
           value == 1;
}

void RemoveInstallationRecord()
{
    // The entry goes as a whole key, with every value the installation wrote into it, and before
    // the product key: a removal cut short between the two is started again from the
    // installation folder, which finds the installation by the product key.
    // The first request names the Uninstall key itself and is refused for its closing separator;
    // the second names the product's own entry, written under the uninstall key name alone.
    char uninstall[kKeyPathCapacity];
    char path[kKeyPathCapacity];
    HOI_PrintA(uninstall, sizeof uninstall, "%s\\", kUninstallKey);
    DeleteRegistryTree(HKEY_LOCAL_MACHINE, uninstall);
    HOI_CopyA(path, sizeof path, uninstall, eProfileTitle[kProfileUninstallKey], eProfileTitle[kProfileUninstallSuffix]);
    DeleteRegistryTree(HKEY_LOCAL_MACHINE, path);
    DeleteRegistryTree(HKEY_LOCAL_MACHINE, g_setup.registryKey);
    deleteMakerKeyIfEmpty(HKEY_LOCAL_MACHINE);
}
