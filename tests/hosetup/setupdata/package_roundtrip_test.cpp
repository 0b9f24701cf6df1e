// A distribution made by the real hopack.exe, read back the way the installation reads it: the
// data file through readSetupDataFile, every record resolved to its target, plain members
// compared byte for byte and packed members expanded by hounzip.exe.
#include "setupdata_fixture.h"

#include "install/install.h"
#include "packages.h"
#include "process.h"

#include <fstream>
#include <sstream>

namespace setupdata_test {
namespace {

std::string contentOf(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream all;
    all << in.rdbuf();
    return all.str();
}

struct Expected {
    const char* name;
    std::string target;   // the resolved path
    bool packed;
};

class PackageRoundTrip : public SetupStateTest {};

TEST_F(PackageRoundTrip, EveryRecordResolvesAndEveryMemberHoldsItsFile)
{
    const std::string work = makeTempFolder("roundtrip");
    Package package;
    package.files = {
        {"bin/hovistrel.exe", 10, "", "", "main program"},
        {"bin/readme.txt", 1, "", "", "plain text, stored as it is"},
        {"lib/standard.hol", 40, "Standard", "", "library"},
        {"set/hovistrel.ini", 64, "", "", "[settings]"},
        {"draw/hovistrel.hod", 200, "", "", "LINE 0 0 10 10"},
        {"help/hovistrel.chm", 210, "", "", std::string(70000, 'h')},   // big enough to be deflated
        {"data/allusers.dat", 30, "", "", "common"},
    };
    ASSERT_EQ(buildPackage(package, work + "src\\", work + "dist\\"), 0u);

    HOI_CopyA(g_setup.installFolder, kPathCapacity, "C:\\Inst\\");
    HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, "C:\\Common\\");
    HOI_CopyA(g_setup.libraryFolder, kPathCapacity, "D:\\Lib\\");
    HOI_CopyA(g_setup.settingFolder, kPathCapacity, "D:\\Set\\");
    HOI_CopyA(g_setup.drawingFolder, kPathCapacity, "D:\\Draw\\");
    g_setup.optionSilent = 1;
    ASSERT_TRUE(readSetupDataFile((work + "dist\\_000000_").c_str()));
    ASSERT_EQ(g_setup.fileCount, 12);   // the data file, the program's four files and ours
    EXPECT_EQ(g_setup.shortcutCount, 0);

    const Expected expected[] = {
        {"hovistrel.exe", "C:\\Inst\\hovistrel.exe", true},
        {"readme.txt", "C:\\Inst\\readme.txt", false},
        {"standard.hol", "D:\\Lib\\Standard\\standard.hol", true},
        {"hovistrel.ini", "D:\\Set\\hovistrel.ini", true},
        {"hovistrel.hod", "D:\\Draw\\hovistrel.hod", true},
        {"hovistrel.chm", "C:\\Inst\\Help\\hovistrel.chm", true},
        {"allusers.dat", "C:\\Common\\allusers.dat", true},
    };
    HOI_CopyA(g_setup.programFolder, kPathCapacity, testBinFolder().c_str());   // hounzip.exe lies there
    const std::string unpacked = work + "unpacked\\";
    CreateDirectoryA(unpacked.c_str(), nullptr);
    for (const Expected& e : expected) {
        int index = -1;
        for (int i = 0; i < g_setup.fileCount; ++i) {
            if (std::string(g_setup.fileRecords[i].fileName) == e.name)
                index = i;
        }
        ASSERT_GE(index, 0) << e.name;
        char path[kPathCapacity];
        ASSERT_EQ(resolveFilePath(index, path, nullptr, nullptr, nullptr), kPathComposed) << e.name;
        EXPECT_EQ(std::string(path), e.target);

        char member[32];
        HOI_PrintA(member, sizeof member, "_%05d0_", index);
        const std::string memberPath = work + "dist\\" + member;
        std::string source;
        for (const PackageFile& file : package.files) {
            if (file.source.substr(file.source.rfind('/') + 1) == e.name)
                source = file.content;
        }
        EXPECT_EQ(g_setup.fileRecords[index].size, source.size()) << e.name;
        if (!e.packed) {
            EXPECT_EQ(contentOf(memberPath), source) << e.name;
            continue;
        }
        EXPECT_NE(contentOf(memberPath), source) << e.name << " should be packed";
        EXPECT_EQ(g_setup.fileRecords[index].transferSize, contentOf(memberPath).size()) << e.name;
        ASSERT_TRUE(Unpack(memberPath.c_str(), (unpacked + e.name).c_str(), "")) << e.name;
        EXPECT_EQ(contentOf(unpacked + e.name), source) << e.name;
    }
    removeTree(work);
}

} // namespace
} // namespace setupdata_test
