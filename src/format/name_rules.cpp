// Name rules shared by the package builder and the setup program.
#include "format/name_rules.h"

namespace {

// Characters that no Windows file or folder name may hold (besides control characters).
bool isReservedNameChar(char c)
{
    switch (c) {
    case '<': case '>': case ':': case '"': case '/': case '\\': case '|': case '?': case '*':
        return true;
    default:
        return false;
    }
}

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool sameLetters(std::string_view text, const char* word)
{
    std::size_t i = 0;
    for (; word[i]; ++i) {
        if (i >= text.size() || upper(text[i]) != word[i])
            return false;
    }
    return i == text.size();
}

// Names Windows opens as devices whatever the folder and whatever follows the first dot: CON,
// PRN, AUX, NUL, CONIN$, CONOUT$, and COM or LPT with a digit, also a superscript one (bytes
// 0xB9, 0xB2, 0xB3 of Windows-1252). Blanks before the dot are ignored by Windows too.
bool isDeviceName(std::string_view name)
{
    std::string_view stem = name.substr(0, name.find('.'));
    while (!stem.empty() && stem.back() == ' ')
        stem.remove_suffix(1);
    for (const char* device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"}) {
        if (sameLetters(stem, device))
            return true;
    }
    if (stem.size() != 4 || !(sameLetters(stem.substr(0, 3), "COM") || sameLetters(stem.substr(0, 3), "LPT")))
        return false;
    const unsigned char digit = static_cast<unsigned char>(stem[3]);
    return (digit >= '0' && digit <= '9') || digit == 0xB9 || digit == 0xB2 || digit == 0xB3;
}

} // namespace

const char* plainTextProblem(std::string_view text)
{
    for (char c : text) {
        if (static_cast<unsigned char>(c) < 0x20)
            return "holds a control character";
    }
    return nullptr;
}

const char* fileNameProblem(std::string_view name)
{
    if (name.empty())
        return "is empty";
    if (const char* problem = plainTextProblem(name))
        return problem;
    for (char c : name) {
        if (isReservedNameChar(c))
            return "holds a reserved character (< > : \" / \\ | ? *)";
    }
    if (name == "." || name == "..")
        return "is not a file name";
    if (name.back() == ' ' || name.back() == '.')
        return "ends in a blank or a dot";
    if (isDeviceName(name))
        return "is the name of a device";
    return nullptr;
}

const char* relativeFolderProblem(std::string_view folder, std::string_view* part)
{
    if (folder.empty())
        return nullptr;
    if (folder.find('/') != std::string_view::npos)
        return "uses '/': separate folders with a backslash";
    if (folder.front() == '\\' || folder.back() == '\\')
        return "starts or ends with a backslash";
    std::size_t start = 0;
    for (;;) {
        std::size_t end = folder.find('\\', start);
        if (end == std::string_view::npos)
            end = folder.size();
        const std::string_view name = folder.substr(start, end - start);
        if (name.empty())
            return "holds an empty folder name (two backslashes)";
        if (name == "..")
            return "holds \"..\"";
        if (const char* problem = fileNameProblem(name)) {
            if (part)
                *part = name;
            return problem;
        }
        if (end == folder.size())
            return nullptr;
        start = end + 1;
    }
}
