// TurningToolDesignation.h -- insert and holder of a turning tool as they are ordered. Stateless; threads as the tool.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries {

class IndexedTool;

class TurningToolDesignation
{
public:
    /// The code of ISO 1832 or, in inches, ANSI B212.4, such as "CNMG120408"; a code without an entry in their tables
    /// is
    /// "??". A custom insert by its sizes: "55° 0.4mm - ∅12.7mm". Nothing for a tool without an insert or, unless it is
    /// a custom one, without a relief angle, and for an insert that has no shape letter.
    static std::optional<std::wstring> insert(const IndexedTool &tool);

    /// The letters of ISO 5608 and the hand, such as "PCLN-R": clamping, insert, style, relief. A custom holder by its
    /// angles, in the language of \a countryCode: "Leading angle: 93° - R". Nothing for a tool without a hand.
    static std::optional<std::wstring> holder(const IndexedTool &tool, std::wstring_view countryCode);
};

} // namespace Varn::ToolLibraries
