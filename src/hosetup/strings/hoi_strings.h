// Bounded string family of hosetup.exe: every text of the program lives in a caller-owned
// fixed array that is passed together with its capacity, and these routines are the only ones
// that write such arrays. hosetup.exe exports all 150 members under their Microsoft-decorated
// names, so that modules loaded into the setup process (and their authors' compilers) bind to
// the very same routines; this header is therefore an ABI and its names, argument lists and
// results never change.
//
// Common rules:
// - A bounded string is a pointer to the first element plus its capacity: the number of
//   elements of the array, terminator included. Members ending in A work on 8-bit characters
//   of the system ANSI code page, members ending in W on 16-bit UTF-16 units.
// - Length is the number of elements before the first NUL. A scan of a destination looks at
//   no more than capacity - 1 elements; a destination without NUL in that range counts as full
//   (length capacity - 1).
// - Every writer leaves a NUL at or before index capacity - 1, except Init (no capacity), a
//   refused single-character Join (buffer left exactly as it was) and a capacity of 0.
// - A capacity of 0 writes nothing in every member, narrow and wide: not even a terminator.
//   Copies and Path return, Joins and the converters answer false, Print answers 0. Sources
//   must not overlap the destination; null sources are skipped where a member says so.
// - Nothing allocates, except the per-call numeric locale of the Print overloads with doubles.
#pragma once

// The exported symbol of a member: GNU as takes the quoted Microsoft-decorated name as it is.
// The decoration is ?<name>@@YA<result><arguments>@Z; a digit repeats an earlier argument
// type of two or more letters (0 first, 1 second, 2 third).
#define HOI_SYMBOL(decorated) __asm__("\"" decorated "\"")

// ---- functions ------------------------------------------------------------------------------

// -- copy_join.cpp --

// Init(buffer): stores NUL in elements 0 and 1 (one 16-bit store narrow, one 32-bit store wide).
// The buffer must hold at least two elements; there is no capacity.
void HOI_InitA(char* buffer) HOI_SYMBOL("?HOI_InitA@@YAXPEAD@Z");
void HOI_InitW(wchar_t* buffer) HOI_SYMBOL("?HOI_InitW@@YAXPEA_W@Z");

// Equal(a, b): true when lstrcmpiA/W (case-insensitive, locale-aware) finds the texts equal.
bool HOI_EqualA(const char* a, const char* b) HOI_SYMBOL("?HOI_EqualA@@YA_NPEBD0@Z");
bool HOI_EqualW(const wchar_t* a, const wchar_t* b) HOI_SYMBOL("?HOI_EqualW@@YA_NPEB_W0@Z");

// Compare(a, b): the result of lstrcmpiA/W unchanged: < 0, 0 or > 0, ignoring case.
int HOI_CompareA(const char* a, const char* b) HOI_SYMBOL("?HOI_CompareA@@YAHPEBD0@Z");
int HOI_CompareW(const wchar_t* a, const wchar_t* b) HOI_SYMBOL("?HOI_CompareW@@YAHPEB_W0@Z");

// Terminate(buffer, capacity): stores NUL at index capacity - 1; capacity 0 writes nothing.
void HOI_TerminateA(char* buffer, unsigned long long capacity)
    HOI_SYMBOL("?HOI_TerminateA@@YAXPEAD_K@Z");
void HOI_TerminateW(wchar_t* buffer, unsigned long long capacity)
    HOI_SYMBOL("?HOI_TerminateW@@YAXPEA_W_K@Z");

// CopyPart(destination, capacity, source, count): copies at most min(capacity - 1, count)
// elements of source, stopping at its NUL, to the start of destination and terminates it.
// The narrow member requires a non-null source unless the limit is 0; the wide member treats
// a null source as the empty string.
void HOI_CopyPartA(char* destination, unsigned long long capacity, const char* source,
    unsigned long long count) HOI_SYMBOL("?HOI_CopyPartA@@YAXPEAD_KPEBD1@Z");
void HOI_CopyPartW(wchar_t* destination, unsigned long long capacity, const wchar_t* source,
    unsigned long long count) HOI_SYMBOL("?HOI_CopyPartW@@YAXPEA_W_KPEB_W1@Z");

// Copy(destination, capacity, s1 ... sn), n = 1 to 7: destination becomes the concatenation of
// the non-null sources, silently cut at capacity - 1 elements, and is always terminated.
void HOI_CopyA(char* destination, unsigned long long capacity, const char* s1)
    HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KPEBD@Z");
void HOI_CopyA(char* destination, unsigned long long capacity, const char* s1, const char* s2)
    HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KPEBD2@Z");
