// Folder and earlier-installation detection, one row per recorded state, against the real
// registry of the test's prefix and its real shell folders; per-user values the user could not
// have written to anyway are ignored, and the log names them.
#include "setup_fixture.h"

#include "setuplog/setuplog.h"
#include "packages.h"
#include "registry_checks.h"

#include <shlobj.h>

#include <optional>
#include <vector>

namespace {

constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";
constexpr char kWord[] = "Harwick-Orbel\\Vistrel (64-bit)\\";
constexpr char kNoDate[] = "2003-04-01";
const HKEY kMachine = HKEY_LOCAL_MACHINE, kUser = HKEY_CURRENT_USER;

// A value below the product key: a text, or a number when text is null.
struct Value {
    HKEY root;
    const char* suffix;
    const char* name;
    const char* text;
    DWORD number = 0;
};

struct Row {
    const char* state;
    std::vector<Value> values;
    const char* recorded[4];   // install, library, drawing, setting; null: the default
    bool perUser, update, logCarriedOver, later;
    const char* previousDate;
    const char* personal = nullptr;      // the user's documents folder pointed here
    std::vector<const char*> ignored{};  // the log's lines of ignored values, in order
};

const Row kRows[] = {
    {"nothing recorded", {}, {}, false, false, false, false, kNoDate},
    {"product key with user mode: its folders, \"*\" the default, per-user folders not read",
     {{kMachine, "", "PathLocal", "E:\\Programs\\Vistrel"}, {kMachine, "", "UserMode", nullptr, 1},
      {kMachine, "", "PathLibrary", "E:\\Lib"}, {kMachine, "", "PathDrawing", "*"},
      {kMachine, "", "CompileDate", "2024-05-17"}, {kUser, "\\Deutsch\\General", "PathINF 1", "F:\\NotThis"}},
     {"E:\\Programs\\Vistrel\\", "E:\\Lib\\"}, true, true, true, false, "2024-05-17"},
    {"PathLocal only under English: the installation folder alone, no log carried over, a later date",
     {{kMachine, "", "UserMode", nullptr, 1}, {kMachine, "", "PathLibrary", "E:\\Lib"},
      {kMachine, "\\English", "PathLocal", "G:\\Old Vistrel\\"}, {kMachine, "\\English", "PathDrawing", "G:\\D"},
      {kMachine, "\\English", "UserMode", nullptr, 1}, {kMachine, "\\English", "CompileDate", "2025-01-09"}},
     {"G:\\Old Vistrel\\"}, false, true, false, true, "2025-01-09"},
    {"German before English",
     {{kMachine, "\\Deutsch", "PathLocal", "H:\\Deutsch"}, {kMachine, "\\English", "PathLocal", "H:\\English"},
      {kMachine, "\\English", "CompileDate", "2030-01-01"}},
     {"H:\\Deutsch\\"}, false, true, false, false, kNoDate},
    {"per-user folders from the German key",
     {{kUser, "\\Deutsch\\General", "PathHOL 1", "J:\\Libraries"}, {kUser, "\\Deutsch\\General", "PathHOD 1", "*"},
      {kUser, "\\Deutsch\\General", "PathINF 1", "J:\\Settings\\"},
      {kUser, "\\English\\General", "PathHOD 1", "K:\\NotThis"}},
     {nullptr, "J:\\Libraries\\", nullptr, "J:\\Settings\\"}, false, false, false, false, kNoDate},
    {"per-user folders from the English key", {{kUser, "\\English\\General", "PathHOL 1", "K:\\English"}},
     {nullptr, "K:\\English\\"}, false, false, false, false, kNoDate},
    {"per-user folders in the Windows folder, another user's profile, relative: the defaults",
     {{kUser, "\\English\\General", "PathHOL 1", "c:\\windows\\System32"},
      {kUser, "\\English\\General", "PathHOD 1", "C:\\Users\\Other\\Documents\\"},
      {kUser, "\\English\\General", "PathINF 1", "Settings\r\nC:\\x"}},
     {}, false, false, false, false, kNoDate, nullptr,
     {"PathHOL 1: c:\\windows\\System32", "PathHOD 1: C:\\Users\\Other\\Documents\\", "PathINF 1: Settings??C:\\x"}},
    {"the user's documents folder pointed into the Windows folder: its default",
     {{kMachine, "", "PathLocal", "E:\\Programs\\Vistrel"}, {kMachine, "", "UserMode", nullptr, 1}},
     {"E:\\Programs\\Vistrel\\"}, true, true, true, false, kNoDate, "C:\\Windows", {"Personal: C:\\Windows\\"}},
};

using Detection = SetupFixture;

TEST_F(Detection, RecordedStates)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.state);
        RegDeleteTreeA(kMachine, kProductKey);
        RegDeleteTreeA(kUser, kProductKey);
        for (const Value& v : row.values)
            ASSERT_EQ(RegSetKeyValueA(v.root, (std::string(kProductKey) + v.suffix).c_str(), v.name,
                                      v.text ? REG_SZ : REG_DWORD,
                                      v.text ? static_cast<const void*>(v.text) : &v.number,
                                      v.text ? lstrlenA(v.text) + 1 : 4), ERROR_SUCCESS);
        g_setup.perUser = 0;   // as a run without the per-user option starts
        {
            std::optional<UserShellFolderRedirect> redirect;
            if (row.personal)
                redirect.emplace("Personal", row.personal);
            DetectFolders();
        }
        EXPECT_EQ(g_setup.perUser, row.perUser);
        // Each folder is the recorded one with its default flag cleared, or its default.
        const std::string documents = shellFolder(row.perUser ? CSIDL_PERSONAL : CSIDL_COMMON_DOCUMENTS) + kWord;
        const std::string defaults[] = {shellFolder(CSIDL_PROGRAM_FILES) + kWord, documents + "Libraries\\",
                                        documents + "Drawings\\", documents + "Settings\\"};
        const char* folders[] = {g_setup.installFolder, g_setup.libraryFolder, g_setup.drawingFolder,
                                 g_setup.settingFolder};
        const int flags[] = {g_setup.installFolderDefault, g_setup.libraryFolderDefault,
                             g_setup.drawingFolderDefault, g_setup.settingFolderDefault};
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(folders[i], row.recorded[i] ? std::string(row.recorded[i]) : defaults[i]);
            EXPECT_EQ(flags[i], row.recorded[i] ? 0 : 1) << folders[i];
        }
        EXPECT_EQ(g_setup.userDataFolder, shellFolder(row.perUser ? CSIDL_APPDATA : CSIDL_COMMON_APPDATA) + kWord);
        EXPECT_EQ(g_setup.documentsFolder, documents);
        // The installation's log names each ignored value in a line the removal skips.
        HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, root_.c_str());
        DeleteFileA((root_ + "hosetup.log").c_str());
        ASSERT_TRUE(OpenLog());
        CloseLog(true);
        std::vector<std::string> ignored;
        const std::string log = readFile(root_ + "hosetup.log"), mark = "\r\n***** Ignored per-user folder value ";
        for (std::size_t at = log.find(mark); at != std::string::npos; at = log.find(mark, at + 1))
            ignored.push_back(log.substr(at + mark.size(), log.find(" *****\r\n", at) - at - mark.size()));
        EXPECT_EQ(ignored, std::vector<std::string>(row.ignored.begin(), row.ignored.end()));

        HOI_CopyA(g_setup.packageCompileDate, kTextCapacity, "2024-05-17");
        g_setup.updateInstall = g_setup.logCarriedOver = g_setup.laterVersionInstalled = 1;   // cleared first
        EXPECT_EQ(DetectEarlierInstallation(), row.update);
        EXPECT_EQ(g_setup.logCarriedOver, row.logCarriedOver);
        EXPECT_EQ(g_setup.laterVersionInstalled, row.later);
        EXPECT_STREQ(g_setup.previousCompileDate, row.previousDate);
    }
    RegDeleteTreeA(kMachine, kProductKey);
    RegDeleteTreeA(kUser, kProductKey);
}

} // namespace
