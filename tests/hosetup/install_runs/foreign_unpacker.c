/* A stranger's program put beside the setup program as hounzip.exe: if it is ever started, it
   leaves "<its own path>.ran" behind, and ends with 0 as a successful unpacker would. */
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show)
{
    char path[MAX_PATH + 8];
    DWORD length = GetModuleFileNameA(NULL, path, MAX_PATH);
    if (length > 0 && length < MAX_PATH) {
        lstrcatA(path, ".ran");
        CloseHandle(CreateFileA(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
    }
    return 0;
}
