// Starting the unpacker. hounzip.exe lies beside the program, which runs elevated from a folder
// others may write to; so only the hounzip.exe built with this program is started. It is checked
// once per run, at its first start, and held open without write or delete sharing until the
// run ends: every later start runs the very file checked, and a check per start (a second or
// more for thousands of packed members) is saved.
#include "install/install.h"
#include "core/core.h"
#include "format/program_files.h"

bool startUnpacker(char* commandLine, STARTUPINFOA* startup, PROCESS_INFORMATION* process)
{
    char path[kPathCapacity];
    if (!composePath(path, sizeof path, g_setup.programFolder, kUnpackerName))
        return false;
    if (!g_setup.unpackerFile) {
        HANDLE file = nullptr;
        if (openOwnFile(path, kUnpackerDigests, kUnpackerDigestCount, &file) != OwnFileCheck::Accepted)
            return false;
        g_setup.unpackerFile = file;
    }
    // The checked path as the program to run: the command line's first word is not searched.
    return CreateProcessA(path, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, startup, process) != FALSE;
}

void releaseUnpacker()
{
    if (g_setup.unpackerFile)
        CloseHandle(g_setup.unpackerFile);
    g_setup.unpackerFile = nullptr;
}
