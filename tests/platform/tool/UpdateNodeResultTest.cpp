#include "platform/tool/UpdateNodeResult.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

std::shared_ptr<LibraryMetadata> node()
{
    return LibraryMetadata::fromJson(R"({"name":"n","oldUrl":"o","type":"folder","url":"u"})");
}

} // namespace

TEST(UpdateNodeResultTest, PrintsTheNodeWithAllItsMembers)
{
    const auto metadata = node();
    const UpdateNodeResult result(metadata);
    EXPECT_EQ(result.item(), metadata);
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.toJson(), R"({"item":{"name":"n","oldUrl":"o","type":"folder","url":"u"}})");
}

TEST(UpdateNodeResultTest, AFailureShowsTheNodeAllTheSame)
{
    const UpdateNodeResult result(node(), "Not a library", L"Keine Bibliothek");
    EXPECT_TRUE(result.hasError());
    EXPECT_EQ(result.toJson(), R"({"item":{"name":"n","oldUrl":"o","type":"folder","url":"u"},)"
                               R"("error":{"developerText":"Not a library","translatedText":"Keine Bibliothek"}})");
}

TEST(UpdateNodesResultTest, IsAListOfSingleResults)
{
    UpdateNodesResult results;
    results.append(UpdateNodeResult(node()));
    results.append(UpdateNodeResult(nullptr, "x", std::nullopt));
    EXPECT_EQ(results.numResults(), 2U);
    EXPECT_EQ(results.toJson(), R"([{"item":{"name":"n","oldUrl":"o","type":"folder","url":"u"}},)"
                                R"({"item":null,"error":{"developerText":"x"}}])");
}

} // namespace Varn::ToolLibraries
