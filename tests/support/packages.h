// The package helper of the whole-run tests: a small description built into a distribution by the
// real hopack.exe.
#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

// ---- types ----------------------------------------------------------------------------------

struct PackageFile {
    std::string source;        // relative to the package folder; empty for records without a file
    unsigned directory;
    std::string subfolder;
    std::string name;          // defaults to the source's name
    std::string content;       // written to `source` before the build
};

// Named "Vistrel Test" (the programs-menu group), labelled "Vistrel Professional 2022".
struct PackageShortcut {
    std::string target, name;
    std::string icon;   // empty, or "icon_directory = N\nicon = 'path'\n"
};

struct Package {
    std::string compileDate = "2022-11-29";
    std::vector<PackageFile> files;
    std::vector<PackageShortcut> shortcuts;
};

// ---- functions ------------------------------------------------------------------------------

// Writes the description and files below `work` and builds the distribution into `dist`
// (hopack.exe and the program files come from the test's own folder). Returns hopack's exit code.
DWORD buildPackage(const Package& package, const std::string& work, const std::string& dist);
std::string shellFolder(int csidl);   // with its backslash
