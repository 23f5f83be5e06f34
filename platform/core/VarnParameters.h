// VarnParameters.h -- what is known of the parameters of tools. Stateless, any thread. The definitions are read once,
// at the first question, and live as long as the process.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/Strategy.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT VarnParameters
{
public:
    /// Gives \a table the parameters of \a strategy in place of its own, each at its default. The metric flag stays. No
    /// parameters for what is no strategy.
    static void initToolParameters(ParameterTable &table, Strategy::Type strategy);

    /// The same, with the metric flag.
    static void initOperationParameters(ParameterTable &table, Strategy::Type strategy, bool metric);

    /// The definition of the parameter of that number, with what \a strategy and the system of units make of it. Raises
    /// ToolLibraries::InvalidInput when the strategy does not hold it.
    static const ParameterTable::ParameterDef &getDefinition(int number, Strategy::Type strategy, bool metric);

    /// The values of an enumeration parameter in their order, whatever strategy they are for; none for one of another
    /// type.
    static const std::vector<ParameterEnum> &getParameterEnum(const ParameterTable::ParameterDef &definition);

    /// Those that \a strategy has.
    static const std::vector<ParameterEnum> &getParameterEnum(Strategy::Type strategy,
                                                              const ParameterTable::ParameterDef &definition);

    /// The quantity of the parameter \a name ("tool_diameter") in the tables of \a strategy. KIND_NONE for an unknown
    /// name, one that the strategy does not hold, and Strategy::INVALID. Allocates nothing, except that the first call
    /// of the process reads the definitions.
    static ParameterTable::Kind getParameterKind(std::wstring_view name, Strategy::Type strategy);

    // By number: the same in every strategy. Each raises ToolLibraries::InvalidInput for a number that is none.
    static const std::wstring &getParameterTypeName(int number); ///< "LengthParameter"
    static const std::wstring &getParamName(int number);         ///< "tool_diameter"
    static bool isFeedSpeedParameter(int number);                ///< belongs to a preset of feeds and speeds

    static LocalizedMessage getTitle(int number, Strategy::Type strategy);

    /// By name; false for a name that is none.
    static bool isFeedSpeedParameter(std::wstring_view name);

    /// The numbers of the parameters that the tables of \a strategy hold and that bear \a flag, ascending.
    static std::vector<int> getParametersWithFlag(int flag, Strategy::Type strategy);

    /// Those for whose flags \a predicate holds.
    static std::vector<int> getParametersWithFlag(const std::function<bool(const std::vector<int> &flags)> &predicate,
                                                  Strategy::Type strategy);
};

} // namespace Varn
