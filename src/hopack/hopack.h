// hopack: builds a distribution folder (setup data file plus numbered members) from a package
// description, and lists an existing one. This header is the folder's interface: every .cpp of
// src/hopack includes it and nothing else of the folder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "format/data_format.h"
#include "format/directory_ids.h"
#include "format/name_rules.h"
#include "format/program_files.h"

namespace fs = std::filesystem;

// ---- constants ------------------------------------------------------------------------------

constexpr std::uint64_t kZip32Limit = 0xFFFFFFFFull; // a size or offset this large needs Zip64

// ---- types ----------------------------------------------------------------------------------

// Errors and warnings gathered while a command runs; every text already names file and entry.
struct Diagnostics {
    std::vector<std::string> errors;
    std::vector<std::string> warnings;
    void error(const std::string& text) { errors.push_back(text); }
    void warn(const std::string& text) { warnings.push_back(text); }
    bool ok() const { return errors.empty(); }
};

// What a record's directory identifier asks of the package, by its last digit and its place.
enum class RecordKind { Plain, Packed, Delete, Backup, ReplaceSilently, Ignored, Unknown };

// One [[file]] entry of a description, checked and converted to ANSI.
struct DescribedFile {
    std::uint32_t directoryId = 0;
    fs::path source;          // empty for records without a file (delete, backup, ignored)
    std::string fileName;     // ANSI
    std::string subFolder;    // ANSI, no leading or trailing backslash
    std::string origin;       // "file 3 (line 17)", for messages
};

// One [[shortcut]] entry; its target is resolved by the layout, since the program's own files are
// added there and may be targets too.
struct DescribedShortcut {
    bool targetByIndex = false;
    std::size_t targetIndex = 0;   // position in the description's file list
    std::string targetName;        // "name" or "sub\folder\name"
    bool iconGiven = false;
    std::uint32_t iconDirectoryId = 0;
    std::string iconPath;
    std::string name;
    std::string arguments;
    std::string origin;
};

struct PackageDescription {
    fs::path path;                 // the description file itself
    std::string productName;
    std::string productLabel;
    std::string compileDate;       // "YYYY-MM-DD"
    std::vector<DescribedFile> files;
    std::vector<DescribedShortcut> shortcuts;
    std::string signCommand;       // [product] sign_command, UTF-8; empty: nothing is signed
    bool signProduct = false;      // [product] sign_product
};

// What to sign and how: the command line's choice over the description's.
struct SigningOptions {
    std::string command;           // a template in which $f stands for the file to sign
    bool product = false;          // the product's .exe and .dll files too, not only the program's
};

// How a record's file reaches the medium.
enum class MemberKind { None, DataFile, Plain, Zip };

struct PlannedRecord {
    FileRecord record{};           // sizes are measured when the member is written
    MemberKind member = MemberKind::None;
    fs::path source;
    std::string origin;
};

struct PackageLayout {
    SetupDataHeader header{};
    std::vector<PlannedRecord> files;
    std::vector<ShortcutRecord> shortcuts;
    std::vector<std::pair<std::string, fs::path>> besideFiles; // program files copied beside the data
};

struct ZipResult {
    std::uint64_t size = 0;        // bytes of the packed file
    std::uint64_t memberSize = 0;  // bytes of the archive written
};

// A data file read back from a distribution.
struct DataFileContents {
    SetupDataHeader header{};
    std::vector<FileRecord> files;
    std::vector<ShortcutRecord> shortcuts;
};

// ---- functions ------------------------------------------------------------------------------

// record_kinds.cpp: the shared directory-identifier table as the package sees it.
RecordKind KindOfDirectoryId(std::uint32_t directoryId);
bool IsIconDirectoryId(std::uint32_t directoryId);
bool IsTransferable(RecordKind kind);      // counted by the installer's copy loop
bool CarriesFile(RecordKind kind);         // a file of the package (has a source and a member)
const char* KindName(RecordKind kind);
std::string PlaceName(std::uint32_t directoryId); // "INSTALL", "LIBRARY", "INSTALL\REL4", ...

// text_conversion.cpp: texts of a description turned into the data file's ANSI; the name checks
// wrap the shared name rules.
bool Utf8ToAnsi(const std::string& utf8, std::string& ansi);
std::string CheckFileName(const std::string& name);      // empty when fine, else the reason
std::string CheckRelativeFolder(const std::string& folder);
std::string CheckPlainText(const std::string& text);
std::string CheckCompileDate(const std::string& date);
std::string FoldCase(const std::string& text);
bool ParseCompileDate(const std::string& date, int& year, int& month, int& day);

// description.cpp
bool ReadDescription(const fs::path& path, PackageDescription& description, Diagnostics& diag);

// layout.cpp
bool PlanPackage(const PackageDescription& description, const fs::path& programDir,
                 PackageLayout& layout, Diagnostics& diag);
std::string MemberName(std::size_t recordIndex);
void WarnIgnoredBeforeLast(const std::vector<FileRecord>& files, Diagnostics& diag);

// signing.cpp: signs copies in a folder of their own, never the inputs, and points the layout
// at them; the folder is removed by RemoveSigningFolder once the distribution is written.
std::string CheckSignCommand(const std::string& command);  // empty when fine, else the reason
bool SignPackage(PackageLayout& layout, const SigningOptions& options, fs::path& signingFolder,
                 Diagnostics& diag);
void RemoveSigningFolder(const fs::path& signingFolder);

// zip_writer.cpp
bool WriteZipMember(const fs::path& source, const fs::path& target, const std::string& storedName,
                    const std::string& compileDate, ZipResult& result, Diagnostics& diag);

// data_file.cpp
std::vector<std::uint8_t> EncodeDataFile(const SetupDataHeader& header,
                                         const std::vector<FileRecord>& files,
                                         const std::vector<ShortcutRecord>& shortcuts);
bool DecodeDataFile(const std::vector<std::uint8_t>& bytes, DataFileContents& contents,
                    std::string& problem);
void CopyField(char* field, std::size_t fieldSize, const std::string& text);
std::string FieldText(const char* field, std::size_t fieldSize);

// distribution.cpp
// Members are written on `jobs` threads (at least one); the output does not depend on the number.
bool WriteDistribution(PackageLayout& layout, const fs::path& outDir, const std::string& compileDate,
                       unsigned jobs, Diagnostics& diag);

// list.cpp
int ListDistribution(const fs::path& dir, std::ostream& out, Diagnostics& diag);

// platform.cpp
fs::path ExecutableFolder(const char* argv0);
// Quotes a path for the command interpreter (/bin/sh, or cmd on Windows); false when the path
// holds a character the interpreter cannot take literally.
bool QuoteForCommand(const fs::path& path, std::string& quoted);
int RunCommand(const std::string& command);   // the command's exit code, -1 when it did not end normally
