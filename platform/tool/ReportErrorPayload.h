// ReportErrorPayload.h -- what the tool library dialog has to say of a failure of its own. A value, any thread.
#pragma once

#include "platform/tool/JSONSerializable.h"

#include <string>
#include <string_view>

namespace Varn::ToolLibraries {

/// All texts are UTF-8 and may be empty.
class VARN_PLATFORM_EXPORT ReportErrorPayload : public JSONSerializable
{
public:
    ReportErrorPayload(std::string callStackInfo, std::string details, std::string userDescription);

    std::string_view callStackInfo() const { return m_callStackInfo; }     ///< where it happened
    std::string_view details() const { return m_details; }                 ///< the state at that time, as JSON
    std::string_view userDescription() const { return m_userDescription; } ///< what the person did, in his words

    /// {"callStackInfo","details","userDescription"}
    std::string toJson() const override;

    /// Reads the text that toJson() gives. A missing member is empty, further ones are passed over; throws InvalidInput
    /// for what is no JSON object, and for a member that is no text.
    static ReportErrorPayload fromJson(const std::string &json);

private:
    std::string m_callStackInfo;
    std::string m_details;
    std::string m_userDescription;
};

} // namespace Varn::ToolLibraries
