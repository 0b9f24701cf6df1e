// A packed member's stored name read back (format/member_archive.h): from a member that hopack's
// zip writer made and from hand-made archives that stand for other writers and for damage.
#include "format/member_archive.h"
#include "hopack.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <fstream>
#include <iterator>

namespace {

std::string le(std::uint64_t value, int bytes)
{
    std::string out;
    for (int i = 0; i < bytes; ++i) out += char((value >> (8 * i)) & 0xFF);
    return out;
}

// An archive of `entries` stored entries named name, with the Zip64 end records when zip64 is set
// (the 32-bit end record's fields then escaped) and comment behind the end record.
std::string handMade(const std::string& name, std::uint16_t flags = 0, bool zip64 = false, int entries = 1,
                     const std::string& comment = "")
{
    std::string out, central;
    for (int i = 0; i < entries; ++i) {
        const std::string sizes = le(0, 4) + le(4, 4) + le(4, 4);  // CRC (not read here), packed, size
        central += le(0x02014b50, 4) + le(20, 2) + le(20, 2) + le(flags, 2) + le(0, 6) + sizes +
                   le(name.size(), 2) + le(0, 12) + le(out.size(), 4) + name;
        out += le(0x04034b50, 4) + le(20, 2) + le(flags, 2) + le(0, 6) + sizes + le(name.size(), 2) + le(0, 2) + name +
               "data";
    }
    const std::uint64_t start = out.size(), size = central.size();
    out += central;
    std::uint64_t count = entries, size32 = size, start32 = start;
    if (zip64) {
        const std::uint64_t end64 = out.size();
        out += le(0x06064b50, 4) + le(44, 8) + le(45, 2) + le(45, 2) + le(0, 8) + le(count, 8) + le(count, 8) +
               le(size, 8) + le(start, 8);
        out += le(0x07064b50, 4) + le(0, 4) + le(end64, 8) + le(1, 4);
        count = 0xFFFF, size32 = start32 = 0xFFFFFFFF;
    }
    return out + le(0x06054b50, 4) + le(0, 4) + le(count, 2) + le(count, 2) + le(size32, 4) + le(start32, 4) +
           le(comment.size(), 2) + comment;
}

std::string hopackMember(const std::string& storedName)
{
    const fs::path dir = fs::temp_directory_path() / ("member-archive-" + std::to_string(getpid()));
    fs::create_directories(dir);
    std::ofstream(dir / "source", std::ios::binary) << std::string(5000, 'x');
    ZipResult result;
    Diagnostics diag;
    EXPECT_TRUE(WriteZipMember(dir / "source", dir / "member", storedName, "2024-06-01", result, diag));
    std::ifstream in(dir / "member", std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    fs::remove_all(dir);
    return bytes;
}

bool readString(void* context, std::uint64_t offset, void* buffer, std::uint32_t count)
{
    const std::string& bytes = *static_cast<const std::string*>(context);
    if (offset > bytes.size() || bytes.size() - offset < count) return false;
    std::memcpy(buffer, bytes.data() + offset, count);
    return true;
}

TEST(MemberArchive, StoredBaseNameIsReadAsTheUnpackerFindsIt)
{
    const std::string longest(63, 'n');  // a file record's name field holds 63 characters
    const std::string truncated = handMade("a.txt");
    std::string noEnd = handMade("a.txt");
    noEnd[noEnd.size() - 22] = 'X';
    // The last end record whose comment reaches the end counts; one inside the comment does not.
    const std::string falseEnd = le(0x06054b50, 4) + std::string(16, '\0') + le(5, 2);
    struct Case { const char* label; std::string archive; const char* name; std::size_t capacity = 64; };
    const Case cases[] = {
        {"hopack's writer, an ANSI name", hopackMember("Tr\xE4ger.dwg"), "Tr\xE4ger.dwg"},
        {"folder part", handMade("sub/dir\\Part.dwg"), "Part.dwg"},
        {"Zip64 end records", handMade("big.bin", 0, true), "big.bin"},
        {"long comment", handMade("c.txt", 0, false, 1, std::string(3000, 'k') + falseEnd + "tail"), "c.txt"},
        {"UTF-8 flag, ASCII name", handMade("plain.txt", 0x0800), "plain.txt"},
        {"UTF-8 flag, other name", handMade("\xC3\xA4.txt", 0x0800), nullptr},
        {"longest base that fits", handMade("folder/" + longest), longest.c_str()},
        {"base one too long", handMade(longest + "n"), nullptr},
        {"directory entry", handMade("folder/"), nullptr},
        {"truncated", truncated.substr(0, truncated.size() - 5), nullptr},
        {"two entries", handMade("a.txt", 0, false, 2), nullptr},
        {"no end record", noEnd, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        char name[64] = "unchanged";
        std::string archive = c.archive;
        const bool found = readMemberStoredName(readString, &archive, archive.size(), name, c.capacity);
        EXPECT_EQ(found, c.name != nullptr);
        if (found && c.name) {
            EXPECT_STREQ(name, c.name);
        }
    }
}

TEST(MemberArchive, StoredNameMatchesTheRecordAsTheUnpackerWritesIt)
{
    struct Case { const char* stored; const char* file; bool matches; };
    const Case cases[] = {
        {"Part.DWG", "part.dwg", true},          {"sub/dir\\Part.dwg", "Part.dwg", true},
        {"C:Part.dwg", "Part.dwg", true},        {"Part.dwg", "Part.dwg.bak", false},
        {"Part.dwg.bak", "Part.dwg", false},     {"Tr\xE4ger", "TR\xC4GER", false},
        {"sub/", "", false},                     {"Other.dwg", "Part.dwg", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.stored) + " / " + c.file);
        EXPECT_EQ(storedNameMatches(c.stored, c.file), c.matches);
    }
}

} // namespace
