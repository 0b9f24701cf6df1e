// Error reports of internal faults: a module word, the fixed line number at which the fault is
// detected, and a text. Shown even in a silent run, because such a fault needs a person.
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"

namespace {

// The caption while no language module is bound, above all when the one beside the program was
// refused: the texts of a foreign module are not shown.
constexpr char kUnboundCaption[] = "Vistrel Setup";

// "*word" is used as it stands; anything else is taken as a path and reduced to its file name,
// which for a plain word such as "Init" is the word itself.
const char* moduleName(const char* moduleWord)
{
    if (!moduleWord)
        return "";
    if (moduleWord[0] == '*')
        return moduleWord + 1;
    const char* name = moduleWord;
    for (const char* p = moduleWord; *p; ++p) {
        if (*p == '\\' || *p == '/' || *p == ':')
            name = p + 1;
    }
    return name;
}

} // namespace

void formatErrorReport(const char* moduleWord, std::uint32_t line, const char* text,
                       char* buffer, std::size_t capacity)
{
    HOI_PrintA(buffer, capacity, "%s\\%d\n\n%s", moduleName(moduleWord), static_cast<int>(line),
               text ? text : "");
}

void reportError(const char* moduleWord, std::uint32_t line, const char* text)
{
    char message[kErrorReportCapacity];
    formatErrorReport(moduleWord, line, text, message, sizeof message);
    MessageBoxA(g_setup.mainWindow, message, eCaptionTexts ? eCaptionTexts[kCaptionSetup] : kUnboundCaption, MB_OK);
}
