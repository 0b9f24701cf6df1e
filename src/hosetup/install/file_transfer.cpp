// The copy step: every file record in order is copied plainly, unpacked by hounzip.exe, or
// deleted; an existing target is replaced silently, kept, or asked about. Progress moves by
// packed bytes, and every target path goes into the setup log for the removal.
#include "install/install.h"
#include "setuplog/setuplog.h"
#include "files/files.h"
#include "format/member_archive.h"
#include "format/program_files.h"
#include "format/unpacker_temp.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char kDefaultDrawing[] = "hovistrel.hod";
constexpr char kHelpExtension[] = ".chm";
constexpr char kHelpIndexExtension[] = ".chw";
// A target counts as newer than its source only beyond this margin (100-ns units: 3,604 s), so
// that time-zone and file-system rounding never make an unchanged file look newer.
constexpr std::int64_t kNewerMargin = 36040000000LL;
constexpr int kUnpackerWaitFailed = 100;
// A member that cannot be opened, or is no one-file archive holding the target's name, is
// reported with the code the unpacker gives such a member, without starting it.
constexpr DWORD kUnpackerNoMember = 2;
constexpr DWORD kUnpackerBadMember = 3;

std::uint32_t kindOf(const FileRecord& record)
{
    return record.directoryId % 10;
}

// Files the product creates later, logged so that the removal deletes them too.
bool logFilesMadeLater()
{
    const char* common = g_setup.commonDataFolder;
    const char* user = g_setup.userDataFolder;
    const struct { const char* folder; const char* name; } later[] = {
        {common, "hovistrelallusers.ini"}, {user, "hovistreluser.ini"},
        {common, "hovistrelpluginallusers.ini"}, {user, "hovistrelpluginuser.ini"},
        {common, "hovistrel.log"}, {g_setup.settingFolder, "hocam1.cpd"},
    };
    // A name that would not fit below its folder is never a file the product makes: not logged.
    char path[kPathCapacity];
    for (const auto& file : later) {
        if (composePath(path, sizeof path, file.folder, file.name) && !LogText(path))
            return false;
    }
    for (int i = 0; i < 100; ++i) {
        char name[32];
        HOI_PrintA(name, sizeof name, "~LibraryCache%02d~.tmp", i);
        if (composePath(path, sizeof path, common, name) && !LogText(path))
            return false;
    }
    return true;
}

// The target path and, for a help file, its viewer's index file, which the removal must delete.
bool logInstalledFile(const char* target)
{
    if (!LogText(target))
        return false;
    char drive[_MAX_DRIVE], dir[_MAX_DIR], name[_MAX_FNAME], extension[_MAX_EXT];
    if (_splitpath_s(target, drive, sizeof drive, dir, sizeof dir, name, sizeof name, extension,
                     sizeof extension) != 0)
        return true;
    if (!HOI_EqualA(extension, kHelpExtension))
        return true;
    char index[kPathCapacity];
    HOI_MakePathA(index, sizeof index, drive, dir, name, kHelpIndexExtension);
    return LogText(index);
}

void countFilesToTransfer()
{
    g_setup.filesToTransfer = 0;
    g_setup.filesDone = 0;
    g_setup.bytesTotalInstalled = 0;
    g_setup.bytesTotalPacked = 0;
    g_setup.bytesDonePacked = 0;
    for (int i = 0; i < g_setup.fileCount; ++i) {
        const FileRecord& record = g_setup.fileRecords[i];
        if (kindOf(record) == kDirectoryKindIgnored)
            continue;
        char path[kPathCapacity];
        if (resolveFilePath(i, path, nullptr, nullptr, nullptr) == kNoPathHere)
            continue;
        ++g_setup.filesToTransfer;
        g_setup.bytesTotalInstalled += record.size;
        g_setup.bytesTotalPacked += record.transferSize;
    }
}

// Brings one file to its target until it succeeds; false when the user cancelled, true after
// success or a skip. The target is journaled first: a transfer cut short leaves a part of it.
bool transferWithRetry(const char* source, const char* target, bool storedPlain, bool* transferred)
{
    *transferred = false;
    if (!JournalFile(target))
        return false;
    for (int attempt = 1;; ++attempt) {
        if (storedPlain ? CopyPlainFile(source, target) : Unpack(source, target, "")) {
            *transferred = true;
            return true;
        }
        // The failure itself was reported with the file's name; this asks what to do next.
        const int answer = askAfterFailedCopy(eAlertErrorText[kAlertTextTransferFailedQuestion], attempt);
        if (answer == kButtonCancel)
            return false;
        if (answer == kButtonSkip)
            return true;
    }
}

