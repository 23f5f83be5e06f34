// ToolSelection.h -- names a tool and, optionally, one of its feeds and speeds presets. A value type, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/core/ToolFeedsAndSpeedsPresetId.h"
#include "platform/tool/JSONSerializable.h"
#include "platform/tool/ToolId.h"

#include <optional>
#include <utility>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ToolSelection : public JSONSerializable
{
public:
    ToolSelection(const ToolId &toolId, std::optional<ToolFeedsAndSpeedsPresetId> presetId)
        : m_toolId(toolId), m_presetId(std::move(presetId))
    {
    }

    const ToolId &toolId() const { return m_toolId; }
    const std::optional<ToolFeedsAndSpeedsPresetId> &presetId() const { return m_presetId; }

    /// {"toolId": GUID, "presetId": text}, the latter only when there is one.
    std::string toJson() const override;

private:
    ToolId m_toolId;
    std::optional<ToolFeedsAndSpeedsPresetId> m_presetId;
};

} // namespace Varn::ToolLibraries
