// Copying, appending, comparing and terminating bounded strings, narrow and wide. Each exported
// member is a thin shell around one template below, so the two widths cannot drift apart;
// the few places where they differ on purpose are spelled out in the shells.
#include <windows.h>

#include <cstring>

#include "strings/hoi_strings.h"
#include "strings/capacity.h"

// Every definition here must match a declaration of the header, or it would silently get an
// ordinary C++ symbol instead of its exported name.
#pragma GCC diagnostic error "-Wmissing-declarations"

namespace {

using Size = unsigned long long;

// Number of elements before the first NUL, looking at no more than capacity - 1 of them, so
// an unterminated buffer counts as full.
template <typename C>
Size boundedLength(const C* text, Size capacity)
{
    const Size limit = capacity - 1;
    Size length = 0;
    while (length < limit && text[length] != 0)
        ++length;
    return length;
}

// Copies source to destination + position while position stays below limit. True when the
// source's NUL was reached, i.e. nothing of it was left behind.
template <typename C>
bool appendUpTo(C* destination, Size& position, Size limit, const C* source)
{
    while (position < limit && *source != 0)
        destination[position++] = *source++;
    return *source == 0;
}

// Appends the non-null sources in order, up to a total length of capacity - 1. A source that
// finds the buffer already full is cut off unless it is empty.
template <typename C, typename... Sources>
bool appendSources(C* destination, Size capacity, Size& position, Sources... sources)
{
    const C* const list[] = {sources...};
    bool whole = true;
    for (const C* source : list) {
        if (source != nullptr && !appendUpTo(destination, position, capacity - 1, source))
            whole = false;
    }
    return whole;
}

template <typename C, typename... Sources>
void copySources(C* destination, Size capacity, Sources... sources)
{
    if (writesNothing(capacity))
        return;
    Size position = 0;
    appendSources(destination, capacity, position, sources...);
    destination[position] = 0;
}

template <typename C, typename... Sources>
bool joinSources(C* destination, Size capacity, Sources... sources)
{
    if (writesNothing(capacity))
        return false;
    Size position = boundedLength(destination, capacity);
    const bool whole = appendSources(destination, capacity, position, sources...);
    destination[position] = 0;
    return whole;
}

template <typename C>
void initText(C* buffer)
{
    // Two elements in one store: callers rely on both the text and a following field being
    // empty (double-NUL lists).
    std::memset(buffer, 0, 2 * sizeof(C));
}

template <typename C>
void terminateText(C* buffer, Size capacity)
{
    if (!writesNothing(capacity))
        buffer[capacity - 1] = 0;
}

template <typename C>
void copyPart(C* destination, Size capacity, const C* source, Size count)
{
    if (writesNothing(capacity))
        return;
    const Size limit = capacity - 1 < count ? capacity - 1 : count;
    Size position = 0;
    // A null source is only touched when the limit lets a first element be read.
    while (position < limit && source[position] != 0) {
        destination[position] = source[position];
        ++position;
    }
    destination[position] = 0;
}

template <typename C>
void copyChar(C* destination, Size capacity, C c)
{
    if (capacity > 1) {
        destination[0] = c;
        destination[1] = 0;
    } else if (capacity == 1) {
        destination[0] = 0;
    }
}

template <typename C>
bool joinPart(C* destination, Size capacity, const C* source, Size count)
{
    if (writesNothing(capacity))
        return false;
    Size position = boundedLength(destination, capacity);
    // min(capacity - 1, end + count), computed without letting a huge count wrap around.
    const Size room = capacity - 1 - position;
    const Size limit = position + (count < room ? count : room);
    const bool whole = source == nullptr || appendUpTo(destination, position, limit, source);
    destination[position] = 0;
    return whole;
}

template <typename C>
bool joinChar(C* destination, Size capacity, C c)
{
    if (writesNothing(capacity))
        return false;
    const Size end = boundedLength(destination, capacity);
    if (end >= capacity - 1 || c == 0)
        return false; // the buffer is left exactly as it was, unterminated or not
    destination[end] = c;
    destination[end + 1] = 0;
    return true;
}

template <typename C>
void pathText(C* buffer, Size capacity)
{
    // "*" stands for a folder that is not known yet; it must not turn into "*\".
    if (writesNothing(capacity) || buffer[0] == '*')
        return;
    const Size length = boundedLength(buffer, capacity);
    if (length == 0 || length >= capacity - 1)
        return;
    const C last = buffer[length - 1];
    if (last == '\\' || last == '/')
        return;
    buffer[length] = '\\';
    buffer[length + 1] = 0;
}

} // namespace

void HOI_InitA(char* buffer) { initText(buffer); }
void HOI_InitW(wchar_t* buffer) { initText(buffer); }

bool HOI_EqualA(const char* a, const char* b) { return lstrcmpiA(a, b) == 0; }
bool HOI_EqualW(const wchar_t* a, const wchar_t* b) { return lstrcmpiW(a, b) == 0; }
int HOI_CompareA(const char* a, const char* b) { return lstrcmpiA(a, b); }
int HOI_CompareW(const wchar_t* a, const wchar_t* b) { return lstrcmpiW(a, b); }

void HOI_TerminateA(char* buffer, Size capacity) { terminateText(buffer, capacity); }
void HOI_TerminateW(wchar_t* buffer, Size capacity) { terminateText(buffer, capacity); }

