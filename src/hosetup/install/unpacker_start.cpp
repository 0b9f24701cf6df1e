// Starting the unpacker. hounzip.exe lies beside the program, which runs elevated from a folder
// others may write to; so only the hounzip.exe built with this program is started. It is checked
// once per run, at its first start, and held open without write or delete sharing until the
// run ends: every later start runs the very file checked, and a check per start (a second or
// more for thousands of packed members) is saved.
#include "install/install.h"
#include "core/core.h"
#include "format/program_files.h"
#include "strings/hoi_strings.h"

bool startUnpacker(char* commandLine, STARTUPINFOA* startup, PROCESS_INFORMATION* process)
{
    if (!g_setup.unpackerFile) {
        char path[kPathCapacity];
        HANDLE file = nullptr;
        if (!composePath(path, sizeof path, g_setup.programFolder, kUnpackerName) ||
            openOwnFile(path, kUnpackerDigests, kUnpackerDigestCount, &file, g_setup.unpackerPath) !=
                OwnFileCheck::Accepted)
            return false;
        g_setup.unpackerFile = file;
    }
    // The checked file's final path as the program to run: the command line's first word is not
    // searched, and no link on the way can lead to another file.
    return CreateProcessA(g_setup.unpackerPath, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, startup,
                          process) != FALSE;
}

void releaseUnpacker()
{
    if (g_setup.unpackerFile)
        CloseHandle(g_setup.unpackerFile);
    g_setup.unpackerFile = nullptr;
    HOI_InitA(g_setup.unpackerPath);
}
