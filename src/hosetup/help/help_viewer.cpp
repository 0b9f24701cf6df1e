// The help button's target: the setup program's own help file in the HTML Help viewer, reached
// through the control's two entries, each bound on its first call.
#include "help/help.h"
#include "format/program_files.h"
#include "core/setup_state.h"
#include "strings/hoi_strings.h"

namespace {

using HtmlHelpAFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);
using HtmlHelpWFunction = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

// One viewer for the run; the narrow and the wide entry fail or succeed each on its own.
HelpViewer g_viewer = {kHelpViewerClassKey, kHelpViewerModuleName, nullptr};
HelpEntry g_htmlHelpA = {kHtmlHelpAOrdinal, nullptr, false};
HelpEntry g_htmlHelpW = {kHtmlHelpWOrdinal, nullptr, false};

} // namespace

HWND HtmlHelpA(HWND owner, const char* file, UINT command, DWORD_PTR data)
{
    const auto function = reinterpret_cast<HtmlHelpAFunction>(bindHelpEntry(&g_viewer, &g_htmlHelpA));
    return function ? function(owner, file, command, data) : nullptr;
}

HWND HtmlHelpW(HWND owner, const wchar_t* file, UINT command, DWORD_PTR data)
{
    const auto function = reinterpret_cast<HtmlHelpWFunction>(bindHelpEntry(&g_viewer, &g_htmlHelpW));
    return function ? function(owner, file, command, data) : nullptr;
}

void ShowSetupHelp()
{
    char path[kHelpPathCapacity];
    HOI_CopyA(path, sizeof path, g_setup.programFolder, kSetupHelpName);
    // The viewer's window (or its absence) is of no further interest: the page stays open.
    HtmlHelpA(nullptr, path, kHelpDisplayTopic, 0);
}
