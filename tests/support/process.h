// Running the real programs from a test: the test's own files and folders, a child process started
// and waited for with a time limit, and a message box read and answered as a person would.
#pragma once

#include <windows.h>

#include <string>

// ---- constants ------------------------------------------------------------------------------

constexpr DWORD kNoExitCode = 0xFFFFFFFF;   // the process did not end in time (it was killed)

// ---- types ----------------------------------------------------------------------------------

struct ChildProcess { HANDLE process = nullptr; DWORD id = 0; };
struct MessageBoxSeen { std::string caption, text; };

// ---- functions ------------------------------------------------------------------------------

std::string testBinFolder();                      // folder of the running test program, with '\'
std::string makeTempFolder(const char* prefix);   // a new empty folder, with '\'
void removeTree(const std::string& folder);       // a folder with all it holds, or a file
bool copyFileTo(const std::string& from, const std::string& to);
bool fileExists(const std::string& path);
std::string readFile(const std::string& path);    // "" when it cannot be read
bool startProcess(const std::string& commandLine, ChildProcess* child);
// Waits for the child to end; kills it after timeoutMs and returns kNoExitCode then.
DWORD waitForExit(ChildProcess* child, DWORD timeoutMs);
DWORD runProcess(const std::string& commandLine, DWORD timeoutMs);   // start, wait, exit code
// Waits for a message box of the process, reads it, and closes it with `command` (IDOK, ...); false if none came.
bool answerMessageBox(DWORD processId, DWORD timeoutMs, int command, MessageBoxSeen* seen);
