// Naming the system for the wizard's informational text, and the start-up's version check.
#include <gtest/gtest.h>

#include "shell/shell.h"

namespace {

std::string nameOf(unsigned major, unsigned minor, std::uint32_t build, bool server)
{
    char buffer[kWindowsNameCapacity];
    nameWindowsVersion(major, minor, build, server, buffer, sizeof buffer);
    return buffer;
}

TEST(WindowsName, VersionTenSplitsAtBuild22000)
{
    EXPECT_EQ(nameOf(10, 0, 22000, false), "Windows 11");
    EXPECT_EQ(nameOf(10, 0, 21999, false), "Windows 10");
    EXPECT_EQ(nameOf(10, 0, 0, false), "Windows 10");   // an unreadable build number counts as 0
    EXPECT_EQ(nameOf(10, 0, 22621, true), "Windows Server 2022");
    EXPECT_EQ(nameOf(10, 0, 17763, true), "Windows Server 2019");
}

TEST(WindowsName, OlderNamesCarryNoBreakSpaces)
{
    EXPECT_EQ(nameOf(6, 1, 0, false), "Windows\xA0" "7");
    EXPECT_EQ(nameOf(6, 3, 0, false), "Windows\xA0" "8.1");
    EXPECT_EQ(nameOf(6, 9, 0, false), "Windows\xA0" "8.1");  // any minor from 3 up
    EXPECT_EQ(nameOf(6, 0, 0, false), "Windows\xA0Vista");
    EXPECT_EQ(nameOf(5, 2, 0, false), "Windows\xA0Server\xA0" "2003");
    EXPECT_EQ(nameOf(5, 1, 0, true), "Windows\xA0XP");
    EXPECT_EQ(nameOf(4, 0, 0, false), "Windows\xA0NT");
    // Server names of version 6 use ordinary blanks.
    EXPECT_EQ(nameOf(6, 1, 0, true), "Windows Server 2008 R2");
    EXPECT_EQ(nameOf(6, 2, 0, true), "Windows Server 2012");
}

TEST(WindowsName, UnknownVersionsAreFormatted)
{
    EXPECT_EQ(nameOf(12, 0, 0, false), "Windows 12.0");
    EXPECT_EQ(nameOf(12, 0, 0, true), "Windows Server 12.0");
    EXPECT_EQ(nameOf(3, 51, 0, false), "Windows 3.51");
}

TEST(WindowsName, CutToThirtyTwoCharacters)
{
    char buffer[8];
    nameWindowsVersion(10, 0, 0, true, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "Windows");
}

// The running system: Wine reports its configured version (Windows 10 by default).
TEST(RunningSystem, AtLeastWindowsSevenAndNamed)
{
    EXPECT_TRUE(IsWindowsAtLeast(6, 1, 0));
    EXPECT_FALSE(IsWindowsAtLeast(99, 0, 0));
    EXPECT_FALSE(IsServerSystem());

    OSVERSIONINFOA info = {sizeof info};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    GetVersionExA(&info);
#pragma GCC diagnostic pop
    char name[kWindowsNameCapacity];
    GetWindowsName(name);
    EXPECT_EQ(std::string(name), nameOf(info.dwMajorVersion, info.dwMinorVersion, GetBuildNumber(), false));
}

TEST(RunningSystem, BuildNumberFromTheRegistry)
{
    HKEY key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", 0,
                            KEY_READ | KEY_WRITE, &key), ERROR_SUCCESS);
    char saved[64] = {};
    DWORD size = sizeof saved;
    ASSERT_EQ(RegQueryValueExA(key, "CurrentBuildNumber", nullptr, nullptr, reinterpret_cast<BYTE*>(saved), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(GetBuildNumber(), strtoul(saved, nullptr, 10));

    RegSetValueExA(key, "CurrentBuildNumber", 0, REG_SZ, reinterpret_cast<const BYTE*>("22000"), 6);
    EXPECT_EQ(GetBuildNumber(), 22000u);
    RegSetValueExA(key, "CurrentBuildNumber", 0, REG_SZ, reinterpret_cast<const BYTE*>("none"), 5);
    EXPECT_EQ(GetBuildNumber(), 0u);
    RegSetValueExA(key, "CurrentBuildNumber", 0, REG_SZ, reinterpret_cast<const BYTE*>(saved), size);
    RegCloseKey(key);
}

} // namespace
