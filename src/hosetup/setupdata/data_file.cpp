// The setup data file reader: a 328-byte header, fileCount file records and shortcutCount
// shortcut records, read into the setup state. A file is either read completely or refused;
// the rest of the program indexes the arrays by position and trusts the counts.
#include "setupdata/setupdata.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"
#include "holang.h"
#include "format/name_rules.h"

#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

// ReadFile takes a 32-bit count; large record blocks are read in pieces of this size.
constexpr std::uint64_t kReadChunk = 0x40000000;

void showCursor(HCURSOR cursor)
{
    if (cursor)
        SetCursor(cursor);
}

// Reads exactly `bytes` bytes; false on a short read or a read error.
bool readExactly(HANDLE file, void* buffer, std::uint64_t bytes)
{
    char* target = static_cast<char*>(buffer);
    while (bytes > 0) {
        const DWORD wanted = static_cast<DWORD>(bytes < kReadChunk ? bytes : kReadChunk);
        DWORD got = 0;
        if (!ReadFile(file, target, wanted, &got, nullptr) || got != wanted)
            return false;
        target += got;
        bytes -= got;
    }
    return true;
}

// The magic is plain ASCII, so it is compared byte by byte with ASCII case folding: a
// locale-aware comparison could take ignorable or look-alike characters for a match.
bool isSetupDataMagic(const char* magic)
{
    for (std::size_t i = 0; i < kSetupDataMagicLength; ++i) {
        char a = magic[i];
        char b = kSetupDataMagic[i];
        if (a >= 'a' && a <= 'z')
            a = static_cast<char>(a - 'a' + 'A');
        if (b >= 'a' && b <= 'z')
            b = static_cast<char>(b - 'a' + 'A');
        if (a != b)
            return false;
    }
    return true;
}

// A block of (count + 1) records of recordSize bytes. The size is computed in 64 bits, so no
// count of a signed 32-bit field can make it wrap. The spare record is zeroed, because nothing
// ever reads it into place.
void* allocateRecords(std::int32_t count, std::size_t recordSize)
{
    const std::uint64_t records = static_cast<std::uint64_t>(count) + 1;
    const std::uint64_t bytes = records * recordSize;
    if (bytes > SIZE_MAX)
        return nullptr;
    char* block = static_cast<char*>(std::malloc(static_cast<std::size_t>(bytes)));
    if (block)
        std::memset(block + (bytes - recordSize), 0, recordSize);
    return block;
}

// A later read (the removal reads hosetup.dat, a package may be read again) can carry larger
// counts than the arrays a former read left behind, so they are never reused: each read
// releases them and allocates arrays of exactly its own size. The reader therefore never
// writes past what it allocated.
void releaseRecordArrays()
{
    std::free(g_setup.fileRecords);
    std::free(g_setup.shortcutRecords);
    std::free(g_setup.fileFlags);
    g_setup.fileRecords = nullptr;
    g_setup.shortcutRecords = nullptr;
    g_setup.fileFlags = nullptr;
}

// The alert of a file that is not a complete data file; nothing is shown in a silent run.
bool refuseBadFile(HANDLE file, const char* path)
{
    CloseHandle(file);
    if (!g_setup.optionSilent)
        ShowFileAlert(g_setup.mainWindow, path, kFileAlertDamagedDataFile);
    return false;
}

void setProductText(const SetupDataHeader& header)
{
    // The header's texts need not be terminated in a damaged file; copy them bounded.
    char label[sizeof header.productLabel + 1];
    HOI_CopyPartA(label, sizeof label, header.productLabel, sizeof header.productLabel);
    const char* format = g_setup.optionRemove ? eUniTexts[kUniRemoveProductLine] : eUniTexts[kUniInstallProductLine];
    HOI_PrintA(g_setup.productText, kTextCapacity, format, label);
    if (g_setup.mainWindow) {
        InvalidateRect(g_setup.mainWindow, nullptr, TRUE);
        UpdateWindow(g_setup.mainWindow);
    }
}

// A text field as the characters before its terminator; a field without one holds no text.
bool fieldText(const char* field, std::size_t size, std::string_view* text)
{
    const void* end = std::memchr(field, '\0', size);
    if (!end)
        return false;
    *text = std::string_view(field, static_cast<std::size_t>(static_cast<const char*>(end) - field));
    return true;
}

bool isPlainName(const char* field, std::size_t size)
{
    std::string_view text;
    return fieldText(field, size, &text) && !fileNameProblem(text);
}

