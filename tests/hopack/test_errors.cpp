// Every faulty description is refused with exit code 1 and a message that names the description,
// the entry and the problem, and the output folder never looks like a finished distribution.
#include "hopack_test_support.h"

namespace {

const std::string kProduct = "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2024-06-01\"\n";
const std::string kFileA = "[[file]]\nsource = \"a.txt\"\ndirectory = 10\n";
const std::string k64(64, 'x');

struct Case {
    const char* what;
    std::string description;
    std::string message;   // expected in stderr
};

const Case kCases[] = {
    {"unknown identifier", kProduct + "[[file]]\nsource = \"a.txt\"\ndirectory = 15\n",
     "file 0 (\"a.txt\"): unknown directory identifier 15"},
    {"unknown identifier of a backup entry", kProduct + "[[file]]\nname = \"a.txt\"\ndirectory = 13\n",
     "file 0: unknown directory identifier 13"},
    {"file name too long", kProduct + kFileA + "name = \"" + k64 + "\"\n",
     "file 0 (\"a.txt\"): \"name\" is 64 characters long; at most 63 fit"},
    {"subfolder too long", kProduct + kFileA + "subfolder = \"" + k64 + "\"\n",
     "\"subfolder\" is 64 characters long; at most 63 fit"},
    {"product name too long", "[product]\nname = \"" + std::string(128, 'p') + "\"\nlabel = \"L\"\ncompile_date = \"2024-06-01\"\n",
     "[product]: \"name\" is 128 characters long; at most 127 fit"},
    {"shortcut arguments too long", kProduct + kFileA + "[[shortcut]]\ntarget = 0\nname = \"S\"\narguments = \"" + k64 + "\"\n",
     "shortcut 0 (\"S\"): \"arguments\" is 64 characters long"},
    {"missing source", kProduct + "[[file]]\nsource = \"nothere.txt\"\ndirectory = 10\n",
     "file 0 (\"nothere.txt\"): source file"},
    {"file without source", kProduct + "[[file]]\nname = \"b.txt\"\ndirectory = 40\n",
     "file 0: \"source\" is missing: directory identifier 40 installs a file"},
    {"delete record with a source", kProduct + "[[file]]\nsource = \"a.txt\"\ndirectory = 12\n",
     "a delete record carries no file"},
    {"shortcut to an unknown file", kProduct + kFileA + "[[shortcut]]\ntarget = \"nothere.exe\"\nname = \"S\"\n",
     "shortcut 0 (\"S\"): target \"nothere.exe\" is not a file of the package"},
    {"shortcut to a deletion", kProduct + kFileA + "[[file]]\nname = \"old.dll\"\ndirectory = 12\n"
                               "[[shortcut]]\ntarget = 1\nname = \"S\"\n",
     "target 1 is a delete record, not a file of the package"},
    {"shortcut index out of range", kProduct + kFileA + "[[shortcut]]\ntarget = 5\nname = \"S\"\n",
     "target 5 is not a file of the package"},
    {"icon place not allowed", kProduct + kFileA + "[[shortcut]]\ntarget = 0\nname = \"S\"\nicon_directory = 12\nicon = \"a.txt\"\n",
     "shortcut 0 (\"S\"): 12 is not an allowed icon place"},
    {"target path too long for the icon", kProduct + kFileA + "subfolder = \"" + std::string(40, 's') +
                                          "\"\nname = \"" + std::string(30, 'n') + "\"\n[[shortcut]]\ntarget = 0\nname = \"S\"\n",
     "shortcut 0 (\"S\"): the target's path is longer than 63 characters"},
    {"date not padded", "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2024-6-01\"\n",
     "compile_date is not a date of the form YYYY-MM-DD"},
    {"date that does not exist", "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2023-02-29\"\n",
     "compile_date is not a date of the form YYYY-MM-DD"},
    {"subfolder with a leading backslash", kProduct + kFileA + "subfolder = \"\\\\Lib\"\n",
     "the subfolder starts or ends with a backslash"},
    {"subfolder with a trailing backslash", kProduct + kFileA + "subfolder = \"Lib\\\\\"\n",
     "the subfolder starts or ends with a backslash"},
    {"subfolder climbing up", kProduct + kFileA + "subfolder = \"Lib\\\\..\\\\Other\"\n",
     "the subfolder holds \"..\""},
    {"subfolder with a slash", kProduct + kFileA + "subfolder = \"Lib/Other\"\n",
     "the subfolder uses '/'"},
    {"reserved character in a name", kProduct + kFileA + "name = \"a:b.txt\"\n",
     "the name holds a reserved character"},
    {"duplicate target", kProduct + kFileA + "[[file]]\nsource = \"a.txt\"\ndirectory = 21\nname = \"A.TXT\"\n",
     "file 1 (\"a.txt\"): installs to INSTALL\\a.txt like"},
    {"target of the data file", kProduct + "[[file]]\nsource = \"a.txt\"\ndirectory = 100\nname = \"hosetup.dat\"\n",
     "installs to INSTALL\\hosetup.dat like record 0 (the data file)"},
    {"misspelt key", kProduct + kFileA + "subfoler = \"Lib\"\n", "file 0 (\"a.txt\"): unknown key \"subfoler\""},
    {"no product", kFileA, "the table [product] is missing"},
    {"character without ANSI form", "[product]\nname = \"P\"\nlabel = \"\\u4e2d\"\ncompile_date = \"2024-06-01\"\n",
     "\"label\" holds a character that has no ANSI form"},
    {"syntax error", kProduct + "[[file]\n", "package.toml:5:"},
};

class ErrorTest : public HopackTest {};

TEST_F(ErrorTest, EachFaultIsNamedAndNothingLooksFinished)
{
    WriteText(dir / "pkg/a.txt", "a\n");
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.what);
        WriteText(dir / "pkg/package.toml", c.description);
        const RunResult run = Hopack("build " + (dir / "pkg/package.toml").string() + " " +
                                     (dir / "out").string() + " --program " + programDir.string());
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("package.toml"), std::string::npos) << run.err;
        EXPECT_FALSE(fs::exists(dir / "out/_000000_"));
    }
}

TEST_F(ErrorTest, MissingProgramFileIsNamed)
{
    WriteText(dir / "pkg/a.txt", "a\n");
    WriteText(dir / "pkg/package.toml", kProduct + kFileA);
    fs::remove(programDir / "hounzip.exe");
    const RunResult run = Hopack("build " + (dir / "pkg/package.toml").string() + " " +
                                 (dir / "out").string() + " --program " + programDir.string());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find((programDir / "hounzip.exe").string() + " not found"), std::string::npos) << run.err;
    EXPECT_FALSE(fs::exists(dir / "out/_000000_"));
}

TEST_F(ErrorTest, FolderWithOtherFilesIsLeftAlone)
{
    WriteText(dir / "pkg/a.txt", "a\n");
    WriteText(dir / "pkg/package.toml", kProduct + kFileA);
    WriteText(dir / "out/notes.txt", "mine\n");
    const RunResult run = Hopack("build " + (dir / "pkg/package.toml").string() + " " +
                                 (dir / "out").string() + " --program " + programDir.string());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("holds \"notes.txt\""), std::string::npos) << run.err;
    EXPECT_EQ(FolderNames(dir / "out"), std::vector<std::string>{"notes.txt"});
}

TEST_F(ErrorTest, WrongUsageIsExplained)
{
    const RunResult run = Hopack("build only-one-argument");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.err.find("usage: hopack build DESCRIPTION OUTDIR"), std::string::npos);
}

} // namespace
