// The one process-wide record of a setup run. It lives in static storage, is zero-filled at entry
// and is read and written by every subsystem through the names below. Text fields are fixed ANSI
// arrays written only through the bounded string family; every folder field ends in a backslash
// once set, and "*" in a folder field means "not known yet, take the default".
#pragma once

#include <windows.h>
#include <cstdint>

#include "format/data_format.h"
#include "strings/paths.h"

// ---- constants ------------------------------------------------------------------------------

constexpr std::size_t kTextCapacity = 256;
constexpr std::size_t kMessageCapacity = 760;
constexpr std::size_t kRegistryKeyCapacity = 1024;
constexpr std::size_t kLanguageInfoSize = 68;
// Per-user folder values the detection refused: one slot for each value it reads (three of the
// product's settings key, four of the user's shell folders), each "name: value".
constexpr std::size_t kIgnoredFolderSlots = 8;
constexpr std::size_t kIgnoredFolderTextCapacity = kPathCapacity + 32;

// Process exit codes.
constexpr std::uint32_t kExitSuccess = 0;   // the run finished
constexpr std::uint32_t kExitLeftAtStart = 1; // the user left the first page
constexpr std::uint32_t kExitFailure = 2;   // the run or the start-up failed
constexpr std::uint32_t kExitProductRunning = 3; // set by the welcome/start pages while the product runs

// ---- types ----------------------------------------------------------------------------------

// The help viewer module (ui/viewer_binding.cpp): where it is looked for, and the handle once
// loaded. The module is never unloaded: the viewer's window may outlive the run.
struct HelpViewer {
    const char* classKey;    // below HKEY_LOCAL_MACHINE
    const char* moduleName;  // the fallback, loaded from the system folder
    HMODULE module;
};

// One entry of the help viewer, bound on its first call. A failed binding is remembered for the
// rest of the run and never retried.
struct HelpEntry {
    WORD ordinal;
    FARPROC function;
    bool failed;
};

// The fields come in three groups, each cleared as one block at entry (see clearSetupState):
// group 1 runs from instance to skinBannerBrush, group 2 from programFolder to fileRecords, group
// 3 from previousCompileDate to cancelConfirmed.
struct SetupState {
    // Group 1: handles.
    HINSTANCE instance;
    HMODULE languageModule;
    HANDLE logFile;            // 0 when no log is open
    HANDLE journalFile;        // the log's journal, open with the log (0 when not)
    HANDLE unpackerFile;       // hounzip.exe, held from its check to the run's end; 0 before
    HANDLE unpackerJob;        // the job every unpacker runs in, with unpackerFile
    HWND mainWindow;
    HWND progressDialog;       // 0 when no progress window exists
    HBITMAP splashBitmap;
    std::uint32_t splashWidth;
    std::uint32_t splashHeight;
    HCURSOR arrowCursor;
    HCURSOR waitCursor;
    HFONT aboutFont;
    // The help viewer and the entry the help button calls (ui/help_viewer.cpp): zero until the
    // first call binds them.
    HelpViewer helpViewer;
    HelpEntry helpEntry;
    // The skin's fonts and brushes (ui/skin.cpp): made on first use, freed by releaseSkin. The
    // fonts are made anew when the scale changes.
    double skinFontScale;
    HFONT skinBodyFont;
    HFONT skinTitleFont;
    HBRUSH skinBodyBrush;
    HBRUSH skinFooterBrush;
    HBRUSH skinBannerBrush;

    // Group 2: program and run.
    char programFolder[kPathCapacity];
    char unpackerPath[kPathCapacity];   // final path of the checked hounzip.exe, with unpackerFile
    unsigned char languageInfo[kLanguageInfoSize]; // filled by the language module only
    std::uint32_t* fileFlags;  // fileCount + 1 slots
    std::uint32_t exitCode;
    // Set when the run has ended and posted its own closing request (shell/main_window.cpp).
    unsigned char runEnded;
    int screenWidth;
    int screenHeight;
    int colourDepth;
    int dpiX;
    int dpiY;
    double scale;              // (dpiX + dpiY) / 192
    unsigned char optionSilent;
    unsigned char optionRemove;
    unsigned char optionPerUser;
    char productText[kTextCapacity];
    char packageCompileDate[kTextCapacity];
    char registryKey[kRegistryKeyCapacity];
    char productFolderWord[kPathCapacity];
    SetupDataHeader* headerBuffer; // kSetupHeaderBlockSize bytes
    FileRecord* fileRecords;       // fileCount + 1 records

    // Group 3: folders and counters.
    char previousCompileDate[kTextCapacity];
    char tempFolder[kPathCapacity];
    char sourceFolder[kPathCapacity];
    char backupFolder[kPathCapacity];
    char installFolder[kPathCapacity];
    char commonDataFolder[kPathCapacity];
    char userDataFolder[kPathCapacity];
    char documentsFolder[kPathCapacity];
    char settingFolder[kPathCapacity];
    char drawingFolder[kPathCapacity];
    char libraryFolder[kPathCapacity];
    char progressText[kMessageCapacity];
    unsigned char updateInstall;
    unsigned char installFolderDefault;
    unsigned char drawingFolderDefault;
    unsigned char libraryFolderDefault;
    unsigned char settingFolderDefault;
    unsigned char commonDataFolderDefault;
    unsigned char userDataFolderDefault;
    unsigned char documentsFolderDefault;
    // Wizard and run choices, reset to 0, 0, 1, 0 in this order.
    unsigned char launchAfterFinish; // the install finish page's check box
    unsigned char replaceAll;        // the replace query was answered "replace all"
    unsigned char startOption;       // carried through the install start page
    unsigned char cancelRequested;   // the progress window's cancel button was clicked
    // Counts of the data file and the copy step's file counters, cleared together.
    std::int32_t fileCount;
    std::int32_t shortcutCount;
    std::int32_t filesToTransfer;
    std::int32_t filesDone;
    // Further run counters.
    std::uint64_t bytesTotalInstalled;
    std::uint64_t bytesTotalPacked;
    std::uint64_t bytesDonePacked;
    std::uint32_t progressStage;
    std::int64_t progressValue;
    std::int64_t progressTotal;
    unsigned char logCarriedOver;
    unsigned char laterVersionInstalled;
    unsigned char perUser;
    ShortcutRecord* shortcutRecords; // shortcutCount + 1 records
    // Filled by the folder detection, written to the log when the installation opens it.
    char ignoredFolderValues[kIgnoredFolderSlots][kIgnoredFolderTextCapacity];
    std::uint32_t ignoredFolderCount;
    // "Yes" was answered to a cancel question: every later progress report stops the work, so a
    // step that went on past the answer still ends the run at its next report.
    unsigned char cancelConfirmed;

    // Kept outside the groups: group 2's clearing leaves it, the entry point clears it itself.
    unsigned char optionSourceFolder;
};

extern SetupState g_setup;

// ---- functions ------------------------------------------------------------------------------

// core/setup_state.cpp
// Zero-fills the three groups of the state and the source-folder option.
void clearSetupState();
// Frees the data file's arrays (header, records, flags) and leaves their pointers null; the
// counts are set to 0 with them, so nothing half-freed can be read.
void releaseDataRecords();
