// The modeless progress window. The whole run works on the one GUI thread, so SetProgress is
// also the program's message pump while work is going on: each call empties the queue, moves
// the bar and, if the cancel button was clicked since the last call, asks whether to stop.
#include "ui/ui.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

#include <commctrl.h>

namespace {

struct StageBand {
    int text;      // eMessageText entry, or -1 for none
    int start;
    int end;
};

// One row per ProgressStage, in its order.
constexpr StageBand kStages[] = {
    {kMsgProgressPreparing, 0, 1000},          {kMsgProgressCopying, 1000, 7000},
    {kMsgProgressRegistering, 7000, 8000},     {kMsgProgressCreatingShortcuts, 8000, 10000},
    {kMsgProgressReadingLog, 0, 1000},         {kMsgProgressRemovingFiles, 1000, 7000},
    {kMsgProgressRemovingSettings, 7000, 8500}, {kMsgProgressRemovingShortcuts, 8500, 10000},
};
static_assert(sizeof kStages / sizeof kStages[0] == kStageRemoveShortcuts + 1, "one band per stage");
constexpr StageBand kUnknownStage = {-1, 0, kProgressRange};
constexpr std::uint32_t kFirstRemovalStage = kStageRemoveReadLog;
constexpr std::uint32_t kLastRemovalStage = kStageRemoveShortcuts;

// A fraction this close to 1 is shown as complete only once the last unit has been reported.
constexpr double kAlmostComplete = 0.9999;

const StageBand& bandOf(std::uint32_t stage)
{
    return stage < sizeof kStages / sizeof kStages[0] ? kStages[stage] : kUnknownStage;
}

// Gives a new window's bar its range and first position. Nothing else changes the range, so the
// reports only move the bar.
void setBar(HWND dialog, std::int64_t value, std::int64_t total)
{
    HWND bar = GetDlgItem(dialog, IDC_PROGRESS_BAR);
    SendMessageA(bar, PBM_SETRANGE32, 0, kProgressRange);
    SendMessageA(bar, PBM_SETPOS, progressBarPosition(g_setup.progressStage, value, total), 0);
}

// Moves the bar to the position for (value, total) and paints it at once. A report that leaves
// the position where it is (many of them in a copy of small files) sends and paints nothing:
// repainting the whole skinned window on every report cost more than the rest of a packed
// member's turn apart from the unpacker itself. The rest of the window shows nothing that a
// report changes; damage from other windows is repainted through the pump.
void moveBar(HWND dialog, std::int64_t value, std::int64_t total)
{
    HWND bar = GetDlgItem(dialog, IDC_PROGRESS_BAR);
    const int position = progressBarPosition(g_setup.progressStage, value, total);
    if (SendMessageA(bar, PBM_GETPOS, 0, 0) == position)
        return;
    SendMessageA(bar, PBM_SETPOS, position, 0);
    UpdateWindow(bar);
}

// Empties the queue and moves the bar: a report without its question. False when the window
// is gone, before or during the pump (a handler may have closed it).
bool reportProgress(std::int64_t value, std::int64_t total)
{
    if (!g_setup.progressDialog)
        return false;
    pumpWindowMessages();
    if (!g_setup.progressDialog)
        return false;
    g_setup.progressValue = value;
    g_setup.progressTotal = total;
    moveBar(g_setup.progressDialog, value, total);
    return true;
}

void refreshControls(HWND dialog)
{
    InvalidateRect(GetDlgItem(dialog, IDC_MAIN_TEXT), nullptr, FALSE);
    InvalidateRect(GetDlgItem(dialog, IDCANCEL), nullptr, FALSE);
}

INT_PTR CALLBACK progressProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    INT_PTR skinned = 0;
    if (handleSkinMessage(dialog, message, wParam, lParam, &skinned))
        return skinned;
    switch (message) {
    case WM_INITDIALOG:
        setDialogIcon(dialog);
        SetWindowTextA(dialog, eApplicationName);
        SetDlgItemTextA(dialog, IDC_MAIN_TEXT, g_setup.progressText);
        layoutProgressWindow(dialog);
        setBar(dialog, g_setup.progressValue, g_setup.progressTotal);
        SetFocus(GetDlgItem(dialog, IDC_MAIN_TEXT));
        return FALSE;
    case WM_SYSCOMMAND:
        refreshControls(dialog);
        return FALSE;
    case WM_COMMAND:
        // The question is asked by the next SetProgress, on the work's own stack, never here:
        // answering it must be able to stop the work, which only SetProgress's result can do.
        if (LOWORD(wParam) == IDCANCEL) {
            g_setup.cancelRequested = 1;
            return TRUE;
        }
        return FALSE;
    }
    return FALSE;
}

} // namespace

