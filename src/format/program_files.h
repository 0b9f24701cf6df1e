// The setup program's own files: what the package builder puts beside every distribution and
// into it as records, what a copy of the program started with -A schedules for deletion, and
// what the removal leaves to the next restart because the running program holds them.
#pragma once

#include <cstddef>

// ---- constants ------------------------------------------------------------------------------

constexpr char kSetupProgramName[] = "hosetup.exe";
constexpr char kLanguageModuleName[] = "holang.dll";
constexpr char kUnpackerName[] = "hounzip.exe";
constexpr char kSetupHelpName[] = "hosetup.chm";
constexpr char kSetupHelpIndexName[] = "hosetup.gid"; // written by the help viewer beside the file
constexpr char kSetupLogName[] = "hosetup.log";
// Beside the log: what a run is about to create, recorded before it exists (setuplog/setup_journal.cpp).
constexpr char kSetupJournalName[] = "hosetup.journal";

// ---- types ----------------------------------------------------------------------------------

// One own file and the roles it plays.
struct ProgramFile {
    const char* name;
    bool packaged;         // shipped by the package builder beside the data file and as a record
    bool heldByRemoval;    // in the installation folder and in use while the removal runs
};

// In the order of the restart deletions.
constexpr ProgramFile kProgramFiles[] = {
    {kLanguageModuleName, true, true},
    {kSetupHelpName, true, true},
    {kSetupHelpIndexName, false, true},
    {kSetupProgramName, true, true},
    {kSetupLogName, false, false},
    {kUnpackerName, true, false},
};
