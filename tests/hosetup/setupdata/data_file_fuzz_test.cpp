// Mutated data files, each read exactly as its bytes say or refused with both counts 0 (also for a
// name the rules forbid). Damaged files of earlier unit tests are the seeds; the generator is seeded.
#include "setup_fixture.h"

#include "format/name_rules.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <random>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t kCases = 3000;
using Bytes = std::vector<char>;

// The "Init" report of an unallocatable count is a message box even in a silent run: refused here.
LRESULT CALLBACK refuseDialogs(int code, WPARAM wParam, LPARAM lParam)
{
    char className[16] = {};
    if (code == HCBT_CREATEWND && GetClassNameA(reinterpret_cast<HWND>(wParam), className, sizeof className) &&
        lstrcmpA(className, "#32770") == 0)
        return 1;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

std::mt19937 g_random(20240517);

int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(g_random); }

void put(Bytes& bytes, std::size_t at, const void* data, std::size_t size) { std::memcpy(&bytes[at], data, size); }

void setCounts(Bytes& bytes, std::int32_t files, std::int32_t shortcuts)
{
    put(bytes, offsetof(SetupDataHeader, fileCount), &files, 4);
    put(bytes, offsetof(SetupDataHeader, shortcutCount), &shortcuts, 4);
}

// A complete data file: names the rules allow, all other bytes random (behind a name's end too).
Bytes dataFile(std::uint16_t files, std::uint16_t shortcuts)
{
    Bytes bytes(kSetupHeaderSize + files * kFileRecordSize + shortcuts * kShortcutRecordSize);
    std::generate(bytes.begin(), bytes.end(), [] { return static_cast<char>(g_random()); });
    put(bytes, 0, kSetupDataMagic, kSetupDataMagicLength);
    put(bytes, offsetof(SetupDataHeader, productName), "Vistrel", 8);
    setCounts(bytes, files, shortcuts);
    std::size_t at = kSetupHeaderSize;
    for (int i = 0; i < files; ++i, at += kFileRecordSize) {
        put(bytes, at + offsetof(FileRecord, fileName), "a.dll", 6);
        put(bytes, at + offsetof(FileRecord, subFolder), "Bin\\X", 6);
    }
    for (int i = 0; i < shortcuts; ++i, at += kShortcutRecordSize)
        put(bytes, at + offsetof(ShortcutRecord, name), "Vistrel", 8);
    return bytes;
}

std::vector<Bytes> seeds()
{
    const Bytes good = dataFile(3, 2);
    std::vector<Bytes> files = {
        good,
        Bytes(good.begin(), good.begin() + kSetupHeaderSize - 1),                         // header cut
        Bytes(good.begin(), good.begin() + kSetupHeaderSize + 2 * kFileRecordSize + 100),  // file records cut
        Bytes(good.begin(), good.end() - 1),                                              // last shortcut cut
        dataFile(0, 0),
        dataFile(600, 50),   // more records than any read before: blocks of its own size
        good,
        good,
    };
    for (std::size_t i = 0; i < 32; ++i)   // the magic's case is free, bytes 22 on are not read
        files[6][i] = i < kSetupDataMagicLength ? static_cast<char>(std::tolower(good[i])) : '?';
    files[7][21] = '1';
    const std::int32_t counts[][2] = {{-1, 2}, {3, INT_MIN}, {INT_MAX, 2}, {3, INT_MAX}, {INT_MAX, INT_MAX}};
    for (const auto& count : counts) {
        files.push_back(good);
        setCounts(files.back(), count[0], count[1]);
    }
    return files;
}

void mutate(Bytes& bytes)
{
    static const std::int32_t extreme[] = {-1, INT_MIN, INT_MAX, 0x10000000, 1 << 20, 0};
    auto count = [] { return below(40) ? below(40) - 5 : extreme[below(6)]; };
    for (int step = 1 + below(3); step > 0; --step) {
        const int size = static_cast<int>(bytes.size());
        switch (below(4)) {
        case 0:   // the counts; extreme ones are rare, as each unallocatable one ends in a report
            if (size >= static_cast<int>(kSetupHeaderSize))
                setCounts(bytes, count(), count());
            break;
        case 1: bytes.resize(below(2) ? below(size + 1) : size - std::min(size, 1 + below(250))); break;
        case 2: bytes.insert(bytes.end(), below(300), static_cast<char>(g_random())); break;
        default:   // bytes anywhere: counts, magic, names
            for (int n = 1 + below(4); n > 0 && size > 0; --n)
                bytes[below(size)] ^= static_cast<char>(1 + below(255));
        }
    }
}

