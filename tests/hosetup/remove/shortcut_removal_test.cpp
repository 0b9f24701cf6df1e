// RemoveShortcuts deletes only the fixed names (this product's and earlier releases' desktop
// links and Start-menu groups) from the real shell folders, and leaves a foreign link alone. In a
// user's own programs folder, which the user may have pointed anywhere, only the product's link
// files go, and only from a folder the user could write anyway.
#include "../install/install_fixture.h"

#include "packages.h"
#include "registry_checks.h"
#include "ui/ui.h"

#include <shlobj.h>

namespace {

using ShortcutRemoval = InstallFixture;

TEST_F(ShortcutRemoval, OnlyTheProductsAndEarlierReleasesNamesGo)
{
    g_setup.headerBuffer = static_cast<SetupDataHeader*>(std::calloc(1, kSetupHeaderBlockSize));
    HOI_CopyA(g_setup.headerBuffer->productName, 128, "Vistrel Test");
    ASSERT_TRUE(ShowProgressStage(true, kStageRemoveShortcuts, 0, 0));   // the report between desktop and menu goes on
    const std::string desktop = shellFolder(CSIDL_COMMON_DESKTOPDIRECTORY), menu = shellFolder(CSIDL_COMMON_PROGRAMS);
    const std::vector<std::string> gone = {desktop + "Vistrel Test.lnk", desktop + "Vistrel 2021.lnk",
                                           menu + "Vistrel Test\\Vistrel.lnk", menu + "Vistrel 2021\\Tour.lnk"};
    const std::vector<std::string> kept = {desktop + "Unrelated.lnk", menu + "Unrelated\\Vistrel.lnk",
                                           menu + "Vistrel Tools\\Vistrel 2021.lnk"};
    for (const auto* links : {&gone, &kept}) {
        for (const std::string& link : *links) {
            SHCreateDirectoryExA(nullptr, link.substr(0, link.rfind('\\')).c_str(), nullptr);
            writeFile(link, "link");
        }
    }

    RemoveShortcuts();
    for (const std::string& link : gone)
        EXPECT_FALSE(fileExists(link)) << link;
    for (const std::string& link : kept)
        EXPECT_TRUE(fileExists(link)) << link;
    EXPECT_FALSE(fileExists(menu + "Vistrel Test\\"));
    DeleteFileA(kept[0].c_str());
    removeTree(menu + "Unrelated\\");
    removeTree(menu + "Vistrel Tools\\");
}

TEST_F(ShortcutRemoval, InAUsersProgramsFolderOnlyTheProductsLinksGo)
{
    g_setup.perUser = 1;
    g_setup.headerBuffer = static_cast<SetupDataHeader*>(std::calloc(1, kSetupHeaderBlockSize));
    HOI_CopyA(g_setup.headerBuffer->productName, 128, "Vistrel Test");
    g_setup.shortcutRecords = static_cast<ShortcutRecord*>(std::calloc(2, sizeof(ShortcutRecord)));
    g_setup.shortcutCount = 1;
    HOI_CopyA(g_setup.shortcutRecords[0].name, 64, "Vistrel");
    ASSERT_TRUE(ShowProgressStage(true, kStageRemoveShortcuts, 0, 0));
    const std::string profile = shellFolder(CSIDL_PROFILE), standard = shellFolder(CSIDL_PROGRAMS);
    const std::string own = root_ + "Menu\\", other = profile.substr(0, profile.rfind('\\', profile.size() - 2) + 1) + "Other\\";
    const std::string link = "Vistrel.lnk", earlier = "Vistrel 2021\\", group = "Vistrel Test\\";
    const struct { const char* what; std::string menu, used; std::vector<std::string> gone, kept; } rows[] = {
        {"pointed at a folder of the user's", own, own, {own + group + link, own + earlier + link}, {own + earlier + "notes.txt"}},
        {"pointed into another user's profile: the default folder instead", other, standard,
         {standard + group + link, standard + earlier + link},
         {other + group + link, other + earlier + link, other + earlier + "notes.txt", standard + earlier + "notes.txt"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        for (const auto* files : {&row.gone, &row.kept}) {
            for (const std::string& file : *files) {
                SHCreateDirectoryExA(nullptr, file.substr(0, file.rfind('\\')).c_str(), nullptr);
                writeFile(file, "a file");
            }
        }
        {
            UserShellFolderRedirect redirect("Programs", row.menu.substr(0, row.menu.size() - 1));
            ASSERT_TRUE(RemoveShortcuts());
        }
        for (const std::string& file : row.gone)
            EXPECT_FALSE(fileExists(file)) << file;
        for (const std::string& file : row.kept)
            EXPECT_TRUE(fileExists(file)) << file;
        EXPECT_FALSE(fileExists(row.used + group));   // left empty
        for (const std::string& folder : {own, other, standard + group, standard + earlier})
            removeTree(folder);
    }
}

} // namespace
