// Loading and binding of the language module. It is loaded only from the program's own folder by
// its full path, and only when it is a module built with this program (core/own_files.cpp); its
// text tables are bound before anything else, since the operating-system check already shows a
// text of them, and its two entry points after that check. The exit entry is looked up before
// the init entry, so that a module without an exit function is refused before it was ever
// initialised.
#include "shell/shell.h"
#include "format/program_files.h"
#include "strings/hoi_strings.h"
#include "holang.h"

namespace {

constexpr char kModuleWord[] = "HOSetup";

// Fixed report lines: part of the message a user may quote to support.
constexpr std::uint32_t kLineLoadLibrary = 307;
constexpr std::uint32_t kLineBindExit = 314;
constexpr std::uint32_t kLineBindInit = 321;
constexpr std::uint32_t kLineInit = 328;
constexpr std::uint32_t kLineUnbindExit = 347;
constexpr std::uint32_t kLineExit = 354;
constexpr std::uint32_t kLineFreeLibrary = 360;

constexpr char kExitName[] = "HOI_LanguageExit";
constexpr char kInitName[] = "HOI_LanguageInit";

// The report of a module that is not loaded, in English: a refused module's texts are not used.
const char* refusalText(OwnFileCheck found)
{
    switch (found) {
    case OwnFileCheck::Foreign:
        return "The language module %s is not the one built with this setup program. It was not loaded.";
    default:
        return "The language module %s cannot be read. It was not loaded.";
    }
}

void reportLoadFailure(const char* format, const char* path)
{
    char text[kErrorReportCapacity];
    HOI_PrintA(text, sizeof text, format, path);
    reportError(kModuleWord, kLineLoadLibrary, text);
}

} // namespace

bool loadLanguageModule()
{
    // The program's own folder, by full path: never the loader's search by name. programFolder
    // is still empty this early.
    char programFile[kPathCapacity] = {};
    char folder[kPathCapacity];
    char path[kPathCapacity];
    GetModuleFileNameA(nullptr, programFile, sizeof programFile - 1);
    if (!FolderOfPath(programFile, folder, sizeof folder) ||
        !composePath(path, sizeof path, folder, kLanguageModuleName)) {
        reportLoadFailure(refusalText(OwnFileCheck::Unreadable), kLanguageModuleName);
        return false;
    }
    // Held from the check until the module is mapped; a mapped image cannot be changed either.
    HANDLE held = nullptr;
    char reached[kPathCapacity];
    const OwnFileCheck found =
        openOwnFile(path, kLanguageModuleDigests, kLanguageModuleDigestCount, &held, reached);
    if (found != OwnFileCheck::Accepted) {
        reportLoadFailure(refusalText(found), path);
        return false;
    }
    HMODULE module = LoadLibraryA(reached);
    CloseHandle(held);
    if (!module) {
        reportError(kModuleWord, kLineLoadLibrary, "LoadLibrary() failure");
        return false;
    }
    if (!bindLanguageTables(module)) {
        FreeLibrary(module);
        reportLoadFailure("The language module %s lacks a text table. It was not loaded.", path);
        return false;
    }
    g_setup.languageModule = module;
    return true;
}

bool bindLanguageModule(HINSTANCE instance, void* languageInfo)
{
    HMODULE module = g_setup.languageModule;
    if (!GetProcAddress(module, kExitName)) {
        reportError(kModuleWord, kLineBindExit, "GetProcAddress( \"HOI_LanguageExit\" ) failure");
        return false;
    }
    auto init = reinterpret_cast<HoiLanguageInitProc>(GetProcAddress(module, kInitName));
    if (!init) {
        reportError(kModuleWord, kLineBindInit, "GetProcAddress( \"HOI_LanguageInit\" ) failure");
        return false;
    }
    // Only the low byte of the result counts.
    if ((init(instance, g_setup.mainWindow, kLanguageInterfaceVersion, languageInfo) & 0xFF) == 0) {
        reportError(kModuleWord, kLineInit, "HOI_LanguageInit() failure");
        return false;
    }
    return true;
}

bool unbindLanguageModule()
{
    bool ok = true;
    auto exitProc = reinterpret_cast<HoiLanguageExitProc>(GetProcAddress(g_setup.languageModule, kExitName));
    if (!exitProc) {
        reportError(kModuleWord, kLineUnbindExit, "GetProcAddress( \"HOI_LanguageExit\" ) failure");
        ok = false;
    } else if ((exitProc() & 0xFF) == 0) {
        reportError(kModuleWord, kLineExit, "HOI_LanguageExit() failure");
        ok = false;
    }
    if (!FreeLibrary(g_setup.languageModule)) {
        reportError(kModuleWord, kLineFreeLibrary, "FreeLibrary() failure");
        ok = false;
    } else {
        unbindLanguageTables();   // they pointed into the module
    }
    g_setup.languageModule = nullptr;
    return ok;
}
