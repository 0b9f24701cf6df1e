// Path texts below the exported string family: the parts of a path and its parent, the tests of
// a well-formed folder path. Pure text work on ANSI paths of at most kPathCapacity characters;
// nothing here touches the file system.
#pragma once

#include <cstddef>

// ---- constants ------------------------------------------------------------------------------

constexpr std::size_t kPathCapacity = 260;   // the system's path limit, terminator included

// ---- functions ------------------------------------------------------------------------------

// strings/path_parts.cpp
// Drive and folder of path with a closing backslash; empty (and false) for a path that starts
// with "*", which marks a folder as not in use.
bool FolderOfPath(const char* path, char* folder, std::size_t capacity);
// True for an absolute drive ("C:\x\") or UNC ("\\server\share\x\") folder path with at least one
// element after the root and no empty element.
bool IsFolderPath(const char* path);
// Length of the root of a folder path with its closing separator ("C:\" is 3), 0 when it has none.
std::size_t folderRootLength(const char* path);
// The parent of a folder path, with its closing backslash; on failure parent keeps what it held,
// so a caller may compute the parent into the buffer that holds the path.
bool ParentFolder(const char* path, char* parent, std::size_t capacity);
// path := first + second + third (second and third may be null), only when the whole fits in
// capacity; otherwise path is empty and the answer false. For paths that are deleted, created or
// read as the product's own: never used cut.
bool composePath(char* path, std::size_t capacity, const char* first, const char* second,
                 const char* third = nullptr);
// True when path begins with folder (a folder path with its closing backslash, so that a sibling
// whose name starts alike does not count), ignoring case; folder itself counts. False for an
// empty folder.
bool PathStartsWithFolder(const char* path, const char* folder);
// Removes one closing "\" or "/".
void StripTrailingSeparator(char* path);
