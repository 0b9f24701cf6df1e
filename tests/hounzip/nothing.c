/* nothing.exe: a GUI-subsystem program that does nothing, the yardstick for the cost of one process start under
 * the same launcher that starts hounzip.exe. */
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show)
{
    return 0;
}
