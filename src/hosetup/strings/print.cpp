// Formatted output into bounded strings. The exported interface offers one overload per
// argument list rather than a variadic function, so that callers compiled by any compiler pass
// typed values; all overloads funnel into printBounded, which feeds the C runtime's legacy
// bounded formatter (_vsnprintf/_vsnwprintf of msvcrt, not MinGW's C99 replacement).
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cwchar>
#include <locale.h>
#include <type_traits>

#include "strings/hoi_strings.h"
#include "strings/capacity.h"

#pragma GCC diagnostic error "-Wmissing-declarations"

namespace {

using Size = unsigned long long;

int formatList(char* destination, std::size_t count, _locale_t locale, const char* format,
    va_list arguments)
{
    if (locale != nullptr)
        return _vsnprintf_l(destination, count, format, locale, arguments);
    return _vsnprintf(destination, count, format, arguments);
}

int formatList(wchar_t* destination, std::size_t count, _locale_t locale, const wchar_t* format,
    va_list arguments)
{
    if (locale != nullptr)
        return _vsnwprintf_l(destination, count, format, locale, arguments);
    return _vsnwprintf(destination, count, format, arguments);
}

template <typename C>
int formatValues(C* destination, std::size_t count, _locale_t locale, const C* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = formatList(destination, count, locale, format, arguments);
    va_end(arguments);
    return result;
}

// The legacy formatter writes at most capacity elements and returns the length when the text
// fitted with its terminator, capacity when it fitted without, and a negative value when it
// was cut or failed. After the forced terminator the text left is the full length or
// capacity - 1; a negative result, widened with its sign, is larger than any capacity.
template <typename C, typename... Values>
Size printBounded(C* destination, Size capacity, const C* format, Values... values)
{
    if (writesNothing(capacity))
        return 0;
    // Doubles are written with "." and no grouping whatever the user's regional settings:
    // such texts end up in files and registry values that other programs parse.
    constexpr bool hasDouble = (std::is_same_v<Values, double> || ...);
    _locale_t numeric = hasDouble ? _create_locale(LC_NUMERIC, "English") : nullptr;
    const int written = formatValues(destination, static_cast<std::size_t>(capacity), numeric,
        format, values...);
    if (numeric != nullptr)
        _free_locale(numeric);
    destination[capacity - 1] = 0;
    const Size length = static_cast<Size>(static_cast<long long>(written));
    return length < capacity - 1 ? length : capacity - 1;
}

} // namespace

// One definition per exported argument list. PRINT_PARAMS_n names the n values v1 ... vn;
// each definition binds to its declaration (and so to its exported name) in the header.
#define PRINT_PARAMS_1(t1) t1 v1
#define PRINT_PARAMS_2(t1, t2) PRINT_PARAMS_1(t1), t2 v2
#define PRINT_PARAMS_3(t1, t2, t3) PRINT_PARAMS_2(t1, t2), t3 v3
#define PRINT_PARAMS_4(t1, t2, t3, t4) PRINT_PARAMS_3(t1, t2, t3), t4 v4
#define PRINT_PARAMS_5(t1, t2, t3, t4, t5) PRINT_PARAMS_4(t1, t2, t3, t4), t5 v5
#define PRINT_PARAMS_6(t1, t2, t3, t4, t5, t6) PRINT_PARAMS_5(t1, t2, t3, t4, t5), t6 v6
#define PRINT_PARAMS_7(t1, t2, t3, t4, t5, t6, t7) PRINT_PARAMS_6(t1, t2, t3, t4, t5, t6), t7 v7
#define PRINT_PARAMS_8(t1, t2, t3, t4, t5, t6, t7, t8) \
    PRINT_PARAMS_7(t1, t2, t3, t4, t5, t6, t7), t8 v8
#define PRINT_PARAMS_9(t1, t2, t3, t4, t5, t6, t7, t8, t9) \
    PRINT_PARAMS_8(t1, t2, t3, t4, t5, t6, t7, t8), t9 v9
#define PRINT_PARAMS_10(t1, t2, t3, t4, t5, t6, t7, t8, t9, t10) \
    PRINT_PARAMS_9(t1, t2, t3, t4, t5, t6, t7, t8, t9), t10 v10

