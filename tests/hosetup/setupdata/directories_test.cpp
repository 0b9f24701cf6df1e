// Directory identifiers: every identifier of the three tables resolves to its folder, unknown
// ones are skipped or reported as the rules say, and the 260-character limit holds.
#include "setupdata_fixture.h"
#include "dialog_watcher.h"

#include "holang.h"
#include "shell/shell.h"

namespace setupdata_test {
namespace {

struct Expected {
    std::uint32_t id;
    const char* base;   // folder text as set by the fixture
    int relative;
    unsigned category;
    bool core;
    bool special;
};

// Distinct folders, so that a wrong base shows in the path.
constexpr char kInstall[] = "C:\\Inst\\";
constexpr char kCommon[] = "C:\\Common\\";
constexpr char kUser[] = "C:\\UserData\\";
constexpr char kLibrary[] = "D:\\Lib\\";
constexpr char kDrawing[] = "D:\\Draw\\";
constexpr char kSetting[] = "D:\\Set\\";
constexpr char kBackup[] = "C:\\Common\\Backups\\2024-01-02 030405006\\";

const Expected kFiles[] = {
    {0, kInstall, 0, 1, true, false},    {1, kInstall, 0, 1, true, false},    {2, kInstall, 0, 1, true, false},
    {10, kInstall, 0, 1, false, false},  {11, kInstall, 0, 1, false, false},  {12, kInstall, 0, 1, false, false},
    {20, kInstall, 0, 1, false, false},  {21, kInstall, 0, 1, false, false},  {22, kInstall, 0, 1, false, false},
    {24, kInstall, 0, 1, false, true},   {25, kInstall, 0, 1, false, false},  {26, kInstall, 0, 1, false, false},
    {27, kInstall, 0, 1, false, false},  {30, kCommon, 0, 1, false, false},   {31, kCommon, 0, 1, false, false},
    {32, kCommon, 0, 1, false, false},   {34, kCommon, 0, 1, false, true},    {40, kLibrary, 0, 4, false, false},
    {41, kLibrary, 0, 4, false, false},  {42, kLibrary, 0, 4, false, false},  {44, kLibrary, 0, 4, false, true},
    {50, kInstall, 4, 1, false, false},  {51, kInstall, 4, 1, false, false},  {52, kInstall, 4, 1, false, false},
    {60, kSetting, 0, 8, false, false},  {61, kSetting, 0, 8, false, false},  {62, kSetting, 0, 8, false, false},
    {64, kSetting, 0, 8, false, true},   {70, kUser, 0, 1, false, false},     {71, kUser, 0, 1, false, false},
    {72, kUser, 0, 1, false, false},     {74, kUser, 0, 1, false, true},      {100, kInstall, 0, 1, false, false},
    {101, kInstall, 0, 1, false, false}, {102, kInstall, 0, 1, false, false}, {200, kDrawing, 0, 2, false, false},
    {201, kDrawing, 0, 2, false, false}, {202, kDrawing, 0, 2, false, false}, {204, kDrawing, 0, 2, false, true},
    {210, kInstall, 8, 1, false, false}, {211, kInstall, 8, 1, false, false}, {212, kInstall, 8, 1, false, false},
    {300, kLibrary, 0, 4, false, false}, {301, kLibrary, 0, 4, false, false}, {302, kLibrary, 0, 4, false, false},
    {304, kLibrary, 0, 4, false, true},  {400, kInstall, 5, 1, false, false}, {401, kInstall, 5, 1, false, false},
    {402, kInstall, 5, 1, false, false}, {500, kInstall, 6, 1, false, false}, {501, kInstall, 6, 1, false, false},
    {502, kInstall, 6, 1, false, false},
};

struct ExpectedBackup {
    std::uint32_t id;
    const char* target;
    int backupRelative;
};

const ExpectedBackup kBackups[] = {
    {23, kInstall, 0}, {33, kCommon, 7},   {43, kLibrary, 2}, {63, kSetting, 1},
    {73, kUser, 10},   {203, kDrawing, 3}, {303, kLibrary, 2},
};

struct ExpectedIcon {
    std::uint32_t id;
    const char* base;
    int relative;
};

const ExpectedIcon kIcons[] = {
    {0, kInstall, 0},   {1, kInstall, 0},   {10, kInstall, 0},  {11, kInstall, 0},  {20, kInstall, 0},
    {21, kInstall, 0},  {24, kInstall, 0},  {25, kInstall, 0},  {26, kInstall, 0},  {27, kInstall, 0},
    {100, kInstall, 0}, {101, kInstall, 0}, {30, kCommon, 0},   {31, kCommon, 0},   {34, kCommon, 0},
    {40, kLibrary, 0},  {41, kLibrary, 0},  {44, kLibrary, 0},  {300, kLibrary, 0}, {301, kLibrary, 0},
    {304, kLibrary, 0}, {50, kInstall, 4},  {51, kInstall, 4},  {60, kSetting, 0},  {61, kSetting, 0},
    {64, kSetting, 0},  {70, kUser, 0},     {71, kUser, 0},     {74, kUser, 0},     {200, kDrawing, 0},
    {201, kDrawing, 0}, {204, kDrawing, 0}, {210, kInstall, 8}, {211, kInstall, 8}, {400, kInstall, 5},
    {401, kInstall, 5}, {500, kInstall, 6}, {501, kInstall, 6},
};

std::string joined(const char* base, int relative, const std::string& rest)
{
    return std::string(base) + (relative ? eRelativePaths[relative] : "") + rest;
}

class DirectoriesTest : public SetupStateTest {
protected:
    void SetUp() override
    {
        SetupStateTest::SetUp();
        HOI_CopyA(g_setup.installFolder, kPathCapacity, kInstall);
        HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, kCommon);
        HOI_CopyA(g_setup.userDataFolder, kPathCapacity, kUser);
        HOI_CopyA(g_setup.libraryFolder, kPathCapacity, kLibrary);
        HOI_CopyA(g_setup.drawingFolder, kPathCapacity, kDrawing);
        HOI_CopyA(g_setup.settingFolder, kPathCapacity, kSetting);
        HOI_CopyA(g_setup.backupFolder, kPathCapacity, kBackup);
    }

