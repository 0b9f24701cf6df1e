// Interface of the help viewer binding: the HTML Help control is found and bound on first use,
// so a system without it still runs the setup; help then silently does nothing.
#pragma once

#include <windows.h>
#include <cstddef>

#include "core/setup_state.h"   // HelpViewer, HelpEntry

// ---- constants ------------------------------------------------------------------------------

// Where the HTML Help control registers its module, below HKEY_LOCAL_MACHINE; the key's default
// value is the module's path. Only the machine's classes are read: HKEY_CLASSES_ROOT merges in
// the user's own class registrations, which a standard user may write and this program, running
// elevated, must not follow.
constexpr char kHelpViewerClassKey[] =
    "Software\\Classes\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
// Loaded from the system folder when the registry does not lead to a loadable module.
constexpr char kHelpViewerModuleName[] = "hhctrl.ocx";
// The control exports its entries by ordinal; the program calls the narrow one.
constexpr WORD kHtmlHelpAOrdinal = 14;
constexpr std::size_t kHelpPathCapacity = 260;
constexpr UINT kHelpDisplayTopic = 0;          // HH_DISPLAY_TOPIC: the file's default topic

// ---- functions ------------------------------------------------------------------------------

// help/help_viewer.cpp
void ShowSetupHelp();
HWND HtmlHelpA(HWND owner, const char* file, UINT command, DWORD_PTR data);

// help/viewer_binding.cpp
// The module path from the default value of classKey: REG_EXPAND_SZ is expanded, other types
// are taken as they stand. False when the key or value is missing or the path does not fit in
// kHelpPathCapacity characters, terminator included.
bool readViewerModulePath(const char* classKey, char* path, std::size_t capacity);
// The entry's function, binding it (and loading the viewer) on the first call; null when the
// viewer or the entry cannot be had, now or on an earlier call.
FARPROC bindHelpEntry(HelpViewer* viewer, HelpEntry* entry);
