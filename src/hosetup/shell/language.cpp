// Binding of the language module. Its text tables are imported at load time; its two entry
// points are bound here by name. The exit entry is looked up before the init entry, so that a
// module without an exit function is refused before it was ever initialised.
#include "shell/shell.h"
#include "strings/hoi_strings.h"
#include "holang.h"

namespace {

constexpr char kModuleWord[] = "HOSetup";
constexpr char kLanguageModuleName[] = "holang.dll";

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

} // namespace

bool bindLanguageModule(HINSTANCE instance, void* languageInfo)
{
    // programFolder is still empty this early, so the loader's search order finds the module,
    // the program's own folder first.
    char path[kPathCapacity];
    HOI_CopyA(path, sizeof path, g_setup.programFolder, kLanguageModuleName);

    HMODULE module = LoadLibraryA(path);
    if (!module) {
        reportError(kModuleWord, kLineLoadLibrary, "LoadLibrary() failure");
        return false;
    }
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
    g_setup.languageModule = module;
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
    }
    g_setup.languageModule = nullptr;
    return ok;
}
