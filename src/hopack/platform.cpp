// The one place where the two builds differ: finding the folder of the running hopack, where the
// release build gathers the setup program's own files.
#include "hopack.h"

#ifdef _WIN32
#include <windows.h>

fs::path ExecutableFolder(const char* argv0)
{
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof(path));
    if (length == 0 || length >= sizeof(path)) return fs::absolute(argv0).parent_path();
    return fs::path(path).parent_path();
}

#else

fs::path ExecutableFolder(const char* argv0)
{
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return fs::absolute(argv0).parent_path();
    return self.parent_path();
}

#endif
