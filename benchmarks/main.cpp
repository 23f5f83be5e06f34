// main.cpp -- quillon_bench [TOOLS ...]: the table of all figures for libraries of that many tools.
#include "Libraries.h"
#include "Measure.h"

#include <QCoreApplication>

#include <cstdlib>
#include <vector>

namespace Bench {

void benchLibrary(std::size_t tools);
void benchPages(std::size_t tools);
void benchSaving(std::size_t tools);
void benchStartUp();

} // namespace Bench

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Bench::BenchPaths paths;
    std::vector<std::size_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::strtoul(argv[i], nullptr, 10));
    if (sizes.empty())
        sizes = {1000, 10000, 100000};
    Bench::printHeader();
    for (const std::size_t tools : sizes) {
        Bench::benchLibrary(tools);
        Bench::benchPages(tools);
        Bench::benchSaving(tools);
    }
    Bench::benchStartUp();
}