bool paceProgress(int from, int to, int step, DWORD sleepMs)
{
    for (int value = from; value <= to; value += step) {
        if (!SetProgress(value, 100))
            return false;
        Sleep(sleepMs);
    }
    return true;
}

int progressBarPosition(std::uint32_t stage, std::int64_t value, std::int64_t total)
{
    const StageBand& band = bandOf(stage);
    if (total < 1)
        return band.start;
    double fraction = static_cast<double>(value) / static_cast<double>(total);
    if (fraction > 1.0)
        fraction = 1.0;
    if (fraction < 0.0)
        fraction = 0.0;
    if (fraction > kAlmostComplete && value < total)
        return band.end - 1;
    return static_cast<int>(roundHalfAwayFromZero(band.start + (band.end - band.start) * fraction));
}

bool ShowProgressStage(bool show, std::uint32_t stage, std::int64_t value, std::int64_t total)
{
    if (!show) {
        if (g_setup.progressDialog) {
            DestroyWindow(g_setup.progressDialog);
            g_setup.progressDialog = nullptr;
            g_setup.cancelRequested = 0;
        }
        g_setup.cancelConfirmed = 0;
        return true;
    }

    g_setup.progressStage = stage;
    HOI_CopyA(g_setup.progressText, sizeof g_setup.progressText, "");
    const StageBand& band = bandOf(stage);
    if (band.text >= 0)
        HOI_CopyA(g_setup.progressText, sizeof g_setup.progressText, eMessageText[band.text]);
    g_setup.progressValue = value;
    g_setup.progressTotal = total;

    if (g_setup.progressDialog) {
        HWND text = GetDlgItem(g_setup.progressDialog, IDC_MAIN_TEXT);
        SetWindowTextA(text, g_setup.progressText);
        InvalidateRect(text, nullptr, TRUE);
        UpdateWindow(text);
    } else {
        HWND dialog = CreateDialogParamA(g_setup.languageModule, "MAIN_PROGRESS", g_setup.mainWindow, progressProc, 0);
        if (!dialog) {
            reportError("DialogAll", kLineProgressWindow, eMessageText[kMsgOutOfMemory]);
            return false;
        }
        g_setup.progressDialog = dialog;
        ShowWindow(dialog, SW_SHOWNORMAL);
    }
    // The stage's first report pumps and puts the bar at the band start, but it does not ask: its
    // answer could not stop the work, since this function's result only tells whether the window
    // exists. A cancel clicked in this pump, or after the last report of the stage before (or a
    // close of the main window), stays requested and is asked at the stage's next report, where
    // "Yes" ends the run: a request is cleared only where it is asked.
    reportProgress(0, 0);
    return true;
}

bool SetProgress(std::int64_t value, std::int64_t total)
{
    if (!reportProgress(value, total))
        return false;
    // Once confirmed, a cancel stops every later report too: a step that goes on past a false
    // answer (a clean-up that is only cut short) still ends the run at the next one.
    if (g_setup.cancelConfirmed)
        return false;
    if (!g_setup.cancelRequested)
        return true;
    g_setup.cancelRequested = 0;
    // A silent run never waits for an answer: the work goes on.
    if (g_setup.optionSilent)
        return true;
    const bool removal = g_setup.progressStage >= kFirstRemovalStage && g_setup.progressStage <= kLastRemovalStage;
    const int question = removal ? kMsgCancelRemoveQuestion : kMsgCancelInstallQuestion;
    if (AlertQuestion(g_setup.mainWindow, eMessageText[question]) != kButtonYes)
        return true;
    g_setup.cancelConfirmed = 1;
    return false;
}
