#include "ToolLibrary/ToolVariantMapUtil.h"

#include "support/Asserts.h"

#include <QDateTime>

#include <gmock/gmock.h>

#include <cstdlib>

using namespace Varn;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Tools::ToolVariantMapUtil;

namespace {

const QString newId = QStringLiteral("new");

/// Whether "last_modified" of \a map is about now, in milliseconds. Somebody may set the clock meanwhile.
testing::AssertionResult isTouched(const QVariantMap &map)
{
    constexpr qint64 day = 24 * 60 * 60 * 1000;
    const qint64 modified = map.value("last_modified").toLongLong();
    if (std::abs(modified - QDateTime::currentMSecsSinceEpoch()) < day)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << modified;
}

QVariantMap withSolid(const QVariant &id)
{
    return {{"geometry", QVariantMap{{"DC", 5.0}, {"3DGeometry", QVariantMap{{"id", id}, {"unit", "mm"}}}}}};
}

QVariantMap ofType(const char *type)
{
    return {{"type", type}};
}

} // namespace

TEST(ToolVariantMapUtil, AToolWithoutAGuidGetsOneAndNoReference)
{
    QVariantMap tool{{"type", "drill"}};
    ToolVariantMapUtil::applyGUID(newId, tool);
    EXPECT_EQ(tool.value("guid"), newId);
    EXPECT_EQ(tool.value("type"), "drill");
    EXPECT_TRUE(isTouched(tool));
    EXPECT_THAT(tool.keys(), ElementsAre("guid", "last_modified", "type"));
}

TEST(ToolVariantMapUtil, TheOldGuidOfAToolBecomesItsReference)
{
    QVariantMap tool{{"guid", "old"}, {"reference_guid", "older"}, {"last_modified", 1}};
    ToolVariantMapUtil::applyGUID(newId, tool);
    EXPECT_EQ(tool.value("guid"), newId);
    EXPECT_EQ(tool.value("reference_guid"), "old");
    EXPECT_TRUE(isTouched(tool));
}

TEST(ToolVariantMapUtil, AToolWithGeometryRefersToTheNewSolid)
{
    for (QVariantMap tool : {withSolid("old"), QVariantMap{{"geometry", QVariantMap{{"DC", 5.0}}}},
                             QVariantMap{{"geometry", "no map"}}, QVariantMap{{"geometry", QVariant()}}}) {
        ToolVariantMapUtil::apply3DGeometryGuid(newId, tool);
        EXPECT_EQ(ToolVariantMapUtil::get3DGeometryGuid(tool), newId);
        EXPECT_TRUE(isTouched(tool));
    }
    QVariantMap tool = withSolid("old");
    ToolVariantMapUtil::apply3DGeometryGuid(newId, tool);
    EXPECT_EQ(tool.value("geometry"), withSolid(newId).value("geometry")) << "all else stays";
}

TEST(ToolVariantMapUtil, AToolWithoutGeometryStaysAsItIs)
{
    const QVariantMap before{{"guid", "a"}, {"last_modified", 1}, {"tool-block", withSolid("old")}};
    QVariantMap tool = before;
    ToolVariantMapUtil::apply3DGeometryGuid(newId, tool);
    EXPECT_EQ(tool, before);
}

TEST(ToolVariantMapUtil, TheSolidOfAToolBlockChangesTheTimeOfTheTool)
{
    QVariantMap tool{{"geometry", withSolid("own").value("geometry")}, {"tool-block", withSolid("old")}};
    ToolVariantMapUtil::applyNested3DGeometryGuid(newId, tool);
    EXPECT_EQ(tool.value("tool-block"), QVariant(withSolid(newId))) << "no time in the block";
    EXPECT_EQ(ToolVariantMapUtil::get3DGeometryGuid(tool), "own");
    EXPECT_TRUE(isTouched(tool));

    QVariantMap bare{{"tool-block", QVariantMap{{"guid", "b"}}}};
    ToolVariantMapUtil::applyNested3DGeometryGuid(newId, bare);
    EXPECT_EQ(ToolVariantMapUtil::getNested3DGeometryGuid(bare), newId);
}

TEST(ToolVariantMapUtil, AToolWithoutABlockStaysAsItIs)
{
    QVariantMap tool = withSolid("old");
    ToolVariantMapUtil::applyNested3DGeometryGuid(newId, tool);
    EXPECT_EQ(tool, withSolid("old"));
}

TEST(ToolVariantMapUtil, ASolidIsThereWhenAllItsKeysAre)
{
    EXPECT_EQ(ToolVariantMapUtil::get3DGeometryGuid(withSolid("a")), "a");
    EXPECT_EQ(ToolVariantMapUtil::get3DGeometryGuid(withSolid("")), "");
    EXPECT_EQ(ToolVariantMapUtil::get3DGeometryGuid({}), std::nullopt);
    EXPECT_EQ(ToolVariantMapUtil::get3DGeometryGuid({{"geometry", QVariantMap()}}), std::nullopt);
    EXPECT_EQ(ToolVariantMapUtil::get3DGeometryGuid({{"geometry", QVariantMap{{"3DGeometry", QVariantMap()}}}}),
              std::nullopt);

    EXPECT_EQ(ToolVariantMapUtil::getNested3DGeometryGuid({{"tool-block", withSolid("b")}}), "b");
    EXPECT_EQ(ToolVariantMapUtil::getNested3DGeometryGuid({{"tool-block", QVariantMap()}}), std::nullopt);
    EXPECT_EQ(ToolVariantMapUtil::getNested3DGeometryGuid(withSolid("a")), std::nullopt);
}

