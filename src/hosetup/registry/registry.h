// Interface of the system registration: value helpers, the entries an installation writes and
// their removal.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

// ---- constants ------------------------------------------------------------------------------

// Capacity of the text FormatDecimal writes: the longest 32-bit number, its sign and the NUL fit.
constexpr std::size_t kDecimalTextCapacity = 16;
// What ParseDecimal returns for a text that holds no number (0x80000001).
constexpr std::int32_t kNoDecimalNumber = -2147483647;

// Keys the installation writes outside the maker's key, and the product's main program.
constexpr char kAppPathsKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths";
constexpr char kUninstallKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
constexpr char kMainProgram[] = "hovistrel.exe";

// ---- functions ------------------------------------------------------------------------------

// registry/registry_values.cpp
// Writes text as REG_SZ with its terminating zero; an empty text deletes the value instead.
// Failures are ignored: a value that cannot be written is not worth stopping a run for.
void SetRegistryString(HKEY key, const char* name, const char* text);
// Writes value as a 4-byte REG_DWORD. Failures are ignored.
void SetRegistryNumber(HKEY key, const char* name, std::uint32_t value);
// Writes value as "%d" into a buffer of kDecimalTextCapacity characters.
void FormatDecimal(char* buffer, std::int32_t value);
// The leading decimal number of text ("2022.2.11.29" gives 2022), or kNoDecimalNumber when the
// text is empty or does not begin with a number.
std::int32_t ParseDecimal(const char* text);

// registry/registration.cpp
bool RegisterStandardInstallation();   // settings key, application path, uninstall entry, file types
bool RegisterUpdateInstallation();     // settings key and uninstall entry only
bool RecordCompileDate();

// registry/registry_cleanup.cpp
// Deletes path below root with all its subkeys, leaves first. 0 on success or when the key is not
// there; 1010 (ERROR_BADKEY) for an empty path or one that ends in a separator, which would
// otherwise name its parent; else the first error met, with the rest of the tree left in place.
LONG DeleteRegistryTree(HKEY root, const char* path);
// Deletes what the installation and the product wrote but the record of the installation, in
// paced portions; false when the user confirmed a cancellation at one of the progress reports.
bool RemoveRegistryEntries();
// A removal about to delete the log and what else it needs to be started again marks the product
// key first; a removal started again after it was cut short there finds the mark, and a missing
// log is then no loss.
void MarkRemovalFinishing();
bool RemovalWasFinishing();
// Deletes the uninstall entry, then the product key that records the installation, and the
// maker's key when that leaves it empty: the last the removal does in the registry.
void RemoveInstallationRecord();