// The default drawing is never overwritten by an update; a copy left in the installation folder
// by an old release is moved to the target. True when the file is to be kept.
bool keepDefaultDrawing(int index, const char* target)
{
    if (!g_setup.updateInstall || !HOI_EqualA(g_setup.fileRecords[index].fileName, kDefaultDrawing))
        return false;
    if (PathExists(target))
        return true;
    char old[kPathCapacity];
    if (!composePath(old, sizeof old, g_setup.installFolder, kDefaultDrawing) || !PathExists(old) ||
        HOI_EqualA(old, target))
        return false;
    // A journal that cannot be written keeps the old copy where it is; the file is kept all the same.
    if (!JournalFile(target))
        return true;
    copyFilePumping(old, target, true, false);
    DeleteFileAt(old);
    return true;
}

// Another record names the same file as a backup entry of this record's folder class: the
// backup step saved it, so it may be replaced.
bool savedByBackup(int index)
{
    const FileRecord& record = g_setup.fileRecords[index];
    const std::uint32_t backupId = record.directoryId - kindOf(record) + kDirectoryKindBackup;
    for (int i = 0; i < g_setup.fileCount; ++i) {
        if (i != index && g_setup.fileRecords[i].directoryId == backupId &&
            HOI_EqualA(g_setup.fileRecords[i].fileName, record.fileName))
            return true;
    }
    return false;
}

bool lastWriteLocal(HANDLE file, SYSTEMTIME* local, FILETIME* written)
{
    FILETIME localTime;
    return GetFileTime(file, nullptr, nullptr, written) && FileTimeToLocalFileTime(written, &localTime) &&
           FileTimeToSystemTime(&localTime, local);
}

void describeFile(HANDLE file, std::uint64_t size, char* text, FILETIME* written)
{
    SYSTEMTIME local;
    if (!lastWriteLocal(file, &local, written))
        return;
    char date[kTextCapacity];
    FormatDatePattern(local, eUniTexts[kUniDatePattern], date, sizeof date);
    HOI_PrintA(text, kMessageCapacity, eUniTexts[kUniFileDescription], static_cast<int>(static_cast<std::uint32_t>(size)), date);
}

// The unpacker's success counts only when the file meant is there, reached without a link: a
// member stored under another name would otherwise be installed where the log does not look.
bool unpackedFileIsThere(const char* target)
{
    HANDLE file = openChecked(target, FILE_READ_ATTRIBUTES, false);
    if (!file)
        return false;
    CloseHandle(file);
    return true;
}

bool readArchiveAt(void* context, std::uint64_t offset, void* buffer, std::uint32_t count)
{
    HANDLE archive = static_cast<HANDLE>(context);
    DWORD read = 0;
    return Seek(archive, static_cast<std::int64_t>(offset), FILE_BEGIN) && ReadFile(archive, buffer, count, &read, nullptr) &&
           read == count;
}

