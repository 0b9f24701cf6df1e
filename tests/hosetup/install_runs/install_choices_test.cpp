// The choices a person makes while an installation runs: what to do after a file could not be
// unpacked, and whether to stop when the progress window's cancel button was pressed. Each run is
// the real hosetup.exe driven through its own dialogs; a run with many folders checks the
// directory step without a person.
#include "install_runs.h"

#include "holang.h"

#include <commctrl.h>

namespace {

constexpr int kProgressBar = 720;

// Bar positions (range 0 to 10000) of the installation's pacing loops: stage 0 fills 0 to 1000,
// its first loop reports 20 to 39 percent and its second 40 to 100; stage 2 fills 7000 to 8000
// and its loop reports 0 to 100 percent in steps of 2, the first step above the stage's start.
struct PacingLoop {
    const char* name;
    int stageText;    // the eMessageText entry the progress window shows meanwhile
    int first;        // the first position that is surely inside the loop
    int last;         // the last position inside the loop that no other report shares
};

constexpr PacingLoop kBeforeFolders = {"before the folders are made", 4, 200, 390};
constexpr PacingLoop kAfterFolders = {"after the folders are made", 4, 400, 990};
constexpr PacingLoop kAfterRegistry = {"after the registry entries", 21, 7020, 7980};

// The position of the progress window's bar, or -1 when the window is gone. The child answers
// only while it pumps its messages, which it does at every progress report.
int barPosition(HWND progress)
{
    DWORD_PTR position = 0;
    if (!IsWindow(progress) ||
        !SendMessageTimeoutA(GetDlgItem(progress, kProgressBar), PBM_GETPOS, 0, 0, SMTO_NORMAL, 10000, &position))
        return -1;
    return static_cast<int>(position);
}

// Copies a distribution member aside and puts something that is no archive in its place.
void damageMember(const std::string& member, const std::string& saved)
{
    ASSERT_TRUE(CopyFileA(member.c_str(), saved.c_str(), FALSE));
    std::ofstream(member, std::ios::binary) << "not an archive";
}

class InstallChoices : public InstallRuns {
protected:
    void TearDown() override
    {
        // A run whose script lost its way still holds the machine's folders: end it first.
        endChild(0);
        InstallRuns::TearDown();
    }

    DWORD endChild(DWORD timeoutMs)
    {
        return child_.process ? waitForExit(&child_, timeoutMs) : kNoExitCode;
    }

    // Starts the interactive installation and passes its welcome and start pages.
    void startAndPassThePages(const std::string& dist)
    {
        ASSERT_TRUE(startProcess("\"" + dist + "hosetup.exe\"", &child_));
        for (const char* name : {"welcome", "start"})
            ASSERT_NO_FATAL_FAILURE(passPage(child_, name));
    }

    void answer(HWND alert, int button)
    {
        clickButton(alert, button);
        ASSERT_TRUE(waitForWindowGone(alert));
    }

    // Takes the next alert, which must report the failed unpacking of `member`, and acknowledges it.
    void acknowledgeUnpackerFailure(const std::string& member)
    {
        HWND alert = nextAlert(child_);
        ASSERT_NE(alert, nullptr) << member;
        const std::string text = controlText(alert, 720);
        EXPECT_NE(text.find("HOUNZIP ("), std::string::npos) << text;
        EXPECT_NE(text.find(member + "."), std::string::npos) << text;   // the archive name as the unpacker got it
        ASSERT_NO_FATAL_FAILURE(answer(alert, 571));
    }

    // Takes the retry, skip or cancel question that follows a failed transfer and gives `button`.
    void answerTransferQuestion(int button)
    {
        HWND question = nextAlert(child_);
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(controlText(question, 720), eAlertErrorText[14]);
        ASSERT_NO_FATAL_FAILURE(answer(question, button));
    }

    // Presses cancel once the bar has entered the loop and answers the question that the next
    // progress report asks: 571 (Yes) stops the run, 572 (No) lets it go on. The question must
    // come while the loop still runs, which the bar's position at that moment shows.
    void cancelInLoop(HWND progress, const PacingLoop& loop, int button)
    {
        const DWORD start = GetTickCount();
        int position;
        while ((position = barPosition(progress)) >= 0 && position < loop.first && GetTickCount() - start < kRunTimeout)
            Sleep(5);
        ASSERT_GE(position, loop.first) << loop.name;
        clickButton(progress, IDCANCEL);
        HWND question = nextAlert(child_);
        ASSERT_NE(question, nullptr) << loop.name;
        position = barPosition(progress);
        ASSERT_GE(position, loop.first) << loop.name;
        ASSERT_LE(position, loop.last) << loop.name << ": the question came after the loop";
        EXPECT_EQ(controlText(progress, 370), eMessageText[loop.stageText]) << loop.name;
        EXPECT_EQ(controlText(question, 720), eMessageText[2]) << loop.name;
        ASSERT_NO_FATAL_FAILURE(answer(question, button));
    }

