// The name under which the member is written. Only the stored base name is used: any folder part, drive prefix
// or ".." is dropped, so that no archive can write outside the target folder, and names that Windows would read
// as something else than one plain file of that name in that folder (devices, streams, wildcards, names that it
// would silently shorten) are refused.
#include "hounzip.h"

#include <string.h>

// Converts a UTF-8 name to the ANSI code page that the ...A functions use. Fails for invalid UTF-8 and for
// characters that the code page cannot hold (a best-fit substitute could name another file).
static int Utf8ToAnsi(const char *text, size_t length, char *out, size_t capacity)
{
    WCHAR wide[MAX_PATH];
    int wideLength = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, (int)length, wide, MAX_PATH - 1);
    if (wideLength <= 0)
        return 0;
    BOOL lossy = FALSE;
    int ansiLength = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, wideLength, out, (int)capacity - 1,
                                         NULL, &lossy);
    if (ansiLength <= 0 || lossy)
        return 0;
    out[ansiLength] = '\0';
    return 1;
}

// True when the length characters at text spell word (upper-case ASCII letters, digits, "$"), ignoring case.
static int Spells(const WCHAR *text, size_t length, const char *word)
{
    size_t i = 0;
    for (; i < length && word[i] != '\0'; i++)
        if (text[i] != (WCHAR)word[i] && text[i] != (WCHAR)(word[i] | 0x20))
            return 0;
    return i == length && word[i] == '\0';
}

// True for the names that Windows maps to a device in every folder. It looks only at the part before the first
// dot, without the blanks that close it, so "NUL.txt", "com1.tar.gz" and "CON .log" are devices too. A port
// number may be a digit or one of the Latin-1 superscripts one, two and three (U+00B9, U+00B2, U+00B3).
static int IsDeviceName(const WCHAR *name)
{
    static const char *const devices[] = { "CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$" };
    size_t length = 0;
    while (name[length] != 0 && name[length] != '.')
        length++;
    while (length > 0 && name[length - 1] == ' ')
        length--;
    for (size_t i = 0; i < sizeof(devices) / sizeof(devices[0]); i++)
        if (Spells(name, length, devices[i]))
            return 1;
    WCHAR port = length == 4 ? name[3] : 0;
    int portDigit = (port >= '0' && port <= '9') || port == 0x00B9 || port == 0x00B2 || port == 0x00B3;
    return portDigit && (Spells(name, 3, "COM") || Spells(name, 3, "LPT"));
}

// The one decision whether name (length characters, as Windows will see it) is a plain file name: not empty,
// no control characters, none of < > : " | ? * / \ (a ":" would open a stream), no closing dot or blank
// (Windows strips them and would write another name; this also refuses "." and ".."), and not a device.
static int IsPlainFileName(const WCHAR *name, size_t length)
{
    if (length == 0 || name[length - 1] == '.' || name[length - 1] == ' ')
        return 0;
    for (size_t i = 0; i < length; i++)
        if (name[i] < 0x20 || (name[i] < 0x80 && strchr("<>:\"|?*/\\", (char)name[i]) != NULL))
            return 0;
    return !IsDeviceName(name);
}

// Derives the name to write from the stored name (length bytes, not terminated; utf8 when the archive marks it
// so). Returns false when nothing safe remains.
int HZ_SafeBaseName(const char *stored, size_t length, int utf8, char *out, size_t capacity)
{
    if (memchr(stored, '\0', length) != NULL)
        return 0;
    size_t start = length;
    while (start > 0 && stored[start - 1] != '/' && stored[start - 1] != '\\')
        start--;
    const char *base = stored + start;
    size_t baseLength = length - start;
    while (baseLength >= 2 && ((base[0] | 0x20) >= 'a' && (base[0] | 0x20) <= 'z') && base[1] == ':') {
        base += 2;
        baseLength -= 2;
    }
    if (baseLength == 0 || baseLength >= capacity)
        return 0;

    int ascii = 1;
    for (size_t i = 0; i < baseLength; i++)
        if ((unsigned char)base[i] >= 0x80)
            ascii = 0;
    if (utf8 && !ascii) {
        if (!Utf8ToAnsi(base, baseLength, out, capacity))
            return 0;
    } else {
        memcpy(out, base, baseLength);
        out[baseLength] = '\0';
    }

    // The ...A calls hand Windows the name converted from the ANSI code page, so the checks look at that form:
    // whether byte 0xB9 is the superscript one depends on the code page.
    WCHAR wide[MAX_PATH];
    int wideLength = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, out, -1, wide, MAX_PATH);
    return wideLength > 0 && IsPlainFileName(wide, (size_t)wideLength - 1);
}
