// The bounded string family and its converters at their boundaries. Every row runs on an
// 8-element buffer pre-filled with '#' behind the row's starting text and compares the whole
// buffer afterwards: a write past the allowed range, a missing terminator or one written where
// none may be shows.
#include <windows.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "strings/hoi_strings.h"

namespace {

constexpr long long kNone = -1; // the member has no result

// A buffer image with embedded NULs, from a literal: B("ab\0#") is four elements.
template <typename C, std::size_t N>
std::basic_string<C> B(const C (&text)[N]) { return std::basic_string<C>(text, N - 1); }

// The buffer's first elements before (the rest '#'), the call, all 8 elements after, and the
// result: bool as 0/1, a Print length, or kNone.
template <typename C>
struct Row {
    const char* what;
    std::basic_string<C> before;
    std::function<long long(C*)> call;
    std::basic_string<C> after;
    long long result;
};

template <typename C>
void checkRows(const std::vector<Row<C>>& rows)
{
    for (const Row<C>& row : rows) {
        SCOPED_TRACE(row.what);
        std::basic_string<C> buffer = row.before + std::basic_string<C>(8 - row.before.size(), '#');
        EXPECT_EQ(row.result, row.call(&buffer[0]));
        EXPECT_EQ(row.after, buffer);
    }
}

// A call without result (V) or with one (R), on the row's buffer b.
#define V(call) [](auto* b) -> long long { call; return kNone; }
#define R(call) [](auto* b) -> long long { return static_cast<long long>(call); }

} // namespace

TEST(Bounded, NarrowBoundaries)
{
    checkRows<char>({
        {"Copy, capacity 1", "", V(HOI_CopyA(b, 1, "abc")), B("\0#######"), kNone},
        {"Copy, null/empty skipped", "", V(HOI_CopyA(b, 8, nullptr, "a", "", "b", nullptr, "c", "d")),
            B("abcd\0###"), kNone},
        {"Copy, rest ignored", "", V(HOI_CopyA(b, 6, "abc", "de", "fgh", "i", "j", "k")), B("abcde\0##"), kNone},
        {"Copy char, capacity 1", "", V(HOI_CopyA(b, 1, 'x')), B("\0#######"), kNone},
        {"CopyPart, count limits", "", V(HOI_CopyPartA(b, 8, "abcdef", 3)), B("abc\0####"), kNone},
        {"CopyPart, null source, count 0", "", V(HOI_CopyPartA(b, 8, nullptr, 0)), B("\0#######"), kNone},
        {"Init clears two elements", "", V(HOI_InitA(b)), B("\0\0######"), kNone},
        {"Terminate", "", V(HOI_TerminateA(b, 3)), B("##\0#####"), kNone},
        {"Join, empty and null on full", B("abcd\0"), R(HOI_JoinA(b, 5, "", nullptr)), B("abcd\0###"), true},
        {"Join, no room to start", B("abcd\0"), R(HOI_JoinA(b, 5, "x")), B("abcd\0###"), false},
        {"Join, unterminated ends at last", "", R(HOI_JoinA(b, 5, "x")), B("####\0###"), false},
        {"Join, middle cut", B("abcde\0"), R(HOI_JoinA(b, 8, "f", "ghi", "j")), B("abcdefg\0"), false},
        {"JoinPart, count limits", B("\0"), R(HOI_JoinPartA(b, 8, "abcdef", 3)), B("abc\0####"), false},
        {"JoinPart, whole source", B("\0"), R(HOI_JoinPartA(b, 8, "abcdef", 6)), B("abcdef\0#"), true},
        {"JoinPart, buffer limits", B("ab\0"), R(HOI_JoinPartA(b, 5, "cdef", 9)), B("abcd\0###"), false},
        {"JoinPart, count wraps", B("ab\0"), R(HOI_JoinPartA(b, 8, "cd", ~0ull)), B("abcd\0###"), true},
        {"JoinPart, null on unterminated", "", R(HOI_JoinPartA(b, 4, nullptr, 2)), B("###\0####"), true},
        {"Join char", B("ab\0"), R(HOI_JoinA(b, 5, 'c')), B("abc\0####"), true},
        {"Join char NUL refused", B("ab\0"), R(HOI_JoinA(b, 5, '\0')), B("ab\0#####"), false},
        {"Join char on full: untouched", B("abcd\0"), R(HOI_JoinA(b, 5, 'e')), B("abcd\0###"), false},
        {"Join char, unterminated: untouched", "", R(HOI_JoinA(b, 5, 'e')), B("########"), false},
        {"Path, ends in slash", B("C:/\0"), V(HOI_PathA(b, 8)), B("C:/\0####"), kNone},
        {"Path, ends in backslash", B("a\\\0"), V(HOI_PathA(b, 8)), B("a\\\0#####"), kNone},
        {"Path, empty", B("\0"), V(HOI_PathA(b, 8)), B("\0#######"), kNone},
        {"Path, asterisk", B("*ab\0"), V(HOI_PathA(b, 8)), B("*ab\0####"), kNone},
        {"Path, unterminated", "", V(HOI_PathA(b, 3)), B("########"), kNone},
        {"Print, needs more", "", R(HOI_PrintA(b, 4, "%d", 12345)), B("123\0####"), 3},
        {"Print, capacity 1", "", R(HOI_PrintA(b, 1, "%d", 7)), B("\0#######"), 0},
        {"Print with doubles, cut", "", R(HOI_PrintA(b, 4, "%.2f", 1.5)), B("1.5\0####"), 3},
        {"ToAnsi: 4 refused, 5 fits", "", R(!HOI_ConvertUTF16ToAnsi(L"abc", b, 4) &&
            HOI_ConvertUTF16ToAnsi(L"abc", b, 5)), B("abc\0####"), true},
        {"ToAnsi: nothing without room", "", R(HOI_ConvertUTF16ToAnsi(L"", b, 1) ||
            HOI_ConvertUTF16ToAnsi(L"x", b, 0)), B("########"), false},
    });
}

