#include "ToolLibrary/Interface/ToolSelection.h"

#include "platform/tool/JsonText.h"
#include "platform/utils/Messages.h"

namespace Varn::ToolLibraries {

std::string ToolSelection::toJson() const
{
    Json::Value json(Json::objectValue);
    json["toolId"] = m_toolId.guid().asString();
    if (m_presetId)
        json["presetId"] = Messages::fromWideUnicodeToUTF8(m_presetId->rawString());
    return JsonText::print(json);
}

} // namespace Varn::ToolLibraries
