// Folder and earlier-installation detection against the real registry of the test's prefix and
// its real shell folders. The product keys are removed before and after every test.
#include "setupdata_fixture.h"

#include "holang.h"

#include <shlobj.h>

namespace setupdata_test {
namespace {

constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";
constexpr char kWord[] = "Harwick-Orbel\\Vistrel (64-bit)\\";

void removeProductKeys()
{
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, kProductKey);
    RegDeleteTreeA(HKEY_CURRENT_USER, kProductKey);
}

void putString(HKEY root, const std::string& suffix, const char* name, const char* text)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(root, (kProductKey + suffix).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                              nullptr), ERROR_SUCCESS);
    if (name)
        RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), lstrlenA(text) + 1);
    RegCloseKey(key);
}

void putNumber(HKEY root, const std::string& suffix, const char* name, DWORD value)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(root, (kProductKey + suffix).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                              nullptr), ERROR_SUCCESS);
    RegSetValueExA(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    RegCloseKey(key);
}

std::string shellFolder(int csidl)
{
    char folder[MAX_PATH] = {};
    EXPECT_EQ(SHGetFolderPathA(nullptr, csidl | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT, folder), S_OK)
        << "CSIDL " << csidl;
    std::string text = folder;
    if (!text.empty() && text.back() != '\\')
        text += '\\';
    return text + kWord;
}

class DetectionTest : public SetupStateTest {
protected:
    void SetUp() override
    {
        SetupStateTest::SetUp();
        removeProductKeys();
    }

    void TearDown() override
    {
        removeProductKeys();
        SetupStateTest::TearDown();
    }

    void expectDefaultFlags(int install, int common, int user, int documents, int library, int drawing, int setting)
    {
        EXPECT_EQ(g_setup.installFolderDefault, install);
        EXPECT_EQ(g_setup.commonDataFolderDefault, common);
        EXPECT_EQ(g_setup.userDataFolderDefault, user);
        EXPECT_EQ(g_setup.documentsFolderDefault, documents);
        EXPECT_EQ(g_setup.libraryFolderDefault, library);
        EXPECT_EQ(g_setup.drawingFolderDefault, drawing);
        EXPECT_EQ(g_setup.settingFolderDefault, setting);
    }
};

TEST_F(DetectionTest, WithoutRegistryDataAllFoldersTakeTheirDefaults)
{
    HOI_CopyA(g_setup.packageCompileDate, kTextCapacity, "2024-05-17");
    DetectFolders();
    EXPECT_EQ(g_setup.installFolder, shellFolder(CSIDL_PROGRAM_FILES));
    EXPECT_EQ(g_setup.commonDataFolder, shellFolder(CSIDL_COMMON_APPDATA));
    EXPECT_EQ(g_setup.userDataFolder, shellFolder(CSIDL_COMMON_APPDATA));
    const std::string documents = shellFolder(CSIDL_COMMON_DOCUMENTS);
    EXPECT_EQ(g_setup.documentsFolder, documents);
    EXPECT_EQ(g_setup.libraryFolder, documents + "Libraries\\");
    EXPECT_EQ(g_setup.drawingFolder, documents + "Drawings\\");
    EXPECT_EQ(g_setup.settingFolder, documents + "Settings\\");
    expectDefaultFlags(1, 1, 1, 1, 1, 1, 1);
    EXPECT_EQ(g_setup.perUser, 0);

    g_setup.updateInstall = 1;
    g_setup.logCarriedOver = 1;
    g_setup.laterVersionInstalled = 1;
    EXPECT_FALSE(DetectEarlierInstallation());
    EXPECT_EQ(g_setup.updateInstall, 0);
    EXPECT_EQ(g_setup.logCarriedOver, 0);
    EXPECT_EQ(g_setup.laterVersionInstalled, 0);
    EXPECT_STREQ(g_setup.previousCompileDate, "2003-04-01");
}

