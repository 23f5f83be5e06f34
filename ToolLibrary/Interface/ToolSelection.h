// ToolSelection.h -- names a tool and, optionally, one of its feeds and speeds presets. A value type, any thread.
#pragma once

#include "platform/core/ToolFeedsAndSpeedsPresetId.h"
#include "platform/tool/ToolId.h"

#include <optional>
#include <utility>

namespace Varn::ToolLibraries {

class ToolSelection
{
public:
    ToolSelection(const ToolId &toolId, std::optional<ToolFeedsAndSpeedsPresetId> presetId)
        : m_toolId(toolId), m_presetId(std::move(presetId))
    {
    }

    const ToolId &toolId() const { return m_toolId; }
    const std::optional<ToolFeedsAndSpeedsPresetId> &presetId() const { return m_presetId; }

private:
    ToolId m_toolId;
    std::optional<ToolFeedsAndSpeedsPresetId> m_presetId;
};

} // namespace Varn::ToolLibraries
