// The setup state's own memory: zero-filled at entry, the data file's arrays freed and zeroed as
// one pair. What a run does with the state (detection, the log, the windows) is the business of
// the floors above.
#include "core/core.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>

SetupState g_setup;

namespace {

// Clears the fields from `first` up to, not including, `end` as one block.
void clearBlock(std::size_t first, std::size_t end)
{
    std::memset(reinterpret_cast<char*>(&g_setup) + first, 0, end - first);
}

template <typename T>
void freeBlock(T*& block)
{
    std::free(block);
    block = nullptr;
}

} // namespace

long roundHalfAwayFromZero(double value)
{
    return std::lround(value);
}

void clearSetupState()
{
    clearBlock(offsetof(SetupState, instance), offsetof(SetupState, programFolder));
    clearBlock(offsetof(SetupState, programFolder), offsetof(SetupState, previousCompileDate));
    clearBlock(offsetof(SetupState, previousCompileDate), offsetof(SetupState, optionSourceFolder));
    g_setup.optionSourceFolder = 0;
}

void releaseDataRecords()
{
    freeBlock(g_setup.fileFlags);
    freeBlock(g_setup.shortcutRecords);
    freeBlock(g_setup.fileRecords);
    freeBlock(g_setup.headerBuffer);
    g_setup.fileCount = 0;
    g_setup.shortcutCount = 0;
}
