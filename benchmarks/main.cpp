// main.cpp -- quillon_bench [GROUP ...] [TOOLS ...]: the table of all figures, or of some groups, for libraries of that
// many tools.
#include "Libraries.h"
#include "Measure.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>
#include <vector>

namespace Bench {

void benchLibrary(std::size_t tools);
void benchPages(std::size_t tools);
void benchParameters();
void benchSaving(std::size_t tools);
void benchStartUp();

} // namespace Bench

namespace {

struct Group {
    std::string_view name;
    void (*run)(std::size_t tools);
};
constexpr Group groups[] = {
    {"library", &Bench::benchLibrary},
    {"pages", &Bench::benchPages},
    {"saving", &Bench::benchSaving},
};
struct SizelessGroup {
    std::string_view name;
    void (*run)();
};
constexpr SizelessGroup sizelessGroups[] = {
    {"parameters", &Bench::benchParameters},
    {"start", &Bench::benchStartUp},
};

bool isGroup(std::string_view name)
{
    return std::ranges::count(groups, name, &Group::name) +
               std::ranges::count(sizelessGroups, name, &SizelessGroup::name) >
           0;
}

bool readSize(std::string_view text, std::size_t &size)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    return error == std::errc() && end == text.data() + text.size() && size > 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Bench::BenchPaths paths;
    std::vector<std::size_t> sizes;
    std::vector<std::string_view> wanted;
    for (const std::string_view argument : std::vector<std::string_view>(argv + 1, argv + argc)) {
        if (std::size_t size = 0; readSize(argument, size)) {
            sizes.push_back(size);
        } else if (isGroup(argument)) {
            wanted.push_back(argument);
        } else {
            std::fputs("usage: quillon_bench [library] [pages] [saving] [parameters] [start] [TOOLS ...]\n", stderr);
            return 2;
        }
    }
    if (sizes.empty())
        sizes = {1000, 10000, 100000};
    const auto isWanted = [&](std::string_view name) { return wanted.empty() || std::ranges::count(wanted, name) > 0; };
    Bench::printHeader();
    for (const std::size_t tools : sizes)
        for (const Group &group : groups)
            if (isWanted(group.name))
                group.run(tools);
    for (const SizelessGroup &group : sizelessGroups)
        if (isWanted(group.name))
            group.run();
}
