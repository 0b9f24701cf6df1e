// Reading and checking the archive's structure: end-of-central-directory record (and its Zip64 form), the one
// central directory entry, and the local header it points to. Nothing here trusts a single header: every size and
// offset must fit inside the file and agree with the other copies, so that the decoder reads exactly the member's
// bytes and a damaged or crafted archive is refused before anything is written.
#include "hounzip.h"

#include <string.h>

#define SIG_LOCAL 0x04034b50u
#define SIG_CENTRAL 0x02014b50u
#define SIG_END 0x06054b50u
#define SIG_END64 0x06064b50u
#define SIG_LOCATOR64 0x07064b50u
#define SIG_DESCRIPTOR 0x08074b50u

#define END_SIZE 22u
#define LOCATOR64_SIZE 20u
#define END64_SIZE 56u
#define CENTRAL_SIZE 46u
#define LOCAL_SIZE 30u
#define MAX_COMMENT 65535u

#define EXTRA_ZIP64 0x0001u
#define EXTRA_TIMESTAMP 0x5455u

#define FLAG_ENCRYPTED 0x0001u
#define FLAG_DESCRIPTOR 0x0008u
#define FLAG_STRONG_ENCRYPTION 0x0040u
#define FLAG_UTF8 0x0800u
#define FLAG_MASKED_HEADERS 0x2000u

// The central directory of a one-file archive is one header of at most 46 + 3 x 65535 bytes.
static unsigned char g_directory[CENTRAL_SIZE + 3u * 65535u];
// Tail of the file where the end record is searched for.
static unsigned char g_tail[END_SIZE + MAX_COMMENT];
// The local header with its name and extra field.
static unsigned char g_local[LOCAL_SIZE + 2u * 65535u];

static uint16_t Get16(const unsigned char *p) { return (uint16_t)(p[0] | (p[1] << 8)); }
static uint32_t Get32(const unsigned char *p) { return (uint32_t)Get16(p) | ((uint32_t)Get16(p + 2) << 16); }
static uint64_t Get64(const unsigned char *p) { return (uint64_t)Get32(p) | ((uint64_t)Get32(p + 4) << 32); }

// Reads exactly count bytes at offset. Returns true when all of them were read.
int HZ_ReadAt(HANDLE file, uint64_t offset, void *buffer, size_t count)
{
    LARGE_INTEGER position;
    position.QuadPart = (LONGLONG)offset;
    if (!SetFilePointerEx(file, position, NULL, FILE_BEGIN))
        return 0;
    unsigned char *out = (unsigned char *)buffer;
    while (count > 0) {
        DWORD chunk = count > 0x10000000u ? 0x10000000u : (DWORD)count;
        DWORD got = 0;
        if (!ReadFile(file, out, chunk, &got, NULL) || got == 0)
            return 0;
        out += got;
        count -= got;
    }
    return 1;
}

// Where the central directory lies, as the end records tell it.
typedef struct Directory {
    uint64_t offset;
    uint64_t size;
    uint64_t end;  // first byte after it: the Zip64 end record or the end record
} Directory;

// Finds the end-of-central-directory record (the last one whose comment reaches exactly to the end of the file)
// and, when a Zip64 locator precedes it, the Zip64 end record. Accepts only a single-disk archive with one entry.
static int FindDirectory(HANDLE file, uint64_t fileSize, Directory *dir)
{
    if (fileSize < END_SIZE)
        return HZ_ERR_FORMAT;
    size_t tailSize = fileSize < sizeof(g_tail) ? (size_t)fileSize : sizeof(g_tail);
    uint64_t tailStart = fileSize - tailSize;
    if (!HZ_ReadAt(file, tailStart, g_tail, tailSize))
        return HZ_ERR_OPEN;

    size_t at = tailSize - END_SIZE + 1;
    const unsigned char *end = NULL;
    while (at-- > 0) {
        const unsigned char *p = g_tail + at;
        if (Get32(p) == SIG_END && at + END_SIZE + Get16(p + 20) == tailSize) {
            end = p;
            break;
        }
    }
    if (end == NULL)
        return HZ_ERR_FORMAT;
    uint64_t endOffset = tailStart + (uint64_t)(end - g_tail);

    uint32_t disk = Get16(end + 4), dirDisk = Get16(end + 6);
    uint64_t entriesHere = Get16(end + 8), entries = Get16(end + 10);
    dir->size = Get32(end + 12);
    dir->offset = Get32(end + 16);
    dir->end = endOffset;

    unsigned char locator[LOCATOR64_SIZE];
    if (endOffset >= LOCATOR64_SIZE) {
        if (!HZ_ReadAt(file, endOffset - LOCATOR64_SIZE, locator, sizeof(locator)))
            return HZ_ERR_OPEN;
        if (Get32(locator) == SIG_LOCATOR64) {
            uint64_t end64Offset = Get64(locator + 8);
            if (Get32(locator + 4) != 0 || Get32(locator + 16) > 1)
                return HZ_ERR_FORMAT;
            if (end64Offset > endOffset - LOCATOR64_SIZE || endOffset - LOCATOR64_SIZE - end64Offset < END64_SIZE)
                return HZ_ERR_FORMAT;
            unsigned char end64[END64_SIZE];
            if (!HZ_ReadAt(file, end64Offset, end64, sizeof(end64)))
                return HZ_ERR_OPEN;
            if (Get32(end64) != SIG_END64)
                return HZ_ERR_FORMAT;
            disk = Get32(end64 + 16);
            dirDisk = Get32(end64 + 20);
            entriesHere = Get64(end64 + 24);
            entries = Get64(end64 + 32);
            dir->size = Get64(end64 + 40);
            dir->offset = Get64(end64 + 48);
            dir->end = end64Offset;
        }
    }
    if (disk != 0 || dirDisk != 0 || entriesHere != 1 || entries != 1)
        return HZ_ERR_FORMAT;
    // The directory lies right before the end records: nothing hides between them.
    if (dir->offset > dir->end || dir->end - dir->offset != dir->size)
        return HZ_ERR_FORMAT;
    if (dir->size < CENTRAL_SIZE || dir->size > sizeof(g_directory))
        return HZ_ERR_FORMAT;
    return HZ_OK;
}

