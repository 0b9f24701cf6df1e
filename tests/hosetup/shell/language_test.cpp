// The language module: only one built with the program is loaded, from the program's own folder;
// a foreign or missing one is refused with an error report in English (a message box even
// in a silent run) and exit code 2, and none of its code runs. A module that passed is bound with
// care: the exit entry is looked up first, so a module without one is never initialised.
#include <gtest/gtest.h>

#include "process.h"
#include "shell/shell.h"

#include <thread>

TEST(LanguageModule, OnlyAModuleBuiltWithTheProgramIsLoaded)
{
    const struct { const char* what; const char* module; const char* reason; } rows[] = {
        {"foreign", "fake_holang_init_fails.dll", "is not the one built with this setup program."},
        {"missing", nullptr, "cannot be read."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const std::string folder = makeTempFolder("holang"), bin = testBinFolder();
        ASSERT_TRUE(copyFileTo(bin + "hosetup.exe", folder + "hosetup.exe"));
        if (row.module) {
            ASSERT_TRUE(copyFileTo(bin + row.module, folder + "holang.dll"));
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
