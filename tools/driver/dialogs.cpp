// Driving dialogs in real windows; see dialogs.h. Everything here talks to the dialog through
// posted messages or messages with a time limit, so a dialog that opens a nested modal box (a
// question behind a cancel button) never blocks the driver.
#include "dialogs.h"

#include <cstring>

namespace {

constexpr DWORD kPollInterval = 50;
constexpr UINT kReadTimeout = 3000;

struct Search {
    const DialogQuery* query;
    DWORD processId;
    HWND found;
};

bool matches(HWND window, const DialogQuery& query, DWORD processId)
{
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if ((!query.anyProcess && owner != processId) || window == query.exclude || !IsWindowVisible(window))
        return false;
    char className[32] = {};
    GetClassNameA(window, className, sizeof className);
    if (std::strcmp(className, "#32770") != 0)
        return false;
    for (int id : query.controls) {
        if (id == 0)
            break;
        if (!GetDlgItem(window, id))
            return false;
    }
    return !query.caption || windowText(window) == query.caption;
}

BOOL CALLBACK searchWindow(HWND window, LPARAM context)
{
    Search* search = reinterpret_cast<Search*>(context);
    if (!matches(window, *search->query, search->processId))
        return TRUE;
    search->found = window;
    return FALSE;
}

BOOL CALLBACK endOwnDialog(HWND window, LPARAM ended)
{
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    char className[32] = {};
    GetClassNameA(window, className, sizeof className);
    if (owner == GetCurrentProcessId() && IsWindowVisible(window) && std::strcmp(className, "#32770") == 0) {
        EndDialog(window, 0);
        ++*reinterpret_cast<int*>(ended);
    }
    return TRUE;
}

// The control that has the keyboard focus in the dialog's thread, or the dialog itself.
HWND focusOf(HWND dialog)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const DWORD thread = GetWindowThreadProcessId(dialog, nullptr);
    if (GetGUIThreadInfo(thread, &info) && info.hwndFocus &&
        (info.hwndFocus == dialog || IsChild(dialog, info.hwndFocus)))
        return info.hwndFocus;
    return dialog;
}

void pressKey(HWND dialog, WPARAM key)
{
    HWND target = focusOf(dialog);
    const UINT scan = MapVirtualKeyA(static_cast<UINT>(key), 0);
    PostMessageA(target, WM_KEYDOWN, key, 1 | (scan << 16));
    PostMessageA(target, WM_KEYUP, key, 1 | (scan << 16) | 0xC0000000u);
}

DWORD WINAPI runScript(void* context)
{
    DialogScript* script = static_cast<DialogScript*>(context);
    script->body();
    return 0;
}

} // namespace

DialogQuery dialogWith(int control1, int control2, int control3)
{
    DialogQuery query;
    query.controls[0] = control1;
    query.controls[1] = control2;
    query.controls[2] = control3;
    return query;
}

HWND findDialog(const DialogQuery& query)
{
    Search search = {&query, query.processId ? query.processId : GetCurrentProcessId(), nullptr};
    EnumWindows(searchWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND waitForDialog(const DialogQuery& query, DWORD timeoutMs)
{
    const DWORD start = GetTickCount();
    for (;;) {
        HWND dialog = findDialog(query);
        if (dialog)
            return dialog;
        if (GetTickCount() - start >= timeoutMs)
            return nullptr;
        Sleep(kPollInterval);
    }
}

bool waitForNoDialog(const DialogQuery& query, DWORD timeoutMs)
{
    const DWORD start = GetTickCount();
    while (findDialog(query)) {
        if (GetTickCount() - start >= timeoutMs)
            return false;
        Sleep(kPollInterval);
    }
    return true;
}

bool waitForWindowGone(HWND window, DWORD timeoutMs)
{
    const DWORD start = GetTickCount();
    while (IsWindow(window) && IsWindowVisible(window)) {
        if (GetTickCount() - start >= timeoutMs)
            return false;
        Sleep(kPollInterval);
    }
    return true;
}

std::string windowText(HWND window)
{
    char text[4096] = {};
    DWORD_PTR copied = 0;
    if (!SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG,
                             kReadTimeout, &copied))
        return std::string();
    return std::string(text, copied < sizeof text ? copied : sizeof text - 1);
}

ControlState controlState(HWND dialog, int id)
{
    ControlState state;
    HWND control = GetDlgItem(dialog, id);
    if (!control)
        return state;
    state.exists = true;
    state.enabled = IsWindowEnabled(control) != FALSE;
    state.visible = IsWindowVisible(control) != FALSE;
    DWORD_PTR checked = 0;
    SendMessageTimeoutA(control, BM_GETCHECK, 0, 0, SMTO_ABORTIFHUNG, kReadTimeout, &checked);
    state.checked = checked == BST_CHECKED;
    state.text = windowText(control);
    return state;
}

std::string controlText(HWND dialog, int id)
{
    HWND control = GetDlgItem(dialog, id);
    return control ? windowText(control) : std::string();
}

void clickButton(HWND dialog, int id)
{
    PostMessageA(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

void sendCommand(HWND dialog, int id)
{
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

void pressEscape(HWND dialog)
{
    pressKey(dialog, VK_ESCAPE);
}

void pressEnter(HWND dialog)
{
    pressKey(dialog, VK_RETURN);
}

void abandonDialogs()
{
    for (int round = 0; round < 50; ++round) {
        int ended = 0;
        EnumWindows(endOwnDialog, reinterpret_cast<LPARAM>(&ended));
        if (ended == 0)
            return;
        Sleep(100);
    }
}

void startScript(DialogScript* script, std::function<void()> body)
{
    script->body = std::move(body);
    script->thread = CreateThread(nullptr, 0, runScript, script, 0, nullptr);
}

bool finishScript(DialogScript* script, DWORD timeoutMs)
{
    if (!script->thread)
        return false;
    bool ended = WaitForSingleObject(script->thread, timeoutMs) == WAIT_OBJECT_0;
    if (!ended) {
        abandonDialogs();
        ended = WaitForSingleObject(script->thread, 5000) == WAIT_OBJECT_0;
    }
    CloseHandle(script->thread);
    script->thread = nullptr;
    return ended;
}
