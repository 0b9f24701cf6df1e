// The rules for the names a data file carries (file names, sub-folders, link names, the product
// name). The package builder refuses a description that breaks them; the setup program refuses a
// data file that does, since a name such as "..\..\x" would lead its writes and deletions out of
// the product's folders.
#pragma once

#include <string_view>

// ---- functions ------------------------------------------------------------------------------

// Why text holds a control character, or null when it holds none.
const char* plainTextProblem(std::string_view text);
// Why name is not one plain file or folder name (no separators, so no drive, UNC or stream; no
// reserved characters, not "." or "..", no closing blank or dot, no device name), or null when
// it is. The product name, which becomes a Start-menu folder, follows this rule too.
const char* fileNameProblem(std::string_view name);
// Why folder is not a relative folder of plain names joined by backslashes, or null when it is
// (the empty folder is fine). When one name of it is at fault, *part is set to that name and the
// problem is that name's.
const char* relativeFolderProblem(std::string_view folder, std::string_view* part);
