// The help button's path end to end: the real HTML Help control, found through its real
// registration, shows the compiled help file that lies beside the program.
#include <gtest/gtest.h>

#include <string>

#include "help/help.h"
#include "format/program_files.h"
#include "process.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"

namespace {

constexpr char kHelpTitle[] = "Vistrel Setup Help";   // the window title compiled into the file

struct WindowSearch {
    DWORD process;
    HWND found;
};

BOOL CALLBACK findHelpWindow(HWND window, LPARAM parameter)
{
    auto* search = reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char title[128] = {};
    GetWindowTextA(window, title, sizeof title);
    if (process == search->process && lstrcmpA(title, kHelpTitle) == 0) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

// The viewer's window lives on this thread, so the test pumps messages while it waits.
HWND waitForHelpWindow(DWORD timeoutMs)
{
    const DWORD start = GetTickCount();
    do {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        WindowSearch search = {GetCurrentProcessId(), nullptr};
        EnumWindows(findHelpWindow, reinterpret_cast<LPARAM>(&search));
        if (search.found)
            return search.found;
        Sleep(50);
    } while (GetTickCount() - start < timeoutMs);
    return nullptr;
}

void closeHelpWindow(HWND window)
{
    SendMessageA(window, WM_CLOSE, 0, 0);
    waitForHelpWindow(200);   // lets the viewer finish closing
}

TEST(SetupHelp, HelpButtonShowsTheHelpFileBesideTheProgram)
{
    const std::string folder = testBinFolder();
    ASSERT_TRUE(fileExists(folder + kSetupHelpName));
    HOI_CopyA(g_setup.programFolder, sizeof g_setup.programFolder, folder.c_str());

    ShowSetupHelp();
    HWND window = waitForHelpWindow(10000);
    ASSERT_NE(window, nullptr) << "no window titled \"" << kHelpTitle << "\"";
    closeHelpWindow(window);
}

TEST(SetupHelp, BothEntriesReachTheViewer)
{
    const std::string file = testBinFolder() + kSetupHelpName;
    HWND narrow = HtmlHelpA(nullptr, file.c_str(), kHelpDisplayTopic, 0);
    ASSERT_NE(narrow, nullptr);
    EXPECT_EQ(waitForHelpWindow(5000), narrow);
    closeHelpWindow(narrow);

    wchar_t wideFile[MAX_PATH] = {};
    MultiByteToWideChar(CP_ACP, 0, file.c_str(), -1, wideFile, MAX_PATH);
    HWND wide = HtmlHelpW(nullptr, wideFile, kHelpDisplayTopic, 0);
    ASSERT_NE(wide, nullptr);
    closeHelpWindow(wide);
}

TEST(SetupHelp, MissingHelpFileOpensNothing)
{
    const std::string missing = testBinFolder() + "no-such-help.chm";
    EXPECT_EQ(HtmlHelpA(nullptr, missing.c_str(), kHelpDisplayTopic, 0), nullptr);
}

} // namespace
