// The wizard pages in real windows, driven from a script thread while the test's thread sits in
// the page opener.
#include "ui_test_env.h"

namespace {

const DialogQuery kPage = dialogWith(IDC_MAIN_TEXT, IDC_CONTINUE, IDC_PAGE_HELP);
using PageTest = UiTest;

TEST_F(PageTest, EscapeOnAWelcomePageAsksAndNoKeepsThePage)
{
    const struct { bool (*open)(HWND); int question; } rows[] = {{ShowInstallWelcomePage, kMsgExitInstallQuestion},
                                                                 {ShowRemoveWelcomePage, kMsgExitRemoveQuestion}};
    for (const auto& row : rows) {
        std::string question;
        bool stayed = false, result = true;
        withScript([&] {
            HWND page = expectDialog(kPage);
            pressEscape(page);
            question = answerAlert(IDC_ALERT_BUTTON2);   // No
            stayed = IsWindowVisible(page) != FALSE;
            pressEscape(page);
            answerAlert(IDC_ALERT_BUTTON1);              // Yes
        }, [&] { result = row.open(g_setup.mainWindow); });
        EXPECT_FALSE(result);
        EXPECT_TRUE(stayed);
        EXPECT_EQ(question, eMessageText[row.question]);
    }
}

TEST_F(PageTest, FinishPagesAnswerTrueWhicheverWayTheyCloseAndTheCheckBoxTurnsLaunchAfterFinishOver)
{
    enum Way { kContinue, kEscape, kCancelCommand };
    const struct { bool (*open)(HWND); Way way; unsigned char before; bool click; unsigned char after; } rows[] = {
        {ShowInstallFinishPage, kContinue, 0, true, 1}, {ShowInstallFinishPage, kEscape, 1, true, 0},
        {ShowInstallFinishPage, kCancelCommand, 1, false, 1}, {ShowRemoveFinishPage, kContinue, 0, false, 0},
        {ShowRemoveFinishPage, kEscape, 0, false, 0}, {ShowRemoveFinishPage, kCancelCommand, 0, false, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE("row " + std::to_string(&row - rows));
        g_setup.launchAfterFinish = row.before;
        bool checkedOnEntry = !row.before, result = false;
        withScript([&] {
            HWND page = expectDialog(kPage);
            checkedOnEntry = controlState(page, IDC_PAGE_OPTION).checked;
            if (row.click)
                clickButton(page, IDC_PAGE_OPTION);
            row.way == kContinue ? clickButton(page, IDC_CONTINUE)
                                 : row.way == kEscape ? pressEscape(page) : sendCommand(page, IDCANCEL);
        }, [&] { result = row.open(g_setup.mainWindow); });
        EXPECT_TRUE(result);
        EXPECT_EQ(checkedOnEntry, row.before == 1);
        EXPECT_EQ(g_setup.launchAfterFinish, row.after);
    }
}

TEST_F(PageTest, ARunningProductStopsThePageAsItsKindSays)
{
    // A window of the installed product's class, as if the product were running.
    const WNDCLASSA productClass = {0, DefWindowProcA, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    kProductWindowClass};
    RegisterClassA(&productClass);
    HWND product = CreateWindowExA(0, kProductWindowClass, "", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    const struct { bool (*open)(HWND); int question; std::uint32_t exitCode; } rows[] = {
        {ShowInstallWelcomePage, kMsgProductRunningInstall, kExitProductRunning}, {ShowRemoveStartPage, kMsgProductRunningRemove, 0}};
    for (const auto& row : rows) {
        std::string question;
        bool result = true;
        g_setup.exitCode = 0;
        withScript([&] {
            clickButton(expectDialog(kPage), IDC_CONTINUE);
            question = answerAlert(IDC_ALERT_BUTTON1);   // Retry: looks again
            answerAlert(IDC_ALERT_BUTTON2);              // Cancel: gives up
        }, [&] { result = row.open(g_setup.mainWindow); });
        EXPECT_FALSE(result);
        EXPECT_EQ(question, eMessageText[row.question]);
        EXPECT_EQ(g_setup.exitCode, row.exitCode);
    }
    DestroyWindow(product);
}

} // namespace
