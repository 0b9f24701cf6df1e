/* hzlaunch.exe LISTFILE [ROUNDS]: starts programs as the installer starts its unpacker (CreateProcessA with the
 * window hidden, no inherited handles, WaitForSingleObject, GetExitCodeProcess), so that tests and benchmarks see
 * exactly its command line and process start. LISTFILE holds up to 256 command lines, taken verbatim; the list is
 * started ROUNDS times (default 1), so that programs measured together share the same load. Per line it prints
 * "<exit code of the last start> <mean ms per start> <median ms per start>"; exit code -1: could not start. */
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
    STARTUPINFOA startup = { 0 };
    PROCESS_INFORMATION process;
    DWORD code = 0;
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    /* Under Wine, with several test programs starting processes at once, a start has been seen to fail once and
     * succeed when repeated; the cases test the unpacker, not that. */
    memcpy(copy, commandLine, sizeof(copy));
    if (!CreateProcessA(NULL, copy, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &process)) {
        Sleep(200);
        memcpy(copy, commandLine, sizeof(copy));
        if (!CreateProcessA(NULL, copy, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &process))
            return -1;
    }
    CloseHandle(process.hThread);
    if (WaitForSingleObject(process.hProcess, INFINITE) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(process.hProcess, &code))
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
    int rounds = argc > 2 ? atoi(argv[2]) : 1, count = 0;
    FILE *list = argc > 1 ? fopen(argv[1], "rb") : NULL;
    if (list == NULL) {
        fprintf(stderr, "usage: hzlaunch LISTFILE [ROUNDS]\n");
        return 2;
    }
    rounds = rounds < 1 ? 1 : rounds > MAX_ROUNDS ? MAX_ROUNDS : rounds;
    while (count < MAX_LINES && fgets(g_lines[count], LINE_SIZE, list) != NULL) {
        g_lines[count][strcspn(g_lines[count], "\r\n")] = '\0';
        count += g_lines[count][0] != '\0';
    }
    fclose(list);
    QueryPerformanceFrequency(&frequency);
    for (int round = 0; round < rounds; round++)
        for (int i = 0; i < count; i++) {
            QueryPerformanceCounter(&start);
            g_codes[i] = RunOnce(g_lines[i]);
            QueryPerformanceCounter(&end);
            g_ms[i][round] = (double)(end.QuadPart - start.QuadPart) * 1000.0 / (double)frequency.QuadPart;
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
