// Interface of the language module holang.dll. The setup program imports the ten text tables as
// data when it is loaded and binds the two entry points by name at start and end of its run.
#pragma once

#include <windows.h>

#ifdef HOLANG_BUILDING
#define HOLANG_DATA extern "C" __declspec(dllexport)
#else
#define HOLANG_DATA extern "C" __declspec(dllimport)
#endif

// ---- constants ------------------------------------------------------------------------------

// The interface version the setup program hands to HOI_LanguageInit.
constexpr unsigned long kLanguageInterfaceVersion = 6222;

// ---- data: text tables, each indexed from 0 -------------------------------------------------

HOLANG_DATA const char* const eMessageText[];
HOLANG_DATA const char* const eUniTexts[];
HOLANG_DATA const char* const eAlertErrorText[];
HOLANG_DATA const char* const eRelativePaths[];
HOLANG_DATA const char* const eButtonText[];
HOLANG_DATA const char* const eCaptionTexts[];
HOLANG_DATA const char* const eDefaultNames[];
HOLANG_DATA const char* const eProfileTitle[];
HOLANG_DATA const char* const eMonthNames[];
HOLANG_DATA const char eApplicationName[];

// ---- functions: the two entry points, bound with GetProcAddress -----------------------------

// HOI_LanguageInit(instance, mainWindow, interfaceVersion, languageInfo): prepares the module for a
// run; languageInfo points to 68 bytes the module may fill. Only the low byte of the result counts.
typedef BOOL (*HoiLanguageInitProc)(HINSTANCE instance, HWND mainWindow, unsigned long interfaceVersion,
                                    void* languageInfo);
// HOI_LanguageExit(): releases what the init took. Returns a truth value.
typedef BOOL (*HoiLanguageExitProc)(void);
