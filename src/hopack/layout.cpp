// Turns a checked description into the records of the package: record 0 is the data file itself,
// then the setup program's own files (unless the description lists them), then the described
// files in their order. Checks that need the whole package are made here: duplicate targets,
// shortcut targets and the record limit.
#include "hopack.h"

#include <cstdio>
#include <map>

namespace {

// The place a file lands on, as Windows compares it (without case); also shown in messages.
std::string TargetKey(std::uint32_t id, const std::string& subFolder, const std::string& name)
{
    const std::string folder = subFolder.empty() ? "" : "\\" + FoldCase(subFolder);
    return PlaceName(id) + folder + "\\" + FoldCase(name);
}

PlannedRecord MakeRecord(std::uint32_t id, const std::string& name, const std::string& subFolder,
                         MemberKind member, const fs::path& source, const std::string& origin)
{
    PlannedRecord planned;
    planned.record.directoryId = id;
    CopyField(planned.record.fileName, sizeof(planned.record.fileName), name);
    CopyField(planned.record.subFolder, sizeof(planned.record.subFolder), subFolder);
    planned.member = member;
    planned.source = source;
    planned.origin = origin;
    return planned;
}

MemberKind MemberOf(RecordKind kind)
{
    if (!CarriesFile(kind)) return MemberKind::None;  // the installer reads no member for them
    return kind == RecordKind::Plain ? MemberKind::Plain : MemberKind::Zip;
}

// Adds the program's own files that the description does not list; all of them lie beside the
// data file too, taken from where the package's record takes them.
void PlanProgramFiles(const PackageDescription& d, const fs::path& programDir, PackageLayout& layout,
                      Diagnostics& diag)
{
    for (const ProgramFile& own : kProgramFiles) {
        if (!own.packaged)
            continue;
        const char* name = own.name;
        const DescribedFile* listed = nullptr;
        for (const DescribedFile& file : d.files)
            if (CarriesFile(KindOfDirectoryId(file.directoryId)) && file.subFolder.empty() &&
                PlaceName(file.directoryId) == "INSTALL" && FoldCase(file.fileName) == FoldCase(name))
                listed = &file;
        if (listed) {
            layout.besideFiles.emplace_back(name, listed->source);
            continue;
        }
        const fs::path source = programDir / name;
        std::error_code ec;
        if (!fs::is_regular_file(source, ec)) {
            diag.error("program file " + source.string() +
                       " not found (give the folder of the setup program with --program DIR)");
            continue;
        }
        layout.files.push_back(MakeRecord(0, name, "", MemberKind::Plain, source,
                                          std::string("program file ") + name));
        layout.besideFiles.emplace_back(name, source);
    }
}

// Finds the record index of a shortcut's target, or reports why there is none.
bool ResolveTarget(const DescribedShortcut& s, const std::vector<std::size_t>& recordOfFile,
                   const PackageLayout& layout, const std::string& where, std::size_t& index,
                   Diagnostics& diag)
{
    if (s.targetByIndex) {
        if (s.targetIndex >= recordOfFile.size()) {
            diag.error(where + ": target " + std::to_string(s.targetIndex) +
                       " is not a file of the package (the description lists " +
                       std::to_string(recordOfFile.size()) + " files)");
            return false;
        }
        index = recordOfFile[s.targetIndex];
        const FileRecord& r = layout.files[index].record;
        if (!CarriesFile(KindOfDirectoryId(r.directoryId))) {
            diag.error(where + ": target " + std::to_string(s.targetIndex) + " is a " +
                       KindName(KindOfDirectoryId(r.directoryId)) + " record, not a file of the package");
            return false;
        }
        return true;
    }
    std::size_t found = 0;
    const std::string wanted = FoldCase(s.targetName);
    for (std::size_t i = 0; i < layout.files.size(); ++i) {
        const FileRecord& r = layout.files[i].record;
        const std::string name = FieldText(r.fileName, sizeof(r.fileName));
        const std::string sub = FieldText(r.subFolder, sizeof(r.subFolder));
        const std::string full = sub.empty() ? name : sub + "\\" + name;
        if (CarriesFile(KindOfDirectoryId(r.directoryId)) &&
            (FoldCase(name) == wanted || FoldCase(full) == wanted)) {
            index = i;
            ++found;
        }
    }
    if (found == 1) return true;
    if (found == 0)
        diag.error(where + ": target \"" + s.targetName + "\" is not a file of the package");
    else
        diag.error(where + ": target \"" + s.targetName +
                   "\" names several files; give \"subfolder\\name\" or the file's index");
    return false;
}

void PlanShortcuts(const PackageDescription& d, const std::vector<std::size_t>& recordOfFile,
                   PackageLayout& layout, Diagnostics& diag)
{
    for (const DescribedShortcut& s : d.shortcuts) {
        const std::string where = d.path.string() + ": " + s.origin;
        std::size_t index = 0;
        if (!ResolveTarget(s, recordOfFile, layout, where, index, diag)) continue;
        ShortcutRecord record{};
        record.fileIndex = static_cast<std::uint32_t>(index);
        std::string iconPath = s.iconPath;
        record.iconDirectoryId = s.iconDirectoryId;
        if (!s.iconGiven) {
            // Without an icon of its own a shortcut shows the icon of the file it starts.
            const FileRecord& target = layout.files[index].record;
            const std::string sub = FieldText(target.subFolder, sizeof(target.subFolder));
            const std::string name = FieldText(target.fileName, sizeof(target.fileName));
            record.iconDirectoryId = target.directoryId;
            iconPath = sub.empty() ? name : sub + "\\" + name;
            if (!IsIconDirectoryId(target.directoryId)) {
                diag.error(where + ": the target's place cannot supply the icon; give \"icon_directory\" and \"icon\"");
                continue;
            }
            if (iconPath.size() > sizeof(record.iconPath) - 1) {
                diag.error(where + ": the target's path is longer than 63 characters and cannot be the icon path; "
                                   "give \"icon_directory\" and \"icon\"");
                continue;
            }
        }
        CopyField(record.iconPath, sizeof(record.iconPath), iconPath);
        CopyField(record.name, sizeof(record.name), s.name);
        CopyField(record.arguments, sizeof(record.arguments), s.arguments);
        layout.shortcuts.push_back(record);
    }
}

} // namespace

