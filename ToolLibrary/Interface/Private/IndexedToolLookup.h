// IndexedToolLookup.h -- the lookups of IndexedTool for those who compare tools by key. Stateless; threads as the tool.
#pragma once

#include "ToolLibrary/Interface/Private/IndexedTool.h"

namespace Varn::ToolLibraries {

class IndexedToolLookup
{
public:
    static std::optional<double> getRoundedDouble(const IndexedTool &tool, std::string_view key)
    {
        return tool.getRoundedDouble(key);
    }
    static std::optional<ToolGeometry::InsertType> getInsertType(const IndexedTool &tool, std::string_view key)
    {
        return tool.getInsertType(key);
    }
    static std::optional<ToolGeometry::Type> getType(const IndexedTool &tool, std::string_view key)
    {
        return tool.getType(key);
    }
    static std::optional<NCUnit::Unit> getUnit(const IndexedTool &tool, std::string_view key)
    {
        return tool.getUnit(key);
    }
    static int getPrecision(std::string_view key, ToolGeometry::Type toolType, NCUnit::Unit unit)
    {
        return IndexedTool::getPrecisionForParameterType(key, toolType, unit);
    }
};

} // namespace Varn::ToolLibraries
