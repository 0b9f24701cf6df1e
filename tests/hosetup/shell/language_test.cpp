// A faulty language module beside a copy of hosetup.exe is refused with its error report (a
// message box even in a silent run, captioned from the module's own tables) and exit code 2.
// The exit entry is looked up first, so a module without one is never initialised.
#include <gtest/gtest.h>

#include "process.h"

TEST(LanguageModule, FaultyModulesAreRefused)
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
        ASSERT_TRUE(copyFileTo(testBinFolder() + "hosetup.exe", folder + "hosetup.exe"));
        ASSERT_TRUE(copyFileTo(testBinFolder() + row.module, folder + "holang.dll"));
        ChildProcess child;
        ASSERT_TRUE(startProcess("\"" + folder + "hosetup.exe\" -S", &child));
        MessageBoxSeen seen;
        EXPECT_TRUE(answerMessageBox(child.id, 60000, IDOK, &seen)) << "no error report appeared";
        EXPECT_EQ(2u, waitForExit(&child, 60000));
        EXPECT_EQ(row.report, seen.text);
        EXPECT_EQ("Fake Setup", seen.caption);
        EXPECT_EQ(row.initCalled, fileExists(folder + "init-called"));
        removeTree(folder);
    }
}
