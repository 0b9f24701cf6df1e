// The setup program's view of the language module's text tables (holang.h): pointers bound by
// export name once the module has been checked and loaded, so that nothing of the module is
// imported at load time.
#include "core/core.h"
#include "holang.h"

const char* const* eMessageText = nullptr;
const char* const* eUniTexts = nullptr;
const char* const* eAlertErrorText = nullptr;
const char* const* eRelativePaths = nullptr;
const char* const* eButtonText = nullptr;
const char* const* eCaptionTexts = nullptr;
const char* const* eDefaultNames = nullptr;
const char* const* eProfileTitle = nullptr;
const char* const* eMonthNames = nullptr;
const char* eApplicationName = nullptr;

namespace {

constexpr int kTableCount = 10;
// In the order of the assignments in bindLanguageTables.
constexpr const char* kTableNames[kTableCount] = {
    "eMessageText", "eUniTexts", "eAlertErrorText", "eRelativePaths", "eButtonText",
    "eCaptionTexts", "eDefaultNames", "eProfileTitle", "eMonthNames", "eApplicationName",
};

} // namespace

bool bindLanguageTables(HMODULE module)
{
    // All found before any is set: no half-bound set of tables from two modules.
    const void* found[kTableCount];
    for (int i = 0; i < kTableCount; ++i) {
        found[i] = reinterpret_cast<const void*>(GetProcAddress(module, kTableNames[i]));
        if (!found[i])
            return false;
    }
    eMessageText = static_cast<const char* const*>(found[0]);
    eUniTexts = static_cast<const char* const*>(found[1]);
    eAlertErrorText = static_cast<const char* const*>(found[2]);
    eRelativePaths = static_cast<const char* const*>(found[3]);
    eButtonText = static_cast<const char* const*>(found[4]);
    eCaptionTexts = static_cast<const char* const*>(found[5]);
    eDefaultNames = static_cast<const char* const*>(found[6]);
    eProfileTitle = static_cast<const char* const*>(found[7]);
    eMonthNames = static_cast<const char* const*>(found[8]);
    eApplicationName = static_cast<const char*>(found[9]);
    return true;
}

void unbindLanguageTables()
{
    eMessageText = eUniTexts = eAlertErrorText = eRelativePaths = eButtonText = nullptr;
    eCaptionTexts = eDefaultNames = eProfileTitle = eMonthNames = nullptr;
    eApplicationName = nullptr;
}
