// Interface of the program shell, the top floor: start-up, command line, operating-system
// identification, the language module, the run's setup-state lifecycle and the main window that
// dispatches the run.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "core/core.h"

// ---- constants ------------------------------------------------------------------------------

constexpr UINT kRunCommand = 100;              // posted to the main window to start the run
constexpr std::size_t kCommandTokenCapacity = 760;

// ---- functions ------------------------------------------------------------------------------

// shell/main.cpp: the entry point of hosetup.exe; returns the process exit code.
int runSetupProgram(HINSTANCE instance, const char* commandLine);

// shell/command_line.cpp
bool getCommandLineToken(const char* commandLine, int index, char* buffer, std::size_t bufferSize);
void scanCommandLine(const char* commandLine);

// shell/os_version.cpp
bool IsWindowsAtLeast(WORD major, WORD minor, WORD servicePackMajor);

// shell/setup_lifecycle.cpp
// Fills the state once the main window exists: the program folder, screen metrics and scale,
// the splash picture, cursors, the body font; then resetSetupState. False after a report.
bool initialiseSetup();
// Prepares a run: counters and choices to their start values, the temporary folder as the
// current one, and the detection of the folders.
void resetSetupState();
// Releases what the run holds: the data file's arrays, the progress window, GDI objects, the
// log after its EXITING banner, and the held unpacker.
void exitSetup();

// shell/language.cpp
// Loads holang.dll from the program's folder when it is a module built with this program, and
// binds its text tables; false after an error report, with nothing of a refused module run.
bool loadLanguageModule();
// Binds the loaded module's entry points and initialises it; false after an error report.
bool bindLanguageModule(HINSTANCE instance, void* languageInfo);
bool unbindLanguageModule();

// shell/main_window.cpp
bool registerMainWindowClass(HINSTANCE instance);
bool createMainWindow(HINSTANCE instance);
void mainWindowSize(double scale, int screenWidth, int screenHeight, DWORD style,
                    int* x, int* y, int* width, int* height);
void scheduleProgramFilesDeletion();
