// The one table of directory identifiers. The relative folders (the third column) are entries
// of the language module's eRelativePaths, named in text_ids.h, so the texts stay with the
// language module.
#include "format/directory_ids.h"
#include "holang/text_ids.h"

#include <iterator>

namespace {

using B = FolderBase;

constexpr FilePlace kFilePlaces[] = {
    {0, B::Install, kRelativeNone, kCategoryInstall, true, false},
    {1, B::Install, kRelativeNone, kCategoryInstall, true, false},
    {2, B::Install, kRelativeNone, kCategoryInstall, true, false},
    {10, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {11, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {12, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {20, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {21, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {22, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {24, B::Install, kRelativeNone, kCategoryInstall, false, true},
    {25, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {26, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {27, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {30, B::CommonData, kRelativeNone, kCategoryInstall, false, false},
    {31, B::CommonData, kRelativeNone, kCategoryInstall, false, false},
    {32, B::CommonData, kRelativeNone, kCategoryInstall, false, false},
    {34, B::CommonData, kRelativeNone, kCategoryInstall, false, true},
    {40, B::Library, kRelativeNone, kCategoryLibrary, false, false},
    {41, B::Library, kRelativeNone, kCategoryLibrary, false, false},
    {42, B::Library, kRelativeNone, kCategoryLibrary, false, false},
    {44, B::Library, kRelativeNone, kCategoryLibrary, false, true},
    {50, B::Install, kRelativeFonts, kCategoryInstall, false, false},
    {51, B::Install, kRelativeFonts, kCategoryInstall, false, false},
    {52, B::Install, kRelativeFonts, kCategoryInstall, false, false},
    {60, B::Setting, kRelativeNone, kCategorySetting, false, false},
    {61, B::Setting, kRelativeNone, kCategorySetting, false, false},
    {62, B::Setting, kRelativeNone, kCategorySetting, false, false},
    {64, B::Setting, kRelativeNone, kCategorySetting, false, true},
    {70, B::UserData, kRelativeNone, kCategoryInstall, false, false},
    {71, B::UserData, kRelativeNone, kCategoryInstall, false, false},
    {72, B::UserData, kRelativeNone, kCategoryInstall, false, false},
    {74, B::UserData, kRelativeNone, kCategoryInstall, false, true},
    {100, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {101, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {102, B::Install, kRelativeNone, kCategoryInstall, false, false},
    {200, B::Drawing, kRelativeNone, kCategoryDrawing, false, false},
    {201, B::Drawing, kRelativeNone, kCategoryDrawing, false, false},
    {202, B::Drawing, kRelativeNone, kCategoryDrawing, false, false},
    {204, B::Drawing, kRelativeNone, kCategoryDrawing, false, true},
    {210, B::Install, kRelativeHelp, kCategoryInstall, false, false},
    {211, B::Install, kRelativeHelp, kCategoryInstall, false, false},
    {212, B::Install, kRelativeHelp, kCategoryInstall, false, false},
    {300, B::Library, kRelativeNone, kCategoryLibrary, false, false},
    {301, B::Library, kRelativeNone, kCategoryLibrary, false, false},
    {302, B::Library, kRelativeNone, kCategoryLibrary, false, false},
    {304, B::Library, kRelativeNone, kCategoryLibrary, false, true},
    {400, B::Install, kRelativePlugIns, kCategoryInstall, false, false},
    {401, B::Install, kRelativePlugIns, kCategoryInstall, false, false},
    {402, B::Install, kRelativePlugIns, kCategoryInstall, false, false},
    {500, B::Install, kRelativeTemplates, kCategoryInstall, false, false},
    {501, B::Install, kRelativeTemplates, kCategoryInstall, false, false},
    {502, B::Install, kRelativeTemplates, kCategoryInstall, false, false},
};

constexpr BackupPlace kBackupPlaces[] = {
    {23, B::Install, B::Backup, kRelativeNone},
    {33, B::CommonData, B::Backup, kRelativeAllUsersBackup},
    {43, B::Library, B::Backup, kRelativeLibraries},
    {63, B::Setting, B::Backup, kRelativeSettings},
    {73, B::UserData, B::Backup, kRelativeUserBackup},
    {203, B::Drawing, B::Backup, kRelativeDrawings},
    {303, B::Library, B::Backup, kRelativeLibraries},
};

// Icon places: deliberately narrower than the file places (no x2 rows, no 12, 102, 212, ...).
constexpr std::uint32_t kIconIds[] = {0,   1,   10,  11,  20,  21,  24,  25,  26,  27,  100, 101, 30,
                                      31,  34,  40,  41,  44,  300, 301, 304, 50,  51,  60,  61,  64,
                                      70,  71,  74,  200, 201, 204, 210, 211, 400, 401, 500, 501};

} // namespace

const FilePlace* findFilePlace(std::uint32_t id)
{
    for (const FilePlace& place : kFilePlaces) {
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

const FilePlace* findIconPlace(std::uint32_t id)
{
    for (std::uint32_t icon : kIconIds) {
        if (icon == id)
            return findFilePlace(id);
    }
    return nullptr;
}

const char* folderBaseName(FolderBase base)
{
    switch (base) {
    case B::Install: return "INSTALL";
    case B::CommonData: return "COMMONDATA";
    case B::UserData: return "USERDATA";
    case B::Library: return "LIBRARY";
    case B::Drawing: return "DRAWINGS";
    case B::Setting: return "SETTINGS";
    case B::Backup: return "BACKUP";
    }
    return "?";
}