// A name field as the reader must judge it: terminated, and allowed by the shared name rules.
bool plainName(const char* field, std::size_t size, bool folder = false)
{
    const char* end = static_cast<const char*>(std::memchr(field, '\0', size));
    const std::string_view text(field, end ? end - field : 0);
    return end && !(folder ? relativeFolderProblem(text, nullptr) : fileNameProblem(text));
}

// What the format says about a byte string: read with these counts, or refused.
bool readable(const Bytes& bytes, std::int32_t* files, std::int32_t* shortcuts)
{
    if (bytes.size() < kSetupHeaderSize || _strnicmp(bytes.data(), kSetupDataMagic, kSetupDataMagicLength))
        return false;
    const auto* header = reinterpret_cast<const SetupDataHeader*>(bytes.data());
    *files = header->fileCount;
    *shortcuts = header->shortcutCount;
    if (*files < 0 || *shortcuts < 0 ||
        kSetupHeaderSize + std::uint64_t(*files) * kFileRecordSize + std::uint64_t(*shortcuts) * kShortcutRecordSize >
            bytes.size())
        return false;
    const auto* file = reinterpret_cast<const FileRecord*>(header + 1);
    const auto* link = reinterpret_cast<const ShortcutRecord*>(file + *files);
    bool plain = plainName(header->productName, 128);
    for (std::int32_t i = 0; i < *files; ++i)
        plain = plain && plainName(file[i].fileName, 64) && plainName(file[i].subFolder, 64, true);
    for (std::int32_t i = 0; i < *shortcuts; ++i)
        plain = plain && plainName(link[i].name, 64);
    return plain;
}

using DataFileFuzz = SetupFixture;

TEST_F(DataFileFuzz, MutatedFilesAreReadExactlyOrRefused)
{
    HHOOK hook = SetWindowsHookExA(WH_CBT, refuseDialogs, nullptr, GetCurrentThreadId());
    const std::vector<Bytes> seedFiles = seeds();
    const std::string path = root_ + "_000000_";
    int accepted = 0;
    for (std::size_t i = 0; i < kCases; ++i) {
        SCOPED_TRACE("case " + std::to_string(i));
        Bytes bytes = i < seedFiles.size() ? seedFiles[i] : dataFile(below(12), below(6));
        if (i >= seedFiles.size() && i % 10 != 0)
            mutate(bytes);
        std::ofstream(path, std::ios::binary).write(bytes.data(), bytes.size());
        std::int32_t files = 0, shortcuts = 0;
        const bool accept = readable(bytes, &files, &shortcuts);
        ASSERT_EQ(readSetupDataFile(path.c_str()), accept);
        ASSERT_EQ(g_setup.fileCount, accept ? files : 0);
        ASSERT_EQ(g_setup.shortcutCount, accept ? shortcuts : 0);
        accepted += accept;
        if (!accept)
            continue;
        const char* records = bytes.data() + kSetupHeaderSize;
        ASSERT_EQ(0, std::memcmp(g_setup.fileRecords, records, files * kFileRecordSize));
        ASSERT_EQ(0, std::memcmp(g_setup.shortcutRecords, records + files * kFileRecordSize,
                                 shortcuts * kShortcutRecordSize));
        static const char empty[kShortcutRecordSize] = {};
        ASSERT_EQ(0, std::memcmp(&g_setup.fileRecords[files], empty, kFileRecordSize));
        ASSERT_EQ(0, std::memcmp(&g_setup.shortcutRecords[shortcuts], empty, kShortcutRecordSize));
    }
    UnhookWindowsHookEx(hook);
    std::printf("%d of %zu files read\n", accepted, kCases);
    HANDLE heaps[64];
    for (DWORD i = 0, count = GetProcessHeaps(64, heaps); i < count && i < 64; ++i)
        EXPECT_TRUE(HeapValidate(heaps[i], 0, nullptr)) << "heap " << i;
    EXPECT_GT(accepted, 150);   // the mix exercises both outcomes
    EXPECT_LT(accepted, 2850);
}

} // namespace
