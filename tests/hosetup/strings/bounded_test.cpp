// The bounded string family of hosetup.exe: members and converters at their boundaries (each row
// on an 8-element buffer pre-filled with '#' behind its starting text, compared whole afterwards,
// so a write past the allowed range or a missing or misplaced terminator shows), every member at
// its capacity, MakePath, and the exports as modules loaded into the setup process see them.
#include <windows.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "process.h"
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
        {"CopyPart, count limits", "", V(HOI_CopyPartA(b, 8, "abcdef", 3)), B("abc\0####"), kNone},
        {"CopyPart, null source, count 0", "", V(HOI_CopyPartA(b, 8, nullptr, 0)), B("\0#######"), kNone},
        {"Init clears two elements", "", V(HOI_InitA(b)), B("\0\0######"), kNone},
        {"Join, empty and null on full", B("abcd\0"), R(HOI_JoinA(b, 5, "", nullptr)), B("abcd\0###"), true},
        {"Join, no room to start", B("abcd\0"), R(HOI_JoinA(b, 5, "x")), B("abcd\0###"), false},
        {"Join, unterminated ends at last", "", R(HOI_JoinA(b, 5, "x")), B("####\0###"), false},
        {"JoinPart, count limits", B("\0"), R(HOI_JoinPartA(b, 8, "abcdef", 3)), B("abc\0####"), false},
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

