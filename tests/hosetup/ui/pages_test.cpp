// The six wizard pages in real windows, driven from a script thread while the test's thread
// sits in the page opener.
#include <gtest/gtest.h>

#include "ui_test_env.h"
#include "ui/ui.h"
#include "shell/shell.h"
#include "holang.h"

namespace {

const DialogQuery kPage = dialogWith(IDC_MAIN_TEXT, IDC_CONTINUE, IDC_PAGE_HELP);
const DialogQuery kAlert = dialogWith(IDC_ALERT_TEXT, IDC_ALERT_BUTTON1);

class PageTest : public ::testing::Test {
protected:
    void SetUp() override { prepareUiTestState(1.0); }
    void TearDown() override
    {
        stopFakeProduct();
        closeUiTestState();
    }
};

// Presses a button of the next alert and waits until it has gone; returns the alert.
HWND answerAlert(int buttonId, std::string* text, std::string* failures)
{
    HWND alert = expectDialog(kAlert, "alert", failures);
    if (!alert)
        return nullptr;
    if (text)
        *text = controlText(alert, IDC_ALERT_TEXT);
    clickButton(alert, buttonId);
    waitForWindowGone(alert);
    return alert;
}

TEST_F(PageTest, EscapeOnAWelcomePageAsksAndNoKeepsThePage)
{
    struct Case {
        bool (*open)(HWND);
        int question;
    } cases[] = {{ShowInstallWelcomePage, 3}, {ShowRemoveWelcomePage, 15}};
    for (const Case& c : cases) {
        std::string failures, firstQuestion, layout;
        bool stayed = false;
        DialogScript script;
        startScript(&script, [&] {
            HWND page = expectDialog(kPage, "page", &failures);
            if (!page)
                return;
            layout = layoutProblems(page);
            pressEscape(page);
            answerAlert(IDC_ALERT_BUTTON2, &firstQuestion, &failures);   // No (4)
            Sleep(300);
            stayed = IsWindowVisible(page) != FALSE;
            pressEscape(page);
            answerAlert(IDC_ALERT_BUTTON1, nullptr, &failures);          // Yes (3)
        });
        EXPECT_FALSE(c.open(g_setup.mainWindow));
        EXPECT_TRUE(finishScript(&script));
        EXPECT_EQ(failures, "");
        EXPECT_TRUE(stayed);
        EXPECT_EQ(firstQuestion, eMessageText[c.question]);
        EXPECT_EQ(layout, "");
        EXPECT_EQ(g_setup.exitCode, 0u);
    }
}

TEST_F(PageTest, StartPagesGoOnWithContinueAndShowTheirTexts)
{
    g_setup.updateInstall = 1;
    g_setup.startOption = 1;
    SetupDataHeader header = {};
    strcpy(header.productLabel, "Vistrel Professional 2024 (64-bit)");
    g_setup.headerBuffer = &header;

    std::string failures, text, caption;
    ControlState box;
    DialogScript script;
    startScript(&script, [&] {
        if (HWND page = expectDialog(kPage, "page", &failures)) {
            text = controlText(page, IDC_MAIN_TEXT);
            caption = windowText(page);
            box = controlState(page, IDC_PAGE_OPTION);
            pressEnter(page);   // the continue button is the default
        }
    });
    EXPECT_TRUE(ShowInstallStartPage(g_setup.mainWindow));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
    EXPECT_NE(text.find("Vistrel Professional 2024 (64-bit)"), std::string::npos) << text;
    EXPECT_EQ(caption, eApplicationName);
    EXPECT_TRUE(box.exists);
    EXPECT_FALSE(box.visible);
    EXPECT_FALSE(box.enabled);
    EXPECT_EQ(g_setup.startOption, 1);

    startScript(&script, [&] {
        if (HWND page = expectDialog(kPage, "page", &failures))
            clickButton(page, IDC_CONTINUE);
    });
    EXPECT_TRUE(ShowRemoveStartPage(g_setup.mainWindow));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
}

TEST_F(PageTest, FinishPagesAnswerTrueWhicheverWayTheyClose)
{
    for (bool (*open)(HWND) : {ShowInstallFinishPage, ShowRemoveFinishPage}) {
        for (int how = 0; how < 3; ++how) {
            std::string failures;
            DialogScript script;
            startScript(&script, [&] {
                HWND page = expectDialog(kPage, "page", &failures);
                if (!page)
                    return;
                if (how == 0)
                    clickButton(page, IDC_CONTINUE);
                else if (how == 1)
                    pressEscape(page);
                else
                    sendCommand(page, IDCANCEL);
            });
            EXPECT_TRUE(open(g_setup.mainWindow)) << "way " << how;
            EXPECT_TRUE(finishScript(&script));
            EXPECT_EQ(failures, "");
            EXPECT_EQ(findDialog(kAlert), nullptr);
        }
    }
}

TEST_F(PageTest, InstallFinishCheckBoxSetsLaunchAfterFinish)
{
    for (double scale : {1.0, 1.5}) {
        closeUiTestState();
        prepareUiTestState(scale);
        g_setup.launchAfterFinish = 0;
        std::string failures, layout;
        ControlState before, after;
        DialogScript script;
        startScript(&script, [&] {
            HWND page = expectDialog(kPage, "page", &failures);
            if (!page)
                return;
            before = controlState(page, IDC_PAGE_OPTION);
            layout = layoutProblems(page);
            clickButton(page, IDC_PAGE_OPTION);
            Sleep(300);
            after = controlState(page, IDC_PAGE_OPTION);
            clickButton(page, IDC_CONTINUE);
        });
        EXPECT_TRUE(ShowInstallFinishPage(g_setup.mainWindow));
        EXPECT_TRUE(finishScript(&script));
        EXPECT_EQ(failures, "");
        EXPECT_EQ(before.text, eMessageText[36]);
        EXPECT_TRUE(before.visible);
        EXPECT_FALSE(before.checked);
        EXPECT_TRUE(after.checked);
        EXPECT_EQ(g_setup.launchAfterFinish, 1);
        EXPECT_EQ(layout, "") << "scale " << scale;
    }

    // Checked on entry, clicked twice: stays set.
    std::string failures;
    bool checkedOnEntry = false;
    DialogScript script;
    startScript(&script, [&] {
        HWND page = expectDialog(kPage, "page", &failures);
        if (!page)
            return;
        checkedOnEntry = controlState(page, IDC_PAGE_OPTION).checked;
        clickButton(page, IDC_PAGE_OPTION);
        clickButton(page, IDC_PAGE_OPTION);
        pressEscape(page);
    });
    EXPECT_TRUE(ShowInstallFinishPage(g_setup.mainWindow));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_TRUE(checkedOnEntry);
    EXPECT_EQ(g_setup.launchAfterFinish, 1);
}

TEST_F(PageTest, RunningProductStopsTheInstallWelcomePageWithExitCodeThree)
{
    startFakeProduct();
    std::string failures, question;
    DialogScript script;
    startScript(&script, [&] {
        HWND page = expectDialog(kPage, "page", &failures);
        if (!page)
            return;
        clickButton(page, IDC_CONTINUE);
        answerAlert(IDC_ALERT_BUTTON1, &question, &failures);   // Continue (6): looks again
        answerAlert(IDC_ALERT_BUTTON2, nullptr, &failures);     // Cancel (2): gives up
    });
    EXPECT_FALSE(ShowInstallWelcomePage(g_setup.mainWindow));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
    EXPECT_EQ(question, eMessageText[30]);
    EXPECT_EQ(g_setup.exitCode, kExitProductRunning);
}

TEST_F(PageTest, RemovePagesGiveUpWithoutTouchingTheExitCode)
{
    startFakeProduct();
    std::string failures, question;
    DialogScript script;
    startScript(&script, [&] {
        if (HWND page = expectDialog(kPage, "page", &failures)) {
            clickButton(page, IDC_CONTINUE);
            answerAlert(IDC_ALERT_BUTTON2, &question, &failures);
        }
    });
    EXPECT_FALSE(ShowRemoveStartPage(g_setup.mainWindow));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
    EXPECT_EQ(question, eMessageText[31]);
    EXPECT_EQ(g_setup.exitCode, 0u);
}

TEST_F(PageTest, InstallStartPageKeepsWaitingUntilTheProductIsClosed)
{
    startFakeProduct();
    std::string failures;
    bool pageStillOpen = false;
    DialogScript script;
    startScript(&script, [&] {
        HWND page = expectDialog(kPage, "page", &failures);
        if (!page)
            return;
        clickButton(page, IDC_CONTINUE);
        HWND first = answerAlert(IDC_ALERT_BUTTON2, nullptr, &failures);   // gives up: asked again
        DialogQuery again = kAlert;
        again.exclude = first;
        HWND second = expectDialog(again, "second alert", &failures);
        pageStillOpen = IsWindow(page) && IsWindowVisible(page);
        stopFakeProduct();
        if (second)
            clickButton(second, IDC_ALERT_BUTTON1);                        // looks again: gone
    });
    EXPECT_TRUE(ShowInstallStartPage(g_setup.mainWindow));
    EXPECT_TRUE(finishScript(&script));
    EXPECT_EQ(failures, "");
    EXPECT_TRUE(pageStillOpen);
    EXPECT_EQ(g_setup.exitCode, kExitProductRunning);
}

TEST_F(PageTest, SilentRunShowsNoPageAndKeepsTheFlags)
{
    g_setup.optionSilent = 1;
    g_setup.launchAfterFinish = 1;
    g_setup.startOption = 0;
    startFakeProduct();   // a silent page does not even look
    const DWORD start = GetTickCount();
    EXPECT_TRUE(ShowInstallWelcomePage(g_setup.mainWindow));
    EXPECT_TRUE(ShowInstallStartPage(g_setup.mainWindow));
    EXPECT_TRUE(ShowInstallFinishPage(g_setup.mainWindow));
    EXPECT_TRUE(ShowRemoveWelcomePage(g_setup.mainWindow));
    EXPECT_TRUE(ShowRemoveStartPage(g_setup.mainWindow));
    EXPECT_TRUE(ShowRemoveFinishPage(g_setup.mainWindow));
    EXPECT_LT(GetTickCount() - start, 1000u);
    EXPECT_EQ(g_setup.launchAfterFinish, 1);
    EXPECT_EQ(g_setup.startOption, 0);
    EXPECT_EQ(g_setup.exitCode, 0u);
}

} // namespace
