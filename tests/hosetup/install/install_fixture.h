// A prepared setup state for the installation steps: temporary target folders, file records
// made in memory, and helpers to read what the steps wrote.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "process.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"

struct RecordPlan {
    std::uint32_t directoryId;
    const char* fileName;
    const char* subFolder = "";
    std::uint64_t size = 0;
    std::uint64_t transferSize = 0;
};

class InstallFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        root_ = makeTempFolder("install");
        ASSERT_FALSE(root_.empty());
        clearSetupState();
        g_setup.optionSilent = 1;
        // Silent runs still show the progress window, whose template lives in the language module.
        g_setup.languageModule = GetModuleHandleA("holang.dll");
        g_setup.scale = 1.0;
        setFolder(g_setup.installFolder, "Program\\");
        setFolder(g_setup.commonDataFolder, "Common\\Vistrel\\");
        setFolder(g_setup.userDataFolder, "User\\Vistrel\\");
        setFolder(g_setup.documentsFolder, "Documents\\");
        setFolder(g_setup.settingFolder, "Documents\\Settings\\");
        setFolder(g_setup.drawingFolder, "Documents\\Drawings\\");
        setFolder(g_setup.libraryFolder, "Documents\\Libraries\\");
        setFolder(g_setup.sourceFolder, "Source\\");
        setFolder(g_setup.backupFolder, "Common\\Vistrel\\Backups\\2022-11-29 120000000\\");
        CreateDirectoryA(g_setup.sourceFolder, nullptr);
    }

    void TearDown() override
    {
        if (g_setup.logFile)
            CloseHandle(g_setup.logFile);
        g_setup.logFile = nullptr;
        std::free(g_setup.fileRecords);
        g_setup.fileRecords = nullptr;
        g_setup.fileCount = 0;
        removeTree(root_);
    }

    void setFolder(char* field, const char* below) { HOI_CopyA(field, kPathCapacity, root_.c_str(), below); }

    void setRecords(const std::vector<RecordPlan>& records)
    {
        std::free(g_setup.fileRecords);
        g_setup.fileRecords = static_cast<FileRecord*>(std::calloc(records.size() + 1, sizeof(FileRecord)));
        g_setup.fileCount = static_cast<std::int32_t>(records.size());
        for (std::size_t i = 0; i < records.size(); ++i) {
            FileRecord& record = g_setup.fileRecords[i];
            record.directoryId = records[i].directoryId;
            record.size = records[i].size;
            record.transferSize = records[i].transferSize;
            HOI_CopyA(record.fileName, sizeof record.fileName, records[i].fileName);
            HOI_CopyA(record.subFolder, sizeof record.subFolder, records[i].subFolder);
        }
    }

    std::string logPath() const { return std::string(g_setup.commonDataFolder) + "hosetup.log"; }

    // The log's lines as written (CR LF separated), after closing it so everything is on disk.
    std::vector<std::string> logLines()
    {
        if (g_setup.logFile) {
            CloseHandle(g_setup.logFile);
            g_setup.logFile = nullptr;
        }
        return fileLines(logPath());
    }

    static std::vector<std::string> fileLines(const std::string& path)
    {
        std::ifstream in(path, std::ios::binary);
        std::stringstream all;
        all << in.rdbuf();
        std::vector<std::string> lines;
        std::string text = all.str();
        std::size_t start = 0;
        for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
            lines.push_back(text.substr(start, end - start));
        if (start < text.size())
            lines.push_back(text.substr(start));
        return lines;
    }

    static void writeFile(const std::string& path, const std::string& content)
    {
        std::ofstream out(path, std::ios::binary);
        out << content;
    }

    static std::string readFile(const std::string& path)
    {
        std::ifstream in(path, std::ios::binary);
        std::stringstream all;
        all << in.rdbuf();
        return all.str();
    }

    // A one-file zip with the stored method, as the unpacker reads it.
    static void writeStoredZip(const std::string& path, const std::string& name, const std::string& content)
    {
        std::uint32_t crc = 0xFFFFFFFFu;
        for (unsigned char byte : content) {
            crc ^= byte;
            for (int bit = 0; bit < 8; ++bit)
                crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
        }
        crc = ~crc;
        std::string zip;
        auto u16 = [&](unsigned v) { zip += char(v & 0xFF); zip += char((v >> 8) & 0xFF); };
        auto u32 = [&](std::uint32_t v) { u16(v & 0xFFFF); u16(v >> 16); };
        const std::uint32_t size = static_cast<std::uint32_t>(content.size());
        const auto nameLength = static_cast<unsigned>(name.size());
        u32(0x04034b50); u16(20); u16(0); u16(0); u16(0); u16(0x21);
        u32(crc); u32(size); u32(size); u16(nameLength); u16(0);
        zip += name + content;
        const std::uint32_t central = static_cast<std::uint32_t>(zip.size());
        u32(0x02014b50); u16(20); u16(20); u16(0); u16(0); u16(0); u16(0x21);
        u32(crc); u32(size); u32(size); u16(nameLength); u16(0); u16(0); u16(0); u16(0); u32(0); u32(0);
        zip += name;
        const std::uint32_t centralSize = static_cast<std::uint32_t>(zip.size()) - central;
        u32(0x06054b50); u16(0); u16(0); u16(1); u16(1); u32(centralSize); u32(central); u16(0);
        writeFile(path, zip);
    }

    std::string root_;
};
