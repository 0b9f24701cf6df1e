// Directory identifiers turned into paths: the shared table's place of a file or shortcut record
// becomes a folder of the setup state (optionally followed by a relative folder of the language
// module), and full target and backup paths are composed below the 260-character limit.
#include "setupdata/setupdata.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"
#include "holang.h"

#include <cstring>

namespace {

const char* baseFolder(FolderBase base)
{
    switch (base) {
    case FolderBase::Install: return g_setup.installFolder;
    case FolderBase::CommonData: return g_setup.commonDataFolder;
    case FolderBase::UserData: return g_setup.userDataFolder;
    case FolderBase::Library: return g_setup.libraryFolder;
    case FolderBase::Drawing: return g_setup.drawingFolder;
    case FolderBase::Setting: return g_setup.settingFolder;
    case FolderBase::Backup: return g_setup.backupFolder;
    }
    return "";
}

// base folder + relative folder (an eRelativePaths entry), cut at the path capacity.
void startPath(char* path, FolderBase base, int relative)
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
        HOI_PrintA(message, sizeof message, eMessageText[kMsgPathTooLong], path);
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

    const FilePlace* place = findFilePlace(id);
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

    startPath(targetPath, place->target, kRelativeNone);
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
    const FilePlace* place = findIconPlace(record.iconDirectoryId);
    if (!place)
        return kIconPlaceUnknown;
    char iconPath[sizeof record.iconPath + 1];
    copyField(iconPath, record.iconPath);
    startPath(path, place->base, place->relative);
    HOI_JoinA(path, kPathCapacity, iconPath);
    return kIconPathFound;
}
