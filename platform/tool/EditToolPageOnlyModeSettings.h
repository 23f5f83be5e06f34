// EditToolPageOnlyModeSettings.h -- what a dialog that shows nothing but the page of one tool has to know. A value, any
// thread.
#pragma once

#include "platform/tool/JSONSerializable.h"
#include "platform/tool/ToolLibraryLocator.h"

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT EditToolPageOnlyModeSettings : public JSONSerializable
{
public:
    explicit EditToolPageOnlyModeSettings(const ToolLibraryLocator &documentUrl);

    /// The document that holds the tool.
    const ToolLibraryLocator &documentUrl() const { return m_documentUrl; }

    /// {"documentUrl": locator}
    std::string toJson() const override;

private:
    ToolLibraryLocator m_documentUrl;
};

} // namespace Varn::ToolLibraries
