// The progress window: the bar arithmetic, and the cancel request whose question is asked by the
// next SetProgress and only there.
#include "ui_test_env.h"

namespace {

TEST(ProgressBar, PositionsWithinTheStageBands)
{
    // Never complete before the last unit; without a total the band's start, beyond it the band's
    // end; an unknown stage fills the whole bar; large amounts keep their precision.
    const struct { std::uint32_t stage; std::int64_t value, total; int position; } rows[] = {
        {1, 99999, 100000, 6999}, {1, 100000, 100000, 7000}, {0, 2, 3, 667}, {2, 1, 2, 7500}, {7, 1, 2, 9250},
        {4, -5, 10, 0}, {3, 50, 0, 8000}, {3, 12, 10, 10000}, {99, 1, 4, 2500}, {1, 5000000000, 10000000000, 4000}};
    for (const auto& row : rows)
        EXPECT_EQ(progressBarPosition(row.stage, row.value, row.total), row.position) << row.stage << ": " << row.value;
}

using ProgressWindow = UiTest;

TEST_F(ProgressWindow, CancelIsAskedAtTheNextSetProgressAndADeclinedCancelGoesOn)
{
    // The cancel button and No: the run goes on. Escape and Yes: a removal stage's question stops it.
    // A click still queued when the next stage begins is pumped by that stage's first report, which
    // must not ask (its answer could stop nothing); a click pumped before it began (a wait for the
    // unpacker pumps too) must not be dropped by it: the stage's next report asks, and Yes stops.
    // A Yes stops every later report as well, without a question, until the progress window goes.
    enum Opening { kNoStage, kQueued, kPumpedBefore };
    const struct { std::uint32_t stage; bool escape; Opening opening; int button; bool goesOn; int question; } rows[] = {
        {kStageInstallCopy, false, kNoStage, IDC_ALERT_BUTTON2, true, kMsgCancelInstallQuestion},
        {kStageRemoveFiles, true, kNoStage, IDC_ALERT_BUTTON1, false, kMsgCancelRemoveQuestion},
        {kStageInstallPrepare, false, kQueued, IDC_ALERT_BUTTON1, false, kMsgCancelInstallQuestion},
        {kStageInstallRegister, false, kPumpedBefore, IDC_ALERT_BUTTON1, false, kMsgCancelInstallQuestion}};
    auto pump = [] {
        for (int i = 0; i < 40; ++i, Sleep(10))
            pumpWindowMessages();
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.stage);
        ASSERT_TRUE(ShowProgressStage(true, row.stage, 0, 100));
        // The request is only recorded: no question while the main loop runs.
        row.escape ? pressEscape(g_setup.progressDialog) : clickButton(g_setup.progressDialog, IDCANCEL);
        if (row.opening == kPumpedBefore)
            pump();
        if (row.opening != kNoStage) {
            withScript([] {
                if (HWND early = waitForDialog(kAlert, 2000)) {
                    ADD_FAILURE() << "asked at the stage's first report";
                    clickButton(early, IDC_ALERT_BUTTON2);
                }
            }, [&] { ShowProgressStage(true, row.stage + 1, 0, 100); });
        }
        pump();
        EXPECT_EQ(g_setup.cancelRequested, 1);
        EXPECT_EQ(findDialog(kAlert), nullptr);
        std::string question;
        bool goesOn = !row.goesOn;
        withScript([&] { question = answerAlert(row.button); }, [&] { goesOn = SetProgress(10, 100); });
        EXPECT_EQ(goesOn, row.goesOn);
        EXPECT_EQ(question, eMessageText[row.question]);
        EXPECT_EQ(g_setup.cancelRequested, 0);   // answered once: the next call does not ask again
        ShowProgressStage(true, row.stage + 1, 0, 100);
        EXPECT_EQ(SetProgress(20, 100), row.goesOn);
        ShowProgressStage(false, 0, 0, 0);
    }
}

} // namespace
