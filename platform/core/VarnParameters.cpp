#include "platform/core/VarnParameters.h"

#include "platform/core/ParameterDefinitions.h"
#include "platform/core/ParameterPrototype.h"
#include "platform/core/ParameterValues.h"
#include "platform/tool/Exception.h"

#include <algorithm>

namespace Varn {

namespace {

[[noreturn]] void failUnknown(int number)
{
    throw ToolLibraries::InvalidInput("Unknown parameter: " + std::to_string(number));
}

const ParameterTable::ParameterDef &definitionOf(int number)
{
    const ParameterTable::ParameterDef *const definition = ParameterDefinitions::get().findByNumber(number);
    if (!definition)
        failUnknown(number);
    return *definition;
}

} // namespace

void VarnParameters::initToolParameters(ParameterTable &table, Strategy::Type strategy)
{
    initOperationParameters(table, strategy, table.isMetric());
}

void VarnParameters::initOperationParameters(ParameterTable &table, Strategy::Type strategy, bool metric)
{
    table.m_values = std::make_shared<ParameterValues>(ParameterPrototype::get(strategy, metric));
}

const ParameterTable::ParameterDef &VarnParameters::getDefinition(int number, Strategy::Type strategy, bool metric)
{
    const auto prototype = ParameterPrototype::get(strategy, metric); // lives as long as the process
    const auto slot = prototype->find(definitionOf(number).id);
    if (!slot)
        failUnknown(number);
    return prototype->rows()[*slot].definition;
}

const std::vector<ParameterEnum> &VarnParameters::getParameterEnum(const ParameterTable::ParameterDef &definition)
{
    return ParameterDefinitions::get().enumeration(definition.enumeration, std::nullopt);
}

const std::vector<ParameterEnum> &VarnParameters::getParameterEnum(Strategy::Type strategy,
                                                                   const ParameterTable::ParameterDef &definition)
{
    return ParameterDefinitions::get().enumeration(definition.enumeration, strategy);
}

ParameterTable::Kind VarnParameters::getParameterKind(std::wstring_view name, Strategy::Type strategy)
{
    return ParameterDefinitions::get().findKind(name, strategy);
}

const std::wstring &VarnParameters::getParameterTypeName(int number)
{
    return definitionOf(number).typeName;
}

const std::wstring &VarnParameters::getParamName(int number)
{
    return definitionOf(number).id;
}

bool VarnParameters::isFeedSpeedParameter(int number)
{
    return definitionOf(number).isFeedSpeed;
}

LocalizedMessage VarnParameters::getTitle(int number, Strategy::Type strategy)
{
    return getDefinition(number, strategy, true).title;
}

bool VarnParameters::isFeedSpeedParameter(std::wstring_view name)
{
    const ParameterTable::ParameterDef *const definition = ParameterDefinitions::get().findByName(name);
    return definition && definition->isFeedSpeed;
}

std::vector<int> VarnParameters::getParametersWithFlag(int flag, Strategy::Type strategy)
{
    const auto bears = [flag](const std::vector<int> &flags) {
        return std::find(flags.begin(), flags.end(), flag) != flags.end();
    };
    return getParametersWithFlag(bears, strategy);
}

std::vector<int>
VarnParameters::getParametersWithFlag(const std::function<bool(const std::vector<int> &flags)> &predicate,
                                      Strategy::Type strategy)
{
    std::vector<int> numbers;
    for (const ParameterPrototype::Row &row : ParameterPrototype::get(strategy, true)->rows())
        if (predicate(row.definition.flags))
            numbers.push_back(row.definition.number);
    return numbers;
}

} // namespace Varn
