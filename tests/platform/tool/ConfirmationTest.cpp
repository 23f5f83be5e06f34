#include "platform/tool/Confirmation.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(ConfirmationTest, KeepsAndPrintsWhatThePersonIsShown)
{
    const ToolLibraryLocator url(L"toollibraryroot://Local/a.json");
    const Confirmation confirmation(L"C:\\a.zip", url, L"\u00c4", 3, L"No \"warranty\"\n");
    EXPECT_EQ(confirmation.path(), L"C:\\a.zip");
    EXPECT_EQ(confirmation.url(), url);
    EXPECT_EQ(confirmation.name(), L"\u00c4");
    EXPECT_EQ(confirmation.numberOfTools(), 3);
    EXPECT_EQ(confirmation.disclaimerText(), L"No \"warranty\"\n");
    EXPECT_EQ(confirmation.toJson(), "{\"path\":\"C:\\\\a.zip\",\"url\":\"toollibraryroot://Local/a.json\","
                                     "\"name\":\"\u00c4\",\"numberOfTools\":3,"
                                     "\"disclaimerText\":\"No \\\"warranty\\\"\\n\"}");
}

} // namespace Varn::ToolLibraries
