// The conversion parser is what makes the text checks able to fail, so its own edge cases come
// first: a parser that missed a conversion would pass a text that crashes the program.
#include "conversions.h"

#include <gtest/gtest.h>

TEST(Conversions, ListsTextAndIntegerConversionsInOrder)
{
    EXPECT_EQ(ConversionsOf(""), "");
    EXPECT_EQ(ConversionsOf("no conversions"), "");
    EXPECT_EQ(ConversionsOf("%s"), "s");
    EXPECT_EQ(ConversionsOf("copy %s to %s"), "ss");
    EXPECT_EQ(ConversionsOf("%lu bytes, %s"), "is");
    EXPECT_EQ(ConversionsOf("error %d, %u, %x, %ld"), "iiii");
    EXPECT_EQ(ConversionsOf("%-20s|%.5s|%08d"), "ssi");
}

TEST(Conversions, IgnoresLiteralPercentSigns)
{
    EXPECT_EQ(ConversionsOf("100%% done"), "");
    EXPECT_EQ(ConversionsOf("%%s is not a conversion"), "");
    EXPECT_EQ(ConversionsOf("%%%s"), "s");
}

TEST(Conversions, FlagsArgumentsThatTheProgramNeverPasses)
{
    EXPECT_EQ(ConversionsOf("%ls"), "?");   // wide text
    EXPECT_EQ(ConversionsOf("%S"), "?");    // wide text in the Microsoft runtime
    EXPECT_EQ(ConversionsOf("%I64u"), "?"); // 64-bit size
    EXPECT_EQ(ConversionsOf("%llu"), "?");
    EXPECT_EQ(ConversionsOf("%hs"), "?");
    EXPECT_EQ(ConversionsOf("%*d"), "?");   // width taken from an argument
    EXPECT_EQ(ConversionsOf("%.*s"), "?");
    EXPECT_EQ(ConversionsOf("%f"), "?");
    EXPECT_EQ(ConversionsOf("%n"), "?");
    EXPECT_EQ(ConversionsOf("ends in %"), "?");
    EXPECT_EQ(ConversionsOf("%s and %"), "s?");
}

TEST(Conversions, ReadsDatePatternCodes)
{
    EXPECT_EQ(DateCodesOf("#d #O #Y #h:#m"), "dOYhm");
    EXPECT_EQ(DateCodesOf("no codes"), "");
    EXPECT_EQ(DateCodesOf("##"), "#");
    EXPECT_EQ(DateCodesOf("trailing #"), "#");
}