    // Resolves one record with the given identifier; every output starts dirty so that the
    // clearing is seen.
    int resolveOne(std::uint32_t id, const char* subFolder, const char* name, char* path, unsigned* category,
                   bool* core, bool* special)
    {
        installRecords({fileRecord(id, subFolder, name)});
        HOI_CopyA(path, kPathCapacity, "dirty");
        *category = 99;
        *core = true;
        *special = true;
        return resolveFilePath(0, path, category, core, special);
    }
};

TEST_F(DirectoriesTest, EveryFileIdentifierResolvesToItsFolderCategoryAndMarks)
{
    DialogWatcher watcher;
    char path[kPathCapacity];
    for (const Expected& e : kFiles) {
        unsigned category;
        bool core;
        bool special;
        ASSERT_EQ(resolveOne(e.id, "Sub\\Deeper", "file.txt", path, &category, &core, &special), kPathComposed)
            << "id " << e.id;
        EXPECT_EQ(path, joined(e.base, e.relative, "Sub\\Deeper\\file.txt")) << "id " << e.id;
        EXPECT_EQ(category, e.category) << "id " << e.id;
        EXPECT_EQ(core, e.core) << "id " << e.id;
        EXPECT_EQ(special, e.special) << "id " << e.id;
    }
    // The optional outputs may be left out.
    installRecords({fileRecord(24, "", "a.txt")});
    EXPECT_EQ(resolveFilePath(0, path, nullptr, nullptr, nullptr), kPathComposed);
    EXPECT_EQ(watcher.count(), 0u);
}

TEST_F(DirectoriesTest, BackupEntriesAndForeignIdentifiersGiveNoPathWithoutReport)
{
    DialogWatcher watcher;
    char path[kPathCapacity];
    char target[kPathCapacity];
    char backup[kPathCapacity];
    const std::uint32_t ids[] = {13, 23, 33, 203, 993, 900, 909, 5000};
    for (std::uint32_t id : ids) {
        unsigned category;
        bool core;
        bool special;
        EXPECT_EQ(resolveOne(id, "", "f", path, &category, &core, &special), kNoPathHere) << "id " << id;
        EXPECT_STREQ(path, "") << "id " << id;
        EXPECT_EQ(category, 0u);
        EXPECT_FALSE(core);
        EXPECT_FALSE(special);
    }
    // Identifier 13 is a backup entry without a directory row; the other non-backup ones have none.
    for (std::uint32_t id : {13u, 20u, 909u, 899u}) {
        installRecords({fileRecord(id, "", "f")});
        EXPECT_EQ(resolveDirectoryPath(0, target, backup), kNoPathHere) << "id " << id;
    }
    Sleep(50);
    EXPECT_EQ(watcher.count(), 0u);
}

TEST_F(DirectoriesTest, UnknownIdentifierBelow900IsReported)
{
    DialogWatcher watcher;
    char path[kPathCapacity];
    unsigned category;
    bool core;
    bool special;
    // 0xFFFFFFFF read as a signed number is -1, below 900.
    for (std::uint32_t id : {899u, 28u, 0xFFFFFFFFu}) {
        watcher.clear();
        EXPECT_EQ(resolveOne(id, "", "f", path, &category, &core, &special), kNoPathHere) << "id " << id;
        const std::vector<SeenDialog> seen = watcher.seen();
        ASSERT_EQ(seen.size(), 1u) << "id " << id;
        EXPECT_TRUE(seen[0].hasText("Command\\1112\n\nInvalid file directory ID.")) << "id " << id;
        EXPECT_EQ(seen[0].caption, eCaptionTexts[0]);
    }
}

TEST_F(DirectoriesTest, BackupIdentifiersGiveTargetAndBackupPaths)
{
    char target[kPathCapacity];
    char backup[kPathCapacity];
    for (const ExpectedBackup& e : kBackups) {
        installRecords({fileRecord(e.id, "Profiles", "user.ini")});
        ASSERT_EQ(resolveDirectoryPath(0, target, backup), kPathComposed) << "id " << e.id;
        EXPECT_EQ(target, std::string(e.target) + "Profiles\\user.ini") << "id " << e.id;
        EXPECT_EQ(backup, joined(kBackup, e.backupRelative, "Profiles\\user.ini")) << "id " << e.id;
    }
}

TEST_F(DirectoriesTest, IconTableIsNarrowerThanTheFileTable)
{
    DialogWatcher watcher;
    char path[kPathCapacity];
    for (const ExpectedIcon& e : kIcons) {
        installRecords({}, {shortcutRecord(0, e.id, "Icons\\app.ico", "App")});
        ASSERT_EQ(resolveShortcutIconPath(0, path), kIconPathFound) << "id " << e.id;
        EXPECT_EQ(path, joined(e.base, e.relative, "Icons\\app.ico")) << "id " << e.id;
    }
    for (std::uint32_t id : {2u, 12u, 22u, 32u, 42u, 52u, 62u, 72u, 102u, 202u, 212u, 302u, 402u, 502u, 23u, 899u}) {
        installRecords({}, {shortcutRecord(0, id, "app.ico", "App")});
        EXPECT_EQ(resolveShortcutIconPath(0, path), kIconPlaceUnknown) << "id " << id;
    }
    Sleep(50);
    EXPECT_EQ(watcher.count(), 0u);
}

TEST_F(DirectoriesTest, PathLimitIs259AndEmptySubFolderGivesOneBackslash)
{
    DialogWatcher watcher;
    char path[kPathCapacity];
    unsigned category;
    bool core;
    bool special;

    EXPECT_EQ(resolveOne(20, "", "plain.txt", path, &category, &core, &special), kPathComposed);
    EXPECT_EQ(std::string(path), std::string(kInstall) + "plain.txt");

    // base + subFolder + fileName + 2 = 259 fits, 260 does not.
    std::string base = "C:\\" + std::string(200 - 4, 'b') + "\\";  // 200 characters
    ASSERT_EQ(base.size(), 200u);
    HOI_CopyA(g_setup.installFolder, kPathCapacity, base.c_str());
    const std::string sub(30, 's');
    const std::string fits(27, 'n');
    const std::string tooLong(28, 'n');
    ASSERT_EQ(resolveOne(20, sub.c_str(), fits.c_str(), path, &category, &core, &special), kPathComposed);
    EXPECT_EQ(std::string(path), base + sub + "\\" + fits);
    EXPECT_EQ(watcher.count(), 0u);

    EXPECT_EQ(resolveOne(20, sub.c_str(), tooLong.c_str(), path, &category, &core, &special), kPathTooLong);
    EXPECT_EQ(std::string(path), base) << "the path as far as it was composed";
    const std::vector<SeenDialog> seen = watcher.seen();
    ASSERT_EQ(seen.size(), 1u);
    char expected[kMessageCapacity];
    HOI_PrintA(expected, sizeof expected, eMessageText[13], base.c_str());
    EXPECT_TRUE(seen[0].hasText(expected));
}

TEST_F(DirectoriesTest, TooLongBackupPathIsReportedWithTheBackupPath)
{
    DialogWatcher watcher;
    // The backup base is longer than the target base, so only the backup path overflows.
    const std::string backupBase = "C:\\" + std::string(226, 'k') + "\\";
    HOI_CopyA(g_setup.backupFolder, kPathCapacity, backupBase.c_str());
    installRecords({fileRecord(23, "Sub", std::string(28, 'f').c_str())});
    char target[kPathCapacity];
    char backup[kPathCapacity];
    EXPECT_EQ(resolveDirectoryPath(0, target, backup), kPathTooLong);
    EXPECT_EQ(std::string(target), std::string(kInstall) + "Sub\\" + std::string(28, 'f'));
    EXPECT_EQ(std::string(backup), backupBase);
    const std::vector<SeenDialog> seen = watcher.seen();
    ASSERT_EQ(seen.size(), 1u);
    char expected[kMessageCapacity];
    HOI_PrintA(expected, sizeof expected, eMessageText[13], backupBase.c_str());
    EXPECT_TRUE(seen[0].hasText(expected));
}

TEST_F(DirectoriesTest, RecordTextsWithoutTerminatorStayWithinTheirFields)
{
    FileRecord record = fileRecord(20, "", "");
    std::memset(record.subFolder, 's', sizeof record.subFolder);
    std::memset(record.fileName, 'n', sizeof record.fileName);
    installRecords({record, fileRecord(20, "", "next")});
    char path[kPathCapacity];
    ASSERT_EQ(resolveFilePath(0, path, nullptr, nullptr, nullptr), kPathComposed);
    EXPECT_EQ(std::string(path), std::string(kInstall) + std::string(64, 's') + "\\" + std::string(64, 'n'));
}

TEST_F(DirectoriesTest, DirectoryIdUsedOnlyForExactIdentifiers)
{
    EXPECT_FALSE(isDirectoryIdUsed(20)) << "no records";
    installRecords({fileRecord(20, "", "a"), fileRecord(203, "", "b"), fileRecord(909, "", "c")});
    EXPECT_TRUE(isDirectoryIdUsed(20));
    EXPECT_TRUE(isDirectoryIdUsed(203));
    EXPECT_TRUE(isDirectoryIdUsed(909));
    EXPECT_FALSE(isDirectoryIdUsed(21));
    EXPECT_FALSE(isDirectoryIdUsed(3));
    // The spare record is not part of the scan.
    g_setup.fileCount = 2;
    EXPECT_FALSE(isDirectoryIdUsed(909));
}

} // namespace
} // namespace setupdata_test
