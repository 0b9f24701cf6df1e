// The viewer's command line as the shell's open and print verbs and shortcuts pass it.
#include "hovistrel.h"

#include <gtest/gtest.h>

namespace {

TEST(ViewerCommandLine, TakesTheShellVerbs)
{
    struct Case { const char* line; bool print; const char* path; } cases[] = {
        {"\"C:\\Program Files\\Vistrel\\a b.hod\"", false, "C:\\Program Files\\Vistrel\\a b.hod"},
        {"/p \"C:\\d\\x.hod\"", true, "C:\\d\\x.hod"},
        {"  -P   \"x.hod\"  ", true, "x.hod"},
        {"/p /p \"x.hod\"", true, "x.hod"},
        {"C:\\My Drawings\\x.hod  ", false, "C:\\My Drawings\\x.hod"},   // unquoted: the rest of the line
        {"\\\\server\\share\\x.hod", false, "\\\\server\\share\\x.hod"},
        {"", false, ""},
        {nullptr, false, ""},
    };
    for (const auto& c : cases) {
        const ViewerCommand cmd = ParseViewerCommand(c.line);
        const char* shown = c.line ? c.line : "(null)";
        EXPECT_EQ(cmd.error, "") << shown;
        EXPECT_EQ(cmd.print, c.print) << shown;
        EXPECT_EQ(cmd.path, c.path) << shown;
    }
}

TEST(ViewerCommandLine, RefusesWhatItCannotRead)
{
    for (const char* line : {"\"x.hod", "\"a.hod\" \"b.hod\"", "/p", "/p   ", "/x \"a.hod\"", "-print a.hod", "/pictures/x.hod"})
        EXPECT_NE(ParseViewerCommand(line).error, "") << line;
}

} // namespace
