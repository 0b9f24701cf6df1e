// The replace decision for an existing target, one row per rule, on real files and times; the
// interactive rows answer the real replace query from a script thread.
#include "install_fixture.h"

#include "dialogs.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"


namespace {

// Target ages that stand for no target file, and for none but an old release's default drawing.
constexpr int kMissing = -999999, kOldCopy = 999999;
constexpr int kAskless = 1, kAllBefore = 2, kUpdate = 4;   // what the run brings along
const DialogQuery kQuery = dialogWith(IDC_EXISTING_TEXT, IDC_REPLACE_CANCEL);

// index: 0 a.dll, 1 b.dll (saved by the backup record 2), 3 the default drawing; targetAge: the
// seconds its time lies after the source's; press: the query's button, 0 in a silent run.
struct Row { const char* rule; int index, targetAge, given, press, reply; bool keep, replaceAllAfter; };

const Row kRows[] = {
    {"newer beyond the margin: the query, silent", 0, 3605, 0, 0, kReplaceAll, false, true},
    {"newer within the margin", 0, 3604, 0, 0, kReplaceFile, false, false},
    {"same time", 0, 0, 0, 0, kReplaceFile, false, false},
    {"older", 0, -100000, 0, 0, kReplaceFile, false, false},
    {"no target", 0, kMissing, 0, 0, kReplaceFile, false, false},
    {"replace-all given before, even for an older target", 0, -100000, kAllBefore, 0, kReplaceAll, false, true},
    {"replace without asking", 0, 3605, kAskless, 0, kReplaceFile, false, false},
    {"saved by the backup step", 1, 3605, 0, 0, kReplaceFile, false, false},
    {"an update keeps the default drawing, even after replace-all", 3, -1, kUpdate | kAllBefore, 0, kReplaceKeep, true,
     true},
    {"a standard installation treats it as any file", 3, 3605, 0, 0, kReplaceAll, false, true},
    {"an old release's default drawing is moved to the target", 3, kOldCopy, kUpdate, 0, kReplaceKeep, true, false},
    {"query: replace", 0, 3605, 0, IDC_REPLACE_FILE, kReplaceFile, false, false},
    {"query: replace all", 0, 3605, 0, IDC_REPLACE_ALL, kReplaceAll, false, true},
    {"query: keep (a reply, not the drawing rule)", 0, 3605, 0, IDC_REPLACE_KEEP, kReplaceKeep, false, false},
    {"query: cancel", 0, 3605, 0, IDC_REPLACE_CANCEL, kReplaceCancel, false, false},
};

// Writes a file whose last-write time is a fixed base plus `seconds`.
void writeDated(const std::string& path, const char* text, std::int64_t seconds)
{
    writeFile(path, text);
    HANDLE file = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    const std::uint64_t ticks = 132000000000000000ULL + static_cast<std::uint64_t>(seconds * 10000000LL);
    const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time)) << path;
    CloseHandle(file);
}

using ReplaceDecision = InstallFixture;

TEST_F(ReplaceDecision, Rules)
{
    setRecords({{10, "a.dll"}, {10, "b.dll"}, {13, "b.dll"}, {200, "hovistrel.hod"}});
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.rule);
        char target[kPathCapacity], member[kMemberNameCapacity];
        ASSERT_EQ(resolveFilePath(row.index, target, nullptr, nullptr, nullptr), kPathComposed);
        formatMemberName(row.index, member, sizeof member);
        const std::string source = g_setup.sourceFolder + std::string(member);
        const std::string oldCopy = root_ + "Program\\hovistrel.hod";
        DeleteFileA(target);
        writeDated(source, "packaged", 0);
        if (row.targetAge == kOldCopy)
            writeFile(oldCopy, "the user's drawing");
        else if (row.targetAge != kMissing)
            writeDated(target, "installed", row.targetAge);
        g_setup.optionSilent = row.press == 0;
        g_setup.replaceAll = (row.given & kAllBefore) != 0;
        g_setup.updateInstall = (row.given & kUpdate) != 0;

        DialogScript person;
        if (row.press)
            startScript(&person, [&] { clickButton(waitForDialog(kQuery), row.press); });
        bool keep = !row.keep;
        EXPECT_EQ(DecideReplace(row.index, target, source.c_str(), (row.given & kAskless) != 0, &keep), row.reply);
        EXPECT_TRUE(!row.press || finishScript(&person));
        EXPECT_EQ(keep, row.keep);
        EXPECT_EQ(g_setup.replaceAll, row.replaceAllAfter);
        EXPECT_TRUE(row.targetAge != kOldCopy ||
                    (readFile(target) == "the user's drawing" && !PathExists(oldCopy.c_str())));
    }
}

} // namespace
