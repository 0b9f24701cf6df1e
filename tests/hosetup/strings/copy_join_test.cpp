// Copy, CopyPart, Join, JoinPart, single characters, Init, Terminate, Equal and Compare, narrow
// and wide. Buffers are pre-filled with '#' so that a write past the allowed range shows up.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "strings/hoi_strings.h"

namespace {

template <typename C, std::size_t N>
void fill(C (&buffer)[N])
{
    for (C& element : buffer)
        element = '#';
}

// The elements from index first to the end of the array, as text, to check they stayed '#'.
template <typename C, std::size_t N>
std::basic_string<C> tail(const C (&buffer)[N], std::size_t first)
{
    return std::basic_string<C>(buffer + first, buffer + N);
}

} // namespace

TEST(InitTerminate, InitClearsFirstTwoElementsOnly)
{
    char narrow[4] = {'a', 'b', 'c', 'd'};
    HOI_InitA(narrow);
    EXPECT_EQ(0, narrow[0]);
    EXPECT_EQ(0, narrow[1]);
    EXPECT_EQ('c', narrow[2]);

    wchar_t wide[4] = {L'a', L'b', L'c', L'd'};
    HOI_InitW(wide);
    EXPECT_EQ(0, wide[0]);
    EXPECT_EQ(0, wide[1]);
    EXPECT_EQ(L'c', wide[2]);
}

TEST(InitTerminate, TerminateWritesLastElementAndNothingForCapacityZero)
{
    char narrow[4];
    fill(narrow);
    HOI_TerminateA(narrow, 0);
    EXPECT_EQ("####", tail(narrow, 0));
    HOI_TerminateA(narrow, 3);
    EXPECT_EQ(std::string("##\0#", 4), tail(narrow, 0));

    wchar_t wide[4];
    fill(wide);
    HOI_TerminateW(wide, 0);
    EXPECT_EQ(L"####", tail(wide, 0));
    HOI_TerminateW(wide, 1);
    EXPECT_EQ(0, wide[0]);
    EXPECT_EQ(L"###", tail(wide, 1));
}

TEST(EqualCompare, IgnoreCase)
{
    EXPECT_TRUE(HOI_EqualA("Program Files\\Vistrel", "PROGRAM FILES\\vistrel"));
    EXPECT_FALSE(HOI_EqualA("abc", "abd"));
    EXPECT_FALSE(HOI_EqualA("abc", "ab"));
    EXPECT_EQ(0, HOI_CompareA("Setup", "sETUP"));
    EXPECT_LT(HOI_CompareA("abc", "ABD"), 0);
    EXPECT_GT(HOI_CompareA("b", "A"), 0);

    EXPECT_TRUE(HOI_EqualW(L"Vistrel", L"VISTREL"));
    EXPECT_FALSE(HOI_EqualW(L"Vistrel", L"Vistrel2"));
    EXPECT_LT(HOI_CompareW(L"a", L"B"), 0);
    EXPECT_GT(HOI_CompareW(L"Zeta", L"alpha"), 0);
}

TEST(Copy, OneSourceAtCapacityOneExactAndOneShort)
{
    char buffer[8];
    fill(buffer);
    HOI_CopyA(buffer, 1, "abc");
    EXPECT_EQ(0, buffer[0]);
    EXPECT_EQ("#######", tail(buffer, 1));

    fill(buffer);
    HOI_CopyA(buffer, 4, "abc"); // exactly full
    EXPECT_STREQ("abc", buffer);
    EXPECT_EQ("####", tail(buffer, 4));

    fill(buffer);
    HOI_CopyA(buffer, 3, "abc"); // one short: cut silently
    EXPECT_STREQ("ab", buffer);
    EXPECT_EQ("#####", tail(buffer, 3));
}

TEST(Copy, SeveralSourcesSkipNullAndStopWhenFull)
{
    char buffer[16];
    fill(buffer);
    HOI_CopyA(buffer, 4, "ab", "cd");
    EXPECT_STREQ("abc", buffer);
    EXPECT_EQ('#', buffer[4]);

    HOI_CopyA(buffer, sizeof buffer, nullptr, "xy");
    EXPECT_STREQ("xy", buffer);

    HOI_CopyA(buffer, sizeof buffer, "a", "b", nullptr, "", "c", "d", "e");
    EXPECT_STREQ("abcde", buffer);

    fill(buffer);
    HOI_CopyA(buffer, 6, "abc", "de", "fgh", "i", "j", "k");
    EXPECT_STREQ("abcde", buffer);
    EXPECT_EQ('#', buffer[6]);
}

