// "hopack list" shows the header, records and shortcuts, and finds missing or wrong members.
#include "hopack_test_support.h"

#include <sstream>

namespace {

class ListTest : public HopackTest {
protected:
    void SetUp() override
    {
        HopackTest::SetUp();
        std::string text;
        for (int i = 0; i < 2000; ++i) text += "row " + std::to_string(i) + "\n";
        WriteText(dir / "pkg/hovistrel.exe", text);
        WriteText(dir / "pkg/fonts/ho.fnt", "font\n");
        WriteText(dir / "pkg/package.toml",
                  "[product]\nname = \"Harwick-Orbel\\\\Vistrel 6\"\nlabel = \"Vistrel 6.2\"\n"
                  "compile_date = \"2024-05-17\"\n"
                  "[[file]]\nsource = \"hovistrel.exe\"\ndirectory = 10\n"
                  "[[file]]\nsource = \"fonts/ho.fnt\"\ndirectory = 50\nsubfolder = \"Extra\"\n"
                  "[[file]]\ndirectory = 203\nname = \"old.hod\"\n"
                  "[[shortcut]]\ntarget = \"hovistrel.exe\"\nname = \"Vistrel 6\"\narguments = \"-new\"\n");
        const RunResult run = Hopack("build " + (dir / "pkg/package.toml").string() + " " +
                                     (dir / "out").string() + " --program " + programDir.string());
        ASSERT_EQ(run.exitCode, 0) << run.err;
    }
    // The listing line that ends with the given name, split into its columns.
    static std::vector<std::string> Row(const std::string& listing, const std::string& name)
    {
        std::istringstream lines(listing);
        for (std::string line; std::getline(lines, line);) {
            if (line.size() < name.size() || line.compare(line.size() - name.size(), name.size(), name) != 0) continue;
            std::istringstream words(line);
            std::vector<std::string> columns;
            for (std::string word; words >> word;) columns.push_back(word);
            return columns;
        }
        return {};
    }
};

TEST_F(ListTest, ShowsHeaderRecordsAndShortcuts)
{
    const RunResult run = Hopack("list " + (dir / "out").string());
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::string& out = run.out;
    EXPECT_NE(out.find("Magic          Harwick-Orbel DAT 6140\n"), std::string::npos) << out;
    EXPECT_NE(out.find("Compile date   2024-05-17\n"), std::string::npos);
    EXPECT_NE(out.find("Product name   Harwick-Orbel\\Vistrel 6\n"), std::string::npos);
    EXPECT_NE(out.find("Product label  Vistrel 6.2\n"), std::string::npos);
    EXPECT_NE(out.find("Files          8\n"), std::string::npos);
    EXPECT_NE(out.find("Shortcuts      1\n"), std::string::npos);

    DataFile data;
    ASSERT_TRUE(ReadDataFile(dir / "out/_000000_", data));
    EXPECT_EQ(Row(out, "hosetup.dat"),
              (std::vector<std::string>{"0", "0", "plain", std::to_string(data.bytes), std::to_string(data.bytes),
                                        "_000000_", "INSTALL", "-", "hosetup.dat"}));
    EXPECT_EQ(Row(out, "hounzip.exe"),
              (std::vector<std::string>{"4", "0", "plain", std::to_string(data.files[4].size),
                                        std::to_string(data.files[4].size), "_000040_", "INSTALL", "-", "hounzip.exe"}));
    EXPECT_EQ(Row(out, "hovistrel.exe"),
              (std::vector<std::string>{"5", "10", "packed", std::to_string(fs::file_size(dir / "pkg/hovistrel.exe")),
                                        std::to_string(fs::file_size(dir / "out/_000050_")), "_000050_",
                                        "INSTALL", "-", "hovistrel.exe"}));
    EXPECT_EQ(Row(out, "ho.fnt"),
              (std::vector<std::string>{"6", "50", "packed", "5", std::to_string(fs::file_size(dir / "out/_000060_")),
                                        "_000060_", "INSTALL\\REL4", "Extra", "ho.fnt"}));
    EXPECT_EQ(Row(out, "old.hod"),
              (std::vector<std::string>{"7", "203", "backup", "0", "0", "-", "DRAWINGS", "-", "old.hod"}));
    EXPECT_EQ(Row(out, "-new"),
              (std::vector<std::string>{"0", "5", "hovistrel.exe", "10", "INSTALL", "hovistrel.exe", "Vistrel", "6", "-new"}));
}

TEST_F(ListTest, ReportsMissingAndWrongMembers)
{
    fs::remove(dir / "out/_000050_");
    WriteText(dir / "out/_000060_", "not the member");
    const RunResult run = Hopack("list " + (dir / "out").string());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("record 5: member _000050_ is missing"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("record 6: member _000060_ holds 14 bytes"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("_000050_ MISSING"), std::string::npos);
}

TEST_F(ListTest, RefusesWhatIsNoDataFile)
{
    std::string bytes = ReadAll(dir / "out/_000000_");
    WriteText(dir / "out/_000000_", bytes.substr(0, bytes.size() - 1));
    RunResult run = Hopack("list " + (dir / "out").string());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("its counts need " + std::to_string(bytes.size())), std::string::npos) << run.err;

    bytes[0] = 'X';
    WriteText(dir / "out/_000000_", bytes);
    run = Hopack("list " + (dir / "out").string());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("does not start with \"Harwick-Orbel DAT 6140\""), std::string::npos) << run.err;
}

} // namespace
