// Starting the unpacker. hounzip.exe lies beside the program, which runs elevated from a folder
// others may write to; so only the hounzip.exe built with this program is started. It is checked
// once per run, at its first start, and held open without write or delete sharing until the
// run ends: every later start runs the very file checked, and a check per start (a second or
// more for thousands of packed members) is saved.
#define _CRT_RAND_S  // declares rand_s, the system's cryptographic generator
#include <cstdlib>

#include "install/install.h"
#include "core/core.h"
#include "format/program_files.h"
#include "strings/hoi_strings.h"

namespace {

// A job whose processes end when its last handle closes: this program holds the only one, so
// when it ends for any reason (a kill, a crash) a running unpacker ends with it, and the
// unpacker's temporary file, marked for deletion until its last moment, goes too.
HANDLE makeUnpackerJob()
{
    HANDLE job = CreateJobObjectA(nullptr, nullptr);
    if (!job)
        return nullptr;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits)) {
        CloseHandle(job);
        return nullptr;
    }
    return job;
}

} // namespace

bool startUnpacker(char* commandLine, STARTUPINFOA* startup, PROCESS_INFORMATION* process)
{
    if (!g_setup.unpackerFile) {
        g_setup.unpackerJob = makeUnpackerJob();
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
    if (!CreateProcessA(g_setup.unpackerPath, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, startup,
                        process))
        return false;
    // Windows 7 refuses a job inside another (this program may have been started in one); the
    // unpacker then merely outlives a killed program, as it always did.
    if (g_setup.unpackerJob)
        AssignProcessToJobObject(g_setup.unpackerJob, process->hProcess);
    return true;
}

void releaseUnpacker()
{
    if (g_setup.unpackerFile)
        CloseHandle(g_setup.unpackerFile);
    g_setup.unpackerFile = nullptr;
    if (g_setup.unpackerJob)
        CloseHandle(g_setup.unpackerJob);
    g_setup.unpackerJob = nullptr;
    HOI_InitA(g_setup.unpackerPath);
}

std::uint32_t unpackerTempValue()
{
    unsigned int value = 0;
    if (rand_s(&value) != 0)
        value = GetTickCount() ^ (GetCurrentProcessId() << 16);
    return value;
}
