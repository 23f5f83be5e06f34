// UpdateToolResult.h -- what became of a tool that was to be created, edited, deleted or read anew. Values, any thread.
#pragma once

#include "platform/tool/LibraryTool.h"
#include "platform/tool/UpdateMultipleResult.h"
#include "platform/tool/UpdateResult.h"

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT UpdateToolResult : public UpdateResult<LibraryTool>
{
public:
    explicit UpdateToolResult(const LibraryTool &tool);
    UpdateToolResult(const LibraryTool &tool, const std::string &error, const std::optional<std::wstring> &translated);
};

class VARN_PLATFORM_EXPORT UpdateToolsResult : public UpdateMultipleResult<UpdateToolResult>
{
};

} // namespace Varn::ToolLibraries
