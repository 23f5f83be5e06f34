#include "platform/tool/ToolParameterJSONKeyPaths.h"

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ToolLibraries::ToolParameterJSONKeyPaths;

namespace {

using Path = std::list<std::string_view>;

} // namespace

TEST(ToolParameterJSONKeyPaths, HoldsEveryFlatKey)
{
    EXPECT_EQ(ToolParameterJSONKeyPaths::get().size(), 171u);
}

TEST(ToolParameterJSONKeyPaths, LeadsIntoTheMapsOfATool)
{
    const std::vector<std::pair<std::string_view, Path>> cases = {
        {"tool_type", {"type"}},
        {"tool_unit", {"unit"}},
        {"tool_vendor", {"vendor"}},
        {"tool_material", {"BMC"}},
        {"tool_number", {"post-process", "number"}},
        {"tool_fluteLength", {"geometry", "LCF"}},
        {"tool_insertType", {"geometry", "SC"}},
        {"tool_holderType", {"holder", "THSC"}},
        {"tool_clamping", {"holder", "MTP"}},
        {"tool_compensation", {"setup", "compensation"}},
        {"tool_block_comment", {"tool-block", "comment"}},
        {"groove-comp-opposite-edge", {"setup", "tool_grooveCompOppositeEdge"}},
    };
    for (const auto &[key, path] : cases) {
        const auto *paths = ToolParameterJSONKeyPaths::find(key);
        ASSERT_NE(paths, nullptr) << key;
        EXPECT_THAT(*paths, ElementsAre(path)) << key;
    }
}

TEST(ToolParameterJSONKeyPaths, SomeKeysHaveASecondChoice)
{
    EXPECT_THAT(*ToolParameterJSONKeyPaths::find("tool_diameter"),
                ElementsAre(Path{"geometry", "DC"}, Path{"geometry", "INSD"}));
    EXPECT_THAT(*ToolParameterJSONKeyPaths::find("tool_comment"),
                ElementsAre(Path{"post-process", "comment"}, Path{"comment"}));
    std::set<std::string_view> keys;
    for (const auto &[key, paths] : ToolParameterJSONKeyPaths::get()) {
        if (paths.size() > 1)
            keys.insert(key);
    }
    EXPECT_THAT(keys,
                ElementsAre("tool_clockwise", "tool_comment", "tool_diameter", "tool_holderGaugeLength", "tool_live"));
}

TEST(ToolParameterJSONKeyPaths, ParametersOfPresetsHaveNoPath)
{
    for (const char *key : {"tool_feedCutting", "tool_spindleSpeed", "tool_coolant", "use_tool_stepover"}) {
        const auto *paths = ToolParameterJSONKeyPaths::find(key);
        ASSERT_NE(paths, nullptr) << key;
        EXPECT_THAT(*paths, IsEmpty()) << key;
    }
}

TEST(ToolParameterJSONKeyPaths, NoPathStepsOverAMap)
{
    const std::set<std::string_view> maps = {"geometry", "holder", "post-process", "setup", "tool-block"};
    std::size_t pathless = 0;
    for (const auto &[key, paths] : ToolParameterJSONKeyPaths::get()) {
        pathless += paths.empty() ? 1 : 0;
        for (const Path &path : paths) {
            ASSERT_THAT(path.size(), testing::AnyOf(1u, 2u)) << key;
            EXPECT_EQ(path.size() == 2, maps.contains(path.front())) << key;
            EXPECT_FALSE(path.back().empty()) << key;
        }
    }
    EXPECT_EQ(pathless, 60u);
}

TEST(ToolParameterJSONKeyPaths, UnknownKeysHaveNone)
{
    for (const char *key : {"", "TOOL_TYPE", "tool_type ", "tool_typ", "type", "geometry", ".normValue"})
        EXPECT_EQ(ToolParameterJSONKeyPaths::find(key), nullptr) << key;
}

TEST(ToolParameterJSONKeyPaths, BothLookupsGiveTheSamePaths)
{
    for (const auto &[key, paths] : ToolParameterJSONKeyPaths::get())
        EXPECT_EQ(ToolParameterJSONKeyPaths::find(std::string(key)), &paths) << key;
}

TEST(ToolParameterJSONKeyPaths, ManyThreadsSeeOneTable)
{
    std::vector<const void *> seen(8);
    {
        std::vector<std::jthread> threads;
        for (const void *&place : seen)
            threads.emplace_back([&place] { place = ToolParameterJSONKeyPaths::find("tool_diameter"); });
    }
    for (const void *place : seen)
        EXPECT_EQ(place, ToolParameterJSONKeyPaths::find("tool_diameter"));
}
