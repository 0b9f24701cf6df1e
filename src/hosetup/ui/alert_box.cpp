// The alert box: every question and notice of the run, with one to three buttons whose captions
// come from eButtonText. The box returns the code of the button that closed it; Escape and the
// close box give code 2 where the box has a cancel answer or only one button.
#include "ui/ui.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

namespace {

constexpr int kButtonIds[] = {IDC_ALERT_BUTTON1, IDC_ALERT_BUTTON2, IDC_ALERT_BUTTON3};

// The captions follow the button codes in order.
static_assert(kButtonTextSkip - kButtonTextOk == kButtonSkip - kButtonOk, "eButtonText follows the button codes");

const char* buttonCaption(int code)
{
    return code > 0 ? eButtonText[kButtonTextOk + (code - kButtonOk)] : "";
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
    SetWindowTextA(dialog, eCaptionTexts[kCaptionSetup]);
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
    const char* const* texts = eAlertErrorText;
    switch (kind) {
    case kFileAlertCannotOpen:
        return showFormattedAlert(owner, texts[kAlertTextCannotOpen], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertCannotOpenGoOn:
        return showFormattedAlert(owner, texts[kAlertTextCannotOpen], path, nullptr, kButtonRetry, 0, 0, 1);
    case kFileAlertInUse:
        return showFormattedAlert(owner, texts[kAlertTextFileInUse], path, nullptr, kButtonRetry, kButtonCancel, 0, 1);
    case kFileAlertDamagedDataFile:
        return showFormattedAlert(owner, texts[kAlertTextDamagedDataFile], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertCannotRead:
        return showFormattedAlert(owner, texts[kAlertTextCannotRead], path, texts[kAlertTextSupportNote],
                                  kButtonCancel, 0, 0, 1);
    case kFileAlertCannotWriteRetry:
        return showFormattedAlert(owner, texts[kAlertTextCannotWriteRetry], path, nullptr, kButtonRetryFile,
                                  kButtonCancel, 0, 2);
    case kFileAlertFolderNotCreated:
        return showFormattedAlert(owner, texts[kAlertTextFolderNotCreated], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertCannotDelete:
        return showFormattedAlert(owner, texts[kAlertTextCannotDelete], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertIncompleteDeleted:
        // The incomplete file goes first; whether it could be deleted does not change the alert.
        if (path)
            DeleteFileA(path);
        return showFormattedAlert(owner, texts[kAlertTextIncompleteDeleted], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertWriteFailed:
        return showFormattedAlert(owner, texts[kAlertTextWriteFailed], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertUnpackerNotStarted:
        return showFormattedAlert(owner, texts[kAlertTextUnpackerNotStarted], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertLogUnreadable:
        return showFormattedAlert(owner, texts[kAlertTextLogUnreadable], path, nullptr, kButtonCancel, 0, 0, 1);
    case kFileAlertLogNotCreated:
        return showFormattedAlert(owner, texts[kAlertTextLogNotCreated], path, nullptr, kButtonRetry, kButtonCancel,
                                  0, 2);
    case kFileAlertBackupFailed:
        return showFormattedAlert(owner, texts[kAlertTextBackupFailed], path, nullptr, kButtonRetryFile, kButtonSkip,
                                  kButtonCancel, 1);
    default:
        return kButtonCancel;   // kFileAlertUnused10 and unknown kinds show nothing
    }
}
