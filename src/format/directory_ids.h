// Directory identifiers: the numeric place of a file or shortcut record. The tens and higher
// digits choose a base folder (optionally with a relative folder of the language module below
// it), the last digit the kind of entry. The setup program resolves them to paths; the package
// builder checks and names them; both read this one table.
#pragma once

#include <cstddef>
#include <cstdint>

// ---- constants ------------------------------------------------------------------------------

// Free-space groups of a resolved file, as bits.
constexpr unsigned kCategoryInstall = 1;
constexpr unsigned kCategoryDrawing = 2;
constexpr unsigned kCategoryLibrary = 4;
constexpr unsigned kCategorySetting = 8;

// Identifiers from this value on (read as signed numbers) belong to other programs of a package
// and are skipped without a report.
constexpr std::int32_t kFirstForeignDirectoryId = 900;

// ---- types ----------------------------------------------------------------------------------

// The folders of a run that a place starts from.
enum class FolderBase : std::uint8_t { Install, CommonData, UserData, Library, Drawing, Setting, Backup };

// A place of file records: its base folder, an eRelativePaths entry below it (kRelativeNone for
// none), the free-space category and the two marks the copy step reads.
struct FilePlace {
    std::uint32_t id;
    FolderBase base;
    std::uint8_t relative;
    std::uint8_t category;
    bool core;       // the program's own core files (identifiers 0 to 2)
    bool special;    // identifiers ending in 4: replaced without asking
};

// A backup entry (last digit 3): the live folder an update saves the named file from, and the
// place of the copy in the backup tree.
struct BackupPlace {
    std::uint32_t id;
    FolderBase target;
    FolderBase backup;
    std::uint8_t backupRelative;
};

// ---- functions ------------------------------------------------------------------------------

// The place of a file record's identifier, or null when no table row has it.
const FilePlace* findFilePlace(std::uint32_t id);
// The place of a backup entry's identifier, or null.
const BackupPlace* findBackupPlace(std::uint32_t id);
// The place a shortcut's icon may come from: the file places without the deletion rows (x2) and
// a few others; null when the identifier is not one of them.
const FilePlace* findIconPlace(std::uint32_t id);
// The name hopack shows for a base folder ("INSTALL", "COMMONDATA", ...).
const char* folderBaseName(FolderBase base);
