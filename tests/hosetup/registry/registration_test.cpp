// What an installation registers, value by value, on the real registry of the test's prefix.
#include <gtest/gtest.h>

#include <cstdlib>

#include "registry_checks.h"
#include "registry/registry.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"

namespace {

constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";
constexpr char kAppPath[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\hovistrel.exe";
constexpr char kUninstall[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Vistrel Professional 2022";

class Registration : public ::testing::Test {
protected:
    void SetUp() override
    {
        clean();
        clearSetupState();
        HOI_CopyA(g_setup.registryKey, kRegistryKeyCapacity, kProductKey);
        HOI_CopyA(g_setup.installFolder, kPathCapacity, "C:\\Apps\\Prog\\");
        HOI_CopyA(g_setup.libraryFolder, kPathCapacity, "D:\\Lib\\");
        HOI_CopyA(g_setup.packageCompileDate, kTextCapacity, "2022-11-29");
        g_setup.drawingFolderDefault = 1;
        g_setup.settingFolderDefault = 1;
        header_ = static_cast<SetupDataHeader*>(std::calloc(1, kSetupHeaderBlockSize));
        HOI_CopyA(header_->productName, sizeof header_->productName, "Vistrel");
        g_setup.headerBuffer = header_;
    }

    void TearDown() override
    {
        g_setup.headerBuffer = nullptr;
        std::free(header_);
        clean();
    }

    static void clean()
    {
        deleteRegTree(HKEY_LOCAL_MACHINE, kProductKey);
        deleteRegTree(HKEY_LOCAL_MACHINE, kAppPath);
        deleteRegTree(HKEY_LOCAL_MACHINE, kUninstall);
        for (const char* key : {".HOD", "HOVISTREL", ".HOL", "HOVISTRELLIB"})
            deleteRegTree(HKEY_CLASSES_ROOT, key);
    }

    SetupDataHeader* header_ = nullptr;
};

TEST_F(Registration, StandardInstallationWritesEveryEntry)
{
    g_setup.perUser = 1;
    ASSERT_TRUE(RegisterStandardInstallation());
    ASSERT_TRUE(RecordCompileDate());

    EXPECT_REG_DWORD(HKEY_LOCAL_MACHINE, kProductKey, "UserMode", 1);
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "PathLocal", "C:\\Apps\\Prog\\");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "PathLibrary", "D:\\Lib\\");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "PathDrawing", "*");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "PathSetting", "*");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", "2022-11-29");

    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kAppPath, "", "C:\\Apps\\Prog\\hovistrel.exe");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kAppPath, "Path", "C:\\Apps\\Prog");

    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "DisplayIcon", "\"C:\\Apps\\Prog\\hovistrel.exe\"");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "DisplayName", "Vistrel Release 2022");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "UninstallString", "\"C:\\Apps\\Prog\\hosetup.exe\" -x");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "InstallLocation", "C:\\Apps\\Prog\\");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "Publisher", "Harwick-Orbel GmbH");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "DisplayVersion", "2022.2.11.29, 2022.2.11.29, 2022-11-29");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "Version", "22.142.1129");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "VersionMajor", "22");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "VersionMinor", "142");

    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, ".HOD", "", "HOVISTREL");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTREL", "", "Harwick-Orbel Vistrel Drawing");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTREL\\DefaultIcon", "", "C:\\Apps\\Prog\\hovistrellib.dll,1");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTREL\\shell\\open\\command", "", "\"C:\\Apps\\Prog\\hovistrel.exe\" \"%1\"");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTREL\\shell\\print\\command", "", "\"C:\\Apps\\Prog\\hovistrel.exe\" /p \"%1\"");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTREL\\shell\\printto\\command", "", "\"C:\\Apps\\Prog\\hovistrel.exe\" /p \"%1\"");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, ".HOL", "", "HOVISTRELLIB");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTRELLIB", "", "Harwick-Orbel Vistrel Library");
    EXPECT_REG_SZ(HKEY_CLASSES_ROOT, "HOVISTRELLIB\\DefaultIcon", "", "C:\\Apps\\Prog\\hovistrellib.dll,2");
    EXPECT_NO_REG_KEY(HKEY_CLASSES_ROOT, "HOVISTRELLIB\\shell");
}

TEST_F(Registration, UpdateLeavesApplicationPathAndFileTypesAlone)
{
    ASSERT_TRUE(RegisterUpdateInstallation());
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "PathLocal", "C:\\Apps\\Prog\\");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "Version", "22.142.1129");
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kAppPath);
    EXPECT_NO_REG_KEY(HKEY_CLASSES_ROOT, ".HOD");
}

TEST_F(Registration, EmptyTextsRemoveValuesAndDefaultsAreStars)
{
    header_->productName[0] = '\0';
    g_setup.packageCompileDate[0] = '\0';
    g_setup.libraryFolder[0] = '\0';
    g_setup.installFolderDefault = 1;
    ASSERT_TRUE(RegisterStandardInstallation());
    ASSERT_TRUE(RecordCompileDate());
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kUninstall, "DisplayName", " Release 2022");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "PathLocal", "*");
    EXPECT_NO_REG_VALUE(HKEY_LOCAL_MACHINE, kProductKey, "PathLibrary");
    EXPECT_NO_REG_VALUE(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate");
}

} // namespace