void HOI_CopyA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3) HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KPEBD22@Z");
void HOI_CopyA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4) HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KPEBD222@Z");
void HOI_CopyA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4, const char* s5) HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KPEBD2222@Z");
void HOI_CopyA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4, const char* s5, const char* s6)
    HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KPEBD22222@Z");
void HOI_CopyA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4, const char* s5, const char* s6, const char* s7)
    HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KPEBD222222@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1)
    HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_KPEB_W@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2) HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_KPEB_W2@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3) HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_KPEB_W22@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4)
    HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_KPEB_W222@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4, const wchar_t* s5)
    HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_KPEB_W2222@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4, const wchar_t* s5,
    const wchar_t* s6) HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_KPEB_W22222@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4, const wchar_t* s5,
    const wchar_t* s6, const wchar_t* s7) HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_KPEB_W222222@Z");

// Copy(destination, capacity, c): capacity > 1: destination becomes c and NUL (so c = NUL gives
// the empty string); capacity 1: element 0 becomes NUL; capacity 0: nothing is written.
void HOI_CopyA(char* destination, unsigned long long capacity, char c)
    HOI_SYMBOL("?HOI_CopyA@@YAXPEAD_KD@Z");
void HOI_CopyW(wchar_t* destination, unsigned long long capacity, wchar_t c)
    HOI_SYMBOL("?HOI_CopyW@@YAXPEA_W_K_W@Z");

// JoinPart(destination, capacity, source, count): appends source elements behind the bounded
// end of destination while the total length stays below min(capacity - 1, end + count) and the
// source's NUL is not reached, then terminates. True when source is null or was appended up to
// its NUL; a source longer than count gives false even when the buffer had room.
bool HOI_JoinPartA(char* destination, unsigned long long capacity, const char* source,
    unsigned long long count) HOI_SYMBOL("?HOI_JoinPartA@@YA_NPEAD_KPEBD1@Z");
bool HOI_JoinPartW(wchar_t* destination, unsigned long long capacity, const wchar_t* source,
    unsigned long long count) HOI_SYMBOL("?HOI_JoinPartW@@YA_NPEA_W_KPEB_W1@Z");

// Join(destination, capacity, s1 ... sn), n = 1 to 7: appends the non-null sources behind the
// bounded end of destination (an unterminated destination ends at capacity - 1), up to a total
// length of capacity - 1, and terminates. True when nothing was cut off; a non-empty source
// that found the buffer already full counts as cut off, an empty or null source never does.
bool HOI_JoinA(char* destination, unsigned long long capacity, const char* s1)
    HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KPEBD@Z");
bool HOI_JoinA(char* destination, unsigned long long capacity, const char* s1, const char* s2)
    HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KPEBD2@Z");
bool HOI_JoinA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3) HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KPEBD22@Z");
bool HOI_JoinA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4) HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KPEBD222@Z");
bool HOI_JoinA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4, const char* s5) HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KPEBD2222@Z");
bool HOI_JoinA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4, const char* s5, const char* s6)
    HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KPEBD22222@Z");
bool HOI_JoinA(char* destination, unsigned long long capacity, const char* s1, const char* s2,
    const char* s3, const char* s4, const char* s5, const char* s6, const char* s7)
    HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KPEBD222222@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1)
    HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_KPEB_W@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2) HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_KPEB_W2@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3) HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_KPEB_W22@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4)
    HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_KPEB_W222@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4, const wchar_t* s5)
    HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_KPEB_W2222@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4, const wchar_t* s5,
    const wchar_t* s6) HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_KPEB_W22222@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, const wchar_t* s1,
    const wchar_t* s2, const wchar_t* s3, const wchar_t* s4, const wchar_t* s5,
    const wchar_t* s6, const wchar_t* s7) HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_KPEB_W222222@Z");

// Join(destination, capacity, c): when the bounded end lies below capacity - 1 and c is not
// NUL, stores c and a NUL there and returns true; otherwise returns false and leaves the buffer
// exactly as it was (not even terminated).
bool HOI_JoinA(char* destination, unsigned long long capacity, char c)
    HOI_SYMBOL("?HOI_JoinA@@YA_NPEAD_KD@Z");
bool HOI_JoinW(wchar_t* destination, unsigned long long capacity, wchar_t c)
    HOI_SYMBOL("?HOI_JoinW@@YA_NPEA_W_K_W@Z");

// Path(buffer, capacity): makes a folder path end in a separator: appends a backslash when the
// text is not empty, has room for one more element, does not begin with "*" and does not
// already end in a backslash or a slash. Otherwise the buffer stays as it is.
void HOI_PathA(char* buffer, unsigned long long capacity) HOI_SYMBOL("?HOI_PathA@@YAXPEAD_K@Z");
void HOI_PathW(wchar_t* buffer, unsigned long long capacity)
    HOI_SYMBOL("?HOI_PathW@@YAXPEA_W_K@Z");

