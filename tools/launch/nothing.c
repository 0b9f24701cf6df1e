/* nothing.exe: a GUI program that does nothing, the unpacker benchmark's yardstick for one process start. */
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show) { return 0; }
