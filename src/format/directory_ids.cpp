// The one table of directory identifiers. The relative folders (the second column) are indexes
// into the language module's eRelativePaths, so the texts stay with the language module.
#include "format/directory_ids.h"

#include <iterator>

namespace {

using B = FolderBase;

constexpr FilePlace kFilePlaces[] = {
    {0, B::Install, 0, kCategoryInstall, true, false},
    {1, B::Install, 0, kCategoryInstall, true, false},
    {2, B::Install, 0, kCategoryInstall, true, false},
    {10, B::Install, 0, kCategoryInstall, false, false},
    {11, B::Install, 0, kCategoryInstall, false, false},
    {12, B::Install, 0, kCategoryInstall, false, false},
    {20, B::Install, 0, kCategoryInstall, false, false},
    {21, B::Install, 0, kCategoryInstall, false, false},
    {22, B::Install, 0, kCategoryInstall, false, false},
    {24, B::Install, 0, kCategoryInstall, false, true},
    {25, B::Install, 0, kCategoryInstall, false, false},
    {26, B::Install, 0, kCategoryInstall, false, false},
    {27, B::Install, 0, kCategoryInstall, false, false},
    {30, B::CommonData, 0, kCategoryInstall, false, false},
    {31, B::CommonData, 0, kCategoryInstall, false, false},
    {32, B::CommonData, 0, kCategoryInstall, false, false},
    {34, B::CommonData, 0, kCategoryInstall, false, true},
    {40, B::Library, 0, kCategoryLibrary, false, false},
    {41, B::Library, 0, kCategoryLibrary, false, false},
    {42, B::Library, 0, kCategoryLibrary, false, false},
    {44, B::Library, 0, kCategoryLibrary, false, true},
    {50, B::Install, 4, kCategoryInstall, false, false},
    {51, B::Install, 4, kCategoryInstall, false, false},
    {52, B::Install, 4, kCategoryInstall, false, false},
    {60, B::Setting, 0, kCategorySetting, false, false},
    {61, B::Setting, 0, kCategorySetting, false, false},
    {62, B::Setting, 0, kCategorySetting, false, false},
    {64, B::Setting, 0, kCategorySetting, false, true},
    {70, B::UserData, 0, kCategoryInstall, false, false},
    {71, B::UserData, 0, kCategoryInstall, false, false},
    {72, B::UserData, 0, kCategoryInstall, false, false},
    {74, B::UserData, 0, kCategoryInstall, false, true},
    {100, B::Install, 0, kCategoryInstall, false, false},
    {101, B::Install, 0, kCategoryInstall, false, false},
    {102, B::Install, 0, kCategoryInstall, false, false},
    {200, B::Drawing, 0, kCategoryDrawing, false, false},
    {201, B::Drawing, 0, kCategoryDrawing, false, false},
    {202, B::Drawing, 0, kCategoryDrawing, false, false},
    {204, B::Drawing, 0, kCategoryDrawing, false, true},
    {210, B::Install, 8, kCategoryInstall, false, false},
    {211, B::Install, 8, kCategoryInstall, false, false},
    {212, B::Install, 8, kCategoryInstall, false, false},
    {300, B::Library, 0, kCategoryLibrary, false, false},
    {301, B::Library, 0, kCategoryLibrary, false, false},
    {302, B::Library, 0, kCategoryLibrary, false, false},
    {304, B::Library, 0, kCategoryLibrary, false, true},
    {400, B::Install, 5, kCategoryInstall, false, false},
    {401, B::Install, 5, kCategoryInstall, false, false},
    {402, B::Install, 5, kCategoryInstall, false, false},
    {500, B::Install, 6, kCategoryInstall, false, false},
    {501, B::Install, 6, kCategoryInstall, false, false},
    {502, B::Install, 6, kCategoryInstall, false, false},
};

constexpr BackupPlace kBackupPlaces[] = {
    {23, B::Install, B::Backup, 0},    {33, B::CommonData, B::Backup, 7}, {43, B::Library, B::Backup, 2},
    {63, B::Setting, B::Backup, 1},    {73, B::UserData, B::Backup, 10},  {203, B::Drawing, B::Backup, 3},
    {303, B::Library, B::Backup, 2},
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
