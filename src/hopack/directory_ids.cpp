// Directory identifiers as the setup program resolves them: which exist, what their last digit
// asks for, and which folder class they name. The tables mirror the setup program's resolvers, so
// a package never carries a record that the installation would report as invalid.
#include "hopack.h"

#include <algorithm>
#include <iterator>

namespace {

struct Place {
    std::uint32_t first;   // identifiers first..last share the folder class
    std::uint32_t last;
    const char* name;
};

// Identifiers of file records (any last digit but 3 and 9); the relative folders of the language
// module are shown by their table index, since their texts belong to the language module.
const Place kFilePlaces[] = {
    {0, 2, "INSTALL"},        {10, 12, "INSTALL"},      {20, 22, "INSTALL"},
    {24, 27, "INSTALL"},      {30, 32, "COMMONDATA"},   {34, 34, "COMMONDATA"},
    {40, 42, "LIBRARY"},      {44, 44, "LIBRARY"},      {50, 52, "INSTALL\\REL4"},
    {60, 62, "SETTINGS"},     {64, 64, "SETTINGS"},     {70, 72, "USERDATA"},
    {74, 74, "USERDATA"},     {100, 102, "INSTALL"},    {200, 202, "DRAWINGS"},
    {204, 204, "DRAWINGS"},   {210, 212, "INSTALL\\REL8"}, {300, 302, "LIBRARY"},
    {304, 304, "LIBRARY"},    {400, 402, "INSTALL\\REL5"}, {500, 502, "INSTALL\\REL6"},
};

// Backup entries (last digit 3): the live folder that an update saves the named file from.
const Place kBackupPlaces[] = {
    {23, 23, "INSTALL"},  {33, 33, "COMMONDATA"}, {43, 43, "LIBRARY"}, {63, 63, "SETTINGS"},
    {73, 73, "USERDATA"}, {203, 203, "DRAWINGS"}, {303, 303, "LIBRARY"},
};

// Places a shortcut's icon may come from: deliberately narrower than the file table (no x2).
const std::uint32_t kIconIds[] = {0,   1,   10,  11,  20,  21,  24,  25,  26,  27,  100, 101, 30,
                                  31,  34,  40,  41,  44,  300, 301, 304, 50,  51,  60,  61,  64,
                                  70,  71,  74,  200, 201, 204, 210, 211, 400, 401, 500, 501};

const Place* FindPlace(const Place* begin, const Place* end, std::uint32_t id)
{
    for (const Place* p = begin; p != end; ++p)
        if (id >= p->first && id <= p->last) return p;
    return nullptr;
}

const Place* FindAnyPlace(std::uint32_t id)
{
    if (id % 10 == kDirectoryKindBackup)
        return FindPlace(std::begin(kBackupPlaces), std::end(kBackupPlaces), id);
    return FindPlace(std::begin(kFilePlaces), std::end(kFilePlaces), id);
}

} // namespace

RecordKind KindOfDirectoryId(std::uint32_t directoryId)
{
    const std::uint32_t digit = directoryId % 10;
    // Ignored entries are skipped by every installation step before their place is looked at.
    if (digit == kDirectoryKindIgnored) return RecordKind::Ignored;
    if (!FindAnyPlace(directoryId)) return RecordKind::Unknown;
    if (digit == kDirectoryKindBackup) return RecordKind::Backup;
    if (digit == kDirectoryKindDelete) return RecordKind::Delete;
    if (digit == kDirectoryKindReplaceSilently) return RecordKind::ReplaceSilently;
    // The installation copies identifiers 0 and 1 as they are and unpacks every other file.
    return directoryId < 10 ? RecordKind::Plain : RecordKind::Packed;
}

bool IsIconDirectoryId(std::uint32_t directoryId)
{
    return std::find(std::begin(kIconIds), std::end(kIconIds), directoryId) != std::end(kIconIds);
}

bool IsTransferable(RecordKind kind)
{
    // The copy loop counts every record that is not ignored and whose target resolves; backup
    // entries never resolve as files, deletions do.
    return kind == RecordKind::Plain || kind == RecordKind::Packed ||
           kind == RecordKind::ReplaceSilently || kind == RecordKind::Delete;
}

bool CarriesFile(RecordKind kind)
{
    return kind == RecordKind::Plain || kind == RecordKind::Packed ||
           kind == RecordKind::ReplaceSilently;
}

const char* KindName(RecordKind kind)
{
    switch (kind) {
    case RecordKind::Plain: return "plain";
    case RecordKind::Packed: return "packed";
    case RecordKind::Delete: return "delete";
    case RecordKind::Backup: return "backup";
    case RecordKind::ReplaceSilently: return "replace-silently";
    case RecordKind::Ignored: return "ignored";
    case RecordKind::Unknown: break;
    }
    return "unknown";
}

std::string PlaceName(std::uint32_t directoryId)
{
    if (directoryId % 10 == kDirectoryKindIgnored) return "-";
    const Place* place = FindAnyPlace(directoryId);
    return place ? place->name : "?";
}
