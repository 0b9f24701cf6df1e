// Interface of the product's links: the Start-menu group and the desktop link, made by the
// installation and removed by both runs, under this release's name and the names earlier releases
// used.
#pragma once

struct IShellLinkA;
struct IPersistFile;

// ---- types ----------------------------------------------------------------------------------

// Where the link of shortcut record index points and which icon it shows (each a buffer of
// kPathCapacity characters); false when that record gets no link in this installation.
using ShortcutPaths = bool (*)(int index, char* icon, char* target);

// ---- functions ------------------------------------------------------------------------------

// links/links.cpp
// False when the run is to stop: a cancel confirmed at one of its reports. A link that cannot be
// made is reported, and the installation goes on without it. pathsOf places each record's link.
bool CreateShortcuts(ShortcutPaths pathsOf);
// Deletes the desktop link and the Start-menu group of this product and of earlier releases (in a
// per-user installation only the groups' link files, and the groups they leave empty). False when
// a cancel was confirmed at its report.
bool RemoveShortcuts();
const char* const* earlierLinkNames();   // ended by an entry whose first byte is 4
bool MakeShellLink(IShellLinkA* link, IPersistFile* persist, const char* target, const char* iconFile,
                   int iconIndex, const char* linkFile, const char* workingFolder, const char* arguments,
                   int showCommand, const char* description);
