// A watcher thread for tests that make the code under test open a message box or an alert box:
// it notes the texts of every dialog box the process shows and clicks its first button, so that
// no test waits for a person.
#pragma once

#include <windows.h>

#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace setupdata_test {

// One dialog box as the watcher saw it: its caption and the texts of its controls.
struct SeenDialog {
    std::string caption;
    std::vector<std::string> texts;

    bool hasText(const std::string& text) const;
    bool hasTextContaining(const std::string& part) const;
};

class DialogWatcher {
public:
    DialogWatcher();
    ~DialogWatcher();
    DialogWatcher(const DialogWatcher&) = delete;
    DialogWatcher& operator=(const DialogWatcher&) = delete;

    std::vector<SeenDialog> seen();
    std::size_t count();
    void clear();

private:
    static DWORD WINAPI run(void* self);
    static BOOL CALLBACK visitWindow(HWND window, LPARAM self);
    void handle(HWND dialog);

    HANDLE thread_ = nullptr;
    HANDLE stop_ = nullptr;
    CRITICAL_SECTION lock_;
    std::vector<SeenDialog> seen_;
    std::set<HWND> handled_;
};

inline bool SeenDialog::hasText(const std::string& text) const
{
    for (const std::string& t : texts) {
        if (t == text)
            return true;
    }
    return false;
}

inline bool SeenDialog::hasTextContaining(const std::string& part) const
{
    for (const std::string& t : texts) {
        if (t.find(part) != std::string::npos)
            return true;
    }
    return false;
}

inline DialogWatcher::DialogWatcher()
{
    InitializeCriticalSection(&lock_);
    stop_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    thread_ = CreateThread(nullptr, 0, run, this, 0, nullptr);
}

inline DialogWatcher::~DialogWatcher()
{
    SetEvent(stop_);
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
    CloseHandle(stop_);
    DeleteCriticalSection(&lock_);
}

inline std::vector<SeenDialog> DialogWatcher::seen()
{
    EnterCriticalSection(&lock_);
    std::vector<SeenDialog> copy = seen_;
    LeaveCriticalSection(&lock_);
    return copy;
}

inline std::size_t DialogWatcher::count()
{
    return seen().size();
}

inline void DialogWatcher::clear()
{
    EnterCriticalSection(&lock_);
    seen_.clear();
    LeaveCriticalSection(&lock_);
}

inline DWORD WINAPI DialogWatcher::run(void* self)
{
    DialogWatcher* watcher = static_cast<DialogWatcher*>(self);
    while (WaitForSingleObject(watcher->stop_, 10) == WAIT_TIMEOUT) {
        // Handles of closed boxes may come back for new ones.
        for (auto it = watcher->handled_.begin(); it != watcher->handled_.end();)
            it = IsWindow(*it) ? std::next(it) : watcher->handled_.erase(it);
        EnumWindows(visitWindow, reinterpret_cast<LPARAM>(watcher));
    }
    return 0;
}

inline BOOL CALLBACK DialogWatcher::visitWindow(HWND window, LPARAM self)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char className[64] = {};
    GetClassNameA(window, className, sizeof className);
    if (process == GetCurrentProcessId() && IsWindowVisible(window) && lstrcmpA(className, "#32770") == 0)
        reinterpret_cast<DialogWatcher*>(self)->handle(window);
    return TRUE;
}

inline void DialogWatcher::handle(HWND dialog)
{
    // A box stays visible for a moment after the click; it is noted once.
    if (handled_.count(dialog))
        return;
    handled_.insert(dialog);

    SeenDialog entry;
    char text[4096];
    GetWindowTextA(dialog, text, sizeof text);
    entry.caption = text;
    HWND firstButton = nullptr;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        GetWindowTextA(child, text, sizeof text);
        entry.texts.push_back(text);
        char className[64] = {};
        GetClassNameA(child, className, sizeof className);
        if (!firstButton && lstrcmpiA(className, "Button") == 0 && IsWindowVisible(child))
            firstButton = child;
    }
    EnterCriticalSection(&lock_);
    seen_.push_back(entry);
    LeaveCriticalSection(&lock_);

    if (firstButton)
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(firstButton), BN_CLICKED),
                     reinterpret_cast<LPARAM>(firstButton));
    else
        PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

} // namespace setupdata_test
