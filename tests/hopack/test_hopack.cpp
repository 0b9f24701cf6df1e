// hopack run on packages in a temporary folder: every member of a build read back (plain ones byte for byte,
// packed ones through Info-ZIP's unzip) and listed, faulty descriptions and failing signing commands
// refused, signed builds checked with osslsigncode, a member over 4 GiB.
#include "format/data_format.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>

namespace fs = std::filesystem;

namespace {

const char* const kOwnFiles[] = {"holang.dll", "hosetup.chm", "hosetup.exe", "hounzip.exe"};
const std::string kProduct = "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2024-06-01\"\n";

struct Result { int code; std::string out, err; };

void write(const fs::path& path, const std::string& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string readAll(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

Result shell(const std::string& command)
{
    const std::string base = (fs::temp_directory_path() / ("hopack-run-" + std::to_string(getpid()))).string();
    const int status = std::system((command + " >" + base + ".out 2>" + base + ".err").c_str());
    Result run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, readAll(base + ".out"), readAll(base + ".err")};
    fs::remove(base + ".out");
    fs::remove(base + ".err");
    return run;
}

std::string member(std::size_t index) { return "_" + std::to_string(100000 + index).substr(1) + "0_"; }
std::string field(const char* text, std::size_t size) { return std::string(text, strnlen(text, size)); }

class Hopack : public ::testing::Test {
protected:
    void SetUp() override
    {
        dir = fs::temp_directory_path() / ("hopack-test-" + std::to_string(getpid()));
        out = dir / "out";
        for (const char* own : kOwnFiles) write(dir / "program" / own, std::string("own file ") + own);
    }
    void TearDown() override { fs::remove_all(dir); }
    Result hopack(const std::string& arguments) { return shell(std::string(HOPACK_PATH) + " " + arguments); }
    // Runs with its own temporary folder, which must be left empty: signed copies are made there.
    Result build(const std::string& description, const std::string& options = "")
    {
        write(dir / "pkg/package.toml", description);
        fs::create_directories(dir / "tmp");
        return shell("TMPDIR=" + (dir / "tmp").string() + " " + HOPACK_PATH + " build " +
                     (dir / "pkg/package.toml").string() + " " + out.string() + " --program " +
                     (dir / "program").string() + " " + options);
    }
    // The header (offset 0), a file record or a shortcut record of the data file read into `data`.
    template <typename Record> Record at(std::size_t offset) const
    {
        Record r;
        std::memcpy(&r, data.data() + offset, sizeof r);
        return r;
    }
    FileRecord record(std::size_t i) const { return at<FileRecord>(kSetupHeaderSize + i * kFileRecordSize); }
    fs::path dir, out;
    std::string data;
};

struct Described {
    std::uint32_t id;
    const char *source, *subFolder, *name;   // source nullptr: a record without a file
};

// Packed (text, empty in a nested sub-folder), plain, and records that carry no member.
TEST_F(Hopack, EveryRecordAndMemberOfABuildReadsBack)
{
    const Described described[] = {
        {10, "hovistrel.exe", "", "hovistrel.exe"}, {1, "plain.bin", "", "plain.bin"}, {20, "plain.bin", "", "second.bin"},
        {70, "empty.txt", "Docs\\Empty", "empty.txt"}, {300, "standard.hol", "Standard", "standard.hol"},
        {12, nullptr, "", "hoold.dll"}, {63, nullptr, "", "hovistrel.ini"}, {909, nullptr, "Other", "other.txt"},
    };
    std::string numbers, description = "file = [\n";
    for (int i = 0; i < 30000; ++i) numbers += "line " + std::to_string(i) + "\n";
    for (const auto& [name, size] :
         {std::pair{"hovistrel.exe", 999999}, {"standard.hol", 5000}, {"plain.bin", 700}, {"empty.txt", 0}})
        write(dir / "pkg" / name, numbers.substr(0, size));
    for (const Described& d : described)
        description += "  {directory = " + std::to_string(d.id) + (d.source ? ", source = '" + std::string(d.source) + "'" : "")
                       + ", subfolder = '" + d.subFolder + "', name = '" + d.name + "'},\n";
    description += "]\nshortcut = [{target = 'hovistrel.exe', name = 'Vistrel 6'},\n"
                   "  {target = 4, icon_directory = 301, icon = 'Standard\\standard.hol', name = 'Lib', arguments = '-lib'}]\n"
                   "[product]\nname = 'Vistrel 6'\nlabel = 'Vistrel Caf\xC3\xA9'\ncompile_date = 2024-05-17\n";
    ASSERT_EQ(build(description).code, 0);
    data = readAll(out / "_000000_");
    const std::size_t files = 5 + std::size(described);
    ASSERT_EQ(data.size(), kSetupHeaderSize + files * kFileRecordSize + 2 * kShortcutRecordSize);
    const SetupDataHeader h = at<SetupDataHeader>(0);
    EXPECT_EQ(field(h.magic, 32) + field(h.compileDate, 32) + field(h.productName, 128) + field(h.productLabel, 128),
              std::string(kSetupDataMagic) + "2024-05-17" + "Vistrel 6" + "Vistrel Caf\xE9");   // the UTF-8 became ANSI
    ASSERT_EQ(h.fileCount * 10 + h.shortcutCount, int(files) * 10 + 2);

    // Record 0 is the data file itself; records 1 to 4 are the program's own files, plain members
    // with a copy beside the data file; the described files follow.
    EXPECT_EQ(field(record(0).fileName, 64), "hosetup.dat");
    EXPECT_EQ(record(0).transferSize, data.size());
    std::vector<Described> expected;
    for (const char* own : kOwnFiles) expected.push_back({0, own, "", own});
    expected.insert(expected.end(), std::begin(described), std::end(described));
    for (std::size_t i = 1; i <= expected.size(); ++i) {
        const Described& d = expected[i - 1];
        const FileRecord r = record(i);
        const fs::path packed = out / member(i);
        SCOPED_TRACE(d.name);
        EXPECT_EQ(std::to_string(r.directoryId) + " " + field(r.subFolder, 64) + "\\" + field(r.fileName, 64),
                  std::to_string(d.id) + " " + d.subFolder + "\\" + d.name);
        if (!d.source) {
            EXPECT_EQ(r.size + r.transferSize, 0u);
            EXPECT_FALSE(fs::exists(packed));
            continue;
        }
        const std::string source = readAll(dir / (d.id == 0 ? "program" : "pkg") / d.source);
        EXPECT_EQ(r.size, source.size());
        EXPECT_EQ(r.transferSize, fs::file_size(packed));
        if (d.id == 0) {
            EXPECT_EQ(readAll(out / d.name), source);
        }
        if (d.id < 10) {
            EXPECT_EQ(readAll(packed), source);
            continue;
        }
        // A packed member passes unzip's test and holds exactly the one file, under its target name.
        EXPECT_EQ(shell("unzip -t " + packed.string()).code, 0);
        EXPECT_EQ(shell("unzip -Z1 " + packed.string()).out, std::string(d.name) + "\n");
        EXPECT_TRUE(shell("unzip -p " + packed.string()).out == source);
    }
    // The data file, four own files with their copies and five members: no part files left over.
    EXPECT_EQ(std::distance(fs::directory_iterator(out), fs::directory_iterator()), 14);

    // "hopack list" shows each record with its member and each shortcut (by name, with the target's
    // own icon; by index, where description file 4 is record 9), and finds missing and wrong members.
    Result list = hopack("list " + out.string());
    ASSERT_EQ(list.code, 0) << list.err;
    const std::string listing = std::regex_replace(list.out, std::regex(" +"), " ");
    EXPECT_NE(listing.find("\n 8 70 packed 0 " + std::to_string(fs::file_size(out / "_000080_")) +
                           " _000080_ USERDATA Docs\\Empty empty.txt\n 9 300 packed 5000 "), std::string::npos) << listing;
    EXPECT_NE(listing.find("\n 11 63 backup 0 0 - SETTINGS - hovistrel.ini\n"), std::string::npos) << listing;
    EXPECT_NE(listing.find("\n 0 5 hovistrel.exe 10 INSTALL hovistrel.exe Vistrel 6 -\n 1 9 standard.hol 301 LIBRARY "
                           "Standard\\standard.hol Lib -lib\n"), std::string::npos) << listing;
    fs::remove(out / "_000050_");
    write(out / "_000070_", "not the member");
    list = hopack("list " + out.string());
    EXPECT_EQ(list.code, 1);
    EXPECT_NE(list.err.find("record 5: member _000050_ is missing"), std::string::npos) << list.err;
    EXPECT_NE(list.err.find("record 7: member _000070_ holds 14 bytes"), std::string::npos) << list.err;
}

// A faulty description is refused (exit code 1) naming its line or entry; the output folder never looks
// like a finished distribution, and one that holds something else is left as it is.
TEST_F(Hopack, FaultyDescriptionsAreRefusedByLine)
{
    const std::string file = kProduct + "[[file]]\nsource = \"a.txt\"\ndirectory = 10\n";
    const std::string date = "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = ";
    const std::string sign = kProduct + "sign_command = ";
    const struct {
        std::string description, message;
        bool foreignFile = false;
        std::string where = "package.toml";
    } kCases[] = {
        {kProduct + "[[file]]\nsource = \"a.txt\"\ndirectory = 15\n", ":5: file 0 (\"a.txt\"): unknown directory identifier 15"},
        {file + "name = \"" + std::string(64, 'x') + "\"\n", ":8: file 0 (\"a.txt\"): \"name\" is 64 characters long"},
        {file + "name = \"a:b.txt\"\n", ":8: file 0 (\"a.txt\"): the name holds a reserved character (< > : \" / \\ | ? *)"},
        {file + "subfolder = \"Lib\\\\..\\\\Other\"\n", ":8: file 0 (\"a.txt\"): the subfolder holds \"..\""},
        {kProduct + "[[file]]\nsource = \"nothere.txt\"\ndirectory = 10\n", ":5: file 0 (\"nothere.txt\"): source file"},
        {file + "[[shortcut]]\ntarget = \"nothere.exe\"\nname = \"S\"\n",
         ": shortcut 0 (\"S\"): target \"nothere.exe\" is not a file of the package"},
        {file + "subfolder = \"A\"\n[[file]]\nsource = \"a.txt\"\ndirectory = 10\nsubfolder = \"B\"\n[[shortcut]]\ntarget = \"a.txt\"\nname = \"S\"\n",
         ": shortcut 0 (\"S\"): target \"a.txt\" names several files"},
        {file + "[[file]]\nname = \"old.dll\"\ndirectory = 12\n[[shortcut]]\ntarget = 1\nname = \"S\"\n",
         ": shortcut 0 (\"S\"): target 1 is a delete record, not a file of the package"},
        {date + "\"2024-6-01\"\n", ":4: [product]: compile_date is not a date"},
        {date + "\"2023-02-29\"\n", ":4: [product]: compile_date is not a date"},
        {file, "holds \"notes.txt\"", true, ""},
        {sign + "\"sign\"\n", ":5: [product]: sign_command holds no $f"},
        {sign + "\"false $f\"\n", ": the signing command failed (exit code 1)", false, "holang.dll"},
        {sign + "\"exit 3; $f\"\n", ": the signing command failed (exit code 3)", false, "holang.dll"},
        {sign + "\"true $f\"\n", ": the signing command left the file unchanged", false, "holang.dll"},
        {sign + "\"rm $f\"\n", ": the signing command left no file at", false, "holang.dll"},
        {kProduct + "sign_product = true\n", "signing the product's files needs a signing command", false, ""},
    };
    write(dir / "pkg/a.txt", "a\n");
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.message);
        fs::remove_all(out);
        if (c.foreignFile) write(out / "notes.txt", "mine");
        const Result run = build(c.description);
        EXPECT_EQ(run.code, 1);
        EXPECT_NE(run.err.find(c.where + c.message), std::string::npos) << run.err;
        EXPECT_FALSE(fs::exists(out / "_000000_"));
        EXPECT_EQ(fs::exists(out / "notes.txt"), c.foreignFile);
        EXPECT_TRUE(fs::is_empty(dir / "tmp")) << "signed copies left behind";
        EXPECT_EQ(readAll(dir / "program/holang.dll"), "own file holang.dll");
    }
}

