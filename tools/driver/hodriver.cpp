// hodriver: waits for a dialog of the setup program and checks or presses its controls, driven
// by its command line, so that a script can go through a setup run as a person would.
//
//   hodriver COMMAND [ID] [--pid N] [--caption TEXT] [--has ID]... [--timeout SECONDS]
//
//   wait-dialog ID   wait until a dialog holding control ID is shown; prints its handle
//   wait-gone ID     wait until no dialog holding control ID is shown
//   text ID          print the text of control ID
//   state ID         print "exists=1 enabled=1 visible=1 checked=0" for control ID
//   caption          print the dialog's caption
//   click ID         click button ID (BM_CLICK)
//   command ID       send the dialog the command of control ID
//   escape | enter   press the key in the dialog
//
// Every command first waits (up to --timeout, default 20 s) for a matching dialog: a visible
// dialog of process N (any process when --pid is missing) that holds every --has control and
// the ID of the command. Exit code 0 on success, 1 when no dialog matched in time, 2 for a bad
// command line.
#include "dialogs.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Options {
    const char* command = nullptr;
    int id = 0;
    DWORD processId = 0;
    const char* caption = nullptr;
    int has[kMaxRequiredControls] = {};
    int hasCount = 0;
    DWORD timeoutMs = kDialogTimeout;
    bool anyProcess = true;
};

int usage()
{
    std::fprintf(stderr, "usage: hodriver wait-dialog|wait-gone|text|state|caption|click|command|escape|enter "
                         "[ID] [--pid N] [--caption TEXT] [--has ID]... [--timeout SECONDS]\n");
    return 2;
}

bool needsId(const char* command)
{
    return std::strcmp(command, "caption") != 0 && std::strcmp(command, "escape") != 0 &&
           std::strcmp(command, "enter") != 0;
}

bool parse(int argc, char** argv, Options* options)
{
    if (argc < 2)
        return false;
    options->command = argv[1];
    int next = 2;
    if (needsId(options->command)) {
        if (argc < 3)
            return false;
        options->id = std::atoi(argv[2]);
        next = 3;
    }
    for (int i = next; i < argc; ++i) {
        if (i + 1 >= argc)
            return false;
        const char* value = argv[i + 1];
        if (std::strcmp(argv[i], "--pid") == 0) {
            options->processId = static_cast<DWORD>(std::strtoul(value, nullptr, 0));
            options->anyProcess = false;
        } else if (std::strcmp(argv[i], "--caption") == 0) {
            options->caption = value;
        } else if (std::strcmp(argv[i], "--has") == 0 && options->hasCount < kMaxRequiredControls - 1) {
            options->has[options->hasCount++] = std::atoi(value);
        } else if (std::strcmp(argv[i], "--timeout") == 0) {
            options->timeoutMs = static_cast<DWORD>(std::atof(value) * 1000);
        } else {
            return false;
        }
        ++i;
    }
    return true;
}

// The dialog the options name: the command's control and every --has control, in process N or,
// without --pid, in any process.
DialogQuery queryFor(const Options& options)
{
    DialogQuery query;
    query.processId = options.processId;
    query.anyProcess = options.anyProcess;
    query.caption = options.caption;
    int count = 0;
    if (options.id)
        query.controls[count++] = options.id;
    for (int i = 0; i < options.hasCount && count < kMaxRequiredControls; ++i)
        query.controls[count++] = options.has[i];
    return query;
}

int run(const Options& options)
{
    const char* command = options.command;
    const DialogQuery query = queryFor(options);
    if (std::strcmp(command, "wait-gone") == 0)
        return waitForNoDialog(query, options.timeoutMs) ? 0 : 1;

    HWND dialog = waitForDialog(query, options.timeoutMs);
    if (!dialog) {
        std::fprintf(stderr, "hodriver: no matching dialog\n");
        return 1;
    }
    if (std::strcmp(command, "wait-dialog") == 0) {
        std::printf("%p\n", static_cast<void*>(dialog));
    } else if (std::strcmp(command, "text") == 0) {
        std::printf("%s\n", controlText(dialog, options.id).c_str());
    } else if (std::strcmp(command, "caption") == 0) {
        std::printf("%s\n", windowText(dialog).c_str());
    } else if (std::strcmp(command, "state") == 0) {
        const ControlState state = controlState(dialog, options.id);
        std::printf("exists=%d enabled=%d visible=%d checked=%d\n", state.exists, state.enabled, state.visible,
                    state.checked);
    } else if (std::strcmp(command, "click") == 0) {
        clickButton(dialog, options.id);
    } else if (std::strcmp(command, "command") == 0) {
        sendCommand(dialog, options.id);
    } else if (std::strcmp(command, "escape") == 0) {
        pressEscape(dialog);
    } else if (std::strcmp(command, "enter") == 0) {
        pressEnter(dialog);
    } else {
        return usage();
    }
    std::fflush(stdout);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!parse(argc, argv, &options))
        return usage();
    return run(options);
}
