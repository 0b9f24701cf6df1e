// Binding the language module, seen from outside: a copy of hosetup.exe beside a faulty module
// must refuse it with the right report, and with the real module it starts and ends cleanly.
#include <gtest/gtest.h>

#include "process.h"

namespace {

constexpr DWORD kRunTimeout = 60000;

class LanguageBinding : public ::testing::Test {
protected:
    void SetUp() override { folder_ = makeTempFolder("holang"); ASSERT_FALSE(folder_.empty()); }
    void TearDown() override { removeTree(folder_); }

    // A copy of the program with the given module as its holang.dll.
    void install(const char* moduleFile)
    {
        const std::string bin = testBinFolder();
        ASSERT_TRUE(copyFileTo(bin + "hosetup.exe", folder_ + "hosetup.exe"));
        ASSERT_TRUE(copyFileTo(bin + moduleFile, folder_ + "holang.dll"));
    }

    // Runs the copy with -S, answers the error report it must show, and returns the exit code.
    DWORD runExpectingReport(MessageBoxSeen* seen)
    {
        ChildProcess child;
        EXPECT_TRUE(startProcess("\"" + folder_ + "hosetup.exe\" -S", &child));
        const bool reported = answerMessageBox(child.id, kRunTimeout, IDOK, seen);
        EXPECT_TRUE(reported) << "no error report appeared";
        return waitForExit(&child, kRunTimeout);
    }

    std::string folder_;
};

TEST_F(LanguageBinding, ModuleWithoutExitIsRefusedBeforeItsInitRuns)
{
    install("fake_holang_no_exit.dll");
    MessageBoxSeen seen;
    EXPECT_EQ(runExpectingReport(&seen), 2u);
    EXPECT_EQ(seen.text, "HOSetup\\314\n\nGetProcAddress( \"HOI_LanguageExit\" ) failure");
    EXPECT_EQ(seen.caption, "Fake Setup");       // caption from the imported tables
    EXPECT_FALSE(fileExists(folder_ + "init-called"));
}

TEST_F(LanguageBinding, ModuleWithoutInitIsRefused)
{
    install("fake_holang_no_init.dll");
    MessageBoxSeen seen;
    EXPECT_EQ(runExpectingReport(&seen), 2u);
    EXPECT_EQ(seen.text, "HOSetup\\321\n\nGetProcAddress( \"HOI_LanguageInit\" ) failure");
}

TEST_F(LanguageBinding, InitAnsweringFalseInItsLowByteIsRefused)
{
    install("fake_holang_init_fails.dll");
    MessageBoxSeen seen;
    EXPECT_EQ(runExpectingReport(&seen), 2u);
    EXPECT_EQ(seen.text, "HOSetup\\328\n\nHOI_LanguageInit() failure");
    EXPECT_TRUE(fileExists(folder_ + "init-called"));
}

TEST_F(LanguageBinding, SilentRunWithTheRealModuleEndsWithADefinedCode)
{
    install("holang.dll");
    ChildProcess child;
    ASSERT_TRUE(startProcess("\"" + folder_ + "hosetup.exe\" -S", &child));
    // No distribution lies beside this copy, so the silent run stops quietly as failed.
    EXPECT_EQ(waitForExit(&child, kRunTimeout), 2u);
}

} // namespace
