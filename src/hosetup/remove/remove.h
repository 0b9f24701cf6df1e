// Interface of the removal: the sequence and the deletion of what the setup log names.
#pragma once

#include <windows.h>

// ---- types ----------------------------------------------------------------------------------

// What the counting pass over the setup log found, and how it moved the bar.
struct LogLineCount {
    int counted = 0;       // lines that are not banners ("*")
    int folders = 0;       // folder lines ("#"), also in counted
    int reports = 0;       // progress reports made: one per ten counted lines
    int lastPercent = 0;   // the last one, 10 at least
};

// ---- functions ------------------------------------------------------------------------------

// remove/remove_sequence.cpp
// The whole removal; false when it stopped (no data file, no installation, a page or a progress
// report said stop, the log could not be read). What was deleted stays deleted.
bool RunRemoval();

// remove/logged_files.cpp
// Deletes every file and then every folder the log at commonDataFolder names; leaves the log
// open in logFile. False after the log's alert or a confirmed cancellation.
bool RemoveLoggedFiles();
// Reads the log from where it stands to its end; false when the user confirmed a cancellation.
bool countLogLines(HANDLE log, LogLineCount* count);
