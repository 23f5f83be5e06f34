#include "platform/tool/SelectToolResult.h"

namespace Varn::ToolLibraries {

SelectToolResult::SelectToolResult(const LibraryTool &item) : m_item(item) {}

std::string SelectToolResult::toJson() const
{
    return "{\"item\":" + m_item.toJson() + "}";
}

} // namespace Varn::ToolLibraries
