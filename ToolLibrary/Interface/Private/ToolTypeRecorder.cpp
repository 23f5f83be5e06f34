#include "ToolLibrary/Interface/Private/ToolTypeRecorder.h"

namespace Varn::ToolLibraries {

void ToolTypeRecorder::addToolType(const ToolGeometry::Type &type)
{
    m_keywords.insert(ToolGeometry::getToolTypeAsString(type));
}

Json::Value ToolTypeRecorder::getRecordedToolTypes() const
{
    Json::Value keywords(Json::arrayValue);
    for (const std::string &keyword : m_keywords)
        keywords.append(keyword);
    return keywords;
}

} // namespace Varn::ToolLibraries
