// A silent setup state for the installation and removal steps: the product's folders inside a
// temporary folder, file records made in memory, and a file writer (process.h reads them).
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "files/files.h"
#include "install/install.h"
#include "links/links.h"
#include "setuplog/setuplog.h"
#include "process.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"

inline void writeFile(const std::string& to, const std::string& text) { std::ofstream(to, std::ios::binary) << text; }

class InstallFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        root_ = makeTempFolder("install");
        clearSetupState();
        g_setup.optionSilent = 1;
        // Silent runs still show the progress window, whose template lives in the language module.
        g_setup.languageModule = GetModuleHandleA("holang.dll");
        g_setup.scale = 1.0;
        HOI_CopyA(g_setup.programFolder, kPathCapacity, testBinFolder().c_str());   // hounzip.exe
        // The folders the tests use; the others stay empty, so no path lies inside them.
        HOI_CopyA(g_setup.installFolder, kPathCapacity, root_.c_str(), "Program\\");
        HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, root_.c_str(), "Common\\");
        HOI_CopyA(g_setup.drawingFolder, kPathCapacity, root_.c_str(), "Drawings\\");
        HOI_CopyA(g_setup.sourceFolder, kPathCapacity, root_.c_str(), "Source\\");
        for (const char* folder : {g_setup.installFolder, g_setup.commonDataFolder, g_setup.drawingFolder,
                                   g_setup.sourceFolder})
            CreateDirectoryA(folder, nullptr);
    }

    void TearDown() override
    {
        exitSetup();   // closes the log and the progress window, frees the records
        removeTree(root_);
    }

    void setRecords(const std::vector<std::pair<std::uint32_t, const char*>>& records)
    {
        g_setup.fileRecords = static_cast<FileRecord*>(std::calloc(records.size() + 1, sizeof(FileRecord)));
        g_setup.fileCount = static_cast<std::int32_t>(records.size());
        for (std::size_t i = 0; i < records.size(); ++i) {
            g_setup.fileRecords[i].directoryId = records[i].first;
            HOI_CopyA(g_setup.fileRecords[i].fileName, 64, records[i].second);
        }
    }

    std::string logPath() const { return std::string(g_setup.commonDataFolder) + "hosetup.log"; }

    std::string root_;
};
