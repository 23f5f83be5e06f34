// ToolHolder.h -- the holder of a tool that turns: what is attached, or the tool itself where it is a holder. A value,
// any thread.
#pragma once

#include "platform/nc/RecordField.h"
#include "platform/nc/ToolSection.h"
#include "platform/nc/ToolTexts.h"

#include <string>
#include <vector>

namespace Varn {

struct ToolHolder {
    bool attached = false;
    std::wstring guid; ///< of the attached holder
    ToolTexts texts;   ///< of the attached holder
    double gaugeLength = 0;
    std::vector<ToolSection> sections; ///< outline, from the nose up

    static constexpr auto fields = std::tuple{
        recordField(&ToolHolder::attached, "holder_attached"),
        storedField(&ToolHolder::guid, "holder_guid"),
        recordField(&ToolHolder::gaugeLength, "tool_holderGaugeLength", FieldQuantity::Length),
    };
};

} // namespace Varn
