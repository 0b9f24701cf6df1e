// The setup data file as bytes: a 328-byte header, the file records, the shortcut records, all
// little-endian with no gaps. The records are laid out by data_format.h and copied as they are.
#include "hopack.h"

#include <cstring>

// The structs are written as they lie in memory; both builds of hopack run on little-endian
// machines, which this check keeps true.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the data file is little-endian");

void CopyField(char* field, std::size_t fieldSize, const std::string& text)
{
    // Callers have checked the length; the cut here only guards the terminator.
    std::memset(field, 0, fieldSize);
    std::memcpy(field, text.data(), text.size() < fieldSize ? text.size() : fieldSize - 1);
}

std::string FieldText(const char* field, std::size_t fieldSize)
{
    std::size_t length = 0;
    while (length < fieldSize && field[length] != '\0') ++length;
    return std::string(field, length);
}

std::vector<std::uint8_t> EncodeDataFile(const SetupDataHeader& header,
                                         const std::vector<FileRecord>& files,
                                         const std::vector<ShortcutRecord>& shortcuts)
{
    std::vector<std::uint8_t> bytes(sizeof(header) + files.size() * sizeof(FileRecord) +
                                    shortcuts.size() * sizeof(ShortcutRecord));
    std::uint8_t* at = bytes.data();
    std::memcpy(at, &header, sizeof(header));
    at += sizeof(header);
    if (!files.empty()) std::memcpy(at, files.data(), files.size() * sizeof(FileRecord));
    at += files.size() * sizeof(FileRecord);
    if (!shortcuts.empty()) std::memcpy(at, shortcuts.data(), shortcuts.size() * sizeof(ShortcutRecord));
    return bytes;
}

bool DecodeDataFile(const std::vector<std::uint8_t>& bytes, DataFileContents& contents,
                    std::string& problem)
{
    contents = DataFileContents{};
    if (bytes.size() < sizeof(SetupDataHeader)) {
        problem = "shorter than the 328-byte header";
        return false;
    }
    std::memcpy(&contents.header, bytes.data(), sizeof(SetupDataHeader));
    // The setup program compares the magic without case, so the same is done here.
    if (FoldCase(FieldText(contents.header.magic, kSetupDataMagicLength)) != FoldCase(kSetupDataMagic)) {
        problem = "does not start with \"" + std::string(kSetupDataMagic) + "\"";
        return false;
    }
    if (contents.header.fileCount < 0 || contents.header.shortcutCount < 0) {
        problem = "has a negative record count";
        return false;
    }
    const std::uint64_t need = sizeof(SetupDataHeader) +
                               std::uint64_t(contents.header.fileCount) * sizeof(FileRecord) +
                               std::uint64_t(contents.header.shortcutCount) * sizeof(ShortcutRecord);
    if (bytes.size() < need) {
        problem = "holds " + std::to_string(bytes.size()) + " bytes; its counts need " + std::to_string(need);
        return false;
    }
    contents.files.resize(contents.header.fileCount);
    contents.shortcuts.resize(contents.header.shortcutCount);
    const std::uint8_t* at = bytes.data() + sizeof(SetupDataHeader);
    if (!contents.files.empty()) std::memcpy(contents.files.data(), at, contents.files.size() * sizeof(FileRecord));
    at += contents.files.size() * sizeof(FileRecord);
    if (!contents.shortcuts.empty())
        std::memcpy(contents.shortcuts.data(), at, contents.shortcuts.size() * sizeof(ShortcutRecord));
    return true;
}
