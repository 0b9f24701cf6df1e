// Removal of the product's links: the desktop link and the Start-menu group, under this release's
// name and under the names earlier releases and editions used. Only these fixed names are
// touched; nothing is searched for.
#include "remove/remove.h"
#include "install/install.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"

#include <shlobj.h>

namespace {

constexpr char kEndMark = 4;

// Desktop-link and Start-menu-folder names of earlier Vistrel releases and editions, ended by
// the mark.
constexpr const char* kEarlierLinkNames[] = {
    "Vistrel",
    "Vistrel 2015",
    "Vistrel 2016",
    "Vistrel 2017",
    "Vistrel 2018",
    "Vistrel 2019",
    "Vistrel 2020",
    "Vistrel 2021",
    "Vistrel Professional",
    "Vistrel Professional 2019",
    "Vistrel Professional 2020",
    "Vistrel Professional 2021",
    "Vistrel Standard",
    "Vistrel Standard 2021",
    "Vistrel LT",
    "Vistrel LT 2021",
    "Vistrel Viewer",
    "Harwick-Orbel Vistrel",
    "Vistrel (64-bit)",
    "\x04",
};

// The path of a shell folder's item list, with its closing backslash; false when it cannot be had.
bool pathOf(LPITEMIDLIST items, char* path)
{
    if (!SHGetPathFromIDListA(items, path))
        return false;
    HOI_PathA(path, kPathCapacity);
    return true;
}

} // namespace

const char* const* earlierLinkNames()
{
    return kEarlierLinkNames;
}

void RemoveShortcuts()
{
    const bool perUser = g_setup.perUser > 0;
    const char* productName = g_setup.headerBuffer ? g_setup.headerBuffer->productName : "";
    char folder[kPathCapacity];
    char path[kPathCapacity];

    LPITEMIDLIST items = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, perUser ? CSIDL_DESKTOPDIRECTORY : CSIDL_COMMON_DESKTOPDIRECTORY,
                                   &items) == S_OK && items) {
        if (pathOf(items, folder)) {
            char name[kPathCapacity];
            HOI_CopyA(name, sizeof name, productName);
            for (char* p = name; *p; ++p) {
                if (*p == '\\' || *p == '/')
                    *p = ' ';
            }
            HOI_CopyA(path, sizeof path, folder, name, ".lnk");
            DeleteFileAt(path);
        }
        for (const char* const* name = kEarlierLinkNames; (*name)[0] != kEndMark; ++name) {
            if (pathOf(items, folder)) {
                HOI_CopyA(path, sizeof path, folder, *name, ".lnk");
                DeleteFileAt(path);
            }
        }
        CoTaskMemFree(items);
    }

    if (!SetProgress(10, 100))
        return;

    items = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, perUser ? CSIDL_PROGRAMS : CSIDL_COMMON_PROGRAMS, &items) != S_OK ||
        !items)
        return;
    if (pathOf(items, folder)) {
        HOI_CopyA(path, sizeof path, folder, productName, "\\");
        DeleteFolderTree(path);
    }
    for (const char* const* name = kEarlierLinkNames; (*name)[0] != kEndMark; ++name) {
        if (pathOf(items, folder)) {
            HOI_CopyA(path, sizeof path, folder, *name, "\\");
            DeleteFolderTree(path);
        }
    }
    CoTaskMemFree(items);
}