#define PRINT_VALUES_1 v1
#define PRINT_VALUES_2 PRINT_VALUES_1, v2
#define PRINT_VALUES_3 PRINT_VALUES_2, v3
#define PRINT_VALUES_4 PRINT_VALUES_3, v4
#define PRINT_VALUES_5 PRINT_VALUES_4, v5
#define PRINT_VALUES_6 PRINT_VALUES_5, v6
#define PRINT_VALUES_7 PRINT_VALUES_6, v7
#define PRINT_VALUES_8 PRINT_VALUES_7, v8
#define PRINT_VALUES_9 PRINT_VALUES_8, v9
#define PRINT_VALUES_10 PRINT_VALUES_9, v10

#define PRINT_DEFINE(name, C, n, ...) \
    Size name(C* destination, Size capacity, const C* format, PRINT_PARAMS_##n(__VA_ARGS__)) \
    { \
        return printBounded(destination, capacity, format, PRINT_VALUES_##n); \
    }

// The argument lists both widths export; S is the string type of the width.
#define PRINT_COMMON_LISTS(DEFINE, S) \
    DEFINE(1, S) \
    DEFINE(2, S, S) \
    DEFINE(3, S, S, S) \
    DEFINE(4, S, S, S, S) \
    DEFINE(5, S, S, S, S, S) \
    DEFINE(6, S, S, S, S, S, S) \
    DEFINE(7, S, S, S, S, S, S, S) \
    DEFINE(8, S, S, S, S, S, S, S, S) \
    DEFINE(9, S, S, S, S, S, S, S, S, S) \
    DEFINE(10, S, S, S, S, S, S, S, S, S, S) \
    DEFINE(1, int) \
    DEFINE(2, int, int) \
    DEFINE(3, int, int, int) \
    DEFINE(4, int, int, int, int) \
    DEFINE(5, int, int, int, int, int) \
    DEFINE(6, int, int, int, int, int, int) \
    DEFINE(7, int, int, int, int, int, int, int) \
    DEFINE(8, int, int, int, int, int, int, int, int) \
    DEFINE(9, int, int, int, int, int, int, int, int, int) \
    DEFINE(10, int, int, int, int, int, int, int, int, int, int) \
    DEFINE(1, double) \
    DEFINE(2, double, double) \
    DEFINE(3, double, double, double) \
    DEFINE(4, double, double, double, double) \
    DEFINE(5, double, double, double, double, double) \
    DEFINE(6, double, double, double, double, double, double) \
    DEFINE(7, double, double, double, double, double, double, double) \
    DEFINE(8, double, double, double, double, double, double, double, double) \
    DEFINE(9, double, double, double, double, double, double, double, double, double) \
    DEFINE(10, double, double, double, double, double, double, double, double, double, double) \
    DEFINE(2, double, S) \
    DEFINE(3, double, double, S) \
    DEFINE(2, S, int) \
    DEFINE(3, S, S, int) \
    DEFINE(4, S, S, int, int) \
    DEFINE(4, S, S, S, int) \
    DEFINE(3, S, int, int) \
    DEFINE(4, S, int, int, S) \
    DEFINE(4, S, int, int, int) \
    DEFINE(3, S, int, S) \
    DEFINE(4, S, int, S, S) \
    DEFINE(2, int, S) \
    DEFINE(3, int, S, S) \
    DEFINE(4, int, S, S, S) \
    DEFINE(3, int, int, S) \
    DEFINE(4, int, int, int, S) \
    DEFINE(2, int, double) \
    DEFINE(3, int, int, double)

#define PRINT_DEFINE_A(n, ...) PRINT_DEFINE(HOI_PrintA, char, n, __VA_ARGS__)
#define PRINT_DEFINE_W(n, ...) PRINT_DEFINE(HOI_PrintW, wchar_t, n, __VA_ARGS__)

PRINT_COMMON_LISTS(PRINT_DEFINE_A, const char*)
PRINT_COMMON_LISTS(PRINT_DEFINE_W, const wchar_t*)

// Character lists exist for the narrow family only.
PRINT_DEFINE_A(1, char)
PRINT_DEFINE_A(2, char, char)
PRINT_DEFINE_A(2, char, const char*)
PRINT_DEFINE_A(3, char, const char*, const char*)
PRINT_DEFINE_A(3, char, char, const char*)
