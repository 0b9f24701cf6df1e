// A language module with a fault, in three variants: FAKE_NO_EXIT (no HOI_LanguageExit),
// FAKE_NO_INIT (no HOI_LanguageInit), FAKE_INIT_FAILS (init answers false). Its DllMain and its
// init leave marker files beside the module, so a test can tell whether any of its code ran.
#include <windows.h>

#include <cstring>

// extern gives the constant tables the external linkage an export needs.
extern "C" {
__declspec(dllexport) extern const char* const eMessageText[] = {"Windows 7 or later is required.", "", ""};
__declspec(dllexport) extern const char* const eUniTexts[] = {""};
__declspec(dllexport) extern const char* const eAlertErrorText[] = {""};
__declspec(dllexport) extern const char* const eRelativePaths[] = {""};
__declspec(dllexport) extern const char* const eButtonText[] = {""};
__declspec(dllexport) extern const char* const eCaptionTexts[] = {"Fake Setup", ""};
__declspec(dllexport) extern const char* const eDefaultNames[] = {"", "Tahoma"};
__declspec(dllexport) extern const char* const eProfileTitle[] = {""};
__declspec(dllexport) extern const char* const eMonthNames[] = {""};
__declspec(dllexport) extern const char eApplicationName[] = "Fake Setup";
}

namespace {

// An empty file of that name beside the module.
void leaveMarker(HMODULE self, const char* name)
{
    char marker[MAX_PATH] = {};
    GetModuleFileNameA(self, marker, MAX_PATH - 16);
    lstrcpyA(strrchr(marker, '\\') + 1, name);
    CloseHandle(CreateFileA(marker, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        leaveMarker(self, "dllmain-called");
    return TRUE;
}

#ifndef FAKE_NO_INIT
extern "C" __declspec(dllexport) BOOL HOI_LanguageInit(HINSTANCE, HWND, unsigned long, void*)
{
    HMODULE self = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&eUniTexts), &self);
    leaveMarker(self, "init-called");
#ifdef FAKE_INIT_FAILS
    return 0x100; // only the low byte counts: this is false
#else
    return TRUE;
#endif
}
#endif

#ifndef FAKE_NO_EXIT
extern "C" __declspec(dllexport) BOOL HOI_LanguageExit(void) { return TRUE; }
#endif
