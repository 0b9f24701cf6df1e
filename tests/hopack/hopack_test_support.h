// Helpers of the hopack tests: a temporary folder per test, running hopack and unzip, reading a
// distribution's data file with the shared layout header.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "format/data_format.h"

namespace fs = std::filesystem;

struct RunResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

struct DataFile {
    SetupDataHeader header{};
    std::vector<FileRecord> files;
    std::vector<ShortcutRecord> shortcuts;
    std::uint64_t bytes = 0;
};

// A fresh folder below the system's temporary folder, removed after the test.
class HopackTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    fs::path dir;
    fs::path programDir;   // fake own files of the setup program
};

void WriteText(const fs::path& path, const std::string& text);
void WriteRandom(const fs::path& path, std::size_t size, unsigned seed);
std::string ReadAll(const fs::path& path);
RunResult RunShell(const std::string& commandLine);     // through the shell, output captured
RunResult Hopack(const std::string& arguments);    // the hopack under test
bool ReadDataFile(const fs::path& path, DataFile& data);
std::string Text(const char* field, std::size_t size);
std::string MemberName(std::size_t index);
std::vector<std::string> FolderNames(const fs::path& folder);
