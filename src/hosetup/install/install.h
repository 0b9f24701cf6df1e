// Interface of the installation: the sequence and its steps, the setup log (written here, read by
// the removal), the product's links, and the file and process primitives (file_primitives.h)
// that the installation and the removal stand on.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "install/file_primitives.h"

// ---- types ----------------------------------------------------------------------------------

// What a line of the setup log stands for, told by its first character.
enum class LogLineKind {
    Banner,   // "*": a banner or the "Skipped file" marker
    Folder,   // "#": a created folder, with its closing backslash
    File,     // anything else, the path after a "Skipped file" marker too
};

// ---- functions ------------------------------------------------------------------------------

// install/install_sequence.cpp
bool RunInstallation();

// install/backup.cpp
bool BackupFiles();
bool BackupSettingsFiles();

// install/directories.cpp
bool CreateBackupDirectories();
bool CreateDirectories();

// install/failed_copy.cpp
// Retry (7), skip (8) or cancel (2) after the attempt-th failed copy of a file.
int askAfterFailedCopy(const char* message, int attempt);
// Retry (7) or cancel (2) after the attempt-th failed write of a record the removal needs (the
// log, its journal): skipping it would leave something no removal finds.
int askAfterFailedWrite(const char* path, int attempt);

// install/unpacker_start.cpp
// Starts hounzip.exe from the program's folder with commandLine, only when it is the unpacker
// built with this program. It is checked at its first start in a run and held open from then on
// (g_setup.unpackerFile), so that every start of the run runs the file checked. False, with
// nothing started, when it is not that file or cannot be started.
bool startUnpacker(char* commandLine, STARTUPINFOA* startup, PROCESS_INFORMATION* process);
// Closes the held unpacker; the end of the run.
void releaseUnpacker();
// The random part of the unpacker's temporary file name, which the installation chooses so that it
// can journal the name before the unpacker makes the file; a name nobody can foresee, because a
// file planted under it makes the unpacker refuse.
std::uint32_t unpackerTempValue();

// install/process_wait.cpp
// Waits for a process to end while dispatching window messages; false when the wait failed.
bool waitForProcessPumping(HANDLE process, DWORD* exitCode);
// A checked copy (copyChecked) that keeps the window alive; the source of a transfer lies in the
// distribution, a foreign folder, every other source in the product's own folders.
bool copyFilePumping(const char* source, const char* target, bool failIfExists, bool sourceInForeignFolder);

// install/links.cpp: the product's links, made by the installation and removed by both runs.
// False when the run is to stop: a cancel confirmed at one of its reports. A link that cannot be
// made is reported, and the installation goes on without it.
bool CreateShortcuts();
// Deletes the desktop link and the Start-menu group of this product and of earlier releases (in a
// per-user installation only the groups' link files, and the groups they leave empty). False when
// a cancel was confirmed at its report.
bool RemoveShortcuts();
const char* const* earlierLinkNames();   // ended by an entry whose first byte is 4
bool MakeShellLink(struct IShellLinkA* link, struct IPersistFile* persist, const char* target, const char* iconFile,
                   int iconIndex, const char* linkFile, const char* workingFolder, const char* arguments,
                   int showCommand, const char* description);

// install/record_lines.cpp
// text + CR LF in one write, flushed to the disk when durable; a write that fails leaves the file
// as it was before (a short write is cut off again). False for the empty handle.
bool writeWholeLine(HANDLE file, const char* text, bool durable);
// writeWholeLine until it succeeds or the user (a silent run after its retries) gives up; the
// alert names the common data folder + name. False when the run is to stop.
bool writeRecordLine(HANDLE file, const char* name, const char* text, bool durable);

// install/setup_log.cpp
void formatLogTime(char* buffer, std::size_t capacity);  // "YYYY-MM-DD hh:mm:ss", local time
const char* logModeWord();                              // "update" or "standard"
// folder + the log's file name; false (path empty) when it would not fit.
bool SetupLogPath(const char* folder, char* path, std::size_t capacity);
LogLineKind classifyLogLine(const char* line);
// CreateFolderChain with the alert of a path that is no folder path; with logIt each level is
// journaled before it is made and logged as a "#" line after. False when the run is to stop.
bool MakeFolderChain(const char* path, bool logIt);
// Opens the log and its journal, writes the STARTING banner and takes over what an interrupted
// run journaled. False when the run is to stop; true without a log when the user chose so.
bool OpenLog();
// Closes the log and its journal, after the EXITING banner when exitBanner is set.
void CloseLog(bool exitBanner);
// Each writes one line when a log is open; false when it could not be written and the run is to
// stop (the user was asked, or a silent run tried again).
bool LogText(const char* text);
bool LogBanner(const char* format);                     // format takes the mode word and the time
bool LogTimedLine(const char* format);                  // format takes the time only
// One "*****" line per per-user folder value the detection ignored (setupdata's note).
bool LogIgnoredFolderValues();
// Copies what an interrupted run left in the journal into the log, under a banner.
bool TakeOverJournal();

// install/setup_journal.cpp: what is about to be created, on the disk before it is.
bool JournalPath(const char* folder, char* path, std::size_t capacity);
// A file (or, as "#" + folder, a folder) about to be created; false when the run is to stop.
bool JournalFile(const char* path);
bool JournalFolder(const char* folder);
// The product is registered and the log names all the journal holds: the log is made durable and
// the journal emptied.
void SettleJournal();

// install/file_transfer.cpp
bool CopyFiles();
int DecideReplace(int index, const char* target, const char* source, bool replaceWithoutAsking, bool* keep);
bool CompareFileTimes(const char* target, const char* source, char* targetText, char* sourceText,
                      std::uint64_t sourceSize);   // texts of kMessageCapacity characters
void FormatDatePattern(const SYSTEMTIME& time, const char* pattern, char* text, std::size_t capacity);
bool CopyPlainFile(const char* source, const char* target);
bool Unpack(const char* archive, const char* targetFile, const char* options);
