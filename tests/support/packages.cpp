#include "packages.h"

#include "process.h"

#include <shlobj.h>

#include <fstream>

namespace {

void writeText(const std::string& path, const std::string& content)
{
    SHCreateDirectoryExA(nullptr, path.substr(0, path.find_last_of("\\/")).c_str(), nullptr);
    std::ofstream(path, std::ios::binary) << content;
}

} // namespace

DWORD buildPackage(const Package& package, const std::string& work, const std::string& dist)
{
    // TOML literal strings ('...') take backslashes as they are.
    std::string toml = "[product]\nname = 'Vistrel Test'\nlabel = 'Vistrel Professional 2022'\ncompile_date = '" +
                       package.compileDate + "'\n";
    for (const PackageFile& file : package.files) {
        toml += "[[file]]\ndirectory = " + std::to_string(file.directory) + "\nsubfolder = '" + file.subfolder + "'\n";
        toml += (file.source.empty() ? "" : "source = '" + file.source + "'\n") +
                (file.name.empty() ? "" : "name = '" + file.name + "'\n");
        if (!file.source.empty())
            writeText(work + file.source, file.content);
    }
    for (const PackageShortcut& link : package.shortcuts)
        toml += "[[shortcut]]\ntarget = '" + link.target + "'\nname = '" + link.name + "'\n" + link.icon;
    writeText(work + "package.toml", toml);
    // A backslash before a closing quote would escape it: folders go on the command line without one.
    const std::string bin = testBinFolder();
    return runProcess("\"" + bin + "hopack.exe\" build \"" + work + "package.toml\" \"" +
                      dist.substr(0, dist.find_last_not_of('\\') + 1) + "\" --program \"" +
                      bin.substr(0, bin.size() - 1) + "\"", 120000);
}

std::string shellFolder(int csidl)
{
    char path[MAX_PATH] = {};
    SHGetFolderPathA(nullptr, csidl | CSIDL_FLAG_CREATE, nullptr, 0, path);
    return std::string(path) + "\\";
}