// Opens a packed member and checks that the file it holds is stored under the target's name:
// the unpacker writes it under its stored name, so a member of another name would put a file
// where the log does not look. The member stays open without write or delete sharing until the
// unpacker is done, so it cannot be exchanged after the check. 0 with *member open, else the exit
// code the unpacker gives such a member: 2 when it cannot be opened, 3 when it does not fit.
DWORD openMatchingMember(const char* archive, const char* targetFile, HANDLE* member)
{
    *member = CreateFileA(archive, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (*member == INVALID_HANDLE_VALUE) {
        *member = nullptr;
        return kUnpackerNoMember;
    }
    const char* fileName = std::max(std::strrchr(targetFile, '\\'), std::strrchr(targetFile, '/'));
    char stored[kPathCapacity];
    if (fileName && readMemberStoredName(readArchiveAt, *member, GetSize(*member), stored, sizeof stored) &&
        storedNameMatches(stored, fileName + 1))
        return 0;
    CloseHandle(*member);
    *member = nullptr;
    return kUnpackerBadMember;
}

std::int64_t ticks(const FILETIME& time)
{
    return static_cast<std::int64_t>((static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
}

} // namespace

void FormatDatePattern(const SYSTEMTIME& time, const char* pattern, char* text, std::size_t capacity)
{
    HOI_InitA(text);
    for (const char* p = pattern; *p; ++p) {
        if (*p != '#' || p[1] == '\0') {
            HOI_JoinA(text, capacity, *p);
            continue;
        }
        char part[kTextCapacity];
        switch (*++p) {
        case 'Y': HOI_PrintA(part, sizeof part, "%d", time.wYear); break;
        case 'y': HOI_PrintA(part, sizeof part, "%02d", time.wYear % 100); break;
        case 'o': HOI_PrintA(part, sizeof part, "%d", time.wMonth); break;
        case 'O': HOI_CopyA(part, sizeof part, time.wMonth >= 1 && time.wMonth <= 12 ? eMonthNames[kMonthJanuary + time.wMonth - 1] : ""); break;
        case 'd': HOI_PrintA(part, sizeof part, "%d", time.wDay); break;
        case 'h': HOI_PrintA(part, sizeof part, "%d", time.wHour); break;
        case 'm': HOI_PrintA(part, sizeof part, "%02d", time.wMinute); break;
        case 's': HOI_PrintA(part, sizeof part, "%02d", time.wSecond); break;
        default: HOI_CopyA(part, sizeof part, *p); break;
        }
        HOI_JoinA(text, capacity, part);
    }
}

bool CompareFileTimes(const char* target, const char* source, char* targetText, char* sourceText,
                      std::uint64_t sourceSize)
{
    HOI_CopyA(targetText, kMessageCapacity, eUniTexts[kUniNoFileInformation]);
    HOI_CopyA(sourceText, kMessageCapacity, eUniTexts[kUniNoFileInformation]);

    HANDLE file;
    if (!OpenForReading(&file, target))
        return false;
    FILETIME targetTime = {};
    describeFile(file, GetSize(file), targetText, &targetTime);
    CloseFile(file);

    if (!OpenForReading(&file, source)) {
        ShowFileAlert(g_setup.mainWindow, source, kFileAlertCannotOpen);
        return false;
    }
    FILETIME sourceTime = {};
    describeFile(file, sourceSize, sourceText, &sourceTime);
    CloseFile(file);
    return ticks(targetTime) - ticks(sourceTime) > kNewerMargin;
}

int DecideReplace(int index, const char* target, const char* source, bool replaceWithoutAsking, bool* keep)
{
    *keep = keepDefaultDrawing(index, target);
    char targetText[kMessageCapacity];
    char sourceText[kMessageCapacity];
    const bool newer = CompareFileTimes(target, source, targetText, sourceText, g_setup.fileRecords[index].size);
    if (*keep)
        return kReplaceKeep;
    if (g_setup.replaceAll)
        return kReplaceAll;
    if (!newer || replaceWithoutAsking || savedByBackup(index))
        return kReplaceFile;
    const int reply = AskReplaceFile(g_setup.mainWindow, target, targetText, sourceText);
    if (reply == kReplaceAll)
        g_setup.replaceAll = 1;
    return reply;
}

bool CopyPlainFile(const char* source, const char* target)
{
    // A member of the distribution lies in a folder a stranger may own; a settings file saved by
    // an update lies in the product's own folders.
    const std::size_t sourceFolderLength = std::strlen(g_setup.sourceFolder);
    const bool fromDistribution =
        sourceFolderLength > 0 && _strnicmp(source, g_setup.sourceFolder, sourceFolderLength) == 0;
    if (copyFilePumping(source, target, false, fromDistribution))
        return true;
    DeleteFileAt(target);
    char message[2 * kMessageCapacity];
    HOI_PrintA(message, sizeof message, eMessageText[kMsgCopyFailed], source, target);
    AlertError(g_setup.mainWindow, message);
    return false;
}

bool Unpack(const char* archive, const char* targetFile, const char* options)
{
    // A name without extension gets a "." so that the unpacker does not supply one of its own.
    char archiveName[kPathCapacity];
    HOI_CopyA(archiveName, sizeof archiveName, archive);
    const char* dot = std::strrchr(archiveName, '.');
    const char* separator = std::max(std::strrchr(archiveName, '\\'), std::strrchr(archiveName, '/'));
    if (!dot || dot < separator)
        HOI_JoinA(archiveName, sizeof archiveName, '.');

    char folder[kPathCapacity];
    FolderOfPath(targetFile, folder, sizeof folder);
    char unpacker[kPathCapacity];
    HOI_CopyA(unpacker, sizeof unpacker, g_setup.programFolder, kUnpackerName);
    // The unpacker's temporary file is named here and journaled before the unpacker starts: a run
    // cut short while it writes leaves that file where the removal looks.
    const std::uint32_t tempValue = unpackerTempValue();
    char tempName[kUnpackerTempNameLength + 1];
    char tempPath[kPathCapacity];
    char tempOption[sizeof kUnpackerTempOption + kUnpackerTempDigits] = {};
    HOI_CopyA(tempOption, sizeof tempOption, kUnpackerTempOption);
    FormatUnpackerTempDigits(tempValue, tempOption + sizeof kUnpackerTempOption - 1);
    if (!FormatUnpackerTempName(tempValue, tempName, sizeof tempName) ||
        !composePath(tempPath, sizeof tempPath, folder, tempName) || !JournalFile(tempPath))
        return false;
    char commandLine[4 * kPathCapacity];
    HOI_PrintA(commandLine, sizeof commandLine, "\"%s\" \"%s\" \"%s\" %s %s -n -q", unpacker, archiveName, folder,
               options, tempOption);

    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process = {};
    HANDLE member = nullptr;
    DWORD exitCode = openMatchingMember(archiveName, targetFile, &member);
    if (member) {
        if (!startUnpacker(commandLine, &startup, &process)) {
            CloseHandle(member);
            char message[kMessageCapacity];
            HOI_PrintA(message, sizeof message, eAlertErrorText[kAlertTextUnpackerNotStarted], archiveName);
            AlertError(g_setup.mainWindow, message);
            return false;
        }
        CloseHandle(process.hThread);
        if (!waitForProcessPumping(process.hProcess, &exitCode))
            exitCode = kUnpackerWaitFailed;
        CloseHandle(process.hProcess);
        CloseHandle(member);
    }
    if (exitCode == 0 && unpackedFileIsThere(targetFile))
        return true;

    DeleteFileAt(targetFile);
    if (exitCode == 0) {
        ShowFileAlert(g_setup.mainWindow, targetFile, kFileAlertWriteFailed);
        return false;
    }
    char code[32];
    HOI_PrintA(code, sizeof code, "HOUNZIP (%d)", static_cast<int>(exitCode));
    char message[2 * kMessageCapacity];
    HOI_PrintA(message, sizeof message, eAlertErrorText[kAlertTextUnpackerFailed], code, archiveName);
    HOI_JoinA(message, sizeof message, eAlertErrorText[kAlertTextSupportNote]);
    AlertError(g_setup.mainWindow, message);
    return false;
}

bool CopyFiles()
{
    g_setup.replaceAll = 0;
    countFilesToTransfer();
    if (g_setup.filesToTransfer <= 0) {
        AlertNotice(g_setup.mainWindow, eMessageText[kMsgNoFilesToInstall]);
        return false;
    }
    if (!OpenLog())
        return false;
    if (!LogTimedLine(g_setup.updateInstall ? "***** Vistrel update installation: Copying files, %s *****"
                                            : "***** Vistrel standard installation: Copying files, %s *****"))
        return false;

    for (int i = 0; i < g_setup.fileCount; ++i) {
        const FileRecord& record = g_setup.fileRecords[i];
        if (kindOf(record) != kDirectoryKindIgnored) {
            char target[kPathCapacity];
            bool storedPlain = false;
            bool replaceWithoutAsking = false;
            const int resolved = resolveFilePath(i, target, nullptr, &storedPlain, &replaceWithoutAsking);
            if (resolved == kPathTooLong)
                return false;
            if (resolved == kNoPathHere)
                continue;       // not counted as passed, no progress
            if (!SetProgress(static_cast<std::int64_t>(g_setup.bytesDonePacked),
                             static_cast<std::int64_t>(g_setup.bytesTotalPacked)))
                return false;

            if (kindOf(record) == kDirectoryKindDelete) {
                DeleteFileAt(target);
                if (!LogText(target))
                    return false;
            } else {
                char source[kPathCapacity];
                char member[kMemberNameCapacity];
                formatMemberName(static_cast<std::size_t>(i), member, sizeof member);
                // Never the source folder itself, never a cut path: a record without its member
                // has the name of a file nobody can open.
                if (member[0] == '\0' || !composePath(source, sizeof source, g_setup.sourceFolder, member))
                    HOI_CopyA(source, sizeof source, "*");
                bool keep = false;
                const int reply = DecideReplace(i, target, source, replaceWithoutAsking, &keep);
                if (keep) {
                    if (!LogSkippedFile(target))
                        return false;
                } else if (!g_setup.replaceAll && reply == kReplaceCancel) {
                    return false;
                } else if (g_setup.replaceAll || reply != kReplaceKeep) {
                    bool transferred = false;
                    if (!transferWithRetry(source, target, storedPlain, &transferred))
                        return false;
                    if (transferred) {
                        setArchiveOnlyChecked(target);
                        if (!logInstalledFile(target))
                            return false;
                    }
                }
            }
        }
        // Ignored records count as passed here though the counting pass left them out; each one
        // before the last transferable record ends the loop one record early, as it always has.
        g_setup.bytesDonePacked += record.transferSize;
        if (++g_setup.filesDone >= g_setup.filesToTransfer)
            break;
    }
    if (!logFilesMadeLater())
        return false;
    return SetProgress(static_cast<std::int64_t>(g_setup.bytesDonePacked),
                       static_cast<std::int64_t>(g_setup.bytesTotalPacked));
}
