#ifndef ZKIT_BENCHUTIL_H
#define ZKIT_BENCHUTIL_H

// Shared by the benchmark programs.

#include <algorithm>
#include <chrono>
#include <vector>

// The median wall-clock time of `runs` calls of `run`, in seconds.
template<typename F>
double medianSeconds(int runs, F &&run)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        run();
        times.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

#endif // ZKIT_BENCHUTIL_H
