// hoshowcase.exe: opens every window of the setup program in turn, with real texts from the
// language module, and saves a picture of each one as <folder>\<window>-<dpi>dpi.png. The
// pictures in docs/screenshots are made with it by scripts/screenshots.sh, once per screen dpi.
//
// The program sets the setup state up the way the user-interface tests do, without running an
// installation: the language module, the scale of the screen, and a main window with the splash.
// Each modal window is shown on the main thread as the program shows it; a watcher thread waits
// until the window is on the screen and painted, copies its screen area (the frame and a small
// margin included) and closes it with the button a user would click.
//
// Usage: hoshowcase.exe <output folder>
// Exit code 0 when every picture was saved.
#include "dialogs.h"
#include "install/install.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"
#include "holang.h"

#include <commctrl.h>
// GDI+ needs the COM headers that WIN32_LEAN_AND_MEAN leaves out.
#include <objidl.h>
#include <propidl.h>
#include <gdiplus.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// A window is taken this long after it appeared: time for the dialog manager to paint it and
// its controls under a slow virtual X server.
constexpr DWORD kSettleTime = 700;
constexpr int kMarginDesign = 8;        // screen pixels around the frame at 96 dpi
constexpr char kProductLabel[] = "Vistrel Professional 2022";

// A long path, as a deep library folder of an installation gives one (201 characters), so that
// the pictures show how the dialogs wrap a path that fits no line.
constexpr char kLongFolder[] =
    "C:\\Program Files\\Harwick-Orbel\\Vistrel (64-bit)\\Libraries\\Standard parts\\Mechanical fasteners\\"
    "Socket head cap screws ISO 4762\\Stainless steel A4-80\\Metric coarse thread\\";
constexpr char kLongFile[] = "ISO 4762 - M12 x 80 - A4-80.vlib";
// A path without a single space (a distribution unpacked into a temporary folder), which no
// line can hold whole: it shows the alert's wide box.
constexpr char kSpacelessFile[] =
    "C:\\Users\\j.kowalczyk-brandt\\AppData\\Local\\Temp\\HOSetup_2023-06-14_094102\\"
    "Vistrel_Professional_2022_x64\\Libraries\\Standard_parts\\Fasteners\\ISO_4762_A4-80\\"
    "ISO_4762_M12x80_A4-80.vlib";

// PNG encoder of GDI+ (the fixed class identifier of its built-in PNG codec).
const CLSID kPngEncoder = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

std::string g_folder;
std::string g_suffix;     // "-96dpi", from the dpi the screen reports
int g_failures = 0;

void fail(const std::string& what)
{
    std::printf("FAILED: %s\n", what.c_str());
    std::fflush(stdout);
    ++g_failures;
}

// Copies the window's screen area, margin included, and saves it as <name><suffix>.png.
void capture(HWND window, const char* name)
{
    RECT area;
    if (!window || !GetWindowRect(window, &area)) {
        fail(std::string(name) + ": no window");
        return;
    }
    const int margin = scaledSize(kMarginDesign);
    const int screenWidth = GetSystemMetrics(SM_CXSCREEN), screenHeight = GetSystemMetrics(SM_CYSCREEN);
    const int left = area.left - margin < 0 ? 0 : area.left - margin;
    const int top = area.top - margin < 0 ? 0 : area.top - margin;
    const int right = area.right + margin > screenWidth ? screenWidth : area.right + margin;
    const int bottom = area.bottom + margin > screenHeight ? screenHeight : area.bottom + margin;
    const int width = right - left, height = bottom - top;

    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    HGDIOBJ previous = SelectObject(memory, bitmap);
    const BOOL copied = BitBlt(memory, 0, 0, width, height, screen, left, top, SRCCOPY | CAPTUREBLT);
    SelectObject(memory, previous);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    if (!copied) {
        DeleteObject(bitmap);
        fail(std::string(name) + ": the screen could not be copied");
        return;
    }

    const std::string file = g_folder + "\\" + name + g_suffix + ".png";
    wchar_t wideFile[MAX_PATH] = {};
    MultiByteToWideChar(CP_ACP, 0, file.c_str(), -1, wideFile, MAX_PATH);
    Gdiplus::Status status = Gdiplus::GenericError;
    {
        Gdiplus::Bitmap image(bitmap, nullptr);
        status = image.Save(wideFile, &kPngEncoder, nullptr);
    }
    DeleteObject(bitmap);
    if (status != Gdiplus::Ok) {
        fail(file + ": GDI+ could not save it (status " + std::to_string(status) + ")");
        return;
    }
    std::printf("saved %s (%d x %d)\n", file.c_str(), width, height);
    std::fflush(stdout);
}

