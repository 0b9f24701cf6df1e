// Entry point of hosetup.exe: scan the options, load the language module, check the system,
// bind the module's entry points, create the main window, start the run and pump messages until
// the window closes.
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "holang.h"

#include <commctrl.h>

int runSetupProgram(HINSTANCE instance, const char* commandLine)
{
    restrictDllSearch();
    clearSetupState();

    char programFile[kPathCapacity] = {};
    GetModuleFileNameA(nullptr, programFile, sizeof programFile - 1);
    FolderOfPath(programFile, g_setup.sourceFolder, kPathCapacity);

    scanCommandLine(commandLine);

    // The module is checked and its tables bound first: the operating-system check shows one of
    // its texts, before HOI_LanguageInit is called.
    if (!loadLanguageModule())
        return kExitFailure;
    if (!IsWindowsAtLeast(6, 1, 0)) {
        if (!g_setup.optionSilent)
            MessageBoxA(nullptr, eMessageText[kMsgWindowsTooOld], eCaptionTexts[kCaptionSetup], MB_OK);
        return kExitFailure;
    }

    if (!bindLanguageModule(instance, g_setup.languageInfo))
        return kExitFailure;

    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);

    if (!registerMainWindowClass(instance) || !createMainWindow(instance)) {
        unbindLanguageModule();
        return kExitFailure;
    }

    SetCursor(g_setup.arrowCursor);
    PostMessageA(g_setup.mainWindow, WM_COMMAND, kRunCommand, 0);

    MSG message;
    int exitCode = kExitFailure;
    for (;;) {
        const BOOL got = GetMessageA(&message, nullptr, 0, 0);
        if (got == 0) {
            exitCode = static_cast<int>(message.wParam);
            break;
        }
        if (got == -1)
            break;
        if (g_setup.progressDialog && IsDialogMessageA(g_setup.progressDialog, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }

    unbindLanguageModule();
    return exitCode;
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int)
{
    return runSetupProgram(instance, commandLine);
}
