#include "platform/tool/Import3DToolResult.h"

#include "platform/tool/UpdateResult.h"

namespace Varn::ToolLibraries {

Import3DToolResult::Import3DToolResult(std::nullopt_t) {}

Import3DToolResult::Import3DToolResult(const Exception &exception)
    : m_error(ErrorResult::textOf(exception)), m_translated(exception.translatedWhat())
{
}

Import3DToolResult Import3DToolResult::fromGeometryId(const Guid &geometryId)
{
    Import3DToolResult result(std::nullopt);
    result.m_geometryId = geometryId;
    return result;
}

std::string Import3DToolResult::toJson() const
{
    std::string json = "{\"item\":";
    json += m_geometryId ? "{\"id\":\"" + m_geometryId->asString() + "\"}" : std::string("null");
    if (m_error)
        UpdateResultImpl::appendPayload(ErrorResult::createPayload(m_error->c_str(), m_translated), json);
    json += '}';
    return json;
}

} // namespace Varn::ToolLibraries
