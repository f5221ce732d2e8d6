#ifndef ZKIT_BENCHUTIL_H
#define ZKIT_BENCHUTIL_H

// Shared by the benchmark programs.

#include <algorithm>
#include <chrono>
#include <utility>
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

// The medians of `runs` calls each of `a` and `b`, taken in turn, in seconds:
// a machine whose speed drifts during the run slows both sides alike.
template<typename A, typename B>
std::pair<double, double> medianSecondsInterleaved(int runs, A &&a, B &&b)
{
    std::vector<double> first, second;
    for (int i = 0; i < runs; ++i) {
        first.push_back(medianSeconds(1, a));
        second.push_back(medianSeconds(1, b));
    }
    std::sort(first.begin(), first.end());
    std::sort(second.begin(), second.end());
    return {first[first.size() / 2], second[second.size() / 2]};
}

#endif // ZKIT_BENCHUTIL_H
