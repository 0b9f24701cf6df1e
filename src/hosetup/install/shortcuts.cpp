// The last working step of an installation: the product's Start-menu group with one link per
// shortcut record, and one desktop link that opens the group. It paces the progress bar itself.
#include "install/install.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "remove/remove.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"

#include <objbase.h>
#include <shlobj.h>
#include <shobjidl.h>

namespace {

constexpr char kIconModule[] = "hovistrellib.dll";
constexpr int kShowNormal = 5;
constexpr int kComAttempts = 10;
constexpr DWORD kComRetryDelayMs = 1000;

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

bool reportShortcutFailure(int code)
{
    if (!g_setup.optionSilent) {
        char message[2 * kMessageCapacity];
        HOI_PrintA(message, sizeof message, eMessageText[8], code);
        HOI_JoinA(message, sizeof message, eAlertErrorText[17]);
        AlertError(g_setup.mainWindow, message);
    }
    return false;
}

// A shell folder's path, with its backslash, looked up as an item list.
int shellFolderPath(int csidl, char* path, int lookupFailure, int pathFailure)
{
    LPITEMIDLIST items = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, csidl, &items) != S_OK || !items)
        return lookupFailure;
    const BOOL ok = SHGetPathFromIDListA(items, path);
    CoTaskMemFree(items);
    if (!ok)
        return pathFailure;
    HOI_PathA(path, kPathCapacity);
    return 0;
}

// Paces the bar from `from` to `to` percent; false when the user confirmed a cancellation.
bool pace(int from, int to, DWORD sleepMs)
{
    for (int p = from; p <= to; ++p) {
        if (!SetProgress(p, 100))
            return false;
        Sleep(sleepMs);
    }
    return true;
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

// The group links, one per shortcut record; false with the failure code set.
bool makeGroupLinks(const Links& links, const char* groupFolder)
{
    for (int i = 0; i < g_setup.shortcutCount; ++i) {
        const ShortcutRecord& record = g_setup.shortcutRecords[i];
        char icon[kPathCapacity];
        char target[kPathCapacity];
        if (resolveShortcutIconPath(i, icon) != kIconPathFound)
            continue;
        if (resolveFilePath(static_cast<int>(record.fileIndex), target, nullptr, nullptr, nullptr) == kNoPathHere)
            continue;
        char workingFolder[kPathCapacity];
        char linkFile[kPathCapacity];
        FolderOfPath(target, workingFolder, sizeof workingFolder);
        HOI_CopyA(linkFile, sizeof linkFile, groupFolder, record.name, ".lnk");
        if (!MakeShellLink(links.link, links.persist, target, icon, 0, linkFile, workingFolder, record.arguments,
                           kShowNormal, record.name))
            return false;
        const int progress = 70 + (20 * i) / g_setup.shortcutCount;
        SetProgress(progress < 90 ? progress : 90, 100);
        Sleep(100);
    }
    return true;
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
    return SUCCEEDED(persist->Save(wideName, TRUE));
}

bool CreateShortcuts()
{
    if (g_setup.shortcutCount < 1)
        return true;
    SetCursor(g_setup.waitCursor);
    RemoveShortcuts();
    if (!pace(0, 49, 80))
        return false;

    char desktop[kPathCapacity];
    char programs[kPathCapacity];
    int failure = shellFolderPath(g_setup.perUser ? CSIDL_DESKTOPDIRECTORY : CSIDL_COMMON_DESKTOPDIRECTORY, desktop,
                                  kDesktopLookup, kDesktopPath);
    if (!failure)
        failure = shellFolderPath(g_setup.perUser ? CSIDL_PROGRAMS : CSIDL_COMMON_PROGRAMS, programs,
                                  kProgramsLookup, kProgramsPath);
    if (failure)
        return reportShortcutFailure(failure);

    const char* group = g_setup.headerBuffer->productName;
    char groupFolder[kPathCapacity];
    HOI_CopyA(groupFolder, sizeof groupFolder, programs, group, "\\");
    if (!CreateFolder(groupFolder))
        return reportShortcutFailure(kGroupFolder);
    if (!pace(50, 69, 100))
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
        if (!makeGroupLinks(links, groupFolder))
            return reportShortcutFailure(kGroupLink);

        // The desktop link opens the group folder; separators of a nested group become blanks.
        char desktopName[kPathCapacity];
        HOI_CopyA(desktopName, sizeof desktopName, group);
        for (char* p = desktopName; *p; ++p) {
            if (*p == '\\' || *p == '/')
                *p = ' ';
        }
        char linkFile[kPathCapacity];
        char icon[kPathCapacity];
        HOI_CopyA(linkFile, sizeof linkFile, desktop, desktopName, ".lnk");
        HOI_CopyA(icon, sizeof icon, g_setup.installFolder, kIconModule);
        if (!MakeShellLink(links.link, links.persist, groupFolder, icon, 0, linkFile, "", "", kShowNormal, group))
            return reportShortcutFailure(kDesktopLink);
    }
    SetCursor(g_setup.arrowCursor);
    pace(90, 100, 100);
    RedrawWindow(nullptr, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ERASENOW);
    return true;
}
