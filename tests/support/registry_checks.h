// Checks on the real registry that fail at the test line asking: EXPECT_REG_SZ(root, "key", "value",
// "text"), EXPECT_REG_KEY(root, "key") and EXPECT_NO_REG_KEY(root, "key").
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

// ---- functions ------------------------------------------------------------------------------

// A REG_SZ value as stored, with its terminating zero; "" when it is missing or of another type.
inline std::string regString(HKEY root, const char* key, const char* name)
{
    char data[4096] = {};
    DWORD size = sizeof data, type = REG_NONE;
    HKEY opened = nullptr;
    const bool read = RegOpenKeyExA(root, key, 0, KEY_READ, &opened) == ERROR_SUCCESS &&
                      RegQueryValueExA(opened, name, nullptr, &type, reinterpret_cast<BYTE*>(data), &size) == ERROR_SUCCESS;
    RegCloseKey(opened);
    return read && type == REG_SZ ? std::string(data, size) : std::string();
}

inline bool regKeyExists(HKEY root, const char* key)
{
    HKEY opened = nullptr;
    const bool found = RegOpenKeyExA(root, key, 0, KEY_READ, &opened) == ERROR_SUCCESS;
    RegCloseKey(opened);
    return found;
}

inline void deleteRegTree(HKEY root, const char* key)
{
    RegDeleteTreeA(root, key);
    RegDeleteKeyA(root, key);
}

#define EXPECT_REG_SZ(root, key, name, text) EXPECT_EQ(regString(root, key, name), std::string(text) + '\0') << (key)
#define EXPECT_REG_KEY(root, key) EXPECT_TRUE(regKeyExists(root, key)) << (key)
#define EXPECT_NO_REG_KEY(root, key) EXPECT_FALSE(regKeyExists(root, key)) << (key)
