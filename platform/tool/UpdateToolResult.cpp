#include "platform/tool/UpdateToolResult.h"

namespace Varn::ToolLibraries {

UpdateToolResult::UpdateToolResult(const LibraryTool &tool) : UpdateResult(tool) {}

UpdateToolResult::UpdateToolResult(const LibraryTool &tool, const std::string &error,
                                   const std::optional<std::wstring> &translated)
    : UpdateResult(tool, error, translated)
{
}

} // namespace Varn::ToolLibraries