// The setup program's own code files, and with sign_product the package's .exe and .dll files, are
// signed (certificate made here) on copies: beside the data file and in the members osslsigncode
// accepts them, the same bytes in both places, the inputs unchanged, the other files unsigned.
TEST_F(Hopack, SigningCommandSignsCopiesOfCodeFiles)
{
    const fs::path built = fs::path(HO_DIST_DIR);
    for (const char* own : {"hosetup.exe", "holang.dll", "hounzip.exe"})
        if (!fs::exists(built / own)) GTEST_SKIP() << "needs the Windows build's " << own << " in " << built;
    for (const char* own : {"hosetup.exe", "holang.dll", "hounzip.exe"})
        fs::copy_file(built / own, dir / "program" / own, fs::copy_options::overwrite_existing);
    fs::create_directories(dir / "pkg");
    fs::copy_file(built / "hounzip.exe", dir / "pkg/tool.exe");
    fs::copy_file(built / "holang.dll", dir / "pkg/tool.dll");
    write(dir / "pkg/readme.txt", "not signed\n");
    const std::string key = (dir / "key.pem").string(), cert = (dir / "cert.pem").string();
    ASSERT_EQ(shell("openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=hopack-test -addext "
                    "extendedKeyUsage=codeSigning -keyout " + key + " -out " + cert).code, 0);
    const std::string command = "osslsigncode sign -certs " + cert + " -key " + key + " -in $f -out $f.signed && mv $f.signed $f";
    const std::string files = "[[file]]\nsource = \"tool.exe\"\ndirectory = 1\n[[file]]\nsource = \"tool.dll\"\ndirectory = 10\n"
                              "[[file]]\nsource = \"readme.txt\"\ndirectory = 11\n";
    std::map<std::string, std::string> inputs;
    for (const char* name : {"program/hosetup.exe", "program/holang.dll", "program/hounzip.exe", "pkg/tool.exe", "pkg/tool.dll"})
        inputs[name] = readAll(dir / name);
    const auto verifies = [&](const fs::path& file) {
        return shell("osslsigncode verify -CAfile " + cert + " -in " + file.string()).code == 0;
    };
    const struct {
        const char* name;
        std::string description, options;
        bool productSigned;
    } kCases[] = {
        {"command line, own files only", kProduct + files, "--sign-command '" + command + "'", false},
        {"description, with the product", kProduct + "sign_command = '" + command + "'\nsign_product = true\n" + files, "", true},
        {"command line over the description", kProduct + "sign_command = 'false $f'\n" + files,
         "--sign-product --sign-command '" + command + "'", true},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const Result run = build(c.description, c.options);
        ASSERT_EQ(run.code, 0) << run.err;
        EXPECT_TRUE(fs::is_empty(dir / "tmp")) << "signed copies left behind";
        // Records 1 to 4 are the own files (plain members), 5 tool.exe (plain), 6 tool.dll (packed).
        for (const auto& [index, name] : {std::pair{1, "holang.dll"}, {3, "hosetup.exe"}, {4, "hounzip.exe"}}) {
            SCOPED_TRACE(name);
            EXPECT_TRUE(verifies(out / name));
            EXPECT_EQ(readAll(out / member(index)), readAll(out / name));
        }
        write(dir / "tool.dll", shell("unzip -p " + (out / member(6)).string()).out);
        EXPECT_EQ(verifies(out / member(5)), c.productSigned);
        EXPECT_EQ(verifies(dir / "tool.dll"), c.productSigned);
        EXPECT_EQ(readAll(dir / "tool.dll") == inputs["pkg/tool.dll"], !c.productSigned);
        EXPECT_EQ(shell("unzip -p " + (out / member(7)).string()).out, "not signed\n");
        for (const auto& [name, bytes] : inputs) EXPECT_TRUE(readAll(dir / name) == bytes) << name << " was changed";
    }
}

