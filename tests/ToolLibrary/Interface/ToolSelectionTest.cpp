#include "ToolLibrary/Interface/ToolSelection.h"
#include "support/LibraryFile.h"

#include <gtest/gtest.h>

using namespace TestSupport;
using Varn::ToolFeedsAndSpeedsPresetId;
using Varn::ToolLibraries::ToolId;
using Varn::ToolLibraries::ToolSelection;

namespace {

const ToolId tool(guidOf(1));
const ToolFeedsAndSpeedsPresetId preset(L"preset");

} // namespace

TEST(ToolSelection, NamesAToolAndAPreset)
{
    const ToolSelection selection(tool, preset);
    EXPECT_EQ(selection.toolId(), tool);
    EXPECT_EQ(selection.presetId(), preset);
}

TEST(ToolSelection, DoesWithoutAPreset)
{
    EXPECT_EQ(ToolSelection(tool, std::nullopt).presetId(), std::nullopt);
}

TEST(ToolSelection, PrintsBoth)
{
    EXPECT_EQ(ToolSelection(tool, ToolFeedsAndSpeedsPresetId(L"a \"ä\"")).toJson(),
              R"({"presetId":"a \"ä\"","toolId":")" + guidOf(1) + "\"}");
    EXPECT_EQ(ToolSelection(tool, std::nullopt).toJson(), R"({"toolId":")" + guidOf(1) + "\"}");
}

TEST(ToolSelection, TakesOverAnother)
{
    const ToolSelection one(tool, preset);
    ToolSelection other(ToolId(guidOf(2)), std::nullopt);
    other = one;
    EXPECT_EQ(other.toolId(), tool);
    EXPECT_EQ(other.presetId(), preset);
    other = ToolSelection(ToolId(guidOf(3)), std::nullopt);
    EXPECT_EQ(other.toolId(), ToolId(guidOf(3)));
    EXPECT_EQ(other.presetId(), std::nullopt);
    EXPECT_EQ(one.presetId(), preset);
}
