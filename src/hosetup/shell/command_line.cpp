// The command line: tokens separated by blanks and tabs, double quotes grouping, and the four
// options -A[folder], -S, -U, -X, each looked for in its own pass.
#include "shell/shell.h"
#include "strings/hoi_strings.h"

namespace {

bool isSeparator(char c)
{
    return c == ' ' || c == '\t';
}

// Skips to the start of token `index`. A run of separators counts as one; a quote toggles a
// state in which separators do not separate. Token 0 starts at the first character, so a
// command line that begins with a blank has an empty token 0.
const char* findToken(const char* p, int index)
{
    bool quoted = false;
    for (int separators = 0; separators < index; ) {
        if (*p == '\0')
            return p;
        if (*p == '"')
            quoted = !quoted;
        if (!quoted && isSeparator(*p)) {
            while (isSeparator(*p))
                ++p;
            ++separators;
            continue;
        }
        ++p;
    }
    return p;
}

// Finds the first token, in order, whose first character is '-' or '/' and whose second is the
// option letter in either case; returns it or null. The pass ends at the first empty token.
bool findOption(const char* commandLine, char letter, char* token, std::size_t tokenSize)
{
    for (int index = 0; getCommandLineToken(commandLine, index, token, tokenSize); ++index) {
        if ((token[0] == '-' || token[0] == '/') && (token[1] | 0x20) == (letter | 0x20))
            return true;
    }
    return false;
}

} // namespace

bool getCommandLineToken(const char* commandLine, int index, char* buffer, std::size_t bufferSize)
{
    HOI_InitA(buffer);
    if (!commandLine || bufferSize < 2)
        return false;
    const char* p = findToken(commandLine, index);
    const std::size_t limit = bufferSize - 2;
    std::size_t n = 0;
    if (*p == '"') {
        ++p;
        while (*p && *p != '"' && n < limit)
            buffer[n++] = *p++;
    } else {
        while (*p && !isSeparator(*p) && n < limit)
            buffer[n++] = *p++;
    }
    buffer[n] = '\0';
    return n > 0;
}

void scanCommandLine(const char* commandLine)
{
    char token[kCommandTokenCapacity];
    if (findOption(commandLine, 'A', token, sizeof token)) {
        g_setup.optionSourceFolder = 1;
        if (token[2] != '\0')
            HOI_CopyA(g_setup.sourceFolder, kPathCapacity, token + 2);
    }
    HOI_PathA(g_setup.sourceFolder, kPathCapacity);
    if (findOption(commandLine, 'S', token, sizeof token))
        g_setup.optionSilent = 1;
    if (findOption(commandLine, 'U', token, sizeof token))
        g_setup.optionPerUser = 1;
    if (findOption(commandLine, 'X', token, sizeof token))
        g_setup.optionRemove = 1;
}
