// Interface of the language module holang.dll. The setup program loads it at run time, after
// checking that it is a module built with the program, binds the ten text tables by name and
// the two entry points at start and end of its run. It never imports anything of the module at
// load time: the loader would run the module's code before the program could check it.
#pragma once

#include <windows.h>

#include "text_ids.h"

// ---- constants ------------------------------------------------------------------------------

// The interface version the setup program hands to HOI_LanguageInit.
constexpr unsigned long kLanguageInterfaceVersion = 6222;

// ---- data: text tables, each indexed from 0 by the names of text_ids.h ---------------------

#ifdef HOLANG_BUILDING
// The module's own build defines and exports the tables.
#define HOLANG_DATA extern "C" __declspec(dllexport)
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
#else
// The setup program's view: the same names, pointers to the module's tables, null until
// bindLanguageTables (core/language_tables.cpp) has bound them, so that
// eMessageText[kMsgInvalidFolderPath] reads as it would from the array.
extern const char* const* eMessageText;
extern const char* const* eUniTexts;
extern const char* const* eAlertErrorText;
extern const char* const* eRelativePaths;
extern const char* const* eButtonText;
extern const char* const* eCaptionTexts;
extern const char* const* eDefaultNames;
extern const char* const* eProfileTitle;
extern const char* const* eMonthNames;
extern const char* eApplicationName;
#endif

// ---- functions: the two entry points, bound with GetProcAddress -----------------------------

// HOI_LanguageInit(instance, mainWindow, interfaceVersion, languageInfo): prepares the module for a
// run; languageInfo points to 68 bytes the module may fill. Only the low byte of the result counts.
typedef BOOL (*HoiLanguageInitProc)(HINSTANCE instance, HWND mainWindow, unsigned long interfaceVersion,
                                    void* languageInfo);
// HOI_LanguageExit(): releases what the init took. Returns a truth value.
typedef BOOL (*HoiLanguageExitProc)(void);
