#include "hopack_test_support.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <sstream>
#include <sys/wait.h>

void HopackTest::SetUp()
{
    std::string pattern = (fs::temp_directory_path() / "hopack-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    dir = pattern;
    programDir = dir / "program";
    fs::create_directories(programDir);
    for (const char* name : {"holang.dll", "hosetup.chm", "hosetup.exe", "hounzip.exe"})
        WriteText(programDir / name, std::string("own file ") + name + "\n");
}

void HopackTest::TearDown()
{
    std::error_code ec;
    fs::remove_all(dir, ec);
}

void WriteText(const fs::path& path, const std::string& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

void WriteRandom(const fs::path& path, std::size_t size, unsigned seed)
{
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& c : bytes) c = static_cast<char>(random() & 0xFF);
    WriteText(path, bytes);
}

std::string ReadAll(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

RunResult RunShell(const std::string& commandLine)
{
    static int counter = 0;
    const fs::path base = fs::temp_directory_path() /
                          ("hopack-run-" + std::to_string(getpid()) + "-" + std::to_string(++counter));
    const std::string out = base.string() + ".out", err = base.string() + ".err";
    RunResult result;
    const int status = std::system((commandLine + " >" + out + " 2>" + err).c_str());
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = ReadAll(out);
    result.err = ReadAll(err);
    fs::remove(out);
    fs::remove(err);
    return result;
}

RunResult Hopack(const std::string& arguments) { return RunShell(std::string(HOPACK_PATH) + " " + arguments); }

bool ReadDataFile(const fs::path& path, DataFile& data)
{
    const std::string bytes = ReadAll(path);
    data = DataFile{};
    data.bytes = bytes.size();
    if (bytes.size() < sizeof(SetupDataHeader)) return false;
    std::memcpy(&data.header, bytes.data(), sizeof(SetupDataHeader));
    if (data.header.fileCount < 0 || data.header.shortcutCount < 0) return false;
    const std::size_t need = sizeof(SetupDataHeader) + data.header.fileCount * sizeof(FileRecord) +
                             data.header.shortcutCount * sizeof(ShortcutRecord);
    if (bytes.size() < need) return false;
    data.files.resize(data.header.fileCount);
    data.shortcuts.resize(data.header.shortcutCount);
    const char* at = bytes.data() + sizeof(SetupDataHeader);
    std::memcpy(data.files.data(), at, data.files.size() * sizeof(FileRecord));
    std::memcpy(data.shortcuts.data(), at + data.files.size() * sizeof(FileRecord),
                data.shortcuts.size() * sizeof(ShortcutRecord));
    return true;
}

std::string Text(const char* field, std::size_t size) { return std::string(field, strnlen(field, size)); }

std::string MemberName(std::size_t index)
{
    char name[16];
    std::snprintf(name, sizeof(name), "_%05zu0_", index);
    return name;
}

std::vector<std::string> FolderNames(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
