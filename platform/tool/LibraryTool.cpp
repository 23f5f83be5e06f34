#include "platform/tool/LibraryTool.h"

#include "util/utility/Assert.h"

#include <utility>

namespace Varn::ToolLibraries {

LibraryTool::LibraryTool(const ToolLibraryLocator &libraryId, std::unique_ptr<const Tool> tool)
    : m_libraryId(libraryId), m_tool(std::move(tool))
{
    VARN_EXPECTS(m_tool);
}

std::string LibraryTool::toJson() const
{
    return "{\"libraryId\":" + m_libraryId.toJson() + ",\"tool\":" + m_tool->toJson() + "}";
}

} // namespace Varn::ToolLibraries
