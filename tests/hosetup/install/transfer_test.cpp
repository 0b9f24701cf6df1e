// The copy step and its replace rules, on real files, with the real unpacker.
#include "install_fixture.h"
#include "install/install.h"
#include "dialogs.h"
#include "holang.h"
#include "ui/ui.h"

namespace {

class Transfer : public InstallFixture {
protected:
    void SetUp() override
    {
        InstallFixture::SetUp();
        HOI_CopyA(g_setup.programFolder, kPathCapacity, testBinFolder().c_str());
        CreateFolderChain(g_setup.installFolder, nullptr);
        CreateFolderChain(g_setup.commonDataFolder, nullptr);
    }

    std::string member(int index) const
    {
        char name[32];
        snprintf(name, sizeof name, "_%05d0_", index);
        return std::string(g_setup.sourceFolder) + name;
    }

    std::string target(const char* name) const { return std::string(g_setup.installFolder) + name; }

    // Sets a file's last-write time to `base` plus `seconds`.
    static void setTime(const std::string& path, std::int64_t seconds)
    {
        HANDLE file = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        ULARGE_INTEGER ticks;
        ticks.QuadPart = 132000000000000000ULL + static_cast<std::uint64_t>(seconds) * 10000000ULL;
        FILETIME time = {ticks.LowPart, ticks.HighPart};
        SetFileTime(file, nullptr, nullptr, &time);
        CloseHandle(file);
    }
};

TEST(DatePattern, HashCodesAndOtherCharacters)
{
    SYSTEMTIME time = {};
    time.wYear = 2022;
    time.wMonth = 11;
    time.wDay = 9;
    time.wHour = 7;
    time.wMinute = 5;
    time.wSecond = 3;
    char text[kTextCapacity];
    FormatDatePattern(time, "#d.#o.#y #h:#m:#s #Y #O ##x#", text, sizeof text);
    EXPECT_EQ(std::string(text), std::string("9.11.22 7:05:03 2022 ") + eMonthNames[10] + " #x#");
    char small[6];
    FormatDatePattern(time, "#Y-#o-#d", small, sizeof small);
    EXPECT_STREQ(small, "2022-");
}

TEST_F(Transfer, NewerOnlyBeyond3604Seconds)
{
    const std::string source = member(1);
    const std::string existing = target("a.dll");
    writeFile(source, "new");
    writeFile(existing, "old one");
    setTime(source, 0);
    char targetText[kMessageCapacity], sourceText[kMessageCapacity];
    setTime(existing, 3604);
    EXPECT_FALSE(CompareFileTimes(existing.c_str(), source.c_str(), targetText, sourceText, 12345));
    setTime(existing, 3605);
    EXPECT_TRUE(CompareFileTimes(existing.c_str(), source.c_str(), targetText, sourceText, 12345));
    EXPECT_NE(std::string(sourceText).find("12345"), std::string::npos) << sourceText;  // the installed size
    EXPECT_NE(std::string(targetText).find("7"), std::string::npos) << targetText;

    EXPECT_FALSE(CompareFileTimes(target("missing").c_str(), source.c_str(), targetText, sourceText, 1));
    EXPECT_STREQ(targetText, eUniTexts[20]);
}

TEST_F(Transfer, ReplaceDecisions)
{
    setRecords({{10, "a.dll"}, {10, "b.dll"}, {13, "b.dll"}, {14, "c.dll"}});
    for (const char* name : {"a.dll", "b.dll", "c.dll"}) {
        writeFile(target(name), "installed");
        setTime(target(name), 10000);
    }
    for (int i : {0, 1, 3}) {
        writeFile(member(i), "packaged");
        setTime(member(i), 0);
    }
    bool keep = true;
    // Newer target, silent run: the query answers "replace all" without a window.
    EXPECT_EQ(DecideReplace(0, target("a.dll").c_str(), member(0).c_str(), false, &keep), kReplaceAll);
    EXPECT_FALSE(keep);
    EXPECT_TRUE(g_setup.replaceAll);
    g_setup.replaceAll = 0;
    // Saved by the backup step (a backup record of the same class and name): replaced.
    EXPECT_EQ(DecideReplace(1, target("b.dll").c_str(), member(1).c_str(), false, &keep), kReplaceFile);
    // Replace-without-asking records never ask.
    EXPECT_EQ(DecideReplace(3, target("c.dll").c_str(), member(3).c_str(), true, &keep), kReplaceFile);
    // A missing target is always written.
    EXPECT_EQ(DecideReplace(0, target("none.dll").c_str(), member(0).c_str(), false, &keep), kReplaceFile);
}

TEST_F(Transfer, AnUpdateKeepsOrMovesTheDefaultDrawing)
{
    g_setup.updateInstall = 1;
    setRecords({{200, "hovistrel.hod"}});
    CreateFolderChain(g_setup.drawingFolder, nullptr);
    const std::string drawing = std::string(g_setup.drawingFolder) + "hovistrel.hod";
    writeFile(member(0), "package drawing");
    writeFile(target("hovistrel.hod"), "user's old drawing");
    bool keep = false;
    EXPECT_EQ(DecideReplace(0, drawing.c_str(), member(0).c_str(), false, &keep), kReplaceKeep);
    EXPECT_TRUE(keep);
    EXPECT_EQ(readFile(drawing), "user's old drawing");    // moved to the target
    EXPECT_FALSE(PathExists(target("hovistrel.hod").c_str()));
    g_setup.replaceAll = 1;
    EXPECT_EQ(DecideReplace(0, drawing.c_str(), member(0).c_str(), false, &keep), kReplaceKeep);
    EXPECT_TRUE(keep);
}

TEST_F(Transfer, NewerTargetIsAskedAboutInAnInteractiveRun)
{
    g_setup.optionSilent = 0;
    setRecords({{10, "a.dll"}});
    writeFile(target("a.dll"), "installed");
    writeFile(member(0), "packaged");
    setTime(target("a.dll"), 3605);
    setTime(member(0), 0);
    DialogScript person;
    std::string question;
    startScript(&person, [&] {
        HWND query = waitForDialog(dialogWith(370, 570, 573));
        question = controlText(query, 370);
        clickButton(query, 572);                 // keep the existing file
    });
    bool keep = false;
    EXPECT_EQ(DecideReplace(0, target("a.dll").c_str(), member(0).c_str(), false, &keep), kReplaceKeep);
    EXPECT_TRUE(finishScript(&person));
    EXPECT_NE(question.find(target("a.dll")), std::string::npos) << question;
    EXPECT_FALSE(keep);                          // a reply, not the default-drawing rule
}

TEST_F(Transfer, CopyStepTransfersDeletesAndLogs)
{
    setRecords({{0, "hosetup.dat", "", 3, 3}, {10, "Help.CHM", "", 4, 100}, {12, "obsolete.dll", "", 0, 0},
                {19, "ignored.txt", "", 0, 7}, {10, "last.txt", "", 2, 2}});
    writeFile(member(0), "dat");
    writeStoredZip(member(1), "Help.CHM", "help");
    writeFile(target("obsolete.dll"), "old");
    writeStoredZip(member(4), "last.txt", "zz");
    ASSERT_TRUE(ShowProgressStage(true, 1, 0, 0));
    EXPECT_TRUE(CopyFiles());
    ShowProgressStage(false, 0, 0, 0);

    EXPECT_EQ(readFile(target("hosetup.dat")), "dat");
    EXPECT_EQ(readFile(target("Help.CHM")), "help");
    EXPECT_FALSE(PathExists(target("obsolete.dll").c_str()));
    // The ignored record counts as passed though the counting pass left it out, so the loop
    // ends one record early and the last record is never reached. Kept as it always counted.
    EXPECT_EQ(g_setup.filesToTransfer, 4);
    EXPECT_EQ(g_setup.filesDone, 4);
    EXPECT_FALSE(PathExists(target("last.txt").c_str()));
    EXPECT_EQ(g_setup.bytesDonePacked, 110u);

    const std::vector<std::string> lines = logLines();
    ASSERT_GE(lines.size(), 6u + 106u);
    EXPECT_NE(lines[1].find("***** Vistrel standard installation: Copying files, "), std::string::npos) << lines[1];
    EXPECT_EQ(lines[2], target("hosetup.dat"));
    EXPECT_EQ(lines[3], target("Help.CHM"));
    EXPECT_EQ(lines[4], target("Help.chw"));     // the viewer's index file, for the removal
    EXPECT_EQ(lines[5], target("obsolete.dll"));
    EXPECT_EQ(lines[6], std::string(g_setup.commonDataFolder) + "hovistrelallusers.ini");
    EXPECT_EQ(lines[11], std::string(g_setup.settingFolder) + "hocam1.cpd");
    EXPECT_EQ(lines.back(), std::string(g_setup.commonDataFolder) + "~LibraryCache99~.tmp");
}

TEST_F(Transfer, AFailingUnpackerEndsASilentRunAfterThreeAttempts)
{
    setRecords({{10, "broken.dll", "", 1, 1}});
    writeFile(member(0), "this is no zip archive");
    ASSERT_TRUE(ShowProgressStage(true, 1, 0, 0));
    const DWORD start = GetTickCount();
    EXPECT_FALSE(CopyFiles());
    const DWORD elapsed = GetTickCount() - start;
    ShowProgressStage(false, 0, 0, 0);
    EXPECT_FALSE(PathExists(target("broken.dll").c_str()));
    EXPECT_GE(elapsed, 2000u);                   // two retries, one second apart
    EXPECT_LT(elapsed, 30000u);
}

TEST_F(Transfer, KeptFilesAreLoggedAsSkipped)
{
    g_setup.updateInstall = 1;
    CreateFolderChain(g_setup.drawingFolder, nullptr);
    setRecords({{200, "hovistrel.hod", "", 1, 1}});
    writeStoredZip(member(0), "hovistrel.hod", "new");
    writeFile(std::string(g_setup.drawingFolder) + "hovistrel.hod", "mine");
    ASSERT_TRUE(ShowProgressStage(true, 1, 0, 0));
    EXPECT_TRUE(CopyFiles());
    ShowProgressStage(false, 0, 0, 0);
    EXPECT_EQ(readFile(std::string(g_setup.drawingFolder) + "hovistrel.hod"), "mine");
    const std::vector<std::string> lines = logLines();
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[2], "***** Skipped file:");
    EXPECT_EQ(lines[3], std::string(g_setup.drawingFolder) + "hovistrel.hod");
}

} // namespace
