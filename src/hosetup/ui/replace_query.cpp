// The replace-file query: before an existing file that is newer than the one being installed is
// overwritten, the user chooses to replace it, replace all such files, keep it, or cancel.
#include "ui/ui.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

namespace {

// The four answer buttons are numbered so that identifier - 540 is the reply code.
constexpr int kReplyOffset = 540;

void closeQuery(HWND dialog, ReplaceQueryState* state, int reply)
{
    state->result = reply;
    SetFocus(state->previousFocus);
    EndDialog(dialog, 1);
}

void initialiseQuery(HWND dialog, ReplaceQueryState* state)
{
    setDialogIcon(dialog);
    SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(state));
    SetWindowTextA(dialog, eApplicationName);
    char question[kMessageCapacity];
    HOI_PrintA(question, sizeof question, eMessageText[kMsgReplaceQuestion], state->path);
    SetDlgItemTextA(dialog, IDC_MAIN_TEXT, question);
    SetDlgItemTextA(dialog, IDC_EXISTING_TEXT, state->existingText);
    SetDlgItemTextA(dialog, IDC_NEW_TEXT, state->newText);
    // Laid out after the texts are in, because the long path decides the height.
    layoutReplaceQuery(dialog);
    centreOverMainWindow(dialog);
    SetCursor(g_setup.arrowCursor);
    state->previousFocus = SetFocus(GetDlgItem(dialog, IDC_REPLACE_FILE));
}

INT_PTR CALLBACK replaceQueryProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    INT_PTR skinned = 0;
    if (handleSkinMessage(dialog, message, wParam, lParam, &skinned))
        return skinned;
    switch (message) {
    case WM_INITDIALOG:
        initialiseQuery(dialog, reinterpret_cast<ReplaceQueryState*>(lParam));
        return FALSE;
    case WM_COMMAND: {
        ReplaceQueryState* state = reinterpret_cast<ReplaceQueryState*>(GetWindowLongPtrA(dialog, DWLP_USER));
        if (!state)
            return FALSE;
        const int id = LOWORD(wParam);
        if (id >= IDC_REPLACE_FILE && id <= IDC_REPLACE_CANCEL) {
            closeQuery(dialog, state, id - kReplyOffset);
            return TRUE;
        }
        if (id == IDCANCEL) {
            closeQuery(dialog, state, kReplaceCancel);
            return TRUE;
        }
        return FALSE;
    }
    }
    return FALSE;
}

} // namespace

int AskReplaceFile(HWND owner, const char* path, const char* existingText, const char* newText)
{
    // A silent installation replaces every newer file without asking.
    if (g_setup.optionSilent)
        return kReplaceAll;

    ReplaceQueryState state = {};
    HOI_CopyA(state.path, sizeof state.path, path ? path : "");
    HOI_CopyA(state.existingText, sizeof state.existingText, existingText ? existingText : "");
    HOI_CopyA(state.newText, sizeof state.newText, newText ? newText : "");

    const INT_PTR ended = DialogBoxParamA(g_setup.languageModule, "REPLACEFILE", owner, replaceQueryProc,
                                          reinterpret_cast<LPARAM>(&state));
    if (ended == -1 || ended == 0) {
        reportError("DialogAll", kLineReplaceQuery, eMessageText[kMsgOutOfMemory]);
        return kButtonCancel;
    }
    if (g_setup.mainWindow) {
        InvalidateRect(g_setup.mainWindow, nullptr, TRUE);
        UpdateWindow(g_setup.mainWindow);
    }
    return state.result;
}