// Sizes and offset of an entry, with the Zip64 extra field filling in what the 32-bit fields cannot hold.
typedef struct Sizes {
    uint64_t size;
    uint64_t packedSize;
    uint64_t localOffset;
} Sizes;

// Walks an extra-field area. Fills the Zip64 values that the header marked as escaped (all-ones) in order, and
// the extended timestamp when asked. Returns false when a block overruns the area or a needed value is missing.
static int ReadExtra(const unsigned char *extra, size_t length, Sizes *sizes, int withOffset, HzEntry *timeOut)
{
    int needSize = sizes->size == 0xFFFFFFFFu;
    int needPacked = sizes->packedSize == 0xFFFFFFFFu;
    int needOffset = withOffset && sizes->localOffset == 0xFFFFFFFFu;
    size_t at = 0;
    while (at + 4 <= length) {
        uint16_t id = Get16(extra + at);
        size_t blockSize = Get16(extra + at + 2);
        const unsigned char *data = extra + at + 4;
        if (at + 4 + blockSize > length)
            return 0;
        if (id == EXTRA_ZIP64) {
            size_t used = 0;
            if (needSize && used + 8 <= blockSize) {
                sizes->size = Get64(data + used);
                used += 8;
                needSize = 0;
            }
            if (needPacked && used + 8 <= blockSize) {
                sizes->packedSize = Get64(data + used);
                used += 8;
                needPacked = 0;
            }
            if (needOffset && used + 8 <= blockSize) {
                sizes->localOffset = Get64(data + used);
                needOffset = 0;
            }
        } else if (id == EXTRA_TIMESTAMP && timeOut != NULL && blockSize >= 5 && (data[0] & 1)) {
            timeOut->hasUnixTime = 1;
            timeOut->unixTime = (int64_t)(int32_t)Get32(data + 1);
        }
        at += 4 + blockSize;
    }
    return !needSize && !needPacked && !needOffset;
}

// Checks the local header against the central entry and sets the data offset. dir bounds the member's data.
static int CheckLocal(HANDLE file, const Directory *dir, const unsigned char *central, const Sizes *sizes,
                      HzEntry *entry)
{
    if (sizes->localOffset > dir->offset || dir->offset - sizes->localOffset < LOCAL_SIZE)
        return HZ_ERR_FORMAT;
    unsigned char *local = g_local;
    if (!HZ_ReadAt(file, sizes->localOffset, local, LOCAL_SIZE))
        return HZ_ERR_OPEN;
    uint16_t flags = Get16(central + 8);
    uint16_t nameLength = Get16(local + 26), extraLength = Get16(local + 28);
    if (Get32(local) != SIG_LOCAL)
        return HZ_ERR_FORMAT;
    if ((Get16(local + 6) & FLAG_ENCRYPTED) != 0)
        return HZ_ERR_UNSUPPORTED;
    if (Get16(local + 8) != Get16(central + 10) || ((Get16(local + 6) ^ flags) & FLAG_DESCRIPTOR) != 0)
        return HZ_ERR_FORMAT;

    uint64_t headerEnd = sizes->localOffset + LOCAL_SIZE + nameLength + extraLength;
    if (headerEnd > dir->offset || dir->offset - headerEnd < sizes->packedSize)
        return HZ_ERR_FORMAT;
    entry->dataOffset = headerEnd;

    // Name and extra field of the local header follow it; both must be readable, and the name must be the
    // central one, so that a tool that reads local headers only sees the same file.
    unsigned char *names = g_local + LOCAL_SIZE;
    if (!HZ_ReadAt(file, sizes->localOffset + LOCAL_SIZE, names, (size_t)nameLength + extraLength))
        return HZ_ERR_OPEN;
    if (nameLength != Get16(central + 28) || memcmp(names, central + CENTRAL_SIZE, nameLength) != 0)
        return HZ_ERR_FORMAT;

    if ((flags & FLAG_DESCRIPTOR) != 0)
        return HZ_OK;  // the local copies are zero; the descriptor is checked by CheckDescriptor
    Sizes localSizes = { Get32(local + 22), Get32(local + 18), 0 };
    if (!ReadExtra(names + nameLength, extraLength, &localSizes, 0, NULL))
        return HZ_ERR_FORMAT;
    if (Get32(local + 14) != entry->crc || localSizes.size != sizes->size || localSizes.packedSize != sizes->packedSize)
        return HZ_ERR_FORMAT;
    return HZ_OK;
}

