#include "platform/tool/LibraryTool.h"
#include "support/Asserts.h"

#include <gmock/gmock.h>

namespace Varn::ToolLibraries {

namespace {

const ToolLibraryLocator library(L"toollibraryroot://Local/\u00e4.json");

} // namespace

TEST(LibraryToolTest, IsAToolOfALibrary)
{
    std::unique_ptr<const Tool> tool = Tool::fromJson(R"({"vendor":"v"})");
    const Tool *const address = tool.get();
    const LibraryTool libraryTool(library, std::move(tool));
    EXPECT_EQ(libraryTool.libraryId(), library);
    EXPECT_EQ(&libraryTool.tool(), address);
}

TEST(LibraryToolTest, PrintsLocatorAndTool)
{
    EXPECT_EQ(LibraryTool(library, Tool::fromJson(R"({"n":2.0})")).toJson(),
              "{\"libraryId\":\"toollibraryroot://Local/\u00e4.json\",\"tool\":{\"n\":2.0}}");
    EXPECT_EQ(LibraryTool(ToolLibraryLocator::fromFilePath(L"/tmp/\"a\".json"), Tool::fromJson("{}")).toJson(),
              R"({"libraryId":{"path":"/tmp/\"a\".json"},"tool":{}})");
}

TEST(LibraryToolTest, CopiesOutliveTheOriginal)
{
    auto original = std::make_unique<LibraryTool>(library, Tool::fromJson(R"({"vendor":"v"})"));
    const LibraryTool copy(*original);
    LibraryTool assigned(ToolLibraryLocator(L"other"), Tool::fromJson("{}"));
    assigned = *original;
    original.reset();
    for (const LibraryTool &tool : {copy, assigned}) {
        EXPECT_EQ(tool.libraryId(), library);
        EXPECT_EQ(tool.tool().getString("tool_vendor"), "v");
    }
}

TEST(LibraryToolTest, AToolMustBeThere)
{
    const TestSupport::Asserts asserts;
    const LibraryTool good(library, Tool::fromJson("{}"));
    EXPECT_THAT(asserts.messages(), testing::IsEmpty());
    const LibraryTool bad(library, nullptr);
    EXPECT_THAT(asserts.messages(), testing::ElementsAre("EXPECTS:m_tool"));
}

} // namespace Varn::ToolLibraries
