// hovistrel.exe: start-up, the main window and its menu. The window (class
// "HOVISTREL_MainWClass") shows the drawing named on the command line, fitted to its size, with a
// status line below; "/p" prints the drawing on the default printer instead and ends.
#include "hovistrel.h"

#include <commdlg.h>
#include <shellapi.h>

#include <algorithm>

namespace {

// The one drawing the window shows.
struct Viewer {
    std::string path;
    HodDrawing drawing;
};

Viewer g_viewer;

int StatusHeight(HWND window)
{
    HDC dc = GetDC(window);
    const int dpi = GetDeviceCaps(dc, LOGPIXELSY);
    ReleaseDC(window, dc);
    return 24 * dpi / 96;
}

void Open(HWND window, const std::string& path)
{
    g_viewer.path = path;
    LoadHodFile(path.c_str(), g_viewer.drawing);
    if (window) InvalidateRect(window, nullptr, TRUE);
}

void ChooseAndOpen(HWND window)
{
    char file[MAX_PATH] = "";
    OPENFILENAMEA ofn = {};
    ofn.lStructSize = sizeof(ofn);
    ofn.hwndOwner = window;
    ofn.lpstrFilter = "Vistrel drawings (*.hod)\0*.hod\0All files (*.*)\0*.*\0";
    ofn.lpstrFile = file;
    ofn.nMaxFile = sizeof(file);
    ofn.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
    if (GetOpenFileNameA(&ofn)) Open(window, file);
}

// The help file lies in the "Help" folder below the program once installed, beside it in a build.
void ShowHelp(HWND window)
{
    char folder[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, folder, sizeof(folder));
    if (length == 0 || length >= sizeof(folder)) return;
    std::string base(folder, length);
    base.erase(base.find_last_of("\\/") + 1);
    for (const char* relative : {"Help\\hovistrel.chm", "hovistrel.chm"}) {
        const std::string help = base + relative;
        if (GetFileAttributesA(help.c_str()) == INVALID_FILE_ATTRIBUTES) continue;
        ShellExecuteA(window, "open", help.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
        return;
    }
    MessageBoxA(window, "The help file hovistrel.chm was not found.", kMainWindowTitle,
                MB_OK | MB_ICONEXCLAMATION);
}

HMENU MakeMenu()
{
    HMENU file = CreatePopupMenu();
    AppendMenuA(file, MF_STRING, kCmdOpen, "&Open...");
    AppendMenuA(file, MF_STRING, kCmdPrint, "&Print");
    AppendMenuA(file, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(file, MF_STRING, kCmdExit, "E&xit");
    HMENU help = CreatePopupMenu();
    AppendMenuA(help, MF_STRING, kCmdHelp, "&Contents");
    AppendMenuA(help, MF_STRING, kCmdAbout, "&About Vistrel");
    HMENU bar = CreateMenu();
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(help), "&Help");
    return bar;
}

void OnCommand(HWND window, int command)
{
    switch (command) {
    case kCmdOpen:
        ChooseAndOpen(window);
        break;
    case kCmdPrint:
        if (g_viewer.path.empty()) MessageBoxA(window, "Open a drawing first.", kMainWindowTitle, MB_OK);
        else PrintDrawing(window, g_viewer.path.c_str(), g_viewer.drawing);
        break;
    case kCmdExit:
        DestroyWindow(window);
        break;
    case kCmdHelp:
        ShowHelp(window);
        break;
    case kCmdAbout:
        MessageBoxA(window, "Vistrel 2022\nSample drawing viewer of the Vistrel setup.\n"
                            "(c) Harwick-Orbel", kMainWindowTitle, MB_OK | MB_ICONINFORMATION);
        break;
    }
}

void OnPaint(HWND window)
{
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(window, &ps);
    RECT client;
    GetClientRect(window, &client);
    const int status = std::min(StatusHeight(window), static_cast<int>(client.bottom));
    RECT sheet = client;
    sheet.bottom -= status;
    FillRect(dc, &sheet, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    PaintDrawing(dc, sheet, g_viewer.drawing);
    RECT line = client;
    line.top = sheet.bottom;
    PaintStatus(dc, line, g_viewer.path.c_str(), g_viewer.drawing);
    EndPaint(window, &ps);
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
        OnCommand(window, LOWORD(wParam));
        return 0;
    case WM_PAINT:
        OnPaint(window);
        return 0;
    case WM_SIZE:
        // The whole drawing is refitted to the new size.
        InvalidateRect(window, nullptr, TRUE);
        return 0;
    case WM_ERASEBKGND:
        return 1;   // painting covers the whole client area
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

int RunWindow(HINSTANCE instance, int showCommand)
{
    WNDCLASSEXA wc = {};
    wc.cbSize = sizeof(wc);
    wc.lpfnWndProc = MainWindowProc;
    wc.hInstance = instance;
    wc.hIcon = LoadIconA(instance, "APPICON");
    wc.hIconSm = static_cast<HICON>(LoadImageA(instance, "APPICON", IMAGE_ICON,
                                               GetSystemMetrics(SM_CXSMICON),
                                               GetSystemMetrics(SM_CYSMICON), 0));
    wc.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    wc.lpszClassName = kMainWindowClass;
    if (!RegisterClassExA(&wc)) return 1;
    HWND window = CreateWindowExA(0, kMainWindowClass, kMainWindowTitle, WS_OVERLAPPEDWINDOW,
                                  CW_USEDEFAULT, CW_USEDEFAULT, 900, 640, nullptr, MakeMenu(),
                                  instance, nullptr);
    if (!window) return 1;
    ShowWindow(window, showCommand);
    UpdateWindow(window);
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return static_cast<int>(msg.wParam);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int showCommand)
{
    const ViewerCommand command = ParseViewerCommand(commandLine);
    if (!command.error.empty()) {
        const std::string text = command.error +
                                 "\n\nUsage: hovistrel.exe [\"drawing.hod\"]\n"
                                 "       hovistrel.exe /p \"drawing.hod\"";
        MessageBoxA(nullptr, text.c_str(), kMainWindowTitle, MB_OK | MB_ICONEXCLAMATION);
        return 2;
    }
    if (!command.path.empty()) Open(nullptr, command.path);
    if (!command.print) return RunWindow(instance, showCommand);

    // Printing: a drawing that could not be read at all is reported; one with faulty lines is
    // printed with what could be read, as the window would show it.
    if (g_viewer.drawing.shapes.empty() && !g_viewer.drawing.errors.empty()) {
        const HodError& e = g_viewer.drawing.errors.front();
        const std::string text = command.path + ":\n" +
                                 (e.line ? "line " + std::to_string(e.line) + ": " : "") + e.text;
        MessageBoxA(nullptr, text.c_str(), kMainWindowTitle, MB_OK | MB_ICONEXCLAMATION);
        return 1;
    }
    return PrintDrawing(nullptr, command.path.c_str(), g_viewer.drawing) ? 0 : 1;
}
