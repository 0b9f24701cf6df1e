// The language module: only one built with the program is loaded, from the program's own folder;
// a foreign, missing or linked one is refused with an error report in English (a message box even
// in a silent run) and exit code 2, and none of its code runs. A module that passed is bound with
// care: the exit entry is looked up first, so a module without one is never initialised.
#include <gtest/gtest.h>

#include "process.h"
#include "shell/shell.h"

#include <thread>

namespace {

// Makes link a symbolic link to target. Wine cannot make Windows links (CreateSymbolicLinkA makes
// nothing), but a host symbolic link stands in for one, and a Windows program under Wine can run a
// host program: hostln in the test folder is a host link to /bin/ln, given the Unix paths of both.
bool makeHostLink(const std::string& target, const std::string& linkFolder, const std::string& name)
{
    using UnixFileName = char*(CDECL*)(const wchar_t*);
    auto unixFileName = reinterpret_cast<UnixFileName>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name"));
    auto unixPath = [unixFileName](const std::string& path) {
        wchar_t wide[MAX_PATH] = {};
        MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide, MAX_PATH);
        char* name = unixFileName ? unixFileName(wide) : nullptr;
        const std::string result = name ? name : "";
        HeapFree(GetProcessHeap(), 0, name);
        return result;
    };
    const std::string from = unixPath(target), to = unixPath(linkFolder), link = linkFolder + name;
    // Wine gives no process of a host program to wait for (its handle cannot be waited on): the
    // link's appearance tells that ln has done its work.
    ChildProcess ln;
    if (from.empty() || to.empty() ||
        !startProcess("\"" + testBinFolder() + "hostln\" -s \"" + from + "\" \"" + to + "/" + name + "\"", &ln))
        return false;
    CloseHandle(ln.process);
    for (const DWORD start = GetTickCount(); !fileExists(link) && GetTickCount() - start < 60000;)
        Sleep(10);
    return fileExists(link);
}

} // namespace

TEST(LanguageModule, OnlyAModuleBuiltWithTheProgramIsLoaded)
{
    const struct { const char* what; const char* module; bool linked; const char* reason; } rows[] = {
        {"foreign", "fake_holang_init_fails.dll", false, "is not the one built with this setup program."},
        {"missing", nullptr, false, "cannot be read."},
        {"a link to the real module", "holang.dll", true, "is reached through a link."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const std::string folder = makeTempFolder("holang"), bin = testBinFolder();
        ASSERT_TRUE(copyFileTo(bin + "hosetup.exe", folder + "hosetup.exe"));
        if (row.module) {
            ASSERT_TRUE(row.linked ? makeHostLink(bin + row.module, folder, "holang.dll")
                                   : copyFileTo(bin + row.module, folder + "holang.dll"));
        }
        ChildProcess child;
        ASSERT_TRUE(startProcess("\"" + folder + "hosetup.exe\" -S", &child));
        MessageBoxSeen seen;
        EXPECT_TRUE(answerMessageBox(child.id, 60000, IDOK, &seen)) << "no error report appeared";
        EXPECT_EQ(2u, waitForExit(&child, 60000));
        EXPECT_EQ("HOSetup\\307\n\nThe language module " + folder + "holang.dll " + row.reason + " It was not loaded.",
                  seen.text);
        EXPECT_EQ("Vistrel Setup", seen.caption);
        EXPECT_FALSE(fileExists(folder + "dllmain-called"));
        removeTree(folder);
    }
}

// The entry points of a loaded module, bound in this process: the report comes from the English
// tables bound at the test program's start.
TEST(LanguageModule, FaultyEntryPointsAreReported)
{
    const struct { const char* module; const char* report; bool initCalled; } rows[] = {
        {"fake_holang_no_exit.dll", "HOSetup\\314\n\nGetProcAddress( \"HOI_LanguageExit\" ) failure", false},
        {"fake_holang_no_init.dll", "HOSetup\\321\n\nGetProcAddress( \"HOI_LanguageInit\" ) failure", false},
        // Only the low byte of the init's answer counts: 0x100 is false.
        {"fake_holang_init_fails.dll", "HOSetup\\328\n\nHOI_LanguageInit() failure", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.module);
        const std::string folder = makeTempFolder("holang");
        ASSERT_TRUE(copyFileTo(testBinFolder() + row.module, folder + "fake.dll"));
        HMODULE module = LoadLibraryA((folder + "fake.dll").c_str());
        ASSERT_NE(module, nullptr);
        g_setup.languageModule = module;
        MessageBoxSeen seen;
        std::thread reader([&seen] {
            EXPECT_TRUE(answerMessageBox(GetCurrentProcessId(), 60000, IDOK, &seen)) << "no error report appeared";
        });
        EXPECT_FALSE(bindLanguageModule(GetModuleHandleA(nullptr), nullptr));
        reader.join();
        EXPECT_EQ(row.report, seen.text);
        EXPECT_EQ(row.initCalled, fileExists(folder + "init-called"));
        g_setup.languageModule = nullptr;
        FreeLibrary(module);
        removeTree(folder);
    }
}
