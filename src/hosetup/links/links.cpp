// The product's links: the Start-menu group with one link per shortcut record and one desktop
// link that opens the group, made as the last working step of an installation; and their removal
// under this release's name and the names earlier releases and editions used, by the removal and
// by the installation before it makes new ones. Only these fixed names are touched; nothing is
// searched for. The all-users folders, which only administrators can change, lose the groups
// whole; a user's own folders, which the user may have pointed anywhere and filled with anything,
// lose only this product's link files and then the groups they leave empty.
#include "links/links.h"
#include "core/core.h"
#include "files/files.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "userfolders/userfolders.h"
#include "ui/ui.h"

#include <objbase.h>
#include <shlobj.h>
#include <shobjidl.h>

namespace {

constexpr char kIconModule[] = "hovistrellib.dll";
constexpr int kComAttempts = 10;
constexpr DWORD kComRetryDelayMs = 1000;

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

// Failure codes shown in the shortcut alert.
enum ShortcutFailure {
    kDesktopLookup = 2,
    kDesktopPath = 3,
    kProgramsLookup = 4,
    kProgramsPath = 5,
    kComInit = 6,
    kLinkObject = 7,
    kPersistFile = 8,
    kGroupLink = 9,
    kDesktopLink = 10,
    kGroupFolder = 11,
};
// Not a failure: the user confirmed a cancel at a report of the link step.
constexpr int kStopped = -1;

// The product runs without its links, so a failure is reported and the installation goes on:
// true, as CreateShortcuts answers then.
bool reportShortcutFailure(int code)
{
    if (!g_setup.optionSilent) {
        char message[2 * kMessageCapacity];
        HOI_PrintA(message, sizeof message, eMessageText[kMsgShortcutsFailed], code);
        HOI_JoinA(message, sizeof message, eAlertErrorText[kAlertTextSupportNote]);
        AlertError(g_setup.mainWindow, message);
    }
    return true;
}

// The path of a shell folder's item list, with its closing backslash; false when it cannot be
// had or does not fit. The shell writes up to MAX_PATH characters, so it writes into its own.
bool pathOf(LPITEMIDLIST items, char* path, std::size_t capacity)
{
    char found[MAX_PATH];
    if (!SHGetPathFromIDListA(items, found))
        return false;
    HOI_PathA(found, sizeof found);
    return composePath(path, capacity, found, nullptr);
}

// The link folder of this run, with its backslash: the user's own (taken only where the user
// could write anyway) for a per-user installation, else the all-users one, looked up as an item
// list. 0, or the failure code.
int linkFolderPath(int userCsidl, int commonCsidl, char* path, std::size_t capacity, int lookupFailure,
                   int pathFailure)
{
    if (g_setup.perUser > 0) {
        char found[kPathCapacity];
        return UserShellFolder(userCsidl, found, sizeof found) && composePath(path, capacity, found, nullptr) ? 0 : pathFailure;
    }
    LPITEMIDLIST items = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, commonCsidl, &items) != S_OK || !items)
        return lookupFailure;
    const bool ok = pathOf(items, path, capacity);
    CoTaskMemFree(items);
    return ok ? 0 : pathFailure;
}

// The Start-menu group of a product: the programs folder + the group's name + a backslash.
// False when it does not fit: a cut name would name another folder.
bool groupFolderOf(const char* programs, const char* group, char* folder, std::size_t capacity)
{
    char joined[kPathCapacity];
    return composePath(joined, sizeof joined, programs, group) && composePath(folder, capacity, joined, "\\");
}

// folder + name + ".lnk"; false when it does not fit.
bool linkFileOf(const char* folder, const char* name, char* linkFile, std::size_t capacity)
{
    char joined[kPathCapacity];
    return composePath(joined, sizeof joined, folder, name) && composePath(linkFile, capacity, joined, ".lnk");
}

