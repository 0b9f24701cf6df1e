// The random part of the temporary file's name. It lives in its own file so that a test build can link a fixed
// one in its place and plant a file under the very name the unpacker will try.
#define _CRT_RAND_S  // declares rand_s
#include "hounzip.h"

#include <stdlib.h>

// The first name comes from what the process has at no cost: the performance counter, the process and thread ids
// and the stack address that address-space randomisation chose, mixed so that every bit counts. The system's
// cryptographic generator (rand_s) would cost more than the rest of a start under Wine, where loading it pulls in
// three more DLLs. A first name that exists already was planted (or collided): the following names come from
// rand_s, which nobody can foresee, so a plant costs one more attempt.
unsigned int HZ_RandomPart(int attempt)
{
    unsigned int strong = 0;
    if (attempt > 0 && rand_s(&strong) == 0)
        return strong;
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    uint64_t x = (uint64_t)counter.QuadPart ^ ((uint64_t)GetCurrentProcessId() << 40) ^
                 ((uint64_t)GetCurrentThreadId() << 20) ^ (uint64_t)(uintptr_t)&counter;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;  // the SplitMix64 finaliser
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    x ^= x >> 31;
    return (unsigned int)(x ^ (x >> 32));
}
