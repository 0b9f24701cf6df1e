// The command line as users and the uninstall entry type it.
#include <gtest/gtest.h>

#include "shell/shell.h"

namespace {

std::string token(const char* commandLine, int index, std::size_t size = kCommandTokenCapacity)
{
    char buffer[kCommandTokenCapacity];
    getCommandLineToken(commandLine, index, buffer, size);
    return buffer;
}

struct Options {
    bool source, silent, perUser, remove;
    std::string sourceFolder;
};

Options scan(const char* commandLine)
{
    clearSetupState();
    strcpy(g_setup.sourceFolder, "C:\\dist");
    scanCommandLine(commandLine);
    return {g_setup.optionSourceFolder != 0, g_setup.optionSilent != 0, g_setup.optionPerUser != 0,
            g_setup.optionRemove != 0, g_setup.sourceFolder};
}

TEST(CommandLineTokens, SeparatorsQuotesAndEmptyTokens)
{
    EXPECT_EQ(token("-S  \t -U", 0), "-S");
    EXPECT_EQ(token("-S  \t -U", 1), "-U");     // a run of blanks and tabs is one separator
    EXPECT_EQ(token("-S  \t -U", 2), "");
    EXPECT_EQ(token("\"-AC:\\My Folder\" -X", 0), "-AC:\\My Folder");
    EXPECT_EQ(token("\"-AC:\\My Folder\" -X", 1), "-X");
    EXPECT_EQ(token(" -S", 0), "");             // a leading blank makes token 0 empty
    EXPECT_EQ(token(" -S", 1), "-S");
    EXPECT_EQ(token("", 0), "");

    char buffer[8];
    EXPECT_TRUE(getCommandLineToken("abcdefghij", 0, buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "abcdef");             // at most bufferSize - 2 characters
    EXPECT_FALSE(getCommandLineToken("-S", 3, buffer, sizeof buffer));
}

TEST(CommandLineOptions, LettersInEitherCaseAfterDashOrSlash)
{
    for (const char* line : {"/s", "-s", "-S", "-Silent", "/SILENT"})
        EXPECT_TRUE(scan(line).silent) << line;
    for (const char* line : {"--S", "S", "-", "x-S"})
        EXPECT_FALSE(scan(line).silent) << line;
    EXPECT_TRUE(scan("/u").perUser);
    EXPECT_TRUE(scan("-Xtra").remove);
}

TEST(CommandLineOptions, AllFourCombineInAnyOrder)
{
    const Options all = scan("/x -u \"-AD:\\Vistrel Media\\Disk 1\" -S");
    EXPECT_TRUE(all.source && all.silent && all.perUser && all.remove);
    EXPECT_EQ(all.sourceFolder, "D:\\Vistrel Media\\Disk 1\\");
}

TEST(CommandLineOptions, SourceFolderOption)
{
    Options bare = scan("-A");
    EXPECT_TRUE(bare.source);
    EXPECT_EQ(bare.sourceFolder, "C:\\dist\\");  // the program's folder stays, with its backslash

    Options unquoted = scan("-AC:\\My Folder");
    EXPECT_EQ(unquoted.sourceFolder, "C:\\My\\"); // without quotes the blank ends the token

    Options none = scan("-S");
    EXPECT_FALSE(none.source);
    EXPECT_EQ(none.sourceFolder, "C:\\dist\\");

    std::string longFolder = "-A" + std::string(300, 'f');
    Options cut = scan(longFolder.c_str());
    EXPECT_EQ(cut.sourceFolder, std::string(259, 'f'));  // full: no room left for the backslash
}

TEST(CommandLineOptions, NothingIsSeenAfterAnEmptyToken)
{
    const Options options = scan(" -S -X");
    EXPECT_FALSE(options.silent);
    EXPECT_FALSE(options.remove);
    EXPECT_FALSE(scan("-U \"\" -S").silent);     // a quoted empty token ends the pass too
}

} // namespace
