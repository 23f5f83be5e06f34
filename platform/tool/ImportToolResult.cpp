#include "platform/tool/ImportToolResult.h"

namespace Varn::ToolLibraries {

ImportToolResult::ImportToolResult(const std::shared_ptr<LibraryTool> &tool) : UpdateResult(tool) {}

ImportToolResult::ImportToolResult(const std::shared_ptr<LibraryTool> &tool, const Confirmation &confirmation)
    : UpdateResult(tool), m_confirmation(confirmation)
{
}

ImportToolResult::ImportToolResult(const std::shared_ptr<LibraryTool> &tool, const std::string &error,
                                   const std::optional<std::wstring> &translated)
    : UpdateResult(tool, error, translated)
{
}

void ImportToolResult::appendMembers(std::string &json) const
{
    if (m_confirmation)
        json += ",\"confirmation\":" + m_confirmation->toJson();
}

} // namespace Varn::ToolLibraries
