// Shared set-up of the user-interface tests: a setup state with a plain main window, as the shell
// leaves it before the run starts, and the helpers that drive and check the real dialogs.
#pragma once

#include <functional>

#include "dialogs.h"
#include "holang.h"
#include "setup_fixture.h"
#include "ui/ui.h"

// ---- constants ------------------------------------------------------------------------------

const DialogQuery kAlert = dialogWith(IDC_ALERT_TEXT, IDC_ALERT_BUTTON1);

// ---- types ----------------------------------------------------------------------------------

// A setup state for a run at the given scale, with a plain main window as the dialogs' owner.
class UiTest : public SetupFixture {
protected:
    void SetUp() override { SetupFixture::SetUp(); prepare(1.0); }
    void TearDown() override
    {
        ShowProgressStage(false, 0, 0, 0);
        DestroyWindow(g_setup.mainWindow);
        pumpWindowMessages();
        SetupFixture::TearDown();
    }
    void prepare(double scale)
    {
        g_setup.optionSilent = 0;
        g_setup.scale = scale;
        g_setup.mainWindow = CreateWindowExA(0, "Static", "", WS_POPUP | WS_VISIBLE, 100, 100, 580, 400, nullptr,
                                             nullptr, nullptr, nullptr);
    }
};

// ---- functions ------------------------------------------------------------------------------

// True when nothing of a text control is cut: its text, wrapped as the dialog's font paints it,
// fits its height, and the control lies inside the dialog's client area.
inline bool textFits(HWND dialog, int id)
{
    HWND control = GetDlgItem(dialog, id);
    RECT area, client;
    GetClientRect(dialog, &client);
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    return measureWrappedText(control, windowText(control).c_str(), area.right - area.left, nullptr) <=
               area.bottom - area.top &&
           area.left >= 0 && area.top >= 0 && area.right <= client.right && area.bottom <= client.bottom;
}

// Waits for a dialog from a script thread; when none comes, fails the test and ends every dialog
// of the process, so that the test's own thread gets out of its modal call.
inline HWND expectDialog(const DialogQuery& query)
{
    HWND dialog = waitForDialog(query);
    if (!dialog) {
        ADD_FAILURE() << "an expected dialog did not appear";
        abandonDialogs();
    }
    return dialog;
}

// Presses a button of the next alert and waits until it has gone; returns the alert's text.
inline std::string answerAlert(int buttonId)
{
    HWND alert = expectDialog(kAlert);
    const std::string text = controlText(alert, IDC_ALERT_TEXT);
    clickButton(alert, buttonId);
    waitForWindowGone(alert);
    return text;
}

// Runs the script in a thread of its own while this thread makes the modal call.
inline void withScript(const std::function<void()>& script, const std::function<void()>& modal)
{
    DialogScript thread;
    startScript(&thread, script);
    modal();
    EXPECT_TRUE(finishScript(&thread)) << "the script did not end";
}
