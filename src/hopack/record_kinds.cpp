// What a record's directory identifier asks of the package, read from the shared table the setup
// program resolves with, so a package never carries a record the installation would report as
// invalid.
#include "hopack.h"

namespace {

bool HasPlace(std::uint32_t id)
{
    if (id % 10 == kDirectoryKindBackup) return findBackupPlace(id) != nullptr;
    return findFilePlace(id) != nullptr;
}

} // namespace

RecordKind KindOfDirectoryId(std::uint32_t directoryId)
{
    const std::uint32_t digit = directoryId % 10;
    // Ignored entries are skipped by every installation step before their place is looked at.
    if (digit == kDirectoryKindIgnored) return RecordKind::Ignored;
    if (!HasPlace(directoryId)) return RecordKind::Unknown;
    if (digit == kDirectoryKindBackup) return RecordKind::Backup;
    if (digit == kDirectoryKindDelete) return RecordKind::Delete;
    if (digit == kDirectoryKindReplaceSilently) return RecordKind::ReplaceSilently;
    // The installation copies identifiers 0 and 1 as they are and unpacks every other file.
    return directoryId < 10 ? RecordKind::Plain : RecordKind::Packed;
}

bool IsIconDirectoryId(std::uint32_t directoryId)
{
    return findIconPlace(directoryId) != nullptr;
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
    FolderBase base;
    unsigned relative = 0;
    if (directoryId % 10 == kDirectoryKindBackup) {
        const BackupPlace* place = findBackupPlace(directoryId);
        if (!place) return "?";
        base = place->target;
    } else {
        const FilePlace* place = findFilePlace(directoryId);
        if (!place) return "?";
        base = place->base;
        relative = place->relative;
    }
    std::string name = folderBaseName(base);
    if (relative) name += "\\REL" + std::to_string(relative);
    return name;
}
