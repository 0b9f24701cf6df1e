// The rule for folders named by per-user values, over the real folders of the test's prefix: a
// folder is used only where the user could write anyway.
#include "setup_fixture.h"

#include "host_links.h"
#include "packages.h"

#include <shlobj.h>

namespace {

constexpr char kWord[] = "Harwick-Orbel\\Vistrel (64-bit)\\";

using UserFolders = SetupFixture;

TEST_F(UserFolders, OnlyFoldersTheUserCouldWriteAnyway)
{
    const std::string windows = shellFolder(CSIDL_WINDOWS), programFiles = shellFolder(CSIDL_PROGRAM_FILES);
    const std::string programData = shellFolder(CSIDL_COMMON_APPDATA), documents = shellFolder(CSIDL_PERSONAL);
    const std::string profile = shellFolder(CSIDL_PROFILE), profiles = profile.substr(0, profile.rfind('\\', profile.size() - 2) + 1);
    HOI_CopyA(g_setup.installFolder, kPathCapacity, (programFiles + kWord).c_str());
    HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, (programData + kWord).c_str());
    // A link the user made in a folder of theirs to a folder the rule refuses: an empty one of this
    // test, since whatever deletes the scratch folder follows the link under Wine.
    const std::string target = programData + "HarwickOrbelLinkTarget", link = root_ + "link";
    ASSERT_TRUE(CreateDirectoryA(target.c_str(), nullptr));
    ASSERT_TRUE(makeHostLink(link, target));
    char upper[MAX_PATH];
    HOI_CopyA(upper, sizeof upper, (windows + "System32\\Drivers\\").c_str());
    CharUpperA(upper);

    const struct { std::string what, path; bool allowed; } rows[] = {
        {"the Windows folder", windows, false},
        {"System32\\Drivers in capitals", upper, false},
        {"Program Files", programFiles + "Other Maker\\", false},
        {"Program Files (x86)", shellFolder(CSIDL_PROGRAM_FILESX86) + "Other\\", false},
        {"the product's installation folder", programFiles + kWord + "Libraries\\", true},
        {"ProgramData: the product's folder", programData + kWord + "Settings\\", true},
        {"ProgramData: another folder", programData + "Microsoft\\", false},
        {"the system drive's root", windows.substr(0, 3), false},
        {"another user's profile", profiles + "Other User\\Documents\\", false},
        {"the user's own documents", documents + "Drawings\\", true},
        {"the public documents", shellFolder(CSIDL_COMMON_DOCUMENTS) + "Vistrel\\", true},
        {"a sibling of Program Files", programFiles.substr(0, programFiles.size() - 1) + "2\\", true},
        {"a link into ProgramData", link + "\\Sub\\", false},
        {"relative", "Drawings\\", false},
        {"UNC", "\\\\server\\share\\Drawings\\", false},
        {"\\\\?\\", "\\\\?\\" + documents, false},
        {"\"..\" out of the own profile", documents + "..\\..\\Other User\\", false},
        {"a stream", documents + "Drawings:hidden\\", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(isUserWritableChoice(row.path.c_str()), row.allowed) << row.what << ": " << row.path;
    EXPECT_TRUE(removeHostLink(link));
    RemoveDirectoryA(target.c_str());
}

} // namespace
