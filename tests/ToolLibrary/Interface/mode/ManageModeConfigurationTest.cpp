#include "ToolLibrary/Interface/mode/ManageModeConfiguration.h"
#include "platform/core/VarnObject.h"
#include "platform/utils/LocaleRegistry.h"

#include <gtest/gtest.h>

using Varn::LocaleRegistry;
using Varn::ToolLibraries::ManageModeConfiguration;
using Varn::ToolLibraries::ModeConfiguration;

TEST(ManageModeConfiguration, ManagesLibrariesOfNoOperation)
{
    const std::unique_ptr<ModeConfiguration> mode = std::make_unique<ManageModeConfiguration>();
    EXPECT_EQ(mode->id(), "MANAGE");
    EXPECT_EQ(mode->windowTitle(), "Tool Library");
    EXPECT_FALSE(mode->operation());
    EXPECT_FALSE(mode->initialSelection());
}

TEST(ManageModeConfiguration, TheTitleFollowsTheLanguage)
{
    const ManageModeConfiguration mode;
    const std::string before = LocaleRegistry::country();
    LocaleRegistry::addCatalogue("qz", {{"Tool Library", "Werkzeugbibliothek"}});
    LocaleRegistry::setCountry("qz");
    EXPECT_EQ(mode.windowTitle(), "Werkzeugbibliothek");
    EXPECT_EQ(mode.id(), "MANAGE");
    LocaleRegistry::setCountry(before);
    EXPECT_EQ(mode.windowTitle(), "Tool Library");
}
