// The alert box and the replace query in real windows: a script thread reads and presses the
// dialog while the test's thread waits in the modal call, exactly as the setup run would.
#include <gtest/gtest.h>

#include "ui_test_env.h"
#include "ui/ui.h"
#include "shell/shell.h"
#include "holang.h"

namespace {

const DialogQuery kAlert = dialogWith(IDC_ALERT_TEXT, IDC_ALERT_BUTTON1);
const DialogQuery kQuery = dialogWith(IDC_EXISTING_TEXT, IDC_REPLACE_CANCEL);

class AlertTest : public ::testing::Test {
protected:
    void SetUp() override { prepareUiTestState(1.0); }
    void TearDown() override { closeUiTestState(); }
};

struct AlertSeen {
    std::string text;
    std::string caption;
    std::string captions[3];
    bool visible[3] = {};
    bool defaultPush[3] = {};
    bool stayedOpenAfterEscape = false;
    std::string layout;
};

void readAlert(HWND alert, AlertSeen* seen)
{
    seen->text = controlText(alert, IDC_ALERT_TEXT);
    seen->caption = windowText(alert);
    const int ids[] = {IDC_ALERT_BUTTON1, IDC_ALERT_BUTTON2, IDC_ALERT_BUTTON3};
    for (int i = 0; i < 3; ++i) {
        const ControlState state = controlState(alert, ids[i]);
        seen->captions[i] = state.text;
        seen->visible[i] = state.visible;
        const LONG_PTR style = GetWindowLongPtrA(GetDlgItem(alert, ids[i]), GWL_STYLE);
        seen->defaultPush[i] = (style & 0x0F) == BS_DEFPUSHBUTTON;
    }
    seen->layout = layoutProblems(alert);
}

// Opens an alert, presses Escape once, then (if it is still open) the given button.
int escapeThenPress(int button1, int button2, int button3, int buttonId, AlertSeen* seen, std::string* failures)
{
    DialogScript script;
    startScript(&script, [&] {
        HWND alert = expectDialog(kAlert, "alert", failures);
        if (!alert)
            return;
        readAlert(alert, seen);
        pressEscape(alert);
        Sleep(400);
        seen->stayedOpenAfterEscape = IsWindow(alert) && IsWindowVisible(alert);
        if (seen->stayedOpenAfterEscape)
            clickButton(alert, buttonId);
    });
    const int answer = ShowAlert(g_setup.mainWindow, "Replace the file?", button1, button2, button3, 1);
    EXPECT_TRUE(finishScript(&script));
    return answer;
}

TEST_F(AlertTest, EscapeIsIgnoredByAQuestionWithoutCancelAndTheButtonsGiveTheirCodes)
{
    AlertSeen seen;
    std::string failures;
    EXPECT_EQ(escapeThenPress(kButtonYes, kButtonNo, 0, IDC_ALERT_BUTTON2, &seen, &failures), kButtonNo);
    EXPECT_EQ(failures, "");
    EXPECT_TRUE(seen.stayedOpenAfterEscape);
    EXPECT_EQ(seen.text, "Replace the file?");
    EXPECT_EQ(seen.caption, eCaptionTexts[0]);
    EXPECT_EQ(seen.captions[0], eButtonText[kButtonYes - 1]);
    EXPECT_EQ(seen.captions[1], eButtonText[kButtonNo - 1]);
    EXPECT_TRUE(seen.visible[0]);
    EXPECT_TRUE(seen.visible[1]);
    EXPECT_FALSE(seen.visible[2]);
    EXPECT_TRUE(seen.defaultPush[0]);
    EXPECT_EQ(seen.layout, "");
}

TEST_F(AlertTest, EscapeGivesCancelWhereTheBoxHasACancelButtonOrOnlyOneButton)
{
    struct Case {
        int buttons[3];
        int expected;
    } cases[] = {
        {{kButtonRetry, kButtonCancel, 0}, kButtonCancel},
        {{kButtonOk, 0, 0}, kButtonCancel},        // a lone OK still gives 2 on Escape
        {{kButtonContinue, 0, 0}, kButtonCancel},
        {{kButtonRetryFile, kButtonSkip, kButtonCancel}, kButtonCancel},
    };
    for (const Case& c : cases) {
        AlertSeen seen;
        std::string failures;
        const int answer = escapeThenPress(c.buttons[0], c.buttons[1], c.buttons[2], IDC_ALERT_BUTTON1, &seen,
                                           &failures);
        EXPECT_EQ(answer, c.expected) << "buttons " << c.buttons[0] << "," << c.buttons[1] << "," << c.buttons[2];
        EXPECT_FALSE(seen.stayedOpenAfterEscape);
        EXPECT_EQ(failures, "");
    }
}

TEST_F(AlertTest, ThreeButtonsEachAnswerWithTheirCodeAndALoneCancelStandsInForButtonZero)
{
    const int ids[] = {IDC_ALERT_BUTTON1, IDC_ALERT_BUTTON2, IDC_ALERT_BUTTON3};
    const int codes[] = {kButtonRetryFile, kButtonSkip, kButtonCancel};
    for (int i = 0; i < 3; ++i) {
        std::string failures;
        DialogScript script;
        startScript(&script, [&] {
            if (HWND alert = expectDialog(kAlert, "alert", &failures))
                clickButton(alert, ids[i]);
        });
        EXPECT_EQ(AlertThreeWay(g_setup.mainWindow, "Copy failed."), codes[i]);
        EXPECT_TRUE(finishScript(&script));
        EXPECT_EQ(failures, "");
    }

    std::string failures, caption;
    DialogScript script;
    startScript(&script, [&] {
        if (HWND alert = expectDialog(kAlert, "alert", &failures)) {
            caption = controlText(alert, IDC_ALERT_BUTTON1);
            pressEnter(alert);
        }
    });
    EXPECT_EQ(ShowAlert(g_setup.mainWindow, "No button given.", 0, 0, 0, 1), kButtonCancel);
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(caption, eButtonText[kButtonCancel - 1]);
    EXPECT_EQ(failures, "");
}

TEST_F(AlertTest, DefaultButtonFollowsTheRequestOnlyWhereThatButtonExists)
{
    struct Case {
        int buttons[3];
        int defaultButton;
        int expectedOnEnter;
    } cases[] = {
        {{kButtonRetry, kButtonCancel, 0}, 2, kButtonCancel},
        {{kButtonYes, kButtonNo, 0}, 2, kButtonNo},
        {{kButtonOk, 0, 0}, 2, kButtonOk},                // no second button: the first stays default
        {{kButtonYes, kButtonNo, 0}, 3, kButtonYes},
        {{kButtonRetryFile, kButtonSkip, kButtonCancel}, 3, kButtonCancel},
    };
    for (const Case& c : cases) {
        std::string failures;
        DialogScript script;
        startScript(&script, [&] {
            if (HWND alert = expectDialog(kAlert, "alert", &failures))
                pressEnter(alert);
        });
        EXPECT_EQ(ShowAlert(g_setup.mainWindow, "Which one?", c.buttons[0], c.buttons[1], c.buttons[2], c.defaultButton),
                  c.expectedOnEnter)
            << "default " << c.defaultButton;
        EXPECT_TRUE(finishScript(&script));
        EXPECT_EQ(failures, "");
    }
}

TEST_F(AlertTest, LongPathsWrapInsideAGrownBoxAtBothScales)
{
    std::string path = "C:\\Program Files\\Harwick-Orbel\\Vistrel (64-bit)\\";
    for (int i = 0; i < 12; ++i)
        path += "Subfolder_with_a_long_name_" + std::to_string(i) + "\\";
    path += "hovistrel_extension_library.dll";
    const std::string text = "The file\n\n" + path + "\n\ncannot be opened.";
    for (double scale : {1.0, 1.5}) {
        closeUiTestState();
        prepareUiTestState(scale);
        std::string failures, layout, shown;
        DialogScript script;
        startScript(&script, [&] {
            if (HWND alert = expectDialog(kAlert, "alert", &failures)) {
                layout = layoutProblems(alert);
                shown = controlText(alert, IDC_ALERT_TEXT);
                clickButton(alert, IDC_ALERT_BUTTON1);
            }
        });
        EXPECT_EQ(AlertError(g_setup.mainWindow, text.c_str()), kButtonCancel);
        EXPECT_TRUE(finishScript(&script));
        EXPECT_EQ(failures, "");
        EXPECT_EQ(layout, "") << "scale " << scale;
        EXPECT_EQ(shown, text);
    }
}

TEST_F(AlertTest, FileAlertsFormatThePathAndKindTenShowsNothing)
{
    std::string failures, shown;
    DialogScript script;
    startScript(&script, [&] {
        if (HWND alert = expectDialog(kAlert, "alert", &failures)) {
            shown = controlText(alert, IDC_ALERT_TEXT);
            clickButton(alert, IDC_ALERT_BUTTON2);
        }
    });
    EXPECT_EQ(ShowFileAlert(g_setup.mainWindow, "D:\\setup\\_000000_", 2), kButtonCancel);
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
    EXPECT_NE(shown.find("D:\\setup\\_000000_"), std::string::npos) << shown;

    const DWORD start = GetTickCount();
    EXPECT_EQ(ShowFileAlert(g_setup.mainWindow, "D:\\x", 10), kButtonCancel);
    EXPECT_EQ(ShowFileAlert2(g_setup.mainWindow, "a", "b", 4), kButtonCancel);
    EXPECT_LT(GetTickCount() - start, 1000u);
    EXPECT_EQ(findDialog(kAlert), nullptr);
}

TEST_F(AlertTest, ReplaceQueryAnswersByButtonAndEscapeCancels)
{
    const int buttons[] = {IDC_REPLACE_FILE, IDC_REPLACE_ALL, IDC_REPLACE_KEEP, IDC_REPLACE_CANCEL};
    const int replies[] = {kReplaceFile, kReplaceAll, kReplaceKeep, kReplaceCancel};
    const std::string path =
        "C:\\Program Files\\Harwick-Orbel\\Vistrel (64-bit)\\Libraries\\Mechanical\\Standard parts\\"
        "ISO 4762 socket head cap screws with a very long descriptive file name.vlib";
    for (int i = 0; i <= 4; ++i) {
        std::string failures, question, existing, newer, layout;
        DialogScript script;
        startScript(&script, [&] {
            HWND query = expectDialog(kQuery, "replace query", &failures);
            if (!query)
                return;
            question = controlText(query, IDC_MAIN_TEXT);
            existing = controlText(query, IDC_EXISTING_TEXT);
            newer = controlText(query, IDC_NEW_TEXT);
            layout = layoutProblems(query);
            if (i < 4)
                clickButton(query, buttons[i]);
            else
                pressEscape(query);
        });
        const int reply = AskReplaceFile(g_setup.mainWindow, path.c_str(), "12,345 bytes, May 3, 2022",
                                         "10,000 bytes, April 1, 2021");
        EXPECT_TRUE(finishScript(&script));
        EXPECT_EQ(failures, "");
        EXPECT_EQ(reply, i < 4 ? replies[i] : kReplaceCancel);
        EXPECT_NE(question.find(path), std::string::npos);
        EXPECT_EQ(existing, "12,345 bytes, May 3, 2022");
        EXPECT_EQ(newer, "10,000 bytes, April 1, 2021");
        EXPECT_EQ(layout, "");
    }
}

TEST_F(AlertTest, SilentRunAnswersWithoutAWindow)
{
    g_setup.optionSilent = 1;
    const DWORD start = GetTickCount();
    EXPECT_EQ(AskReplaceFile(g_setup.mainWindow, "C:\\a.dll", "x", "y"), kReplaceAll);
    EXPECT_EQ(AlertQuestion(g_setup.mainWindow, "Cancel?"), kButtonYes);
    EXPECT_EQ(AlertRetryCancelDefaultCancel(g_setup.mainWindow, "Running"), kButtonRetry);
    EXPECT_EQ(ShowAlert(g_setup.mainWindow, "x", 0, 0, 0, 1), kButtonCancel);
    EXPECT_EQ(AlertThreeWay(g_setup.mainWindow, "Copy failed."), kButtonRetryFile);
    EXPECT_LT(GetTickCount() - start, 1000u);
    EXPECT_EQ(findDialog(kAlert), nullptr);
}

} // namespace
