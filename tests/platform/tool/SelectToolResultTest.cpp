#include "platform/tool/SelectToolResult.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(SelectToolResultTest, PrintsTheToolWithItsLibrary)
{
    const SelectToolResult result(LibraryTool(ToolLibraryLocator(L"document://1"), Tool::fromJson(R"({"guid":"g"})")));
    EXPECT_EQ(result.item().tool().getToolId(), ToolId("g"));
    EXPECT_EQ(result.toJson(), R"({"item":{"libraryId":"document://1","tool":{"guid":"g"}}})");
}

} // namespace Varn::ToolLibraries
