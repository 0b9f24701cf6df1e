// The name under which the member is written. Only the stored base name is used: any folder part, drive prefix
// or ".." is dropped, so that no archive can write outside the target folder, and names that Windows would read
// as something else than a plain file in that folder (devices, streams, wildcards) are refused.
#include "hounzip.h"

#include <string.h>

// True for the names that Windows maps to devices in every folder, with or without an extension.
static int IsDeviceName(const char *name)
{
    static const char *const devices[] = { "CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$" };
    char stem[8];
    size_t length = 0;
    while (name[length] != '\0' && name[length] != '.' && name[length] != ' ' && length < sizeof(stem) - 1) {
        stem[length] = name[length];
        length++;
    }
    stem[length] = '\0';
    for (size_t i = 0; i < sizeof(devices) / sizeof(devices[0]); i++)
        if (lstrcmpiA(stem, devices[i]) == 0)
            return 1;
    if (length == 4 && stem[3] >= '1' && stem[3] <= '9') {
        stem[3] = '\0';
        return lstrcmpiA(stem, "COM") == 0 || lstrcmpiA(stem, "LPT") == 0;
    }
    return 0;
}

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

// Derives the name to write from the stored name (length bytes, not terminated; utf8 when the archive marks it
// so). Returns false when nothing safe remains: empty, "." or "..", a device name, or characters that are not
// allowed in a file name.
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

    int onlyDotsAndBlanks = 1;
    for (const char *p = out; *p != '\0'; p++) {
        unsigned char ch = (unsigned char)*p;
        if (ch < 0x20 || strchr("<>:\"|?*/\\", ch) != NULL)
            return 0;
        if (ch != '.' && ch != ' ')
            onlyDotsAndBlanks = 0;
    }
    return !onlyDotsAndBlanks && !IsDeviceName(out);
}
