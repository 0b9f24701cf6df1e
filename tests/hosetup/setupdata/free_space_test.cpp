// The free-space check: its margin, which files it counts, and how the grouped check puts folders
// inside the documents folder together with the installation-side files.
#include "setupdata_fixture.h"
#include "dialog_watcher.h"

#include "holang.h"

namespace setupdata_test {
namespace {

class FreeSpaceTest : public SetupStateTest {
protected:
    void SetUp() override
    {
        SetupStateTest::SetUp();
        // Everything on the drive of the scratch folder, which the prefix maps to the host.
        drive_ = scratch_.substr(0, 2);
        HOI_CopyA(g_setup.installFolder, kPathCapacity, (drive_ + "\\Inst\\").c_str());
        HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, (drive_ + "\\Common\\").c_str());
        HOI_CopyA(g_setup.userDataFolder, kPathCapacity, (drive_ + "\\User\\").c_str());
        HOI_CopyA(g_setup.documentsFolder, kPathCapacity, (drive_ + "\\Docs\\Vistrel\\").c_str());
        HOI_CopyA(g_setup.libraryFolder, kPathCapacity, (drive_ + "\\DOCS\\Vistrel\\Libraries\\").c_str());
        HOI_CopyA(g_setup.drawingFolder, kPathCapacity, (drive_ + "\\Elsewhere\\Drawings\\").c_str());
        HOI_CopyA(g_setup.settingFolder, kPathCapacity, (drive_ + "\\Docs\\Vistrel\\Settings\\").c_str());
    }

    std::uint64_t freeBytes()
    {
        ULARGE_INTEGER free = {};
        EXPECT_TRUE(GetDiskFreeSpaceExA(drive_.c_str(), &free, nullptr, nullptr));
        return free.QuadPart;
    }

    std::string drive_;
};

TEST_F(FreeSpaceTest, MarginIs1023Bytes)
{
    EXPECT_FALSE(hasRoomFor(5000 + 1022, 5000));
    EXPECT_TRUE(hasRoomFor(5000 + 1023, 5000));
    EXPECT_TRUE(hasRoomFor(1023, 0));
    EXPECT_FALSE(hasRoomFor(1022, 0));
    // A sum near the top of the range does not wrap into a small one.
    EXPECT_FALSE(hasRoomFor(~0ull, ~0ull - 1000));
    EXPECT_TRUE(hasRoomFor(~0ull, ~0ull - 1023));
}

TEST_F(FreeSpaceTest, SumCountsResolvedFilesOfTheMaskOnly)
{
    installRecords({
        fileRecord(20, "", "a", 1),          // installation folder, category 1
        fileRecord(70, "", "b", 2),          // user data, category 1
        fileRecord(200, "", "c", 4),         // drawings, 2
        fileRecord(40, "", "d", 8),          // library, 4
        fileRecord(60, "", "e", 16),         // settings, 8
        fileRecord(23, "", "f", 32),         // backup entry: no target of its own
        fileRecord(909, "", "g", 64),        // ignored entry
        fileRecord(29, "", "h", 128),        // ends in 9: neither counted nor resolved
    });
    EXPECT_EQ(sumFileSizes(1), 3u);
    EXPECT_EQ(sumFileSizes(2), 4u);
    EXPECT_EQ(sumFileSizes(4), 8u);
    EXPECT_EQ(sumFileSizes(8), 16u);
    EXPECT_EQ(sumFileSizes(1 | 4 | 8), 27u);
    EXPECT_EQ(sumFileSizes(15), 31u);
    EXPECT_EQ(sumFileSizes(0), 0u);
}

TEST_F(FreeSpaceTest, RealDriveTinyAndAbsurdSums)
{
    DialogWatcher watcher;
    installRecords({fileRecord(20, "", "tiny", 10)});
    EXPECT_TRUE(checkFreeSpace(1));
    Sleep(50);
    EXPECT_EQ(watcher.count(), 0u);

    installRecords({fileRecord(20, "", "absurd", 1ull << 62)});
    EXPECT_FALSE(checkFreeSpace(1));
    const std::vector<SeenDialog> seen = watcher.seen();
    ASSERT_EQ(seen.size(), 1u);
    char expected[kMessageCapacity];
    HOI_PrintA(expected, sizeof expected, eMessageText[16], drive_.c_str());
    EXPECT_TRUE(seen[0].hasText(expected)) << "the alert names the drive " << drive_;

    // A silent run takes the answer without showing the box, and the check still fails.
    watcher.clear();
    g_setup.optionSilent = 1;
    EXPECT_FALSE(checkFreeSpace(1));
    Sleep(50);
    EXPECT_EQ(watcher.count(), 0u);
}

TEST_F(FreeSpaceTest, FoldersInsideDocumentsAreCheckedTogetherWithTheInstallation)
{
    g_setup.optionSilent = 1;
    // Each part alone fits; two of them together do not.
    const std::uint64_t part = freeBytes() / 10 * 6;
    ASSERT_GT(part, 0u);

    // The drawing folder lies outside the documents folder: checked by itself, both fit.
    installRecords({fileRecord(20, "", "program", part), fileRecord(200, "", "drawing", part)});
    EXPECT_TRUE(checkAllFreeSpace());

    // The library folder lies inside it (case ignored): counted with the installation, too much.
    installRecords({fileRecord(20, "", "program", part), fileRecord(40, "", "library", part)});
    EXPECT_FALSE(checkAllFreeSpace());

    // Moved out of the documents folder, the library is checked alone again.
    HOI_CopyA(g_setup.libraryFolder, kPathCapacity, (drive_ + "\\Lib\\").c_str());
    EXPECT_TRUE(checkAllFreeSpace());

    // A folder checked by itself can still fail on its own.
    installRecords({fileRecord(20, "", "program", 1), fileRecord(200, "", "drawing", 1ull << 62)});
    EXPECT_FALSE(checkAllFreeSpace());
}

} // namespace
} // namespace setupdata_test
