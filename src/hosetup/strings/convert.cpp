// Conversions between the system ANSI code page and UTF-16.
#include <windows.h>

#include "strings/hoi_strings.h"
#include "strings/capacity.h"

#pragma GCC diagnostic error "-Wmissing-declarations"

namespace {

// The destination room offered to the platform: capacity - 1, one element kept spare, passed
// as the platform's 32-bit count.
int offeredRoom(unsigned long long capacity)
{
    return static_cast<int>(capacity - 1);
}

} // namespace

bool HOI_ConvertAnsiToUTF16(const char* source, wchar_t* destination, unsigned long long capacity)
{
    if (writesNothing(capacity))
        return false;
    const int room = offeredRoom(capacity);
    // With no room the platform would only measure the text, which stores nothing.
    if (room == 0)
        return false;
    return MultiByteToWideChar(CP_ACP, 0, source, -1, destination, room) > 0;
}

bool HOI_ConvertUTF16ToAnsi(const wchar_t* source, char* destination, unsigned long long capacity)
{
    if (writesNothing(capacity))
        return false;
    const int room = offeredRoom(capacity);
    if (room == 0)
        return false;
    // No best-fit look-alikes: a character the code page lacks must show as "?", not as a
    // different letter that would name a different file.
    return WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, source, -1, destination, room, "?",
               nullptr) > 0;
}
