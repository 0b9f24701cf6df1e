// Long waits that keep the window alive: while the unpacker runs or a large file is copied, the
// one GUI thread keeps dispatching window messages, so the progress window repaints and its
// cancel button is heard (the question itself comes at the next progress report).
#include "files/files.h"
#include "core/core.h"

bool waitForProcessPumping(HANDLE process, DWORD* exitCode)
{
    for (;;) {
        const DWORD woken = MsgWaitForMultipleObjects(1, &process, FALSE, INFINITE, QS_ALLINPUT);
        if (woken == WAIT_OBJECT_0)
            break;
        if (woken != WAIT_OBJECT_0 + 1)
            return false;       // the wait itself failed
        pumpWindowMessages();
    }
    return GetExitCodeProcess(process, exitCode) != FALSE;
}

bool copyFilePumping(const char* source, const char* target, bool failIfExists, bool sourceInForeignFolder)
{
    const CopyRules rules = {failIfExists, sourceInForeignFolder, pumpWindowMessages};
    return copyChecked(source, target, rules);
}
