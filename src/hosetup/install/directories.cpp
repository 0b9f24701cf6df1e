// Directory creation: every folder the file records need, and for an update every folder of the
// run's backup tree. Each folder that did not exist is logged as a "#" line, so that the removal
// can take it away again.
#include "install/install.h"
#include "setuplog/setuplog.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "setupdata/setupdata.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr int kFolderCacheSize = 64;

// Folders made in one step. Once full, further folders are still made but no longer remembered;
// they exist then, so nothing more is logged for them.
struct FolderCache {
    int count;
    char folders[kFolderCacheSize][kPathCapacity];
};

// A folder that is a leading part of one made earlier in the step was made already.
bool alreadyMade(const FolderCache& cache, const char* folder)
{
    const std::size_t length = std::strlen(folder);
    for (int i = 0; i < cache.count; ++i) {
        char cut[kPathCapacity];
        HOI_CopyPartA(cut, sizeof cut, cache.folders[i], length);
        if (HOI_EqualA(cut, folder))
            return true;
    }
    return false;
}

bool makeFolderOnce(FolderCache* cache, const char* folder)
{
    if (alreadyMade(*cache, folder))
        return true;
    if (!MakeFolderChain(folder, true))
        return false;
    if (cache->count < kFolderCacheSize)
        HOI_CopyA(cache->folders[cache->count++], kPathCapacity, folder);
    return true;
}

bool endsInNine(std::uint32_t directoryId)
{
    return directoryId % 10 == kDirectoryKindIgnored;
}

// The frame both steps share: open the log, write the banner, make the fixed folders, then the
// folder of every record the resolver gives a path for.
template <typename Resolve>
bool createFolders(const char* banner, const char* const* fixedFolders, int fixedCount, Resolve resolve)
{
    if (!OpenLog() || !LogBanner(banner))
        return false;
    for (int i = 0; i < fixedCount; ++i) {
        if (!MakeFolderChain(fixedFolders[i], true))
            return false;
    }
    FolderCache* cache = static_cast<FolderCache*>(std::calloc(1, sizeof(FolderCache)));
    if (!cache)
        return false;
    bool ok = true;
    for (int i = 0; ok && i < g_setup.fileCount; ++i) {
        if (endsInNine(g_setup.fileRecords[i].directoryId))
            continue;
        char path[kPathCapacity];
        if (resolve(i, path) == kNoPathHere)
            continue;
        char folder[kPathCapacity];
        FolderOfPath(path, folder, sizeof folder);
        ok = makeFolderOnce(cache, folder);
    }
    std::free(cache);
    return ok;
}

} // namespace

bool CreateBackupDirectories()
{
    char allUsers[kPathCapacity];
    char user[kPathCapacity];
    // A folder that would be cut is left empty, which the folder step refuses with its alert.
    composePath(allUsers, sizeof allUsers, g_setup.backupFolder, eRelativePaths[kRelativeAllUsersBackup]);
    composePath(user, sizeof user, g_setup.backupFolder, eRelativePaths[kRelativeUserBackup]);
    const char* fixed[] = {allUsers, user};
    return createFolders("***** Vistrel %s installation: Creating backup directories, %s *****", fixed, 2,
                         [](int index, char* path) {
                             char live[kPathCapacity];
                             return resolveDirectoryPath(index, live, path);
                         });
}

bool CreateDirectories()
{
    const char* fixed[] = {g_setup.userDataFolder};
    return createFolders("***** Vistrel %s installation: Creating directories, %s *****", fixed, 1,
                         [](int index, char* path) {
                             return resolveFilePath(index, path, nullptr, nullptr, nullptr);
                         });
}
