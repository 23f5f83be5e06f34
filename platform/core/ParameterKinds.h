// ParameterKinds.h -- the quantities of the tool parameters, as their definitions tell. Immutable once made, any
// thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/Strategy.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT ParameterKinds
{
public:
    /// Reads the definitions: {"parameters": [{"id", "kind", "strategies"}], "dynamicParameters": [{"pattern",
    /// "kind"}]} in UTF-8, with a pattern such as "segment_<n>_height". Throws std::runtime_error that names the faulty
    /// row for a text that is no such document.
    explicit ParameterKinds(std::string_view json);

    /// The definitions that are built into this library, read at the first call.
    static const ParameterKinds &get();

    /// The quantity of a parameter; KIND_NONE for one that the strategy does not hold. The parameters of
    /// Strategy::SHARED belong to every strategy, as do the numbered ones of the patterns, counted from 1.
    ParameterTable::Kind find(std::wstring_view name, Strategy::Type strategy) const;

    /// How many parameters are defined, those of the patterns not counted.
    std::size_t size() const { return m_parameters.size(); }

private:
    struct Parameter {
        ParameterTable::Kind kind;
        unsigned strategies; // one bit for each
    };
    struct Pattern {
        std::wstring prefix; // before the number
        std::wstring suffix; // behind it
        ParameterTable::Kind kind;
    };

    ParameterTable::Kind findNumbered(std::wstring_view name) const;

    std::deque<std::wstring> m_names;
    std::unordered_map<std::wstring_view, Parameter> m_parameters; // keys are texts of m_names
    std::vector<Pattern> m_patterns;
};

} // namespace Varn
