// The built hovistrel.exe and hovistrellib.dll, as the shell and other programs meet them: the
// main window by its class, and the icons by their position in the library.
#include "hovistrel.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <shellapi.h>

namespace {

std::string OwnFolder()
{
    char path[MAX_PATH];
    const DWORD n = GetModuleFileNameA(nullptr, path, sizeof(path));
    std::string folder(path, n);
    return folder.substr(0, folder.find_last_of("\\/") + 1);
}

struct WindowSearch {
    DWORD processId;
    HWND found;
};

BOOL CALLBACK FindMainWindow(HWND window, LPARAM param)
{
    auto* search = reinterpret_cast<WindowSearch*>(param);
    char className[64];
    DWORD pid = 0;
    GetWindowThreadProcessId(window, &pid);
    if (pid == search->processId && GetClassNameA(window, className, sizeof(className)) &&
        std::string(className) == kMainWindowClass) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

TEST(ViewerProgram, ShowsTheDrawingInItsNamedWindowAndClosesCleanly)
{
    const std::string drawing = OwnFolder() + "viewer test drawing.hod";
    FILE* f = std::fopen(drawing.c_str(), "wb");
    ASSERT_NE(f, nullptr);
    std::fputs("HOD 1\nTITLE Test\nCIRCLE 0 0 10\nTEXT -5 -20 4 test\n", f);
    std::fclose(f);

    std::string command = "\"" + OwnFolder() + "hovistrel.exe\" \"" + drawing + "\"";
    STARTUPINFOA si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi = {};
    ASSERT_TRUE(CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &si, &pi))
        << GetLastError();
    WaitForInputIdle(pi.hProcess, 10000);
    WindowSearch search{pi.dwProcessId, nullptr};
    for (int i = 0; i < 100 && !search.found; ++i) {
        EnumWindows(FindMainWindow, reinterpret_cast<LPARAM>(&search));
        if (!search.found) Sleep(100);
    }
    ASSERT_NE(search.found, nullptr) << "no window of class " << kMainWindowClass;
    EXPECT_EQ(FindWindowA(kMainWindowClass, nullptr) != nullptr, true);
    char title[64] = "";
    GetWindowTextA(search.found, title, sizeof(title));
    EXPECT_STREQ(title, "Vistrel");
    EXPECT_TRUE(IsWindowVisible(search.found));
    EXPECT_NE(GetMenu(search.found), nullptr);

    PostMessageA(search.found, WM_CLOSE, 0, 0);
    ASSERT_EQ(WaitForSingleObject(pi.hProcess, 10000), WAIT_OBJECT_0);
    DWORD exitCode = 99;
    GetExitCodeProcess(pi.hProcess, &exitCode);
    EXPECT_EQ(exitCode, 0u);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    DeleteFileA(drawing.c_str());
}

BOOL CALLBACK CollectGroup(HMODULE, LPCSTR, LPSTR name, LONG_PTR param)
{
    auto* names = reinterpret_cast<std::vector<std::string>*>(param);
    names->push_back(IS_INTRESOURCE(name) ? "#" + std::to_string(reinterpret_cast<ULONG_PTR>(name))
                                          : std::string(name));
    return TRUE;
}

// The pixels of an icon's colour bitmap at 32 x 32.
std::vector<unsigned char> Pixels(HICON icon)
{
    std::vector<unsigned char> bits(32 * 32 * 4);
    ICONINFO info = {};
    if (!icon || !GetIconInfo(icon, &info)) return {};
    BITMAPINFO bmi = {};
    bmi.bmiHeader.biSize = sizeof(bmi.bmiHeader);
    bmi.bmiHeader.biWidth = 32;
    bmi.bmiHeader.biHeight = 32;
    bmi.bmiHeader.biPlanes = 1;
    bmi.bmiHeader.biBitCount = 32;
    bmi.bmiHeader.biCompression = BI_RGB;
    HDC dc = GetDC(nullptr);
    const int lines = GetDIBits(dc, info.hbmColor, 0, 32, bits.data(), &bmi, DIB_RGB_COLORS);
    ReleaseDC(nullptr, dc);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    if (lines != 32) return {};
    return bits;
}

// The file types name the icons by position ("hovistrellib.dll,1" and ",2"); those positions
// must hold the drawing and library icons, whose resource IDs are 1 and 2.
TEST(ViewerLibrary, IconPositionsMatchTheDocumentTypes)
{
    const std::string dll = OwnFolder() + "hovistrellib.dll";
    HMODULE module = LoadLibraryExA(dll.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr) << dll;
    std::vector<std::string> groups;
    EnumResourceNamesA(module, RT_GROUP_ICON, CollectGroup, reinterpret_cast<LONG_PTR>(&groups));
    EXPECT_EQ(groups, (std::vector<std::string>{"APPICON", "#1", "#2"}));

    EXPECT_EQ(ExtractIconExA(dll.c_str(), -1, nullptr, nullptr, 0), 3u);
    const char* byPosition[] = {"APPICON", MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(2)};
    std::vector<std::vector<unsigned char>> seen;
    for (int position = 0; position < 3; ++position) {
        HICON extracted = nullptr;
        ASSERT_EQ(PrivateExtractIconsA(dll.c_str(), position, 32, 32, &extracted, nullptr, 1, 0), 1u);
        HICON loaded = static_cast<HICON>(LoadImageA(module, byPosition[position], IMAGE_ICON, 32, 32, 0));
        const std::vector<unsigned char> a = Pixels(extracted), b = Pixels(loaded);
        ASSERT_FALSE(a.empty());
        EXPECT_TRUE(a == b) << "position " << position << " shows another icon";
        seen.push_back(a);
        DestroyIcon(extracted);
        DestroyIcon(loaded);
    }
    // Three different pictures, so equal pixels above prove the right icon, not just any.
    EXPECT_TRUE(seen[0] != seen[1]);
    EXPECT_TRUE(seen[1] != seen[2]);
    FreeLibrary(module);
}

} // namespace
