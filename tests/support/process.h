// Running the real programs from a test: start a process, wait for it with a time limit, find its
// top-level windows and answer its message boxes, as a person at the screen would.
#pragma once

#include <windows.h>
#include <functional>
#include <string>
#include <vector>

// ---- constants ------------------------------------------------------------------------------

constexpr DWORD kNoExitCode = 0xFFFFFFFF;   // the process did not end in time (it was killed)

// ---- types ----------------------------------------------------------------------------------

struct ChildProcess {
    HANDLE process = nullptr;
    DWORD id = 0;
};

struct MessageBoxSeen {
    std::string caption;
    std::string text;
};

// ---- functions ------------------------------------------------------------------------------

// tests/support/process.cpp
std::string testBinFolder();                      // folder of the running test program, with '\'
std::string makeTempFolder(const char* prefix);   // a new empty folder, with '\'
void removeTree(const std::string& folder);
bool copyFileTo(const std::string& from, const std::string& to);
bool fileExists(const std::string& path);

bool startProcess(const std::string& commandLine, ChildProcess* child);
// Waits for the child to end; kills it after timeoutMs and returns kNoExitCode then.
DWORD waitForExit(ChildProcess* child, DWORD timeoutMs);
// Runs a program to its end (or the time limit) and returns its exit code.
DWORD runProcess(const std::string& commandLine, DWORD timeoutMs);

std::vector<HWND> topLevelWindowsOf(DWORD processId, const char* className);
// Waits for a message box (dialog class "#32770") of the process, reads it, and closes it with
// the given command (IDOK, IDCANCEL, ...). False when none appeared in time.
bool answerMessageBox(DWORD processId, DWORD timeoutMs, int command, MessageBoxSeen* seen);
