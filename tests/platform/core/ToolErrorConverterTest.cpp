#include "platform/core/ToolErrorConverter.h"

#include "platform/core/ToolErrorFactory.h"
#include "platform/core/ToolSpecification.h"

#include <gtest/gtest.h>

using Varn::ToolErrorConverter;
using Varn::ToolErrorFactory;
using Varn::ToolSpecification;

TEST(ToolErrorConverter, ErrorsAreAppendedToTheList)
{
    QVariantMap tool{{"guid", "a"}, {"errors", QVariantList{QVariantMap{{"code", 9}, {"own", true}}}}};
    ToolErrorConverter::convertErrors(
        {ToolErrorFactory::make(3201, L"tool_diameter", L"0"), nullptr, ToolErrorFactory::make(2201, L"b", L"1")},
        tool);
    const QVariantList list = tool["errors"].toList();
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(list[0].toMap(), (QVariantMap{{"code", 9}, {"own", true}}));
    EXPECT_EQ(list[1].toMap()["parameter"], "tool_diameter");
    EXPECT_EQ(list[2].toMap()["kind"], "warning");
    EXPECT_EQ(tool["guid"], "a");
}

TEST(ToolErrorConverter, WithoutErrorsNothingIsWritten)
{
    QVariantMap tool{{"guid", "a"}};
    ToolErrorConverter::convertErrors(ToolErrorConverter::Errors{}, tool);
    ToolErrorConverter::convertErrors(ToolErrorConverter::Errors{nullptr}, tool);
    ToolErrorConverter::convertError(nullptr, tool);
    EXPECT_EQ(tool, (QVariantMap{{"guid", "a"}}));
}

TEST(ToolErrorConverter, AMemberThatIsNoListIsReplaced)
{
    for (const QVariant &odd : {QVariant(7), QVariant("x"), QVariant(QVariantMap{{"a", 1}}), QVariant()}) {
        QVariantMap tool{{"errors", odd}};
        ToolErrorConverter::convertError(ToolErrorFactory::make(3104), tool);
        ASSERT_EQ(tool["errors"].toList().size(), 1);
        EXPECT_EQ(tool["errors"].toList()[0].toMap()["code"], 3104);
    }
}

TEST(ToolErrorConverter, ARecordGivesAndTakesItsFaults)
{
    ToolSpecification record;
    record.setErrors({ToolErrorFactory::make(3201, L"a", L"1"), ToolErrorFactory::make(2201, L"b", L"2")});
    QVariantMap tool;
    ToolErrorConverter::convertErrors(record, tool);
    ASSERT_EQ(tool["errors"].toList().size(), 2);
    ToolSpecification other;
    other.setErrors({ToolErrorFactory::make(4001)});
    ToolErrorConverter::convertErrors(tool, other);
    ASSERT_EQ(other.getErrors().size(), 2u);
    EXPECT_EQ(other.getErrors()[1]->getParameter(), L"b");
    EXPECT_TRUE(other.getErrors()[1]->isWarning());
    ToolErrorConverter::convertErrors(QVariantMap(), other);
    EXPECT_TRUE(other.getErrors().empty());
}

TEST(ToolErrorConverter, ErrorsComeBackFromTheList)
{
    QVariantMap tool;
    ToolErrorConverter::convertErrors({ToolErrorFactory::make(3201, L"a", L"1"), ToolErrorFactory::make(4001)}, tool);
    ToolErrorConverter::Errors errors{ToolErrorFactory::make(1)};
    ToolErrorConverter::convertErrors(tool, errors);
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[0]->getParameter(), L"a");
    EXPECT_TRUE(errors[1]->isFail());
    for (const QVariant &odd : {QVariant(7), QVariant("x"), QVariant(QVariantList{1, "x", QVariant()}), QVariant()}) {
        ToolErrorConverter::convertErrors(QVariantMap{{"errors", odd}}, errors);
        EXPECT_TRUE(errors.empty());
    }
}
