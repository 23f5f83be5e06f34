#include "platform/tool/Import3DToolResult.h"

#include "support/GeometryFile.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(Import3DToolResultTest, NothingChosenIsANullItem)
{
    const Import3DToolResult result(std::nullopt);
    EXPECT_FALSE(result.hasError());
    EXPECT_FALSE(result.geometryId());
    EXPECT_EQ(result.toJson(), R"({"item":null})");
}

TEST(Import3DToolResultTest, AGeometryIsNamedByItsId)
{
    const auto geometry = TestSupport::makeGeometry(L"00112233-4455-6677-8899-aabbccddeeff");
    const Import3DToolResult result(*geometry);
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.geometryId(), geometry->id());
    EXPECT_EQ(result.toJson(), R"({"item":{"id":"00112233-4455-6677-8899-aabbccddeeff"}})");
}

TEST(Import3DToolResultTest, AnyIdIsAJsonText)
{
    const Import3DToolResult result(*TestSupport::makeGeometry(L"\"\u5de5\u5177\\"));
    EXPECT_EQ(result.toJson(), "{\"item\":{\"id\":\"\\\"\u5de5\u5177\\\\\"}}");
}

TEST(Import3DToolResultTest, AFailureHasAnErrorBesideANullItem)
{
    const Import3DToolResult result(UnknownError("Could not import 3d tool.", L"misslungen"));
    EXPECT_TRUE(result.hasError());
    EXPECT_EQ(result.errorText(), "Could not import 3d tool.");
    EXPECT_EQ(result.translatedErrorText(), L"misslungen");
    EXPECT_EQ(result.toJson(), R"({"item":null,"error":{"developerText":"Could not import 3d tool.",)"
                               R"("translatedText":"misslungen"}})");
}

} // namespace Varn::ToolLibraries
