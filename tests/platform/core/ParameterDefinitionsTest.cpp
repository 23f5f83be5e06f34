#include "platform/core/ParameterDefinitions.h"

#include "platform/tool/ToolParameterJSONKeyPaths.h"

#include <gmock/gmock.h>

#include <array>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using Varn::ParameterDefinitions;
using Varn::ParameterTable;
using Varn::Strategy;

namespace {

std::string failureOf(const std::string &json)
{
    try {
        const ParameterDefinitions kinds(json);
        return "none";
    } catch (const std::runtime_error &error) {
        return error.what();
    }
}

constexpr std::array strategies = {97, 198, 207, 212, 213, 214};

} // namespace

TEST(ParameterDefinitions, TheLibraryCarriesItsDefinitions)
{
    EXPECT_EQ(ParameterDefinitions::get().size(), 169u);
}

TEST(ParameterDefinitions, TheCoarselyRoundedParametersAreSpeeds)
{
    std::map<int, std::set<std::string_view>> namesByKind;
    for (const auto &[key, paths] : Varn::ToolLibraries::ToolParameterJSONKeyPaths::get()) {
        for (const int strategy : strategies)
            namesByKind[ParameterDefinitions::get().findKind(std::wstring(key.begin(), key.end()),
                                                             Strategy::Type(strategy))]
                .insert(key);
    }
    EXPECT_THAT(namesByKind[ParameterTable::KIND_VELOCITY],
                ElementsAre("tool_feedCutting", "tool_feedEntry", "tool_feedExit", "tool_feedPlunge",
                            "tool_feedProbeLink", "tool_feedProbeMeasure", "tool_feedRamp", "tool_feedRetract",
                            "tool_feedTransition", "tool_feedWire", "tool_surfaceSpeed"));
    EXPECT_THAT(namesByKind[ParameterTable::KIND_ROTATIONAL_SPEED],
                ElementsAre("tool_block_maximumRotationalSpeed", "tool_maximumRotationalSpeed", "tool_rampSpindleSpeed",
                            "tool_spindleSpeed"));
    EXPECT_EQ(namesByKind.size(), 15u) << "each of the fifteen quantities has a parameter";
}

TEST(ParameterDefinitions, ReadsParametersWithTheirStrategies)
{
    const ParameterDefinitions kinds(R"({
        "parameters": [{"id": "feed", "kind": 6, "strategies": [198, 212]},
                       {"id": "name", "kind": 0, "strategies": [207]},
                       {"id": "wide \u00fc", "kind": 1, "strategies": [207, 213]},
                       {"id": "nowhere", "kind": 2, "strategies": []}],
        "dynamicParameters": [{"pattern": "<n>. size", "kind": 1}],
        "more": {"is": ["ignored"]}})");
    EXPECT_EQ(kinds.size(), 4u);
    EXPECT_EQ(kinds.findKind(L"feed", Strategy::TURNING), ParameterTable::KIND_VELOCITY);
    EXPECT_EQ(kinds.findKind(L"feed", Strategy::JET), ParameterTable::KIND_NONE);
    EXPECT_EQ(kinds.findKind(L"feed", Strategy::SHARED), ParameterTable::KIND_NONE);
    EXPECT_EQ(kinds.findKind(L"12. size", Strategy::JET), ParameterTable::KIND_LENGTH);
    EXPECT_EQ(kinds.findKind(L"nowhere", Strategy::ROTATING), ParameterTable::KIND_NONE);
    for (const int strategy : strategies)
        EXPECT_EQ(kinds.findKind(L"wide \u00FC", Strategy::Type(strategy)), ParameterTable::KIND_LENGTH) << strategy;
}

