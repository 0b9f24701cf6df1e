// Directory identifiers: the numeric place of a file or shortcut record turned into a folder of
// the setup state (optionally followed by a relative folder of the language module), and the
// composition of full target and backup paths below the 260-character limit.
#include "setupdata/setupdata.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"
#include "holang.h"

#include <cstring>

namespace {

enum class Base { Install, CommonData, UserData, Library, Drawing, Setting, Backup };

// One place: a base folder, an eRelativePaths entry below it (0 for none), the free-space
// category and the two marks of a file identifier.
struct Place {
    std::uint32_t id;
    Base base;
    int relative;
    unsigned category;
    bool core;
    bool special;
};

constexpr Place kFilePlaces[] = {
    {0, Base::Install, 0, kCategoryInstall, true, false},
    {1, Base::Install, 0, kCategoryInstall, true, false},
    {2, Base::Install, 0, kCategoryInstall, true, false},
    {10, Base::Install, 0, kCategoryInstall, false, false},
    {11, Base::Install, 0, kCategoryInstall, false, false},
    {12, Base::Install, 0, kCategoryInstall, false, false},
    {20, Base::Install, 0, kCategoryInstall, false, false},
    {21, Base::Install, 0, kCategoryInstall, false, false},
    {22, Base::Install, 0, kCategoryInstall, false, false},
    {24, Base::Install, 0, kCategoryInstall, false, true},
    {25, Base::Install, 0, kCategoryInstall, false, false},
    {26, Base::Install, 0, kCategoryInstall, false, false},
    {27, Base::Install, 0, kCategoryInstall, false, false},
    {30, Base::CommonData, 0, kCategoryInstall, false, false},
    {31, Base::CommonData, 0, kCategoryInstall, false, false},
    {32, Base::CommonData, 0, kCategoryInstall, false, false},
    {34, Base::CommonData, 0, kCategoryInstall, false, true},
    {40, Base::Library, 0, kCategoryLibrary, false, false},
    {41, Base::Library, 0, kCategoryLibrary, false, false},
    {42, Base::Library, 0, kCategoryLibrary, false, false},
    {44, Base::Library, 0, kCategoryLibrary, false, true},
    {50, Base::Install, 4, kCategoryInstall, false, false},
    {51, Base::Install, 4, kCategoryInstall, false, false},
    {52, Base::Install, 4, kCategoryInstall, false, false},
    {60, Base::Setting, 0, kCategorySetting, false, false},
    {61, Base::Setting, 0, kCategorySetting, false, false},
    {62, Base::Setting, 0, kCategorySetting, false, false},
    {64, Base::Setting, 0, kCategorySetting, false, true},
    {70, Base::UserData, 0, kCategoryInstall, false, false},
    {71, Base::UserData, 0, kCategoryInstall, false, false},
    {72, Base::UserData, 0, kCategoryInstall, false, false},
    {74, Base::UserData, 0, kCategoryInstall, false, true},
    {100, Base::Install, 0, kCategoryInstall, false, false},
    {101, Base::Install, 0, kCategoryInstall, false, false},
    {102, Base::Install, 0, kCategoryInstall, false, false},
    {200, Base::Drawing, 0, kCategoryDrawing, false, false},
    {201, Base::Drawing, 0, kCategoryDrawing, false, false},
    {202, Base::Drawing, 0, kCategoryDrawing, false, false},
    {204, Base::Drawing, 0, kCategoryDrawing, false, true},
    {210, Base::Install, 8, kCategoryInstall, false, false},
    {211, Base::Install, 8, kCategoryInstall, false, false},
    {212, Base::Install, 8, kCategoryInstall, false, false},
    {300, Base::Library, 0, kCategoryLibrary, false, false},
    {301, Base::Library, 0, kCategoryLibrary, false, false},
    {302, Base::Library, 0, kCategoryLibrary, false, false},
    {304, Base::Library, 0, kCategoryLibrary, false, true},
    {400, Base::Install, 5, kCategoryInstall, false, false},
    {401, Base::Install, 5, kCategoryInstall, false, false},
    {402, Base::Install, 5, kCategoryInstall, false, false},
    {500, Base::Install, 6, kCategoryInstall, false, false},
    {501, Base::Install, 6, kCategoryInstall, false, false},
    {502, Base::Install, 6, kCategoryInstall, false, false},
};

// Backup entries: the live place and, as a second row with the same identifier, the place of
// the copy in the backup tree.
struct BackupPlace {
    std::uint32_t id;
    Base target;
    Base backup;
    int backupRelative;
};

constexpr BackupPlace kBackupPlaces[] = {
    {23, Base::Install, Base::Backup, 0},
    {33, Base::CommonData, Base::Backup, 7},
    {43, Base::Library, Base::Backup, 2},
    {63, Base::Setting, Base::Backup, 1},
    {73, Base::UserData, Base::Backup, 10},
    {203, Base::Drawing, Base::Backup, 3},
    {303, Base::Library, Base::Backup, 2},
};

// Icon places of shortcuts: deliberately narrower than the file table (no x2 variants).
constexpr Place kIconPlaces[] = {
    {0, Base::Install, 0, 0, false, false},     {1, Base::Install, 0, 0, false, false},
    {10, Base::Install, 0, 0, false, false},    {11, Base::Install, 0, 0, false, false},
    {20, Base::Install, 0, 0, false, false},    {21, Base::Install, 0, 0, false, false},
    {24, Base::Install, 0, 0, false, false},    {25, Base::Install, 0, 0, false, false},
    {26, Base::Install, 0, 0, false, false},    {27, Base::Install, 0, 0, false, false},
    {100, Base::Install, 0, 0, false, false},   {101, Base::Install, 0, 0, false, false},
    {30, Base::CommonData, 0, 0, false, false}, {31, Base::CommonData, 0, 0, false, false},
    {34, Base::CommonData, 0, 0, false, false},
    {40, Base::Library, 0, 0, false, false},    {41, Base::Library, 0, 0, false, false},
    {44, Base::Library, 0, 0, false, false},    {300, Base::Library, 0, 0, false, false},
    {301, Base::Library, 0, 0, false, false},   {304, Base::Library, 0, 0, false, false},
    {50, Base::Install, 4, 0, false, false},    {51, Base::Install, 4, 0, false, false},
    {60, Base::Setting, 0, 0, false, false},    {61, Base::Setting, 0, 0, false, false},
    {64, Base::Setting, 0, 0, false, false},
    {70, Base::UserData, 0, 0, false, false},   {71, Base::UserData, 0, 0, false, false},
    {74, Base::UserData, 0, 0, false, false},
    {200, Base::Drawing, 0, 0, false, false},   {201, Base::Drawing, 0, 0, false, false},
    {204, Base::Drawing, 0, 0, false, false},
    {210, Base::Install, 8, 0, false, false},   {211, Base::Install, 8, 0, false, false},
    {400, Base::Install, 5, 0, false, false},   {401, Base::Install, 5, 0, false, false},
    {500, Base::Install, 6, 0, false, false},   {501, Base::Install, 6, 0, false, false},
};

constexpr int kMessagePathTooLong = 13;

const char* baseFolder(Base base)
{
    switch (base) {
    case Base::Install: return g_setup.installFolder;
    case Base::CommonData: return g_setup.commonDataFolder;
    case Base::UserData: return g_setup.userDataFolder;
    case Base::Library: return g_setup.libraryFolder;
    case Base::Drawing: return g_setup.drawingFolder;
    case Base::Setting: return g_setup.settingFolder;
    case Base::Backup: return g_setup.backupFolder;
    }
    return "";
}

template <std::size_t N>
const Place* findPlace(const Place (&table)[N], std::uint32_t id)
{
    for (const Place& place : table) {
        if (place.id == id)
            return &place;
    }
    return nullptr;
}

const BackupPlace* findBackupPlace(std::uint32_t id)
{
    for (const BackupPlace& place : kBackupPlaces) {
        if (place.id == id)
            return &place;
    }
    return nullptr;
}

// base folder + relative folder, cut at the path capacity.
void startPath(char* path, Base base, int relative)
{
    HOI_CopyA(path, kPathCapacity, baseFolder(base), relative ? eRelativePaths[relative] : nullptr);
}

// The record's text fields need not be terminated in a damaged file; they are read bounded.
template <std::size_t N>
void copyField(char (&to)[N + 1], const char (&field)[N])
{
    HOI_CopyPartA(to, N + 1, field, N);
}

// Appends subFolder and fileName to the started path when the whole stays below the limit; the
// trailing backslash is ensured, not doubled, so an empty subFolder gives one backslash. When it
// does not fit, the path as far as it was composed is shown in the error alert.
bool finishPath(char* path, const FileRecord& record)
{
    char subFolder[sizeof record.subFolder + 1];
    char fileName[sizeof record.fileName + 1];
    copyField(subFolder, record.subFolder);
    copyField(fileName, record.fileName);
    if (std::strlen(path) + std::strlen(subFolder) + std::strlen(fileName) + 2 >= kPathCapacity) {
        char message[kMessageCapacity];
        HOI_PrintA(message, sizeof message, eMessageText[kMessagePathTooLong], path);
        AlertError(g_setup.mainWindow, message);
        return false;
    }
    HOI_JoinA(path, kPathCapacity, subFolder);
    HOI_PathA(path, kPathCapacity);
    HOI_JoinA(path, kPathCapacity, fileName);
    return true;
}

const FileRecord* fileRecordAt(int fileIndex)
{
    if (!g_setup.fileRecords || fileIndex < 0 || fileIndex >= g_setup.fileCount)
        return nullptr;
    return &g_setup.fileRecords[fileIndex];
}

} // namespace

