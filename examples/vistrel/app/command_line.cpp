// The viewer's command line, as the shell's file-type verbs pass it:
//   open:  "C:\...\hovistrel.exe" "%1"
//   print: "C:\...\hovistrel.exe" /p "%1"
// The program's own name is already removed (WinMain's command line). The option may be written
// "/p" or "-p" in either case; the drawing is one quoted path, or else the rest of the line, so
// that an unquoted path with blanks from a hand-made shortcut still works.
#include "hovistrel.h"

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

const char* SkipBlanks(const char* p)
{
    while (*p && IsBlank(*p)) ++p;
    return p;
}

} // namespace

ViewerCommand ParseViewerCommand(const char* commandLine)
{
    ViewerCommand command;
    const char* p = SkipBlanks(commandLine ? commandLine : "");
    while ((p[0] == '/' || p[0] == '-') && (p[1] == 'p' || p[1] == 'P') &&
           (p[2] == '\0' || IsBlank(p[2]))) {
        command.print = true;
        p = SkipBlanks(p + 2);
    }
    if ((p[0] == '/' || p[0] == '-') && p[1] != '\0' && p[1] != '\\' && p[1] != '/') {
        command.error = std::string("unknown option ") + p;
        return command;
    }
    if (*p == '"') {
        const char* start = ++p;
        while (*p && *p != '"') ++p;
        if (*p != '"') {
            command.error = "the drawing's path lacks its closing quotation mark";
            return command;
        }
        command.path.assign(start, p);
        p = SkipBlanks(p + 1);
        if (*p) {
            command.error = std::string("more than one drawing given: ") + p;
            return command;
        }
    } else {
        command.path = p;
        while (!command.path.empty() && IsBlank(command.path.back())) command.path.pop_back();
    }
    if (command.print && command.path.empty()) command.error = "/p needs the drawing to print";
    return command;
}
