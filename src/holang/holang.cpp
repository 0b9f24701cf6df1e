// Entry points of the language module. The module keeps no state of its own beyond what the
// setup program hands it; the interface version guards against a mismatched program.
#include "holang.h"

#include <cstring>

extern "C" __declspec(dllexport) BOOL HOI_LanguageInit(HINSTANCE instance, HWND mainWindow,
                                                       unsigned long interfaceVersion, void* languageInfo)
{
    if (interfaceVersion != kLanguageInterfaceVersion)
        return FALSE;
    if (languageInfo) {
        // Language code page and identifier, for any caller that wants to know what it got.
        unsigned char* info = static_cast<unsigned char*>(languageInfo);
        std::memset(info, 0, 68);
        std::strncpy(reinterpret_cast<char*>(info), "English", 31);
        *reinterpret_cast<unsigned short*>(info + 32) = 0x0409;
        *reinterpret_cast<unsigned short*>(info + 34) = 1252;
    }
    return TRUE;
}

extern "C" __declspec(dllexport) BOOL HOI_LanguageExit(void)
{
    return TRUE;
}