    // Runs the installation interactively, declines to stop in `goOn` (when given) and stops in `stop`.
    void stopInLoop(const std::string& dist, const PacingLoop* goOn, const PacingLoop& stop)
    {
        removeProductTraces();
        ASSERT_NO_FATAL_FAILURE(startAndPassThePages(dist));
        HWND progress = waitForDialog(ofChild(dialogWith(370, kProgressBar), child_), kStepTimeout);
        ASSERT_NE(progress, nullptr);
        if (goOn) {
            ASSERT_NO_FATAL_FAILURE(cancelInLoop(progress, *goOn, 572));
        }
        ASSERT_NO_FATAL_FAILURE(cancelInLoop(progress, stop, 571));
        EXPECT_EQ(endChild(kRunTimeout), 2u) << stop.name;
    }

    ChildProcess child_;
};

TEST_F(InstallChoices, AFailedUnpackingIsRetriedThenSkipped)
{
    const std::string dist = build(samplePackage());
    // Records 5 and 7 (after record 0 and the four program files) are the packed hovistrel.exe
    // and the packed library.
    ASSERT_NO_FATAL_FAILURE(damageMember(dist + "_000050_", work_ + "program.zip"));
    ASSERT_NO_FATAL_FAILURE(damageMember(dist + "_000070_", work_ + "library.zip"));
    ASSERT_NO_FATAL_FAILURE(startAndPassThePages(dist));

    // Retry with the member still broken: the same failure comes again.
    ASSERT_NO_FATAL_FAILURE(acknowledgeUnpackerFailure("_000050_"));
    ASSERT_NO_FATAL_FAILURE(answerTransferQuestion(571));
    ASSERT_NO_FATAL_FAILURE(acknowledgeUnpackerFailure("_000050_"));
    // Retry after the medium was mended: the file arrives and the run goes on.
    ASSERT_TRUE(CopyFileA((work_ + "program.zip").c_str(), (dist + "_000050_").c_str(), FALSE));
    ASSERT_NO_FATAL_FAILURE(answerTransferQuestion(571));
    // Skip: the library stays out, everything after it is installed.
    ASSERT_NO_FATAL_FAILURE(acknowledgeUnpackerFailure("_000070_"));
    ASSERT_NO_FATAL_FAILURE(answerTransferQuestion(572));
    ASSERT_NO_FATAL_FAILURE(passPage(child_, "finish"));
    EXPECT_EQ(endChild(kRunTimeout), 0u);

    const std::string library = folders_.documents + "Libraries\\Standard\\standard.hol";
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-11-29");
    EXPECT_FALSE(fileExists(library));
    EXPECT_EQ(readFile(folders_.documents + "Settings\\hovistrel.ini"), "[settings]");
    EXPECT_EQ(readFile(folders_.install + "Help\\hovistrel.chm"), "help");
    EXPECT_TRUE(fileExists(folders_.desktop + "Vistrel Test.lnk"));
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", "2022-11-29");
    // The log names what was installed, once, and not the skipped file.
    const std::vector<std::string> log = lines(readFile(folders_.commonData + "hosetup.log"));
    EXPECT_EQ(std::count(log.begin(), log.end(), folders_.install + "hovistrel.exe"), 1);
    EXPECT_EQ(std::count(log.begin(), log.end(), library), 0);
    EXPECT_EQ(std::count(log.begin(), log.end(), folders_.documents + "Settings\\hovistrel.ini"), 1);
}

TEST_F(InstallChoices, CancelAfterAFailedUnpackingStopsTheRun)
{
    const std::string dist = build(samplePackage());
    ASSERT_NO_FATAL_FAILURE(damageMember(dist + "_000070_", work_ + "library.zip"));
    ASSERT_NO_FATAL_FAILURE(startAndPassThePages(dist));
    ASSERT_NO_FATAL_FAILURE(acknowledgeUnpackerFailure("_000070_"));
    ASSERT_NO_FATAL_FAILURE(answerTransferQuestion(573));
    EXPECT_EQ(endChild(kRunTimeout), 2u);   // no finish page waited for a click

    // What came before the failure stays; nothing after it was done.
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-11-29");
    EXPECT_FALSE(fileExists(folders_.documents + "Libraries\\Standard\\standard.hol"));
    EXPECT_FALSE(fileExists(folders_.documents + "Settings\\hovistrel.ini"));
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);
    EXPECT_FALSE(fileExists(folders_.desktop + "Vistrel Test.lnk"));
    const std::string log = readFile(folders_.commonData + "hosetup.log");
    EXPECT_NE(log.find(folders_.install + "hovistrel.exe\r\n"), std::string::npos);
    EXPECT_NE(log.find("***** Vistrel standard installation: EXITING, "), std::string::npos);
}

