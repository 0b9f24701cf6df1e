// Builds packages and checks every byte that the setup program will read: the data file's header
// and records, the plain members, and the packed members through Info-ZIP's unzip.
#include "hopack_test_support.h"

namespace {

const char* const kOwnFiles[] = {"holang.dll", "hosetup.chm", "hosetup.exe", "hounzip.exe"};

struct Expected {
    std::uint32_t id;
    const char* source;    // nullptr: a record without a file
    const char* subFolder;
    const char* name;
};

// The files of the package below, in description order.
const Expected kFiles[] = {
    {10, "bin/hovistrel.exe", "", "hovistrel.exe"},
    {1, "bin/random.bin", "", "plain.bin"},
    {20, "bin/random.bin", "", "random.bin"},
    {70, "empty/empty.txt", "Docs\\Empty", "empty.txt"},
    {300, "lib/standard.hol", "Standard", "standard.hol"},
    {64, "settings/hovistrel.ini", "", "hovistrel.ini"},
    {12, nullptr, "", "hoold.dll"},
    {63, nullptr, "", "hovistrel.ini"},
    {909, nullptr, "Other", "other.txt"},
};

const char kDescription[] = R"(
[product]
name = "Harwick-Orbel\\Vistrel 6"
label = "Vistrel 6.2 Caf\u00e9"
compile_date = "2024-05-17"

[[file]]
source = "bin/hovistrel.exe"
directory = 10

[[file]]
source = "bin/random.bin"
directory = 1
name = "plain.bin"

[[file]]
source = "bin/random.bin"
directory = 20

[[file]]
source = "empty/empty.txt"
directory = 70
subfolder = "Docs\\Empty"

[[file]]
source = "lib/standard.hol"
directory = 300
subfolder = "Standard"

[[file]]
source = "settings/hovistrel.ini"
directory = 64

[[file]]
directory = 12
name = "hoold.dll"

[[file]]
directory = 63
name = "hovistrel.ini"

[[file]]
directory = 909
subfolder = "Other"
name = "other.txt"

[[shortcut]]
target = "hovistrel.exe"
name = "Vistrel 6"

[[shortcut]]
target = 4
icon_directory = 301
icon = "Standard\\standard.hol"
name = "Standard library"
arguments = "-lib \"Standard\""
)";

class BuildTest : public HopackTest {
protected:
    void MakePackage()
    {
        std::string numbers;
        for (int i = 0; i < 30000; ++i) numbers += "line " + std::to_string(i) + "\n";
        WriteText(dir / "pkg/bin/hovistrel.exe", numbers);
        WriteRandom(dir / "pkg/bin/random.bin", 70000, 1);
        WriteText(dir / "pkg/empty/empty.txt", "");
        WriteText(dir / "pkg/lib/standard.hol", numbers.substr(0, 5000));
        WriteText(dir / "pkg/settings/hovistrel.ini", "[units]\nlength=mm\n");
        WriteText(dir / "pkg/package.toml", kDescription);
    }
    RunResult Build()
    {
        return Hopack("build " + (dir / "pkg/package.toml").string() + " " + (dir / "out").string() +
                      " --program " + programDir.string());
    }
    // A packed member must pass unzip's test and hold exactly the one file under its target name.
    void ExpectPackedMember(const fs::path& member, const std::string& name, const fs::path& source)
    {
        SCOPED_TRACE(member.string());
        const RunResult test = RunShell("unzip -t " + member.string());
        EXPECT_EQ(test.exitCode, 0) << test.out << test.err;
        EXPECT_EQ(RunShell("unzip -Z1 " + member.string()).out, name + "\n");
        const RunResult extracted = RunShell("unzip -p " + member.string());
        EXPECT_EQ(extracted.exitCode, 0);
        EXPECT_TRUE(extracted.out == ReadAll(source)) << "unpacked bytes differ from " << source;
    }
};

