// Signs the files of a package with the release engineer's own signing command. The command is a
// template in which $f stands for the file to sign; it runs through the system's command
// interpreter on a COPY of each file, made in a fresh folder of hopack's own below the temporary
// folder, so the inputs are never changed and a half-signed input cannot be left behind. The
// layout is then pointed at the signed copies, so that the setup program's own files beside the
// data file and their records carry the same signed bytes. A command that fails, or leaves the
// copy missing or unchanged, stops the build: an unsigned file is never packed when signing was
// asked for.
#include "hopack.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <random>

namespace {

constexpr char kFilePlaceholder[] = "$f";
constexpr int kFolderAttempts = 100;

// The setup program's own files that carry code, and so a signature.
bool IsSignedProgramFile(const std::string& name)
{
    const std::string folded = FoldCase(name);
    return folded == kSetupProgramName || folded == kLanguageModuleName || folded == kUnpackerName;
}

bool HasCodeExtension(const std::string& name)
{
    const std::string folded = FoldCase(name);
    const auto endsWith = [&](const char* ext) {
        const std::string e = ext;
        return folded.size() > e.size() && folded.compare(folded.size() - e.size(), e.size(), e) == 0;
    };
    return endsWith(".exe") || endsWith(".dll");
}

// A new folder that no one else made: a name already taken is never reused, so a folder or link
// planted in the shared temporary folder is not written into.
bool MakeSigningFolder(fs::path& folder, Diagnostics& diag)
{
    std::error_code ec;
    const fs::path temp = fs::temp_directory_path(ec);
    if (ec) {
        diag.error("no temporary folder for the signed copies: " + ec.message());
        return false;
    }
    std::random_device random;
    for (int attempt = 0; attempt < kFolderAttempts; ++attempt) {
        const fs::path candidate = temp / ("hopack-sign-" + std::to_string(random()));
        if (fs::create_directory(candidate, ec)) {
            fs::permissions(candidate, fs::perms::owner_all, ec);
            folder = candidate;
            return true;
        }
    }
    diag.error(temp.string() + ": cannot make a folder for the signed copies");
    return false;
}

bool SameContents(const fs::path& a, const fs::path& b)
{
    std::error_code ec;
    if (fs::file_size(a, ec) != fs::file_size(b, ec) || ec) return false;
    std::ifstream inA(a, std::ios::binary), inB(b, std::ios::binary);
    std::vector<char> bufA(64 * 1024), bufB(64 * 1024);
    while (inA && inB) {
        inA.read(bufA.data(), std::streamsize(bufA.size()));
        inB.read(bufB.data(), std::streamsize(bufB.size()));
        if (inA.gcount() != inB.gcount() ||
            !std::equal(bufA.begin(), bufA.begin() + inA.gcount(), bufB.begin()))
            return false;
    }
    return inA.eof() && inB.eof();
}

// Copies one file into its own sub-folder (keeping its name, which signing tools may show) and
// signs the copy.
bool SignCopy(const fs::path& source, const fs::path& folder, std::size_t number,
              const std::string& command, fs::path& signedCopy, Diagnostics& diag)
{
    std::error_code ec;
    const fs::path subFolder = folder / std::to_string(number);
    signedCopy = subFolder / source.filename();
    if (!fs::create_directory(subFolder, ec) ||
        !fs::copy_file(source, signedCopy, fs::copy_options::none, ec)) {
        diag.error(source.string() + ": cannot copy for signing to " + signedCopy.string() +
                   (ec ? ": " + ec.message() : ""));
        return false;
    }
    std::string quoted;
    if (!QuoteForCommand(signedCopy, quoted)) {
        diag.error(signedCopy.string() + ": the path cannot be handed to the command interpreter");
        return false;
    }
    std::string line;
    for (std::size_t at = 0; at < command.size();) {
        if (command.compare(at, sizeof(kFilePlaceholder) - 1, kFilePlaceholder) == 0) {
            line += quoted;
            at += sizeof(kFilePlaceholder) - 1;
        } else {
            line += command[at++];
        }
    }
    const int code = RunCommand(line);
    if (code != 0) {
        diag.error(source.string() + ": the signing command failed (exit code " + std::to_string(code) + ")");
        return false;
    }
    if (!fs::is_regular_file(signedCopy, ec)) {
        diag.error(source.string() + ": the signing command left no file at " + signedCopy.string());
        return false;
    }
    if (SameContents(source, signedCopy)) {
        diag.error(source.string() + ": the signing command left the file unchanged");
        return false;
    }
    return true;
}

} // namespace

std::string CheckSignCommand(const std::string& command)
{
    if (command.find(kFilePlaceholder) == std::string::npos)
        return "holds no $f, where the file to sign goes";
    return "";
}

bool SignPackage(PackageLayout& layout, const SigningOptions& options, fs::path& signingFolder,
                 Diagnostics& diag)
{
    if (options.command.empty()) return true;
    const std::string problem = CheckSignCommand(options.command);
    if (!problem.empty()) {
        diag.error("the signing command " + problem);
        return false;
    }
    // The files to sign, each source once however many records take it.
    std::vector<fs::path> sources;
    const auto add = [&](const fs::path& source) {
        if (std::find(sources.begin(), sources.end(), source) == sources.end()) sources.push_back(source);
    };
    for (const auto& [name, source] : layout.besideFiles)
        if (IsSignedProgramFile(name)) add(source);
    if (options.product)
        for (const PlannedRecord& planned : layout.files)
            if (planned.member == MemberKind::Plain || planned.member == MemberKind::Zip)
                if (HasCodeExtension(FieldText(planned.record.fileName, sizeof(planned.record.fileName))))
                    add(planned.source);
    if (sources.empty()) return true;
    if (!MakeSigningFolder(signingFolder, diag)) return false;

    std::map<fs::path, fs::path> signedCopies;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        fs::path signedCopy;
        if (!SignCopy(sources[i], signingFolder, i, options.command, signedCopy, diag)) return false;
        signedCopies[sources[i]] = signedCopy;
    }
    for (PlannedRecord& planned : layout.files) {
        const auto found = signedCopies.find(planned.source);
        if (found != signedCopies.end()) planned.source = found->second;
    }
    for (auto& beside : layout.besideFiles) {
        const auto found = signedCopies.find(beside.second);
        if (found != signedCopies.end()) beside.second = found->second;
    }
    return true;
}

void RemoveSigningFolder(const fs::path& signingFolder)
{
    std::error_code ec;
    if (!signingFolder.empty()) fs::remove_all(signingFolder, ec);
}
