/* hzlaunch.exe: starts Windows programs the way the installer starts its unpacker (CreateProcessA with the window
 * hidden, no inherited handles, then WaitForSingleObject and GetExitCodeProcess), so that tests and benchmarks
 * see exactly the command line and the process start that the installer produces.
 *
 *   hzlaunch.exe LISTFILE [ROUNDS]
 *
 * LISTFILE holds one complete command line per line (at most 256 lines), taken verbatim: no shell or argv quoting
 * in between. The whole list is started ROUNDS times (default 1), line after line, so that programs measured
 * together share the same load of the machine. For each line one output line is printed:
 *   <exit code of the last start> <mean ms per start> <median ms per start>
 * A command that cannot be started gives exit code -1. */
#include <windows.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define MAX_LINES 256
#define MAX_ROUNDS 1000
#define LINE_SIZE 4096

static char g_lines[MAX_LINES][LINE_SIZE];
static double g_ms[MAX_LINES][MAX_ROUNDS];
static long g_codes[MAX_LINES];

static long RunOnce(const char *commandLine)
{
    char copy[LINE_SIZE]; /* CreateProcessA may write into its command-line buffer */
    STARTUPINFOA startup;
    PROCESS_INFORMATION process;
    DWORD code = 0;
    memcpy(copy, commandLine, sizeof(copy));
    ZeroMemory(&startup, sizeof(startup));
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    if (!CreateProcessA(NULL, copy, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &process)) {
        /* Under Wine with several test programs starting processes at once, a start has been
         * seen to fail once and succeed when repeated; the cases test the unpacker, not that. */
        Sleep(200);
        memcpy(copy, commandLine, sizeof(copy));
        if (!CreateProcessA(NULL, copy, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &process))
            return -1;
    }
    CloseHandle(process.hThread);
    if (WaitForSingleObject(process.hProcess, INFINITE) != WAIT_OBJECT_0 || !GetExitCodeProcess(process.hProcess, &code))
        code = 100;
    CloseHandle(process.hProcess);
    return (long)code;
}

static int CompareDoubles(const void *a, const void *b)
{
    double x = *(const double *)a, y = *(const double *)b;
    return x < y ? -1 : x > y;
}

int main(int argc, char **argv)
{
    LARGE_INTEGER frequency, start, end;
    if (argc < 2) {
        fprintf(stderr, "usage: hzlaunch LISTFILE [ROUNDS]\n");
        return 2;
    }
    int rounds = argc > 2 ? atoi(argv[2]) : 1;
    if (rounds < 1)
        rounds = 1;
    if (rounds > MAX_ROUNDS)
        rounds = MAX_ROUNDS;
    FILE *list = fopen(argv[1], "rb");
    if (list == NULL) {
        fprintf(stderr, "cannot open %s\n", argv[1]);
        return 2;
    }
    int count = 0;
    while (count < MAX_LINES && fgets(g_lines[count], LINE_SIZE, list) != NULL) {
        g_lines[count][strcspn(g_lines[count], "\r\n")] = '\0';
        if (g_lines[count][0] != '\0')
            count++;
    }
    fclose(list);

    QueryPerformanceFrequency(&frequency);
    for (int round = 0; round < rounds; round++) {
        for (int i = 0; i < count; i++) {
            QueryPerformanceCounter(&start);
            g_codes[i] = RunOnce(g_lines[i]);
            QueryPerformanceCounter(&end);
            g_ms[i][round] = (double)(end.QuadPart - start.QuadPart) * 1000.0 / (double)frequency.QuadPart;
        }
    }
    for (int i = 0; i < count; i++) {
        double sum = 0.0;
        for (int round = 0; round < rounds; round++)
            sum += g_ms[i][round];
        qsort(g_ms[i], (size_t)rounds, sizeof(double), CompareDoubles);
        printf("%ld %.2f %.2f\n", g_codes[i], sum / rounds, g_ms[i][rounds / 2]);
    }
    return 0;
}
