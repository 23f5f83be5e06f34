// ToolTexts.h -- what a catalogue says of a tool, a holder or a tool block. A value, any thread.
#pragma once

#include "platform/nc/RecordField.h"

#include <string>

namespace Varn {

struct ToolTexts {
    std::wstring description;
    std::wstring vendor;
    std::wstring productId;
    std::wstring productLink; ///< URL

    static constexpr auto fields = std::tuple{
        recordField(&ToolTexts::description, "description"),
        recordField(&ToolTexts::vendor, "vendor"),
        recordField(&ToolTexts::productId, "productId"),
        recordField(&ToolTexts::productLink, "productLink"),
    };
};

} // namespace Varn
