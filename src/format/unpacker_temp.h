// The unpacker's temporary file: hounzip.exe writes a member to "hzu" + 8 hex digits + ".tmp" in the target folder
// and renames it over the target once it is complete. The installer may choose the digits itself (hounzip's option
// -t followed by them) so that it knows the name before the unpacker starts; both sides spell it through
// FormatUnpackerTempName, in lower case, so that what the installer records is the name the unpacker creates.
// Header only and free of the C++ library, so that hounzip.exe can use it without another import.
#pragma once

#include <cstddef>
#include <cstdint>

// ---- constants ------------------------------------------------------------------------------

constexpr char kUnpackerTempPrefix[] = "hzu";
constexpr char kUnpackerTempSuffix[] = ".tmp";
constexpr std::size_t kUnpackerTempDigits = 8;  // hex digits: the whole 32-bit value
constexpr char kUnpackerTempOption[] = "-t";    // immediately followed by the digits
// Characters of a name, without the terminating zero.
constexpr std::size_t kUnpackerTempNameLength =
    sizeof(kUnpackerTempPrefix) - 1 + kUnpackerTempDigits + sizeof(kUnpackerTempSuffix) - 1;

// ---- functions ------------------------------------------------------------------------------

// Writes the kUnpackerTempDigits lower-case hex digits of value to out (no terminating zero).
inline void FormatUnpackerTempDigits(std::uint32_t value, char* out)
{
    for (std::size_t i = 0; i < kUnpackerTempDigits; i++)
        out[i] = "0123456789abcdef"[(value >> (4 * (kUnpackerTempDigits - 1 - i))) & 15];
}

// Writes the temporary name for value, terminated, to out (capacity bytes). Returns false, and leaves out empty
// when it has room for that, when the name does not fit.
inline bool FormatUnpackerTempName(std::uint32_t value, char* out, std::size_t capacity)
{
    if (capacity <= kUnpackerTempNameLength) {
        if (capacity > 0)
            out[0] = '\0';
        return false;
    }
    char* p = out;
    for (const char* s = kUnpackerTempPrefix; *s != '\0'; s++)
        *p++ = *s;
    FormatUnpackerTempDigits(value, p);
    p += kUnpackerTempDigits;
    for (const char* s = kUnpackerTempSuffix; *s != '\0'; s++)
        *p++ = *s;
    *p = '\0';
    return true;
}
