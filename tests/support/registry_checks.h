// Checks on the real registry that fail at the test line asking: EXPECT_REG_SZ(root, "key", "value",
// "text"), EXPECT_REG_KEY(root, "key") and EXPECT_NO_REG_KEY(root, "key"); and a user's shell
// folder pointed elsewhere for a while.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

// ---- types ----------------------------------------------------------------------------------

// Points one of the user's shell folders ("Personal", "Programs", ...) at folder for the object's
// life, and puts the value back as it was (or takes it away) afterwards.
class UserShellFolderRedirect {
public:
    UserShellFolderRedirect(const char* name, const std::string& folder) : name_(name)
    {
        saved_ = RegGetValueA(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, &type_,
                              data_, &size_) == ERROR_SUCCESS;
        RegSetKeyValueA(HKEY_CURRENT_USER, kKey, name, REG_EXPAND_SZ, folder.c_str(), static_cast<DWORD>(folder.size() + 1));
    }
    ~UserShellFolderRedirect()
    {
        saved_ ? RegSetKeyValueA(HKEY_CURRENT_USER, kKey, name_, type_, data_, size_)
               : RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, name_);
    }
    UserShellFolderRedirect(const UserShellFolderRedirect&) = delete;
    UserShellFolderRedirect& operator=(const UserShellFolderRedirect&) = delete;

private:
    static constexpr char kKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
    const char* name_;
    bool saved_ = false;
    DWORD type_ = REG_NONE, size_ = MAX_PATH;
    char data_[MAX_PATH] = {};
};

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
