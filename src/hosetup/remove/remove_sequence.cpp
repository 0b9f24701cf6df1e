// The removal sequence: data file, the files and folders the setup log and its journal name, the
// empty document folders, the registry, the links; and at its very end what a removal needs to be
// started again: the log and its journal, the data folders, the program's own files and the data
// file (at the next restart), the uninstall entry and the product key. To stop means to return
// false at once; what was deleted stays deleted, and a removal that was stopped or cut short
// (killed, a power cut) is finished by starting it again.
#include "remove/remove.h"
#include "links/links.h"
#include "setuplog/setuplog.h"
#include "files/files.h"
#include "format/data_format.h"
#include "format/program_files.h"
#include "registry/registry.h"
#include "setupdata/setupdata.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "ui/ui.h"

namespace {

// The closing run of the bar: 51 reports 40 ms apart, about two seconds and a last chance to
// cancel. It does no work.
constexpr int kPacingStep = 2;
constexpr DWORD kPacingSleepMs = 40;

// Removes folder, then computes its parent into the same buffer. When there is no parent the
// buffer keeps the folder and the caller's next step simply acts on it once more.
void removeFolderAndStepUp(char* folder)
{
    RemoveFolder(folder);
    ParentFolder(folder, folder, kPathCapacity);
}

// The log, its journal, the data folders and their parents; only empty folders go.
void removeLogAndDataFolders()
{
    char path[kPathCapacity];
    if (SetupLogPath(g_setup.commonDataFolder, path, sizeof path))
        DeleteFileAt(path);
    if (SetupLogPath(g_setup.installFolder, path, sizeof path))
        DeleteFileAt(path);
    if (JournalPath(g_setup.commonDataFolder, path, sizeof path))
        DeleteFileAt(path);

    char folder[kPathCapacity] = "";
    HOI_CopyA(folder, sizeof folder, g_setup.commonDataFolder);
    removeFolderAndStepUp(folder);
    RemoveFolder(folder);
    HOI_CopyA(folder, sizeof folder, g_setup.userDataFolder);
    removeFolderAndStepUp(folder);
    RemoveFolder(folder);
}

// The product's document subfolders, the documents folder and its parent; a drawing of the
// user's keeps its folder and every folder above it.
void removeDocumentFolders()
{
    char folder[kPathCapacity];
    const int relatives[] = {kRelativeLibraries, kRelativeDrawings, kRelativeSettings};
    for (int relative : relatives) {
        if (composePath(folder, sizeof folder, g_setup.documentsFolder, eRelativePaths[relative]))
            RemoveFolder(folder);
    }
    HOI_CopyA(folder, sizeof folder, g_setup.documentsFolder);
    removeFolderAndStepUp(folder);
    RemoveFolder(folder);
}

void scheduleRestartDeletions()
{
    // The program's own files in the installation folder are in use while the removal runs, so
    // the system deletes them at the next restart. The data file is deleted at once after the
    // installation record (finishRemoval); scheduled as well, it goes even when the removal is
    // cut short between the two.
    char path[kPathCapacity];
    for (const ProgramFile& own : kProgramFiles) {
        if (!own.heldByRemoval)
            continue;
        if (composePath(path, sizeof path, g_setup.installFolder, own.name))
            DeleteAtRestart(path);
    }
    if (composePath(path, sizeof path, g_setup.installFolder, kInstalledDataName))
        DeleteAtRestart(path);
    // The folder and then its parent: a folder directly under a drive root has no parent that
    // can be computed, so it is scheduled twice, which is harmless.
    HOI_CopyA(path, sizeof path, g_setup.installFolder);
    StripTrailingSeparator(path);
    DeleteAtRestart(path);
    HOI_CopyA(path, sizeof path, g_setup.installFolder);
    ParentFolder(path, path, sizeof path);
    StripTrailingSeparator(path);
    DeleteAtRestart(path);
}

// What a removal needs to be started again goes last, in an order in which a removal cut short at
// any point is finished by the uninstall entry or by the installation folder's program, as long
// as the installation is recorded; once it is not, only what the restart deletes is left.
void finishRemoval()
{
    MarkRemovalFinishing();
    CloseLog(false);
    removeLogAndDataFolders();
    scheduleRestartDeletions();
    RemoveInstallationRecord();
    char dataFile[kPathCapacity];
    if (composePath(dataFile, sizeof dataFile, g_setup.installFolder, kInstalledDataName))
        DeleteFileAt(dataFile);
}

bool installationRecorded()
{
    if (DetectEarlierInstallation())
        return true;
    if (!g_setup.optionSilent)
        AlertNotice(g_setup.mainWindow, eMessageText[kMsgNoInstallation]);
    return false;
}

} // namespace

bool RunRemoval()
{
    // As in the installation: a path that would be cut reads the folder, which fails with its alert.
    char dataFile[kPathCapacity];
    if (!composePath(dataFile, sizeof dataFile, g_setup.installFolder, kInstalledDataName))
        HOI_CopyA(dataFile, sizeof dataFile, g_setup.installFolder);
    if (!readSetupDataFile(dataFile))
        return false;
    if (!installationRecorded())
        return false;
    if (!ShowRemoveStartPage(g_setup.mainWindow))
        return false;

    ShowProgressStage(true, kStageRemoveReadLog, 0, 0);
    if (!RemoveLoggedFiles())
        return false;
    CloseLog(false);

    ShowProgressStage(true, kStageRemoveSettings, 0, 0);
    if (!SetProgress(10, 100))
        return false;
    removeDocumentFolders();
    RemoveRegistryEntries();   // a cancellation in it cuts only the clean-up short
    if (!SetProgress(100, 100))
        return false;

    ShowProgressStage(true, kStageRemoveShortcuts, 0, 0);
    RemoveShortcuts();
    if (!paceProgress(0, 100, kPacingStep, kPacingSleepMs))
        return false;
    finishRemoval();
    // Deleted desktop links vanish at once instead of at the desktop's next repaint.
    RedrawWindow(nullptr, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ERASENOW);
    ShowProgressStage(false, 0, 0, 0);
    ShowRemoveFinishPage(g_setup.mainWindow);
    return true;
}