// Runs show() on this thread while a watcher waits for the dialog of query, takes its picture
// and then clicks the button closeId.
template <typename Show>
void showAndCapture(const char* name, const DialogQuery& query, int closeId, Show show)
{
    std::string failure;
    DialogScript script;
    startScript(&script, [&] {
        HWND dialog = waitForDialog(query);
        if (!dialog) {
            failure = "did not appear";
            abandonDialogs();
            return;
        }
        Sleep(kSettleTime);
        capture(dialog, name);
        clickButton(dialog, closeId);
        if (!waitForWindowGone(dialog)) {
            failure = "did not close";
            abandonDialogs();
        }
    });
    show();
    if (!finishScript(&script))
        failure = "the watcher did not finish";
    if (!failure.empty())
        fail(std::string(name) + ": " + failure);
}

// Empties the message queue for a while, as the program's main loop does between steps.
void pumpFor(DWORD milliseconds)
{
    const DWORD start = GetTickCount();
    do {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (g_setup.progressDialog && IsDialogMessageA(g_setup.progressDialog, &message))
                continue;
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        Sleep(10);
    } while (GetTickCount() - start < milliseconds);
}

// The progress window is modeless: it is painted by this thread's pump, so the picture is taken
// here too.
void captureProgress(const char* name, std::uint32_t stage, std::int64_t done, std::int64_t total)
{
    if (!ShowProgressStage(true, stage, 0, 0)) {
        fail(std::string(name) + ": the window could not be created");
        return;
    }
    SetProgress(done, total);
    pumpFor(kSettleTime);
    capture(g_setup.progressDialog, name);
    ShowProgressStage(false, 0, 0, 0);
    pumpFor(100);
}

// The setup state as the program has it once its main window exists, without the folders and
// the setup data file a run would read.
bool prepareSetupState()
{
    ZeroMemory(&g_setup, sizeof g_setup);
    g_setup.instance = GetModuleHandleA(nullptr);
    // The module beside the showcase, checked, loaded and its tables bound as the program does.
    if (!loadLanguageModule()) {
        fail("holang.dll is not loaded");
        return false;
    }
    HDC screen = GetDC(nullptr);
    g_setup.screenWidth = GetDeviceCaps(screen, HORZRES);
    g_setup.screenHeight = GetDeviceCaps(screen, VERTRES);
    g_setup.colourDepth = GetDeviceCaps(screen, PLANES) * GetDeviceCaps(screen, BITSPIXEL);
    g_setup.dpiX = GetDeviceCaps(screen, LOGPIXELSX);
    g_setup.dpiY = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    g_setup.scale = (g_setup.dpiX + g_setup.dpiY) / 192.0;
    g_setup.arrowCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    g_setup.waitCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT));
    g_setup.startOption = 1;
    g_setup.launchAfterFinish = 1;
    std::printf("screen %d x %d, %d bits, dpi %d x %d, scale %.3f\n", g_setup.screenWidth, g_setup.screenHeight,
                g_setup.colourDepth, g_setup.dpiX, g_setup.dpiY, g_setup.scale);
    std::fflush(stdout);

    // The start and finish pages name the product label of the setup data file.
    g_setup.headerBuffer = static_cast<SetupDataHeader*>(std::calloc(1, kSetupHeaderBlockSize));
    if (g_setup.headerBuffer)
        HOI_CopyA(g_setup.headerBuffer->productLabel, sizeof g_setup.headerBuffer->productLabel, kProductLabel);
    return true;
}

// The program's own main window class, size and splash picture.
bool openMainWindow()
{
    if (!registerMainWindowClass(g_setup.instance))
        return false;
    g_setup.splashBitmap =
        loadPngResource(g_setup.instance, "ID_PNG_SPLASH", &g_setup.splashWidth, &g_setup.splashHeight);
    const DWORD style = WS_POPUP | WS_BORDER;
    int x, y, width, height;
    mainWindowSize(g_setup.scale, g_setup.screenWidth, g_setup.screenHeight, style, &x, &y, &width, &height);
    g_setup.mainWindow = CreateWindowExA(0, kMainWindowClass, eApplicationName, style, x, y, width, height, nullptr,
                                         nullptr, g_setup.instance, nullptr);
    if (!g_setup.mainWindow)
        return false;
    ShowWindow(g_setup.mainWindow, SW_SHOWNORMAL);
    UpdateWindow(g_setup.mainWindow);
    pumpFor(300);
    return true;
}

void closeMainWindow()
{
    if (g_setup.mainWindow)
        DestroyWindow(g_setup.mainWindow);   // not WM_CLOSE: that would end a setup run
    g_setup.mainWindow = nullptr;
    pumpFor(100);
    if (g_setup.splashBitmap)
        DeleteObject(g_setup.splashBitmap);
    g_setup.splashBitmap = nullptr;
    std::free(g_setup.headerBuffer);
    g_setup.headerBuffer = nullptr;
}

