// The format of the setup log's lines, the one place both its writer and its reader take it from:
// a line that starts with "*" is a banner (or the marker before a kept file), one that starts
// with "#" names a created folder, any other names a file.
#include "setuplog/setuplog.h"
#include "strings/hoi_strings.h"

namespace {

constexpr char kBannerMark = '*';
constexpr char kFolderMark = '#';

} // namespace

LogLineKind classifyLogLine(const char* line)
{
    if (line[0] == kBannerMark)
        return LogLineKind::Banner;
    if (line[0] == kFolderMark)
        return LogLineKind::Folder;
    return LogLineKind::File;
}

const char* logLinePath(const char* line)
{
    return classifyLogLine(line) == LogLineKind::Folder ? line + 1 : line;
}

void formatFolderLine(char* line, std::size_t capacity, const char* folder)
{
    HOI_PrintA(line, capacity, "#%s", folder);
}
