// The main window: a borderless splash window, centred on the screen, that shows the product
// picture for the whole run and owns every page, dialog and message box. Command 100 runs the
// wizard and the install or removal sequence inside its window procedure.
#include "shell/shell.h"
#include "files/files.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "format/program_files.h"
#include "install/install.h"
#include "remove/remove.h"
#include "ui/ui.h"

namespace {

constexpr std::uint32_t kLineRegisterClass = 175;
constexpr int kDesignWidth = 580;
constexpr int kDesignHeight = 400;
constexpr DWORD kMainWindowStyle = WS_POPUP | WS_BORDER;

LRESULT onPaint(HWND window)
{
    SetWindowTextA(window, eApplicationName);
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    if (g_setup.splashBitmap) {
        RECT client;
        GetClientRect(window, &client);
        HDC memory = CreateCompatibleDC(dc);
        HGDIOBJ previous = SelectObject(memory, g_setup.splashBitmap);
        const int oldMode = SetStretchBltMode(dc, HALFTONE);
        SetBrushOrgEx(dc, 0, 0, nullptr);
        StretchBlt(dc, 0, 0, client.right, client.bottom, memory, 0, 0, static_cast<int>(g_setup.splashWidth),
                   static_cast<int>(g_setup.splashHeight), SRCCOPY);
        SetStretchBltMode(dc, oldMode);
        SelectObject(memory, previous);
        DeleteDC(memory);
    }
    EndPaint(window, &paint);
    return 0;
}

// The run: the first page, then the sequence; the result becomes the exit code. Until the
// sequence says otherwise the run counts as failed, so a process ended any other way never
// reports success.
void runWizard(HWND window)
{
    g_setup.exitCode = kExitFailure;
    SetCursor(g_setup.arrowCursor);
    if (g_setup.optionRemove) {
        if (!ShowRemoveWelcomePage(window))
            g_setup.exitCode = kExitLeftAtStart;
        else
            g_setup.exitCode = RunRemoval() ? kExitSuccess : kExitFailure;
    } else {
        if (!ShowInstallWelcomePage(window))
            g_setup.exitCode = kExitLeftAtStart;
        else
            g_setup.exitCode = RunInstallation() ? kExitSuccess : kExitFailure;
    }
    ShowProgressStage(false, 0, 0, 0);
    // A log still open here is left to the shutdown, which writes the EXITING banner before it
    // closes the file.
    SetCursor(g_setup.arrowCursor);
    g_setup.runEnded = 1;
    PostMessageA(window, WM_CLOSE, 0, 0);
}

// A close of the main window (Alt+F4, the taskbar, a shutdown) while the run is under way must
// not pull the setup state from under the running sequence: it is the progress window's cancel
// request instead, asked at the next progress report. Before the progress window shows, and in
// a silent run, there is nothing to ask and it is ignored. True when the window may close. The
// window exists a moment before the run starts, and a close in that moment must not end the
// program with the cleared state's exit code 0: only the run's own closing request (runEnded)
// closes it.
bool closeRequested()
{
    if (g_setup.runEnded)
        return true;
    if (g_setup.progressDialog && IsWindowVisible(g_setup.progressDialog) && !g_setup.optionSilent)
        g_setup.cancelRequested = 1;
    return false;
}

LRESULT CALLBACK mainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
        if (LOWORD(wParam) != kRunCommand)
            break;
        runWizard(window);
        return 0;
    case WM_PAINT:
        return onPaint(window);
    case WM_CLOSE:
        if (!closeRequested())
            return 0;
        if (g_setup.optionSourceFolder)
            scheduleProgramFilesDeletion();
        exitSetup();
        DestroyWindow(window);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(static_cast<int>(g_setup.exitCode));
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

// A copy of the program started from a temporary place with -A removes all of its own files.
void scheduleProgramFilesDeletion()
{
    char path[kPathCapacity];
    for (const ProgramFile& own : kProgramFiles) {
        HOI_CopyA(path, sizeof path, g_setup.programFolder, own.name);
        DeleteAtRestart(path);
    }
}

bool registerMainWindowClass(HINSTANCE instance)
{
    WNDCLASSA windowClass = {};
    windowClass.style = CS_SAVEBITS;
    windowClass.lpfnWndProc = mainWindowProc;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconA(instance, "ID_ICO_LOGO");
    windowClass.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    windowClass.lpszClassName = kMainWindowClass;
    if (!RegisterClassA(&windowClass)) {
        reportError("HOSetup", kLineRegisterClass, "Error registering \"HOSETUP6_MainWClass\".");
        return false;
    }
    return true;
}

void mainWindowSize(double scale, int screenWidth, int screenHeight, DWORD style,
                    int* x, int* y, int* width, int* height)
{
    RECT frame = {0, 0, static_cast<LONG>(roundHalfAwayFromZero(kDesignWidth * scale)),
                  static_cast<LONG>(roundHalfAwayFromZero(kDesignHeight * scale))};
    AdjustWindowRect(&frame, style, FALSE);
    *width = frame.right - frame.left;
    *height = frame.bottom - frame.top;
    if (*width > screenWidth)
        *width = screenWidth;
    if (*height > screenHeight)
        *height = screenHeight;
    *x = (screenWidth - *width) / 2;
    *y = (screenHeight - *height) / 2;
}

bool createMainWindow(HINSTANCE instance)
{
    g_setup.instance = instance;
    HWND window = CreateWindowExA(0, kMainWindowClass, eApplicationName, kMainWindowStyle, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
    if (!window)
        return false;
    g_setup.mainWindow = window;
    if (!initialiseSetup())
        return false;

    int x, y, width, height;
    mainWindowSize(g_setup.scale, g_setup.screenWidth, g_setup.screenHeight, kMainWindowStyle, &x, &y, &width,
                   &height);
    SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(window, SW_SHOWNORMAL);
    InvalidateRect(window, nullptr, TRUE);
    UpdateWindow(window);
    return true;
}
