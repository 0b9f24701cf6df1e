// The program's own files that it runs: the language module it loads and the unpacker it starts.
// Both lie beside the program, usually in a Downloads folder anyone can write to, and run with
// the program's administrator rights; so each is run only when it is a file built with this
// program, and held open without write or delete sharing from the check until its use.
//
// The image digest, SHA-256, covers the file from its first byte up to the end of the section
// whose raw data ends last, leaving out two fields of the optional header: the CheckSum (4 bytes)
// and the Certificate Table entry of the data directories (8 bytes). That is every byte the
// loader maps, and nothing that code signing changes: a signature is appended after the sections
// (with zero padding) and recorded in those two fields. cmake/own_digests.py applies the same rule to
// the built files at build time; the two must be changed together.
#include "core/core.h"
#include "strings/hoi_strings.h"

#include <wincrypt.h>

#include <cstring>

namespace {

constexpr DWORD kHeaderBlockSize = 4096;   // the headers and the section table must lie in it
constexpr DWORD kChecksumOffset = 64;      // in the optional header, PE32 and PE32+ alike
constexpr DWORD kCertificateEntryPe32 = 128;      // data directory 4 of a PE32 optional header
constexpr DWORD kCertificateEntryPe32Plus = 144;  // ... and of a PE32+ one
constexpr DWORD kSectionHeaderSize = 40;
constexpr std::size_t kReadBlockSize = 16384;

std::uint32_t read16(const unsigned char* p)
{
    return p[0] | (p[1] << 8);
}

std::uint32_t read32(const unsigned char* p)
{
    return read16(p) | (read16(p + 2) << 16);
}

// Where the digest's bytes end and where the two left-out fields lie; false when the headers
// are not those of a program image or the sections reach beyond the file.
bool digestRange(const unsigned char* head, DWORD headSize, std::uint64_t fileSize, std::uint64_t* end,
                 DWORD* checksum, DWORD* certificateEntry)
{
    if (headSize < 0x40 || head[0] != 'M' || head[1] != 'Z')
        return false;
    const std::uint64_t pe = read32(head + 0x3C);
    if (pe + 24 > headSize || std::memcmp(head + pe, "PE\0\0", 4) != 0)
        return false;
    const std::uint32_t sections = read16(head + pe + 6);
    const std::uint32_t optionalSize = read16(head + pe + 20);
    const std::uint64_t optional = pe + 24;
    const std::uint64_t tableEnd = optional + optionalSize + std::uint64_t(sections) * kSectionHeaderSize;
    if (tableEnd > headSize)
        return false;
    const std::uint32_t magic = read16(head + optional);
    const DWORD entry = magic == 0x10B ? kCertificateEntryPe32 : magic == 0x20B ? kCertificateEntryPe32Plus : 0;
    if (entry == 0 || optionalSize < entry + 8)
        return false;
    std::uint64_t last = 0;
    for (std::uint32_t i = 0; i < sections; ++i) {
        const unsigned char* section = head + optional + optionalSize + i * kSectionHeaderSize;
        const std::uint64_t rawSize = read32(section + 16);
        if (rawSize != 0 && read32(section + 20) + rawSize > last)
            last = read32(section + 20) + rawSize;
    }
    if (last < tableEnd || last > fileSize)
        return false;
    *end = last;
    *checksum = static_cast<DWORD>(optional + kChecksumOffset);
    *certificateEntry = static_cast<DWORD>(optional + entry);
    return true;
}

bool hashBytes(HCRYPTHASH hash, const unsigned char* bytes, std::uint64_t count)
{
    return count == 0 || CryptHashData(hash, bytes, static_cast<DWORD>(count), 0);
}

// The digest of the bytes up to end: the two fields out of the header block, the rest of the
// range read from the file, whose position is at headSize.
bool hashImage(HCRYPTHASH hash, HANDLE file, const unsigned char* head, DWORD headSize, std::uint64_t end,
               DWORD checksum, DWORD certificateEntry)
{
    const std::uint64_t headEnd = end < headSize ? end : headSize;
    if (!hashBytes(hash, head, checksum) ||
        !hashBytes(hash, head + checksum + 4, certificateEntry - (checksum + 4)) ||
        !hashBytes(hash, head + certificateEntry + 8, headEnd - (certificateEntry + 8)))
        return false;
    unsigned char block[kReadBlockSize];
    for (std::uint64_t done = headEnd; done < end;) {
        const DWORD want = static_cast<DWORD>(end - done < sizeof block ? end - done : sizeof block);
        DWORD got = 0;
        if (!ReadFile(file, block, want, &got, nullptr) || got != want || !hashBytes(hash, block, got))
            return false;
        done += got;
    }
    return true;
}

bool isKnown(const ImageDigest& digest, const ImageDigest* known, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (std::memcmp(digest.bytes, known[i].bytes, kImageDigestSize) == 0)
            return true;
    }
    return false;
}

} // namespace

bool imageDigest(HANDLE file, ImageDigest* digest)
{
    LARGE_INTEGER size;
    unsigned char head[kHeaderBlockSize];
    DWORD headSize = 0;
    if (!GetFileSizeEx(file, &size) || !SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_BEGIN) ||
        !ReadFile(file, head, sizeof head, &headSize, nullptr))
        return false;
    std::uint64_t end = 0;
    DWORD checksum = 0, certificateEntry = 0;
    if (!digestRange(head, headSize, static_cast<std::uint64_t>(size.QuadPart), &end, &checksum, &certificateEntry))
        return false;

    HCRYPTPROV provider = 0;
    if (!CryptAcquireContextA(&provider, nullptr, nullptr, PROV_RSA_AES, CRYPT_VERIFYCONTEXT))
        return false;
    HCRYPTHASH hash = 0;
    DWORD digestSize = kImageDigestSize;
    const bool done = CryptCreateHash(provider, CALG_SHA_256, 0, 0, &hash) &&
                      hashImage(hash, file, head, headSize, end, checksum, certificateEntry) &&
                      CryptGetHashParam(hash, HP_HASHVAL, digest->bytes, &digestSize, 0) &&
                      digestSize == kImageDigestSize;
    if (hash)
        CryptDestroyHash(hash);
    CryptReleaseContext(provider, 0);
    return done;
}

OwnFileCheck openOwnFile(const char* path, const ImageDigest* known, std::size_t count, HANDLE* file,
                         char* reached)
{
    *file = nullptr;
    HOI_InitA(reached);
    // Read sharing only: while this handle is open nobody can write, rename or delete the file,
    // and the loader and CreateProcess, which ask for read and execute access, still open it.
    HANDLE handle = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return OwnFileCheck::Unreadable;
    ImageDigest digest;
    OwnFileCheck found = OwnFileCheck::Accepted;
    if (!finalPathOf(handle, reached, kPathCapacity) || !imageDigest(handle, &digest))
        found = OwnFileCheck::Unreadable;
    else if (!isKnown(digest, known, count))
        found = OwnFileCheck::Foreign;
    if (found != OwnFileCheck::Accepted) {
        CloseHandle(handle);
        return found;
    }
    *file = handle;
    return found;
}
