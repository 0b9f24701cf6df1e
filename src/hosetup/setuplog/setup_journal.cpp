// The log's journal hosetup.journal, beside the log: what the installation is about to create,
// written in the log's own line kinds and on the disk before the creation begins. The log names
// a file only once it is complete, so without the journal a run that ends midway (killed, a
// power cut) would leave a half-written file or a new folder that no removal finds. The removal
// reads the journal as well as the log. A run that ends with the product registered settles the
// journal: its log, named the same things and kept by every later run, is made durable and the
// journal emptied. A journal that still holds lines at the start of a run is what an interrupted
// run created; the new run takes it over into its own log, so that a standard installation,
// which starts its log afresh, loses none of it.
#include "setuplog/setuplog.h"
#include "core/core.h"
#include "files/files.h"
#include "format/program_files.h"
#include "strings/hoi_strings.h"

bool JournalPath(const char* folder, char* path, std::size_t capacity)
{
    return composePath(path, capacity, folder, kSetupJournalName);
}

bool JournalFile(const char* path)
{
    return !g_setup.journalFile || writeRecordLine(g_setup.journalFile, kSetupJournalName, path, true);
}

bool JournalFolder(const char* folder)
{
    char line[kMessageCapacity];
    formatFolderLine(line, sizeof line, folder);
    return JournalFile(line);
}

void SettleJournal()
{
    if (!g_setup.logFile || !g_setup.journalFile || !FlushFileBuffers(g_setup.logFile))
        return;
    if (Seek(g_setup.journalFile, 0, FILE_BEGIN) && SetEndOfFile(g_setup.journalFile))
        FlushFileBuffers(g_setup.journalFile);
}
