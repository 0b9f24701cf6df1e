// The six wizard pages: welcome, start and finish, for an installation and for a removal. Each
// is a modal dialog of the language module owned by the main window and answers one question:
// go on (true) or stop (false). A silent run shows none of them.
#include "ui/ui.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

namespace {

enum class Page { InstallWelcome, InstallStart, InstallFinish, RemoveWelcome, RemoveStart, RemoveFinish };

constexpr char kProductName[] = "Vistrel";
constexpr char kNoText[] = "";   // the fixed last argument of the welcome and removal texts

// How long a silent install start page waits before it looks for the product window again.
constexpr DWORD kSilentLookInterval = 250;

struct PageInfo {
    const char* templateName;
    std::uint32_t failureLine;
    int text;                    // eMessageText entry of control 370
};

const PageInfo& infoOf(Page page)
{
    static const PageInfo pages[] = {
        {"MAIN_WELCOME_INSTALL", kLineInstallWelcomePage, kMsgInstallWelcomePage},
        {"MAIN_START_INSTALL", kLineInstallStartPage, kMsgInstallStartPage},
        {"MAIN_FINISH_INSTALL", kLineInstallFinishPage, kMsgInstallFinishPage},
        {"MAIN_WELCOME_REMOVE", kLineRemoveWelcomePage, kMsgRemoveWelcomePage},
        {"MAIN_START_REMOVE", kLineRemoveStartPage, kMsgRemoveStartPage},
        {"MAIN_FINISH_REMOVE", kLineRemoveFinishPage, kMsgRemoveFinishPage},
    };
    return pages[static_cast<int>(page)];
}

bool isInstallPage(Page page)
{
    return page == Page::InstallWelcome || page == Page::InstallStart || page == Page::InstallFinish;
}

bool isFinishPage(Page page)
{
    return page == Page::InstallFinish || page == Page::RemoveFinish;
}

WizardPageState* stateOf(HWND dialog)
{
    return reinterpret_cast<WizardPageState*>(GetWindowLongPtrA(dialog, DWLP_USER));
}

void formatPageText(Page page, char* text, std::size_t capacity)
{
    const char* format = eMessageText[infoOf(page).text];
    const char* updateInsert = g_setup.updateInstall ? eUniTexts[kUniUpdatePagesInsert] : kNoText;
    // The header's label need not be terminated in a damaged file; it is copied bounded.
    char label[sizeof SetupDataHeader::productLabel + 1] = "";
    if (g_setup.headerBuffer)
        HOI_CopyPartA(label, sizeof label, g_setup.headerBuffer->productLabel,
                      sizeof SetupDataHeader::productLabel);
    switch (page) {
    case Page::InstallWelcome:
        HOI_PrintA(text, capacity, format, g_setup.optionPerUser ? eUniTexts[kUniPerUserInsert] : kNoText,
                   g_setup.updateInstall ? eUniTexts[kUniUpdateWelcomeInsert] : kNoText, kProductName, kNoText);
        break;
    case Page::InstallStart:
    case Page::InstallFinish:
        HOI_PrintA(text, capacity, format, updateInsert, label);
        break;
    default:
        HOI_PrintA(text, capacity, format, kProductName, kNoText);
        break;
    }
}

void closePage(HWND dialog, std::int32_t result)
{
    WizardPageState* state = stateOf(dialog);
    state->result = result;
    SetFocus(state->previousFocus);
    EndDialog(dialog, 1);
}

void initialisePage(HWND dialog, Page page, WizardPageState* state)
{
    setDialogIcon(dialog);
    SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(state));
    SetWindowTextA(dialog, eApplicationName);
    char text[kMessageCapacity];
    formatPageText(page, text, sizeof text);
    SetDlgItemTextA(dialog, IDC_MAIN_TEXT, text);

    HWND box = GetDlgItem(dialog, IDC_PAGE_OPTION);
    if (page == Page::InstallFinish) {
        SetWindowTextA(box, eMessageText[kMsgLaunchCheckBox]);
        SendMessageA(box, BM_SETCHECK, state->option ? BST_CHECKED : BST_UNCHECKED, 0);
    } else if (box) {
        ShowWindow(box, SW_HIDE);
        EnableWindow(box, FALSE);
    }
    // The layout measures the text, so it runs once the text is in.
    layoutWizardPage(dialog, page == Page::InstallFinish);
    SetCursor(g_setup.arrowCursor);
    state->previousFocus = SetFocus(GetDlgItem(dialog, IDC_CONTINUE));
}

bool productRunning()
{
    return FindWindowA(kProductWindowClass, nullptr) != nullptr;
}

int askProductRunning(Page page)
{
    const int question = isInstallPage(page) ? kMsgProductRunningInstall : kMsgProductRunningRemove;
    return AlertRetryCancel(g_setup.mainWindow, eMessageText[question]);
}

// Continue on a welcome or start page: the product must not be running. Each page gives up in
// its own way, and the differences are deliberate.
void onContinue(HWND dialog, Page page)
{
    if (isFinishPage(page)) {
        closePage(dialog, kPageGoOn);
        return;
    }
    while (productRunning()) {
        switch (page) {
        case Page::InstallWelcome:
            if (g_setup.optionSilent || askProductRunning(page) == kButtonCancel) {
                g_setup.exitCode = kExitProductRunning;
                closePage(dialog, kPageStop);
                return;
            }
            break;
        case Page::InstallStart:
            // Giving up here only records the exit code; the page keeps looking and lets the
            // installation go on once the product has been closed.
            if (g_setup.optionSilent) {
                Sleep(kSilentLookInterval);
            } else if (askProductRunning(page) == kButtonCancel) {
                g_setup.exitCode = kExitProductRunning;
            }
            break;
        default:
            if (askProductRunning(page) == kButtonCancel) {
                closePage(dialog, kPageStop);
                return;
            }
            break;
        }
    }
    closePage(dialog, kPageGoOn);
}

