// Member names of a distribution, written the same way by the package builder and the setup
// program, which must find each other's files.
#include "format/data_format.h"

#include <cstdio>

void formatMemberName(std::size_t index, char* name, std::size_t capacity)
{
    if (capacity == 0)
        return;
    name[0] = '\0';
    if (index >= kMaxRecords)
        return;
    std::snprintf(name, capacity, kMemberNamePattern, static_cast<int>(index), 0);
}
