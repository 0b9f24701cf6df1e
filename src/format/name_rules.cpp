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
