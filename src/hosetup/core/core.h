// The ground of the setup program: the one setup state, error reports of internal faults and the
// few facts every subsystem shares. Everything above includes this header; it includes nothing of
// the program but the string layer and the shared format.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "core/setup_state.h"

// ---- constants ------------------------------------------------------------------------------

constexpr std::size_t kErrorReportCapacity = 760;
constexpr char kMainWindowClass[] = "HOSETUP6_MainWClass";
constexpr char kProductWindowClass[] = "HOVISTREL_MainWClass"; // the installed product's window

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

// core/setup_state.cpp
long roundHalfAwayFromZero(double value);   // every design size times scale goes through this
