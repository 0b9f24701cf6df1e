// The help button's target: the setup program's own help file in the HTML Help viewer, reached
// through the control's two entries, each bound on its first call.
#include "ui/ui.h"
#include "format/program_files.h"
#include "core/setup_state.h"
#include "strings/hoi_strings.h"

namespace {

using HtmlHelpAFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);

} // namespace

// The run's viewer and entry live in the setup state, zero until this first call; where the
// viewer is looked for and which entry is bound are this program's constants.
HWND HtmlHelpA(HWND owner, const char* file, UINT command, DWORD_PTR data)
{
    g_setup.helpViewer.classKey = kHelpViewerClassKey;
    g_setup.helpViewer.moduleName = kHelpViewerModuleName;
    g_setup.helpEntry.ordinal = kHtmlHelpAOrdinal;
    const auto function =
        reinterpret_cast<HtmlHelpAFunction>(bindHelpEntry(&g_setup.helpViewer, &g_setup.helpEntry));
    return function ? function(owner, file, command, data) : nullptr;
}

void ShowSetupHelp()
{
    char path[kHelpPathCapacity];
    HOI_CopyA(path, sizeof path, g_setup.programFolder, kSetupHelpName);
    // The viewer's window (or its absence) is of no further interest: the page stays open.
    HtmlHelpA(nullptr, path, kHelpDisplayTopic, 0);
}
