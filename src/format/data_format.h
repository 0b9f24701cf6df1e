// Binary layout of the setup data file ("_000000_" in a distribution, "hosetup.dat" once installed)
// and the names of a distribution's members. Shared by hosetup.exe, which reads them, and hopack,
// which writes them; so this header uses only the standard library and builds on any platform.
#pragma once

#include <cstddef>
#include <cstdint>

// ---- constants ------------------------------------------------------------------------------

constexpr char kSetupDataMagic[] = "Harwick-Orbel DAT 6140";   // the first 22 bytes of a data file
constexpr std::size_t kSetupDataMagicLength = 22;
constexpr std::size_t kSetupHeaderSize = 328;
constexpr std::size_t kSetupHeaderBlockSize = 332;            // header in memory: 328 read, 4 spare
constexpr std::size_t kFileRecordSize = 148;
constexpr std::size_t kShortcutRecordSize = 200;

// Member i of a distribution is named "_" + i in five digits + a kind digit (always 0) + "_";
// record 0 is the data file itself, so its member is the data file of the distribution.
constexpr char kMemberNamePattern[] = "_%05d%d_";
constexpr std::size_t kMemberNameCapacity = 16;
constexpr char kDataMemberName[] = "_000000_";
constexpr char kInstalledDataName[] = "hosetup.dat";   // record 0's name once installed
constexpr std::size_t kMaxRecords = 100000;            // member names hold the index in five digits

// ---- types ----------------------------------------------------------------------------------

#pragma pack(push, 1)

struct SetupDataHeader {
    char magic[32];            // "Harwick-Orbel DAT 6140"; byte 22 onward ignored
    char compileDate[32];      // "YYYY-MM-DD"
    char productName[128];     // program-menu group and "%s Release %s" display names
    char productLabel[128];    // product text of the wizard
    std::int32_t fileCount;
    std::int32_t shortcutCount;
};

struct FileRecord {
    std::uint32_t directoryId; // tens and higher: the place; last digit: the kind of entry
    std::uint64_t size;        // installed size in bytes
    std::uint64_t transferSize;// bytes on the source medium (progress unit)
    char fileName[64];
    char subFolder[64];        // below the base folder, no leading or trailing backslash
};

struct ShortcutRecord {
    std::uint32_t fileIndex;       // file record of the shortcut's target
    std::uint32_t iconDirectoryId; // place of the file that supplies the icon
    char iconPath[64];             // below that place; icon index is always 0
    char name[64];                 // link file name (without ".lnk") and description
    char arguments[64];
};

#pragma pack(pop)

static_assert(sizeof(SetupDataHeader) == kSetupHeaderSize, "header layout");
static_assert(sizeof(FileRecord) == kFileRecordSize, "file record layout");
static_assert(sizeof(ShortcutRecord) == kShortcutRecordSize, "shortcut record layout");
static_assert(offsetof(FileRecord, fileName) == 20 && offsetof(FileRecord, subFolder) == 84, "file record offsets");
static_assert(offsetof(ShortcutRecord, name) == 72 && offsetof(ShortcutRecord, arguments) == 136, "shortcut offsets");

// Kinds of entry, by the last decimal digit of a directory identifier.
constexpr std::uint32_t kDirectoryKindDelete = 2;
constexpr std::uint32_t kDirectoryKindBackup = 3;
constexpr std::uint32_t kDirectoryKindReplaceSilently = 4;
constexpr std::uint32_t kDirectoryKindIgnored = 9;

// ---- functions ------------------------------------------------------------------------------

// Writes the member name of record index into name (kMemberNameCapacity characters); an index
// of kMaxRecords or more gives an empty name.
void formatMemberName(std::size_t index, char* name, std::size_t capacity);
