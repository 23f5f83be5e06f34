#include "platform/tool/EditToolPageOnlyModeSettings.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(EditToolPageOnlyModeSettingsTest, PrintsTheLocatorOfTheDocument)
{
    const ToolLibraryLocator url(L"document://1\"2");
    const EditToolPageOnlyModeSettings settings(url);
    EXPECT_EQ(settings.documentUrl(), url);
    EXPECT_EQ(settings.toJson(), R"({"documentUrl":"document://1\"2"})");
    EXPECT_EQ(EditToolPageOnlyModeSettings(ToolLibraryLocator::fromFilePath(L"/a")).toJson(),
              R"({"documentUrl":{"path":"/a"}})");
}

} // namespace Varn::ToolLibraries