void showPages()
{
    const DialogQuery page = dialogWith(IDC_MAIN_TEXT, IDC_CONTINUE, IDC_PAGE_HELP);
    HWND owner = g_setup.mainWindow;
    showAndCapture("install-welcome", page, IDC_CONTINUE, [&] { ShowInstallWelcomePage(owner); });
    showAndCapture("install-start", page, IDC_CONTINUE, [&] { ShowInstallStartPage(owner); });
    showAndCapture("install-finish", page, IDC_CONTINUE, [&] { ShowInstallFinishPage(owner); });
    showAndCapture("remove-welcome", page, IDC_CONTINUE, [&] { ShowRemoveWelcomePage(owner); });
    showAndCapture("remove-start", page, IDC_CONTINUE, [&] { ShowRemoveStartPage(owner); });
    showAndCapture("remove-finish", page, IDC_CONTINUE, [&] { ShowRemoveFinishPage(owner); });
    // The longest texts of the two install pages: an update, for one user.
    g_setup.updateInstall = 1;
    g_setup.optionPerUser = 1;
    showAndCapture("install-welcome-update", page, IDC_CONTINUE, [&] { ShowInstallWelcomePage(owner); });
    showAndCapture("install-start-update", page, IDC_CONTINUE, [&] { ShowInstallStartPage(owner); });
    g_setup.updateInstall = 0;
    g_setup.optionPerUser = 0;
}

void showAlerts()
{
    const DialogQuery alert = dialogWith(IDC_ALERT_TEXT, IDC_ALERT_BUTTON1);
    HWND owner = g_setup.mainWindow;
    const std::string file = std::string(kLongFolder) + kLongFile;
    // A source file that cannot be opened: Cancel alone.
    showAndCapture("alert-one-button", alert, IDC_ALERT_BUTTON1, [&] { ShowFileAlert(owner, kSpacelessFile, 0); });
    // A file in use: Continue or Cancel.
    showAndCapture("alert-two-buttons", alert, IDC_ALERT_BUTTON2, [&] { ShowFileAlert(owner, file.c_str(), 2); });
    // A backup that failed: Retry, Skip or Cancel.
    showAndCapture("alert-three-buttons", alert, IDC_ALERT_BUTTON3,
                   [&] { ShowFileAlert(owner, file.c_str(), 14); });
}

void showReplaceQuery()
{
    const std::string file = std::string(kLongFolder) + kLongFile;
    // The dates are written with the language module's own date pattern, as the copy step
    // writes them, so that each language shows its own month names and order.
    SYSTEMTIME existingTime = {}, incomingTime = {};
    existingTime.wYear = 2023, existingTime.wMonth = 6, existingTime.wDay = 14;
    existingTime.wHour = 9, existingTime.wMinute = 41;
    incomingTime.wYear = 2022, incomingTime.wMonth = 3, incomingTime.wDay = 2;
    incomingTime.wHour = 16, incomingTime.wMinute = 5;
    char existingDate[kTextCapacity], incomingDate[kTextCapacity];
    FormatDatePattern(existingTime, eUniTexts[19], existingDate, sizeof existingDate);
    FormatDatePattern(incomingTime, eUniTexts[19], incomingDate, sizeof incomingDate);
    char existing[kMessageCapacity], incoming[kMessageCapacity];
    HOI_PrintA(existing, sizeof existing, eUniTexts[18], 48213, existingDate);
    HOI_PrintA(incoming, sizeof incoming, eUniTexts[18], 47960, incomingDate);
    showAndCapture("replace-query", dialogWith(IDC_EXISTING_TEXT, IDC_NEW_TEXT), IDC_REPLACE_KEEP,
                   [&] { AskReplaceFile(g_setup.mainWindow, file.c_str(), existing, incoming); });
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::printf("usage: hoshowcase.exe <output folder>\n");
        return 2;
    }
    g_folder = argv[1];
    while (!g_folder.empty() && (g_folder.back() == '\\' || g_folder.back() == '/'))
        g_folder.pop_back();

    // Without this, Wine and Windows scale the windows as a bitmap and the dpi reads 96.
    SetProcessDPIAware();
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    Gdiplus::GdiplusStartupInput startup;
    ULONG_PTR token = 0;
    if (Gdiplus::GdiplusStartup(&token, &startup, nullptr) != Gdiplus::Ok) {
        std::printf("FAILED: GDI+ did not start\n");
        return 1;
    }

    if (prepareSetupState()) {
        g_suffix = "-" + std::to_string(g_setup.dpiX) + "dpi";
        if (!openMainWindow())
            fail("the main window could not be opened");
        showPages();
        captureProgress("progress-install", 1, 45, 100);
        captureProgress("progress-remove", 5, 30, 100);
        showAlerts();
        showReplaceQuery();
        closeMainWindow();
    }

    Gdiplus::GdiplusShutdown(token);
    std::printf("%s\n", g_failures ? "some pictures are missing" : "all pictures saved");
    return g_failures ? 1 : 0;
}
