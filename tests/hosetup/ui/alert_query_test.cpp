// The alert box and the replace query in real windows: a script thread reads and presses the
// dialog while the test's thread waits in the modal call, as the setup run would.
#include "ui_test_env.h"

namespace {

enum Action { kEscape, kClose, kEnter };   // Enter presses the default button

using AlertTest = UiTest;

TEST_F(AlertTest, ButtonSetsGiveTheirCodesAndEscapeOnlyWhereThereIsAWayOut)
{
    // code 0: the box stays open (button 1 closes it then).
    const struct { int buttons[3], defaultButton; Action action; int code; } rows[] = {
        {{kButtonYes, kButtonNo, 0}, 1, kEscape, 0},   // a question without cancel
        {{kButtonYes, kButtonNo, 0}, 1, kClose, 0},
        {{kButtonRetry, kButtonCancel, 0}, 1, kEscape, kButtonCancel},
        {{kButtonRetry, kButtonCancel, 0}, 1, kClose, kButtonCancel},
        {{kButtonOk, 0, 0}, 1, kEscape, kButtonCancel},   // a lone button of any code
        {{kButtonRetryFile, kButtonSkip, kButtonCancel}, 1, kEscape, kButtonCancel},
        {{kButtonYes, kButtonNo, 0}, 2, kEnter, kButtonNo},
        {{kButtonYes, kButtonNo, 0}, 3, kEnter, kButtonYes},   // no third button: the first is default
        {{kButtonOk, 0, 0}, 2, kEnter, kButtonOk},
        {{kButtonRetryFile, kButtonSkip, kButtonCancel}, 2, kEnter, kButtonSkip},
        {{kButtonRetryFile, kButtonSkip, kButtonCancel}, 3, kEnter, kButtonCancel},
        {{0, 0, 0}, 1, kEnter, kButtonCancel},   // no button given: a lone cancel button
    };
    const std::function<void(HWND)> act[] = {pressEscape, [](HWND box) { PostMessageA(box, WM_CLOSE, 0, 0); },
                                             pressEnter};
    for (const auto& row : rows) {
        SCOPED_TRACE("row " + std::to_string(&row - rows));
        ControlState buttons[3];
        bool stayed = false;
        int answer = -1;
        withScript([&] {
            HWND alert = expectDialog(kAlert);
            for (int i = 0; i < 3; ++i)
                buttons[i] = controlState(alert, IDC_ALERT_BUTTON1 + i);
            act[row.action](alert);
            stayed = !waitForWindowGone(alert, 500);
            clickButton(alert, IDC_ALERT_BUTTON1);
        }, [&] { answer = ShowAlert(g_setup.mainWindow, "?", row.buttons[0], row.buttons[1], row.buttons[2],
                                    row.defaultButton); });
        EXPECT_EQ(stayed, row.code == 0);
        EXPECT_EQ(answer, row.code ? row.code : row.buttons[0]);
        for (int i = 0; i < 3; ++i) {   // the captions of the codes, no button where the code is 0
            const int code = i == 0 && !row.buttons[0] ? kButtonCancel : row.buttons[i];
            EXPECT_EQ(buttons[i].visible ? buttons[i].text : "", code ? eButtonText[kButtonTextOk + code - kButtonOk] : "") << i;
        }
    }
}

TEST_F(AlertTest, ALongPathWrapsInsideAGrownBoxAtBothScalesAndTheQueryAnswersByButton)
{
    std::string path = "C:\\Program Files\\Harwick-Orbel\\Vistrel (64-bit)\\";
    for (int i = 0; i < 12; ++i)
        path += "Subfolder_with_a_long_name_" + std::to_string(i) + "\\";
    const std::string text = "The file\n\n" + path + "hovistrel_extension_library.dll\n\ncannot be opened.";
    for (double scale : {1.0, 1.5}) {
        TearDown();
        prepare(scale);
        bool whole = false;   // the text as given, nothing of it cut
        int answer = -1;
        withScript([&] {
            HWND alert = expectDialog(kAlert);
            whole = textFits(alert, IDC_ALERT_TEXT) && controlText(alert, IDC_ALERT_TEXT) == text;
            clickButton(alert, IDC_ALERT_BUTTON1);
        }, [&] { answer = AlertError(g_setup.mainWindow, text.c_str()); });
        EXPECT_EQ(answer, kButtonCancel);
        EXPECT_TRUE(whole) << "scale " << scale;
    }

    // The replace query: codes 30 to 33 by its buttons, 33 for Escape; the path in its question.
    const struct { int press, reply; } rows[] = {{IDC_REPLACE_FILE, kReplaceFile}, {IDC_REPLACE_ALL, kReplaceAll},
                                                {IDC_REPLACE_KEEP, kReplaceKeep}, {IDC_REPLACE_CANCEL, kReplaceCancel},
                                                {0, kReplaceCancel}};
    for (const auto& row : rows) {
        bool whole = false;   // the path in the question, nothing of it cut
        int reply = -1;
        withScript([&] {
            HWND query = expectDialog(dialogWith(IDC_EXISTING_TEXT, IDC_REPLACE_CANCEL));
            whole = textFits(query, IDC_MAIN_TEXT) && controlText(query, IDC_MAIN_TEXT).find(path) != std::string::npos;
            row.press ? clickButton(query, row.press) : pressEscape(query);
        }, [&] { reply = AskReplaceFile(g_setup.mainWindow, path.c_str(), "12,345 bytes", "10,000 bytes"); });
        EXPECT_EQ(reply, row.reply) << row.press;
        EXPECT_TRUE(whole) << row.press;
    }
}

} // namespace
