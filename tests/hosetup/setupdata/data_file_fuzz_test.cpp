// Mutated data files: every one is either read exactly as its bytes say or refused, never half
// used and never a crash. The generator is seeded, so a failing case repeats with its number.
#include "setupdata_fixture.h"
#include "dialog_watcher.h"

#include <climits>
#include <random>

namespace setupdata_test {
namespace {

constexpr int kCases = 3000;
constexpr unsigned kSeed = 20240517;

// What the format says about a byte string: accepted with these counts, or refused.
struct Verdict {
    bool accepted;
    std::int32_t fileCount;
    std::int32_t shortcutCount;
};

Verdict judge(const std::vector<char>& bytes)
{
    Verdict refused = {false, 0, 0};
    if (bytes.size() < kSetupHeaderSize)
        return refused;
    for (std::size_t i = 0; i < kSetupDataMagicLength; ++i) {
        const unsigned char a = static_cast<unsigned char>(bytes[i]);
        const unsigned char b = static_cast<unsigned char>(kSetupDataMagic[i]);
        const bool letter = (b | 0x20) >= 'a' && (b | 0x20) <= 'z';
        if (letter ? (a | 0x20) != (b | 0x20) : a != b)
            return refused;
    }
    std::int32_t files;
    std::int32_t shortcuts;
    std::memcpy(&files, bytes.data() + offsetof(SetupDataHeader, fileCount), 4);
    std::memcpy(&shortcuts, bytes.data() + offsetof(SetupDataHeader, shortcutCount), 4);
    if (files < 0 || shortcuts < 0)
        return refused;
    const std::uint64_t needed = kSetupHeaderSize + std::uint64_t(files) * kFileRecordSize +
                                 std::uint64_t(shortcuts) * kShortcutRecordSize;
    if (needed > bytes.size())
        return refused;
    return {true, files, shortcuts};
}

class Mutator {
public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }

    std::vector<char> baseFile()
    {
        DataFileContent content;
        const int files = below(12);
        const int shortcuts = below(6);
        for (int i = 0; i < files; ++i) {
            FileRecord record = fileRecord(below(600), "Sub", "name.bin", below(1 << 20));
            randomise(reinterpret_cast<char*>(&record), sizeof record, below(3) == 0);
            content.files.push_back(record);
        }
        for (int i = 0; i < shortcuts; ++i) {
            ShortcutRecord record = shortcutRecord(below(files + 1), 20, "icon.ico", "link");
            randomise(reinterpret_cast<char*>(&record), sizeof record, below(3) == 0);
            content.shortcuts.push_back(record);
        }
        return dataFileBytes(content);
    }

    void mutate(std::vector<char>& bytes)
    {
        const int steps = 1 + below(3);
        for (int step = 0; step < steps; ++step) {
            switch (below(8)) {
            case 0: setCount(bytes, offsetof(SetupDataHeader, fileCount)); break;
            case 1: setCount(bytes, offsetof(SetupDataHeader, shortcutCount)); break;
            case 2: // a bit of the magic, or a letter's case
                if (!bytes.empty())
                    bytes[below(24) % bytes.size()] ^= static_cast<char>(below(2) ? 0x20 : 1 << below(8));
                break;
            case 3: bytes.resize(below(static_cast<int>(bytes.size()) + 1)); break;
            case 4: bytes.resize(bytes.size() > 0 ? bytes.size() - 1 - below(static_cast<int>(std::min<std::size_t>(bytes.size(), 250))) : 0); break;
            case 5: for (int n = below(300); n > 0; --n) bytes.push_back(static_cast<char>(below(256))); break;
            case 6: // flip bytes anywhere, counts included
                for (int n = 1 + below(4); n > 0 && !bytes.empty(); --n)
                    bytes[below(static_cast<int>(bytes.size()))] ^= static_cast<char>(1 + below(255));
                break;
            default: // a count one above what the file holds
                if (bytes.size() >= kSetupHeaderSize) {
                    std::int32_t count;
                    std::memcpy(&count, bytes.data() + offsetof(SetupDataHeader, shortcutCount), 4);
                    ++count;
                    std::memcpy(bytes.data() + offsetof(SetupDataHeader, shortcutCount), &count, 4);
                }
                break;
            }
        }
    }

private:
    void randomise(char* bytes, std::size_t size, bool fully)
    {
        // Text fields without terminators are part of what a damaged file may hold.
        if (fully)
            for (std::size_t i = 0; i < size; ++i)
                bytes[i] = static_cast<char>(below(256));
    }

    void setCount(std::vector<char>& bytes, std::size_t offset)
    {
        if (bytes.size() < offset + 4)
            return;
        static const std::int32_t special[] = {-1, INT_MIN, INT_MAX, 0x10000000, 1 << 20, 0};
        // Extreme counts are rare: each one that cannot be allocated ends in a report box, and
        // a handful shows that path works as well as thousands would.
        const std::int32_t count = below(40) == 0 ? special[below(6)] : below(40) - 5;
        std::memcpy(bytes.data() + offset, &count, 4);
    }

    std::mt19937 random_;
};

using DataFileFuzzTest = SetupStateTest;

TEST_F(DataFileFuzzTest, MutatedFilesAreReadExactlyOrRefused)
{
    g_setup.optionSilent = 1;
    // Counts whose arrays cannot be allocated end in an "Init" report, which waits for a click.
    DialogWatcher watcher;
    Mutator mutator(kSeed);
    const std::string path = scratchPath("fuzz.dat");
    int accepted = 0;
    int reports = 0;
    for (int i = 0; i < kCases; ++i) {
        std::vector<char> bytes = mutator.baseFile();
        if (i % 10 != 0)
            mutator.mutate(bytes);
        ASSERT_TRUE(writeFileBytes(path, bytes));
        const Verdict verdict = judge(bytes);
        const std::size_t dialogsBefore = watcher.count();
        const bool read = readSetupDataFile(path.c_str());
        ASSERT_EQ(read, verdict.accepted) << "case " << i;
        if (!read) {
            ASSERT_EQ(g_setup.fileCount, 0) << "case " << i;
            ASSERT_EQ(g_setup.shortcutCount, 0) << "case " << i;
            reports += static_cast<int>(watcher.count() - dialogsBefore);
            continue;
        }
        ++accepted;
        ASSERT_EQ(watcher.count(), dialogsBefore) << "case " << i << " was read but showed a dialog";
        ASSERT_EQ(g_setup.fileCount, verdict.fileCount) << "case " << i;
        ASSERT_EQ(g_setup.shortcutCount, verdict.shortcutCount) << "case " << i;
        const char* records = bytes.data() + kSetupHeaderSize;
        ASSERT_EQ(0, std::memcmp(g_setup.fileRecords, records, verdict.fileCount * kFileRecordSize)) << "case " << i;
        records += verdict.fileCount * kFileRecordSize;
        ASSERT_EQ(0, std::memcmp(g_setup.shortcutRecords, records, verdict.shortcutCount * kShortcutRecordSize))
            << "case " << i;
        ASSERT_NE(g_setup.fileFlags, nullptr);
    }
    std::printf("%d of %d mutated files read, %d refused, %d allocation reports closed\n", accepted, kCases,
                kCases - accepted, reports);
    // The mix must exercise both outcomes.
    EXPECT_GT(accepted, kCases / 20);
    EXPECT_LT(accepted, kCases - kCases / 20);
}

} // namespace
} // namespace setupdata_test
