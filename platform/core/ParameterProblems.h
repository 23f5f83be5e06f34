// ParameterProblems.h -- what is wrong with the value of a parameter, and how a person is told. Over the values of a
// table, for one thread.
#pragma once

#include "platform/core/ParameterValues.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Varn {

class ParameterProblems
{
public:
    /// \a values must outlive this.
    explicit ParameterProblems(ParameterValues &values) : m_values(values) {}

    // None for a parameter that is disabled.
    bool hasErrors(std::size_t slot);
    bool hasWarnings(std::size_t slot);

    // As ParameterTable::Parameter tells.
    std::vector<std::wstring> errorMessages(std::size_t slot);
    std::vector<std::wstring> warningMessages(std::size_t slot);
    std::wstring message(std::size_t slot, const ParameterTable::Constraint &constraint);

    /// The value with its unit, as people read it.
    std::wstring textOf(std::size_t slot);

    /// Whether a text is a value of the enumeration that the strategy has and that is offered now.
    bool isOffered(std::size_t slot, std::wstring_view key);

private:
    bool isBroken(const ParameterFormula &formula);
    bool isUnfitEnabled(std::size_t slot);
    bool isWhole(std::size_t slot);
    bool hasUnknownKey(std::size_t slot);
    std::wstring titleOf(std::size_t slot) const;
    std::wstring limitOf(std::size_t slot, const ParameterTable::Constraint &constraint);

    ParameterValues &m_values;
};

} // namespace Varn
