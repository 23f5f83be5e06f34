#include "platform/nc/ToolPlaceholder3DGeometry.h"

#include "platform/nc/Tool3DGeometry.h"
#include "support/GeometryFile.h"

#include <gtest/gtest.h>

using namespace Varn;

TEST(ToolPlaceholder3DGeometryTest, KnowsItsIdAlone)
{
    for (const std::wstring &id : TestSupport::geometryIds) {
        const std::shared_ptr<const Tool3DGeometryBase> geometry = std::make_shared<ToolPlaceholder3DGeometry>(id);
        EXPECT_EQ(geometry->id(), id);
        EXPECT_EQ(dynamic_cast<const Tool3DGeometry *>(geometry.get()), nullptr) << "nothing is there to save";
    }
}
