// Removing the product's links from the real shell folders of the test's prefix: this release's
// name, earlier releases' names, and only the folders of the installation's kind (user or all).
#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "packages.h"
#include "process.h"
#include "remove/remove.h"
#include "install/install.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"

namespace {

void touch(const std::string& path)
{
    const std::size_t slash = path.find_last_of('\\');
    SHCreateDirectoryExA(nullptr, path.substr(0, slash).c_str(), nullptr);
    std::ofstream(path, std::ios::binary) << "link";
}

class ShortcutRemoval : public ::testing::Test {
protected:
    void SetUp() override
    {
        clearSetupState();
        g_setup.languageModule = GetModuleHandleA("holang.dll");
        g_setup.scale = 1.0;
        g_setup.optionSilent = 1;
        header_ = static_cast<SetupDataHeader*>(std::calloc(1, kSetupHeaderBlockSize));
        g_setup.headerBuffer = header_;
        ASSERT_TRUE(ShowProgressStage(true, 7, 0, 0));
    }

    void TearDown() override
    {
        ShowProgressStage(false, 0, 0, 0);
        g_setup.headerBuffer = nullptr;
        std::free(header_);
        for (int csidl : {CSIDL_DESKTOPDIRECTORY, CSIDL_COMMON_DESKTOPDIRECTORY}) {
            for (const char* name : {"Ed 2 3.lnk", "Vistrel 2021.lnk", "Vistrel Test.lnk", "Unrelated.lnk"})
                DeleteFileA((shellFolder(csidl) + name).c_str());
        }
        for (int csidl : {CSIDL_PROGRAMS, CSIDL_COMMON_PROGRAMS}) {
            for (const char* name : {"Ed 2\\", "Vistrel 2021\\", "Vistrel Test\\", "Unrelated\\"})
                removeTree(shellFolder(csidl) + name);
        }
    }

    void setProductName(const char* name)
    {
        HOI_CopyA(header_->productName, sizeof header_->productName, name);
    }

    SetupDataHeader* header_ = nullptr;
};

TEST_F(ShortcutRemoval, PerUserRemovalTakesTheUsersLinksUnderEveryKnownName)
{
    g_setup.perUser = 1;
    setProductName("Ed 2/3");
    const std::string desktop = shellFolder(CSIDL_DESKTOPDIRECTORY);
    const std::string programs = shellFolder(CSIDL_PROGRAMS);
    const std::string commonDesktop = shellFolder(CSIDL_COMMON_DESKTOPDIRECTORY);
    for (const std::string& path :
         {desktop + "Ed 2 3.lnk", desktop + "Vistrel 2021.lnk", desktop + "Unrelated.lnk",
          programs + "Ed 2\\3\\Vistrel.lnk", programs + "Vistrel 2021\\Tour.lnk", programs + "Unrelated\\x.lnk",
          commonDesktop + "Vistrel 2021.lnk"})
        touch(path);

    RemoveShortcuts();

    EXPECT_FALSE(fileExists(desktop + "Ed 2 3.lnk"));          // "/" and "\" become blanks
    EXPECT_FALSE(fileExists(desktop + "Vistrel 2021.lnk"));
    EXPECT_FALSE(fileExists(programs + "Ed 2\\3\\"));          // the name as a nested folder
    EXPECT_TRUE(fileExists(programs + "Ed 2\\"));
    EXPECT_FALSE(fileExists(programs + "Vistrel 2021\\"));
    EXPECT_TRUE(fileExists(desktop + "Unrelated.lnk"));
    EXPECT_TRUE(fileExists(programs + "Unrelated\\x.lnk"));
    EXPECT_TRUE(fileExists(commonDesktop + "Vistrel 2021.lnk"));   // not the user's
}

TEST_F(ShortcutRemoval, AllUsersRemovalLeavesTheUsersLinksAndStopsWhenToldTo)
{
    setProductName("Vistrel Test");
    const std::string commonDesktop = shellFolder(CSIDL_COMMON_DESKTOPDIRECTORY);
    const std::string commonPrograms = shellFolder(CSIDL_COMMON_PROGRAMS);
    const std::string userDesktop = shellFolder(CSIDL_DESKTOPDIRECTORY);
    for (const std::string& path : {commonDesktop + "Vistrel Test.lnk", commonPrograms + "Vistrel Test\\Vistrel.lnk",
                                    userDesktop + "Vistrel Test.lnk"})
        touch(path);

    // Without a progress window the report after the desktop says stop: the menu stays.
    ShowProgressStage(false, 0, 0, 0);
    RemoveShortcuts();
    EXPECT_FALSE(fileExists(commonDesktop + "Vistrel Test.lnk"));
    EXPECT_TRUE(fileExists(commonPrograms + "Vistrel Test\\Vistrel.lnk"));

    ASSERT_TRUE(ShowProgressStage(true, 7, 0, 0));
    RemoveShortcuts();
    EXPECT_FALSE(fileExists(commonPrograms + "Vistrel Test\\"));
    EXPECT_TRUE(fileExists(userDesktop + "Vistrel Test.lnk"));
}

} // namespace
