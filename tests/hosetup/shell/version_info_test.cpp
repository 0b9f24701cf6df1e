// The version resources of the shipped files, read back as Explorer and inventory tools read them:
// the product's names, the project's version, the file's own name and a translation that matches
// the module's language.
#include <gtest/gtest.h>

#include "process.h"

#include <winver.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

std::string stringValue(std::vector<char>& data, const char* block, const char* name)
{
    char path[128];
    std::snprintf(path, sizeof path, "\\StringFileInfo\\%s\\%s", block, name);
    char* text = nullptr;
    UINT length = 0;
    if (!VerQueryValueA(data.data(), path, reinterpret_cast<void**>(&text), &length) || !text)
        return "(none)";
    return text;
}

} // namespace

TEST(VersionInfo, ShippedFilesNameProductVersionAndLanguage)
{
    const struct { const char* file; const char* original; WORD language; DWORD type; } rows[] = {
        {"hosetup.exe", "hosetup.exe", 0x0409, VFT_APP},
        {"hounzip.exe", "hounzip.exe", 0x0409, VFT_APP},
        {"hopack.exe", "hopack.exe", 0x0409, VFT_APP},
        {"holang.dll", "holang.dll", 0x0409, VFT_DLL},
        {"holang_de.dll", "holang.dll", 0x0407, VFT_DLL},
    };
    unsigned major = 0, minor = 0, patch = 0;
    ASSERT_EQ(std::sscanf(HO_PROJECT_VERSION, "%u.%u.%u", &major, &minor, &patch), 3);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        const std::string path = testBinFolder() + row.file;
        DWORD ignored = 0;
        const DWORD size = GetFileVersionInfoSizeA(path.c_str(), &ignored);
        ASSERT_GT(size, 0u) << "no version resource";
        std::vector<char> data(size);
        ASSERT_TRUE(GetFileVersionInfoA(path.c_str(), 0, size, data.data()));

        VS_FIXEDFILEINFO* fixed = nullptr;
        UINT length = 0;
        ASSERT_TRUE(VerQueryValueA(data.data(), "\\", reinterpret_cast<void**>(&fixed), &length));
        EXPECT_EQ(fixed->dwFileVersionMS, MAKELONG(minor, major));
        EXPECT_EQ(fixed->dwFileVersionLS, MAKELONG(0, patch));
        EXPECT_EQ(fixed->dwFileType, row.type);

        // One translation, the module's language in the Windows Latin-1 code page, and the strings
        // under exactly that block.
        WORD* translation = nullptr;
        ASSERT_TRUE(VerQueryValueA(data.data(), "\\VarFileInfo\\Translation", reinterpret_cast<void**>(&translation), &length));
        ASSERT_EQ(length, 2 * sizeof(WORD));
        EXPECT_EQ(translation[0], row.language);
        EXPECT_EQ(translation[1], 1252);
        char block[16];
        std::snprintf(block, sizeof block, "%04X%04X", translation[0], translation[1]);
        EXPECT_EQ(stringValue(data, block, "CompanyName"), "Harwick-Orbel");
        EXPECT_EQ(stringValue(data, block, "ProductName"), "Vistrel");
        EXPECT_EQ(stringValue(data, block, "FileVersion"), HO_PROJECT_VERSION);
        EXPECT_EQ(stringValue(data, block, "ProductVersion"), HO_PROJECT_VERSION);
        EXPECT_EQ(stringValue(data, block, "OriginalFilename"), row.original);
        EXPECT_EQ(stringValue(data, block, "LegalCopyright").substr(0, 28), "Copyright (C) Harwick-Orbel ");
        EXPECT_NE(stringValue(data, block, "FileDescription"), "(none)");
    }
}
