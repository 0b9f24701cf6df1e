#include "registry_checks.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Reads a value's type and bytes; false when the key or the value is missing.
bool readValue(HKEY root, const char* key, const char* name, DWORD* type, std::vector<BYTE>* data)
{
    HKEY opened;
    if (RegOpenKeyExA(root, key, 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return false;
    DWORD size = 0;
    LONG result = RegQueryValueExA(opened, name, nullptr, type, nullptr, &size);
    if (result == ERROR_SUCCESS) {
        data->assign(size, 0);
        result = RegQueryValueExA(opened, name, nullptr, type, data->data(), &size);
        data->resize(size);
    }
    RegCloseKey(opened);
    return result == ERROR_SUCCESS;
}

} // namespace

void expectRegString(int line, HKEY root, const char* key, const char* name, const std::string& text)
{
    DWORD type = 0;
    std::vector<BYTE> data;
    if (!readValue(root, key, name, &type, &data)) {
        ADD_FAILURE_AT(__FILE__, line) << key << " \"" << name << "\" missing, expected \"" << text << "\"";
        return;
    }
    if (type != REG_SZ)
        ADD_FAILURE_AT(__FILE__, line) << key << " \"" << name << "\" has type " << type << ", expected REG_SZ";
    // Written with its terminating zero.
    const std::string stored(data.begin(), data.end());
    if (stored != text + std::string(1, '\0'))
        ADD_FAILURE_AT(__FILE__, line) << key << " \"" << name << "\" is \"" << stored.c_str() << "\" ("
                                       << stored.size() << " bytes), expected \"" << text << "\"";
}

void expectRegNumber(int line, HKEY root, const char* key, const char* name, std::uint32_t number)
{
    DWORD type = 0;
    std::vector<BYTE> data;
    if (!readValue(root, key, name, &type, &data)) {
        ADD_FAILURE_AT(__FILE__, line) << key << " \"" << name << "\" missing";
        return;
    }
    std::uint32_t stored = 0;
    if (type != REG_DWORD || data.size() != 4)
        ADD_FAILURE_AT(__FILE__, line) << key << " \"" << name << "\" is not a 4-byte REG_DWORD";
    else if (memcpy(&stored, data.data(), 4), stored != number)
        ADD_FAILURE_AT(__FILE__, line) << key << " \"" << name << "\" is " << stored << ", expected " << number;
}

void expectNoRegValue(int line, HKEY root, const char* key, const char* name)
{
    DWORD type = 0;
    std::vector<BYTE> data;
    if (readValue(root, key, name, &type, &data))
        ADD_FAILURE_AT(__FILE__, line) << key << " \"" << name << "\" should not exist";
}

void expectRegKey(int line, HKEY root, const char* key, bool exists)
{
    HKEY opened;
    const bool found = RegOpenKeyExA(root, key, 0, KEY_READ, &opened) == ERROR_SUCCESS;
    if (found)
        RegCloseKey(opened);
    if (found != exists)
        ADD_FAILURE_AT(__FILE__, line) << "key " << key << (exists ? " missing" : " should not exist");
}

std::string readRegString(HKEY root, const char* key, const char* name)
{
    DWORD type = 0;
    std::vector<BYTE> data;
    if (!readValue(root, key, name, &type, &data) || data.empty())
        return std::string();
    return std::string(reinterpret_cast<const char*>(data.data()));
}

void deleteRegTree(HKEY root, const char* key)
{
    RegDeleteTreeA(root, key);
    RegDeleteKeyA(root, key);
}
