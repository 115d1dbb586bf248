// What the benchmarks share: a clock, best-of-N timing and a repeatable stream
// of pseudo-random numbers, so that each run measures the same work.
#pragma once
#include <windows.h>

namespace bench {

inline double Now()
{
    static LARGE_INTEGER frequency;
    if (!frequency.QuadPart)
        QueryPerformanceFrequency(&frequency);
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return (double)t.QuadPart / (double)frequency.QuadPart;
}

// The shortest of `rounds` timings of body(): the least disturbed by the machine.
template <class Body> double Best(int rounds, Body body)
{
    double best = 1e30;
    for (int r = 0; r < rounds; ++r) {
        double start = Now();
        body();
        double t = Now() - start;
        if (t < best)
            best = t;
    }
    return best;
}

// xorshift64: the same sequence on every run.
struct Random {
    unsigned long long state = 88172645463325252ull;
    unsigned long long Next()
    {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return state;
    }
};

} // namespace bench
