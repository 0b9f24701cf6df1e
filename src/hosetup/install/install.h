// Interface of the installation: the sequence and its steps (backup, folders, the transfer of the
// files, the unpacker it starts).
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

// install/file_transfer.cpp
bool CopyFiles();
int DecideReplace(int index, const char* target, const char* source, bool replaceWithoutAsking, bool* keep);
bool CompareFileTimes(const char* target, const char* source, char* targetText, char* sourceText,
                      std::uint64_t sourceSize);   // texts of kMessageCapacity characters
void FormatDatePattern(const SYSTEMTIME& time, const char* pattern, char* text, std::size_t capacity);
bool CopyPlainFile(const char* source, const char* target);
bool Unpack(const char* archive, const char* targetFile, const char* options);
