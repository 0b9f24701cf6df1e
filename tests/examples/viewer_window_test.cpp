// hovistrel.exe as the setup program's finish page and the shell start it: with a shipped drawing
// it opens its main window of the class other programs find it by, and ends cleanly when closed.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

TEST(ViewerProgram, OpensItsMainWindowByClassAndClosesCleanly)
{
    char path[MAX_PATH] = {};
    std::string command(path, GetModuleFileNameA(nullptr, path, sizeof path));
    command = "\"" + command.substr(0, command.find_last_of("\\/") + 1) + "hovistrel.exe\" \"" VISTREL_DRAWING "\"";
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child = {};
    ASSERT_TRUE(CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &child));
    HWND window = nullptr;
    for (int tries = 0; tries < 200 && !window; ++tries, Sleep(50))
        window = FindWindowA("HOVISTREL_MainWClass", nullptr);
    ASSERT_NE(window, nullptr);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    EXPECT_EQ(owner, child.dwProcessId);
    PostMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(WaitForSingleObject(child.hProcess, 10000), WAIT_OBJECT_0);
    DWORD exitCode = 99;
    GetExitCodeProcess(child.hProcess, &exitCode);
    EXPECT_EQ(exitCode, 0u);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
}
