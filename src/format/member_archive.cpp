// Reading a packed member's stored name, shared by the setup program and the package builder.
// It follows the unpacker's reader (src/hounzip/zipread.cpp) in finding the one central entry, so
// that the name it reports is the name the unpacker writes.
#include "format/member_archive.h"

#include <cstring>

namespace {

constexpr std::uint32_t kCentralSignature = 0x02014b50;
constexpr std::uint32_t kEndSignature = 0x06054b50;
constexpr std::uint32_t kEnd64Signature = 0x06064b50;
constexpr std::uint32_t kLocator64Signature = 0x07064b50;
constexpr std::uint32_t kCentralSize = 46;
constexpr std::uint32_t kEndSize = 22;
constexpr std::uint32_t kEnd64Size = 56;
constexpr std::uint32_t kLocator64Size = 20;
constexpr std::uint64_t kMaxComment = 65535;
constexpr std::uint16_t kFlagUtf8 = 0x0800;
// The tail is searched for the end record in pieces of this size, so no 64 KiB buffer is needed.
constexpr std::uint32_t kPieceSize = 1024;

std::uint16_t get16(const unsigned char* p) { return std::uint16_t(p[0] | (p[1] << 8)); }
std::uint32_t get32(const unsigned char* p) { return get16(p) | (std::uint32_t(get16(p + 2)) << 16); }
std::uint64_t get64(const unsigned char* p) { return get32(p) | (std::uint64_t(get32(p + 4)) << 32); }

bool isSeparator(char c) { return c == '/' || c == '\\'; }

char foldAscii(char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

// Where the central directory lies, as the end records tell it.
struct Directory {
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    std::uint64_t end = 0;  // first byte after it: the Zip64 end record or the end record
};

// Finds the last end record whose comment reaches exactly to the end of the file, searching the
// candidate offsets from the highest down, one piece at a time; pieces overlap by a record.
bool findEndRecord(MemberReadAt readAt, void* context, std::uint64_t fileSize, std::uint64_t& offset,
                   unsigned char (&record)[kEndSize])
{
    if (fileSize < kEndSize)
        return false;
    const std::uint64_t lowest = fileSize - kEndSize > kMaxComment ? fileSize - kEndSize - kMaxComment : 0;
    constexpr std::uint64_t kStartsPerPiece = kPieceSize - kEndSize + 1;
    unsigned char piece[kPieceSize];
    for (std::uint64_t high = fileSize - kEndSize;;) {
        const std::uint64_t low = high - lowest >= kStartsPerPiece ? high - kStartsPerPiece + 1 : lowest;
        if (!readAt(context, low, piece, std::uint32_t(high - low + kEndSize)))
            return false;
        for (std::uint64_t at = high + 1; at-- > low;) {
            const unsigned char* p = piece + (at - low);
            if (get32(p) == kEndSignature && at + kEndSize + get16(p + 20) == fileSize) {
                offset = at;
                std::memcpy(record, p, kEndSize);
                return true;
            }
        }
        if (low == lowest)
            return false;
        high = low - 1;
    }
}

// Reads where the directory lies from the end record and, when a Zip64 locator precedes it, the
// Zip64 end record. Accepts a single-disk archive of one entry whose directory lies right before
// the end records.
bool findDirectory(MemberReadAt readAt, void* context, std::uint64_t fileSize, Directory& dir)
{
    unsigned char end[kEndSize];
    std::uint64_t endOffset = 0;
    if (!findEndRecord(readAt, context, fileSize, endOffset, end))
        return false;
    std::uint64_t disk = get16(end + 4), dirDisk = get16(end + 6);
    std::uint64_t entriesHere = get16(end + 8), entries = get16(end + 10);
    dir.size = get32(end + 12);
    dir.offset = get32(end + 16);
    dir.end = endOffset;
    unsigned char locator[kLocator64Size];
    if (endOffset >= kLocator64Size) {
        if (!readAt(context, endOffset - kLocator64Size, locator, kLocator64Size))
            return false;
        if (get32(locator) == kLocator64Signature) {
            const std::uint64_t end64Offset = get64(locator + 8);
            const std::uint64_t room = endOffset - kLocator64Size;
            unsigned char end64[kEnd64Size];
            if (get32(locator + 4) != 0 || get32(locator + 16) > 1 || end64Offset > room ||
                room - end64Offset < kEnd64Size || !readAt(context, end64Offset, end64, kEnd64Size) ||
                get32(end64) != kEnd64Signature)
                return false;
            disk = get32(end64 + 16);
            dirDisk = get32(end64 + 20);
            entriesHere = get64(end64 + 24);
            entries = get64(end64 + 32);
            dir.size = get64(end64 + 40);
            dir.offset = get64(end64 + 48);
            dir.end = end64Offset;
        }
    }
    return disk == 0 && dirDisk == 0 && entriesHere == 1 && entries == 1 && dir.offset <= dir.end &&
           dir.end - dir.offset == dir.size && dir.size >= kCentralSize;
}

} // namespace

bool readMemberStoredName(MemberReadAt readAt, void* context, std::uint64_t fileSize, char* name,
                          std::size_t capacity)
{
    if (capacity == 0)
        return false;
    name[0] = '\0';
    Directory dir;
    unsigned char central[kCentralSize];
    if (!findDirectory(readAt, context, fileSize, dir) || !readAt(context, dir.offset, central, kCentralSize))
        return false;
    const std::uint32_t nameLength = get16(central + 28);
    const std::uint64_t entrySize = kCentralSize + nameLength + get16(central + 30) + get16(central + 32);
    if (get32(central) != kCentralSignature || entrySize != dir.size || nameLength == 0)
        return false;
    // Only the end of the name can be the base part: at most capacity bytes, one of them perhaps
    // the separator before it. With none among them, the base part is too long to fit.
    const std::uint32_t tail = nameLength < capacity ? nameLength : std::uint32_t(capacity);
    if (!readAt(context, dir.offset + kCentralSize + nameLength - tail, name, tail)) {
        name[0] = '\0';
        return false;
    }
    std::uint32_t start = tail;
    while (start > 0 && !isSeparator(name[start - 1]))
        --start;
    const std::uint32_t length = tail - start;
    bool ascii = true;
    for (std::uint32_t i = start; i < tail; ++i)
        ascii = ascii && static_cast<unsigned char>(name[i]) < 0x80;
    if (length == 0 || length >= capacity || std::memchr(name + start, '\0', length) ||
        (!ascii && (get16(central + 8) & kFlagUtf8) != 0)) {
        name[0] = '\0';
        return false;
    }
    std::memmove(name, name + start, length);
    name[length] = '\0';
    return true;
}

bool storedNameMatches(const char* storedName, const char* fileName)
{
    const char* base = storedName;
    for (const char* p = storedName; *p; ++p) {
        if (isSeparator(*p))
            base = p + 1;
    }
    while (((base[0] | 0x20) >= 'a' && (base[0] | 0x20) <= 'z') && base[1] == ':')
        base += 2;
    if (*base == '\0')
        return false;
    for (; *base && *fileName; ++base, ++fileName) {
        if (foldAscii(*base) != foldAscii(*fileName))
            return false;
    }
    return *base == *fileName;
}