// The narrow member trusts its caller with the source; the wide one, written later for modules
// that pass optional texts, reads a null source as empty.
void HOI_CopyPartA(char* destination, Size capacity, const char* source, Size count)
{
    copyPart(destination, capacity, source, count);
}
void HOI_CopyPartW(wchar_t* destination, Size capacity, const wchar_t* source, Size count)
{
    copyPart(destination, capacity, source != nullptr ? source : L"", count);
}

void HOI_CopyA(char* d, Size n, const char* s1) { copySources(d, n, s1); }
void HOI_CopyA(char* d, Size n, const char* s1, const char* s2) { copySources(d, n, s1, s2); }
void HOI_CopyA(char* d, Size n, const char* s1, const char* s2, const char* s3)
{
    copySources(d, n, s1, s2, s3);
}
void HOI_CopyA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4)
{
    copySources(d, n, s1, s2, s3, s4);
}
void HOI_CopyA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4,
    const char* s5)
{
    copySources(d, n, s1, s2, s3, s4, s5);
}
void HOI_CopyA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4,
    const char* s5, const char* s6)
{
    copySources(d, n, s1, s2, s3, s4, s5, s6);
}
void HOI_CopyA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4,
    const char* s5, const char* s6, const char* s7)
{
    copySources(d, n, s1, s2, s3, s4, s5, s6, s7);
}
void HOI_CopyA(char* d, Size n, char c) { copyChar(d, n, c); }

void HOI_CopyW(wchar_t* d, Size n, const wchar_t* s1) { copySources(d, n, s1); }
void HOI_CopyW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2)
{
    copySources(d, n, s1, s2);
}
void HOI_CopyW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3)
{
    copySources(d, n, s1, s2, s3);
}
void HOI_CopyW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4)
{
    copySources(d, n, s1, s2, s3, s4);
}
void HOI_CopyW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4, const wchar_t* s5)
{
    copySources(d, n, s1, s2, s3, s4, s5);
}
void HOI_CopyW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4, const wchar_t* s5, const wchar_t* s6)
{
    copySources(d, n, s1, s2, s3, s4, s5, s6);
}
void HOI_CopyW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4, const wchar_t* s5, const wchar_t* s6, const wchar_t* s7)
{
    copySources(d, n, s1, s2, s3, s4, s5, s6, s7);
}
void HOI_CopyW(wchar_t* d, Size n, wchar_t c) { copyChar(d, n, c); }

bool HOI_JoinPartA(char* destination, Size capacity, const char* source, Size count)
{
    return joinPart(destination, capacity, source, count);
}
bool HOI_JoinPartW(wchar_t* destination, Size capacity, const wchar_t* source, Size count)
{
    return joinPart(destination, capacity, source, count);
}

bool HOI_JoinA(char* d, Size n, const char* s1) { return joinSources(d, n, s1); }
bool HOI_JoinA(char* d, Size n, const char* s1, const char* s2)
{
    return joinSources(d, n, s1, s2);
}
bool HOI_JoinA(char* d, Size n, const char* s1, const char* s2, const char* s3)
{
    return joinSources(d, n, s1, s2, s3);
}
bool HOI_JoinA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4)
{
    return joinSources(d, n, s1, s2, s3, s4);
}
bool HOI_JoinA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4,
    const char* s5)
{
    return joinSources(d, n, s1, s2, s3, s4, s5);
}
bool HOI_JoinA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4,
    const char* s5, const char* s6)
{
    return joinSources(d, n, s1, s2, s3, s4, s5, s6);
}
bool HOI_JoinA(char* d, Size n, const char* s1, const char* s2, const char* s3, const char* s4,
    const char* s5, const char* s6, const char* s7)
{
    return joinSources(d, n, s1, s2, s3, s4, s5, s6, s7);
}
bool HOI_JoinA(char* d, Size n, char c) { return joinChar(d, n, c); }

bool HOI_JoinW(wchar_t* d, Size n, const wchar_t* s1) { return joinSources(d, n, s1); }
bool HOI_JoinW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2)
{
    return joinSources(d, n, s1, s2);
}
bool HOI_JoinW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3)
{
    return joinSources(d, n, s1, s2, s3);
}
bool HOI_JoinW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4)
{
    return joinSources(d, n, s1, s2, s3, s4);
}
bool HOI_JoinW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4, const wchar_t* s5)
{
    return joinSources(d, n, s1, s2, s3, s4, s5);
}
bool HOI_JoinW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4, const wchar_t* s5, const wchar_t* s6)
{
    return joinSources(d, n, s1, s2, s3, s4, s5, s6);
}
bool HOI_JoinW(wchar_t* d, Size n, const wchar_t* s1, const wchar_t* s2, const wchar_t* s3,
    const wchar_t* s4, const wchar_t* s5, const wchar_t* s6, const wchar_t* s7)
{
    return joinSources(d, n, s1, s2, s3, s4, s5, s6, s7);
}
bool HOI_JoinW(wchar_t* d, Size n, wchar_t c) { return joinChar(d, n, c); }

void HOI_PathA(char* buffer, Size capacity) { pathText(buffer, capacity); }
void HOI_PathW(wchar_t* buffer, Size capacity) { pathText(buffer, capacity); }
