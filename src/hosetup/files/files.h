// File, folder and process primitives the installation, the removal, the setup log and the links
// stand on: each is one system call or a short loop of them with a fixed rule for success. They
// show nothing and log nothing; their callers do. The empty (zero) handle means no file: every handle operation fails
// for it without calling the system.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "strings/paths.h"

// ---- constants ------------------------------------------------------------------------------

// A folder path of kPathCapacity characters has at most this many levels below its root.
constexpr std::size_t kMaxFolderLevels = kPathCapacity / 2;

// ---- types ----------------------------------------------------------------------------------

// What a folder-tree deletion does with an entry it lists. A folder link (a junction or a
// symbolic link to a folder) is removed itself, never entered: it may point anywhere.
enum class TreeEntry { File, Folder, FolderLink };

// How a checked copy treats its ends. A source in the product's own folders must be reached
// without any link; one in a foreign folder (the distribution, which may lie on a substituted or
// mapped drive) only must not be a link itself.
struct CopyRules {
    bool failIfExists;
    bool sourceInForeignFolder;
    void (*eachChunk)();   // called after every chunk copied (may be null): keeps a window alive
};

// How a folder chain ended.
enum class ChainStep { Made, Refused, Stopped };

// Folder levels, each a whole path with its closing backslash.
struct FolderLevels {
    std::size_t count;
    char level[kMaxFolderLevels][kPathCapacity];
};

// ---- functions ------------------------------------------------------------------------------

// files/checked_files.cpp: every file or folder the program deletes, creates, writes, copies or
// appends to is opened without following a link at its name, and the handle's final path must be
// the path meant (a link or junction above it makes them differ); otherwise the call fails with
// nothing done. The deletions act on the checked handle.
bool finalPathIs(HANDLE handle, const char* path);
HANDLE openChecked(const char* path, DWORD access, bool folder);    // an existing file or folder
// A file opened for writing: a new one, or (replace) an existing one emptied after the check.
HANDLE createChecked(const char* path, bool replace, DWORD share);
HANDLE openForAppendChecked(const char* path);
bool deleteChecked(const char* path, bool folder);
bool createFolderChecked(const char* folder);                       // one level; true when it is there
// True when handle is a plain file whose final path is that of path's folder + its name.
bool isPlainFileIn(HANDLE handle, const char* path);
bool copyChecked(const char* source, const char* target, const CopyRules& rules);
bool setArchiveOnlyChecked(const char* path);

// files/file_primitives.cpp
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
bool Seek(HANDLE file, std::int64_t distance, int origin);   // FILE_BEGIN, FILE_CURRENT or FILE_END
// One line that ended in a pair of line-end bytes; blank-led lines are skipped.
bool ReadTextLine(HANDLE file, char* buffer, std::size_t capacity);
bool WriteLogLine(HANDLE file, const char* text, std::size_t length);
bool CloseFile(HANDLE file);
// Creates every level of the folder path that is missing; the levels that did not exist before
// the call go into *missing (may be null), outermost first. beforeMaking (may be null) is told of
// each missing level just before it is made; when it answers false the chain stops there
// (Stopped). Refused, with nothing made, when path is not a folder path (IsFolderPath), or after
// the levels above it at a level that exists but is reached through a link or is no folder.
ChainStep CreateFolderChain(const char* path, FolderLevels* missing, bool (*beforeMaking)(const char* level) = nullptr);
TreeEntry classifyTreeEntry(DWORD attributes);
void DeleteFolderTree(const char* folder);
void DeleteAtRestart(const char* path);             // a file or an empty folder, at the next restart

// files/process_wait.cpp
// Waits for a process to end while dispatching window messages; false when the wait failed.
bool waitForProcessPumping(HANDLE process, DWORD* exitCode);
// A checked copy (copyChecked) that keeps the window alive; the source of a transfer lies in the
// distribution, a foreign folder, every other source in the product's own folders.
bool copyFilePumping(const char* source, const char* target, bool failIfExists, bool sourceInForeignFolder);
