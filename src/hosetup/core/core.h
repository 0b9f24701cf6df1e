// The ground of the setup program: the one setup state, error reports of internal faults, the
// check of the program files it runs, the language module's tables, and the few facts every
// subsystem shares. Everything above includes this header; it includes nothing of the program
// but the string layer and the shared format.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "core/setup_state.h"

// ---- constants ------------------------------------------------------------------------------

constexpr std::size_t kErrorReportCapacity = 760;
constexpr char kMainWindowClass[] = "HOSETUP6_MainWClass";
constexpr char kProductWindowClass[] = "HOVISTREL_MainWClass"; // the installed product's window
constexpr std::size_t kImageDigestSize = 32;   // SHA-256

// ---- types ----------------------------------------------------------------------------------

// The image digest of a program file (core/own_files.cpp tells which bytes count).
struct ImageDigest {
    unsigned char bytes[kImageDigestSize];
};

// What the check of one of the program's own files found.
enum class OwnFileCheck {
    Accepted,    // one of the files built with this program, held open
    Unreadable,  // missing, not openable without write and delete sharing, or no program file
    Foreign,     // its digest is none of those built in
};

// ---- data -----------------------------------------------------------------------------------

// Written at build time by own_digests.py from the built hounzip.exe and the language modules of
// every language; sorted.
extern const ImageDigest kUnpackerDigests[];
extern const std::size_t kUnpackerDigestCount;
extern const ImageDigest kLanguageModuleDigests[];
extern const std::size_t kLanguageModuleDigestCount;

// ---- functions ------------------------------------------------------------------------------

// core/error_report.cpp
// Shows "module\line\n\ntext" in a message box, also in a silent run: an internal fault needs a
// person.
void reportError(const char* moduleWord, std::uint32_t line, const char* text);
void formatErrorReport(const char* moduleWord, std::uint32_t line, const char* text,
                       char* buffer, std::size_t capacity);

// core/system_library.cpp
// Restricts the search for DLLs loaded by name to the system folder; the first thing WinMain does.
void restrictDllSearch();
// Loads name from the system folder by its full path; null when it is not there.
HMODULE loadSystemLibrary(const char* name);

// core/final_path.cpp
// The final path of an open file or folder, "\\?\" removed: a drive-letter or UNC path; false
// when it does not fit in capacity.
bool finalPathOf(HANDLE handle, char* path, std::size_t capacity);

// core/own_files.cpp
// The image digest of an open program file; false for a file that is no well-formed program image.
bool imageDigest(HANDLE file, ImageDigest* digest);
// Opens a program file that this program is about to run: without write or delete sharing, so
// that it cannot be replaced while the handle is held; its digest one of known. When Accepted,
// *file is the held handle and reached (kPathCapacity characters) the file's final path, which
// is the path to run it by: links or a mapped drive on the way then cannot lead elsewhere.
// *file is null otherwise.
OwnFileCheck openOwnFile(const char* path, const ImageDigest* known, std::size_t count, HANDLE* file,
                         char* reached);

// core/language_tables.cpp
// Binds the text tables of a loaded language module (holang.h); false, with every table left as
// it was, when one is missing.
bool bindLanguageTables(HMODULE module);
void unbindLanguageTables();              // every table null again, as before the binding

// core/window_messages.cpp
// Dispatches what is queued, the progress window's messages through it first.
void pumpWindowMessages();

// core/setup_state.cpp
long roundHalfAwayFromZero(double value);   // every design size times scale goes through this
