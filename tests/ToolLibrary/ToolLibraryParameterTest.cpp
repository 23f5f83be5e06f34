// ToolLibraryParameterTest.cpp -- the vocabulary row by row, where something leans on it.
#include "ToolLibrary/ToolLibraryParameter.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <stdexcept>
#include <thread>

using namespace Varn;
using namespace Varn::Tools;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using Parameters = ToolLibraryParametersEnum;

namespace {

constexpr int rows = 465;

const ToolLibraryParameter &rowAt(int position)
{
    return getToolLibraryParameter(static_cast<Parameters>(position));
}

std::string text(const char16_t *utf16)
{
    return QString::fromUtf16(utf16).toStdString();
}

/// How many rows have each value of a field.
template <typename Field>
std::map<std::string, int> countsOf(const Field &field)
{
    std::map<std::string, int> counts;
    for (int position = 0; position < rows; ++position)
        ++counts[field(rowAt(position))];
    return counts;
}

std::string idOf(const LocalizedMessage &message)
{
    return message.asQString().toStdString();
}

} // namespace

TEST(ToolLibraryParameter, ThereAre465Rows)
{
    EXPECT_NO_THROW(rowAt(rows - 1));
    EXPECT_THROW(rowAt(rows), std::out_of_range);
    EXPECT_THROW(rowAt(-1), std::out_of_range);
    EXPECT_EQ(static_cast<int>(Parameters::None), rows - 1);
}

TEST(ToolLibraryParameter, TheLastRowIsEmpty)
{
    const ToolLibraryParameter &row = rowAt(464);
    EXPECT_EQ(row.key, nullptr);
    EXPECT_EQ(text(row.parameterName), "");
    EXPECT_EQ(idOf(row.title), "");
    EXPECT_EQ(idOf(row.description), "");
    EXPECT_EQ(row.classFlag, 0);
    EXPECT_FALSE(row.summaryFlag);
    EXPECT_EQ(ToolLibraryParameterKey(Parameters::None), QString());
}

TEST(ToolLibraryParameter, KindsOfQuantityAreCounted)
{
    EXPECT_THAT(countsOf([](const auto &row) { return text(row.unitKind); }),
                UnorderedElementsAre(Pair("", 188), Pair("length", 189), Pair("angle", 49), Pair("velocity", 11),
                                     Pair("length/revolution", 5), Pair("integer", 5), Pair("rpm", 3),
                                     Pair("flow rate", 3), Pair("pressure", 2), Pair("length/tooth", 1),
                                     Pair("surface tension", 1), Pair("force", 1), Pair("torque", 1), Pair("weight", 1),
                                     Pair("Method", 1), Pair("power", 1), Pair("current", 1), Pair("voltage", 1),
                                     Pair("height", 1)));
}

TEST(ToolLibraryParameter, SectionsAndFlagsAreCounted)
{
    EXPECT_THAT(countsOf([](const auto &row) { return std::string(row.section); }),
                UnorderedElementsAre(Pair("", 384), Pair("start-values", 39), Pair("geometry", 25),
                                     Pair("post-process", 8), Pair("start-values:1", 6), Pair("setup", 2),
                                     Pair("holder", 1)));
    EXPECT_THAT(countsOf([](const auto &row) { return std::to_string(row.classFlag); }),
                ElementsAre(Pair("0", rows - 92), Pair("1", 92)));
    EXPECT_THAT(countsOf([](const auto &row) { return row.summaryFlag ? "yes" : "no"; }),
                ElementsAre(Pair("no", rows - 49), Pair("yes", 49)));
    EXPECT_EQ(countsOf([](const auto &row) { return idOf(row.title); })[""], 20);
    EXPECT_EQ(countsOf([](const auto &row) { return idOf(row.title) == idOf(row.description) ? "same" : ""; })["same"],
              80);
}

TEST(ToolLibraryParameter, OnlyThreeKeysStandTwice)
{
    std::map<std::string, std::vector<int>> positions;
    for (int position = 0; position < rows - 1; ++position)
        positions[rowAt(position).key].push_back(position);
    std::erase_if(positions, [](const auto &entry) { return entry.second.size() == 1; });
    EXPECT_THAT(positions, UnorderedElementsAre(Pair("f_n", ElementsAre(128, 129)), Pair("TA", ElementsAre(190, 461)),
                                                Pair("RE", ElementsAre(321, 462))));
    EXPECT_EQ(text(rowAt(128).parameterName), "tool_feedPerRevolution");
    EXPECT_EQ(text(rowAt(129).parameterName), "tool_feedCuttingRel");
    EXPECT_EQ(text(rowAt(190).parameterName), "");
    EXPECT_EQ(text(rowAt(461).parameterName), "tool_taperAngle");
    EXPECT_EQ(text(rowAt(321).parameterName), "");
    EXPECT_EQ(text(rowAt(462).parameterName), "tool_cornerRadius");
}

