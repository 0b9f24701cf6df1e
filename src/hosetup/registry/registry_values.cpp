// Registry value helpers: every value the setup program writes goes through them, so the value
// types, byte counts and the "empty text removes the value" rule are fixed in one place.
#include "registry/registry.h"
#include "strings/hoi_strings.h"

#include <cstdio>
#include <cstring>

void SetRegistryString(HKEY key, const char* name, const char* text)
{
    if (!text || !text[0]) {
        // A missing value is no error: the result is ignored like every write's.
        RegDeleteValueA(key, name);
        return;
    }
    // The byte count includes the terminating zero, so that it is stored with the text.
    const DWORD bytes = static_cast<DWORD>(std::strlen(text) + 1);
    RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), bytes);
}

void SetRegistryNumber(HKEY key, const char* name, std::uint32_t value)
{
    const BYTE bytes[4] = {static_cast<BYTE>(value), static_cast<BYTE>(value >> 8),
                           static_cast<BYTE>(value >> 16), static_cast<BYTE>(value >> 24)};
    RegSetValueExA(key, name, 0, REG_DWORD, bytes, sizeof bytes);
}

void FormatDecimal(char* buffer, std::int32_t value)
{
    HOI_PrintA(buffer, kDecimalTextCapacity, "%d", static_cast<int>(value));
}

std::int32_t ParseDecimal(const char* text)
{
    if (!text || !text[0])
        return kNoDecimalNumber;
    int value = 0;
    if (std::sscanf(text, "%d", &value) != 1)
        return kNoDecimalNumber;
    return value;
}