// Every name the data file hands to the file and link steps must be one the package builder
// would have written: a sub-folder such as "..\..\x" would lead the writes out of the product's
// folders, and a product name ".." or "" would make the link steps delete other programs'
// Start-menu groups. One bad text makes the whole file bad.
bool namesAreSafe(const SetupDataHeader& header, const FileRecord* files, std::int32_t fileCount,
                  const ShortcutRecord* shortcuts, std::int32_t shortcutCount)
{
    if (!isPlainName(header.productName, sizeof header.productName))
        return false;
    for (std::int32_t i = 0; i < fileCount; ++i) {
        std::string_view subFolder;
        if (!isPlainName(files[i].fileName, sizeof files[i].fileName) ||
            !fieldText(files[i].subFolder, sizeof files[i].subFolder, &subFolder) ||
            relativeFolderProblem(subFolder, nullptr))
            return false;
    }
    for (std::int32_t i = 0; i < shortcutCount; ++i) {
        if (!isPlainName(shortcuts[i].name, sizeof shortcuts[i].name))
            return false;
    }
    return true;
}

} // namespace

bool readSetupDataFile(const char* path)
{
    showCursor(g_setup.waitCursor);

    // Until the whole file is in, no count describes the arrays.
    g_setup.fileCount = 0;
    g_setup.shortcutCount = 0;

    if (!g_setup.headerBuffer) {
        g_setup.headerBuffer = static_cast<SetupDataHeader*>(std::calloc(1, kSetupHeaderBlockSize));
        if (!g_setup.headerBuffer) {
            reportError("Init", kLineHeaderAllocation, eMessageText[kMsgOutOfMemory]);
            return false;
        }
    }

    HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        if (!g_setup.optionSilent)
            ShowFileAlert(g_setup.mainWindow, path, kFileAlertCannotOpen);
        return false;
    }

    SetupDataHeader& header = *g_setup.headerBuffer;
    if (!readExactly(file, &header, kSetupHeaderSize))
        return refuseBadFile(file, path);
    header.magic[kSetupDataMagicLength] = '\0';
    if (!isSetupDataMagic(header.magic))
        return refuseBadFile(file, path);

    const std::int32_t fileCount = header.fileCount;
    const std::int32_t shortcutCount = header.shortcutCount;
    // Member names hold a record's index in five digits: a file with more records than that has
    // records no member can stand for.
    if (fileCount < 0 || shortcutCount < 0 || static_cast<std::size_t>(fileCount) > kMaxRecords)
        return refuseBadFile(file, path);
    HOI_CopyPartA(g_setup.packageCompileDate, kTextCapacity, header.compileDate, sizeof header.compileDate);
    setProductText(header);

    releaseRecordArrays();

    g_setup.fileRecords = static_cast<FileRecord*>(allocateRecords(fileCount, kFileRecordSize));
    if (!g_setup.fileRecords) {
        CloseHandle(file);
        reportError("Init", kLineFileArrayAllocation, eMessageText[kMsgOutOfMemory]);
        return false;
    }
    if (!readExactly(file, g_setup.fileRecords, static_cast<std::uint64_t>(fileCount) * kFileRecordSize))
        return refuseBadFile(file, path);

    g_setup.shortcutRecords = static_cast<ShortcutRecord*>(allocateRecords(shortcutCount, kShortcutRecordSize));
    if (!g_setup.shortcutRecords) {
        CloseHandle(file);
        reportError("Init", kLineShortcutArrayAllocation, eMessageText[kMsgOutOfMemory]);
        return false;
    }
    if (!readExactly(file, g_setup.shortcutRecords,
                     static_cast<std::uint64_t>(shortcutCount) * kShortcutRecordSize))
        return refuseBadFile(file, path);

    if (!namesAreSafe(header, g_setup.fileRecords, fileCount, g_setup.shortcutRecords, shortcutCount))
        return refuseBadFile(file, path);

    CloseHandle(file);
    g_setup.fileFlags = static_cast<std::uint32_t*>(
        std::calloc(static_cast<std::size_t>(fileCount) + 1, sizeof(std::uint32_t)));
    if (!g_setup.fileFlags) {
        reportError("Init", kLineFlagArrayAllocation, eMessageText[kMsgOutOfMemory]);
        return false;
    }

    g_setup.fileCount = fileCount;
    g_setup.shortcutCount = shortcutCount;
    showCursor(g_setup.arrowCursor);
    return true;
}
