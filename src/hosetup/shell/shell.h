// Interface of the program shell: start-up, command line, operating-system identification,
// error reports, the language module and the main window. The setup state itself is declared in
// setup_state.h.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "shell/setup_state.h"

// ---- constants ------------------------------------------------------------------------------

constexpr UINT kRunCommand = 100;              // posted to the main window to start the run
constexpr std::size_t kCommandTokenCapacity = 760;
constexpr std::size_t kWindowsNameCapacity = 32;
constexpr std::size_t kErrorReportCapacity = 760;
constexpr char kMainWindowClass[] = "HOSETUP6_MainWClass";
constexpr char kProductWindowClass[] = "HOVISTREL_MainWClass"; // the installed product's window

// ---- functions ------------------------------------------------------------------------------

// shell/main.cpp: the entry point of hosetup.exe; returns the process exit code.
int runSetupProgram(HINSTANCE instance, const char* commandLine);

// shell/command_line.cpp
bool getCommandLineToken(const char* commandLine, int index, char* buffer, std::size_t bufferSize);
void scanCommandLine(const char* commandLine);

// shell/os_version.cpp
bool IsWindowsAtLeast(WORD major, WORD minor, WORD servicePackMajor);
bool IsServerSystem();
std::uint32_t GetBuildNumber();
void GetWindowsName(char* buffer);  // buffer of kWindowsNameCapacity characters
// The naming table alone, for a system whose numbers are known.
void nameWindowsVersion(unsigned major, unsigned minor, std::uint32_t build, bool server,
                        char* buffer, std::size_t capacity);

// shell/error_report.cpp
void reportError(const char* moduleWord, std::uint32_t line, const char* text);
void formatErrorReport(const char* moduleWord, std::uint32_t line, const char* text,
                       char* buffer, std::size_t capacity);

// shell/language.cpp
bool bindLanguageModule(HINSTANCE instance, void* languageInfo);
bool unbindLanguageModule();

// shell/main_window.cpp
bool registerMainWindowClass(HINSTANCE instance);
bool createMainWindow(HINSTANCE instance);
HBITMAP loadPngResource(HINSTANCE instance, const char* name, std::uint32_t* width, std::uint32_t* height);
void mainWindowSize(double scale, int screenWidth, int screenHeight, DWORD style,
                    int* x, int* y, int* width, int* height);
void scheduleProgramFilesDeletion();
