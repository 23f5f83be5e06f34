// LibraryTool.h -- a tool together with the library that it came from. A value type; copies share the tool.
#pragma once

#include "platform/tool/JSONSerializable.h"
#include "platform/tool/Tool.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <memory>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT LibraryTool : public JSONSerializable
{
public:
    /// \a tool must not be null.
    LibraryTool(const ToolLibraryLocator &libraryId, std::unique_ptr<const Tool> tool);

    const ToolLibraryLocator &libraryId() const { return m_libraryId; }
    const Tool &tool() const { return *m_tool; }

    /// {"libraryId": locator, "tool": tool}
    std::string toJson() const override;

private:
    ToolLibraryLocator m_libraryId;
    std::shared_ptr<const Tool> m_tool;
};

} // namespace Varn::ToolLibraries
