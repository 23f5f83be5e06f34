#include "ToolLibrary/ParameterJSONConverter.h"
#include "support/Asserts.h"

#include "platform/core/FeatureFlag.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::FeatureFlag;
using Varn::Tools::ParameterJSONConverter;

namespace {

class ParameterJSONConverterTest : public testing::Test
{
protected:
    ParameterJSONConverterTest()
    {
        FeatureFlag::setEnabled("on", true);
        FeatureFlag::setEnabled("off", false);
    }
    ~ParameterJSONConverterTest() override { FeatureFlag::reset(); }

    Asserts m_asserts;
};

} // namespace

TEST_F(ParameterJSONConverterTest, FeatureFlagsAreSettled)
{
    const struct {
        const wchar_t *expression;
        const wchar_t *settled;
    } rows[] = {
        {L"", L""},
        {L"tool_diameter * 2", L"tool_diameter * 2"},
        {L"Util.featureFlagEnabled('on') && a", L"true && a"},
        {L"Util.featureFlagEnabled('off') && a", L"false && a"},
        {L"Util.featureFlagEnabled('nobody has set it')", L"true"},
        {L"Util.featureFlagEnabled('')", L"true"},
        {L"!Util.featureFlagEnabled('on')||Util.featureFlagEnabled('off')||Util.featureFlagEnabled('new')?1:2",
         L"!true||false||true?1:2"},
        {L"'ä 🛠' + Util.featureFlagEnabled('off')", L"'ä 🛠' + false"},
        {L"UtilUtil.featureFlagEnabled('off')", L"Utilfalse"},
        {L"Util\nfeatureFlagEnabled('off')", L"false"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ParameterJSONConverter::preprocessExpression(row.expression), row.settled);
    EXPECT_THAT(m_asserts.messages(), IsEmpty());
}

TEST_F(ParameterJSONConverterTest, CharactersThatAreNoneAreNoHindrance)
{
    for (const wchar_t odd : {wchar_t(0xD800), wchar_t(0xDFFF), wchar_t(0x110000), wchar_t(0)}) {
        const std::wstring text(1, odd);
        EXPECT_EQ(ParameterJSONConverter::preprocessExpression(text + L"Util.featureFlagEnabled('off')" + text),
                  text + L"false" + text);
    }
    EXPECT_THAT(m_asserts.messages(), IsEmpty());
}

TEST_F(ParameterJSONConverterTest, WhateverElseIsOfUtilIsAReportOfTests)
{
    for (const wchar_t *expression : {L"Util.other('x')", L"Util.featureFlagEnabled(\"on\")",
                                      L"Util.featureFlagEnabled ('on')", L"Util.featureFlagEnabled('on'')", L"Util."})
        EXPECT_EQ(ParameterJSONConverter::preprocessExpression(expression), expression);
    const char *condition = "out.find(L\"Util.\") == wstring::npos";
    EXPECT_THAT(m_asserts.messages(), ElementsAre(condition, condition, condition, condition, condition));
}

TEST_F(ParameterJSONConverterTest, ALongExpressionTakesNoStack)
{
    std::wstring expression = L"Util.featureFlagEnabled('";
    expression.append(2'000'000, L'x');
    EXPECT_EQ(ParameterJSONConverter::preprocessExpression(expression + L"')"), L"true");
    EXPECT_EQ(ParameterJSONConverter::preprocessExpression(expression), expression);
}
