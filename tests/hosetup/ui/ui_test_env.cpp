// Set-up and layout checks shared by the user-interface tests.
#include "ui_test_env.h"

#include "shell/shell.h"
#include "ui/ui.h"

#include <cstring>

namespace {

constexpr char kTestMainClass[] = "HoUiTestMainWindow";

HANDLE g_productThread = nullptr;
HANDLE g_productStop = nullptr;
HANDLE g_productReady = nullptr;

DWORD WINAPI runFakeProduct(void*)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = kProductWindowClass;
    RegisterClassA(&windowClass);
    HWND window = CreateWindowExA(0, kProductWindowClass, "Vistrel", WS_OVERLAPPED, 0, 0, 100, 100, nullptr,
                                  nullptr, GetModuleHandleA(nullptr), nullptr);
    SetEvent(g_productReady);
    while (MsgWaitForMultipleObjects(1, &g_productStop, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
    DestroyWindow(window);
    return 0;
}

BOOL CALLBACK collectControl(HWND control, LPARAM context)
{
    auto* controls = reinterpret_cast<std::pair<HWND, std::string*>*>(context);
    if (!IsWindowVisible(control) || GetParent(control) != controls->first)
        return TRUE;
    HWND dialog = controls->first;
    std::string& problems = *controls->second;
    RECT area, client;
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    GetClientRect(dialog, &client);
    const int id = GetDlgCtrlID(control);
    if (area.left < 0 || area.top < 0 || area.right > client.right || area.bottom > client.bottom)
        problems += "control " + std::to_string(id) + " outside the client area; ";
    char className[32] = {};
    GetClassNameA(control, className, sizeof className);
    if (std::strcmp(className, "Static") == 0 && neededTextHeight(control) > area.bottom - area.top)
        problems += "text of control " + std::to_string(id) + " does not fit; ";
    return TRUE;
}

} // namespace

void prepareUiTestState(double scale)
{
    ZeroMemory(&g_setup, sizeof g_setup);
    g_setup.instance = GetModuleHandleA(nullptr);
    g_setup.languageModule = GetModuleHandleA("holang.dll");
    g_setup.scale = scale;
    g_setup.arrowCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    g_setup.startOption = 1;

    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = g_setup.instance;
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(DKGRAY_BRUSH));
    windowClass.lpszClassName = kTestMainClass;
    RegisterClassA(&windowClass);
    const int width = static_cast<int>(580 * scale), height = static_cast<int>(400 * scale);
    g_setup.mainWindow = CreateWindowExA(0, kTestMainClass, "Vistrel Setup", WS_POPUP | WS_BORDER | WS_VISIBLE,
                                         (GetSystemMetrics(SM_CXSCREEN) - width) / 2,
                                         (GetSystemMetrics(SM_CYSCREEN) - height) / 2, width, height, nullptr,
                                         nullptr, g_setup.instance, nullptr);
}

void closeUiTestState()
{
    ShowProgressStage(false, 0, 0, 0);
    if (g_setup.mainWindow)
        DestroyWindow(g_setup.mainWindow);
    g_setup.mainWindow = nullptr;
    pumpLikeMainLoop(0);
}

std::string layoutProblems(HWND dialog)
{
    std::string problems;
    std::pair<HWND, std::string*> context(dialog, &problems);
    EnumChildWindows(dialog, collectControl, reinterpret_cast<LPARAM>(&context));

    // Visible buttons and texts must not overlap one another.
    HWND controls[16];
    int count = 0;
    for (HWND child = GetWindow(dialog, GW_CHILD); child && count < 16; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child))
            controls[count++] = child;
    }
    for (int i = 0; i < count; ++i) {
        for (int j = i + 1; j < count; ++j) {
            RECT a, b, both;
            GetWindowRect(controls[i], &a);
            GetWindowRect(controls[j], &b);
            if (IntersectRect(&both, &a, &b))
                problems += "controls " + std::to_string(GetDlgCtrlID(controls[i])) + " and " +
                            std::to_string(GetDlgCtrlID(controls[j])) + " overlap; ";
        }
    }

    if (g_setup.mainWindow) {
        RECT owner, own;
        GetWindowRect(g_setup.mainWindow, &owner);
        GetWindowRect(dialog, &own);
        const long centreX = (owner.left + owner.right) / 2 - (own.left + own.right) / 2;
        const long centreY = (owner.top + owner.bottom) / 2 - (own.top + own.bottom) / 2;
        if ((centreX < -1 || centreX > 1 || centreY < -1 || centreY > 1) && own.left > 0 && own.top > 0)
            problems += "not centred over the main window; ";
    }
    return problems;
}

int neededTextHeight(HWND control)
{
    RECT area;
    GetClientRect(control, &area);
    std::string text = windowText(control);
    return measureWrappedText(control, text.c_str(), area.right, nullptr);
}

void pumpLikeMainLoop(DWORD milliseconds)
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

void startFakeProduct()
{
    g_productStop = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    g_productReady = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    g_productThread = CreateThread(nullptr, 0, runFakeProduct, nullptr, 0, nullptr);
    WaitForSingleObject(g_productReady, 5000);
}

void stopFakeProduct()
{
    if (!g_productThread)
        return;
    SetEvent(g_productStop);
    WaitForSingleObject(g_productThread, 5000);
    CloseHandle(g_productThread);
    CloseHandle(g_productStop);
    CloseHandle(g_productReady);
    g_productThread = nullptr;
}

HWND expectDialog(const DialogQuery& query, const char* what, std::string* failures)
{
    HWND dialog = waitForDialog(query);
    if (!dialog) {
        *failures += std::string("no ") + what + " appeared; ";
        abandonDialogs();
    }
    return dialog;
}
