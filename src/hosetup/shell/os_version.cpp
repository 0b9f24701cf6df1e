// What system is this: the version check of the start-up, resting on the version-verification
// service.
#include "shell/shell.h"

bool IsWindowsAtLeast(WORD major, WORD minor, WORD servicePackMajor)
{
    OSVERSIONINFOEXW info = {};
    info.dwOSVersionInfoSize = sizeof info;
    info.dwMajorVersion = major;
    info.dwMinorVersion = minor;
    info.wServicePackMajor = servicePackMajor;
    DWORDLONG mask = 0;
    mask = VerSetConditionMask(mask, VER_MAJORVERSION, VER_GREATER_EQUAL);
    mask = VerSetConditionMask(mask, VER_MINORVERSION, VER_GREATER_EQUAL);
    mask = VerSetConditionMask(mask, VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
    return VerifyVersionInfoW(&info, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR, mask) != FALSE;
}
