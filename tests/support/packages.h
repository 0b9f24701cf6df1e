// Distributions for whole-run tests: a package description and its files written into a temp
// folder, built with the real hopack.exe, and the places a default installation uses.
#pragma once

#include <windows.h>
#include <string>
#include <vector>

// ---- types ----------------------------------------------------------------------------------

struct PackageFile {
    std::string source;        // relative to the package folder; empty for records without a file
    unsigned directory;
    std::string subfolder;
    std::string name;          // defaults to the source's name
    std::string content;       // written to `source` before the build
};

struct PackageShortcut {
    std::string target;
    std::string name;
    std::string arguments;
};

struct Package {
    std::string productName = "Vistrel Test";
    std::string label = "Vistrel Professional 2022";
    std::string compileDate = "2022-11-29";
    std::vector<PackageFile> files;
    std::vector<PackageShortcut> shortcuts;
};

// The default folders of an all-users installation on this machine, each with its backslash.
struct DefaultFolders {
    std::string install;       // below Program Files
    std::string commonData;    // below ProgramData
    std::string documents;     // below the common documents
    std::string desktop;       // common desktop
    std::string programs;      // common programs menu
};

// ---- functions ------------------------------------------------------------------------------

// tests/support/packages.cpp
// Writes the description and files below `work` and builds the distribution into `dist`
// (hopack.exe and the program files come from the test's own folder). Returns hopack's exit code.
DWORD buildPackage(const Package& package, const std::string& work, const std::string& dist);
DefaultFolders defaultFolders(bool perUser);
std::string shellFolder(int csidl);          // with its backslash
// Clears every trace of the product a test run may leave: registry entries, the default folders,
// the shortcuts, and the pending restart deletions.
void removeProductTraces();
std::string linkTarget(const std::string& linkFile);   // "" when it cannot be read
