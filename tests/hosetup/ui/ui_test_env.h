// Shared set-up of the user-interface tests: a prepared setup state with a plain main window,
// as the shell would leave it before the run starts, and checks of a dialog's layout.
#pragma once

#include <windows.h>
#include <string>

#include "dialogs.h"

// ---- functions ------------------------------------------------------------------------------

// tests/hosetup/ui/ui_test_env.cpp
// Fills g_setup for a run at the given scale and opens a plain main window (580 x 400 design
// pixels, centred); closeUiTestState destroys the window and any progress window.
void prepareUiTestState(double scale);
void closeUiTestState();
// Problems of a shown dialog's layout, empty when there are none: a visible control outside
// the client area, two visible controls that overlap, a text that does not fit its control,
// or a dialog that is not centred over the main window.
std::string layoutProblems(HWND dialog);
// Text painted by DrawText in the setup's dialog font: the height it needs at this width.
int neededTextHeight(HWND control);
// Runs the thread's messages the way the program's main loop does, for the given time.
void pumpLikeMainLoop(DWORD milliseconds);
// Opens (or closes) a top-level window of the installed product's class in a helper thread,
// as if the product were running.
void startFakeProduct();
// Waits for a dialog from a script thread; when none comes, notes the failure and ends every
// dialog of the process, so that the test's own thread gets out of its modal call.
HWND expectDialog(const DialogQuery& query, const char* what, std::string* failures);
void stopFakeProduct();
