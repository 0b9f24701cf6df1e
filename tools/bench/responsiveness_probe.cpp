// responsiveness_probe.exe: starts the setup program and measures how fast its window thread answers
// while the unpacker runs.
//
//   responsiveness_probe.exe SETUP_PROGRAM [ARGUMENTS...]
//
// Every 50 ms the probe sends WM_NULL to the setup program's main window with SendMessageTimeout and
// times the answer. The main window and the progress window share the one GUI thread, so the answer
// time is how long a click or a repaint would wait. The unpacker is found as the setup program's child
// "hounzip.exe" (a process snapshot on every tick until it appears); its start and end are taken from
// GetProcessTimes, or from the ticks where it was seen when that fails.
//
// Output, one "key value" pair per line, for the benchmark script to read:
//   exit_code, unpack_seconds, unpack_runs, samples, median_ms, p95_ms, max_ms, timeouts (answers over
//   10 s), and the same three figures for the samples taken before the first unpack (pacing stages).
#include <windows.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr DWORD kIntervalMs = 50;
constexpr UINT kAnswerTimeoutMs = 10000;
constexpr char kMainWindowClass[] = "HOSETUP6_MainWClass";
constexpr char kUnpackerName[] = "hounzip.exe";

LARGE_INTEGER g_frequency;

double nowMs()
{
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    return 1000.0 * static_cast<double>(counter.QuadPart) / static_cast<double>(g_frequency.QuadPart);
}

struct WindowSearch {
    DWORD processId;
    HWND found;
};

BOOL CALLBACK matchMainWindow(HWND window, LPARAM parameter)
{
    auto* search = reinterpret_cast<WindowSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    char name[64] = {};
    if (owner == search->processId && GetClassNameA(window, name, sizeof name) &&
        std::strcmp(name, kMainWindowClass) == 0) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

HWND findMainWindow(DWORD processId)
{
    WindowSearch search = {processId, nullptr};
    EnumWindows(matchMainWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// The unpacker the setup program runs now, opened for waiting and timing; null when none runs.
HANDLE openRunningUnpacker(DWORD parentId)
{
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return nullptr;
    HANDLE unpacker = nullptr;
    PROCESSENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32First(snapshot, &entry); more && !unpacker; more = Process32Next(snapshot, &entry)) {
        if (entry.th32ParentProcessID == parentId && lstrcmpiA(entry.szExeFile, kUnpackerName) == 0)
            unpacker = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, entry.th32ProcessID);
    }
    CloseHandle(snapshot);
    return unpacker;
}

double fileTimeSeconds(const FILETIME& time)
{
    const ULONGLONG ticks = (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return static_cast<double>(ticks) / 1e7;
}

// Run time of a finished process from its own times; negative when they are not known.
double processSeconds(HANDLE process)
{
    FILETIME created, exited, kernel, user;
    if (!GetProcessTimes(process, &created, &exited, &kernel, &user))
        return -1.0;
    const double start = fileTimeSeconds(created);
    const double end = fileTimeSeconds(exited);
    return start > 0.0 && end > start ? end - start : -1.0;
}

struct Figures {
    std::vector<double> answers;
    int timeouts = 0;
};

void printFigures(const char* prefix, Figures& figures)
{
    std::vector<double>& a = figures.answers;
    std::sort(a.begin(), a.end());
    const auto at = [&a](double share) { return a.empty() ? 0.0 : a[static_cast<size_t>(share * (a.size() - 1))]; };
    std::printf("%ssamples %u\n%smedian_ms %.3f\n%sp95_ms %.3f\n%smax_ms %.3f\n%stimeouts %d\n", prefix,
                static_cast<unsigned>(a.size()), prefix, at(0.5), prefix, at(0.95), prefix, a.empty() ? 0.0 : a.back(),
                prefix, figures.timeouts);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: responsiveness_probe SETUP_PROGRAM [ARGUMENTS...]\n");
        return 2;
    }
    QueryPerformanceFrequency(&g_frequency);
    std::string commandLine = std::string("\"") + argv[1] + "\"";
    for (int i = 2; i < argc; ++i)
        commandLine += std::string(" ") + argv[i];

    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION setup = {};
    if (!CreateProcessA(nullptr, &commandLine[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &setup)) {
        std::fprintf(stderr, "cannot start %s (error %lu)\n", argv[1], GetLastError());
        return 2;
    }
    CloseHandle(setup.hThread);

    Figures before, during;
    HWND mainWindow = nullptr;
    HANDLE unpacker = nullptr;
    int unpackRuns = 0;
    double unpackSeconds = 0.0;
    double seenAt = 0.0;
    double next = nowMs();
    while (WaitForSingleObject(setup.hProcess, 0) == WAIT_TIMEOUT) {
        if (!mainWindow)
            mainWindow = findMainWindow(setup.dwProcessId);
        if (!unpacker && (unpacker = openRunningUnpacker(setup.dwProcessId)) != nullptr)
            seenAt = nowMs();
        const bool unpacking = unpacker != nullptr;

        if (mainWindow) {
            DWORD_PTR result = 0;
            const double sent = nowMs();
            const LRESULT answered =
                SendMessageTimeoutA(mainWindow, WM_NULL, 0, 0, SMTO_NORMAL, kAnswerTimeoutMs, &result);
            const double took = nowMs() - sent;
            if (!answered && !IsWindow(mainWindow)) {
                mainWindow = nullptr;       // the window went away with the end of the run
            } else if (Figures* into = unpacking ? &during : unpackRuns == 0 ? &before : nullptr) {
                // Answers after the last unpack belong to neither group.
                into->answers.push_back(took);
                if (!answered)
                    ++into->timeouts;
            }
        }

        if (unpacker && WaitForSingleObject(unpacker, 0) == WAIT_OBJECT_0) {
            const double own = processSeconds(unpacker);
            unpackSeconds += own > 0.0 ? own : (nowMs() - seenAt) / 1000.0;
            ++unpackRuns;
            CloseHandle(unpacker);
            unpacker = nullptr;
        }
        next += kIntervalMs;
        const double wait = next - nowMs();
        if (wait > 0)
            Sleep(static_cast<DWORD>(wait));
        else
            next = nowMs();
    }
    DWORD exitCode = 0;
    GetExitCodeProcess(setup.hProcess, &exitCode);
    CloseHandle(setup.hProcess);

    std::printf("exit_code %lu\nunpack_runs %d\nunpack_seconds %.3f\n", exitCode, unpackRuns, unpackSeconds);
    printFigures("", during);
    printFigures("before_", before);
    return 0;
}