TEST_F(InstallChoices, ACancelConfirmedInAnyPacingLoopEndsTheRun)
{
    const std::string dist = build(samplePackage());

    // Before the folders are made: nothing of the product is on the machine yet.
    ASSERT_NO_FATAL_FAILURE(stopInLoop(dist, nullptr, kBeforeFolders));
    EXPECT_FALSE(fileExists(folders_.install));
    EXPECT_FALSE(fileExists(folders_.commonData + "hosetup.log"));
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);

    // After the folders are made (the first loop's question answered No): folders and their log
    // lines, but no file.
    ASSERT_NO_FATAL_FAILURE(stopInLoop(dist, &kBeforeFolders, kAfterFolders));
    EXPECT_TRUE(fileExists(folders_.documents + "Drawings\\"));
    EXPECT_FALSE(fileExists(folders_.install + "hovistrel.exe"));
    std::string log = readFile(folders_.commonData + "hosetup.log");
    EXPECT_NE(log.find("***** Vistrel standard installation: Creating directories, "), std::string::npos);
    EXPECT_EQ(log.find("Copying files"), std::string::npos);
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);

    // After the registry entries (the second loop's question answered No): the product is
    // installed and registered, but the shortcuts are not made.
    ASSERT_NO_FATAL_FAILURE(stopInLoop(dist, &kAfterFolders, kAfterRegistry));
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-11-29");
    EXPECT_EQ(readFile(folders_.documents + "Drawings\\hovistrel.hod"), "LINE 0 0 10 10");
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kProductKey, "CompileDate", "2022-11-29");
    EXPECT_REG_KEY(HKEY_LOCAL_MACHINE, kUninstall);
    EXPECT_FALSE(fileExists(folders_.desktop + "Vistrel Test.lnk"));
    EXPECT_FALSE(fileExists(folders_.programs + "Vistrel Test\\"));
    log = readFile(folders_.commonData + "hosetup.log");
    EXPECT_NE(log.find(folders_.install + "hovistrel.exe\r\n"), std::string::npos);
}

TEST_F(InstallChoices, MoreFoldersThanTheDirectoryStepRemembersAreAllMade)
{
    // 70 folders, one file each, then a second file in the first and in the last folder: the
    // directory step remembers 64 folders, so the last one is made a second time.
    constexpr int kFolders = 70;
    Package package = samplePackage();
    auto folderName = [](int n) {
        char name[16];
        snprintf(name, sizeof name, "Part%02d", n);
        return std::string(name);
    };
    for (int n = 0; n < kFolders; ++n)
        package.files.push_back({"parts/" + folderName(n) + ".dat", 1, folderName(n), "part.dat", folderName(n)});
    for (int n : {0, kFolders - 1})
        package.files.push_back({"parts/second" + folderName(n) + ".dat", 1, folderName(n), "second.dat", "second"});
    ASSERT_EQ(install(build(package)), 0u);

    const std::vector<std::string> log = lines(readFile(folders_.commonData + "hosetup.log"));
    for (int n = 0; n < kFolders; ++n) {
        const std::string folder = folders_.install + folderName(n) + "\\";
        EXPECT_EQ(readFile(folder + "part.dat"), folderName(n)) << folder;
        // Each folder is logged once, however often it was made, so the removal takes it once.
        EXPECT_EQ(std::count(log.begin(), log.end(), "#" + folder), 1) << folder;
    }
    for (int n : {0, kFolders - 1})
        EXPECT_EQ(readFile(folders_.install + folderName(n) + "\\second.dat"), "second") << n;
    // The folders were made before any file was copied.
    const auto copying = std::find_if(log.begin(), log.end(), [](const std::string& line) {
        return line.find("Copying files") != std::string::npos;
    });
    const auto lastFolder = std::find(log.begin(), log.end(), "#" + folders_.install + folderName(kFolders - 1) + "\\");
    EXPECT_LT(lastFolder, copying);
}

} // namespace
