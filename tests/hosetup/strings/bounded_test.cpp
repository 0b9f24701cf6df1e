// The bounded string family and its converters at their boundaries. Every row runs on an
// 8-element buffer pre-filled with '#' behind the row's starting text and compares the whole
// buffer afterwards: a write past the allowed range, a missing terminator or one written where
// none may be shows.
#include <windows.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
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
        {"Copy, null/empty skipped", "", V(HOI_CopyA(b, 8, nullptr, "a", "", "b", nullptr, "c", "d")),
            B("abcd\0###"), kNone},
        {"Copy, rest ignored", "", V(HOI_CopyA(b, 6, "abc", "de", "fgh", "i", "j", "k")), B("abcde\0##"), kNone},
        {"CopyPart, count limits", "", V(HOI_CopyPartA(b, 8, "abcdef", 3)), B("abc\0####"), kNone},
        {"CopyPart, null source, count 0", "", V(HOI_CopyPartA(b, 8, nullptr, 0)), B("\0#######"), kNone},
        {"Init clears two elements", "", V(HOI_InitA(b)), B("\0\0######"), kNone},
        {"Join, empty and null on full", B("abcd\0"), R(HOI_JoinA(b, 5, "", nullptr)), B("abcd\0###"), true},
        {"Join, no room to start", B("abcd\0"), R(HOI_JoinA(b, 5, "x")), B("abcd\0###"), false},
        {"Join, unterminated ends at last", "", R(HOI_JoinA(b, 5, "x")), B("####\0###"), false},
        {"Join, middle cut", B("abcde\0"), R(HOI_JoinA(b, 8, "f", "ghi", "j")), B("abcdefg\0"), false},
        {"JoinPart, count limits", B("\0"), R(HOI_JoinPartA(b, 8, "abcdef", 3)), B("abc\0####"), false},
        {"JoinPart, buffer limits", B("ab\0"), R(HOI_JoinPartA(b, 5, "cdef", 9)), B("abcd\0###"), false},
        {"JoinPart, count wraps", B("ab\0"), R(HOI_JoinPartA(b, 8, "cd", ~0ull)), B("abcd\0###"), true},
        {"JoinPart, null on unterminated", "", R(HOI_JoinPartA(b, 4, nullptr, 2)), B("###\0####"), true},
        {"Join char NUL refused", B("ab\0"), R(HOI_JoinA(b, 5, '\0')), B("ab\0#####"), false},
        {"Join char on full: untouched", B("abcd\0"), R(HOI_JoinA(b, 5, 'e')), B("abcd\0###"), false},
        {"Join char, unterminated: untouched", "", R(HOI_JoinA(b, 5, 'e')), B("########"), false},
        {"Path, ends in slash", B("C:/\0"), V(HOI_PathA(b, 8)), B("C:/\0####"), kNone},
        {"Path, ends in backslash", B("a\\\0"), V(HOI_PathA(b, 8)), B("a\\\0#####"), kNone},
        {"Path, empty", B("\0"), V(HOI_PathA(b, 8)), B("\0#######"), kNone},
        {"Path, asterisk", B("*ab\0"), V(HOI_PathA(b, 8)), B("*ab\0####"), kNone},
        {"Path, unterminated", "", V(HOI_PathA(b, 3)), B("########"), kNone},
        {"Print, needs more", "", R(HOI_PrintA(b, 4, "%d", 12345)), B("123\0####"), 3},
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