TEST_F(BuildTest, WritesEveryRecordAndMember)
{
    MakePackage();
    const RunResult run = Build();
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.err, "");  // the ignored record stands last: no warning

    DataFile data;
    ASSERT_TRUE(ReadDataFile(dir / "out/_000000_", data));
    const std::size_t fileCount = 1 + 4 + std::size(kFiles);
    EXPECT_EQ(Text(data.header.magic, 32), "Harwick-Orbel DAT 6140");
    EXPECT_EQ(Text(data.header.compileDate, 32), "2024-05-17");
    EXPECT_EQ(Text(data.header.productName, 128), "Harwick-Orbel\\Vistrel 6");
    EXPECT_EQ(Text(data.header.productLabel, 128), "Vistrel 6.2 Caf\xE9");  // UTF-8 became ANSI
    ASSERT_EQ(data.header.fileCount, std::int32_t(fileCount));
    ASSERT_EQ(data.header.shortcutCount, 2);
    EXPECT_EQ(data.bytes, 328 + fileCount * 148 + 2 * 200);

    // Record 0 is the data file itself, installed as hosetup.dat and sized by its own length.
    EXPECT_EQ(data.files[0].directoryId, 0u);
    EXPECT_EQ(Text(data.files[0].fileName, 64), "hosetup.dat");
    EXPECT_EQ(Text(data.files[0].subFolder, 64), "");
    EXPECT_EQ(data.files[0].size, data.bytes);
    EXPECT_EQ(data.files[0].transferSize, data.bytes);

    // The program's own files: records 1 to 4, plain members, and copies beside the data file.
    for (std::size_t i = 0; i < 4; ++i) {
        const FileRecord& r = data.files[1 + i];
        SCOPED_TRACE(kOwnFiles[i]);
        EXPECT_EQ(r.directoryId, 0u);
        EXPECT_EQ(Text(r.fileName, 64), kOwnFiles[i]);
        const std::string own = ReadAll(programDir / kOwnFiles[i]);
        EXPECT_EQ(r.size, own.size());
        EXPECT_EQ(r.transferSize, own.size());
        EXPECT_EQ(ReadAll(dir / "out" / MemberName(1 + i)), own);
        EXPECT_EQ(ReadAll(dir / "out" / kOwnFiles[i]), own);
    }

    std::vector<std::string> expectedNames = {"_000000_"};
    for (const char* own : kOwnFiles) expectedNames.push_back(own);
    for (std::size_t i = 1; i < 5; ++i) expectedNames.push_back(MemberName(i));
    for (std::size_t k = 0; k < std::size(kFiles); ++k) {
        const std::size_t index = 5 + k;
        const Expected& e = kFiles[k];
        const FileRecord& r = data.files[index];
        SCOPED_TRACE(std::string("record ") + std::to_string(index) + " " + e.name);
        EXPECT_EQ(r.directoryId, e.id);
        EXPECT_EQ(Text(r.fileName, 64), e.name);
        EXPECT_EQ(Text(r.subFolder, 64), e.subFolder);
        const fs::path member = dir / "out" / MemberName(index);
        if (!e.source) {
            EXPECT_EQ(r.size, 0u);
            EXPECT_EQ(r.transferSize, 0u);
            EXPECT_FALSE(fs::exists(member));
            continue;
        }
        expectedNames.push_back(MemberName(index));
        const fs::path source = dir / "pkg" / e.source;
        EXPECT_EQ(r.size, fs::file_size(source));
        ASSERT_TRUE(fs::exists(member));
        EXPECT_EQ(r.transferSize, fs::file_size(member));
        if (e.id < 10) EXPECT_EQ(ReadAll(member), ReadAll(source));
        else ExpectPackedMember(member, e.name, source);
    }
    std::sort(expectedNames.begin(), expectedNames.end());
    EXPECT_EQ(FolderNames(dir / "out"), expectedNames);  // nothing else, no leftover part files

    // Compressible text is deflated; random bytes do not shrink and are stored.
    EXPECT_LT(data.files[5].transferSize, data.files[5].size / 2);
    EXPECT_NE(RunShell("unzip -v " + (dir / "out" / MemberName(5)).string()).out.find("Defl"), std::string::npos);
    EXPECT_NE(RunShell("unzip -v " + (dir / "out" / MemberName(7)).string()).out.find("Stored"), std::string::npos);

    const ShortcutRecord& s0 = data.shortcuts[0];
    EXPECT_EQ(s0.fileIndex, 5u);
    EXPECT_EQ(s0.iconDirectoryId, 10u);  // the target's own icon
    EXPECT_EQ(Text(s0.iconPath, 64), "hovistrel.exe");
    EXPECT_EQ(Text(s0.name, 64), "Vistrel 6");
    EXPECT_EQ(Text(s0.arguments, 64), "");
    const ShortcutRecord& s1 = data.shortcuts[1];
    EXPECT_EQ(s1.fileIndex, 9u);  // description file 4 follows record 0 and the four own files
    EXPECT_EQ(s1.iconDirectoryId, 301u);
    EXPECT_EQ(Text(s1.iconPath, 64), "Standard\\standard.hol");
    EXPECT_EQ(Text(s1.name, 64), "Standard library");
    EXPECT_EQ(Text(s1.arguments, 64), "-lib \"Standard\"");
}

