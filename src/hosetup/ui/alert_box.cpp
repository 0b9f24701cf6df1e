// The alert box: every question and notice of the run, with one to three buttons whose captions
// come from eButtonText. The box returns the code of the button that closed it; Escape and the
// close box give code 2 where the box has a cancel answer or only one button.
#include "ui/ui.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

namespace {

constexpr int kButtonIds[] = {IDC_ALERT_BUTTON1, IDC_ALERT_BUTTON2, IDC_ALERT_BUTTON3};

const char* buttonCaption(int code)
{
    return code > 0 ? eButtonText[code - 1] : "";
}

AlertBoxState* stateOf(HWND dialog)
{
    return reinterpret_cast<AlertBoxState*>(GetWindowLongPtrA(dialog, DWLP_USER));
}

// Escape and the close box may only close a box that offers a way out: one that has a cancel
// button, or one that has a single button whatever its code.
bool escapeCloses(const AlertBoxState& state)
{
    if (state.button1 == kButtonCancel || state.button2 == kButtonCancel || state.button3 == kButtonCancel)
        return true;
    return !state.caption2[0] && !state.caption3[0];
}

int defaultButtonId(const AlertBoxState& state)
{
    if (state.defaultButton == 2 && state.caption2[0])
        return IDC_ALERT_BUTTON2;
    if (state.defaultButton == 3 && state.caption3[0])
        return IDC_ALERT_BUTTON3;
    return IDC_ALERT_BUTTON1;
}

void closeAlert(HWND dialog, AlertBoxState* state, int code)
{
    state->result = code;
    SetFocus(state->previousFocus);
    EndDialog(dialog, 1);
}

void initialiseAlert(HWND dialog, AlertBoxState* state)
{
    setDialogIcon(dialog);
    SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(state));
    SetDlgItemTextA(dialog, IDC_ALERT_BUTTON1, state->caption1);
    if (state->caption2[0])
        SetDlgItemTextA(dialog, IDC_ALERT_BUTTON2, state->caption2);
    if (state->caption3[0])
        SetDlgItemTextA(dialog, IDC_ALERT_BUTTON3, state->caption3);
    // The text is painted by the dialog, but it is also the text area's window text, so that
    // screen readers (and test tools) can read it.
    SetDlgItemTextA(dialog, IDC_ALERT_TEXT, state->text);
    layoutAlertBox(dialog, *state);
    centreOverMainWindow(dialog);
    SetCursor(g_setup.arrowCursor);
    SetWindowTextA(dialog, eCaptionTexts[0]);
    if (!escapeCloses(*state))
        EnableMenuItem(GetSystemMenu(dialog, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);

    const int defaultId = defaultButtonId(*state);
    for (int id : kButtonIds) {
        SendDlgItemMessageA(dialog, id, BM_SETSTYLE, id == defaultId ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
    }
    SendMessageA(dialog, DM_SETDEFID, defaultId, 0);
    state->previousFocus = SetFocus(GetDlgItem(dialog, defaultId));
}

INT_PTR CALLBACK alertProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    INT_PTR skinned = 0;
    if (handleSkinMessage(dialog, message, wParam, lParam, &skinned))
        return skinned;
    switch (message) {
    case WM_INITDIALOG:
        initialiseAlert(dialog, reinterpret_cast<AlertBoxState*>(lParam));
        return FALSE;   // the focus is set already
    case WM_DRAWITEM: {
        const DRAWITEMSTRUCT* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        AlertBoxState* state = stateOf(dialog);
        if (item->CtlID != IDC_ALERT_TEXT || !state)
            return FALSE;
        paintAlertText(item, state->text);
        return TRUE;
    }
    case WM_COMMAND: {
        AlertBoxState* state = stateOf(dialog);
        if (!state)
            return FALSE;
        switch (LOWORD(wParam)) {
        case IDC_ALERT_BUTTON1:
            closeAlert(dialog, state, state->button1);
            return TRUE;
        case IDC_ALERT_BUTTON2:
            if (state->caption2[0])
                closeAlert(dialog, state, state->button2);
            return TRUE;
        case IDC_ALERT_BUTTON3:
            if (state->caption3[0])
                closeAlert(dialog, state, state->button3);
            return TRUE;
        case IDCANCEL:
            if (escapeCloses(*state))
                closeAlert(dialog, state, kButtonCancel);
            return TRUE;
        }
        return FALSE;
    }
    }
    return FALSE;
}

int showFormattedAlert(HWND owner, const char* format, const char* path, const char* appended, int button1,
                       int button2, int button3, int defaultButton)
{
    char text[kFileAlertCapacity];
    HOI_PrintA(text, sizeof text, format, path ? path : "");
    if (appended)
        HOI_JoinA(text, sizeof text, appended);
    return ShowAlert(owner, text, button1, button2, button3, defaultButton);
}

} // namespace

