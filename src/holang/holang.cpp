// Entry points of the language module, shared by every language: the language itself comes
// from the texts file the module is built with (texts.h). The module keeps no state of its own
// beyond what the setup program hands it; the interface version guards against a mismatched
// program.
#include "holang.h"
#include "texts.h"

#include <cstring>

extern "C" __declspec(dllexport) BOOL HOI_LanguageInit(HINSTANCE instance, HWND mainWindow,
                                                       unsigned long interfaceVersion, void* languageInfo)
{
    if (interfaceVersion != kLanguageInterfaceVersion)
        return FALSE;
    if (languageInfo) {
        // Language name, identifier and code page, for any caller that wants to know what it got.
        unsigned char* info = static_cast<unsigned char*>(languageInfo);
        std::memset(info, 0, 68);
        std::strncpy(reinterpret_cast<char*>(info), kLanguageName, 31);
        std::memcpy(info + 32, &kLanguageId, sizeof kLanguageId);
        std::memcpy(info + 34, &kLanguageCodePage, sizeof kLanguageCodePage);
    }
    return TRUE;
}

extern "C" __declspec(dllexport) BOOL HOI_LanguageExit(void)
{
    return TRUE;
}
