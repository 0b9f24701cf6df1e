// The setup state's life: group clearing, reset, and the shutdown's EXITING banner.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <regex>
#include <sstream>

#include "process.h"
#include "shell/shell.h"
#include "install/install.h"

namespace {

TEST(SetupState, ClearingZeroesEveryGroup)
{
    std::memset(&g_setup, 0xA5, sizeof g_setup);
    clearSetupState();
    // The first and last fields of each group, so a wrong block boundary shows.
    EXPECT_EQ(g_setup.instance, nullptr);
    EXPECT_STREQ(g_setup.programFolder, "");
    EXPECT_STREQ(g_setup.previousCompileDate, "");
    EXPECT_EQ(g_setup.logFile, nullptr);
    EXPECT_EQ(g_setup.exitCode, 0u);
    EXPECT_EQ(g_setup.fileRecords, nullptr);
    EXPECT_EQ(g_setup.shortcutRecords, nullptr);
    EXPECT_EQ(g_setup.aboutFont, nullptr);
    EXPECT_EQ(g_setup.optionSourceFolder, 0);
    EXPECT_EQ(g_setup.optionSilent, 0);
    EXPECT_EQ(g_setup.perUser, 0);
    EXPECT_STREQ(g_setup.installFolder, "");
    EXPECT_STREQ(g_setup.progressText, "");
}

TEST(SetupState, FolderOfPath)
{
    char folder[kPathCapacity];
    EXPECT_TRUE(FolderOfPath("C:\\Program Files\\Vistrel\\hosetup.exe", folder, sizeof folder));
    EXPECT_STREQ(folder, "C:\\Program Files\\Vistrel\\");
    EXPECT_FALSE(FolderOfPath("*C:\\unused\\x.txt", folder, sizeof folder));
    EXPECT_STREQ(folder, "");
    EXPECT_TRUE(FolderOfPath("\\\\server\\share\\dir\\f", folder, sizeof folder));
    EXPECT_STREQ(folder, "\\\\server\\share\\dir\\");
}

TEST(SetupState, ResetPreparesARun)
{
    clearSetupState();
    g_setup.optionPerUser = 1;
    g_setup.fileCount = 12;
    g_setup.filesDone = 3;
    g_setup.replaceAll = 1;
    g_setup.progressDialog = reinterpret_cast<HWND>(1);
    strcpy(g_setup.registryKey, "Software\\Harwick-Orbel\\Vistrel Professional");
    strcpy(g_setup.productFolderWord, "Harwick-Orbel\\Vistrel (64-bit)\\");
    resetSetupState();

    EXPECT_EQ(g_setup.perUser, 1);
    EXPECT_STREQ(g_setup.previousCompileDate, "2003-04-01");
    EXPECT_EQ(g_setup.fileCount, 0);
    EXPECT_EQ(g_setup.filesDone, 0);
    EXPECT_EQ(g_setup.progressDialog, nullptr);
    EXPECT_EQ(g_setup.launchAfterFinish, 0);
    EXPECT_EQ(g_setup.replaceAll, 0);
    EXPECT_EQ(g_setup.startOption, 1);
    EXPECT_EQ(g_setup.cancelRequested, 0);

    // The temporary folder, with its backslash, is now the current folder.
    const std::size_t length = strlen(g_setup.tempFolder);
    ASSERT_GT(length, 3u);
    EXPECT_EQ(g_setup.tempFolder[length - 1], '\\');
    char current[MAX_PATH] = {};
    GetCurrentDirectoryA(sizeof current, current);
    EXPECT_EQ(lstrcmpiA((std::string(current) + "\\").c_str(), g_setup.tempFolder), 0);
}

TEST(SetupState, ExitWritesTheExitingBannerAndClosesTheLog)
{
    const std::string folder = makeTempFolder("exitlog");
    const std::string path = folder + "hosetup.log";
    clearSetupState();
    g_setup.updateInstall = 1;
    g_setup.logFile = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(g_setup.logFile, INVALID_HANDLE_VALUE);
    exitSetup();
    EXPECT_EQ(g_setup.logFile, nullptr);

    std::ifstream in(path, std::ios::binary);
    std::stringstream content;
    content << in.rdbuf();
    in.close();
    // The banner ends in CR LF and the line writer adds another: an empty line follows.
    EXPECT_TRUE(std::regex_match(content.str(),
        std::regex("\\*\\*\\*\\*\\* Vistrel update installation: EXITING, "
                   "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\*\\*\\*\\*\\*\r\n\r\n")))
        << content.str();
    removeTree(folder);

    exitSetup();   // a second shutdown finds nothing left to free or close
    EXPECT_EQ(g_setup.headerBuffer, nullptr);
}

} // namespace