int ShowAlert(HWND owner, const char* text, int button1, int button2, int button3, int defaultButton)
{
    // A silent run never waits for a person: it takes the answer that lets the run go on.
    if (g_setup.optionSilent)
        return button1 ? button1 : kButtonCancel;

    AlertBoxState state = {};
    state.button1 = button1 ? button1 : kButtonCancel;
    state.button2 = button2;
    state.button3 = button3;
    state.defaultButton = defaultButton;
    state.text = text ? text : "";
    HOI_CopyA(state.caption1, sizeof state.caption1, buttonCaption(state.button1));
    HOI_CopyA(state.caption2, sizeof state.caption2, buttonCaption(button2));
    HOI_CopyA(state.caption3, sizeof state.caption3, buttonCaption(button3));

    const INT_PTR ended = DialogBoxParamA(g_setup.languageModule, "ALERTBOX", owner, alertProc,
                                          reinterpret_cast<LPARAM>(&state));
    if (ended == -1 || ended == 0)
        return 0;
    if (g_setup.mainWindow) {
        InvalidateRect(g_setup.mainWindow, nullptr, TRUE);
        UpdateWindow(g_setup.mainWindow);
    }
    return state.result;
}

void AlertNotice(HWND owner, const char* text)
{
    ShowAlert(owner, text, kButtonOk, 0, 0, 1);
}

int AlertError(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonCancel, 0, 0, 1);
}

int AlertButton6(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonRetry, 0, 0, 1);
}

int AlertButton5(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonContinue, 0, 0, 1);
}

int AlertRetryCancel(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonRetry, kButtonCancel, 0, 1);
}

int AlertRetryCancelDefaultCancel(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonRetry, kButtonCancel, 0, 2);
}

int AlertQuestion(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonYes, kButtonNo, 0, 1);
}

int AlertQuestionDefaultNo(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonYes, kButtonNo, 0, 2);
}

int AlertThreeWay(HWND owner, const char* text)
{
    return ShowAlert(owner, text, kButtonRetryFile, kButtonSkip, kButtonCancel, 1);
}

int ShowFileAlert(HWND owner, const char* path, int kind)
{
    switch (kind) {
    case 0: return showFormattedAlert(owner, eAlertErrorText[0], path, nullptr, kButtonCancel, 0, 0, 1);
    case 1: return showFormattedAlert(owner, eAlertErrorText[0], path, nullptr, kButtonRetry, 0, 0, 1);
    case 2: return showFormattedAlert(owner, eAlertErrorText[1], path, nullptr, kButtonRetry, kButtonCancel, 0, 1);
    case 3: return showFormattedAlert(owner, eAlertErrorText[2], path, nullptr, kButtonCancel, 0, 0, 1);
    case 4:
        return showFormattedAlert(owner, eAlertErrorText[3], path, eAlertErrorText[17], kButtonCancel, 0, 0, 1);
    case 5:
        return showFormattedAlert(owner, eAlertErrorText[4], path, nullptr, kButtonRetryFile, kButtonCancel, 0, 2);
    case 6: return showFormattedAlert(owner, eAlertErrorText[5], path, nullptr, kButtonCancel, 0, 0, 1);
    case 7: return showFormattedAlert(owner, eAlertErrorText[10], path, nullptr, kButtonCancel, 0, 0, 1);
    case 8:
        // The incomplete file goes first; whether it could be deleted does not change the alert.
        if (path)
            DeleteFileA(path);
        return showFormattedAlert(owner, eAlertErrorText[8], path, nullptr, kButtonCancel, 0, 0, 1);
    case 9: return showFormattedAlert(owner, eAlertErrorText[11], path, nullptr, kButtonCancel, 0, 0, 1);
    case 11: return showFormattedAlert(owner, eAlertErrorText[13], path, nullptr, kButtonCancel, 0, 0, 1);
    case 12: return showFormattedAlert(owner, eAlertErrorText[15], path, nullptr, kButtonCancel, 0, 0, 1);
    case 13:
        return showFormattedAlert(owner, eAlertErrorText[16], path, nullptr, kButtonRetry, kButtonCancel, 0, 2);
    case 14:
        return showFormattedAlert(owner, eAlertErrorText[9], path, nullptr, kButtonRetryFile, kButtonSkip,
                                  kButtonCancel, 1);
    default:
        return kButtonCancel;   // kind 10 and unknown kinds show nothing
    }
}

int ShowFileAlert2(HWND owner, const char* first, const char* second, int kind)
{
    if (kind != 10)
        return kButtonCancel;
    char text[kFileAlertCapacity];
    HOI_PrintA(text, sizeof text, eAlertErrorText[12], second ? second : "", first ? first : "");
    HOI_JoinA(text, sizeof text, eAlertErrorText[17]);
    return AlertError(owner, text);
}
