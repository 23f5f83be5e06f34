#include "platform/tool/EditToolPageOnlyModeSettings.h"

namespace Varn::ToolLibraries {

EditToolPageOnlyModeSettings::EditToolPageOnlyModeSettings(const ToolLibraryLocator &documentUrl)
    : m_documentUrl(documentUrl)
{
}

std::string EditToolPageOnlyModeSettings::toJson() const
{
    return "{\"documentUrl\":" + m_documentUrl.toJson() + "}";
}

} // namespace Varn::ToolLibraries