int resolveFilePath(int fileIndex, char* path, unsigned* category, bool* coreMark, bool* specialMark)
{
    HOI_InitA(path);
    if (category)
        *category = 0;
    if (coreMark)
        *coreMark = false;
    if (specialMark)
        *specialMark = false;

    const FileRecord* record = fileRecordAt(fileIndex);
    if (!record)
        return kNoPathHere;
    const std::uint32_t id = record->directoryId;
    if (id % 10 == kDirectoryKindBackup)
        return kNoPathHere;

    const Place* place = findPlace(kFilePlaces, id);
    if (!place) {
        // Identifiers from 900 on belong to other programs of the package and are skipped.
        if (static_cast<std::int32_t>(id) < kFirstForeignDirectoryId)
            reportError("Command", kLineInvalidDirectoryId, "Invalid file directory ID.");
        return kNoPathHere;
    }
    if (category)
        *category = place->category;
    if (coreMark)
        *coreMark = place->core;
    if (specialMark)
        *specialMark = place->special;

    startPath(path, place->base, place->relative);
    return finishPath(path, *record) ? kPathComposed : kPathTooLong;
}

int resolveDirectoryPath(int fileIndex, char* targetPath, char* backupPath)
{
    HOI_InitA(targetPath);
    HOI_InitA(backupPath);
    const FileRecord* record = fileRecordAt(fileIndex);
    if (!record)
        return kNoPathHere;
    const BackupPlace* place = findBackupPlace(record->directoryId);
    if (!place)
        return kNoPathHere;

    startPath(targetPath, place->target, 0);
    if (!finishPath(targetPath, *record))
        return kPathTooLong;
    startPath(backupPath, place->backup, place->backupRelative);
    if (!finishPath(backupPath, *record))
        return kPathTooLong;
    return kPathComposed;
}

int resolveShortcutIconPath(int shortcutIndex, char* path)
{
    HOI_InitA(path);
    if (!g_setup.shortcutRecords || shortcutIndex < 0 || shortcutIndex >= g_setup.shortcutCount)
        return kIconPlaceUnknown;
    const ShortcutRecord& record = g_setup.shortcutRecords[shortcutIndex];
    const Place* place = findPlace(kIconPlaces, record.iconDirectoryId);
    if (!place)
        return kIconPlaceUnknown;
    char iconPath[sizeof record.iconPath + 1];
    copyField(iconPath, record.iconPath);
    startPath(path, place->base, place->relative);
    HOI_JoinA(path, kPathCapacity, iconPath);
    return kIconPathFound;
}

bool isDirectoryIdUsed(std::uint32_t directoryId)
{
    if (!g_setup.fileRecords)
        return false;
    for (std::int32_t i = 0; i < g_setup.fileCount; ++i) {
        if (g_setup.fileRecords[i].directoryId == directoryId)
            return true;
    }
    return false;
}