// The desktop link of a group: separators of a nested group become blanks. False when it does
// not fit.
bool desktopLinkOf(const char* desktop, const char* group, char* linkFile, std::size_t capacity)
{
    char name[kPathCapacity];
    if (!composePath(name, sizeof name, group, nullptr))
        return false;
    for (char* p = name; *p; ++p) {
        if (*p == '\\' || *p == '/')
            *p = ' ';
    }
    return linkFileOf(desktop, name, linkFile, capacity);
}

bool initialiseCom()
{
    for (int attempt = 0; attempt < kComAttempts; ++attempt) {
        const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        if (SUCCEEDED(result) || result == RPC_E_CHANGED_MODE)
            return true;
        Sleep(kComRetryDelayMs);
    }
    return false;
}

struct Links {
    IShellLinkA* link = nullptr;
    IPersistFile* persist = nullptr;

    ~Links()
    {
        if (persist)
            persist->Release();
        if (link)
            link->Release();
        CoUninitialize();
    }
};

// The group links, one per shortcut record: 0 when all are made, kStopped when a cancel was
// confirmed at a report between them, else the failure code.
int makeGroupLinks(const Links& links, const char* groupFolder, ShortcutPaths pathsOf)
{
    for (int i = 0; i < g_setup.shortcutCount; ++i) {
        const ShortcutRecord& record = g_setup.shortcutRecords[i];
        char icon[kPathCapacity];
        char target[kPathCapacity];
        if (!pathsOf(i, icon, target))
            continue;
        char workingFolder[kPathCapacity];
        char linkFile[kPathCapacity];
        FolderOfPath(target, workingFolder, sizeof workingFolder);
        if (!linkFileOf(groupFolder, record.name, linkFile, sizeof linkFile) ||
            !MakeShellLink(links.link, links.persist, target, icon, 0, linkFile, workingFolder, record.arguments,
                           SW_SHOW, record.name))
            return kGroupLink;
        const int progress = 70 + (20 * i) / g_setup.shortcutCount;
        if (!SetProgress(progress < 90 ? progress : 90, 100))
            return kStopped;
        Sleep(100);
    }
    return 0;
}

// In a user's own group folder only this product's link files go, then the folder if that left
// it empty.
void removeGroupLinks(const char* groupFolder)
{
    char linkFile[kPathCapacity];
    for (int i = 0; i < g_setup.shortcutCount && g_setup.shortcutRecords; ++i) {
        if (linkFileOf(groupFolder, g_setup.shortcutRecords[i].name, linkFile, sizeof linkFile))
            DeleteFileAt(linkFile);
    }
    RemoveFolder(groupFolder);
}

} // namespace

bool MakeShellLink(IShellLinkA* link, IPersistFile* persist, const char* target, const char* iconFile,
                   int iconIndex, const char* linkFile, const char* workingFolder, const char* arguments,
                   int showCommand, const char* description)
{
    if (FAILED(link->SetPath(target)) || FAILED(link->SetIconLocation(iconFile, iconIndex)) ||
        FAILED(link->SetWorkingDirectory(workingFolder)) || FAILED(link->SetArguments(arguments)) ||
        FAILED(link->SetShowCmd(showCommand)) || FAILED(link->SetDescription(description)))
        return false;
    wchar_t wideName[kPathCapacity];
    if (!HOI_ConvertAnsiToUTF16(linkFile, wideName, kPathCapacity))
        return false;
    // The shell writes the link file by its name. A file already there (a user's folder may hold
    // a planted link under the name) goes first through the checked deletion, and the new file
    // must then be found where it was meant; otherwise it is not counted as made.
    if (PathExists(linkFile) && !DeleteFileAt(linkFile))
        return false;
    if (FAILED(persist->Save(wideName, TRUE)))
        return false;
    HANDLE made = openChecked(linkFile, FILE_READ_ATTRIBUTES, false);
    if (!made)
        return false;
    CloseHandle(made);
    return true;
}

