// A distribution made by the real hopack.exe, read back as the installation reads it: records
// resolved, plain members byte-equal, packed members expanded by hounzip.exe through Unpack.
#include "setup_fixture.h"

#include "install/install.h"
#include "packages.h"

#include <algorithm>

namespace {

using PackageRoundTrip = SetupFixture;

TEST_F(PackageRoundTrip, EveryRecordResolvesAndEveryMemberHoldsItsFile)
{
    Package package;
    package.files = {
        {"bin/hovistrel.exe", 10, "", "", "main program"},
        {"bin/readme.txt", 1, "", "", "plain text, stored as it is"},
        {"lib/standard.hol", 40, "Standard", "", "library"},
        {"help/hovistrel.chm", 210, "", "", std::string(70000, 'h')},   // big enough to be deflated
    };
    const struct { const char* name; const char* target; bool packed; } expected[] = {
        {"hovistrel.exe", "C:\\Inst\\hovistrel.exe", true},
        {"readme.txt", "C:\\Inst\\readme.txt", false},
        {"standard.hol", "D:\\Lib\\Standard\\standard.hol", true},
        {"hovistrel.chm", "C:\\Inst\\Help\\hovistrel.chm", true},
    };
    ASSERT_EQ(buildPackage(package, root_ + "src\\", root_ + "dist\\"), 0u);
    HOI_CopyA(g_setup.installFolder, kPathCapacity, "C:\\Inst\\");
    HOI_CopyA(g_setup.libraryFolder, kPathCapacity, "D:\\Lib\\");
    HOI_CopyA(g_setup.programFolder, kPathCapacity, testBinFolder().c_str());   // hounzip.exe lies there
    ASSERT_TRUE(readSetupDataFile((root_ + "dist\\_000000_").c_str()));
    ASSERT_EQ(g_setup.fileCount, 9);   // the data file, the program's four files and these four

    for (std::size_t n = 0; n < package.files.size(); ++n) {
        const auto& e = expected[n];
        SCOPED_TRACE(e.name);
        const FileRecord* records = g_setup.fileRecords;
        auto named = [&](const FileRecord& record) { return std::string(record.fileName) == e.name; };
        const int index = static_cast<int>(std::find_if(records, records + g_setup.fileCount, named) - records);
        ASSERT_LT(index, g_setup.fileCount);
        char path[kPathCapacity];
        ASSERT_EQ(resolveFilePath(index, path, nullptr, nullptr, nullptr), kPathComposed);
        EXPECT_STREQ(path, e.target);

        char member[kMemberNameCapacity];
        formatMemberName(index, member, sizeof member);
        const std::string memberPath = root_ + "dist\\" + member;
        const std::string& source = package.files[n].content;
        const std::string stored = readFile(memberPath);
        EXPECT_EQ(g_setup.fileRecords[index].size, source.size());
        EXPECT_EQ(g_setup.fileRecords[index].transferSize, stored.size());
        EXPECT_EQ(stored == source, !e.packed) << "a plain member holds the file as it is";
        if (e.packed) {
            ASSERT_TRUE(Unpack(memberPath.c_str(), (root_ + e.name).c_str(), ""));
            EXPECT_EQ(readFile(root_ + e.name), source);
        }
    }
}

} // namespace