// A file of 4 GiB + 1 byte needs Zip64 sizes. It is sparse (made with truncate), but deflating and
// testing 4 GiB takes a while: it runs only with HOPACK_TEST_ZIP64=1.
TEST_F(Hopack, Zip64MemberOfFourGibibytesAndOneByte)
{
    if (std::string(std::getenv("HOPACK_TEST_ZIP64") ? std::getenv("HOPACK_TEST_ZIP64") : "") != "1")
        GTEST_SKIP() << "set HOPACK_TEST_ZIP64=1 to run it";
    const std::uint64_t size = (std::uint64_t(4) << 30) + 1;
    ASSERT_EQ(shell("mkdir -p " + (dir / "pkg").string() + " && truncate -s " + std::to_string(size) + " " +
                    (dir / "pkg/big.dat").string()).code, 0);
    ASSERT_EQ(build(kProduct + "[[file]]\nsource = \"big.dat\"\ndirectory = 30\n").code, 0);
    data = readAll(out / "_000000_");
    const fs::path packed = out / "_000050_";
    EXPECT_EQ(record(5).size, size);
    EXPECT_EQ(shell("unzip -t " + packed.string()).code, 0);
    EXPECT_NE(shell("unzip -v " + packed.string()).out.find(std::to_string(size)), std::string::npos);
}

} // namespace
