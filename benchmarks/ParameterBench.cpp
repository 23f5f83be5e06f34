// ParameterBench.cpp -- what a table of parameters costs that is filled and read once, as a tool on its way through the
// converters is.
#include "Measure.h"

#include "platform/core/ParameterTable.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace Bench {

using Varn::ParameterTable;
using Varn::Units;

namespace {

constexpr std::size_t tables = 1000;

const wchar_t *const toSet[] = {
    L"tool_diameter",      L"tool_tipDiameter",    L"tool_tipLength",   L"tool_cornerRadius",  L"tool_shaftDiameter",
    L"tool_fluteLength",   L"tool_shoulderLength", L"tool_bodyLength",  L"tool_overallLength", L"tool_threadPitch",
    L"tool_profileRadius", L"tool_upperRadius",    L"tool_lowerRadius", L"tool_chamferWidth",  L"tool_feedCutting",
    L"tool_feedEntry",     L"tool_feedExit",       L"tool_feedPlunge",  L"tool_stepdown",      L"tool_stepover",
};
static_assert(std::size(toSet) == 20);

/// The twenty, and ten that follow from them or from others.
std::vector<const wchar_t *> toRead()
{
    std::vector<const wchar_t *> names(std::begin(toSet), std::end(toSet));
    for (const wchar_t *name :
         {L"tool_shoulderDiameter", L"tool_maximumCuttingDiameter", L"tool_assemblyGaugeLength", L"tool_spindleSpeed",
          L"tool_surfaceSpeed", L"tool_rampSpindleSpeed", L"tool_feedTransition", L"tool_feedRamp",
          L"tool_finishingStepdown", L"tool_finishingStepover"})
        names.push_back(name);
    return names;
}

template <typename Container, typename Set, typename Get>
double fillAndRead(Container &container, const std::vector<const wchar_t *> &names, const Set &set, const Get &get)
{
    double value = 1;
    for (const wchar_t *name : toSet)
        set(container, name, value += 0.25);
    double sum = 0;
    for (const wchar_t *name : names)
        sum += get(container, name);
    return sum;
}

} // namespace

void benchParameters()
{
    const std::vector<const wchar_t *> names = toRead();
    double sink = 0;
    const Work ours = [&] {
        for (std::size_t i = 0; i < tables; ++i) {
            ParameterTable table(Varn::Strategy::ROTATING);
            sink += fillAndRead(
                table, names,
                [](auto &t, const wchar_t *name, double v) { t.setParameter(name, v, Units::UNIT_MILLIMETERS); },
                [](auto &t, const wchar_t *name) { return t.getDouble(name, Units::UNIT_MILLIMETERS); });
        }
    };
    const Work bare = [&] {
        for (std::size_t i = 0; i < tables; ++i) {
            std::map<std::wstring, double> map;
            sink += fillAndRead(
                map, names, [](auto &m, const wchar_t *name, double v) { m[name] = v; },
                [](auto &m, const wchar_t *name) {
                    const auto found = m.find(name);
                    return found == m.end() ? 0 : found->second;
                });
        }
    };
    ours(); // reads the definitions
    const Pair times = measurePair(ours, bare, 1);
    // 10 is about 40 microseconds for a table on one core.
    printRatio("fresh table, set twenty, read thirty", tables, times, "std::map", 10);
    if (sink == 0)
        throw std::runtime_error("Nothing was read");
}

} // namespace Bench
