// Finding and driving the setup program's dialogs in real windows, from a watcher thread of a
// test program or hoshowcase.exe, or from another process (hodriver.exe): find a dialog by its
// process, its caption and the control identifiers it holds, read its controls, and press its
// buttons by posting the same messages a click or a key would produce, so the dialog's own
// thread never waits for the driver.
#pragma once

#include <windows.h>
#include <functional>
#include <string>

// ---- constants ------------------------------------------------------------------------------

constexpr int kMaxRequiredControls = 4;
constexpr DWORD kDialogTimeout = 20000;

// ---- types ----------------------------------------------------------------------------------

// Which dialog to look for: a visible top-level dialog (class "#32770") of the process that
// holds every listed control and, when a caption is given, has that caption.
struct DialogQuery {
    DWORD processId = 0;                       // 0: this process
    bool anyProcess = false;                   // true: any process (processId is not looked at)
    int controls[kMaxRequiredControls] = {};   // 0 ends the list
    const char* caption = nullptr;
    HWND exclude = nullptr;                    // never this one (e.g. the page behind an alert)
};

struct ControlState {
    bool exists = false;
    bool enabled = false;
    bool visible = false;
    bool checked = false;
    std::string text;
};

// A thread that runs a driver script while the test's own thread sits in a modal dialog.
struct DialogScript {
    HANDLE thread = nullptr;
    std::function<void()> body;
};

// ---- functions ------------------------------------------------------------------------------

// tools/driver/dialogs.cpp
DialogQuery dialogWith(int control1, int control2 = 0, int control3 = 0);
HWND findDialog(const DialogQuery& query);
HWND waitForDialog(const DialogQuery& query, DWORD timeoutMs = kDialogTimeout);
// Waits until no dialog matches the query; false when one still does after the time limit.
bool waitForNoDialog(const DialogQuery& query, DWORD timeoutMs = kDialogTimeout);
bool waitForWindowGone(HWND window, DWORD timeoutMs = kDialogTimeout);
std::string windowText(HWND window);
ControlState controlState(HWND dialog, int id);
std::string controlText(HWND dialog, int id);

void clickButton(HWND dialog, int id);     // a mouse click on the button (BM_CLICK)
void sendCommand(HWND dialog, int id);     // the command the dialog gets from control id
void pressEscape(HWND dialog);             // the Escape key on the focused control
void pressEnter(HWND dialog);              // the Enter key on the focused control

// Ends every visible dialog of this process: the way out of a test whose script lost its way,
// so that a modal dialog never hangs the test program.
void abandonDialogs();

void startScript(DialogScript* script, std::function<void()> body);
// Waits for the script; false when it did not end in time (its dialogs are then abandoned).
bool finishScript(DialogScript* script, DWORD timeoutMs = 60000);
