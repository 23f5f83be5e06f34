// SelectToolResult.h -- the tool that an operation has after a selection. A value, any thread.
#pragma once

#include "platform/tool/LibraryTool.h"

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT SelectToolResult : public JSONSerializable
{
public:
    explicit SelectToolResult(const LibraryTool &item);

    /// The tool as the document holds it.
    const LibraryTool &item() const { return m_item; }

    /// {"item": tool with its library}
    std::string toJson() const override;

private:
    LibraryTool m_item;
};

} // namespace Varn::ToolLibraries