// With a data descriptor the sizes and CRC follow the data: they must lie before the central directory and
// agree with it, in the 32-bit or the Zip64 layout, with or without the optional signature.
static int CheckDescriptor(HANDLE file, const Directory *dir, const HzEntry *entry)
{
    unsigned char descriptor[28];
    uint64_t dataEnd = entry->dataOffset + entry->packedSize;
    uint64_t room = dir->offset - dataEnd;
    size_t length = room < sizeof(descriptor) ? (size_t)room : sizeof(descriptor);
    if (length < 12)
        return HZ_ERR_FORMAT;
    if (!HZ_ReadAt(file, dataEnd, descriptor, length))
        return HZ_ERR_OPEN;
    const unsigned char *p = descriptor;
    if (length >= 16 && Get32(p) == SIG_DESCRIPTOR && Get32(p + 4) == entry->crc) {
        p += 4;
        length -= 4;
    }
    if (Get32(p) != entry->crc)
        return HZ_ERR_FORMAT;
    if (length >= 20 && Get64(p + 4) == entry->packedSize && Get64(p + 12) == entry->size)
        return HZ_OK;
    if (Get32(p + 4) == entry->packedSize && Get32(p + 8) == entry->size)
        return HZ_OK;
    return HZ_ERR_FORMAT;
}

// Reads and checks the archive; on success entry describes its one file.
int HZ_ReadArchive(HANDLE file, HzEntry *entry)
{
    LARGE_INTEGER fileSize;
    Directory dir;
    ZeroMemory(entry, sizeof(*entry));
    if (!GetFileSizeEx(file, &fileSize))
        return HZ_ERR_OPEN;
    int result = FindDirectory(file, (uint64_t)fileSize.QuadPart, &dir);
    if (result != HZ_OK)
        return result;
    if (!HZ_ReadAt(file, dir.offset, g_directory, (size_t)dir.size))
        return HZ_ERR_OPEN;

    const unsigned char *c = g_directory;
    uint16_t flags = Get16(c + 8);
    size_t nameLength = Get16(c + 28), extraLength = Get16(c + 30), commentLength = Get16(c + 32);
    if (Get32(c) != SIG_CENTRAL || CENTRAL_SIZE + nameLength + extraLength + commentLength != dir.size)
        return HZ_ERR_FORMAT;
    if ((flags & (FLAG_ENCRYPTED | FLAG_STRONG_ENCRYPTION | FLAG_MASKED_HEADERS)) != 0)
        return HZ_ERR_UNSUPPORTED;
    entry->method = Get16(c + 10);
    if (entry->method != HZ_METHOD_STORED && entry->method != HZ_METHOD_DEFLATE)
        return HZ_ERR_UNSUPPORTED;

    const char *name = (const char *)c + CENTRAL_SIZE;
    // A directory entry (trailing separator or the MS-DOS directory attribute) is not a file.
    if (nameLength == 0 || name[nameLength - 1] == '/' || name[nameLength - 1] == '\\' || (Get32(c + 38) & 0x10))
        return HZ_ERR_FORMAT;
    if (!HZ_SafeBaseName(name, nameLength, (flags & FLAG_UTF8) != 0, entry->name, sizeof(entry->name)))
        return HZ_ERR_FORMAT;

    entry->dosTime = Get16(c + 12);
    entry->dosDate = Get16(c + 14);
    entry->crc = Get32(c + 16);
    Sizes sizes = { Get32(c + 24), Get32(c + 20), Get32(c + 42) };
    uint32_t startDisk = Get16(c + 34);
    if (!ReadExtra(c + CENTRAL_SIZE + nameLength, extraLength, &sizes, 1, entry))
        return HZ_ERR_FORMAT;
    if (startDisk != 0)
        return HZ_ERR_FORMAT;
    entry->size = sizes.size;
    entry->packedSize = sizes.packedSize;
    if (entry->method == HZ_METHOD_STORED && entry->size != entry->packedSize)
        return HZ_ERR_FORMAT;

    result = CheckLocal(file, &dir, c, &sizes, entry);
    if (result == HZ_OK && (flags & FLAG_DESCRIPTOR) != 0)
        result = CheckDescriptor(file, &dir, entry);
    return result;
}