TEST(ParameterDefinitions, AFaultyDocumentIsRefusedByName)
{
    const auto withRow = [](const std::string &row) {
        return R"({"parameters":[)" + row + R"(],"dynamicParameters":[]})";
    };
    const auto withPattern = [](const std::string &row) {
        return R"({"parameters":[],"dynamicParameters":[)" + row + "]}";
    };
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "empty"},
        {"{", "Missing"},
        {"[]", "not an object"},
        {"null", "not an object"},
        {"{}", "\"parameters\""},
        {R"({"parameters":{}})", "\"parameters\""},
        {R"({"parameters":[]})", "\"dynamicParameters\""},
        {withRow("1"), "a row is not an object"},
        {withRow("{}"), "a row without \"id\""},
        {withRow(R"({"id":1})"), "a row without \"id\""},
        {withRow(R"({"id":"a"})"), "a: no kind"},
        {withRow(R"({"id":"a","kind":"6"})"), "a: no kind"},
        {withRow(R"({"id":"a","kind":15,"strategies":[]})"), "a: unknown kind 15"},
        {withRow(R"({"id":"a","kind":-1,"strategies":[]})"), "a: unknown kind -1"},
        {withRow(R"({"id":"a","kind":6})"), "no list \"strategies\""},
        {withRow(R"({"id":"a","kind":6,"strategies":[199]})"), "a: unknown strategy"},
        {withRow(R"({"id":"a","kind":6,"strategies":["198"]})"), "a: unknown strategy"},
        {withRow(R"({"id":"a","kind":6,"strategies":[]},{"id":"a","kind":6,"strategies":[]})"), "a: defined twice"},
        {withRow(R"({"id":"a","kind":6,"strategies":[],"valueType":2})"), "a: unknown value type 2"},
        {withRow(R"({"id":"a","kind":6,"strategies":[],"flags":["38"]})"), "a: a flag is no number"},
        {withRow(R"({"id":"a","kind":6,"strategies":[],"overrides":[7]})"), "a row is not an object"},
        {withRow(R"({"id":"a","kind":6,"strategies":[],"errors":[{"expression":"1"}]})"), "\"message\""},
        {withRow(R"({"id":"a","kind":6,"strategies":[],"defaultExp":"1"})"), "a row is not an object"},
        {withRow(R"({"id":"a","kind":6,"strategies":[],"title":7})"), "a row without \"title\""},
        {withRow(R"({"id":"a","kind":6,"strategies":[],"number":1},{"id":"b","kind":6,"strategies":[],"number":1})"),
         "b: its number is taken"},
        {R"({"parameters":[],"dynamicParameters":[],"links":[{"set":"a"}]})", "a row without \"updates\""},
        {R"({"parameters":[],"dynamicParameters":[],"kinds":[{"name":"a","kind":1,"unitMetric":99}]})",
         "a: unknown unit"},
        {R"({"parameters":[],"dynamicParameters":[],"enumerations":[{"enumeration":"a"}]})", "a row without \"key\""},
        {withPattern(R"({"pattern":"n","kind":1})"), "n: no <n>"},
        {withPattern(R"({"pattern":"<n>"})"), "<n>: no kind"},
        {withPattern("[]"), "a row is not an object"},
        {withRow("\"\xFF\""), "encoding"},
        {withRow("{}") + "x", "root"},
    };
    for (const auto &[json, message] : cases)
        EXPECT_THAT(failureOf(json), HasSubstr(message)) << json;
}

TEST(ParameterDefinitions, DeepNestingIsRefused)
{
    const std::string open(2'000'000, '[');
    EXPECT_THAT(failureOf(open), HasSubstr("deeper than 1000"));
    EXPECT_THAT(failureOf(R"({"parameters":)" + open), HasSubstr("deeper than 1000"));
}

TEST(ParameterDefinitions, AnOverrideReplacesWhatItNames)
{
    const ParameterDefinitions definitions(R"({
        "parameters": [{"id": "a", "number": 1, "kind": 1, "strategies": [207], "defaultExp": {"metric": "1", "inch": "2"},
                        "enableExp": "b", "errors": [{"expression": "a > 0", "message": "Too small."}],
                        "overrides": [{"strategy": 212, "defaultExp": {"metric": "3", "inch": "4"}, "errors": []}]}],
        "dynamicParameters": []})");
    const auto plain = definitions.definitionsOf(Strategy::JET, true);
    ASSERT_EQ(plain.size(), 1u);
    EXPECT_EQ(plain[0].defaultExpression, L"1");
    EXPECT_EQ(plain[0].errors.size(), 1u);
    EXPECT_EQ(definitions.definitionsOf(Strategy::JET, false)[0].defaultExpression, L"2");
    const auto turning = definitions.definitionsOf(Strategy::TURNING, false);
    EXPECT_EQ(turning[0].defaultExpression, L"4");
    EXPECT_EQ(turning[0].enableExpression, L"b");
    EXPECT_TRUE(turning[0].errors.empty());
    EXPECT_TRUE(definitions.definitionsOf(Strategy::INVALID, true).empty());
    EXPECT_EQ(definitions.findByNumber(1)->id, L"a");
    EXPECT_EQ(definitions.findByName(L"b"), nullptr);
}
