// ToolFeedsAndSpeedsPresetId.h -- the identifier of a preset within a tool record. A value type, any thread.
#pragma once

#include "platform/tool/PresetId.h"

#include <optional>
#include <string>
#include <utility>

namespace Varn {

class ToolFeedsAndSpeedsPresetId : public ToolLibraries::PresetId
{
public:
    using PresetId::PresetId;

    /// The id of that text, or nothing for an empty text, which no preset has.
    static std::optional<ToolFeedsAndSpeedsPresetId> tryMake(std::wstring id)
    {
        if (id.empty())
            return std::nullopt;
        return ToolFeedsAndSpeedsPresetId(std::move(id));
    }

    std::wstring asString() const { return toString(); }
};

} // namespace Varn