// Every member of the exported string family that takes a capacity, at three capacities: the
// text exactly fits, one element short, and 0. Guard elements behind the capacity must stay as
// they were, so a terminator written one past the end, or anything written at capacity 0, shows.
// Each member is named by its exported symbol, decorated from its argument list as the Microsoft
// compiler does; the export test checks hosetup.exe against these names.
namespace {

using Size = unsigned long long;
constexpr Size kElements = 24;

// text: the whole result when it fits; start: the buffer's first elements before the call;
// extra: room the member wants beyond text and terminator.
template <typename C>
struct Member { std::string name; std::function<void(C*, Size)> call; std::basic_string<C> text, start; Size extra = 0; };

template <typename C>
std::basic_string<C> S(const char* text) { return std::basic_string<C>(text, text + std::char_traits<char>::length(text)); }

// ?HOI_<stem><A|W>@@YA<result><destination>_K<rest>@Z; a text argument after the first is "2",
// a back-reference to the third type of two or more letters.
template <typename C>
std::string symbol(const char* stem, const char* result, const std::string& rest)
{
    const bool narrow = sizeof(C) == 1;
    return std::string("?HOI_") + stem + (narrow ? "A@@YA" : "W@@YA") + result + (narrow ? "PEAD_K" : "PEA_W_K") + rest + "@Z";
}
template <typename C> const std::string kText = sizeof(C) == 1 ? "PEBD" : "PEB_W";
template <typename C> const std::string kChar = sizeof(C) == 1 ? "D" : "_W";

// The narrow or wide member under one name, so that one template serves both widths.
#define BOTH(name, narrow, wide) \
    template <typename C, typename... A> void name(C* b, Size n, A... a) \
    { if constexpr (sizeof(C) == 1) narrow(b, n, a...); else wide(b, n, a...); }
BOTH(copy, HOI_CopyA, HOI_CopyW)
BOTH(join, HOI_JoinA, HOI_JoinW)
BOTH(print, HOI_PrintA, HOI_PrintW)
BOTH(copyPart, HOI_CopyPartA, HOI_CopyPartW)
BOTH(joinPart, HOI_JoinPartA, HOI_JoinPartW)
BOTH(path, HOI_PathA, HOI_PathW)
BOTH(terminate, HOI_TerminateA, HOI_TerminateW)

// One value of a Print argument list, its format and its code in the symbol: each prints one element.
template <typename C, typename T> T value()
{
    static const C text[] = {'s', 0};
    if constexpr (std::is_same_v<T, int> || std::is_same_v<T, double>) return 7;
    else if constexpr (std::is_same_v<T, char>) return 'c';
    else return text;
}
template <typename T> const char* formatOf()
{
    return std::is_same_v<T, int> ? "%d" : std::is_same_v<T, double> ? "%.0f" : std::is_same_v<T, char> ? "%c" : "%s";
}
template <typename T> char codeOf() { return std::is_same_v<T, int> ? 'H' : std::is_same_v<T, double> ? 'N' : std::is_same_v<T, char> ? 'D' : '2'; }

template <std::size_t, typename T> using Same = T;

template <typename C, typename... A>
Member<C> printOf()
{
    const std::basic_string<C> format = S<C>((std::string() + ... + formatOf<A>()).c_str()),
                               text = {C(formatOf<A>()[1] == 's' || formatOf<A>()[1] == 'c' ? formatOf<A>()[1] : '7')...};
    return {symbol<C>("Print", "_K", kText<C> + std::string{codeOf<A>()...}),
            [format](C* b, Size n) { print(b, n, format.c_str(), value<C, A>()...); }, text, {}};
}

template <typename C, typename T, std::size_t... I>
Member<C> repeated(std::index_sequence<I...>) { return printOf<C, Same<I, T>...>(); }

template <typename C, typename T, std::size_t... N>
void addRepeats(std::vector<Member<C>>& members, std::index_sequence<N...>)
{
    (members.push_back(repeated<C, T>(std::make_index_sequence<N + 1>())), ...);
}

// Copy and Join with 1 to 7 sources of one letter each.
template <typename C, std::size_t... I>
std::pair<Member<C>, Member<C>> withSources(std::index_sequence<I...>)
{
    static const C letters[7][2] = {{'a'}, {'b'}, {'c'}, {'d'}, {'e'}, {'f'}, {'g'}};
    const std::string rest = kText<C> + std::string(sizeof...(I) - 1, '2');
    const std::basic_string<C> text = {letters[I][0]...};
    return {{symbol<C>("Copy", "X", rest), [](C* b, Size c) { copy(b, c, static_cast<const C*>(letters[I])...); }, text, {}},
            {symbol<C>("Join", "_N", rest), [](C* b, Size c) { join(b, c, static_cast<const C*>(letters[I])...); }, text,
             std::basic_string<C>(1, 0)}};
}

template <typename C, std::size_t... N>
void addSources(std::vector<Member<C>>& members, std::index_sequence<N...>)
{
    (members.push_back(withSources<C>(std::make_index_sequence<N + 1>()).first), ...);
    (members.push_back(withSources<C>(std::make_index_sequence<N + 1>()).second), ...);
}

// The members of one width that take a capacity.
template <typename C>
std::vector<Member<C>> members()
{
    using Text = const C*;
    const std::basic_string<C> empty(1, 0);
    std::vector<Member<C>> members = {
        {symbol<C>("Copy", "X", kChar<C>), [](C* b, Size n) { copy(b, n, C('x')); }, S<C>("x"), {}},
        {symbol<C>("Join", "_N", kChar<C>), [](C* b, Size n) { join(b, n, C('x')); }, S<C>("x"), empty},
        {symbol<C>("CopyPart", "X", kText<C> + "1"), [](C* b, Size n) { copyPart(b, n, value<C, Text>(), 1); }, S<C>("s"), {}},
        {symbol<C>("JoinPart", "_N", kText<C> + "1"), [](C* b, Size n) { joinPart(b, n, value<C, Text>(), 1); }, S<C>("s"), empty},
        {symbol<C>("Path", "X", ""), [](C* b, Size n) { path(b, n); }, S<C>("a\\"), std::basic_string<C>({'a', 0})},
        {symbol<C>("Terminate", "X", ""), [](C* b, Size n) { terminate(b, n); }, S<C>("ab"), S<C>("ab")},
        printOf<C, double, Text>(), printOf<C, double, double, Text>(), printOf<C, Text, int>(),
        printOf<C, Text, Text, int>(), printOf<C, Text, Text, int, int>(), printOf<C, Text, Text, Text, int>(),
        printOf<C, Text, int, int>(), printOf<C, Text, int, int, Text>(), printOf<C, Text, int, int, int>(),
        printOf<C, Text, int, Text>(), printOf<C, Text, int, Text, Text>(), printOf<C, int, Text>(),
        printOf<C, int, Text, Text>(), printOf<C, int, Text, Text, Text>(), printOf<C, int, int, Text>(),
        printOf<C, int, int, int, Text>(), printOf<C, int, double>(), printOf<C, int, int, double>(),
    };
    addSources<C>(members, std::make_index_sequence<7>());
    addRepeats<C, Text>(members, std::make_index_sequence<10>());
    addRepeats<C, int>(members, std::make_index_sequence<10>());
    addRepeats<C, double>(members, std::make_index_sequence<10>());
    if constexpr (sizeof(C) == 1) {
        members.insert(members.end(), {
            {symbol<C>("MakePath", "X", "PEBD222"), [](C* b, Size n) { HOI_MakePathA(b, n, "C", "d", "n", "e"); }, "C:d\\n.e", ""},
            {"?HOI_ConvertUTF16ToAnsi@@YA_NPEB_WPEAD_K@Z", [](C* b, Size n) { HOI_ConvertUTF16ToAnsi(L"abc", b, n); }, "abc", "", 1},
            printOf<C, char>(), printOf<C, char, char>(), printOf<C, char, Text>(), printOf<C, char, Text, Text>(),
            printOf<C, char, char, Text>()});
    } else {
        members.push_back({"?HOI_ConvertAnsiToUTF16@@YA_NPEBDPEA_W_K@Z",
                           [](C* b, Size n) { HOI_ConvertAnsiToUTF16("abc", b, n); }, L"abc", L"", 1});
    }
    return members;
}

template <typename C>
void checkMembers()
{
    for (const Member<C>& member : members<C>()) {
        const Size fit = member.text.size() + 1 + member.extra;
        for (Size capacity : {fit, fit - 1, Size(0)}) {
            SCOPED_TRACE(member.name + ", capacity " + std::to_string(capacity));
            const std::basic_string<C> before = member.start + std::basic_string<C>(kElements - member.start.size(), '#');
            std::basic_string<C> buffer = before;
            member.call(&buffer[0], capacity);
            // Whole when it fits, else cut like a copy (the converters refuse instead: not checked).
            const Size shown = capacity == fit ? member.text.size() + 1 : capacity;
            if (capacity != 0 && (capacity == fit || member.extra == 0))
                EXPECT_EQ(member.text.substr(0, shown - 1) + C(0), buffer.substr(0, shown)) << "not the text";
            EXPECT_EQ(before.substr(capacity), buffer.substr(capacity)) << "written past the capacity";
        }
    }
}

} // namespace

// The exported names of the members above (the export test adds those without a capacity).
std::set<std::string> capacityMemberSymbols()
{
    std::set<std::string> names;
    for (const auto& member : members<char>())
        names.insert(member.name);
    for (const auto& member : members<wchar_t>())
        names.insert(member.name);
    return names;
}

TEST(Family, NarrowMembersStayInsideTheirCapacity) { checkMembers<char>(); }
TEST(Family, WideMembersStayInsideTheirCapacity) { checkMembers<wchar_t>(); }
