#include "process.h"

#include <cstdio>

std::string testBinFolder()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    std::string folder(path);
    return folder.substr(0, folder.find_last_of("\\/") + 1);
}

std::string makeTempFolder(const char* prefix)
{
    char base[MAX_PATH] = {};
    GetTempPathA(sizeof base, base);
    static unsigned counter;
    for (;;) {
        char folder[MAX_PATH];
        std::snprintf(folder, sizeof folder, "%s%s-%lu-%u\\", base, prefix, GetCurrentProcessId(), ++counter);
        if (CreateDirectoryA(folder, nullptr))
            return folder;
        if (GetLastError() != ERROR_ALREADY_EXISTS)
            return std::string();
    }
}

void removeTree(const std::string& folder)
{
    if (folder.empty())
        return;
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA((folder + "*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string name = found.cFileName;
            if (name == "." || name == "..")
                continue;
            const std::string path = folder + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                removeTree(path + "\\");
            } else {
                SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
                DeleteFileA(path.c_str());
            }
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    RemoveDirectoryA(folder.c_str());
}

bool copyFileTo(const std::string& from, const std::string& to)
{
    return CopyFileA(from.c_str(), to.c_str(), FALSE) != FALSE;
}

bool fileExists(const std::string& path)
{
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool startProcess(const std::string& commandLine, ChildProcess* child)
{
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info = {};
    std::string line = commandLine;
    if (!CreateProcessA(nullptr, &line[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info))
        return false;
    CloseHandle(info.hThread);
    child->process = info.hProcess;
    child->id = info.dwProcessId;
    return true;
}

DWORD waitForExit(ChildProcess* child, DWORD timeoutMs)
{
    DWORD code = kNoExitCode;
    if (WaitForSingleObject(child->process, timeoutMs) == WAIT_OBJECT_0) {
        GetExitCodeProcess(child->process, &code);
    } else {
        TerminateProcess(child->process, kNoExitCode);
        WaitForSingleObject(child->process, 5000);
    }
    CloseHandle(child->process);
    child->process = nullptr;
    return code;
}

DWORD runProcess(const std::string& commandLine, DWORD timeoutMs)
{
    ChildProcess child;
    if (!startProcess(commandLine, &child))
        return kNoExitCode;
    return waitForExit(&child, timeoutMs);
}

namespace {

struct WindowSearch {
    DWORD processId;
    const char* className;
    std::vector<HWND> found;
};

BOOL CALLBACK collectWindow(HWND window, LPARAM data)
{
    auto* search = reinterpret_cast<WindowSearch*>(data);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search->processId || !IsWindowVisible(window))
        return TRUE;
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    if (!search->className || lstrcmpA(name, search->className) == 0)
        search->found.push_back(window);
    return TRUE;
}

BOOL CALLBACK appendChildText(HWND child, LPARAM data)
{
    char name[32] = {};
    GetClassNameA(child, name, sizeof name);
    if (lstrcmpiA(name, "Static") != 0)
        return TRUE;
    char text[2048] = {};
    GetWindowTextA(child, text, sizeof text);
    auto* all = reinterpret_cast<std::string*>(data);
    if (text[0]) {
        if (!all->empty())
            all->append("\n");
        all->append(text);
    }
    return TRUE;
}

} // namespace

std::vector<HWND> topLevelWindowsOf(DWORD processId, const char* className)
{
    WindowSearch search{processId, className, {}};
    EnumWindows(collectWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool answerMessageBox(DWORD processId, DWORD timeoutMs, int command, MessageBoxSeen* seen)
{
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < timeoutMs) {
        std::vector<HWND> boxes = topLevelWindowsOf(processId, "#32770");
        if (!boxes.empty()) {
            HWND box = boxes.front();
            // Give the box a moment to fill its controls before reading them.
            Sleep(200);
            char caption[256] = {};
            GetWindowTextA(box, caption, sizeof caption);
            seen->caption = caption;
            seen->text.clear();
            EnumChildWindows(box, appendChildText, reinterpret_cast<LPARAM>(&seen->text));
            PostMessageA(box, WM_COMMAND, command, 0);
            return true;
        }
        Sleep(50);
    }
    return false;
}
