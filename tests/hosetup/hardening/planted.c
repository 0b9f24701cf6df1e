/* A DLL planted beside hosetup.exe under a system DLL's name: if it is ever loaded, it leaves
   "<its own path>.loaded" behind. */
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID reserved)
{
    char path[MAX_PATH + 8];
    DWORD length = GetModuleFileNameA(self, path, MAX_PATH);
    (void)reserved;
    if (reason == DLL_PROCESS_ATTACH && length > 0 && length < MAX_PATH) {
        lstrcatA(path, ".loaded");
        CloseHandle(CreateFileA(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
    }
    return TRUE;
}