TEST_F(DetectionTest, ProductKeyItselfSuppliesUserModeAndDocumentFolders)
{
    putString(HKEY_LOCAL_MACHINE, "", "PathLocal", "E:\\Programs\\Vistrel");
    putNumber(HKEY_LOCAL_MACHINE, "", "UserMode", 1);
    putString(HKEY_LOCAL_MACHINE, "", "PathLibrary", "E:\\Lib");
    putString(HKEY_LOCAL_MACHINE, "", "PathDrawing", "*");
    putString(HKEY_LOCAL_MACHINE, "", "CompileDate", "2024-05-17");
    // Per-user folders are looked at only when the product key recorded nothing.
    putString(HKEY_CURRENT_USER, "\\Deutsch\\General", "PathINF 1", "F:\\NotThis");

    DetectFolders();
    EXPECT_STREQ(g_setup.installFolder, "E:\\Programs\\Vistrel\\");
    EXPECT_STREQ(g_setup.libraryFolder, "E:\\Lib\\");
    EXPECT_EQ(g_setup.perUser, 1);
    const std::string documents = shellFolder(CSIDL_PERSONAL);
    EXPECT_EQ(g_setup.userDataFolder, shellFolder(CSIDL_APPDATA));
    EXPECT_EQ(g_setup.documentsFolder, documents);
    EXPECT_EQ(g_setup.drawingFolder, documents + "Drawings\\") << "\"*\" means the default";
    EXPECT_EQ(g_setup.settingFolder, documents + "Settings\\");
    EXPECT_EQ(g_setup.commonDataFolder, shellFolder(CSIDL_COMMON_APPDATA));
    expectDefaultFlags(0, 1, 1, 1, 0, 1, 1);

    // The same package date is no later version; a later recorded one is.
    HOI_CopyA(g_setup.packageCompileDate, kTextCapacity, "2024-05-17");
    EXPECT_TRUE(DetectEarlierInstallation());
    EXPECT_EQ(g_setup.updateInstall, 1);
    EXPECT_EQ(g_setup.logCarriedOver, 1);
    EXPECT_EQ(g_setup.laterVersionInstalled, 0);
    EXPECT_STREQ(g_setup.previousCompileDate, "2024-05-17");

    putString(HKEY_LOCAL_MACHINE, "", "CompileDate", "2025-01-09");
    EXPECT_TRUE(DetectEarlierInstallation());
    EXPECT_EQ(g_setup.laterVersionInstalled, 1);
    EXPECT_STREQ(g_setup.previousCompileDate, "2025-01-09");

    HOI_CopyA(g_setup.packageCompileDate, kTextCapacity, "2025-02-01");
    EXPECT_TRUE(DetectEarlierInstallation());
    EXPECT_EQ(g_setup.laterVersionInstalled, 0);
}

TEST_F(DetectionTest, LanguageKeySuppliesOnlyTheInstallationFolder)
{
    // The product key exists but records no installation folder; its other values are not read.
    putNumber(HKEY_LOCAL_MACHINE, "", "UserMode", 1);
    putString(HKEY_LOCAL_MACHINE, "", "PathLibrary", "E:\\Lib");
    putString(HKEY_LOCAL_MACHINE, "\\English", "PathLocal", "G:\\Old Vistrel\\");
    putString(HKEY_LOCAL_MACHINE, "\\English", "PathDrawing", "G:\\Drawings");
    putNumber(HKEY_LOCAL_MACHINE, "\\English", "UserMode", 1);
    putString(HKEY_LOCAL_MACHINE, "\\English", "CompileDate", "2019-03-01");

    DetectFolders();
    EXPECT_STREQ(g_setup.installFolder, "G:\\Old Vistrel\\");
    EXPECT_EQ(g_setup.perUser, 0);
    const std::string documents = shellFolder(CSIDL_COMMON_DOCUMENTS);
    EXPECT_EQ(g_setup.libraryFolder, documents + "Libraries\\");
    EXPECT_EQ(g_setup.drawingFolder, documents + "Drawings\\");
    expectDefaultFlags(0, 1, 1, 1, 1, 1, 1);

    HOI_CopyA(g_setup.packageCompileDate, kTextCapacity, "2024-05-17");
    EXPECT_TRUE(DetectEarlierInstallation());
    EXPECT_EQ(g_setup.updateInstall, 1);
    EXPECT_EQ(g_setup.logCarriedOver, 0) << "only the product key itself carries the log over";
    EXPECT_EQ(g_setup.laterVersionInstalled, 0);
    EXPECT_STREQ(g_setup.previousCompileDate, "2019-03-01");
}

