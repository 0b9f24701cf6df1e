// The progress window: the bar arithmetic, the stage texts, and the cancel button whose question
// is asked by the next SetProgress and only there.
#include <gtest/gtest.h>

#include "ui_test_env.h"
#include "ui/ui.h"
#include "shell/shell.h"
#include "holang.h"

#include <commctrl.h>

namespace {

const DialogQuery kAlert = dialogWith(IDC_ALERT_TEXT, IDC_ALERT_BUTTON1);

TEST(ProgressBar, PositionsWithinTheStageBands)
{
    // Never complete before the last unit: 99999 of 100000 in stage 1 stays below 7000.
    EXPECT_EQ(progressBarPosition(1, 99999, 100000), 6999);
    EXPECT_EQ(progressBarPosition(1, 100000, 100000), 7000);
    EXPECT_EQ(progressBarPosition(0, 1, 3), 333);
    EXPECT_EQ(progressBarPosition(0, 2, 3), 667);        // 666.67 rounds up
    EXPECT_EQ(progressBarPosition(2, 1, 2), 7500);
    EXPECT_EQ(progressBarPosition(7, 1, 2), 9250);
    EXPECT_EQ(progressBarPosition(6, 1, 2), 7750);
    // No total yet: the band start; more than the total: the band end.
    EXPECT_EQ(progressBarPosition(3, 50, 0), 8000);
    EXPECT_EQ(progressBarPosition(5, 7, -1), 1000);
    EXPECT_EQ(progressBarPosition(3, 12, 10), 10000);
    EXPECT_EQ(progressBarPosition(4, -5, 10), 0);
    // Unknown stages fill the whole bar; large 64-bit amounts keep their precision.
    EXPECT_EQ(progressBarPosition(8, 1, 4), 2500);
    EXPECT_EQ(progressBarPosition(99, 10, 10), 10000);
    EXPECT_EQ(progressBarPosition(1, 5000000000LL, 10000000000LL), 4000);
}

class ProgressTest : public ::testing::Test {
protected:
    void SetUp() override { prepareUiTestState(1.0); }
    void TearDown() override { closeUiTestState(); }

    int barPosition() const
    {
        return static_cast<int>(SendDlgItemMessageA(g_setup.progressDialog, IDC_PROGRESS_BAR, PBM_GETPOS, 0, 0));
    }
};

TEST_F(ProgressTest, StagesShowTheirTextAndBandAndTheWindowCloses)
{
    EXPECT_FALSE(SetProgress(1, 2));   // no window yet
    ASSERT_TRUE(ShowProgressStage(true, 0, 5, 10));
    ASSERT_NE(g_setup.progressDialog, nullptr);
    EXPECT_TRUE(IsWindowVisible(g_setup.progressDialog));
    EXPECT_EQ(windowText(GetDlgItem(g_setup.progressDialog, IDC_MAIN_TEXT)), eMessageText[4]);
    EXPECT_EQ(windowText(g_setup.progressDialog), eApplicationName);
    EXPECT_EQ(barPosition(), 0);
    EXPECT_EQ(layoutProblems(g_setup.progressDialog), "");

    HWND first = g_setup.progressDialog;
    ASSERT_TRUE(ShowProgressStage(true, 1, 0, 0));
    EXPECT_EQ(g_setup.progressDialog, first);   // the same window moves on
    EXPECT_EQ(windowText(GetDlgItem(first, IDC_MAIN_TEXT)), eMessageText[11]);
    EXPECT_TRUE(SetProgress(99999, 100000));
    EXPECT_EQ(barPosition(), 6999);
    EXPECT_EQ(g_setup.progressValue, 99999);
    EXPECT_EQ(g_setup.progressTotal, 100000);

    ASSERT_TRUE(ShowProgressStage(true, 42, 0, 0));
    EXPECT_EQ(windowText(GetDlgItem(first, IDC_MAIN_TEXT)), "");
    EXPECT_EQ(g_setup.progressText[0], '\0');

    EXPECT_TRUE(ShowProgressStage(false, 0, 0, 0));
    EXPECT_EQ(g_setup.progressDialog, nullptr);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_FALSE(SetProgress(1, 2));
    EXPECT_TRUE(ShowProgressStage(false, 0, 0, 0));   // closing twice is harmless
}

TEST_F(ProgressTest, CancelIsAskedAtTheNextSetProgressAndADeclinedCancelGoesOn)
{
    ASSERT_TRUE(ShowProgressStage(true, 1, 0, 100));
    HWND progress = g_setup.progressDialog;

    // The click is only recorded: no question while the main loop runs.
    clickButton(progress, IDCANCEL);
    pumpLikeMainLoop(400);
    EXPECT_EQ(g_setup.cancelRequested, 1);
    EXPECT_EQ(findDialog(kAlert), nullptr);

    std::string failures, question;
    DialogScript script;
    startScript(&script, [&] {
        if (HWND alert = expectDialog(kAlert, "cancel question", &failures)) {
            question = controlText(alert, IDC_ALERT_TEXT);
            clickButton(alert, IDC_ALERT_BUTTON2);   // No (4)
        }
    });
    EXPECT_TRUE(SetProgress(10, 100));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
    EXPECT_EQ(question, eMessageText[2]);
    EXPECT_EQ(g_setup.cancelRequested, 0);

    // Declined once: the next call neither asks nor stops.
    EXPECT_TRUE(SetProgress(20, 100));
    EXPECT_EQ(findDialog(kAlert), nullptr);

    // Escape in the window is the cancel button too, and Yes stops the work; a removal stage
    // asks its own question.
    ASSERT_TRUE(ShowProgressStage(true, 5, 0, 100));
    pressEscape(progress);
    startScript(&script, [&] {
        if (HWND alert = expectDialog(kAlert, "cancel question", &failures)) {
            question = controlText(alert, IDC_ALERT_TEXT);
            clickButton(alert, IDC_ALERT_BUTTON1);   // Yes (3)
        }
    });
    EXPECT_FALSE(SetProgress(30, 100));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
    EXPECT_EQ(question, eMessageText[17]);
}

TEST_F(ProgressTest, SilentRunShowsTheWindowButNeverAsks)
{
    g_setup.optionSilent = 1;
    ASSERT_TRUE(ShowProgressStage(true, 4, 0, 0));
    ASSERT_NE(g_setup.progressDialog, nullptr);
    EXPECT_TRUE(IsWindowVisible(g_setup.progressDialog));
    EXPECT_EQ(windowText(GetDlgItem(g_setup.progressDialog, IDC_MAIN_TEXT)), eMessageText[22]);
    clickButton(g_setup.progressDialog, IDCANCEL);
    const DWORD start = GetTickCount();
    EXPECT_TRUE(SetProgress(1, 2));
    EXPECT_LT(GetTickCount() - start, 1000u);
    EXPECT_EQ(g_setup.cancelRequested, 0);
    EXPECT_EQ(barPosition(), 500);
}

} // namespace
