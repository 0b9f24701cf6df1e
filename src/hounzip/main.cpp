// hounzip.exe: unpacks one packed member of a Vistrel distribution into a target folder. The installer starts it
// once for every packed file, with this command line:
//
//   "hounzip.exe" "archive" "target folder\" [options] -n -q
//
// The archive is a zip archive that holds exactly one file (stored or deflated, Zip64 allowed). The file is
// written under its stored base name into the target folder, through a new temporary file that is renamed into
// place only after the CRC-32 matched.
//
// Options (with "-" or "/", either case):
//   -n  never ask: an existing file of the same name is replaced without a question. Without -n the user is asked
//       first, and with -q (nobody to ask) the existing file is kept (exit code 7).
//   -q  quiet: never show anything. Without -q a failure is shown in a message box with its reason.
//
// Exit codes:
//   0  success: the file was written (or replaced)
//   1  bad command line: missing or extra argument, unknown option, empty or overlong path
//   2  archive missing or unreadable (not found, no access, a folder, or a read failed)
//   3  not a valid one-file archive: no end record, truncated, not exactly one file entry, a directory entry,
//      headers that disagree, sizes or offsets that do not fit the file, a stored name with nothing safe left
//      (empty, a device name, reserved characters, a closing dot or blank)
//   4  unsupported entry: compression method other than stored (0) or deflate (8), or encryption
//   5  damaged data: CRC-32 mismatch, broken deflate stream, unpacked length differs from the stored size
//   6  cannot write: target folder missing, temporary file cannot be created or written (disk full), the
//      target cannot be replaced (a folder of that name, access denied), or a link is in the way (the target
//      folder or one above it is a junction or link, the target is a link or lies elsewhere)
//   7  target exists and was kept: no -n, and the user declined, -q did not allow asking, or the target
//      appeared while the member was unpacked
//   8  out of memory for the decoder
//
// It is a GUI-subsystem program with no console and no start-up work of its own, because the installer starts it
// hundreds of times in a row and every start counts.
#include "hounzip.h"

static const char *const g_reasons[] = {
    "The file was unpacked.",
    "The command line is not valid.",
    "The archive cannot be opened or read.",
    "The archive is damaged or does not hold exactly one file.",
    "The archive uses a compression method or encryption that is not supported.",
    "The packed data is damaged (checksum or length does not match).",
    "The file cannot be written to the target folder.",
    "The existing file was kept.",
    "There is not enough memory to unpack the file."
};

// Shows a message box. user32.dll is loaded only here: importing it would make every start pay for its
// initialisation (under Wine that doubles the cost of a start), while a quiet run that succeeds never needs it.
// Returns the button pressed, or 0 when no box could be shown.
static int ShowBox(const char *text, UINT style)
{
    typedef int(WINAPI * MessageBoxFunction)(HWND, LPCSTR, LPCSTR, UINT);
    HMODULE user32 = LoadLibraryA("user32.dll");
    if (user32 == NULL)
        return 0;
    MessageBoxFunction messageBox = (MessageBoxFunction)(void *)GetProcAddress(user32, "MessageBoxA");
    int answer = messageBox != NULL ? messageBox(NULL, text, "hounzip", style | MB_SETFOREGROUND) : 0;
    FreeLibrary(user32);
    return answer;
}

// Appends text to buffer (capacity bytes, always terminated), cutting what does not fit.
static void Append(char *buffer, size_t capacity, const char *text)
{
    size_t length = (size_t)lstrlenA(buffer);
    if (length + 1 < capacity)
        lstrcpynA(buffer + length, text, (int)(capacity - length));
}

static void ShowFailure(int code, const HzCommand *command)
{
    char message[3 * MAX_PATH + 256];
    message[0] = '\0';
    Append(message, sizeof(message), g_reasons[code]);
    if (command->archive[0] != '\0') {
        Append(message, sizeof(message), "\n\nArchive: ");
        Append(message, sizeof(message), command->archive);
    }
    if (command->folder[0] != '\0') {
        Append(message, sizeof(message), "\nTarget folder: ");
        Append(message, sizeof(message), command->folder);
    }
    ShowBox(message, MB_OK | MB_ICONERROR);
}

// Whether the target may be written. With -n an existing target is replaced; without it only when the user
// agrees, and a quiet run cannot ask and keeps it. *replace says whether the rename may replace a file: not when
// none was there at this point, so that one that appears meanwhile is kept rather than replaced unasked.
static int MayWrite(const HzCommand *command, const char *target, int *replace)
{
    *replace = command->noAsk;
    if (command->noAsk || GetFileAttributesA(target) == INVALID_FILE_ATTRIBUTES)
        return 1;
    if (command->quiet)
        return 0;
    char question[MAX_PATH + 64];
    question[0] = '\0';
    Append(question, sizeof(question), "The file already exists:\n");
    Append(question, sizeof(question), target);
    Append(question, sizeof(question), "\n\nReplace it?");
    *replace = ShowBox(question, MB_YESNO | MB_ICONQUESTION) == IDYES;
    return *replace;
}

static int Run(const HzCommand *command)
{
    HANDLE archive = CreateFileA(command->archive, GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING,
                                 FILE_FLAG_SEQUENTIAL_SCAN, NULL);
    if (archive == INVALID_HANDLE_VALUE)
        return HZ_ERR_OPEN;
    HzEntry entry;
    char target[MAX_PATH];
    int replace = 0;
    int result = HZ_ReadArchive(archive, &entry);
    if (result == HZ_OK && !HZ_TargetPath(command->folder, entry.name, target, sizeof(target)))
        result = HZ_ERR_WRITE;
    if (result == HZ_OK && !MayWrite(command, target, &replace))
        result = HZ_ERR_KEPT;
    if (result == HZ_OK)
        result = HZ_Extract(archive, &entry, command->folder, replace, command->givenTemp ? &command->tempPart : NULL);
    CloseHandle(archive);
    return result;
}

// DLLs loaded at run time (user32 for a message box, what the C library loads for rand_s) come from the system
// folder only, never from the program's folder, which is often a Downloads folder that a stranger may have
// filled. SetDefaultDllDirectories exists from Windows 8 (Windows 7 with update KB2533623); without it
// SetDllDirectoryA("") at least takes the current folder out of the search.
static void RestrictDllSearch(void)
{
    typedef BOOL(WINAPI * SetDefaultDllDirectoriesFunction)(DWORD);
    SetDefaultDllDirectoriesFunction setDefault = (SetDefaultDllDirectoriesFunction)(void *)GetProcAddress(
        GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories");
    if (setDefault == NULL || !setDefault(LOAD_LIBRARY_SEARCH_SYSTEM32))
        SetDllDirectoryA("");
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show)
{
    RestrictDllSearch();
    // No system dialog (drive not ready and the like) may stop an unattended installation.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    HzCommand command;
    int result = HZ_ParseCommandLine(GetCommandLineA(), &command);
    if (result == HZ_OK)
        result = Run(&command);
    if (result != HZ_OK && !command.quiet)
        ShowFailure(result, &command);
    return result;
}
