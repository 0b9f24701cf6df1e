// RemoveShortcuts deletes only the fixed names (this product's and earlier releases' desktop
// links and Start-menu groups) from the real shell folders, and leaves a foreign link alone.
#include "../install/install_fixture.h"

#include "packages.h"
#include "ui/ui.h"

#include <shlobj.h>

namespace {

using ShortcutRemoval = InstallFixture;

TEST_F(ShortcutRemoval, OnlyTheProductsAndEarlierReleasesNamesGo)
{
    g_setup.headerBuffer = static_cast<SetupDataHeader*>(std::calloc(1, kSetupHeaderBlockSize));
    HOI_CopyA(g_setup.headerBuffer->productName, 128, "Vistrel Test");
    ASSERT_TRUE(ShowProgressStage(true, 7, 0, 0));   // the report between desktop and menu goes on
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

} // namespace
