// What happens after a file could not be copied, unpacked or written: a person chooses retry,
// skip or cancel (or retry or cancel where skipping would lose a record); a silent run, which
// nobody watches, retries the same file at most three times in all, one second apart, and then
// cancels, so the run ends with a failure code rather than hanging or reporting success with a
// file missing.
#include "ui/ui.h"
#include "core/core.h"

namespace {

constexpr int kSilentAttempts = 3;
constexpr DWORD kSilentRetryDelayMs = 1000;

int silentAnswer(int attempt)
{
    if (attempt >= kSilentAttempts)
        return kButtonCancel;
    Sleep(kSilentRetryDelayMs);
    return kButtonRetryFile;
}

} // namespace

int askAfterFailedCopy(const char* message, int attempt)
{
    if (!g_setup.optionSilent)
        return AlertThreeWay(g_setup.mainWindow, message);
    return silentAnswer(attempt);
}

int askAfterFailedWrite(const char* path, int attempt)
{
    if (!g_setup.optionSilent)
        return ShowFileAlert(g_setup.mainWindow, path, kFileAlertCannotWriteRetry);
    return silentAnswer(attempt);
}
