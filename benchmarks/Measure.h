// Measure.h -- times and memory of one process. One thread.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace Bench {

using Work = std::function<void()>;

/// How long it takes.
double secondsOf(const Work &work);

/// The shortest time of each of two works, in seconds, measured in turns so that both meet the same noise. The works
/// are repeated for about \a seconds, at least three times each.
struct Pair {
    double ours;
    double bare;
};
Pair measurePair(const Work &ours, const Work &bare, double seconds = 2);

/// One line: the operation, its time and that of the bare measure, their ratio, and the goal.
void printHeader();
void printRatio(const std::string &operation, std::size_t tools, Pair times, const std::string &bareName, double goal);
void printMemory(const std::string &operation, std::size_t tools, double ours, double bare, double goal);

/// Memory that the process holds now, in bytes; what is free within it has been given back before.
double residentMemory();

/// The most memory that the process held while \a work ran, above what it held before.
double peakMemoryOf(const Work &work);

} // namespace Bench
