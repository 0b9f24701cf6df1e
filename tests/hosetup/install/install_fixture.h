// A silent setup state for the installation and removal steps: the product's folders inside a
// temporary folder, file records made in memory, and a file writer (process.h reads them).
#pragma once

#include <vector>

#include "files/files.h"
#include "install/install.h"
#include "links/links.h"
#include "setup_fixture.h"
#include "setuplog/setuplog.h"

class InstallFixture : public SetupFixture {
protected:
    void SetUp() override
    {
        SetupFixture::SetUp();
        HOI_CopyA(g_setup.programFolder, kPathCapacity, testBinFolder().c_str());   // hounzip.exe
        // The folders the tests use; the others stay empty, so no path lies inside them.
        for (const auto& [folder, name] : {std::pair{g_setup.installFolder, "Program\\"}, {g_setup.commonDataFolder, "Common\\"},
                                           {g_setup.drawingFolder, "Drawings\\"}, {g_setup.sourceFolder, "Source\\"}}) {
            HOI_CopyA(folder, kPathCapacity, root_.c_str(), name);
            CreateDirectoryA(folder, nullptr);
        }
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

};