TEST(Copy, WideSourcesAndCapacities)
{
    wchar_t buffer[8];
    fill(buffer);
    HOI_CopyW(buffer, 1, L"abc");
    EXPECT_EQ(0, buffer[0]);
    EXPECT_EQ(L"#######", tail(buffer, 1));

    HOI_CopyW(buffer, 4, L"ab", L"cd");
    EXPECT_STREQ(L"abc", buffer);

    HOI_CopyW(buffer, 8, nullptr, L"x", L"y", nullptr, L"z", L"", L"w");
    EXPECT_STREQ(L"xyzw", buffer);
}

TEST(Copy, SingleCharacter)
{
    char narrow[3];
    fill(narrow);
    HOI_CopyA(narrow, 0, 'x');
    EXPECT_EQ("###", tail(narrow, 0));
    HOI_CopyA(narrow, 1, 'x');
    EXPECT_EQ(std::string("\0##", 3), tail(narrow, 0));
    HOI_CopyA(narrow, 3, 'x');
    EXPECT_EQ(std::string("x\0#", 3), tail(narrow, 0));
    HOI_CopyA(narrow, 3, '\0');
    EXPECT_EQ(std::string("\0\0#", 3), tail(narrow, 0));

    wchar_t wide[3];
    fill(wide);
    HOI_CopyW(wide, 0, L'x');
    EXPECT_EQ(L"###", tail(wide, 0));
    HOI_CopyW(wide, 2, L'x');
    EXPECT_EQ(std::wstring(L"x\0#", 3), tail(wide, 0));
    HOI_CopyW(wide, 1, L'y');
    EXPECT_EQ(0, wide[0]);
}

TEST(CopyPart, LimitIsSmallerOfCountAndRoom)
{
    char buffer[10];
    fill(buffer);
    HOI_CopyPartA(buffer, 10, "abcdef", 3);
    EXPECT_STREQ("abc", buffer);
    EXPECT_EQ('#', buffer[4]);
    HOI_CopyPartA(buffer, 10, "ab", 5); // stops at the source's NUL
    EXPECT_STREQ("ab", buffer);
    HOI_CopyPartA(buffer, 4, "abcdef", 100);
    EXPECT_STREQ("abc", buffer);
    HOI_CopyPartA(buffer, 10, nullptr, 0); // a null source is not read when nothing is copied
    EXPECT_STREQ("", buffer);

    wchar_t wide[6];
    fill(wide);
    HOI_CopyPartW(wide, 6, L"abcdef", 100);
    EXPECT_STREQ(L"abcde", wide);
    HOI_CopyPartW(wide, 6, L"abcdef", 2);
    EXPECT_STREQ(L"ab", wide);
    HOI_CopyPartW(wide, 6, nullptr, 5); // the wide member reads null as empty
    EXPECT_STREQ(L"", wide);
}

TEST(Join, CutsAtCapacityAndReportsIt)
{
    char buffer[8];
    fill(buffer);
    HOI_CopyA(buffer, 8, "abc");
    EXPECT_FALSE(HOI_JoinA(buffer, 5, "de"));
    EXPECT_STREQ("abcd", buffer);
    EXPECT_EQ('#', buffer[5]);

    HOI_CopyA(buffer, 8, "abc");
    EXPECT_TRUE(HOI_JoinA(buffer, 5, "d")); // exactly full
    EXPECT_STREQ("abcd", buffer);
    EXPECT_TRUE(HOI_JoinA(buffer, 5, "")); // an empty source is never cut off
    EXPECT_TRUE(HOI_JoinA(buffer, 5, static_cast<const char*>(nullptr)));
    EXPECT_STREQ("abcd", buffer);
    EXPECT_FALSE(HOI_JoinA(buffer, 5, "x")); // could not even be started
    EXPECT_STREQ("abcd", buffer);
}

TEST(Join, SeveralSourcesReportAnyCut)
{
    char buffer[8];
    HOI_CopyA(buffer, 8, "a");
    EXPECT_TRUE(HOI_JoinA(buffer, 8, "b", nullptr, "cd", "", "e"));
    EXPECT_STREQ("abcde", buffer);
    // The second source is cut, the third finds the buffer full: false, text cut at 7.
    EXPECT_FALSE(HOI_JoinA(buffer, 8, "f", "ghi", "j"));
    EXPECT_STREQ("abcdefg", buffer);
    // A full buffer followed only by empty and null sources is not a cut.
    EXPECT_TRUE(HOI_JoinA(buffer, 8, "", nullptr, "", "", "", "", ""));
}

