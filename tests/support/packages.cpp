#include "packages.h"
#include "process.h"
#include "registry_checks.h"

#include <objbase.h>
#include <shlobj.h>
#include <shobjidl.h>

#include <fstream>

namespace {

constexpr char kProductFolder[] = "Harwick-Orbel\\Vistrel (64-bit)\\";

std::string tomlString(const std::string& text)
{
    std::string quoted = "\"";
    for (char c : text) {
        if (c == '\\' || c == '"')
            quoted += '\\';
        quoted += c;
    }
    return quoted + "\"";
}

void writeText(std::string path, const std::string& content)
{
    for (char& c : path) {
        if (c == '/')
            c = '\\';
    }
    const std::size_t slash = path.find_last_of('\\');
    if (slash != std::string::npos)
        SHCreateDirectoryExA(nullptr, path.substr(0, slash).c_str(), nullptr);
    std::ofstream out(path, std::ios::binary);
    out << content;
}

} // namespace

std::string shellFolder(int csidl)
{
    char path[MAX_PATH] = {};
    SHGetFolderPathA(nullptr, csidl | CSIDL_FLAG_CREATE, nullptr, 0, path);
    return std::string(path) + "\\";
}

DefaultFolders defaultFolders(bool perUser)
{
    DefaultFolders folders;
    folders.install = shellFolder(CSIDL_PROGRAM_FILES) + kProductFolder;
    folders.commonData = shellFolder(CSIDL_COMMON_APPDATA) + kProductFolder;
    folders.documents = shellFolder(perUser ? CSIDL_PERSONAL : CSIDL_COMMON_DOCUMENTS) + kProductFolder;
    folders.desktop = shellFolder(perUser ? CSIDL_DESKTOPDIRECTORY : CSIDL_COMMON_DESKTOPDIRECTORY);
    folders.programs = shellFolder(perUser ? CSIDL_PROGRAMS : CSIDL_COMMON_PROGRAMS);
    return folders;
}

DWORD buildPackage(const Package& package, const std::string& work, const std::string& dist)
{
    std::string toml = "[product]\nname = " + tomlString(package.productName) + "\nlabel = " +
                       tomlString(package.label) + "\ncompile_date = " + tomlString(package.compileDate) + "\n";
    for (const PackageFile& file : package.files) {
        toml += "\n[[file]]\ndirectory = " + std::to_string(file.directory) + "\n";
        if (!file.source.empty()) {
            toml += "source = " + tomlString(file.source) + "\n";
            writeText(work + file.source, file.content);
        }
        if (!file.subfolder.empty())
            toml += "subfolder = " + tomlString(file.subfolder) + "\n";
        if (!file.name.empty())
            toml += "name = " + tomlString(file.name) + "\n";
    }
    for (const PackageShortcut& shortcut : package.shortcuts) {
        toml += "\n[[shortcut]]\ntarget = " + tomlString(shortcut.target) + "\nname = " + tomlString(shortcut.name) + "\n";
        if (!shortcut.arguments.empty())
            toml += "arguments = " + tomlString(shortcut.arguments) + "\n";
    }
    writeText(work + "package.toml", toml);
    const std::string bin = testBinFolder();
    // A backslash before a closing quote would escape it: folders go on the command line without one.
    std::string target = dist;
    if (!target.empty() && target.back() == '\\')
        target.pop_back();
    return runProcess("\"" + bin + "hopack.exe\" build \"" + work + "package.toml\" \"" + target + "\" --program \"" +
                      bin.substr(0, bin.size() - 1) + "\"", 120000);
}

void removeProductTraces()
{
    deleteRegTree(HKEY_LOCAL_MACHINE, "Software\\Harwick-Orbel\\Vistrel Professional");
    deleteRegTree(HKEY_CURRENT_USER, "Software\\Harwick-Orbel\\Vistrel Professional");
    deleteRegTree(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\hovistrel.exe");
    deleteRegTree(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Vistrel Professional 2022");
    for (const char* key : {".HOD", "HOVISTREL", ".HOL", "HOVISTRELLIB"})
        deleteRegTree(HKEY_CLASSES_ROOT, key);
    HKEY session;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "System\\CurrentControlSet\\Control\\Session Manager", 0, KEY_WRITE,
                      &session) == ERROR_SUCCESS) {
        RegDeleteValueA(session, "PendingFileRenameOperations");
        RegCloseKey(session);
    }
    for (bool perUser : {false, true}) {
        const DefaultFolders folders = defaultFolders(perUser);
        removeTree(folders.install);
        removeTree(folders.commonData);
        removeTree(folders.documents);
        removeTree(shellFolder(perUser ? CSIDL_APPDATA : CSIDL_COMMON_APPDATA) + kProductFolder);
        removeTree(folders.programs + "Vistrel Test\\");
        DeleteFileA((folders.desktop + "Vistrel Test.lnk").c_str());
    }
}

std::string linkTarget(const std::string& linkFile)
{
    std::string target;
    const HRESULT init = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    IShellLinkA* link = nullptr;
    if (SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                   reinterpret_cast<void**>(&link)))) {
        IPersistFile* persist = nullptr;
        if (SUCCEEDED(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&persist)))) {
            wchar_t wide[MAX_PATH];
            MultiByteToWideChar(CP_ACP, 0, linkFile.c_str(), -1, wide, MAX_PATH);
            char path[MAX_PATH] = {};
            if (SUCCEEDED(persist->Load(wide, STGM_READ)) && SUCCEEDED(link->GetPath(path, MAX_PATH, nullptr, 0)))
                target = path;
            persist->Release();
        }
        link->Release();
    }
    if (SUCCEEDED(init))
        CoUninitialize();
    return target;
}
