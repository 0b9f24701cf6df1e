// The image digest of the program files the setup program runs, and their check: the digest
// covers every byte the loader maps but not what code signing changes; the built files pass
// (their digests, written at build time by own_digests.py, are those the program computes), other
// files do not, and a linked file is run by its final path.
#include <gtest/gtest.h>

#include "core/core.h"
#include "host_links.h"
#include "process.h"

#include <cstring>
#include <fstream>
#include <functional>

namespace {

std::uint32_t read32(const std::string& bytes, std::size_t at)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

// The digest of the bytes, written to a file; false when it has none.
bool digestOf(const std::string& bytes, const std::string& folder, ImageDigest* digest)
{
    const std::string path = folder + "image.exe";
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    const bool made = file != INVALID_HANDLE_VALUE && imageDigest(file, digest);
    CloseHandle(file);
    return made;
}

} // namespace

TEST(ImageDigest, CountsTheMappedBytesButNotWhatSigningChanges)
{
    const std::string built = readFile(testBinFolder() + "hounzip.exe"), folder = makeTempFolder("digest");
    ASSERT_GT(built.size(), 0x400u);
    const std::size_t optional = read32(built, 0x3C) + 24;   // a PE32+ optional header
    const std::size_t sections = optional + (read32(built, optional - 4) & 0xFFFF);
    const std::size_t code = read32(built, sections + 20);   // the first section's raw data
    const struct { const char* what; std::function<void(std::string&)> change; bool same; } rows[] = {
        {"as built", [](std::string&) {}, true},
        {"checksum", [&](std::string& b) { b.replace(optional + 64, 4, "\x12\x34\x56\x78"); }, true},
        {"certificate entry", [&](std::string& b) { b.replace(optional + 144, 8, "\x00\x10\x01\x00\x80\x02\x00\x00", 8); }, true},
        {"signature appended", [](std::string& b) { b += std::string(7, '\0') + "a PKCS#7 signature"; }, true},
        {"a code byte", [&](std::string& b) { b[code + 16] ^= 1; }, false},
        {"the byte before the checksum", [&](std::string& b) { b[optional + 63] ^= 1; }, false},
        {"the byte after the certificate entry", [&](std::string& b) { b[optional + 152] ^= 1; }, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::string bytes = built;
        row.change(bytes);
        ImageDigest digest;
        ASSERT_TRUE(digestOf(bytes, folder, &digest));
        EXPECT_EQ(row.same, std::memcmp(digest.bytes, kUnpackerDigests[0].bytes, kImageDigestSize) == 0);
    }
    ImageDigest digest;
    EXPECT_FALSE(digestOf(built.substr(0, built.size() / 2), folder, &digest)) << "cut in the middle";
    EXPECT_FALSE(digestOf("MZ" + std::string(4000, 'x'), folder, &digest)) << "no program image";
    removeTree(folder);
}

TEST(OwnFiles, TheBuiltFilesPassAndOthersAreRefused)
{
    const struct { const char* file; const ImageDigest* known; std::size_t count; OwnFileCheck found; } rows[] = {
        {"hounzip.exe", kUnpackerDigests, kUnpackerDigestCount, OwnFileCheck::Accepted},
        {"holang.dll", kLanguageModuleDigests, kLanguageModuleDigestCount, OwnFileCheck::Accepted},
        {"holang_de.dll", kLanguageModuleDigests, kLanguageModuleDigestCount, OwnFileCheck::Accepted},
        {"fake_holang_no_exit.dll", kLanguageModuleDigests, kLanguageModuleDigestCount, OwnFileCheck::Foreign},
        {"hosetup.chm", kLanguageModuleDigests, kLanguageModuleDigestCount, OwnFileCheck::Unreadable},
        {"missing.dll", kLanguageModuleDigests, kLanguageModuleDigestCount, OwnFileCheck::Unreadable},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        HANDLE file = nullptr;
        char reached[kPathCapacity];
        EXPECT_EQ(row.found,
                  openOwnFile((testBinFolder() + row.file).c_str(), row.known, row.count, &file, reached));
        EXPECT_EQ(row.found == OwnFileCheck::Accepted, file != nullptr);
        if (file)
            CloseHandle(file);
    }
}

// A file reached through a link (or a mapped drive) is run by its final path: the link cannot
// be turned to another file between the check and the use.
TEST(OwnFiles, ALinkedFileIsRunByItsFinalPath)
{
    const std::string folder = makeTempFolder("linked"), link = folder + "hounzip.exe";
    const std::string real = testBinFolder() + "hounzip.exe";
    ASSERT_TRUE(makeHostLink(link, real));
    HANDLE file = nullptr;
    char reached[kPathCapacity];
    EXPECT_EQ(OwnFileCheck::Accepted,
              openOwnFile(link.c_str(), kUnpackerDigests, kUnpackerDigestCount, &file, reached));
    EXPECT_EQ(0, _stricmp(reached, real.c_str())) << reached;
    if (file)
        CloseHandle(file);
    EXPECT_TRUE(removeHostLink(link));
    removeTree(folder);
}