TEST(Join, UnterminatedDestinationEndsAtLastElement)
{
    char buffer[6];
    fill(buffer);
    EXPECT_FALSE(HOI_JoinA(buffer, 5, "x"));
    EXPECT_EQ(std::string("####\0#", 6), tail(buffer, 0));

    fill(buffer);
    EXPECT_TRUE(HOI_JoinA(buffer, 5, ""));
    EXPECT_EQ(std::string("####\0#", 6), tail(buffer, 0));

    wchar_t wide[6];
    fill(wide);
    EXPECT_FALSE(HOI_JoinW(wide, 5, L"x", L"y"));
    EXPECT_EQ(std::wstring(L"####\0#", 6), tail(wide, 0));
}

TEST(Join, Wide)
{
    wchar_t buffer[6];
    HOI_CopyW(buffer, 6, L"ab");
    EXPECT_TRUE(HOI_JoinW(buffer, 6, L"c", static_cast<const wchar_t*>(nullptr), L"d"));
    EXPECT_STREQ(L"abcd", buffer);
    EXPECT_FALSE(HOI_JoinW(buffer, 6, L"ef"));
    EXPECT_STREQ(L"abcde", buffer);
    EXPECT_TRUE(HOI_JoinW(buffer, 6, L""));
}

TEST(JoinPart, ResultTellsWhetherTheWholeSourceWasAppended)
{
    char buffer[10];
    HOI_InitA(buffer);
    EXPECT_FALSE(HOI_JoinPartA(buffer, 10, "abcdef", 3)); // room, but the source is longer
    EXPECT_STREQ("abc", buffer);

    HOI_InitA(buffer);
    EXPECT_TRUE(HOI_JoinPartA(buffer, 10, "abcdef", 6));
    EXPECT_STREQ("abcdef", buffer);

    HOI_CopyA(buffer, 10, "ab");
    EXPECT_FALSE(HOI_JoinPartA(buffer, 5, "cdef", 10)); // the buffer is the limit
    EXPECT_STREQ("abcd", buffer);

    // A count that would wrap around when added to the end still means "all".
    HOI_CopyA(buffer, 10, "ab");
    EXPECT_TRUE(HOI_JoinPartA(buffer, 10, "cd", ~0ull));
    EXPECT_STREQ("abcd", buffer);

    EXPECT_TRUE(HOI_JoinPartA(buffer, 10, nullptr, 3));
    EXPECT_STREQ("abcd", buffer);
}

TEST(JoinPart, TerminatesAnUnterminatedDestinationAndWide)
{
    char buffer[5];
    fill(buffer);
    EXPECT_TRUE(HOI_JoinPartA(buffer, 4, nullptr, 2));
    EXPECT_EQ(std::string("###\0#", 5), tail(buffer, 0));

    wchar_t wide[8];
    HOI_CopyW(wide, 8, L"ab");
    EXPECT_FALSE(HOI_JoinPartW(wide, 8, L"cdef", 2));
    EXPECT_STREQ(L"abcd", wide);
    EXPECT_TRUE(HOI_JoinPartW(wide, 8, L"xyz", 3));
    EXPECT_STREQ(L"abcdxyz", wide);
    EXPECT_TRUE(HOI_JoinPartW(wide, 8, nullptr, 3));
}

TEST(JoinChar, AppendsOnlyWithRoomAndLeavesAFullBufferUntouched)
{
    char buffer[6];
    fill(buffer);
    HOI_CopyA(buffer, 5, "ab");
    EXPECT_TRUE(HOI_JoinA(buffer, 5, 'c'));
    EXPECT_STREQ("abc", buffer);
    EXPECT_FALSE(HOI_JoinA(buffer, 5, '\0')); // NUL is refused even with room
    EXPECT_STREQ("abc", buffer);
    EXPECT_TRUE(HOI_JoinA(buffer, 5, 'd'));
    EXPECT_STREQ("abcd", buffer);

    const std::string before = tail(buffer, 0);
    EXPECT_FALSE(HOI_JoinA(buffer, 5, 'e'));
    EXPECT_EQ(before, tail(buffer, 0));

    // Unterminated: refused, and deliberately not terminated either.
    fill(buffer);
    EXPECT_FALSE(HOI_JoinA(buffer, 5, 'e'));
    EXPECT_EQ("######", tail(buffer, 0));

    wchar_t wide[4];
    fill(wide);
    HOI_InitW(wide);
    EXPECT_TRUE(HOI_JoinW(wide, 3, L'x'));
    EXPECT_TRUE(HOI_JoinW(wide, 3, L'y'));
    EXPECT_FALSE(HOI_JoinW(wide, 3, L'z'));
    EXPECT_EQ(std::wstring(L"xy\0#", 4), tail(wide, 0));
    fill(wide);
    EXPECT_FALSE(HOI_JoinW(wide, 4, L'z'));
    EXPECT_EQ(L"####", tail(wide, 0));
}
