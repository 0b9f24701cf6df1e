// Host symbolic links made from a Windows test program under Wine (see host_links.h).
#include "host_links.h"
#include "process.h"

#include <windows.h>

namespace {

constexpr char kHostShell[] = "hostsh";   // made by the build beside the tests: a link to /bin/sh

// The Unix path of a Windows path whose folder exists, through Wine's own export.
std::string unixPathOf(const std::string& path)
{
    using ToUnix = char*(CDECL*)(const wchar_t*);
    const auto toUnix = reinterpret_cast<ToUnix>(GetProcAddress(GetModuleHandleA("kernel32.dll"),
                                                                "wine_get_unix_file_name"));
    const std::string trimmed = path.substr(0, path.find_last_not_of('\\') + 1);
    const std::size_t cut = trimmed.find_last_of('\\');
    if (!toUnix || cut == std::string::npos)
        return {};
    const std::string folder = trimmed.substr(0, cut + 1);
    const std::wstring wide(folder.begin(), folder.end());
    char* unixFolder = toUnix(wide.c_str());
    if (!unixFolder)
        return {};
    std::string result = std::string(unixFolder) + "/" + trimmed.substr(cut + 1);
    HeapFree(GetProcessHeap(), 0, unixFolder);
    return result;
}

// Wine gives no exit code for a Unix program it started, so this waits for its effect: the
// path there (a link to a folder shows as one, a link to a file as the file) or gone.
bool runHostShell(const std::string& script, const std::string& path, bool there)
{
    ChildProcess child;
    if (!startProcess("\"" + testBinFolder() + kHostShell + "\" -c \"" + script + "\"", &child))
        return false;
    waitForExit(&child, 10000);
    const std::string name = path.substr(0, path.find_last_not_of('\\') + 1);
    for (int polls = 0; polls < 500; ++polls, Sleep(10)) {
        if ((GetFileAttributesA(name.c_str()) != INVALID_FILE_ATTRIBUTES) == there)
            return true;
    }
    return false;
}

} // namespace

bool makeHostLink(const std::string& link, const std::string& target)
{
    const std::string from = unixPathOf(link);
    const std::string to = unixPathOf(target);
    return !from.empty() && !to.empty() && runHostShell("ln -s '" + to + "' '" + from + "'", link, true);
}

bool removeHostLink(const std::string& link)
{
    const std::string from = unixPathOf(link);
    return !from.empty() && runHostShell("rm -f '" + from + "'", link, false);
}
