// Checks on the real registry that name the test line asking, in the style of Wine's regedit
// tests: EXPECT_REG_SZ(root, "key", "value", "text") reports "line 42: ..." when it fails.
#pragma once

#include <windows.h>
#include <cstdint>
#include <string>

// ---- functions ------------------------------------------------------------------------------

// tests/support/registry_checks.cpp
void expectRegString(int line, HKEY root, const char* key, const char* name, const std::string& text);
void expectRegNumber(int line, HKEY root, const char* key, const char* name, std::uint32_t number);
void expectNoRegValue(int line, HKEY root, const char* key, const char* name);
void expectRegKey(int line, HKEY root, const char* key, bool exists);
std::string readRegString(HKEY root, const char* key, const char* name);  // "" when missing
void deleteRegTree(HKEY root, const char* key);

#define EXPECT_REG_SZ(root, key, name, text) expectRegString(__LINE__, root, key, name, text)
#define EXPECT_REG_DWORD(root, key, name, number) expectRegNumber(__LINE__, root, key, name, number)
#define EXPECT_NO_REG_VALUE(root, key, name) expectNoRegValue(__LINE__, root, key, name)
#define EXPECT_REG_KEY(root, key) expectRegKey(__LINE__, root, key, true)
#define EXPECT_NO_REG_KEY(root, key) expectRegKey(__LINE__, root, key, false)
