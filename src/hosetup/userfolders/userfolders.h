// Interface of the user's own folders: the folders that the product's per-user settings key and
// the user's shell folders name, which a standard user can point anywhere. The elevated program
// takes such a folder only where the user could write anyway.
#pragma once

#include <cstddef>

// ---- functions ------------------------------------------------------------------------------

// userfolders/user_folders.cpp
// True when a folder named by a per-user value (the product's per-user settings key, the user's
// shell folders) is one the user could write anyway. Refused: a path that is not a plain
// "X:\..." folder (relative, UNC, "\\?\", "..", a stream); the Windows folder; the Program Files
// folders outside the product's installation folder; ProgramData outside its data folder; the
// system drive's root; another user's profile. Compared as canonical paths, links followed.
bool isUserWritableChoice(const char* path);
// A shell folder's path with its backslash, nothing created; false when it does not fit capacity. The user's own
// documents, application data, programs and desktop folders are taken only where the user could
// write anyway, else at their default location (the refused value noted), else not at all: empty
// and false.
bool UserShellFolder(int csidl, char* folder, std::size_t capacity);
// Remembers a refused per-user value ("name: value") for the log, each once.
void noteIgnoredFolderValue(const char* name, const char* value);
