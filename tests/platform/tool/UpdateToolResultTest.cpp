#include "platform/tool/UpdateToolResult.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

LibraryTool tool(const char *json)
{
    return LibraryTool(ToolLibraryLocator(L"lib"), Tool::fromJson(json));
}

} // namespace

TEST(UpdateToolResultTest, PrintsTheToolWithItsLibrary)
{
    const UpdateToolResult result(tool(R"({"guid":"g"})"));
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.item().libraryId(), ToolLibraryLocator(L"lib"));
    EXPECT_EQ(result.toJson(), R"({"item":{"libraryId":"lib","tool":{"guid":"g"}}})");
}

TEST(UpdateToolResultTest, AFailureShowsTheToolAllTheSame)
{
    const UpdateToolResult result(tool("{}"), "Invalid tool", std::nullopt);
    EXPECT_TRUE(result.hasError());
    EXPECT_EQ(result.toJson(), R"({"item":{"libraryId":"lib","tool":{}},"error":{"developerText":"Invalid tool"}})");
}

TEST(UpdateToolsResultTest, IsAListOfSingleResults)
{
    UpdateToolsResult results;
    results.append(UpdateToolResult(tool("{}")));
    results.append(UpdateToolResult(tool("{}"), "x", L"y"));
    EXPECT_EQ(results.toJson(), R"([{"item":{"libraryId":"lib","tool":{}}},{"item":{"libraryId":"lib","tool":{}},)"
                                R"("error":{"developerText":"x","translatedText":"y"}}])");
}

} // namespace Varn::ToolLibraries
