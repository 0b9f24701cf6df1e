// Deletion of what the setup log and its journal name: every file any installation recorded or
// was about to create, then the recorded folders, deepest first, as far as they have become
// empty. Nothing else is touched, and what the removal needs to be started again (its own files,
// the data file) is left to the end of the removal.
#include "remove/remove.h"
#include "setuplog/setuplog.h"
#include "files/files.h"
#include "format/data_format.h"
#include "format/program_files.h"
#include "core/core.h"
#include "registry/registry.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"

#include <cctype>
#include <cstring>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

// The counting pass moves the bar once for every ten counted lines and reaches the end of its
// stage after this many lines.
constexpr int kCountedLinesForFullBar = 500;
constexpr int kLinesPerReport = 10;
constexpr int kCountingFloor = 10;

// True for a canonical drive-letter path: "X:\" and plain names joined by single backslashes,
// as the installation writes them. Relative, UNC and "\\?\" paths, "." and ".." elements,
// "/" separators, ":" streams and names Windows would strip of a closing dot or blank are not.
bool isCanonicalDrivePath(const char* path)
{
    const std::size_t length = std::strlen(path);
    const char drive = static_cast<char>(path[0] | 0x20);
    if (length < 4 || length >= kPathCapacity || drive < 'a' || drive > 'z' || path[1] != ':' || path[2] != '\\')
        return false;
    std::size_t start = 3;
    for (std::size_t i = 3; i <= length; ++i) {
        if (i < length && path[i] != '\\') {
            if (path[i] == '/' || path[i] == ':')
                return false;
            continue;
        }
        const std::size_t size = i - start;
        if (size == 0 && i < length)
            return false;    // two backslashes in a row
        if (size > 0 && (path[i - 1] == '.' || path[i - 1] == ' '))
            return false;    // ".", "..", or a name Windows would cut
        start = i + 1;
    }
    return true;
}

// True when the folder of the run is a folder the product knows and path lies inside it (for a
// folder line, path may be the folder itself).
bool liesInside(const char* path, const char* folder, bool folderLine)
{
    if (folder[0] == '*' || !IsFolderPath(folder) || !isCanonicalDrivePath(folder))
        return false;
    if (!PathStartsWithFolder(path, folder))
        return false;
    return folderLine || path[std::strlen(folder)] != '\0';
}

// The removal deletes only what lies inside the folders the product knows, named as canonical
// drive-letter paths. The log lives below ProgramData, where a standard user could have written
// it, and this program runs elevated: any other line is skipped, and the removal goes on.
bool isProductPath(const char* path, bool folderLine)
{
    if (!isCanonicalDrivePath(path))
        return false;
    const char* const folders[] = {g_setup.installFolder, g_setup.commonDataFolder, g_setup.userDataFolder,
                                   g_setup.documentsFolder, g_setup.libraryFolder, g_setup.drawingFolder,
                                   g_setup.settingFolder};
    for (const char* folder : folders) {
        if (liesInside(path, folder, folderLine))
            return true;
        // The maker's folder above a product folder is logged when the installation made it;
        // it goes only when empty.
        char parent[kPathCapacity] = "";
        if (folderLine && folder[0] != '*' && ParentFolder(folder, parent, sizeof parent) &&
            HOI_EqualA(path, parent) && isCanonicalDrivePath(parent))
            return true;
    }
    return false;
}

// Opens the log or the journal in the common data folder for reading. A journal that is not there
// reads as empty, and so does a log that a removal cut short had deleted already (it marked the
// product key before): a second removal finishes what it left. False after the alert for a log
// that is lost, and for either file when it is there but cannot be read.
bool openRecord(const char* name, bool mayBeGone, HANDLE* file)
{
    *file = nullptr;
    char path[kPathCapacity];
    const bool fits = composePath(path, sizeof path, g_setup.commonDataFolder, name);
    if (fits && mayBeGone && !PathExists(path))
        return true;
    if (fits && OpenForReading(file, path))
        return true;
    *file = nullptr;
    ShowFileAlert(g_setup.mainWindow, fits ? path : g_setup.commonDataFolder, kFileAlertLogUnreadable);
    return false;
}

bool rewind(HANDLE file, const char* name)
{
    if (!file || Seek(file, 0, FILE_BEGIN))
        return true;
    char path[kPathCapacity];
    composePath(path, sizeof path, g_setup.commonDataFolder, name);
    ShowFileAlert(g_setup.mainWindow, path, kFileAlertLogUnreadable);
    return false;
}

// What the removal itself runs on, in the installation folder: deleted at its very end, so that a
// removal cut short can be started again.
bool neededToStartAgain(const char* path)
{
    char own[kPathCapacity];
    if (composePath(own, sizeof own, g_setup.installFolder, kInstalledDataName) && HOI_EqualA(path, own))
        return true;
    for (const ProgramFile& file : kProgramFiles) {
        if (file.heldByRemoval && composePath(own, sizeof own, g_setup.installFolder, file.name) &&
            HOI_EqualA(path, own))
            return true;
    }
    return false;
}

