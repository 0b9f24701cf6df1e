// The stored name of a packed member: the one file that a distribution's zip member holds. The
// unpacker writes that file under its stored base name, so the setup program refuses a member
// whose stored name is not its file record's name (it would install and log another file). Read
// through a callback, with small fixed buffers, so that the same code serves hosetup.exe and the
// native package builder.
#pragma once

#include <cstddef>
#include <cstdint>

// ---- types ----------------------------------------------------------------------------------

// Reads exactly count bytes at offset of the member into buffer; false when that fails.
using MemberReadAt = bool (*)(void* context, std::uint64_t offset, void* buffer, std::uint32_t count);

// ---- functions ------------------------------------------------------------------------------

// member_archive.cpp
// Finds the stored name of a member of fileSize bytes and writes its base part (after the last
// '/' or '\') into name, terminated (empty when it returns false). The archive is read as the
// unpacker reads it: the end record is the last one whose comment reaches the end of the file, a
// Zip64 locator before it leads to the Zip64 end record, and the central directory lies right
// before them and holds exactly one entry. False when any of that fails, a read fails, the base
// part is empty, holds a zero byte or does not fit capacity, or when the name is marked as UTF-8
// and is not plain ASCII (the package builder never marks one, and the unpacker would convert it
// to other bytes).
bool readMemberStoredName(MemberReadAt readAt, void* context, std::uint64_t fileSize, char* name,
                          std::size_t capacity);
// Whether the unpacker writes a member of stored name storedName as fileName: the part after the
// last '/' or '\', without leading drive prefixes ("C:"), the unpacker's rule, is fileName but for
// the case of ASCII letters. Other bytes must match exactly: names are stored in the ANSI code page
// without the UTF-8 flag, as the file records hold them.
bool storedNameMatches(const char* storedName, const char* fileName);
