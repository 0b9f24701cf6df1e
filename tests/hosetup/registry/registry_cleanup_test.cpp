// The removal's registry clean-up on the real registry of the test's prefix: the recursive key
// deletion and what the paced clean-up leaves of the maker's key.
#include <gtest/gtest.h>

#include <string>

#include "registry_checks.h"
#include "registry/registry.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"

namespace {

constexpr char kMakerKey[] = "Software\\Harwick-Orbel";
constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";
constexpr char kTestTree[] = "Software\\HoCleanupTest";
constexpr char kUninstallKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
constexpr char kEntryKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Vistrel Professional 2022";
constexpr char kNeighbourEntry[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\HoNeighbour";
constexpr char kAppPath[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\hovistrel.exe";

void makeKey(HKEY root, const std::string& path, const char* value = nullptr)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr), ERROR_SUCCESS)
        << path;
    if (value)
        RegSetValueExA(key, "Value", 0, REG_SZ, reinterpret_cast<const BYTE*>(value), DWORD(strlen(value) + 1));
    RegCloseKey(key);
}

bool keyExists(HKEY root, const std::string& path)
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

class RegistryCleanup : public ::testing::Test {
protected:
    void SetUp() override
    {
        clean();
        clearSetupState();
        HOI_CopyA(g_setup.registryKey, kRegistryKeyCapacity, kProductKey);
        g_setup.languageModule = GetModuleHandleA("holang.dll");
        g_setup.scale = 1.0;
        g_setup.optionSilent = 1;
    }

    void TearDown() override
    {
        ShowProgressStage(false, 0, 0, 0);
        clean();
    }

    static void clean()
    {
        deleteRegTree(HKEY_CURRENT_USER, kTestTree);
        deleteRegTree(HKEY_LOCAL_MACHINE, kNeighbourEntry);
        for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
            deleteRegTree(root, kMakerKey);
        deleteRegTree(HKEY_LOCAL_MACHINE, kEntryKey);
        deleteRegTree(HKEY_LOCAL_MACHINE, kAppPath);
        deleteRegTree(HKEY_CLASSES_ROOT, ".HOD");
        deleteRegTree(HKEY_CLASSES_ROOT, "HOVISTREL");
        deleteRegTree(HKEY_CLASSES_ROOT, ".HOL");
        deleteRegTree(HKEY_CLASSES_ROOT, "HOVISTRELLIB");
    }

    // Everything an installation and the installed product write, under both roots.
    static void writeInstalledKeys()
    {
        for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
            makeKey(root, std::string(kProductKey) + "\\Display\\Colours", "dark");
            makeKey(root, "Software\\Harwick-Orbel\\Products\\Vistrel", "1");
            makeKey(root, "Software\\Harwick-Orbel\\Vistrel Plug-Ins\\Render", "on");
        }
        makeKey(HKEY_LOCAL_MACHINE, kAppPath, "C:\\Apps\\hovistrel.exe");
        makeKey(HKEY_LOCAL_MACHINE, kEntryKey, "Vistrel");
        makeKey(HKEY_LOCAL_MACHINE, kNeighbourEntry, "another program");
        for (const char* type : {".HOD", "HOVISTREL\\shell\\open\\command", ".HOL", "HOVISTRELLIB"})
            makeKey(HKEY_CLASSES_ROOT, type, "x");
    }
};

TEST_F(RegistryCleanup, TreeDeletionRefusesBadPathsAndTakesWholeTrees)
{
    EXPECT_EQ(DeleteRegistryTree(HKEY_CURRENT_USER, nullptr), ERROR_BADKEY);
    EXPECT_EQ(DeleteRegistryTree(HKEY_CURRENT_USER, ""), ERROR_BADKEY);
    EXPECT_EQ(DeleteRegistryTree(HKEY_CURRENT_USER, "Software\\HoNoSuchKey"), ERROR_SUCCESS);

    const std::string tree = kTestTree;
    makeKey(HKEY_CURRENT_USER, tree + "\\A\\A1\\A11", "leaf");
    makeKey(HKEY_CURRENT_USER, tree + "\\A\\A2", "leaf");
    makeKey(HKEY_CURRENT_USER, tree + "\\B", "leaf");
    // A closing separator would name the key above it on a registry that accepts one; refused.
    EXPECT_EQ(DeleteRegistryTree(HKEY_CURRENT_USER, (tree + "\\A\\").c_str()), ERROR_BADKEY);
    EXPECT_EQ(DeleteRegistryTree(HKEY_CURRENT_USER, (tree + "\\A/").c_str()), ERROR_BADKEY);
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, tree + "\\A\\A1\\A11"));

    EXPECT_EQ(DeleteRegistryTree(HKEY_CURRENT_USER, (tree + "\\A").c_str()), ERROR_SUCCESS);
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, tree + "\\A"));
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, tree + "\\B"));
    EXPECT_EQ(DeleteRegistryTree(HKEY_CURRENT_USER, kTestTree), ERROR_SUCCESS);
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, tree));
}

TEST_F(RegistryCleanup, RemovesTheProductsKeysAndTheEmptyMakerKey)
{
    writeInstalledKeys();
    ASSERT_TRUE(ShowProgressStage(true, 6, 0, 0));
    EXPECT_TRUE(RemoveRegistryEntries());

    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
        EXPECT_FALSE(keyExists(root, kMakerKey)) << (root == HKEY_CURRENT_USER ? "HKCU" : "HKLM");
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kAppPath));
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kEntryKey));
    EXPECT_FALSE(keyExists(HKEY_CLASSES_ROOT, ".HOD"));
    EXPECT_FALSE(keyExists(HKEY_CLASSES_ROOT, "HOVISTREL"));
    // Other programs' uninstall entries and the library type stay.
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, kUninstallKey));
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kNeighbourEntry, "Value", "another program");
    EXPECT_TRUE(keyExists(HKEY_CLASSES_ROOT, ".HOL"));
    EXPECT_TRUE(keyExists(HKEY_CLASSES_ROOT, "HOVISTRELLIB"));
    EXPECT_EQ(g_setup.progressValue, 80);
}

TEST_F(RegistryCleanup, AnotherProductOfTheMakerKeepsTheMakerKey)
{
    writeInstalledKeys();
    makeKey(HKEY_CURRENT_USER, "Software\\Harwick-Orbel\\Tarrow", "other product");
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Harwick-Orbel\\Tarrow", "other product");
    ASSERT_TRUE(ShowProgressStage(true, 6, 0, 0));
    EXPECT_TRUE(RemoveRegistryEntries());

    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        EXPECT_REG_SZ(root, "Software\\Harwick-Orbel\\Tarrow", "Value", "other product");
        EXPECT_FALSE(keyExists(root, kProductKey));
        EXPECT_FALSE(keyExists(root, "Software\\Harwick-Orbel\\Products"));
        EXPECT_FALSE(keyExists(root, "Software\\Harwick-Orbel\\Vistrel Plug-Ins"));
    }
}

TEST_F(RegistryCleanup, WithoutAProgressWindowOnlyTheFirstPortionIsDone)
{
    // SetProgress answers false when no window is open, exactly as after a confirmed cancel.
    writeInstalledKeys();
    EXPECT_FALSE(RemoveRegistryEntries());
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, kProductKey));
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Harwick-Orbel\\Products"));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Harwick-Orbel\\Vistrel Plug-Ins"));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, kAppPath));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, kEntryKey));
    EXPECT_TRUE(keyExists(HKEY_CLASSES_ROOT, ".HOD"));
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, kMakerKey));
}

} // namespace
