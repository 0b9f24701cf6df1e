// Shared set-up of the setup-description tests: a cleared setup state with the product's key and
// folder word, a scratch folder, and builders for data files and in-memory records.
#pragma once

#include "setupdata/setupdata.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace setupdata_test {

inline void setProductIdentity()
{
    HOI_CopyA(g_setup.registryKey, kRegistryKeyCapacity, "Software\\", "Harwick-Orbel\\", "Vistrel Professional");
    HOI_CopyA(g_setup.productFolderWord, kPathCapacity, "Harwick-Orbel\\", "Vistrel", " (64-bit)\\");
}

// Record content of a data file under construction.
struct DataFileContent {
    std::string magic = kSetupDataMagic;
    std::string compileDate = "2024-05-17";
    std::string productName = "Vistrel Professional";
    std::string productLabel = "Vistrel Professional 2024";
    std::vector<FileRecord> files;
    std::vector<ShortcutRecord> shortcuts;
};

inline FileRecord fileRecord(std::uint32_t id, const char* subFolder, const char* name, std::uint64_t size = 0)
{
    FileRecord record = {};
    record.directoryId = id;
    record.size = size;
    record.transferSize = size / 2;
    HOI_CopyA(record.subFolder, sizeof record.subFolder, subFolder);
    HOI_CopyA(record.fileName, sizeof record.fileName, name);
    return record;
}

inline ShortcutRecord shortcutRecord(std::uint32_t fileIndex, std::uint32_t iconId, const char* iconPath,
                                     const char* name)
{
    ShortcutRecord record = {};
    record.fileIndex = fileIndex;
    record.iconDirectoryId = iconId;
    HOI_CopyA(record.iconPath, sizeof record.iconPath, iconPath);
    HOI_CopyA(record.name, sizeof record.name, name);
    HOI_CopyA(record.arguments, sizeof record.arguments, "-n");
    return record;
}

// The bytes of a data file: header with the content's counts, then the records.
inline std::vector<char> dataFileBytes(const DataFileContent& content)
{
    SetupDataHeader header = {};
    std::memcpy(header.magic, content.magic.data(), std::min(content.magic.size(), sizeof header.magic));
    HOI_CopyA(header.compileDate, sizeof header.compileDate, content.compileDate.c_str());
    HOI_CopyA(header.productName, sizeof header.productName, content.productName.c_str());
    HOI_CopyA(header.productLabel, sizeof header.productLabel, content.productLabel.c_str());
    header.fileCount = static_cast<std::int32_t>(content.files.size());
    header.shortcutCount = static_cast<std::int32_t>(content.shortcuts.size());
    std::vector<char> bytes(reinterpret_cast<const char*>(&header), reinterpret_cast<const char*>(&header + 1));
    const char* files = reinterpret_cast<const char*>(content.files.data());
    bytes.insert(bytes.end(), files, files + content.files.size() * sizeof(FileRecord));
    const char* shortcuts = reinterpret_cast<const char*>(content.shortcuts.data());
    bytes.insert(bytes.end(), shortcuts, shortcuts + content.shortcuts.size() * sizeof(ShortcutRecord));
    return bytes;
}

inline void setCounts(std::vector<char>& bytes, std::int32_t fileCount, std::int32_t shortcutCount)
{
    std::memcpy(bytes.data() + offsetof(SetupDataHeader, fileCount), &fileCount, 4);
    std::memcpy(bytes.data() + offsetof(SetupDataHeader, shortcutCount), &shortcutCount, 4);
}

inline bool writeFileBytes(const std::string& path, const std::vector<char>& bytes)
{
    HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const BOOL ok = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    return ok && written == bytes.size();
}

// Puts records into the setup state as the reader would, in blocks exitSetup frees.
inline void installRecords(const std::vector<FileRecord>& files, const std::vector<ShortcutRecord>& shortcuts = {})
{
    std::free(g_setup.fileRecords);
    std::free(g_setup.shortcutRecords);
    g_setup.fileRecords = static_cast<FileRecord*>(std::calloc(files.size() + 1, sizeof(FileRecord)));
    g_setup.shortcutRecords = static_cast<ShortcutRecord*>(std::calloc(shortcuts.size() + 1, sizeof(ShortcutRecord)));
    if (!files.empty())
        std::memcpy(g_setup.fileRecords, files.data(), files.size() * sizeof(FileRecord));
    if (!shortcuts.empty())
        std::memcpy(g_setup.shortcutRecords, shortcuts.data(), shortcuts.size() * sizeof(ShortcutRecord));
    g_setup.fileCount = static_cast<std::int32_t>(files.size());
    g_setup.shortcutCount = static_cast<std::int32_t>(shortcuts.size());
}

// A cleared setup state for each test, released again afterwards; a scratch folder of its own.
class SetupStateTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        clearSetupState();
        setProductIdentity();
        // Alerts come from the language module's template.
        g_setup.languageModule = GetModuleHandleA("holang.dll");
        g_setup.scale = 1.0;
        char temp[MAX_PATH];
        GetTempPathA(sizeof temp, temp);
        scratch_ = std::string(temp) + "ho_setupdata_" + std::to_string(GetCurrentProcessId()) + "\\";
        CreateDirectoryA(scratch_.c_str(), nullptr);
    }

    void TearDown() override
    {
        exitSetup();
        WIN32_FIND_DATAA found;
        HANDLE search = FindFirstFileA((scratch_ + "*").c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) {
            do {
                DeleteFileA((scratch_ + found.cFileName).c_str());
            } while (FindNextFileA(search, &found));
            FindClose(search);
        }
        RemoveDirectoryA(scratch_.c_str());
    }

    std::string scratchPath(const char* name) const { return scratch_ + name; }

    std::string scratch_;
};

} // namespace setupdata_test
