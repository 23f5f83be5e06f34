#include "platform/core/ToolErrorFactory.h"

#include "platform/utils/LocaleRegistry.h"

#include <gtest/gtest.h>

#include <QVariantMap>

using Varn::ToolError;
using Varn::ToolErrorFactory;

namespace {

struct German {
    German() { Varn::LocaleRegistry::setCountry("de"); }
    ~German() { Varn::LocaleRegistry::setCountry("en"); }
};

} // namespace

TEST(ToolErrorFactory, EachCodeHasItsText)
{
    EXPECT_EQ(ToolErrorFactory::make(3201, L"tool_diameter", L"-1")->getDescription(),
              L"The value -1 of tool_diameter is not valid.");
    EXPECT_EQ(ToolErrorFactory::make(2201, L"tool_diameter", L"1")->getDescription(),
              L"The value 1 of tool_diameter is doubtful.");
    EXPECT_EQ(ToolErrorFactory::make(3104)->getDescription(), L"The 3D geometry of the tool was not found.");
    EXPECT_EQ(ToolErrorFactory::make(2103)->getDescription(), L"This tool comes from a newer version.");
    EXPECT_EQ(ToolErrorFactory::make(77)->getDescription(), L"The tool has an error: 77");
}

TEST(ToolErrorFactory, TextsFollowTheLanguage)
{
    const German german;
    EXPECT_EQ(ToolErrorFactory::make(3201, L"tool_diameter", L"%1")->getDescription(),
              L"Der Wert %1 von tool_diameter ist nicht gültig.");
}

TEST(ToolErrorFactory, WhatItWritesItReads)
{
    for (const int code : {3201, 2201, 3104, 2103, 4100, 0, 12}) {
        const auto error = ToolErrorFactory::make(code, L"tool_\u00FC", L"1 %2 'x'");
        const auto again = ToolErrorFactory::make(QVariant(error->toMap()));
        EXPECT_EQ(again->getCode(), code);
        EXPECT_EQ(again->getParameter(), error->getParameter());
        EXPECT_EQ(again->getValue(), error->getValue());
        EXPECT_EQ(again->getKind(), error->getKind());
        EXPECT_EQ(again->getDescription(), error->getDescription());
    }
}

TEST(ToolErrorFactory, TheKindOfAnEntryCountsBeforeItsCode)
{
    const QVariantMap entry{{"code", 3201}, {"kind", "fail"}, {"message", "No."}};
    EXPECT_TRUE(ToolErrorFactory::make(QVariant(entry))->isFail());
    EXPECT_EQ(ToolErrorFactory::make(QVariant(entry))->getDescription(), L"No.");
    EXPECT_TRUE(ToolErrorFactory::make(QVariant(QVariantMap{{"code", 3201}, {"kind", "warning"}}))->isWarning());
    EXPECT_TRUE(ToolErrorFactory::make(QVariant(QVariantMap{{"code", 2201}, {"kind", "odd"}}))->isWarning());
}

TEST(ToolErrorFactory, AnyEntryIsAnError)
{
    for (const QVariant &entry : {QVariant(), QVariant(7), QVariant("x"), QVariant(QVariantList{1}),
                                  QVariant(QVariantMap()), QVariant(QVariantMap{{"code", QVariantList()}})}) {
        const auto error = ToolErrorFactory::make(entry);
        EXPECT_EQ(error->getCode(), 0);
        EXPECT_FALSE(error->isFail());
        EXPECT_EQ(error->getDescription(), L"The tool has an error: 0");
    }
}
