#include "platform/tool/ImportToolResult.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

std::shared_ptr<LibraryTool> tool()
{
    return std::make_shared<LibraryTool>(ToolLibraryLocator(L"lib"), Tool::fromJson("{}"));
}

} // namespace

TEST(ImportToolResultTest, SuccessIsTheToolAlone)
{
    const ImportToolResult result(tool());
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.toJson(), R"({"item":{"libraryId":"lib","tool":{}}})");
}

TEST(ImportToolResultTest, AFailureMayHaveNoTool)
{
    const ImportToolResult result(nullptr, "Failed to import tool", L"misslungen");
    EXPECT_TRUE(result.hasError());
    EXPECT_EQ(result.toJson(),
              R"({"item":null,"error":{"developerText":"Failed to import tool","translatedText":"misslungen"}})");
}

TEST(ImportToolResultTest, AQuestionIsNoError)
{
    const Confirmation confirmation(L"/a.zip", ToolLibraryLocator(L"u"), L"n", 2, L"terms");
    const ImportToolResult result(nullptr, confirmation);
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.confirmation()->numberOfTools(), 2);
    EXPECT_EQ(result.toJson(), R"({"item":null,"confirmation":{"path":"/a.zip","url":"u","name":"n",)"
                               R"("numberOfTools":2,"disclaimerText":"terms"}})");
}

TEST(ImportToolsResultTest, IsAListOfSingleResults)
{
    ImportToolsResult results;
    results.append(ImportToolResult(tool()));
    results.append(ImportToolResult(nullptr, "x", std::nullopt));
    EXPECT_EQ(results.toJson(),
              R"([{"item":{"libraryId":"lib","tool":{}}},{"item":null,"error":{"developerText":"x"}}])");
}

} // namespace Varn::ToolLibraries
