#include "process.h"

#include "dialogs.h"

#include <shellapi.h>

#include <fstream>
#include <iterator>

std::string testBinFolder()
{
    char path[MAX_PATH] = {};
    const std::string program(path, GetModuleFileNameA(nullptr, path, sizeof path - 1));
    return program.substr(0, program.find_last_of("\\/") + 1);
}

std::string makeTempFolder(const char* prefix)
{
    char base[MAX_PATH] = {}, name[MAX_PATH] = {};
    GetTempPathA(sizeof base, base);
    // A unique name, taken as a file and then made a folder.
    const bool made = GetTempFileNameA(base, prefix, 0, name) && DeleteFileA(name) && CreateDirectoryA(name, nullptr);
    return made ? std::string(name) + "\\" : std::string();
}

void removeTree(const std::string& folder)
{
    // The shell's delete takes a list that ends in two zeros, and the folder without its backslash.
    const std::string from = folder.substr(0, folder.find_last_not_of('\\') + 1) + std::string(2, '\0');
    SHFILEOPSTRUCTA operation = {};
    operation.wFunc = FO_DELETE;
    operation.pFrom = from.c_str();
    operation.fFlags = FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_NOCONFIRMMKDIR;
    if (from.size() > 2)   // never an empty list, which the shell might take as the current folder
        SHFileOperationA(&operation);
}

bool copyFileTo(const std::string& from, const std::string& to)
{
    return CopyFileA(from.c_str(), to.c_str(), FALSE) != FALSE;
}

bool fileExists(const std::string& path)
{
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
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
    *child = {info.hProcess, info.dwProcessId};
    return true;
}

DWORD waitForExit(ChildProcess* child, DWORD timeoutMs)
{
    DWORD code = kNoExitCode;
    if (WaitForSingleObject(child->process, timeoutMs) != WAIT_OBJECT_0 || !GetExitCodeProcess(child->process, &code)) {
        TerminateProcess(child->process, kNoExitCode);
        WaitForSingleObject(child->process, 5000);
    }
    CloseHandle(child->process);
    *child = {};
    return code;
}

DWORD runProcess(const std::string& commandLine, DWORD timeoutMs)
{
    ChildProcess child;
    return startProcess(commandLine, &child) ? waitForExit(&child, timeoutMs) : kNoExitCode;
}

bool answerMessageBox(DWORD processId, DWORD timeoutMs, int command, MessageBoxSeen* seen)
{
    HWND box = waitForDialog(DialogQuery{processId}, timeoutMs);   // any dialog of the process
    if (!box)
        return false;
    Sleep(200);   // the box may still be filling its controls
    seen->caption = windowText(box);
    seen->text.clear();
    for (HWND control = nullptr; (control = FindWindowExA(box, control, "Static", nullptr)) != nullptr;) {
        const std::string text = windowText(control);
        if (!text.empty())
            seen->text += (seen->text.empty() ? "" : "\n") + text;
    }
    PostMessageA(box, WM_COMMAND, command, 0);
    return true;
}