// -- make_path.cpp --

// MakePath(destination, capacity, drive, dir, name, extension): composes
// [drive letter ":"][dir ["\"]][name]["." extension] from the non-null, non-empty parts; the
// backslash is left out when dir already ends in one or in a slash, the full stop when the
// extension begins with one. The text is then copied as by the one-source Copy. When the
// parts' lengths add up to 260 or more, destination is cleared as by Init instead.
void HOI_MakePathA(char* destination, unsigned long long capacity, const char* drive,
    const char* dir, const char* name, const char* extension)
    HOI_SYMBOL("?HOI_MakePathA@@YAXPEAD_KPEBD222@Z");

// -- convert.cpp --

// ConvertAnsiToUTF16(source, destination, capacity): converts source with its terminator from
// the system ANSI code page, offering capacity - 1 units (one is kept spare). True when at least
// one unit was stored; false when the text does not fit or cannot be converted, and the
// destination's content is then unspecified.
bool HOI_ConvertAnsiToUTF16(const char* source, wchar_t* destination, unsigned long long capacity)
    HOI_SYMBOL("?HOI_ConvertAnsiToUTF16@@YA_NPEBDPEA_W_K@Z");

// ConvertUTF16ToAnsi(source, destination, capacity): the reverse, without best-fit look-alikes:
// characters the code page lacks become "?". capacity - 1 bytes are offered; the result as above.
bool HOI_ConvertUTF16ToAnsi(const wchar_t* source, char* destination, unsigned long long capacity)
    HOI_SYMBOL("?HOI_ConvertUTF16ToAnsi@@YA_NPEB_WPEAD_K@Z");

// -- print.cpp --

// Print(destination, capacity, format, values...): printf-style formatting through the C
// runtime's legacy bounded formatter, writing at most capacity elements, then NUL at index
// capacity - 1. The result is the length of the text left in the buffer: the full length when
// it fitted, capacity - 1 when it was cut.
// - Overloads whose values include a double format through a per-call "English" numeric locale
//   (decimal point ".", no grouping) whatever the user's settings; the others, and those when
//   that locale cannot be created, use the process's current C locale.
// - In the wide family %s takes a wide string and %c a wide character; in the narrow family
//   narrow ones. int values feed %d-style conversions, char values %c.
// The overloads differ only in the values that follow the format.

// Narrow: 1-10 strings, 1-10 ints, 1-10 doubles, mixed lists, then the char lists.
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD22@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD22222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD222222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, const char*, const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2222222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, const char*, const char*, const char*, const char*,
    const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD22222222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, const char*, const char*, const char*, const char*,
    const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD222222222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, const char*, const char*, const char*, const char*,
    const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2222222222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    int, int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    int, int, int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    int, int, int, int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHHHHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    double, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    double, double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    double, double, double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    double, double, double, double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNNNNN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, double, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDN2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, double, double, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDNN2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, const char*, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2H@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, const char*, const char*, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD22H@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD22HH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, const char*, const char*, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD222H@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, const char*, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2HH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, int, int, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2HH2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, const char*, int, int, int)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2HHH@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, const char*, int, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2H2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    const char*, int, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBD2H22@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDH2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDH22@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    int, const char*, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDH222@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHH2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int, int, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHH2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, int, int, double)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDHHN@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, char)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDD@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, char, char)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDDD@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, char, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDD2@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*,
    char, const char*, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDD22@Z");
unsigned long long HOI_PrintA(char*, unsigned long long, const char*, char, char, const char*)
    HOI_SYMBOL("?HOI_PrintA@@YA_KPEAD_KPEBDDD2@Z");

// Wide: the same lists without the char lists.
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W22@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W22222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const
    wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W222222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const
    wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2222222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const
    wchar_t*, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W22222222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const
    wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W222222222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const
    wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2222222222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, int, int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, int, int, int, int, int, int, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHHHHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, double, double, double, double, double, double, double, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNNNNN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, double, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WN2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    double, double, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WNN2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, const wchar_t*, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2H@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W22H@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W22HH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, const wchar_t*, const wchar_t*, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W222H@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2HH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, int, int, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2HH2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, int, int, int)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2HHH@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, int, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2H2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    const wchar_t*, int, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_W2H22@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WH2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WH22@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, const wchar_t*, const wchar_t*, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WH222@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, int, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHH2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*,
    int, int, int, const wchar_t*)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHH2@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHN@Z");
unsigned long long HOI_PrintW(wchar_t*, unsigned long long, const wchar_t*, int, int, double)
    HOI_SYMBOL("?HOI_PrintW@@YA_KPEA_W_KPEB_WHHN@Z");
