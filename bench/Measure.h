#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

// Times of a piece of work and of its floor: the least that any program has to do for the same.
namespace Measure {

inline double milliseconds(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

inline double median(std::vector<double> times)
{
    std::ranges::sort(times);
    return times[times.size() / 2];
}

inline void print(const std::string &name, double ratio, const std::string &detail)
{
    std::printf("%s %.2f %s\n", name.c_str(), ratio, detail.c_str());
    std::fflush(stdout);
}

// The two take turns, and in going first too, so that a busy moment of the machine hits both; the
// middle of each counts.
struct Pair {
    std::function<void()> work;
    std::function<void()> floor;
    std::function<void()> before = [] {}; // each of them, untimed
    std::function<void()> beforeFloor {}; // where the floor needs something else
};

inline void report(const std::string &name, int runs, const Pair &pair,
                   const std::string &detail = {})
{
    std::vector<double> works;
    std::vector<double> floors;
    for (int run = 0; run < runs; ++run) {
        for (const bool floor : { run % 2 == 0, run % 2 != 0 }) {
            (floor && pair.beforeFloor ? pair.beforeFloor : pair.before)();
            (floor ? floors : works).push_back(milliseconds(floor ? pair.floor : pair.work));
        }
    }
    // The fastest of each tell how far the rest was disturbed.
    char times[160];
    std::snprintf(times, sizeof times,
                  "%.1f ms against %.1f ms, fastest %.1f against %.1f, %d runs", median(works),
                  median(floors), std::ranges::min(works), std::ranges::min(floors), runs);
    print(name, median(works) / median(floors), times + detail);
}

} // namespace Measure
