// The free-space check before an installation: the installed sizes of the files, grouped by the
// folder category of their place, against the bytes free on the drive of the installation
// folder.
#include "setupdata/setupdata.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"
#include "holang.h"

#include <cstring>

namespace {

constexpr std::uint64_t kMaxBytes = ~std::uint64_t(0);

// Sums never wrap: a damaged size saturates and then simply fails the check.
std::uint64_t addSaturated(std::uint64_t a, std::uint64_t b)
{
    return a > kMaxBytes - b ? kMaxBytes : a + b;
}

// The drive of installFolder: its text up to the first backslash or slash ("C:" of "C:\X\").
void installDrive(char* drive, std::size_t capacity)
{
    std::size_t length = std::strcspn(g_setup.installFolder, "\\/");
    HOI_CopyPartA(drive, capacity, g_setup.installFolder, length);
}

void lowerCopy(char* to, const char* from)
{
    HOI_CopyA(to, kPathCapacity, from);
    CharLowerBuffA(to, static_cast<DWORD>(std::strlen(to)));
}

} // namespace

bool hasRoomFor(std::uint64_t freeBytes, std::uint64_t sum)
{
    // Compared without forming sum + margin, which could pass the top of the range.
    return freeBytes >= sum && freeBytes - sum >= kFreeSpaceMargin;
}

std::uint64_t sumFileSizes(unsigned categoryMask)
{
    std::uint64_t sum = 0;
    char path[kPathCapacity];
    for (std::int32_t i = 0; i < g_setup.fileCount; ++i) {
        const FileRecord& record = g_setup.fileRecords[i];
        if (record.directoryId % 10 == kDirectoryKindIgnored)
            continue;
        unsigned category = 0;
        if (resolveFilePath(i, path, &category, nullptr, nullptr) == kNoPathHere)
            continue;
        if (category & categoryMask)
            sum = addSaturated(sum, record.size);
    }
    return sum;
}

bool checkFreeSpace(unsigned categoryMask)
{
    const std::uint64_t sum = sumFileSizes(categoryMask);
    char drive[kPathCapacity];
    installDrive(drive, sizeof drive);

    // The drive of the installation folder is asked for every category, even when the mask
    // names folders that lie elsewhere. A question the system cannot answer lets the run go on.
    ULARGE_INTEGER freeToCaller = {};
    if (!GetDiskFreeSpaceExA(drive, &freeToCaller, nullptr, nullptr))
        return true;
    if (hasRoomFor(freeToCaller.QuadPart, sum))
        return true;

    char message[kMessageCapacity];
    HOI_PrintA(message, sizeof message, eMessageText[kMsgNotEnoughSpace], drive);
    AlertError(g_setup.mainWindow, message);
    return false;
}

bool checkAllFreeSpace()
{
    // Folders that lie inside the documents folder share its drive with the installation-side
    // files, so they are counted together with them; the others are checked one by one.
    char documents[kPathCapacity];
    lowerCopy(documents, g_setup.documentsFolder);
    struct {
        unsigned category;
        const char* folder;
    } const groups[] = {
        {kCategoryDrawing, g_setup.drawingFolder},
        {kCategoryLibrary, g_setup.libraryFolder},
        {kCategorySetting, g_setup.settingFolder},
    };

    unsigned firstGroup = kCategoryInstall;
    unsigned alone = 0;
    for (const auto& group : groups) {
        char folder[kPathCapacity];
        lowerCopy(folder, group.folder);
        if (std::strstr(folder, documents))
            firstGroup |= group.category;
        else
            alone |= group.category;
    }

    if (!checkFreeSpace(firstGroup))
        return false;
    for (const auto& group : groups) {
        if ((alone & group.category) && !checkFreeSpace(group.category))
            return false;
    }
    return true;
}