TEST(Bounded, WideWhereItDiffers)
{
    checkRows<wchar_t>({
        {"CopyPart reads null as empty", L"", V(HOI_CopyPartW(b, 6, nullptr, 5)), B(L"\0#######"), kNone},
        {"Print cut", L"", R(HOI_PrintW(b, 4, L"%d", 12345)), B(L"123\0####"), 3},
        {"Print %s takes a wide string", L"", R(HOI_PrintW(b, 6, L"%s", L"\u00e9t\u00e9s longs")),
            B(L"\u00e9t\u00e9s \0##"), 5},
        {"ToUTF16: 4 refused, 5 fits", L"", R(!HOI_ConvertAnsiToUTF16("abc", b, 4) &&
            HOI_ConvertAnsiToUTF16("abc", b, 5)), B(L"abc\0####"), true},
        {"ToUTF16: nothing without room", L"", R(HOI_ConvertAnsiToUTF16("", b, 1) ||
            HOI_ConvertAnsiToUTF16("x", b, 0)), B(L"########"), false},
    });
}

// The overloads with doubles write a full stop even when the process's C locale (which the
// others use as it is) has a decimal comma: such texts end up in files other programs parse.
TEST(Bounded, DoublesAlwaysUseAFullStop)
{
    const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
    ASSERT_NE(nullptr, std::setlocale(LC_NUMERIC, "German"));
    char text[32];
    _snprintf(text, sizeof text, "%.2f", 1.5);
    EXPECT_STREQ("1,50", text); // the locale took
    HOI_PrintA(text, sizeof text, "%d %d %.1f", 1, 2, 1234567.5);
    EXPECT_STREQ("1 2 1234567.5", text);
    std::setlocale(LC_NUMERIC, saved.c_str());
}

// A character the code page lacks becomes "?", never a best-fit look-alike: U+0141 (L with
// stroke) would otherwise turn into "L" and name a different file.
TEST(Bounded, NoBestFitThroughCodePage1252)
{
    if (GetACP() != 1252)
        GTEST_SKIP() << "the expectations are written for code page 1252";
    char narrow[8];
    ASSERT_TRUE(HOI_ConvertUTF16ToAnsi(L"\u0141\u00e9\u03a9", narrow, 8));
    EXPECT_STREQ("?\xE9?", narrow);
}
