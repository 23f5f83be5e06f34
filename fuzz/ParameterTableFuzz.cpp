// ParameterTableFuzz.cpp -- any expressions on any parameters of a table, set and read in any order: it gives what a
// fresh copy with the same settings gives, and whatever has no value says why.
#include "platform/core/ParameterTable.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

using Varn::ExpressionError;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::Units;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// A line is: which parameter, in which unit, what to do; then the expression.
struct Line {
    std::uint8_t parameter;
    std::uint8_t unit;
    std::uint8_t action;
    std::wstring expression;
};

std::vector<Line> linesOf(const std::uint8_t *data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    std::vector<Line> lines;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        if (end - begin >= 3)
            lines.push_back({static_cast<std::uint8_t>(bytes[begin]), static_cast<std::uint8_t>(bytes[begin + 1]),
                             static_cast<std::uint8_t>(bytes[begin + 2]),
                             Varn::Messages::fromUTF8ToWideUnicode(bytes.substr(begin + 3, end - begin - 3))});
        begin = end + 1;
    }
    return lines;
}

std::wstring nameOf(std::uint8_t number, const std::vector<std::shared_ptr<ParameterTable::Parameter>> &parameters)
{
    if (number % 4 == 0)
        return L"segment_" + std::to_wstring(number / 4 + 1) + L"_height";
    return parameters[number % parameters.size()]->getName();
}

void apply(ParameterTable &table, const Line &line)
{
    const std::wstring name = nameOf(line.parameter, table.getParameters());
    const auto unit = Units::Unit(static_cast<int>(line.unit % 42) - 3);
    switch (line.action % 8) {
    case 0:
        if (const auto parameter = table.getParameterNoThrow(name))
            parameter->reset(line.unit % 2 == 0);
        break;
    case 1:
        table.setParameter(name, line.expression);
        break;
    case 2:
        table.setMetric(line.unit % 2 == 0);
        break;
    case 3:
        table.getParametersWithErrors();
        table.getParametersWithWarnings();
        break;
    default:
        table.setParameterExpression(name, line.expression, unit);
        break;
    }
    if (const auto parameter = table.getParameterNoThrow(nameOf(line.unit, table.getParameters())))
        parameter->getAsDouble(unit);
}

void check(ParameterTable &table)
{
    ParameterTable fresh = table;
    for (const auto &parameter : fresh.getParameters()) {
        const auto known = table.getParameter(parameter->getName());
        const auto error = parameter->getError();
        require(known->hasValue() == parameter->hasValue());
        require(known->isEnabled() == parameter->isEnabled());
        require(known->getAsWideMessage() == parameter->getAsWideMessage());
        require(known->getError().has_value() == error.has_value());
        require(!error || (!error->message.empty() && !parameter->hasValue() && parameter->getAsWideMessage().empty()));
        require(parameter->hasValue() || error ||
                parameter->getExpression().find_first_not_of(L" \t\r\n") == std::wstring::npos);
    }
    for (const auto &parameter : fresh.getParametersWithErrors())
        require(!parameter->getErrorMessages().empty());
    for (const auto &parameter : fresh.getParametersWithWarnings())
        require(!parameter->getWarningMessages().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const auto strategies = Strategy::getToolStrategies();
    ParameterTable table(strategies[data[0] % strategies.size()], data[0] < 128);
    for (const Line &line : linesOf(data + 1, size - 1))
        apply(table, line);
    check(table);
    return 0;
}