void onCancel(HWND dialog, Page page)
{
    if (isFinishPage(page)) {
        closePage(dialog, kPageGoOn);
        return;
    }
    if (isInstallPage(page) && g_setup.optionSilent) {
        closePage(dialog, kPageStop);
        return;
    }
    const int question = isInstallPage(page) ? kMsgExitInstallQuestion : kMsgExitRemoveQuestion;
    if (AlertQuestion(dialog, eMessageText[question]) == kButtonNo)
        return;   // the user stays on the page
    closePage(dialog, kPageStop);
}

void onSystemCommand(HWND dialog, Page page)
{
    const int common[] = {IDC_MAIN_TEXT, IDC_CONTINUE, IDCANCEL, IDC_PAGE_HELP};
    for (int id : common)
        InvalidateRect(GetDlgItem(dialog, id), nullptr, FALSE);
    if (page == Page::InstallFinish)
        InvalidateRect(GetDlgItem(dialog, IDC_PAGE_OPTION), nullptr, FALSE);
}

INT_PTR pageProc(Page page, HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    INT_PTR skinned = 0;
    if (handleSkinMessage(dialog, message, wParam, lParam, &skinned))
        return skinned;
    switch (message) {
    case WM_INITDIALOG:
        initialisePage(dialog, page, reinterpret_cast<WizardPageState*>(lParam));
        return FALSE;   // the focus is on the continue button already
    case WM_SYSCOMMAND:
        onSystemCommand(dialog, page);
        return FALSE;
    case WM_COMMAND: {
        if (!stateOf(dialog))
            return FALSE;
        switch (LOWORD(wParam)) {
        case IDC_CONTINUE:
            onContinue(dialog, page);
            return TRUE;
        case IDCANCEL:
            onCancel(dialog, page);
            return TRUE;
        case IDC_PAGE_HELP:
            ShowSetupHelp();
            return TRUE;
        case IDC_PAGE_OPTION:
            if (page == Page::InstallFinish && HIWORD(wParam) == BN_CLICKED) {
                WizardPageState* state = stateOf(dialog);
                state->option = state->option ? 0 : 1;
                SendDlgItemMessageA(dialog, IDC_PAGE_OPTION, BM_SETCHECK, state->option ? BST_CHECKED : BST_UNCHECKED,
                                    0);
            }
            return TRUE;
        }
        return FALSE;
    }
    }
    return FALSE;
}

INT_PTR CALLBACK installWelcomeProc(HWND d, UINT m, WPARAM w, LPARAM l) { return pageProc(Page::InstallWelcome, d, m, w, l); }
INT_PTR CALLBACK installStartProc(HWND d, UINT m, WPARAM w, LPARAM l) { return pageProc(Page::InstallStart, d, m, w, l); }
INT_PTR CALLBACK installFinishProc(HWND d, UINT m, WPARAM w, LPARAM l) { return pageProc(Page::InstallFinish, d, m, w, l); }
INT_PTR CALLBACK removeWelcomeProc(HWND d, UINT m, WPARAM w, LPARAM l) { return pageProc(Page::RemoveWelcome, d, m, w, l); }
INT_PTR CALLBACK removeStartProc(HWND d, UINT m, WPARAM w, LPARAM l) { return pageProc(Page::RemoveStart, d, m, w, l); }
INT_PTR CALLBACK removeFinishProc(HWND d, UINT m, WPARAM w, LPARAM l) { return pageProc(Page::RemoveFinish, d, m, w, l); }

// The opener shared by the six pages: option carries startOption or launchAfterFinish in and
// out, for the two pages that have one.
bool runPage(HWND owner, Page page, DLGPROC procedure, unsigned char* option)
{
    if (g_setup.optionSilent)
        return true;
    WizardPageState state = {};
    if (option)
        state.option = *option;

    const PageInfo& info = infoOf(page);
    const INT_PTR ended = DialogBoxParamA(g_setup.languageModule, info.templateName, owner, procedure,
                                          reinterpret_cast<LPARAM>(&state));
    if (ended == -1 || ended == 0) {
        reportError("DialogAll", info.failureLine, eMessageText[kMsgOutOfMemory]);
        return false;
    }
    if (g_setup.mainWindow) {
        InvalidateRect(g_setup.mainWindow, nullptr, TRUE);
        UpdateWindow(g_setup.mainWindow);
    }
    if (option)
        *option = state.option;
    return state.result == kPageGoOn;
}

} // namespace

bool ShowInstallWelcomePage(HWND owner)
{
    return runPage(owner, Page::InstallWelcome, installWelcomeProc, nullptr);
}

bool ShowInstallStartPage(HWND owner)
{
    return runPage(owner, Page::InstallStart, installStartProc, &g_setup.startOption);
}

bool ShowInstallFinishPage(HWND owner)
{
    return runPage(owner, Page::InstallFinish, installFinishProc, &g_setup.launchAfterFinish);
}

bool ShowRemoveWelcomePage(HWND owner)
{
    return runPage(owner, Page::RemoveWelcome, removeWelcomeProc, nullptr);
}

bool ShowRemoveStartPage(HWND owner)
{
    return runPage(owner, Page::RemoveStart, removeStartProc, nullptr);
}

bool ShowRemoveFinishPage(HWND owner)
{
    return runPage(owner, Page::RemoveFinish, removeFinishProc, nullptr);
}
