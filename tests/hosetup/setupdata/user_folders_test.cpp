// The rule for folders named by per-user values, over the real folders of the test's prefix: a
// folder is used only where the user could write anyway.
#include "setupdata_fixture.h"

#include "packages.h"

#include <shlobj.h>

namespace {

constexpr char kWord[] = "Harwick-Orbel\\Vistrel (64-bit)\\";

// The host path of a Windows path, from Wine's own export.
std::string unixPath(const std::string& path)
{
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto unixName =
        reinterpret_cast<UnixName>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name"));
    wchar_t wide[MAX_PATH] = {};
    MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide, MAX_PATH);
    char* name = unixName ? unixName(wide) : nullptr;
    const std::string text = name ? name : "";
    HeapFree(GetProcessHeap(), 0, name);
    return text;
}

// Runs the host's ln or rm (see CMakeLists) on host paths. Wine starts a Unix program without a
// handle to wait on, so this waits for its effect: path there or gone. Windows cannot delete a
// host link under Wine (it acts on the link's target), hence rm.
bool runHostTool(const char* tool, const std::string& arguments, const std::string& path, bool there)
{
    ChildProcess child;
    startProcess("\"" + testBinFolder() + tool + "\" " + arguments, &child);
    for (const DWORD start = GetTickCount(); GetTickCount() - start < 30000; Sleep(20)) {
        if ((GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES) == there)
            return true;
    }
    return false;
}

using UserFolders = SetupStateTest;

TEST_F(UserFolders, OnlyFoldersTheUserCouldWriteAnyway)
{
    const std::string windows = shellFolder(CSIDL_WINDOWS), programFiles = shellFolder(CSIDL_PROGRAM_FILES);
    const std::string programData = shellFolder(CSIDL_COMMON_APPDATA), documents = shellFolder(CSIDL_PERSONAL);
    const std::string profile = shellFolder(CSIDL_PROFILE), profiles = profile.substr(0, profile.rfind('\\', profile.size() - 2) + 1);
    HOI_CopyA(g_setup.installFolder, kPathCapacity, (programFiles + kWord).c_str());
    HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, (programData + kWord).c_str());
    // A link the user made in a folder of theirs to a folder the rule refuses: an empty one of this
    // test, since whatever deletes the scratch folder follows the link under Wine.
    const std::string target = programData + "HarwickOrbelLinkTarget", link = scratch_ + "link";
    ASSERT_TRUE(CreateDirectoryA(target.c_str(), nullptr));
    ASSERT_TRUE(runHostTool("hostln", "-s " + unixPath(target) + " " + unixPath(link), link, true));
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
    EXPECT_TRUE(runHostTool("hostrm", unixPath(link), link, false));
    RemoveDirectoryA(target.c_str());
}

} // namespace
