// A file of 4 GiB + 1 byte needs Zip64 sizes. The file is sparse (made with truncate), so the test
// costs no disk space, but deflating and testing 4 GiB takes a while: it runs only when
// HOPACK_TEST_ZIP64=1 is set, and is skipped where the temporary file system has no sparse files.
#include "hopack_test_support.h"

#include <cstdlib>
#include <sys/stat.h>

namespace {

class Zip64Test : public HopackTest {};

TEST_F(Zip64Test, FourGibibytesAndOneByte)
{
    const char* wanted = std::getenv("HOPACK_TEST_ZIP64");
    if (!wanted || std::string(wanted) != "1") GTEST_SKIP() << "set HOPACK_TEST_ZIP64=1 to run it";
    const std::uint64_t size = (std::uint64_t(4) << 30) + 1;
    const fs::path big = dir / "pkg/big.dat";
    fs::create_directories(big.parent_path());
    ASSERT_EQ(RunShell("truncate -s " + std::to_string(size) + " " + big.string()).exitCode, 0);
    struct stat info {};
    ASSERT_EQ(stat(big.c_str(), &info), 0);
    if (std::uint64_t(info.st_blocks) * 512 >= size / 2) GTEST_SKIP() << "no sparse files here";

    WriteText(dir / "pkg/package.toml", "[product]\nname = \"P\"\nlabel = \"L\"\ncompile_date = \"2024-06-01\"\n"
                                        "[[file]]\nsource = \"big.dat\"\ndirectory = 30\n");
    const RunResult run = Hopack("build " + (dir / "pkg/package.toml").string() + " " +
                                 (dir / "out").string() + " --program " + programDir.string());
    ASSERT_EQ(run.exitCode, 0) << run.err;
    DataFile data;
    ASSERT_TRUE(ReadDataFile(dir / "out/_000000_", data));
    ASSERT_EQ(data.header.fileCount, 6);
    EXPECT_EQ(data.files[5].size, size);
    const fs::path member = dir / "out/_000050_";
    EXPECT_EQ(data.files[5].transferSize, fs::file_size(member));
    EXPECT_LT(fs::file_size(member), size / 100);  // zeros deflate well
    const RunResult test = RunShell("unzip -t " + member.string());
    EXPECT_EQ(test.exitCode, 0) << test.out << test.err;
    const RunResult verbose = RunShell("unzip -v " + member.string());
    EXPECT_NE(verbose.out.find(std::to_string(size)), std::string::npos) << verbose.out;
}

} // namespace
