// Interface of the installation: the sequence, its steps, the setup log and the file and process
// primitives that the installation and the removal stand on.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

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

// install/file_primitives.cpp
bool PathExists(const char* path);                  // a file or a folder
bool DeleteFileAt(const char* path);
bool RemoveFolder(const char* folder);              // false at once for an invalid folder path
bool OpenForReading(HANDLE* file, const char* path);
bool CreateForWriting(HANDLE* file, const char* path);
bool CreateFolder(const char* folder);              // one level; true when it exists already
bool OpenForAppending(HANDLE* file, const char* path);
std::uint64_t GetSize(HANDLE file);
std::uint32_t ReadBytes(HANDLE file, void* buffer, std::uint32_t count);
std::uint32_t WriteBytes(HANDLE file, const void* buffer, std::uint32_t count);
bool Seek(HANDLE file, std::int64_t distance, int origin);   // origin 0 start, 1 current, 2 end
// One line that ended in a pair of line-end bytes; blank-led lines are skipped.
bool ReadTextLine(HANDLE file, char* buffer, std::size_t capacity);
bool WriteLogLine(HANDLE file, const char* text, std::size_t length);
bool CloseFile(HANDLE file);
bool IsFolderPath(const char* path);                // absolute drive or UNC folder, no empty element
bool ParentFolder(const char* path, char* parent, std::size_t capacity);
void StripTrailingSeparator(char* path);
void FolderOfPath(const char* path, char* folder, std::size_t capacity);
bool CreateFolderChain(const char* path, bool logIt);
void DeleteFolderTree(const char* folder);
void DeleteAtRestart(const char* path);             // a file or an empty folder, at the next restart

// install/process_wait.cpp
// Waits for a process to end while dispatching window messages; false when the wait failed.
bool waitForProcessPumping(HANDLE process, DWORD* exitCode);
bool copyFilePumping(const char* source, const char* target, bool failIfExists);

// install/shortcuts.cpp
bool CreateShortcuts();
bool MakeShellLink(struct IShellLinkA* link, struct IPersistFile* persist, const char* target, const char* iconFile,
                   int iconIndex, const char* linkFile, const char* workingFolder, const char* arguments,
                   int showCommand, const char* description);

// install/setup_log.cpp
void formatLogTime(char* buffer, std::size_t capacity);  // "YYYY-MM-DD hh:mm:ss", local time
const char* logModeWord();                              // "update" or "standard"
bool OpenLog();
void LogText(const char* text);                         // one line, when a log is open
void LogBanner(const char* format);                     // format takes the mode word and the time
void LogTimedLine(const char* format);                  // format takes the time only

// install/file_transfer.cpp
bool CopyFiles();
int DecideReplace(int index, const char* target, const char* source, bool replaceWithoutAsking, bool* keep);
bool CompareFileTimes(const char* target, const char* source, char* targetText, char* sourceText,
                      std::uint64_t sourceSize);   // texts of kMessageCapacity characters
void FormatDatePattern(const SYSTEMTIME& time, const char* pattern, char* text, std::size_t capacity);
bool CopyPlainFile(const char* source, const char* target);
bool Unpack(const char* archive, const char* targetFile, const char* options);
