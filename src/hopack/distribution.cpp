// Writes a planned package into its distribution folder. Every file is first written under a
// ".part" name and renamed when complete, and the data file "_000000_" comes last: a folder
// without it is visibly unfinished, and on failure everything written by the run is removed.
// The members are written on several threads; each is a file of its own whose bytes depend only
// on its record, so the distribution is the same byte for byte however many threads write it.
#include "hopack.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <fstream>
#include <system_error>
#include <thread>

namespace {

constexpr char kPartSuffix[] = ".part";

// Names a distribution folder holds: members, unfinished members and the program's files.
bool IsDistributionName(const std::string& name)
{
    std::string base = name;
    const std::size_t partLength = sizeof(kPartSuffix) - 1;
    if (base.size() > partLength && base.compare(base.size() - partLength, partLength, kPartSuffix) == 0)
        base.resize(base.size() - partLength);
    for (const ProgramFile& own : kProgramFiles)
        if (own.packaged && FoldCase(base) == own.name) return true;
    if (base.size() != 8 || base.front() != '_' || base.back() != '_') return false;
    for (std::size_t i = 1; i < 7; ++i)
        if (!std::isdigit(static_cast<unsigned char>(base[i]))) return false;
    return true;
}

// Makes the output folder ready: created when missing; an earlier (or unfinished) distribution
// is cleared, data file first, so it never looks complete; anything else is refused.
bool PrepareFolder(const fs::path& outDir, Diagnostics& diag)
{
    std::error_code ec;
    if (!fs::exists(outDir, ec)) {
        if (!fs::create_directories(outDir, ec)) {
            diag.error(outDir.string() + ": cannot create the folder: " + ec.message());
            return false;
        }
        return true;
    }
    if (!fs::is_directory(outDir, ec)) {
        diag.error(outDir.string() + ": exists and is not a folder");
        return false;
    }
    std::vector<fs::path> old;
    for (const fs::directory_entry& entry : fs::directory_iterator(outDir, ec)) {
        const std::string name = entry.path().filename().string();
        if (!entry.is_regular_file(ec) || !IsDistributionName(name)) {
            diag.error(outDir.string() + ": holds \"" + name +
                       "\", which is not part of a distribution; give an empty or new folder");
            return false;
        }
        old.push_back(entry.path());
    }
    fs::remove(outDir / kDataMemberName, ec);
    for (const fs::path& path : old) {
        if (!fs::remove(path, ec) && ec) {
            diag.error(path.string() + ": cannot remove the earlier file: " + ec.message());
            return false;
        }
    }
    return true;
}

bool Publish(const fs::path& part, const fs::path& final, Diagnostics& diag)
{
    std::error_code ec;
    fs::rename(part, final, ec);
    if (ec) diag.error(final.string() + ": cannot rename the finished file: " + ec.message());
    return !ec;
}

bool CopyPlain(const fs::path& source, const fs::path& part, Diagnostics& diag)
{
    std::error_code ec;
    fs::copy_file(source, part, fs::copy_options::overwrite_existing, ec);
    if (ec) diag.error(source.string() + ": cannot copy to " + part.string() + ": " + ec.message());
    return !ec;
}

// Writes the member of one record and measures its sizes into the record.
bool WriteMember(PlannedRecord& planned, std::size_t index, const fs::path& outDir,
                 const std::string& compileDate, Diagnostics& diag)
{
    const fs::path final = outDir / MemberName(index);
    const fs::path part = outDir / (MemberName(index) + kPartSuffix);
    std::error_code ec;
    if (planned.member == MemberKind::Plain) {
        if (!CopyPlain(planned.source, part, diag)) return false;
        planned.record.size = fs::file_size(part, ec);
        planned.record.transferSize = planned.record.size;
    } else {
        ZipResult zip;
        const std::string name = FieldText(planned.record.fileName, sizeof(planned.record.fileName));
        if (!WriteZipMember(planned.source, part, name, compileDate, zip, diag)) return false;
        planned.record.size = zip.size;
        planned.record.transferSize = zip.memberSize;
    }
    if (ec) {
        diag.error(part.string() + ": cannot measure: " + ec.message());
        return false;
    }
    return Publish(part, final, diag);
}

// Writes the members of all records on up to `jobs` threads, which take the records largest first.
// Each record is written, and its sizes set, by one thread only, and each thread reports into
// the record's own diagnostics; they are gathered in record order afterwards, so the messages do
// not depend on the threads either. Once a member fails no thread starts another.
bool WriteMembers(PackageLayout& layout, const fs::path& outDir, const std::string& compileDate,
                  unsigned jobs, std::vector<fs::path>& written, Diagnostics& diag)
{
    std::vector<std::size_t> indexes;
    for (std::size_t i = 1; i < layout.files.size(); ++i) {
        // Deletions, backup entries and ignored records stay records only: the installer never
        // reads a member for them, so they get none and their sizes stay 0.
        if (layout.files[i].member == MemberKind::None) continue;
        indexes.push_back(i);
        written.push_back(outDir / (MemberName(i) + kPartSuffix));
        written.push_back(outDir / MemberName(i));
    }
    // The largest files are started first, so that no thread is left alone with a large file at
    // the end while the others have nothing to do; the order changes nothing in the output.
    std::vector<std::uintmax_t> sizes(layout.files.size(), 0);
    for (std::size_t i : indexes) {
        std::error_code ec;
        sizes[i] = fs::file_size(layout.files[i].source, ec);
    }
    std::stable_sort(indexes.begin(), indexes.end(),
                     [&](std::size_t a, std::size_t b) { return sizes[a] > sizes[b]; });
    std::vector<Diagnostics> reports(layout.files.size());
    std::atomic<std::size_t> next{0};
    std::atomic<bool> failed{false};
    const auto work = [&] {
        for (std::size_t k = next++; k < indexes.size() && !failed; k = next++)
            if (!WriteMember(layout.files[indexes[k]], indexes[k], outDir, compileDate, reports[indexes[k]]))
                failed = true;
    };
    const std::size_t threads = std::min<std::size_t>(std::max(jobs, 1u), indexes.size());
    std::vector<std::thread> helpers;
    for (std::size_t t = 1; t < threads; ++t) {
        // A thread the system cannot give only makes the build slower.
        try { helpers.emplace_back(work); } catch (const std::system_error&) { break; }
    }
    work();
    for (std::thread& helper : helpers) helper.join();
    for (const Diagnostics& report : reports) {
        for (const std::string& e : report.errors) diag.error(e);
        for (const std::string& w : report.warnings) diag.warn(w);
    }
    return !failed;
}

bool WriteDataFile(PackageLayout& layout, const fs::path& outDir, std::vector<fs::path>& written,
                   Diagnostics& diag)
{
    // Record 0 describes the data file itself, whose length the counts alone fix.
    const std::uint64_t dataSize = sizeof(SetupDataHeader) + layout.files.size() * sizeof(FileRecord) +
                                   layout.shortcuts.size() * sizeof(ShortcutRecord);
    layout.files[0].record.size = dataSize;
    layout.files[0].record.transferSize = dataSize;
    std::vector<FileRecord> records;
    for (const PlannedRecord& p : layout.files) records.push_back(p.record);
    const std::vector<std::uint8_t> bytes = EncodeDataFile(layout.header, records, layout.shortcuts);
    const fs::path part = outDir / (std::string(kDataMemberName) + kPartSuffix);
    written.push_back(part);
    std::ofstream out(part, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    out.close();
    if (!out) {
        diag.error(part.string() + ": cannot write the data file");
        return false;
    }
    written.push_back(outDir / kDataMemberName);
    return Publish(part, outDir / kDataMemberName, diag);
}

bool WriteAll(PackageLayout& layout, const fs::path& outDir, const std::string& compileDate,
              unsigned jobs, std::vector<fs::path>& written, Diagnostics& diag)
{
    if (!WriteMembers(layout, outDir, compileDate, jobs, written, diag)) return false;
    for (const auto& [name, source] : layout.besideFiles) {
        const fs::path part = outDir / (name + kPartSuffix);
        written.push_back(part);
        if (!CopyPlain(source, part, diag)) return false;
        written.push_back(outDir / name);
        if (!Publish(part, outDir / name, diag)) return false;
    }
    return WriteDataFile(layout, outDir, written, diag);
}

} // namespace

bool WriteDistribution(PackageLayout& layout, const fs::path& outDir, const std::string& compileDate,
                       unsigned jobs, Diagnostics& diag)
{
    if (!PrepareFolder(outDir, diag)) return false;
    std::vector<fs::path> written;
    if (WriteAll(layout, outDir, compileDate, jobs, written, diag)) return true;
    std::error_code ec;
    for (const fs::path& path : written) fs::remove(path, ec);
    return false;
}