TEST(ToolLibraryParameter, EnumeratorsStandAtTheirRows)
{
    const struct {
        Parameters parameter;
        int position;
        const char *key;
    } expected[] = {
        {Parameters::f_nz, 0, "f_nz"},
        {Parameters::break_control, 11, "break-control"},
        {Parameters::v_c, 18, "v_c"},
        {Parameters::f_n, 128, "f_n"},
        {Parameters::f_n_tool_feedCuttingRel, 129, "f_n"},
        {Parameters::cutting_item_type, 200, "cutting item type"},
        {Parameters::unit, 314, "unit"},
        {Parameters::HAND, 358, "HAND"},
        {Parameters::DC, 379, "DC"},
        {Parameters::tool_grooveCompOppositeEdge, 440, "tool_grooveCompOppositeEdge"},
        {Parameters::upper_radius, 463, "upper-radius"},
    };
    for (const auto &row : expected) {
        EXPECT_EQ(static_cast<int>(row.parameter), row.position) << row.key;
        EXPECT_EQ(ToolLibraryParameterKey(row.parameter).toStdString(), row.key);
    }
}

TEST(ToolLibraryParameter, OddRowsStandAsTheyAre)
{
    EXPECT_EQ(text(rowAt(440).parameterName), "groove-comp-opposite-edge") << "its two names are swapped";
    EXPECT_EQ(text(rowAt(54).unitKind), "length");
    EXPECT_EQ(text(rowAt(286).unitKind), "length");
    EXPECT_EQ(text(rowAt(23).unitKind), "velocity");
    EXPECT_EQ(text(rowAt(24).unitKind), "length/revolution");
    EXPECT_EQ(text(rowAt(293).unitKind), "length") << "of an angle";
    EXPECT_EQ(text(rowAt(269).unitKind), "pressure") << "of a force";
    EXPECT_EQ(idOf(rowAt(417).title), "Nozzle Clearance Diameter");
    const char *const parts[] = {"Start values", "Post processor values", "Geometry", "Holder"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(idOf(rowAt(409 + i).title), parts[i]);
    std::set<std::string> endingInABlank;
    for (int position = 0; position < rows; ++position)
        if (const std::string title = idOf(rowAt(position).title); title.ends_with(' '))
            endingInABlank.insert(title);
    EXPECT_THAT(endingInABlank, ElementsAre("Clearance angle orthogonal ", "Drill back taper ",
                                            "Plug chamfer diameter ", "Rake angle radial "));
}

TEST(ToolLibraryParameter, RowsOfParametersBearNamesOfParameters)
{
    const std::set<std::string> foreign{"groove-comp-opposite-edge"};
    int named = 0;
    std::vector<std::string> unknown;
    for (int position = 0; position < rows; ++position) {
        const std::string name = text(rowAt(position).parameterName);
        named += !name.empty();
        if (!name.empty() && !name.starts_with("tool_") && !name.starts_with("use_tool_") && !foreign.contains(name))
            unknown.push_back(name);
    }
    EXPECT_EQ(named, 74);
    EXPECT_THAT(unknown, IsEmpty());
}

TEST(ToolLibraryParameter, OnlyTheSurfaceSpeedIsConverted)
{
    for (int position = 0; position < rows; ++position) {
        const bool isSurfaceSpeed = position == static_cast<int>(Parameters::v_c);
        EXPECT_EQ(parameterConversionFactor(rowAt(position), true), isSurfaceSpeed ? 1000.0 : 1.0) << position;
        EXPECT_EQ(parameterConversionFactor(rowAt(position), false), isSurfaceSpeed ? 12.0 : 1.0) << position;
    }
}

TEST(ToolLibraryParameter, PartsOfAToolMapHaveTheirNames)
{
    EXPECT_EQ(ToolMapKey::geometry(), QStringLiteral("geometry"));
    EXPECT_EQ(ToolMapKey::holder(), QStringLiteral("holder"));
    EXPECT_EQ(ToolMapKey::postProcess(), QStringLiteral("post-process"));
    EXPECT_EQ(ToolMapKey::material(), QStringLiteral("material"));
    EXPECT_EQ(ToolMapKey::presets(), QStringLiteral("presets"));
    EXPECT_EQ(ToolMapKey::upperDiameter(), QStringLiteral("upper-diameter"));
    EXPECT_EQ(ToolMapKey::segments(), QStringLiteral("segments"));
    EXPECT_EQ(ToolMapKey::setup(), QStringLiteral("setup"));
    EXPECT_EQ(ToolMapKey::shaft(), QStringLiteral("shaft"));
    EXPECT_EQ(ToolMapKey::startValues(), QStringLiteral("start-values"));
    EXPECT_EQ(ToolMapKey::toolCoolant(), QStringLiteral("tool-coolant"));
    EXPECT_EQ(ToolMapKey::type(), QStringLiteral("type"));
    EXPECT_EQ(ToolMapKey::useFeedPerRevolution(), QStringLiteral("use-feed-per-revolution"));
}

TEST(ToolLibraryParameter, ManyThreadsMayAskFirst)
{
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([] { EXPECT_EQ(&rowAt(7), &rowAt(7)); });
}
