// The one place where the two builds differ: finding the folder of the running hopack, where the
// release build gathers the setup program's own files, and handing a signing command to the
// system's command interpreter.
#include "hopack.h"

#include <cstdlib>

#ifdef _WIN32
#include <windows.h>

fs::path ExecutableFolder(const char* argv0)
{
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof(path));
    if (length == 0 || length >= sizeof(path)) return fs::absolute(argv0).parent_path();
    return fs::path(path).parent_path();
}

// Inside double quotes cmd takes & | < > ^ literally but still expands %NAME%, and a path cannot
// hold a double quote of its own; so a path with % is refused rather than quoted wrongly.
bool QuoteForCommand(const fs::path& path, std::string& quoted)
{
    const std::string text = path.string();
    if (text.find_first_of("%\"") != std::string::npos) return false;
    quoted = "\"" + text + "\"";
    return true;
}

// system() runs "cmd /c COMMAND", and cmd drops the first and the last double quote of a command
// that starts with one; the outer pair added here is what it drops, so the template's own quotes
// and the quoted path stay as written.
int RunCommand(const std::string& command)
{
    std::fflush(nullptr);
    return std::system(("\"" + command + "\"").c_str());
}

#else

#include <sys/wait.h>

fs::path ExecutableFolder(const char* argv0)
{
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return fs::absolute(argv0).parent_path();
    return self.parent_path();
}

// Single quotes keep everything literal in /bin/sh; a single quote itself is closed, escaped and
// reopened.
bool QuoteForCommand(const fs::path& path, std::string& quoted)
{
    quoted = "'";
    for (char c : path.string()) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    quoted += "'";
    return true;
}

int RunCommand(const std::string& command)
{
    std::fflush(nullptr);
    const int status = std::system(command.c_str());
    return status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#endif
