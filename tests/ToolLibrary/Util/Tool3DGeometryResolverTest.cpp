// Tool3DGeometryResolverTest.cpp -- tool records find their solids in the table of the engine.
#include "support/GeometryTest.h"

#include "platform/core/ToolSLDGeometry.h"
#include "platform/core/ToolSpecification.h"

using namespace TestSupport;
using Varn::ToolPlaceholder3DGeometry;
using Varn::ToolSpecification;

using Tool3DGeometryResolverTest = GeometryTest;

TEST_F(Tool3DGeometryResolverTest, ARecordIsRestoredOutOfTheTable)
{
    const auto solid = makeGeometry(L"solid");
    Map::emplace(L"solid", solid, local);
    ToolSpecification tool;
    tool.set3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"solid"));
    tool.setNested3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"other"));
    tool.restore3DGeometry();
    EXPECT_EQ(tool.getRaw3DGeometry(), solid);
    EXPECT_NE(tool.getPlaceholderNested3DGeometry(), nullptr) << "nothing is known of it";

    put(fileOf(local, L"other"));
    Map::populateFromLibraryUrl(local);
    tool.restore3DGeometry();
    EXPECT_EQ(tool.getPlaceholderNested3DGeometry(), nullptr) << "it is read from its file";
}

TEST_F(Tool3DGeometryResolverTest, AFileThatCannotBeReadLeavesThePlaceholder)
{
    put(fileOf(local, L"broken"), "no solid");
    Map::populateFromLibraryUrl(local);
    ToolSpecification tool;
    tool.set3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"broken"));
    tool.restore3DGeometry();
    EXPECT_NE(tool.getPlaceholder3DGeometry(), nullptr);
}