std::string MemberName(std::size_t recordIndex)
{
    char name[kMemberNameCapacity];
    formatMemberName(recordIndex, name, sizeof name);
    return name;
}

void WarnIgnoredBeforeLast(const std::vector<FileRecord>& files, Diagnostics& diag)
{
    std::size_t last = files.size();
    for (std::size_t i = files.size(); i-- > 0;)
        if (IsTransferable(KindOfDirectoryId(files[i].directoryId))) { last = i; break; }
    if (last == files.size()) return;
    for (std::size_t i = 0; i < last; ++i) {
        if (KindOfDirectoryId(files[i].directoryId) != RecordKind::Ignored) continue;
        diag.warn("record " + std::to_string(i) + " (identifier " + std::to_string(files[i].directoryId) +
                  ") is ignored but stands before record " + std::to_string(last) +
                  ", the last one the installer transfers: its copy loop counts the ignored record "
                  "as passed and so stops one record early; put ignored records last");
    }
}

bool PlanPackage(const PackageDescription& d, const fs::path& programDir, PackageLayout& layout,
                 Diagnostics& diag)
{
    layout = PackageLayout{};
    CopyField(layout.header.magic, sizeof(layout.header.magic), kSetupDataMagic);
    CopyField(layout.header.compileDate, sizeof(layout.header.compileDate), d.compileDate);
    CopyField(layout.header.productName, sizeof(layout.header.productName), d.productName);
    CopyField(layout.header.productLabel, sizeof(layout.header.productLabel), d.productLabel);

    layout.files.push_back(MakeRecord(0, kInstalledDataName, "", MemberKind::DataFile, {},
                                      "record 0 (the data file)"));
    PlanProgramFiles(d, programDir, layout, diag);

    std::vector<std::size_t> recordOfFile;
    for (const DescribedFile& file : d.files) {
        recordOfFile.push_back(layout.files.size());
        layout.files.push_back(MakeRecord(file.directoryId, file.fileName, file.subFolder,
                                          MemberOf(KindOfDirectoryId(file.directoryId)), file.source,
                                          d.path.string() + ": " + file.origin));
    }
    if (layout.files.size() > kMaxRecords)
        diag.error(d.path.string() + ": the package has " + std::to_string(layout.files.size()) +
                   " records; member names allow at most " + std::to_string(kMaxRecords));

    // Two files of the package must not land on the same target: the second would silently
    // replace the first (or ask the user about a file the same run has just written).
    std::map<std::string, std::size_t> targets;
    for (std::size_t i = 0; i < layout.files.size(); ++i) {
        const FileRecord& r = layout.files[i].record;
        if (!CarriesFile(KindOfDirectoryId(r.directoryId))) continue;
        const std::string key = TargetKey(r.directoryId, FieldText(r.subFolder, sizeof(r.subFolder)),
                                          FieldText(r.fileName, sizeof(r.fileName)));
        const auto inserted = targets.emplace(key, i);
        if (!inserted.second)
            diag.error(layout.files[i].origin + ": installs to " + key + " like " +
                       layout.files[inserted.first->second].origin);
    }
    PlanShortcuts(d, recordOfFile, layout, diag);
    if (!diag.ok()) return false;
    WarnIgnoredBeforeLast([&] {
        std::vector<FileRecord> records;
        for (const PlannedRecord& p : layout.files) records.push_back(p.record);
        return records;
    }(), diag);
    layout.header.fileCount = static_cast<std::int32_t>(layout.files.size());
    layout.header.shortcutCount = static_cast<std::int32_t>(layout.shortcuts.size());
    return true;
}
