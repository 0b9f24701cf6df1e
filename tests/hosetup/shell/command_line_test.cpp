// The command line as users and the uninstall entry type it: tokens, then the four options.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "shell/shell.h"

TEST(CommandLine, Tokens)
{
    const struct {
        const char* line; int index; const char* token; std::size_t size = kCommandTokenCapacity;
    } rows[] = {
        {"-S  \t -U", 1, "-U"}, // a run of blanks and tabs is one separator
        {"-S  \t -U", 2, ""},
        {"\"-AC:\\My Folder\" -X", 0, "-AC:\\My Folder"},
        {"\"-AC:\\My Folder\" -X", 1, "-X"},
        {" -S", 1, "-S"}, // a leading blank makes token 0 empty
        {"abcdefghij", 0, "abcdef", 8}, // at most size - 2 characters
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.line) + " #" + std::to_string(row.index));
        char buffer[kCommandTokenCapacity];
        EXPECT_EQ(row.token[0] != '\0', getCommandLineToken(row.line, row.index, buffer, row.size));
        EXPECT_STREQ(row.token, buffer);
    }
}

TEST(CommandLine, Options)
{
    const std::string longFolder(300, 'f');
    // The letters of the options seen, and the source folder afterwards.
    const struct { std::string line; const char* options; std::string sourceFolder; } rows[] = {
        {"/s", "S", "C:\\dist\\"},
        {"-Silent", "S", "C:\\dist\\"},
        {"/u -Xtra", "UX", "C:\\dist\\"},
        {"--S S - x-S", "", "C:\\dist\\"}, // the letter must follow a single '-' or '/'
        {"-A", "A", "C:\\dist\\"},         // the program's folder stays, with its backslash
        {"-AC:\\My Folder", "A", "C:\\My\\"}, // without quotes the blank ends the token
        {"/x -u \"-AD:\\Vistrel Media\\Disk 1\" -S", "ASUX", "D:\\Vistrel Media\\Disk 1\\"},
        {"-A" + longFolder, "A", longFolder.substr(0, 259)}, // full: no room for the backslash
        {" -S -X", "", "C:\\dist\\"},    // a pass ends at the first empty token
        {"-U \"\" -S", "U", "C:\\dist\\"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        clearSetupState();
        strcpy(g_setup.sourceFolder, "C:\\dist");
        scanCommandLine(row.line.c_str());
        const std::string seen = std::string(g_setup.optionSourceFolder ? "A" : "") + (g_setup.optionSilent ? "S" : "") +
            (g_setup.optionPerUser ? "U" : "") + (g_setup.optionRemove ? "X" : "");
        EXPECT_EQ(row.options, seen);
        EXPECT_EQ(row.sourceFolder, g_setup.sourceFolder);
    }
}
