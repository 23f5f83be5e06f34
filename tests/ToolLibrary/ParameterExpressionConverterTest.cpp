#include "ToolLibrary/ParameterExpressionConverter.h"

#include "platform/core/ToolSpecification.h"

#include <gmock/gmock.h>

using namespace Varn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Varn::Tools::ParameterExpressionConverter;

namespace {

const QString key = QStringLiteral("expressions");

ToolSpecification toolOf(const std::map<std::wstring, std::wstring> &expressions)
{
    ToolSpecification tool;
    for (const auto &[parameter, expression] : expressions)
        tool.setExpression(parameter, expression);
    return tool;
}

} // namespace

TEST(ParameterExpressionConverter, AToolWithoutExpressionsLeavesNoKey)
{
    QVariantMap map{{QStringLiteral("other"), 1}};
    ParameterExpressionConverter::convertExpressions(ToolSpecification(), map);
    EXPECT_EQ(map, (QVariantMap{{QStringLiteral("other"), 1}}));
    map[key] = QStringLiteral("kept");
    ParameterExpressionConverter::convertExpressions(ToolSpecification(), map);
    EXPECT_EQ(map[key], QVariant(QStringLiteral("kept")));
}

TEST(ParameterExpressionConverter, ExpressionsAreTextsByParameter)
{
    QVariantMap map{{key, QVariantMap{{QStringLiteral("tool_old"), QStringLiteral("1")}}}};
    ParameterExpressionConverter::convertExpressions(
        toolOf({{L"tool_feedCutting", L"tool_diameter * 'ä' && ("}, {L"tool_stepdown", L""}}), map);
    EXPECT_EQ(map[key],
              QVariant(QVariantMap{{QStringLiteral("tool_feedCutting"), QStringLiteral("tool_diameter * 'ä' && (")},
                                   {QStringLiteral("tool_stepdown"), QString(QStringLiteral(""))}}))
        << "an earlier value goes";
}

TEST(ParameterExpressionConverter, TheOnesOfAMapAreAddedToThoseOfTheTool)
{
    ToolSpecification tool = toolOf({{L"tool_stepdown", L"1"}, {L"tool_stepover", L"2"}});
    const QVariantMap expressions{{QStringLiteral("tool_stepover"), QStringLiteral("tool_diameter / 2")},
                                  {QStringLiteral("tool_feedRamp"), 3.5}};
    ParameterExpressionConverter::convertExpressions({{key, expressions}}, tool);
    EXPECT_THAT(tool.getExpressions(), ElementsAre(Pair(L"tool_feedRamp", L"3.5"), Pair(L"tool_stepdown", L"1"),
                                                   Pair(L"tool_stepover", L"tool_diameter / 2")));
}

TEST(ParameterExpressionConverter, AValueThatIsNoMapIsAnEmptyOne)
{
    EXPECT_FALSE(ParameterExpressionConverter::getExpressionsMap({}).has_value());
    for (const QVariant &value : {QVariant(), QVariant(1), QVariant(QStringLiteral("x")), QVariant(QVariantList{1})}) {
        const auto expressions = ParameterExpressionConverter::getExpressionsMap({{key, value}});
        ASSERT_TRUE(expressions.has_value());
        EXPECT_THAT(*expressions, IsEmpty());
        ToolSpecification tool = toolOf({{L"tool_stepdown", L"1"}});
        ParameterExpressionConverter::convertExpressions({{key, value}}, tool);
        EXPECT_THAT(tool.getExpressions(), ElementsAre(Pair(L"tool_stepdown", L"1")));
    }
}
