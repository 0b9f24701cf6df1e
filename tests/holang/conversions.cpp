// Parser of printf conversions and date-pattern codes for the language-module tests. It follows
// the Microsoft C runtime's format syntax, which is what the setup program formats with.
#include "conversions.h"

#include <cstring>

namespace {

bool IsFlag(char c)
{
    return c != '\0' && std::strchr("-+ #0", c) != nullptr;
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Classifies one conversion starting just behind its "%"; moves p behind it.
char ClassifyConversion(const char*& p)
{
    bool starArgument = false;
    while (IsFlag(*p))
        ++p;
    if (*p == '*') {
        starArgument = true;
        ++p;
    }
    while (IsDigit(*p))
        ++p;
    if (*p == '.') {
        ++p;
        if (*p == '*') {
            starArgument = true;
            ++p;
        }
        while (IsDigit(*p))
            ++p;
    }

    // Length modifiers: only none and "l" match what the program passes (int, unsigned long,
    // narrow text); everything else changes the argument's size or width.
    bool plainOrLong = true;
    bool longModifier = false;
    if (*p == 'l' && p[1] != 'l') {
        longModifier = true;
        ++p;
    } else if (*p == 'l' || *p == 'h' || *p == 'L' || *p == 'I' || *p == 'z' || *p == 'j' ||
               *p == 't' || *p == 'w') {
        plainOrLong = false;
        while (*p != '\0' && std::strchr("lhLIzjtw0123456789", *p) != nullptr)
            ++p;
    }

    const char conversion = *p;
    if (conversion == '\0')
        return kConversionOther;
    ++p;
    if (starArgument || !plainOrLong)
        return kConversionOther;
    if (conversion == 's')
        return longModifier ? kConversionOther : kConversionText; // "%ls" is a wide text
    if (std::strchr("diuxXo", conversion) != nullptr)
        return kConversionInt32;
    return kConversionOther;
}

} // namespace

std::string ConversionsOf(const char* format)
{
    std::string kinds;
    for (const char* p = format; *p != '\0';) {
        if (*p != '%') {
            ++p;
            continue;
        }
        ++p;
        if (*p == '%') {
            ++p;
            continue;
        }
        kinds += ClassifyConversion(p);
    }
    return kinds;
}

std::string DateCodesOf(const char* pattern)
{
    std::string codes;
    for (const char* p = pattern; *p != '\0'; ++p) {
        if (*p != '#')
            continue;
        if (p[1] == '\0') {
            codes += '#';
            break;
        }
        codes += *++p;
    }
    return codes;
}
