#include "platform/tool/Import3DToolResult.h"

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
    const Guid id = Guid::fromString("00112233-4455-6677-8899-AABBCCDDEEFF");
    const Import3DToolResult result = Import3DToolResult::fromGeometryId(id);
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.geometryId(), id);
    EXPECT_EQ(result.toJson(), R"({"item":{"id":"00112233-4455-6677-8899-aabbccddeeff"}})");
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
