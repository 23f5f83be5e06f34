// ToolTypeRecorder.h -- collects the tool types seen while a page is made. One thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/nc/ToolGeometry.h"

#include <json/value.h>

#include <set>
#include <string>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ToolTypeRecorder
{
public:
    void addToolType(const ToolGeometry::Type &type);

    /// The keywords in ascending byte order, each once; an empty array when nothing was recorded.
    Json::Value getRecordedToolTypes() const;

private:
    std::set<std::string> m_keywords;
};

} // namespace Varn::ToolLibraries
