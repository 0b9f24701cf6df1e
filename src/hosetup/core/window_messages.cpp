// The one GUI thread's message dispatch outside the main loop: long waits and copies call it so
// that the windows repaint and the progress window's cancel button is heard.
#include "core/core.h"

// Dispatches what is queued, offering each message to the progress window first, as the main
// loop does. A quit request is put back for the main loop.
void pumpWindowMessages()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (g_setup.progressDialog && IsDialogMessageA(g_setup.progressDialog, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}