bool CreateShortcuts(ShortcutPaths pathsOf)
{
    if (g_setup.shortcutCount < 1)
        return true;
    SetCursor(g_setup.waitCursor);
    if (!RemoveShortcuts() || !paceProgress(0, 49, 1, 80))
        return false;

    char desktop[kPathCapacity];
    char programs[kPathCapacity];
    int failure = linkFolderPath(CSIDL_DESKTOPDIRECTORY, CSIDL_COMMON_DESKTOPDIRECTORY, desktop, sizeof desktop,
                                 kDesktopLookup, kDesktopPath);
    if (!failure)
        failure = linkFolderPath(CSIDL_PROGRAMS, CSIDL_COMMON_PROGRAMS, programs, sizeof programs, kProgramsLookup,
                                 kProgramsPath);
    if (failure)
        return reportShortcutFailure(failure);

    const char* group = g_setup.headerBuffer->productName;
    char groupFolder[kPathCapacity];
    if (!groupFolderOf(programs, group, groupFolder, sizeof groupFolder) || !CreateFolder(groupFolder))
        return reportShortcutFailure(kGroupFolder);
    if (!paceProgress(50, 69, 1, 100))
        return false;

    if (!initialiseCom())
        return reportShortcutFailure(kComInit);
    {
        Links links;
        if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                    reinterpret_cast<void**>(&links.link))))
            return reportShortcutFailure(kLinkObject);
        if (FAILED(links.link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&links.persist))))
            return reportShortcutFailure(kPersistFile);
        const int made = makeGroupLinks(links, groupFolder, pathsOf);
        if (made == kStopped)
            return false;
        if (made)
            return reportShortcutFailure(made);

        // The desktop link opens the group folder.
        char linkFile[kPathCapacity];
        char icon[kPathCapacity];
        HOI_CopyA(icon, sizeof icon, g_setup.installFolder, kIconModule);
        if (!desktopLinkOf(desktop, group, linkFile, sizeof linkFile) ||
            !MakeShellLink(links.link, links.persist, groupFolder, icon, 0, linkFile, "", "", SW_SHOW, group))
            return reportShortcutFailure(kDesktopLink);
    }
    SetCursor(g_setup.arrowCursor);
    if (!paceProgress(90, 100, 1, 100))
        return false;
    RedrawWindow(nullptr, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ERASENOW);
    return true;
}

const char* const* earlierLinkNames()
{
    return kEarlierLinkNames;
}

bool RemoveShortcuts()
{
    const bool perUser = g_setup.perUser > 0;
    const char* productName = g_setup.headerBuffer ? g_setup.headerBuffer->productName : "";
    char folder[kPathCapacity];
    char path[kPathCapacity];

    if (linkFolderPath(CSIDL_DESKTOPDIRECTORY, CSIDL_COMMON_DESKTOPDIRECTORY, folder, sizeof folder, kDesktopLookup,
                       kDesktopPath) == 0) {
        if (desktopLinkOf(folder, productName, path, sizeof path))
            DeleteFileAt(path);
        for (const char* const* name = kEarlierLinkNames; (*name)[0] != kEndMark; ++name) {
            if (desktopLinkOf(folder, *name, path, sizeof path))
                DeleteFileAt(path);
        }
    }

    if (!SetProgress(10, 100))
        return false;

    if (linkFolderPath(CSIDL_PROGRAMS, CSIDL_COMMON_PROGRAMS, folder, sizeof folder, kProgramsLookup,
                       kProgramsPath) != 0)
        return true;
    if (productName[0] && groupFolderOf(folder, productName, path, sizeof path))
        perUser ? removeGroupLinks(path) : DeleteFolderTree(path);
    for (const char* const* name = kEarlierLinkNames; (*name)[0] != kEndMark; ++name) {
        if (groupFolderOf(folder, *name, path, sizeof path))
            perUser ? removeGroupLinks(path) : DeleteFolderTree(path);
    }
    return true;
}
