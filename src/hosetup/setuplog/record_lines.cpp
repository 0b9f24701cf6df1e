// Lines of the setup log and its journal, each reaching the disk whole or not at all. A line that
// cannot be written is a failed step, never a silent loss: what the log does not name, no removal
// finds.
#include "setuplog/setuplog.h"
#include "core/core.h"
#include "files/files.h"
#include "strings/hoi_strings.h"
#include "ui/ui.h"

#include <cstring>

bool writeWholeLine(HANDLE file, const char* text, bool durable)
{
    const LARGE_INTEGER here = {};
    LARGE_INTEGER start = {};
    if (!file || !SetFilePointerEx(file, here, &start, FILE_CURRENT))
        return false;
    if (WriteLogLine(file, text, std::strlen(text)) && (!durable || FlushFileBuffers(file)))
        return true;
    // A short write (a full volume) leaves part of the line: it is cut off again, so that what
    // the file holds is whole lines only and the next attempt starts where this one did.
    SetFilePointerEx(file, start, nullptr, FILE_BEGIN);
    SetEndOfFile(file);
    return false;
}

bool writeRecordLine(HANDLE file, const char* name, const char* text, bool durable)
{
    for (int attempt = 1; !writeWholeLine(file, text, durable); ++attempt) {
        char path[kPathCapacity];
        composePath(path, sizeof path, g_setup.commonDataFolder, name);
        if (askAfterFailedWrite(path, attempt) == kButtonCancel)
            return false;
    }
    return true;
}
