// The setup data file reader: complete files are read as the bytes say, damaged ones are refused
// with the right alert (or silently), and nothing is ever written past an allocated block.
#include "setupdata_fixture.h"
#include "dialog_watcher.h"

#include "holang.h"

#include <climits>

namespace setupdata_test {
namespace {

DataFileContent sampleContent()
{
    DataFileContent content;
    content.files = {fileRecord(0, "", "hosetup.dat", 4096), fileRecord(20, "Bin", "hovistrel.exe", 7000000),
                     fileRecord(203, "Settings", "user.ini", 12)};
    content.shortcuts = {shortcutRecord(1, 20, "hovistrel.exe", "Vistrel"),
                         shortcutRecord(1, 210, "help.ico", "Vistrel Help")};
    return content;
}

void expectContentRead(const DataFileContent& content)
{
    ASSERT_EQ(g_setup.fileCount, static_cast<std::int32_t>(content.files.size()));
    ASSERT_EQ(g_setup.shortcutCount, static_cast<std::int32_t>(content.shortcuts.size()));
    ASSERT_NE(g_setup.fileRecords, nullptr);
    ASSERT_NE(g_setup.shortcutRecords, nullptr);
    ASSERT_NE(g_setup.fileFlags, nullptr);
    for (std::size_t i = 0; i < content.files.size(); ++i)
        EXPECT_EQ(0, std::memcmp(&g_setup.fileRecords[i], &content.files[i], sizeof(FileRecord))) << "file " << i;
    for (std::size_t i = 0; i < content.shortcuts.size(); ++i)
        EXPECT_EQ(0, std::memcmp(&g_setup.shortcutRecords[i], &content.shortcuts[i], sizeof(ShortcutRecord)))
            << "shortcut " << i;
    // The spare record behind each array exists and holds nothing.
    const FileRecord noFile = {};
    const ShortcutRecord noShortcut = {};
    EXPECT_EQ(0, std::memcmp(&g_setup.fileRecords[content.files.size()], &noFile, sizeof noFile));
    EXPECT_EQ(0, std::memcmp(&g_setup.shortcutRecords[content.shortcuts.size()], &noShortcut, sizeof noShortcut));
    EXPECT_STREQ(g_setup.packageCompileDate, content.compileDate.c_str());
}

// True when every heap of the process is intact: a reader that wrote past a block breaks one.
bool heapsIntact()
{
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    for (DWORD i = 0; i < count && i < 64; ++i) {
        if (!HeapValidate(heaps[i], 0, nullptr))
            return false;
    }
    return true;
}

using DataFileTest = SetupStateTest;

TEST_F(DataFileTest, ReadsHeaderAndRecordsAndIgnoresTrailingBytes)
{
    const DataFileContent content = sampleContent();
    std::vector<char> bytes = dataFileBytes(content);
    bytes.insert(bytes.end(), 333, '\x7f');
    const std::string path = scratchPath("_000000_");
    ASSERT_TRUE(writeFileBytes(path, bytes));

    ASSERT_TRUE(readSetupDataFile(path.c_str()));
    expectContentRead(content);
    char expected[kTextCapacity];
    HOI_PrintA(expected, sizeof expected, eUniTexts[17], "Vistrel Professional 2024");
    EXPECT_STREQ(g_setup.productText, expected);

    // A removal run names the product with the removal text.
    g_setup.optionRemove = 1;
    ASSERT_TRUE(readSetupDataFile(path.c_str()));
    HOI_PrintA(expected, sizeof expected, eUniTexts[26], "Vistrel Professional 2024");
    EXPECT_STREQ(g_setup.productText, expected);
}

TEST_F(DataFileTest, AcceptsLowerCaseMagicAndEmptyRecordLists)
{
    DataFileContent content;
    content.magic = "harwick-orbel dat 6140 anything after byte 22";
    const std::string path = scratchPath("empty.dat");
    ASSERT_TRUE(writeFileBytes(path, dataFileBytes(content)));

    ASSERT_TRUE(readSetupDataFile(path.c_str()));
    expectContentRead(content);
}

TEST_F(DataFileTest, RefusesDamagedFilesSilently)
{
    g_setup.optionSilent = 1;
    DialogWatcher watcher;
    const DataFileContent content = sampleContent();
    const std::vector<char> good = dataFileBytes(content);
    struct Case {
        const char* name;
        std::vector<char> bytes;
    };
    std::vector<Case> cases;
    cases.push_back({"header cut", std::vector<char>(good.begin(), good.begin() + 327)});
    cases.push_back({"file records cut", std::vector<char>(good.begin(), good.begin() + 328 + 2 * 148 + 100)});
    cases.push_back({"ends inside shortcut records", std::vector<char>(good.begin(), good.end() - 1)});
    std::vector<char> magic = good;
    magic[21] = '1';
    cases.push_back({"wrong magic", magic});
    std::vector<char> negativeFiles = good;
    setCounts(negativeFiles, -1, 2);
    cases.push_back({"negative file count", negativeFiles});
    std::vector<char> negativeShortcuts = good;
    setCounts(negativeShortcuts, 3, INT_MIN);
    cases.push_back({"negative shortcut count", negativeShortcuts});

    for (const Case& c : cases) {
        // A good read first, so that a refusal must also withdraw the earlier counts.
        ASSERT_TRUE(writeFileBytes(scratchPath("good.dat"), good));
        ASSERT_TRUE(readSetupDataFile(scratchPath("good.dat").c_str()));
        ASSERT_TRUE(writeFileBytes(scratchPath("bad.dat"), c.bytes));
        EXPECT_FALSE(readSetupDataFile(scratchPath("bad.dat").c_str())) << c.name;
        EXPECT_EQ(g_setup.fileCount, 0) << c.name;
        EXPECT_EQ(g_setup.shortcutCount, 0) << c.name;
    }
    EXPECT_FALSE(readSetupDataFile(scratchPath("missing.dat").c_str()));
    Sleep(100);
    EXPECT_EQ(watcher.count(), 0u) << "a silent run shows no alert for a bad or missing file";
}

TEST_F(DataFileTest, AlertsNameTheFileWhenNotSilent)
{
    DialogWatcher watcher;
    std::vector<char> bytes = dataFileBytes(sampleContent());
    bytes.resize(bytes.size() - 200);
    const std::string bad = scratchPath("bad.dat");
    const std::string missing = scratchPath("missing.dat");
    ASSERT_TRUE(writeFileBytes(bad, bytes));

    EXPECT_FALSE(readSetupDataFile(bad.c_str()));
    EXPECT_FALSE(readSetupDataFile(missing.c_str()));

    const std::vector<SeenDialog> seen = watcher.seen();
    ASSERT_EQ(seen.size(), 2u);
    char expected[2048];
    HOI_PrintA(expected, sizeof expected, eAlertErrorText[2], bad.c_str());
    EXPECT_TRUE(seen[0].hasText(expected)) << "bad file alert";
    HOI_PrintA(expected, sizeof expected, eAlertErrorText[0], missing.c_str());
    EXPECT_TRUE(seen[1].hasText(expected)) << "missing file alert";
}

// Counts far beyond the file: either the array cannot be allocated (an "Init" report) or the
// read comes up short (a bad file). Neither may crash or leave counts behind.
TEST_F(DataFileTest, RefusesHugeCountsCleanly)
{
    DialogWatcher watcher;
    g_setup.optionSilent = 1;
    const std::vector<char> good = dataFileBytes(sampleContent());
    const std::int32_t counts[][2] = {{INT_MAX, 2}, {3, INT_MAX}, {INT_MAX, INT_MAX}};
    const std::uint32_t lines[] = {kLineFileArrayAllocation, kLineShortcutArrayAllocation, kLineFileArrayAllocation};
    for (int i = 0; i < 3; ++i) {
        std::vector<char> bytes = good;
        setCounts(bytes, counts[i][0], counts[i][1]);
        ASSERT_TRUE(writeFileBytes(scratchPath("huge.dat"), bytes));
        watcher.clear();
        EXPECT_FALSE(readSetupDataFile(scratchPath("huge.dat").c_str())) << i;
        EXPECT_EQ(g_setup.fileCount, 0);
        EXPECT_EQ(g_setup.shortcutCount, 0);
        Sleep(50);
        const std::vector<SeenDialog> seen = watcher.seen();
        ASSERT_LE(seen.size(), 1u);
        if (!seen.empty()) {
            const std::string report = "Init\\" + std::to_string(lines[i]) + "\n\n" + eMessageText[1];
            EXPECT_TRUE(seen[0].hasText(report)) << "case " << i << ": " << seen[0].texts.size();
        }
        std::printf("huge counts case %d: %s\n", i, seen.empty() ? "short read" : "allocation report");
    }
    EXPECT_TRUE(heapsIntact());
}

// A second file with more records than the first must not be read into the first file's blocks.
TEST_F(DataFileTest, LaterReadWithMoreRecordsGetsBlocksOfItsOwnSize)
{
    DataFileContent small;
    small.files = {fileRecord(0, "", "hosetup.dat")};
    DataFileContent large;
    for (int i = 0; i < 600; ++i)
        large.files.push_back(fileRecord(20, "Bin", ("file" + std::to_string(i) + ".dll").c_str(), i));
    for (int i = 0; i < 50; ++i)
        large.shortcuts.push_back(shortcutRecord(i, 20, "x.ico", ("link" + std::to_string(i)).c_str()));

    ASSERT_TRUE(writeFileBytes(scratchPath("small.dat"), dataFileBytes(small)));
    ASSERT_TRUE(writeFileBytes(scratchPath("large.dat"), dataFileBytes(large)));
    ASSERT_TRUE(readSetupDataFile(scratchPath("small.dat").c_str()));
    // Neighbouring blocks that an overrun would trample.
    std::vector<void*> neighbours;
    for (int i = 0; i < 64; ++i)
        neighbours.push_back(std::malloc(160));
    ASSERT_TRUE(readSetupDataFile(scratchPath("large.dat").c_str()));
    expectContentRead(large);
    EXPECT_TRUE(heapsIntact());
    for (void* block : neighbours)
        std::free(block);

    ASSERT_TRUE(readSetupDataFile(scratchPath("small.dat").c_str()));
    expectContentRead(small);
}

} // namespace
} // namespace setupdata_test
