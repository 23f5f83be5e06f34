#include "ToolLibrary/Util/Tool3DGeometryMapAccessor.h"

#include "support/Asserts.h"
#include "support/GeometryTest.h"
#include "support/VirtualTable.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;

namespace {

using Tool3DGeometryMapAccessorTest = GeometryTest;

} // namespace

TEST_F(Tool3DGeometryMapAccessorTest, LeadsToTheMap)
{
    Tool3DGeometryMapAccessor accessor;
    EXPECT_FALSE(accessor.mapHas(L"id"));
    const auto geometry = makeGeometry(L"id");
    Map::emplace(L"id", geometry, local);
    EXPECT_TRUE(accessor.mapHas(L"id"));
    EXPECT_EQ(accessor.getLoaded3DGeometry(L"id"), geometry);
}

TEST_F(Tool3DGeometryMapAccessorTest, ExpectsAnIdOfTheMap)
{
    Tool3DGeometryMapAccessor accessor;
    const Asserts asserts;
    EXPECT_EQ(accessor.getLoaded3DGeometry(L"id"), nullptr);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:mapHas(id)", "EXPECTS:has(id)"));
    EXPECT_FALSE(accessor.mapHas(L""));
    EXPECT_EQ(asserts.messages()[2], "EXPECTS:!id.empty()");
}

TEST_F(Tool3DGeometryMapAccessorTest, TheOrderOfItsOperationsIsAPromise)
{
    EXPECT_EQ(slotOf(&Tool3DGeometryMapAccessor::getLoaded3DGeometry), 0U);
    EXPECT_EQ(slotOf(&Tool3DGeometryMapAccessor::mapHas), 1U);
}