TEST(ToolVariantMapUtil, TheTypeTellsTheKindOfTool)
{
    struct Row {
        const char *type;
        ToolGeometry::Type value;
        ToolTypeCategory category;
        bool adaptive;
        bool jet;
        bool turning;
    };
    // clang-format off
    const Row rows[] = {
        {"drill",           ToolGeometry::TYPE_DRILL,           ToolTypeCategory::HoleMaking, false, false, false},
        {"flat end mill",   ToolGeometry::TYPE_FLAT_END_MILL,   ToolTypeCategory::Milling,    false, false, false},
        {"holder",          ToolGeometry::TYPE_HOLDER,          ToolTypeCategory::Adaptive,   true,  false, false},
        {"laser cutter",    ToolGeometry::TYPE_LASER_CUTTER,    ToolTypeCategory::Jet,        false, true,  false},
        {"turning general", ToolGeometry::TYPE_TURNING_GENERAL, ToolTypeCategory::Turning,    false, false, true },
        {"probe",           ToolGeometry::TYPE_PROBE,           ToolTypeCategory::Probe,      false, false, false},
        {"unspecified",     ToolGeometry::TYPE_NONE,            ToolTypeCategory::None,       false, false, false},
    };
    // clang-format on
    const TestSupport::Asserts asserts;
    for (const Row &row : rows) {
        const QVariantMap tool = ofType(row.type);
        EXPECT_EQ(ToolVariantMapUtil::getToolGeometryType(tool), row.value) << row.type;
        EXPECT_EQ(ToolVariantMapUtil::getToolTypeCategory(tool), row.category) << row.type;
        EXPECT_EQ(ToolVariantMapUtil::isAdaptiveItem(tool), row.adaptive) << row.type;
        EXPECT_EQ(ToolVariantMapUtil::isJetTool(tool), row.jet) << row.type;
        EXPECT_EQ(ToolVariantMapUtil::isTurningTool(tool), row.turning) << row.type;
    }
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolVariantMapUtil, TurningToolsTellTheirCompensationAndHolder)
{
    const TestSupport::Asserts asserts;
    EXPECT_EQ(ToolVariantMapUtil::getTurningToolCompensationMode({{"compensation", "tangent"}}),
              ToolGeometry::COMPENSATION_TANGENT);
    EXPECT_EQ(ToolVariantMapUtil::getTurningToolCompensationMode({{"compensation", "tip"}}),
              ToolGeometry::COMPENSATION_TIP);
    EXPECT_EQ(ToolVariantMapUtil::getTurningToolHolderType({{"THSC", "L"}}), ToolGeometry::HOLDER_L);
    EXPECT_EQ(ToolVariantMapUtil::getTurningToolHolderType({}), ToolGeometry::HOLDER_NONE);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolVariantMapUtil, AnUnknownKeywordIsTheFirstValueAndAnAssertion)
{
    const auto readAll = [] {
        EXPECT_EQ(ToolVariantMapUtil::getToolGeometryType(ofType("Drill")), ToolGeometry::TYPE_NONE);
        EXPECT_EQ(ToolVariantMapUtil::getToolTypeCategory({}), ToolTypeCategory::None);
        EXPECT_EQ(ToolVariantMapUtil::getTurningToolCompensationMode({}), ToolGeometry::COMPENSATION_CENTER);
        EXPECT_EQ(ToolVariantMapUtil::getTurningToolHolderType({{"THSC", "?"}}), ToolGeometry::HOLDER_NONE);
    };
    readAll();
    const TestSupport::Asserts asserts;
    readAll();
    EXPECT_THAT(asserts.messages(), ElementsAre("m_valid", "m_valid", "m_valid", "m_valid"));
}

TEST(ToolVariantMapUtil, TheHandIsToldByTheFirstLetterOfItsText)
{
    const auto handOf = [](const QVariant &text) { return ToolVariantMapUtil::getToolHand({{"HAND", text}}); };
    EXPECT_EQ(handOf("R"), ToolGeometry::HAND_RIGHT);
    EXPECT_EQ(handOf("Left"), ToolGeometry::HAND_LEFT);
    EXPECT_EQ(handOf("N"), ToolGeometry::HAND_NEUTRAL);
    for (const QVariant &none : {QVariant(""), QVariant("r"), QVariant("X"), QVariant(QChar(0x4e52)), QVariant()})
        EXPECT_EQ(handOf(none), std::nullopt) << none.toString().toStdString();
    EXPECT_EQ(ToolVariantMapUtil::getToolHand({}), std::nullopt);
}

TEST(ToolVariantMapUtil, OnlyTheExactWordIsMillimeters)
{
    EXPECT_EQ(ToolVariantMapUtil::getToolUnits({{"unit", "millimeters"}}), 16);
    for (const char *other : {"inches", "Millimeters", "mm", ""})
        EXPECT_EQ(ToolVariantMapUtil::getToolUnits({{"unit", other}}), 21) << other;
    EXPECT_EQ(ToolVariantMapUtil::getToolUnits({{"unit", QVariant()}}), 21) << "a null that is there counts as there";
    EXPECT_EQ(ToolVariantMapUtil::getToolUnits({}), -2);
}