// One step of the work units; the bar moves once for every ten of them.
bool countUnit(std::int64_t* reported)
{
    ++g_setup.bytesDonePacked;
    if (static_cast<std::int64_t>(g_setup.bytesDonePacked / kLinesPerReport) <= *reported)
        return true;
    ++*reported;
    return SetProgress(static_cast<std::int64_t>(g_setup.bytesDonePacked),
                       static_cast<std::int64_t>(g_setup.bytesTotalPacked));
}

// Percent of the counting pass's bar after `counted` lines: 10 at least, 100 from 500 lines on.
int countingProgress(int counted)
{
    int percent = static_cast<int>(roundHalfAwayFromZero(counted * 100.0 / kCountedLinesForFullBar));
    if (percent < kCountingFloor)
        percent = kCountingFloor;
    if (percent > 100)
        percent = 100;
    return percent;
}

// Lines met before, compared ignoring case: a repeated line is acted on once, so a log padded
// with copies of one line costs no more than its length.
class SeenLines {
public:
    bool firstTime(const char* line)
    {
        std::string key(line);
        for (char& c : key)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return seen_.insert(key).second;
    }

private:
    std::unordered_set<std::string> seen_;
};

} // namespace

bool countLogLines(HANDLE log, LogLineCount* count)
{
    char line[kPathCapacity];
    while (ReadTextLine(log, line, sizeof line)) {
        if (count->counted / kLinesPerReport > count->reports) {
            count->lastPercent = countingProgress(count->counted);
            if (!SetProgress(count->lastPercent, 100))
                return false;
            ++count->reports;
        }
        const LogLineKind kind = classifyLogLine(line);
        if (kind != LogLineKind::Banner)
            ++count->counted;
        if (kind == LogLineKind::Folder)
            ++count->folders;
    }
    return true;
}

bool RemoveLoggedFiles()
{
    CloseLog(false);
    if (!openRecord(kSetupLogName, RemovalWasFinishing(), &g_setup.logFile) ||
        !openRecord(kSetupJournalName, true, &g_setup.journalFile))
        return false;
    // The log, then its journal; 0 for one that is not there.
    const HANDLE files[] = {g_setup.logFile, g_setup.journalFile};
    const char* const names[] = {kSetupLogName, kSetupJournalName};
    if (!SetProgress(5, 100))
        return false;

    // Counting pass: how much there is to do, so that the deletion's bar is true.
    LogLineCount count;
    for (HANDLE file : files) {
        if (file && !countLogLines(file, &count))
            return false;
    }
    if (!SetProgress(100, 100))
        return false;

    g_setup.bytesDonePacked = 0;
    g_setup.bytesTotalPacked = static_cast<std::uint64_t>(count.counted + count.folders);
    ShowProgressStage(true, kStageRemoveFiles, 0, 0);

    // File pass, in the log's order and then the journal's. A file an installation kept (after a
    // "Skipped file" marker) is the product's too and goes with the rest. The folder lines are
    // gathered on the way.
    char line[kPathCapacity];
    std::int64_t unitsReported = 0;
    SeenLines seenFiles;
    SeenLines seenFolders;
    std::vector<std::string> folders;
    for (int i = 0; i < 2; ++i) {
        if (!rewind(files[i], names[i]))
            return false;
        while (files[i] && ReadTextLine(files[i], line, sizeof line)) {
            const LogLineKind kind = classifyLogLine(line);
            const char* path = logLinePath(line);
            if (kind == LogLineKind::Folder && isProductPath(path, true) && seenFolders.firstTime(path))
                folders.emplace_back(path);
            if (kind != LogLineKind::File)
                continue;
            if (!countUnit(&unitsReported))
                return false;
            if (isProductPath(path, false) && !neededToStartAgain(path) && seenFiles.firstTime(path))
                DeleteFileAt(path);
        }
    }
    if (count.folders == 0)
        return true;

    // Folder passes. The log lists each chain of created folders shortest first, so one pass
    // fails on every parent whose child is still there; each further pass takes one more level.
    // A folder that stays because the user's files are in it keeps the passes going, bounded by
    // the number of folder lines. After a pass that removed nothing every further pass would find
    // the same folders, so those passes are counted without touching the disk again. Paths hold
    // at most kPathCapacity characters, so the passes that remove something are few: the time
    // grows with the log's length, never with its square.
    bool found = false;
    bool settled = false;
    for (int pass = 0;; ++pass) {
        if (!settled) {
            found = false;
            bool removed = false;
            for (const std::string& folder : folders) {
                if (!PathExists(folder.c_str()))
                    continue;
                found = true;
                removed = RemoveFolder(folder.c_str()) || removed;
            }
            settled = !removed;
        }
        if (!countUnit(&unitsReported))
            return false;
        if (!found || pass + 1 >= count.folders)
            return true;
    }
}
