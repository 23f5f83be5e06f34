#include "platform/tool/ToolRender.h"

#include "platform/tool/ErrorResult.h"
#include "platform/tool/JsonText.h"

namespace Varn::ToolLibraries {

void ToolRender::setError(const Exception &exception)
{
    m_error = ErrorResult::textOf(exception);
    m_translated = exception.translatedWhat();
}

std::string ToolRender::toJson() const
{
    Json::Value object(Json::objectValue);
    fillJson(object);
    if (m_error)
        object["error"] = ErrorResult::createPayload(m_error->c_str(), m_translated)["error"];
    return JsonText::print(object);
}

void ToolRender::fillJson(Json::Value &) const {}

} // namespace Varn::ToolLibraries
