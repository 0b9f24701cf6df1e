// Interface of the setup description: the setup data file, directory identifiers and target
// paths, free space, and the detection of the folders and of an earlier installation.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "format/data_format.h"
#include "format/directory_ids.h"
#include "userfolders/userfolders.h"   // the user's shell folders the detection reads

// ---- constants ------------------------------------------------------------------------------

// Results of path composition.
constexpr int kPathComposed = 22;
constexpr int kNoPathHere = 20;
constexpr int kPathTooLong = 26;

// Results of the shortcut icon lookup.
constexpr int kIconPathFound = 40;
constexpr int kIconPlaceUnknown = 41;

// Free bytes that must remain beyond the files' sum.
constexpr std::uint64_t kFreeSpaceMargin = 1023;

// Error report line numbers of this subsystem.
constexpr std::uint32_t kLineHeaderAllocation = 1424;
constexpr std::uint32_t kLineFileArrayAllocation = 1480;
constexpr std::uint32_t kLineShortcutArrayAllocation = 1503;
constexpr std::uint32_t kLineFlagArrayAllocation = 1525;
constexpr std::uint32_t kLineInvalidDirectoryId = 1112;

// ---- functions ------------------------------------------------------------------------------

// setupdata/data_file.cpp
// Reads header, file records and shortcut records of the data file at path into the setup state.
// True when the whole file was read; on false nothing of it may be used (the counts are 0).
bool readSetupDataFile(const char* path);

// setupdata/directories.cpp
// Every path output is a buffer of kPathCapacity (260) characters.
// 22: path holds the target of file record fileIndex; 20: a backup entry or no place here;
// 26: too long (alert shown). category, coreMark and specialMark may be null.
int resolveFilePath(int fileIndex, char* path, unsigned* category, bool* coreMark, bool* specialMark);
// For a backup entry: 22 with both paths, 20 when the identifier has no backup place, 26 too long.
int resolveDirectoryPath(int fileIndex, char* targetPath, char* backupPath);
// 40: path is the icon file of shortcut record shortcutIndex; 41: its place is not in the table.
int resolveShortcutIconPath(int shortcutIndex, char* path);

// setupdata/free_space.cpp
// True when freeBytes leave room for sum plus the margin: the check's arithmetic alone.
bool hasRoomFor(std::uint64_t freeBytes, std::uint64_t sum);
// Sum of the sizes of the files that fall into categoryMask (identifiers ending in 9 excluded).
std::uint64_t sumFileSizes(unsigned categoryMask);
// True when the drive of installFolder has room for the files of categoryMask, else an alert.
bool checkFreeSpace(unsigned categoryMask);
// The grouped checks before an installation; true when all pass.
bool checkAllFreeSpace();

// setupdata/detection.cpp
// Fills the seven target folders and their default flags from the registry or the shell folders,
// then names this run's backup folder.
void DetectFolders();
// True when an installation of the product is recorded; sets updateInstall, logCarriedOver,
// laterVersionInstalled and previousCompileDate.
bool DetectEarlierInstallation();

// setupdata/backup_folder.cpp
// backupFolder := commonDataFolder + the backups root + a stamp of the current local time.
void NameBackupFolder();
// The same composition for a given base and time: base + root + "YYYY-MM-DD hhmmssmmm\".
void composeBackupFolder(const char* commonDataFolder, const char* backupsRoot,
                         const SYSTEMTIME& time, char* folder, std::size_t capacity);