TEST_F(DetectionTest, GermanKeyIsSearchedBeforeEnglish)
{
    putString(HKEY_LOCAL_MACHINE, "\\Deutsch", "PathLocal", "H:\\Deutsch");
    putString(HKEY_LOCAL_MACHINE, "\\English", "PathLocal", "H:\\English");
    DetectFolders();
    EXPECT_STREQ(g_setup.installFolder, "H:\\Deutsch\\");
}

TEST_F(DetectionTest, PerUserFoldersComeFromTheFirstLanguageKeyThatExists)
{
    putString(HKEY_CURRENT_USER, "\\Deutsch\\General", "PathHOL 1", "J:\\Libraries");
    putString(HKEY_CURRENT_USER, "\\Deutsch\\General", "PathHOD 1", "*");
    putString(HKEY_CURRENT_USER, "\\Deutsch\\General", "PathINF 1", "J:\\Settings\\");
    putString(HKEY_CURRENT_USER, "\\English\\General", "PathHOD 1", "K:\\NotThis");

    DetectFolders();
    const std::string documents = shellFolder(CSIDL_COMMON_DOCUMENTS);
    EXPECT_STREQ(g_setup.libraryFolder, "J:\\Libraries\\");
    EXPECT_EQ(g_setup.drawingFolder, documents + "Drawings\\");
    EXPECT_STREQ(g_setup.settingFolder, "J:\\Settings\\");
    EXPECT_EQ(g_setup.installFolder, shellFolder(CSIDL_PROGRAM_FILES));
    expectDefaultFlags(1, 1, 1, 1, 0, 1, 0);

    // A German key without "General" still ends the search: English is not looked at.
    removeProductKeys();
    putString(HKEY_CURRENT_USER, "\\Deutsch", nullptr, nullptr);
    putString(HKEY_CURRENT_USER, "\\English\\General", "PathHOL 1", "K:\\NotThis");
    DetectFolders();
    EXPECT_EQ(g_setup.libraryFolder, documents + "Libraries\\");

    removeProductKeys();
    putString(HKEY_CURRENT_USER, "\\English\\General", "PathHOL 1", "K:\\English");
    DetectFolders();
    EXPECT_STREQ(g_setup.libraryFolder, "K:\\English\\");
}

TEST_F(DetectionTest, BackupFolderIsStampedBelowCommonData)
{
    SYSTEMTIME time = {};
    time.wYear = 2024;
    time.wMonth = 3;
    time.wDay = 5;
    time.wHour = 7;
    time.wMinute = 8;
    time.wSecond = 9;
    time.wMilliseconds = 12;
    char folder[kPathCapacity];
    composeBackupFolder("C:\\Data\\", "Backups\\", time, folder, sizeof folder);
    EXPECT_STREQ(folder, "C:\\Data\\Backups\\2024-03-05 070809012\\");

    DetectFolders();
    const std::string prefix = std::string(g_setup.commonDataFolder) + eRelativePaths[9];
    const std::string backup = g_setup.backupFolder;
    ASSERT_EQ(backup.compare(0, prefix.size(), prefix), 0) << backup;
    const std::string stamp = backup.substr(prefix.size());
    int year, month, day, clock, millis;
    char end;
    ASSERT_EQ(std::sscanf(stamp.c_str(), "%4d-%2d-%2d %6d%3d%c", &year, &month, &day, &clock, &millis, &end), 6)
        << stamp;
    EXPECT_EQ(stamp.size(), 21u) << stamp;
    EXPECT_EQ(end, '\\');
    SYSTEMTIME now;
    GetLocalTime(&now);
    EXPECT_EQ(year, now.wYear);
}

} // namespace
} // namespace setupdata_test
