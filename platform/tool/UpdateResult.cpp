#include "platform/tool/UpdateResult.h"

#include "platform/tool/JsonText.h"

namespace Varn::ToolLibraries {

void UpdateResultImpl::appendPayload(const Json::Value &payload, std::string &json)
{
    for (auto member = payload.begin(); member != payload.end(); ++member) {
        json += ',';
        JsonText::printString(member.name(), json);
        json += ':';
        JsonText::print(*member, json);
    }
}

} // namespace Varn::ToolLibraries
