// Composing a path from drive, folder, name and extension (narrow only; the program's own
// paths are ANSI).
#include <windows.h>

#include <cstring>

#include "strings/hoi_strings.h"
#include "strings/capacity.h"

#pragma GCC diagnostic error "-Wmissing-declarations"

namespace {

using Size = unsigned long long;

// Parts whose lengths add up to this are refused: the result could not be a valid path.
constexpr Size kMakePathLimit = 260;
// The limit counts the parts only, not the ":", "\" and "." put between them: up to 259
// characters of parts, three separators and the terminator.
constexpr Size kMakePathScratch = kMakePathLimit - 1 + 3 + 1;

Size partLength(const char* part)
{
    return part != nullptr ? std::strlen(part) : 0;
}

bool isEmpty(const char* part)
{
    return part == nullptr || part[0] == 0;
}

// True when the last character of a non-empty folder text is a separator. The text is walked
// character by character in the ANSI code page, so the second byte of a double-byte character
// that happens to be 0x5C is not taken for a backslash.
bool endsInSeparator(const char* dir)
{
    const char* last = dir;
    for (const char* p = dir; *p != 0;) {
        last = p;
        p += (IsDBCSLeadByte(static_cast<BYTE>(*p)) && p[1] != 0) ? 2 : 1;
    }
    return *last == '\\' || *last == '/';
}

} // namespace

void HOI_MakePathA(char* destination, Size capacity, const char* drive, const char* dir,
    const char* name, const char* extension)
{
    if (writesNothing(capacity))
        return;
    if (partLength(drive) + partLength(dir) + partLength(name) + partLength(extension) >=
        kMakePathLimit) {
        HOI_InitA(destination);
        return;
    }

    char scratch[kMakePathScratch];
    scratch[0] = 0;
    if (!isEmpty(drive)) {
        HOI_JoinA(scratch, sizeof scratch, drive[0]);
        HOI_JoinA(scratch, sizeof scratch, ':');
    }
    if (!isEmpty(dir)) {
        HOI_JoinA(scratch, sizeof scratch, dir);
        if (!endsInSeparator(dir))
            HOI_JoinA(scratch, sizeof scratch, '\\');
    }
    if (!isEmpty(name))
        HOI_JoinA(scratch, sizeof scratch, name);
    if (!isEmpty(extension)) {
        if (extension[0] != '.')
            HOI_JoinA(scratch, sizeof scratch, '.');
        HOI_JoinA(scratch, sizeof scratch, extension);
    }
    HOI_CopyA(destination, capacity, scratch);
}
