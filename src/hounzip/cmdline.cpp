// Command line of the unpacker, as the installer builds it:
//   "hounzip.exe" "archive" "target folder\" options -n -q
// Tokens are separated by blanks or tabs; a double quote switches quoting on or off and is dropped. A backslash is
// always an ordinary character, so "C:\dir\" is the folder C:\dir\ and not an escaped quote (the usual argv rules
// would swallow the closing quote and the rest of the line). An unquoted token that begins with "-" or "/" is an
// option; every other token is a path.
#include "hounzip.h"

#include "format/unpacker_temp.h"

// Reads one token starting at *cursor into out (capacity bytes, terminated). Returns 0 at the end of the line,
// 1 with a token, -1 when the token does not fit. *quoted tells whether the token began with a quote.
static int NextToken(const char **cursor, char *out, size_t capacity, int *quoted)
{
    const char *p = *cursor;
    while (*p == ' ' || *p == '\t')
        p++;
    if (*p == '\0') {
        *cursor = p;
        return 0;
    }
    *quoted = (*p == '"');
    int inQuotes = 0;
    size_t length = 0;
    int fits = 1;
    for (; *p != '\0'; p++) {
        if (*p == '"') {
            inQuotes = !inQuotes;
            continue;
        }
        if (!inQuotes && (*p == ' ' || *p == '\t'))
            break;
        if (length + 1 < capacity)
            out[length++] = *p;
        else
            fits = 0;
    }
    out[length] = '\0';
    *cursor = p;
    return fits ? 1 : -1;
}

// Reads the temporary name's digits of -t: exactly kUnpackerTempDigits hex digits, nothing before or after them
// (no sign, no "0x", no blank). Returns false for anything else.
static int ParseTempDigits(const char *digits, uint32_t *value)
{
    uint32_t result = 0;
    for (size_t i = 0; i < kUnpackerTempDigits; i++) {
        char c = digits[i];
        unsigned digit = c >= '0' && c <= '9' ? (unsigned)(c - '0')
                       : c >= 'a' && c <= 'f' ? (unsigned)(c - 'a' + 10)
                       : c >= 'A' && c <= 'F' ? (unsigned)(c - 'A' + 10) : 16u;
        if (digit > 15)
            return 0;  // also ends at the terminating zero of a short token
        result = result << 4 | digit;
    }
    *value = result;
    return digits[kUnpackerTempDigits] == '\0';
}

// Applies one option token ("-n", "/Q", "-t0a1b2c3d", ...). Returns false for an unknown or malformed option and
// for a second -t.
static int ApplyOption(const char *token, HzCommand *command)
{
    if ((token[1] | 0x20) == kUnpackerTempOption[1]) {  // either case of the letter
        if (command->givenTemp || !ParseTempDigits(token + 2, &command->tempPart))
            return 0;
        command->givenTemp = 1;
        return 1;
    }
    if (token[1] == '\0' || token[2] != '\0')
        return 0;
    switch (token[1]) {
    case 'n':
    case 'N':
        command->noAsk = 1;
        return 1;
    case 'q':
    case 'Q':
        command->quiet = 1;
        return 1;
    default:
        return 0;
    }
}

// Fills command from the whole process command line (program name first). Returns HZ_OK or
// HZ_ERR_COMMAND_LINE. The quiet flag is set as soon as it is seen, even when a later token is bad, so that a
// quiet caller never gets a message box about its own mistake.
int HZ_ParseCommandLine(const char *line, HzCommand *command)
{
    char token[MAX_PATH];
    int quoted = 0;
    int paths = 0;
    int bad = 0;
    const char *cursor = line ? line : "";

    ZeroMemory(command, sizeof(*command));
    int got = NextToken(&cursor, token, sizeof(token), &quoted);  // the program's own name
    if (got == 0)
        return HZ_ERR_COMMAND_LINE;

    while ((got = NextToken(&cursor, token, sizeof(token), &quoted)) != 0) {
        if (got < 0) {
            bad = 1;
        } else if (!quoted && (token[0] == '-' || token[0] == '/')) {
            if (!ApplyOption(token, command))
                bad = 1;
        } else if (paths == 0) {
            lstrcpynA(command->archive, token, sizeof(command->archive));
            paths++;
        } else if (paths == 1) {
            lstrcpynA(command->folder, token, sizeof(command->folder));
            paths++;
        } else {
            bad = 1;
        }
    }
    if (bad || paths != 2 || command->archive[0] == '\0' || command->folder[0] == '\0')
        return HZ_ERR_COMMAND_LINE;

    size_t length = (size_t)lstrlenA(command->folder);
    char last = command->folder[length - 1];
    if (last != '\\' && last != '/') {
        if (length + 2 > sizeof(command->folder))
            return HZ_ERR_COMMAND_LINE;
        command->folder[length] = '\\';
        command->folder[length + 1] = '\0';
    }
    return HZ_OK;
}
