// The one rule every member of the string family applies first: a capacity of 0 means "write
// nothing", not even a terminator, since there is no room for one. Checked before anything else,
// so that no "capacity - 1" in the family can wrap around and let a copy run past the buffer.
#pragma once

inline bool writesNothing(unsigned long long capacity)
{
    return capacity == 0;
}