TEST_F(BuildTest, RebuildReplacesAnEarlierDistribution)
{
    MakePackage();
    ASSERT_EQ(Build().exitCode, 0);
    // A smaller package into the same folder leaves none of the earlier members behind.
    WriteText(dir / "pkg/package.toml", "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2024-06-01\"\n"
                                        "[[file]]\nsource = \"bin/hovistrel.exe\"\ndirectory = 10\n");
    const RunResult run = Build();
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(FolderNames(dir / "out"),
              (std::vector<std::string>{"_000000_", "_000010_", "_000020_", "_000030_", "_000040_",
                                        "_000050_", "holang.dll", "hosetup.chm", "hosetup.exe", "hounzip.exe"}));
    DataFile data;
    ASSERT_TRUE(ReadDataFile(dir / "out/_000000_", data));
    EXPECT_EQ(data.header.fileCount, 6);
}

TEST_F(BuildTest, ProgramFileListedInTheDescriptionIsNotAddedTwice)
{
    WriteText(dir / "pkg/newsetup.exe", "setup program of this release\n");
    WriteText(dir / "pkg/package.toml",
              "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2024-06-01\"\n"
              "[[file]]\nsource = \"newsetup.exe\"\nname = \"HOSETUP.EXE\"\ndirectory = 1\n");
    const RunResult run = Build();
    ASSERT_EQ(run.exitCode, 0) << run.err;
    DataFile data;
    ASSERT_TRUE(ReadDataFile(dir / "out/_000000_", data));
    ASSERT_EQ(data.header.fileCount, 5);  // data file, three other own files, the listed one
    int setups = 0;
    for (const FileRecord& r : data.files) setups += Text(r.fileName, 64) == "HOSETUP.EXE" || Text(r.fileName, 64) == "hosetup.exe";
    EXPECT_EQ(setups, 1);
    // The copy beside the data file is the one the package installs.
    EXPECT_EQ(ReadAll(dir / "out/hosetup.exe"), "setup program of this release\n");
}

TEST_F(BuildTest, IgnoredRecordBeforeTheLastTransferableOneIsWarnedAbout)
{
    WriteText(dir / "pkg/a.txt", "a\n");
    WriteText(dir / "pkg/package.toml",
              "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2024-06-01\"\n"
              "[[file]]\ndirectory = 19\nname = \"skip.txt\"\n"
              "[[file]]\nsource = \"a.txt\"\ndirectory = 10\n"
              "[[file]]\ndirectory = 29\nname = \"last.txt\"\n");
    const RunResult run = Build();
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.err.find("warning: record 5 (identifier 19)"), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find("record 7"), std::string::npos) << "the last record is no problem: " << run.err;
    const RunResult list = Hopack("list " + (dir / "out").string());
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_NE(list.err.find("warning: record 5"), std::string::npos);
}

} // namespace
