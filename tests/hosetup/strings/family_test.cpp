// Every member of the exported string family that takes a capacity, at three capacities: the
// text exactly fits, one element short, and 0. Guard elements behind the capacity must stay as
// they were, so a terminator written one past the end, or anything written at capacity 0, shows.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "strings/hoi_strings.h"

namespace {

using Size = unsigned long long;
constexpr Size kElements = 24;

template <typename C>
struct Member {
    std::string name;
    std::function<void(C*, Size)> call;
    std::basic_string<C> text;    // the whole result when it fits
    std::basic_string<C> start;   // the buffer's first elements before the call
    Size extra = 0;               // room the member wants beyond text and terminator
};

template <typename C>
std::basic_string<C> S(const char* text) { return std::basic_string<C>(text, text + std::char_traits<char>::length(text)); }

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

// One value of a Print argument list, its format and what it prints: one element each.
template <typename C, typename T> struct Arg;
template <typename C> struct Arg<C, const C*> {
    static const C* value() { static const C text[] = {'s', 0}; return text; }
    static constexpr const char* format = "%s";
};
template <typename C> struct Arg<C, int> { static int value() { return 7; } static constexpr const char* format = "%d"; };
template <typename C> struct Arg<C, double> {
    static double value() { return 5.0; }
    static constexpr const char* format = "%.0f";
};
template <typename C> struct Arg<C, char> { static char value() { return 'c'; } static constexpr const char* format = "%c"; };

template <std::size_t, typename T> using Same = T;

template <typename C, typename... A>
Member<C> printOf()
{
    const std::string format = (std::string() + ... + Arg<C, A>::format);
    std::basic_string<C> text;
    const std::basic_string<C> wide = S<C>(format.c_str());
    for (const char* f : {Arg<C, A>::format...})
        text += f[1] == 's' ? 's' : f[1] == 'd' ? '7' : f[1] == 'c' ? 'c' : '5';
    return {"Print " + format, [wide](C* b, Size n) { print(b, n, wide.c_str(), Arg<C, A>::value()...); }, text};
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
    const std::string n = std::to_string(sizeof...(I));
    const std::basic_string<C> text = {letters[I][0]...};
    return {{"Copy " + n, [](C* b, Size c) { copy(b, c, static_cast<const C*>(letters[I])...); }, text},
            {"Join " + n, [](C* b, Size c) { join(b, c, static_cast<const C*>(letters[I])...); }, text, std::basic_string<C>(1, 0)}};
}

template <typename C, std::size_t... N>
void addSources(std::vector<Member<C>>& members, std::index_sequence<N...>)
{
    (members.push_back(withSources<C>(std::make_index_sequence<N + 1>()).first), ...);
    (members.push_back(withSources<C>(std::make_index_sequence<N + 1>()).second), ...);
}

// The members both widths share; the caller adds those of one width.
template <typename C>
std::vector<Member<C>> commonMembers()
{
    using Text = const C*;
    std::vector<Member<C>> members = {
        {"Copy char", [](C* b, Size n) { copy(b, n, C('x')); }, S<C>("x")},
        {"Join char", [](C* b, Size n) { join(b, n, C('x')); }, S<C>("x"), std::basic_string<C>(1, 0)},
        {"CopyPart", [](C* b, Size n) { copyPart(b, n, Arg<C, Text>::value(), 1); }, S<C>("s")},
        {"JoinPart", [](C* b, Size n) { joinPart(b, n, Arg<C, Text>::value(), 1); }, S<C>("s"), std::basic_string<C>(1, 0)},
        {"Path", [](C* b, Size n) { path(b, n); }, S<C>("a\\"), std::basic_string<C>({'a', 0})},
        {"Terminate", [](C* b, Size n) { terminate(b, n); }, S<C>("ab"), S<C>("ab")},
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
    return members;
}

template <typename C>
void checkMembers(const std::vector<Member<C>>& members)
{
    for (const Member<C>& member : members) {
        const Size fit = member.text.size() + 1 + member.extra;
        for (Size capacity : {fit, fit - 1, Size(0)}) {
            SCOPED_TRACE(member.name + ", capacity " + std::to_string(capacity));
            const std::basic_string<C> before = member.start + std::basic_string<C>(kElements - member.start.size(), '#');
            std::basic_string<C> buffer = before;
            member.call(&buffer[0], capacity);
            if (capacity == fit)
                EXPECT_EQ(member.text + C(0), buffer.substr(0, member.text.size() + 1));
            EXPECT_EQ(before.substr(capacity), buffer.substr(capacity)) << "written past the capacity";
        }
    }
}

} // namespace

TEST(Family, NarrowMembersStayInsideTheirCapacity)
{
    using Text = const char*;
    std::vector<Member<char>> members = commonMembers<char>();
    for (Member<char> more : std::vector<Member<char>>{
             {"MakePath", [](char* b, Size n) { HOI_MakePathA(b, n, "C", "d", "n", "e"); }, "C:d\\n.e"},
             {"ConvertUTF16ToAnsi", [](char* b, Size n) { HOI_ConvertUTF16ToAnsi(L"abc", b, n); }, "abc", "", 1},
             printOf<char, char>(), printOf<char, char, char>(), printOf<char, char, Text>(),
             printOf<char, char, Text, Text>(), printOf<char, char, char, Text>()})
        members.push_back(more);
    EXPECT_EQ(members.size(), 75u);   // with Init, Equal and Compare: half of the 150
    checkMembers(members);
}

TEST(Family, WideMembersStayInsideTheirCapacity)
{
    std::vector<Member<wchar_t>> members = commonMembers<wchar_t>();
    members.push_back({"ConvertAnsiToUTF16", [](wchar_t* b, Size n) { HOI_ConvertAnsiToUTF16("abc", b, n); }, L"abc", L"", 1});
    EXPECT_EQ(members.size(), 69u);
    checkMembers(members);
}