// Every member of the exported string family that takes a capacity, at three capacities: the text
// exactly fits, one element short (cut like a copy), and 0. Guard elements behind the capacity must
// stay, so a terminator written one past the end, or anything written at capacity 0, shows. Members
// are named by their symbols, decorated as the Microsoft compiler does (checked by the export test).
namespace {

using Size = unsigned long long;

// text: the whole result when it fits; start: the buffer's first elements before the call;
// extra: room the member wants beyond text and terminator (such a member refuses what does not fit).
template <typename C>
struct Member { std::string name; std::function<void(C*, Size)> call; std::basic_string<C> text, start; Size extra = 0; };

template <typename C>
std::basic_string<C> S(const char* text) { return std::basic_string<C>(text, text + std::strlen(text)); }

// ?HOI_<stem><A|W>@@YA<result><destination>_K<rest>@Z; a "2" repeats the third type of two or more letters.
template <typename C>
std::string symbol(const char* stem, const char* result, const std::string& rest)
{
    const bool narrow = sizeof(C) == 1;
    return std::string("?HOI_") + stem + (narrow ? "A@@YA" : "W@@YA") + result + (narrow ? "PEAD_K" : "PEA_W_K") + rest + "@Z";
}
template <typename C> const std::string kText = sizeof(C) == 1 ? "PEBD" : "PEB_W";

// The narrow or wide member under one name, so that one template serves both widths.
#define BOTH(name, narrow, wide) \
    template <typename C, typename... A> void name(C* b, Size n, A... a) \
    { if constexpr (sizeof(C) == 1) narrow(b, n, a...); else wide(b, n, a...); }
BOTH(copy, HOI_CopyA, HOI_CopyW) BOTH(join, HOI_JoinA, HOI_JoinW) BOTH(print, HOI_PrintA, HOI_PrintW)
BOTH(copyPart, HOI_CopyPartA, HOI_CopyPartW) BOTH(joinPart, HOI_JoinPartA, HOI_JoinPartW)
BOTH(path, HOI_PathA, HOI_PathW) BOTH(terminate, HOI_TerminateA, HOI_TerminateW)

// A Print argument by its letter in the symbol ('2' text, 'H' int, 'N' double, 'D' char); each prints one element.
template <typename C, char K>
auto arg()
{
    static const C text[] = {'s', 0};
    if constexpr (K == 'H') return 7;
    else if constexpr (K == 'N') return 7.0;
    else if constexpr (K == 'D') return 'c';
    else return static_cast<const C*>(text);
}

template <typename C, char... K>
Member<C> printOf()
{
    const std::basic_string<C> format = S<C>((std::string() + ... + (K == 'H' ? "%d" : K == 'N' ? "%.0f" : K == 'D' ? "%c" : "%s")).c_str());
    return {symbol<C>("Print", "_K", kText<C> + std::string{K...}),
            [format](C* b, Size n) { print(b, n, format.c_str(), arg<C, K>()...); },
            {C(K == '2' ? 's' : K == 'D' ? 'c' : '7')...}, {}};
}

template <std::size_t, char K> constexpr char kSame = K;
template <typename C, char K, std::size_t... I>
Member<C> repeated(std::index_sequence<I...>) { return printOf<C, kSame<I, K>...>(); }

// Copy and Join with 1 to 7 sources of one letter each.
template <typename C, bool joining, std::size_t... I>
Member<C> withSources(std::index_sequence<I...>)
{
    static const C letters[7][2] = {{'a'}, {'b'}, {'c'}, {'d'}, {'e'}, {'f'}, {'g'}};
    const std::string rest = kText<C> + std::string(sizeof...(I) - 1, '2');
    if constexpr (joining)
        return {symbol<C>("Join", "_N", rest), [](C* b, Size c) { join(b, c, +letters[I]...); }, {letters[I][0]...}, {C(0)}};
    else
        return {symbol<C>("Copy", "X", rest), [](C* b, Size c) { copy(b, c, +letters[I]...); }, {letters[I][0]...}, {}};
}

// Adds make(0..n) for n from 0 to N - 1.
template <typename C, typename Make, std::size_t... N>
void addSeries(std::vector<Member<C>>& members, Make make, std::index_sequence<N...>)
{
    (members.push_back(make(std::make_index_sequence<N + 1>())), ...);
}

// The members of one width that take a capacity.
template <typename C>
std::vector<Member<C>> members()
{
    const std::basic_string<C> empty(1, 0);
    std::vector<Member<C>> members = {
        {symbol<C>("Copy", "X", sizeof(C) == 1 ? "D" : "_W"), [](C* b, Size n) { copy(b, n, C('x')); }, S<C>("x"), {}},
        {symbol<C>("Join", "_N", sizeof(C) == 1 ? "D" : "_W"), [](C* b, Size n) { join(b, n, C('x')); }, S<C>("x"), empty},
        {symbol<C>("CopyPart", "X", kText<C> + "1"), [](C* b, Size n) { copyPart(b, n, arg<C, '2'>(), 1); }, S<C>("s"), {}},
        {symbol<C>("JoinPart", "_N", kText<C> + "1"), [](C* b, Size n) { joinPart(b, n, arg<C, '2'>(), 1); }, S<C>("s"), empty},
        {symbol<C>("Path", "X", ""), [](C* b, Size n) { path(b, n); }, S<C>("a\\"), std::basic_string<C>({'a', 0})},
        {symbol<C>("Terminate", "X", ""), [](C* b, Size n) { terminate(b, n); }, S<C>("ab"), S<C>("ab")},
        printOf<C, 'N', '2'>(), printOf<C, 'N', 'N', '2'>(), printOf<C, '2', 'H'>(), printOf<C, '2', '2', 'H'>(),
        printOf<C, '2', '2', 'H', 'H'>(), printOf<C, '2', '2', '2', 'H'>(), printOf<C, '2', 'H', 'H'>(),
        printOf<C, '2', 'H', 'H', '2'>(), printOf<C, '2', 'H', 'H', 'H'>(), printOf<C, '2', 'H', '2'>(),
        printOf<C, '2', 'H', '2', '2'>(), printOf<C, 'H', '2'>(), printOf<C, 'H', '2', '2'>(),
        printOf<C, 'H', '2', '2', '2'>(), printOf<C, 'H', 'H', '2'>(), printOf<C, 'H', 'H', 'H', '2'>(),
        printOf<C, 'H', 'N'>(), printOf<C, 'H', 'H', 'N'>(),
    };
    addSeries<C>(members, [](auto each) { return withSources<C, false>(each); }, std::make_index_sequence<7>());
    addSeries<C>(members, [](auto each) { return withSources<C, true>(each); }, std::make_index_sequence<7>());
    addSeries<C>(members, [](auto each) { return repeated<C, '2'>(each); }, std::make_index_sequence<10>());
    addSeries<C>(members, [](auto each) { return repeated<C, 'H'>(each); }, std::make_index_sequence<10>());
    addSeries<C>(members, [](auto each) { return repeated<C, 'N'>(each); }, std::make_index_sequence<10>());
    if constexpr (sizeof(C) == 1) {
        members.insert(members.end(), {
            {symbol<C>("MakePath", "X", "PEBD222"), [](C* b, Size n) { HOI_MakePathA(b, n, "C", "d", "n", "e"); }, "C:d\\n.e", ""},
            {"?HOI_ConvertUTF16ToAnsi@@YA_NPEB_WPEAD_K@Z", [](C* b, Size n) { HOI_ConvertUTF16ToAnsi(L"abc", b, n); }, "abc", "", 1},
            printOf<C, 'D'>(), printOf<C, 'D', 'D'>(), printOf<C, 'D', '2'>(), printOf<C, 'D', '2', '2'>(),
            printOf<C, 'D', 'D', '2'>()});
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
            const std::basic_string<C> before = member.start + std::basic_string<C>(24 - member.start.size(), '#');
            std::basic_string<C> buffer = before;
            member.call(&buffer[0], capacity);
            const Size shown = capacity == fit ? member.text.size() + 1 : capacity;
            if (capacity != 0 && (capacity == fit || member.extra == 0)) {
                EXPECT_EQ(member.text.substr(0, shown - 1) + C(0), buffer.substr(0, shown)) << "not the text";
            }
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

// Composing a path from drive, folder, name and extension: separators, the limit of 260
// characters of parts, and the cut at the capacity.
TEST(MakePath, PartsSeparatorsAndLimits)
{
    const std::string dir(200, 'd'), name(50, 'n'), drive(10, 'E');
    const struct {
        const char *drive, *dir, *name, *extension; unsigned long long capacity; std::string expected;
    } rows[] = {
        {"C", "dir", "file", "txt", 300, "C:dir\\file.txt"},
        {"C", "dir", "file", ".txt", 300, "C:dir\\file.txt"},
        {"D:\\ignored", "\\x\\", "y", nullptr, 300, "D:\\x\\y"}, // drive letter only
        {nullptr, "a/", "", "log", 300, "a/.log"},
        {"", nullptr, "name", "", 300, "name"},
        // Parts of 259 characters pass; the separators come on top: 262 characters.
        {"C", dir.c_str(), name.c_str(), "extended", 300, "C:" + dir + "\\" + name + ".extended"},
        {"C", dir.c_str(), name.c_str(), "extended9", 300, ""},       // 260: cleared
        {drive.c_str(), dir.c_str(), name.c_str(), nullptr, 300, ""}, // the whole drive counts
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.expected);
        char buffer[300];
        std::memset(buffer, '#', sizeof buffer);
        HOI_MakePathA(buffer, row.capacity, row.drive, row.dir, row.name, row.extension);
        EXPECT_EQ(row.expected, std::string(buffer));
        EXPECT_TRUE(!row.expected.empty() || buffer[1] == 0); // cleared as by Init: both elements
    }
}

// hosetup.exe loaded as a module: exactly the family's names resolve into the image, and members needing
// neither relocations nor imports (which Wine does not apply to an executable loaded so) run.
TEST(LoadedSetup, ExactlyTheFamilyBoundByDecoratedName)
{
    const HMODULE setup = LoadLibraryA((testBinFolder() + "hosetup.exe").c_str());
    ASSERT_NE(nullptr, setup);
    const auto* base = reinterpret_cast<const BYTE*>(setup);
    const auto& optional = reinterpret_cast<const IMAGE_NT_HEADERS64*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew)->OptionalHeader;
    const auto* directory = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        base + optional.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    std::set<std::string> expected = capacityMemberSymbols();
    expected.insert({"?HOI_CompareA@@YAHPEBD0@Z", "?HOI_CompareW@@YAHPEB_W0@Z", "?HOI_EqualA@@YA_NPEBD0@Z",
                     "?HOI_EqualW@@YA_NPEB_W0@Z", "?HOI_InitA@@YAXPEAD@Z", "?HOI_InitW@@YAXPEA_W@Z"});
    ASSERT_EQ(150u, expected.size());
    EXPECT_EQ(150u, directory->NumberOfNames);
    EXPECT_EQ(150u, directory->NumberOfFunctions);
    for (const std::string& name : expected) {
        const auto* code = reinterpret_cast<const BYTE*>(GetProcAddress(setup, name.c_str()));
        EXPECT_TRUE(code >= base && code < base + optional.SizeOfImage) << name;
    }

    char narrow[8];
    wchar_t wide[8] = L"ab";
    auto copy2 = reinterpret_cast<void (*)(char*, Size, const char*, const char*)>(
        GetProcAddress(setup, "?HOI_CopyA@@YAXPEAD_KPEBD2@Z"));
    auto join3 = reinterpret_cast<bool (*)(wchar_t*, Size, const wchar_t*, const wchar_t*, const wchar_t*)>(
        GetProcAddress(setup, "?HOI_JoinW@@YA_NPEA_W_KPEB_W22@Z"));
    ASSERT_TRUE(copy2 && join3);
    copy2(narrow, 4, "ab", "cd");
    EXPECT_STREQ("abc", narrow);
    EXPECT_FALSE(join3(wide, 6, L"c", L"de", L"f"));
    EXPECT_STREQ(L"abcde", wide);
}
