// ToolSink.h -- the write face of everything that holds tools. The caller keeps readers and writers apart.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/ox/expected.h"
#include "platform/tool/Tool.h"
#include "platform/tool/ToolId.h"
#include "platform/tool/ToolSinkError.h"

namespace Varn::ToolLibraries {

/// An expected refusal is a ToolSinkError in the result; a tool whose text is bad is an exception.
class TOOL_LIBRARY_EXPORT ToolSink
{
public:
    ToolSink() = default;
    ToolSink(const ToolSink &) = delete;
    ToolSink &operator=(const ToolSink &) = delete;

    /// Adds \a tool under \a id, whatever id the tool itself has. Refused when the id is taken.
    virtual Ox::expected<void, ToolSinkError> createTool(ToolId id, const Tool &tool) = 0;

    /// Replaces the tool with that id. Refused when there is none.
    virtual Ox::expected<void, ToolSinkError> updateTool(ToolId id, const Tool &tool) = 0;

    /// Refused when there is no such tool.
    virtual Ox::expected<void, ToolSinkError> removeTool(ToolId id) = 0;
    virtual ~ToolSink();
};

} // namespace Varn::ToolLibraries
