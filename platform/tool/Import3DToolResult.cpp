#include "platform/tool/Import3DToolResult.h"

#include "platform/nc/Tool3DGeometry.h"
#include "platform/tool/JsonText.h"
#include "platform/tool/UpdateResult.h"
#include "platform/utils/Messages.h"

namespace Varn::ToolLibraries {

Import3DToolResult::Import3DToolResult(std::nullopt_t) {}

Import3DToolResult::Import3DToolResult(const Exception &exception)
    : m_error(ErrorResult::textOf(exception)), m_translated(exception.translatedWhat())
{
}

Import3DToolResult::Import3DToolResult(const Tool3DGeometry &geometry) : m_geometryId(geometry.id()) {}

std::string Import3DToolResult::toJson() const
{
    std::string json = "{\"item\":";
    if (m_geometryId) {
        json += "{\"id\":";
        JsonText::printString(Messages::fromWideUnicodeToUTF8(*m_geometryId), json);
        json += '}';
    } else {
        json += "null";
    }
    if (m_error)
        UpdateResultImpl::appendPayload(ErrorResult::createPayload(m_error->c_str(), m_translated), json);
    json += '}';
    return json;
}

} // namespace Varn::ToolLibraries
