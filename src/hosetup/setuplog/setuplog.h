// Interface of the setup log hosetup.log and its journal hosetup.journal: the record of what an
// installation created, written by the installation and read back by the removal. The lines'
// format is known here alone: banners, "#" folder lines and bare file paths, never translated.
#pragma once

#include <windows.h>
#include <cstddef>

// ---- constants ------------------------------------------------------------------------------

// The marker line before the path of a file that an installation kept as it was.
constexpr char kSkippedFileMarker[] = "***** Skipped file:";

// ---- types ----------------------------------------------------------------------------------

// What a line of the setup log stands for, told by its first character.
enum class LogLineKind {
    Banner,   // "*": a banner or the "Skipped file" marker
    Folder,   // "#": a created folder, with its closing backslash
    File,     // anything else, the path after a "Skipped file" marker too
};

// ---- functions ------------------------------------------------------------------------------

// setuplog/log_lines.cpp: the lines' format.
LogLineKind classifyLogLine(const char* line);
// The path a folder or file line names: a folder line's after its "#", a file line whole.
const char* logLinePath(const char* line);
// The line of a created folder: "#" + folder, into line of capacity characters.
void formatFolderLine(char* line, std::size_t capacity, const char* folder);

// setuplog/record_lines.cpp
// text + CR LF in one write, flushed to the disk when durable; a write that fails leaves the file
// as it was before (a short write is cut off again). False for the empty handle.
bool writeWholeLine(HANDLE file, const char* text, bool durable);
// writeWholeLine until it succeeds or the user (a silent run after its retries) gives up; the
// alert names the common data folder + name. False when the run is to stop.
bool writeRecordLine(HANDLE file, const char* name, const char* text, bool durable);

// setuplog/setup_log.cpp
void formatLogTime(char* buffer, std::size_t capacity);  // "YYYY-MM-DD hh:mm:ss", local time
const char* logModeWord();                              // "update" or "standard"
// folder + the log's file name; false (path empty) when it would not fit.
bool SetupLogPath(const char* folder, char* path, std::size_t capacity);
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
// The marker and the path of a file the installation kept; false when the run is to stop.
bool LogSkippedFile(const char* path);

// setuplog/setup_journal.cpp: what is about to be created, on the disk before it is.
bool JournalPath(const char* folder, char* path, std::size_t capacity);
// A file (or, as "#" + folder, a folder) about to be created; false when the run is to stop.
bool JournalFile(const char* path);
bool JournalFolder(const char* folder);
// The product is registered and the log names all the journal holds: the log is made durable and
// the journal emptied.
void SettleJournal();
