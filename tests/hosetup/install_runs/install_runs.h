// Shared by the whole-run tests: a small product with a file in each kind of place, built into a
// distribution with hopack.exe and installed or removed by the real hosetup.exe.
#pragma once

#include <gtest/gtest.h>

#include <shlobj.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>

#include "dialogs.h"
#include "packages.h"
#include "process.h"
#include "registry_checks.h"


constexpr DWORD kRunTimeout = 180000;
constexpr DWORD kStepTimeout = 60000;   // for the next dialog of a run under load
constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";
constexpr char kAppPath[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\hovistrel.exe";
constexpr char kUninstall[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Vistrel Professional 2022";

inline std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream all;
    all << in.rdbuf();
    return all.str();
}

inline std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return char(tolower(c)); });
    return text;
}

inline bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

inline std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> result;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
        result.push_back(text.substr(start, end - start));
    return result;
}

// A small product with a file in each kind of place the installer serves.
constexpr char kSessionManager[] = "System\\CurrentControlSet\\Control\\Session Manager";

// The sources of the pending restart operations, in order, without the "\??\" prefix the
// system puts before each; the (empty) targets that follow each source are left out.
inline std::vector<std::string> pendingDeletions()
{
    std::vector<std::string> sources;
    HKEY key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSessionManager, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return sources;
    DWORD size = 0;
    if (RegQueryValueExA(key, "PendingFileRenameOperations", nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS) {
        std::string data(size, '\0');
        RegQueryValueExA(key, "PendingFileRenameOperations", nullptr, nullptr, reinterpret_cast<BYTE*>(&data[0]),
                         &size);
        std::size_t start = 0;
        bool isSource = true;
        while (start < data.size() && data[start] != '\0') {
            const std::size_t end = data.find('\0', start);
            std::string item = data.substr(start, end - start);
            if (isSource)
                sources.push_back(lowerCase(startsWith(item, "\\??\\") ? item.substr(4) : item));
            isSource = !isSource;
            start = end + 1;
            // An empty target is written as an empty string: skip it.
            if (!isSource && start < data.size() && data[start] == '\0') {
                isSource = true;
                ++start;
            }
        }
    }
    RegCloseKey(key);
    return sources;
}

inline Package samplePackage(const std::string& compileDate = "2022-11-29")
{
    Package package;
    package.compileDate = compileDate;
    package.files = {
        {"bin/hovistrel.exe", 10, "", "", "main program " + compileDate},
        {"bin/hovistrellib.dll", 10, "", "", "icons"},
        {"lib/standard.hol", 40, "Standard", "", "library"},
        {"settings/hovistrel.ini", 64, "", "", "[settings]"},
        {"drawings/hovistrel.hod", 200, "", "", "LINE 0 0 10 10"},
        {"help/hovistrel.chm", 210, "", "", "help"},
        {"data/allusers.dat", 30, "", "", "common"},
        {"", 63, "", "hovistrel.ini", ""},
    };
    package.shortcuts = {{"hovistrel.exe", "Vistrel", ""}};
    return package;
}

class InstallRuns : public ::testing::Test {
protected:
    void SetUp() override
    {
        removeProductTraces();
        work_ = makeTempFolder("pkg");
        folders_ = defaultFolders(false);
    }

    void TearDown() override
    {
        removeProductTraces();
        removeTree(work_);
    }

    // Builds the package into a fresh distribution folder and returns it.
    std::string build(const Package& package)
    {
        const std::string dist = work_ + "dist" + std::to_string(++builds_) + "\\";
        EXPECT_EQ(buildPackage(package, work_ + "src" + std::to_string(builds_) + "\\", dist), 0u);
        return dist;
    }

    DWORD install(const std::string& dist, const std::string& options = "-S")
    {
        return runProcess("\"" + dist + "hosetup.exe\" " + options, kRunTimeout);
    }

    // The child's dialogs: its wizard pages, its progress window and its alerts.
    static DialogQuery ofChild(DialogQuery query, const ChildProcess& child)
    {
        query.processId = child.id;
        return query;
    }

    static HWND nextAlert(const ChildProcess& child)
    {
        return waitForDialog(ofChild(dialogWith(571, 720), child), kStepTimeout);
    }

    // Clicks the continue button of the child's next wizard page and waits until it has gone.
    static void passPage(const ChildProcess& child, const char* name)
    {
        HWND page = waitForDialog(ofChild(dialogWith(370, 570, 22), child), kStepTimeout);
        ASSERT_NE(page, nullptr) << name;
        clickButton(page, 570);
        ASSERT_TRUE(waitForWindowGone(page)) << name;
    }

    std::string work_;
    DefaultFolders folders_;
    int builds_ = 0;
};
