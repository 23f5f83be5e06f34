// ToolNameGenerator.h -- the one-line name of a tool that a machinist reads, made of the tool's own data. Stateless;
// any thread, but one at a time for one tool.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class IndexedTool;

/// "3 - ∅10mm R0.5mm (Bull nose)": the number, the dimensions that tell tools of the kind apart, and the description,
/// or the name of the type where there is none. Turning tools have the designations of insert and holder (ISO 1832, ISO
/// 5608) as their dimensions: "CNMG120408 - PCLC-R". A value that is missing leaves no trace.
class TOOL_LIBRARY_EXPORT ToolNameGenerator
{
public:
    /// In the language of the moment.
    static std::wstring generateName(const IndexedTool &tool);

    /// In the language of a country, as LocaleRegistry knows it.
    static std::wstring generateLocalizedName(const IndexedTool &tool, std::wstring_view countryCode);

private:
    using Component = std::optional<std::wstring>;
    using Components = std::vector<Component>;

    static Components getComponents(const IndexedTool &tool, std::wstring_view countryCode);
    static Components getSpinningComponents(const IndexedTool &tool);
    static Components getTurningComponents(const IndexedTool &tool, std::wstring_view countryCode);
};

} // namespace Varn::ToolLibraries
