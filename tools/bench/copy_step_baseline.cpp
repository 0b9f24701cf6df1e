// copy_step_baseline.exe: the yardstick of the copy-step benchmark (tools/bench/copy_step_bench.sh).
//
//   copy_step_baseline.exe PROGRAM LISTFILE
//
// For every line of LISTFILE ("archive<TAB>target folder\", Windows paths) it does what the copy step
// cannot avoid for one packed member: start PROGRAM (a do-nothing GUI program) as the setup program
// starts its unpacker (CreateProcessA with the window hidden, no inherited handles, the unpacker's own
// command line) and wait for it, then unpack the member in this process with the unpacker's own code
// (archive reading, decoding and writing of src/hounzip, replacing an existing target as -n does).
// Whatever the setup program spends per member beyond this is its own.
//
// Output, one "key value" pair per line, for the script to read: member_ms for every member in list
// order (both parts), then members, failures, retries (starts repeated, see below), mean_ms and
// median_ms, start_ms and unpack_ms (the means of the two parts). What failed is told on the error
// output.
#include "hounzip.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

constexpr std::size_t kLineCapacity = 2 * MAX_PATH + 8;

struct Member {
    char archive[MAX_PATH];
    char folder[MAX_PATH];
};

LARGE_INTEGER g_frequency;

double nowMs()
{
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    return 1000.0 * static_cast<double>(counter.QuadPart) / static_cast<double>(g_frequency.QuadPart);
}

// Reads the list; false when it cannot be read or a line does not fit.
bool readList(const char* path, std::vector<Member>* members)
{
    FILE* list = std::fopen(path, "rb");
    if (!list)
        return false;
    char line[kLineCapacity];
    bool fine = true;
    while (fine && std::fgets(line, sizeof line, list)) {
        line[std::strcspn(line, "\r\n")] = '\0';
        if (line[0] == '\0')
            continue;
        char* tab = std::strchr(line, '\t');
        Member member;
        fine = tab && static_cast<std::size_t>(tab - line) < sizeof member.archive &&
               std::strlen(tab + 1) < sizeof member.folder;
        if (!fine)
            break;
        *tab = '\0';
        lstrcpynA(member.archive, line, sizeof member.archive);
        lstrcpynA(member.folder, tab + 1, sizeof member.folder);
        members->push_back(member);
    }
    std::fclose(list);
    return fine && !members->empty();
}

// Starts the program with the command line the setup program gives its unpacker and waits for it.
// -1: it could not be started.
int startAndWait(const char* program, const Member& member)
{
    char commandLine[4 * MAX_PATH];
    std::snprintf(commandLine, sizeof commandLine, "\"%s\" \"%s.\" \"%s\"  -n -q", program, member.archive,
                  member.folder);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        std::fprintf(stderr, "%s: not started (error %lu)\n", member.archive, GetLastError());
        return -1;
    }
    CloseHandle(process.hThread);
    DWORD code = 1;
    const bool ended = WaitForSingleObject(process.hProcess, INFINITE) == WAIT_OBJECT_0 &&
                       GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hProcess);
    if (!ended || code != 0)
        std::fprintf(stderr, "%s: the program ended with %lu\n", member.archive, code);
    return ended && code == 0 ? 1 : 0;
}

// The unpacker's own run for "-n -q": read the one entry, write it into the folder, replacing.
bool unpackInProcess(const Member& member)
{
    HANDLE archive = CreateFileA(member.archive, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                 FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (archive == INVALID_HANDLE_VALUE) {
        std::fprintf(stderr, "%s: not opened (error %lu)\n", member.archive, GetLastError());
        return false;
    }
    HzEntry entry;
    int result = HZ_ReadArchive(archive, &entry);
    if (result == HZ_OK)
        result = HZ_Extract(archive, &entry, member.folder, 1, NULL);
    CloseHandle(archive);
    if (result != HZ_OK)
        std::fprintf(stderr, "%s: unpacking failed with %d\n", member.archive, result);
    return result == HZ_OK;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<Member> members;
    if (argc != 3 || !readList(argv[2], &members)) {
        std::fprintf(stderr, "usage: copy_step_baseline PROGRAM LISTFILE (lines: archive<TAB>folder\\)\n");
        return 2;
    }
    QueryPerformanceFrequency(&g_frequency);
    std::vector<double> total;
    double startSum = 0.0, unpackSum = 0.0;
    int failures = 0;
    int retries = 0;
    for (const Member& member : members) {
        double begin = nowMs();
        int ran = startAndWait(argv[1], member);
        if (ran < 0) {
            // Under Wine, with other programs starting processes at the same time, a start now and
            // then fails (error 1359) and succeeds when repeated, as tools/launch/launch.c knows;
            // such a member is timed from its second start.
            ++retries;
            Sleep(200);
            begin = nowMs();
            ran = startAndWait(argv[1], member);
        }
        failures += ran != 1;
        const double started = nowMs();
        failures += !unpackInProcess(member);
        const double end = nowMs();
        startSum += started - begin;
        unpackSum += end - started;
        total.push_back(end - begin);
    }
    for (double ms : total)
        std::printf("member_ms %.3f\n", ms);
    const double count = static_cast<double>(total.size());
    std::sort(total.begin(), total.end());
    std::printf("members %zu\nfailures %d\nretries %d\nmean_ms %.3f\nmedian_ms %.3f\nstart_ms %.3f\nunpack_ms %.3f\n",
                total.size(), failures, retries, (startSum + unpackSum) / count, total[total.size() / 2], startSum / count,
                unpackSum / count);
    return failures == 0 ? 0 : 1;
}
