// What system is this: the version check of the start-up and the short display name the wizard
// pages show. Both rest on the version-verification service; the name also asks the workstation
// service and the registry's build number.
#include "shell/shell.h"
#include "strings/hoi_strings.h"

#include <lm.h>
#include <cstdio>

namespace {

// Names of the older systems carry a no-break space (0xA0 in the ANSI code page) between their
// words, deliberately, so that a painted line never breaks inside a system's name.
#define NBSP "\xA0"

constexpr char kWindowsServer2022[] = "Windows Server 2022";
constexpr char kWindowsServer2019[] = "Windows Server 2019";
constexpr char kWindows11[] = "Windows 11";
constexpr char kWindows10[] = "Windows 10";

struct SixName {
    unsigned minor;      // lowest minor version the row applies to
    const char* server;
    const char* workstation;
};

// Version 6 rows, highest minor first.
constexpr SixName kVersionSix[] = {
    {3, "Windows Server 2012 R2", "Windows" NBSP "8.1"},
    {2, "Windows Server 2012", "Windows" NBSP "8"},
    {1, "Windows Server 2008 R2", "Windows" NBSP "7"},
    {0, "Windows Server 2008", "Windows" NBSP "Vista"},
};

constexpr char kWindows2003[] = "Windows" NBSP "Server" NBSP "2003";
constexpr char kWindowsXP[] = "Windows" NBSP "XP";
constexpr char kWindows2000[] = "Windows" NBSP "2000";
constexpr char kWindowsNT[] = "Windows" NBSP "NT";

bool verifyAtLeast(WORD major, WORD minor, WORD servicePackMajor)
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

// Without the workstation service the name is found by asking the version check from the top.
// The test for version 11 never holds (such systems report 10.0) but is kept as the first row.
void nameFromVersionChecks(char* buffer, std::size_t capacity)
{
    const bool server = IsServerSystem();
    if (IsWindowsAtLeast(11, 0, 0))
        HOI_CopyA(buffer, capacity, server ? kWindowsServer2022 : kWindows11);
    else if (IsWindowsAtLeast(10, 0, 0))
        HOI_CopyA(buffer, capacity, server ? kWindowsServer2019 : kWindows10);
    else if (IsWindowsAtLeast(6, 0, 0)) {
        for (const SixName& row : kVersionSix) {
            if (IsWindowsAtLeast(6, static_cast<WORD>(row.minor), 0)) {
                HOI_CopyA(buffer, capacity, server ? row.server : row.workstation);
                return;
            }
        }
    } else if (IsWindowsAtLeast(5, 2, 0))
        HOI_CopyA(buffer, capacity, kWindows2003);
    else if (IsWindowsAtLeast(5, 1, 0))
        HOI_CopyA(buffer, capacity, kWindowsXP);
    else if (IsWindowsAtLeast(5, 0, 0))
        HOI_CopyA(buffer, capacity, kWindows2000);
    else if (!IsWindowsAtLeast(4, 0, 0))
        HOI_CopyA(buffer, capacity, server ? "Windows" NBSP "Server" : "Windows");
    else
        HOI_CopyA(buffer, capacity, kWindowsNT);
}

} // namespace

bool IsWindowsAtLeast(WORD major, WORD minor, WORD servicePackMajor)
{
    return verifyAtLeast(major, minor, servicePackMajor);
}

bool IsServerSystem()
{
    OSVERSIONINFOEXW info = {};
    info.dwOSVersionInfoSize = sizeof info;
    info.wProductType = VER_NT_WORKSTATION;
    const DWORDLONG mask = VerSetConditionMask(0, VER_PRODUCT_TYPE, VER_EQUAL);
    return VerifyVersionInfoW(&info, VER_PRODUCT_TYPE, mask) == FALSE;
}

std::uint32_t GetBuildNumber()
{
    HKEY key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", 0, KEY_READ,
                      &key) != ERROR_SUCCESS)
        return 0;
    wchar_t text[64] = {};          // 128 bytes
    DWORD size = sizeof text - sizeof(wchar_t);
    DWORD type = 0;
    const LONG status = RegQueryValueExW(key, L"CurrentBuildNumber", nullptr, &type,
                                         reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS)
        return 0;
    unsigned long build = 0;
    if (swscanf(text, L"%lu", &build) != 1)
        return 0;
    return static_cast<std::uint32_t>(build);
}

void nameWindowsVersion(unsigned major, unsigned minor, std::uint32_t build, bool server,
                        char* buffer, std::size_t capacity)
{
    if (major == 10) {
        if (build >= 22000)
            HOI_CopyA(buffer, capacity, server ? kWindowsServer2022 : kWindows11);
        else
            HOI_CopyA(buffer, capacity, server ? kWindowsServer2019 : kWindows10);
    } else if (major == 6) {
        for (const SixName& row : kVersionSix) {
            if (minor >= row.minor) {
                HOI_CopyA(buffer, capacity, server ? row.server : row.workstation);
                return;
            }
        }
    } else if (major == 5 && minor >= 2)
        HOI_CopyA(buffer, capacity, kWindows2003);
    else if (major == 5 && minor == 1)
        HOI_CopyA(buffer, capacity, kWindowsXP);
    else if (major == 5)
        HOI_CopyA(buffer, capacity, kWindows2000);
    else if (major == 4)
        HOI_CopyA(buffer, capacity, kWindowsNT);
    else
        HOI_PrintA(buffer, capacity, server ? "Windows Server %d.%d" : "Windows %d.%d",
                   static_cast<int>(major), static_cast<int>(minor));
}

// netapi32 is no KnownDLL, so it is loaded from the system folder at run time, never beside
// the program.
void GetWindowsName(char* buffer)
{
    using NetWkstaGetInfoFunction = NET_API_STATUS(WINAPI*)(LMSTR, DWORD, LPBYTE*);
    using NetApiBufferFreeFunction = NET_API_STATUS(WINAPI*)(LPVOID);
    HMODULE netapi = loadSystemLibrary("netapi32.dll");
    auto getInfo = reinterpret_cast<NetWkstaGetInfoFunction>(
        netapi ? GetProcAddress(netapi, "NetWkstaGetInfo") : nullptr);
    auto freeBuffer = reinterpret_cast<NetApiBufferFreeFunction>(
        netapi ? GetProcAddress(netapi, "NetApiBufferFree") : nullptr);
    WKSTA_INFO_100* info = nullptr;
    if (getInfo && freeBuffer &&
        getInfo(nullptr, 100, reinterpret_cast<BYTE**>(&info)) == NERR_Success && info) {
        const unsigned major = info->wki100_ver_major;
        const unsigned minor = info->wki100_ver_minor;
        freeBuffer(info);
        nameWindowsVersion(major, minor, major == 10 ? GetBuildNumber() : 0, IsServerSystem(), buffer,
                           kWindowsNameCapacity);
        return;
    }
    if (info && freeBuffer)
        freeBuffer(info);
    nameFromVersionChecks(buffer, kWindowsNameCapacity);
}
