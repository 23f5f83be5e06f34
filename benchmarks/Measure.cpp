#include "Measure.h"

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <limits>

namespace Bench {

namespace {

/// A line of /proc/self/status such as "VmRSS:    1234 kB", in bytes.
double statusLine(const std::string &name)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == name + ':') {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    return 0;
}

} // namespace

double secondsOf(const Work &work)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

Pair measurePair(const Work &ours, const Work &bare, double seconds)
{
    Pair best{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    double spent = 0;
    for (int round = 0; round < 3 || spent < seconds; ++round) {
        const double bareTime = secondsOf(bare);
        const double ourTime = secondsOf(ours);
        best = {std::min(best.ours, ourTime), std::min(best.bare, bareTime)};
        spent += bareTime + ourTime;
    }
    return best;
}

void printHeader()
{
    std::printf("%-44s %8s %12s %12s  %-22s %6s %6s\n", "operation", "tools", "ours", "bare", "bare is", "ratio",
                "goal");
}

void printRatio(const std::string &operation, std::size_t tools, Pair times, const std::string &bareName, double goal)
{
    std::printf("%-44s %8zu %9.3f ms %9.3f ms  %-22s %6.2f %6.2f\n", operation.c_str(), tools, times.ours * 1e3,
                times.bare * 1e3, bareName.c_str(), times.ours / times.bare, goal);
    std::fflush(stdout);
}

void printMemory(const std::string &operation, std::size_t tools, double ours, double bare, double goal)
{
    std::printf("%-44s %8zu %9.1f MB %9.1f MB  %-22s %6.2f %6.2f\n", operation.c_str(), tools, ours / 1e6, bare / 1e6,
                "the file", ours / bare, goal);
    std::fflush(stdout);
}

double residentMemory()
{
    malloc_trim(0);
    return statusLine("VmRSS");
}

double peakMemoryOf(const Work &work)
{
    const double before = residentMemory();
    std::ofstream("/proc/self/clear_refs") << 5; // the peak starts over
    work();
    return statusLine("VmHWM") - before;
}

} // namespace Bench
