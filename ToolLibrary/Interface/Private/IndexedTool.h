// IndexedTool.h -- a tool with cached, typed and rounded lookups: what search, order and pages work on. Lives for one
// page; one thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/nc/NCUnit.h"
#include "platform/nc/ToolGeometry.h"
#include "platform/tool/Tool.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT IndexedTool
{
public:
    /// A null tool ends the program: it is no failure that anybody could handle.
    explicit IndexedTool(std::unique_ptr<const Tool> tool);

    /// One whose name is known.
    IndexedTool(std::unique_ptr<const Tool> tool, std::wstring name);

    const Tool &getTool() const { return *m_tool; }

    const ToolId &getToolId() const; ///< read once: every order ends with it

    // Empty when the tool has none.
    std::wstring getComment() const;
    std::wstring getProductId() const;
    std::wstring getVendor() const;

    /// What a machinist calls it, see ToolNameGenerator; made when it is first asked for, in the language of that
    /// moment.
    const std::wstring &getName() const;

    ToolGeometry::Type getType() const; ///< 0 for a missing or unknown keyword
    NCUnit::Unit getUnit() const;       ///< millimeters for a missing or unknown text

    std::optional<Tool::Property> getRawProperty(std::string_view key) const;

private:
    friend class IndexedToolLookup;

    /// The number under \a key as filters and orders compare it: rounded half away from zero, to the precision of its
    /// parameter. A key that ends in ".normValue" gives the number in millimeters.
    std::optional<double> getRoundedDouble(std::string_view key) const;

    // Each answers to one key only: "tool_insertType", "tool_type", "tool_unit".
    std::optional<ToolGeometry::InsertType> getInsertType(std::string_view key) const;
    std::optional<ToolGeometry::Type> getType(std::string_view key) const;
    std::optional<NCUnit::Unit> getUnit(std::string_view key) const;

    /// How many steps the grid of a parameter has in one unit of its value.
    static int getPrecisionForParameterType(std::string_view key, ToolGeometry::Type toolType, NCUnit::Unit unit);

    std::unique_ptr<const Tool> m_tool;
    mutable std::optional<ToolGeometry::Type> m_type;
    mutable std::optional<NCUnit::Unit> m_unit;
    mutable std::optional<ToolGeometry::InsertType> m_insertType;
    mutable std::optional<std::wstring> m_name;
    mutable std::optional<ToolId> m_id;
};

} // namespace Varn::ToolLibraries
