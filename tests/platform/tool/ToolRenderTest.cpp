#include "platform/tool/ToolRender.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

class OneSegment : public ToolRender
{
protected:
    void fillJson(Json::Value &object) const override { object["obj"]["flute"] = "v 0 0 0\n"; }
};

} // namespace

TEST(ToolRenderTest, AnEmptyRenderIsAnEmptyObject)
{
    const ToolRender render;
    EXPECT_FALSE(render.hasError());
    EXPECT_EQ(render.errorText(), "");
    EXPECT_EQ(render.toJson(), "{}");
}

TEST(ToolRenderTest, AnErrorIsPrinted)
{
    ToolRender render;
    render.setError(GeometryLoadError("Failed to restore", L"misslungen"));
    EXPECT_TRUE(render.hasError());
    EXPECT_EQ(render.errorText(), "Failed to restore");
    EXPECT_EQ(render.translatedErrorText(), L"misslungen");
    EXPECT_EQ(render.toJson(), R"({"error":{"developerText":"Failed to restore","translatedText":"misslungen"}})");
}

TEST(ToolRenderTest, TheLastErrorStandsWithItsOwnTranslation)
{
    ToolRender render;
    render.setError(GeometryLoadError("first", L"erster"));
    render.setError(UnknownError("second"));
    EXPECT_EQ(render.toJson(), R"({"error":{"developerText":"second"}})");
}

TEST(ToolRenderTest, WhatWasDrawnStandsBesideTheError)
{
    OneSegment render;
    EXPECT_EQ(render.toJson(), R"({"obj":{"flute":"v 0 0 0\n"}})");
    render.setError(UnknownError("x"));
    EXPECT_EQ(render.toJson(), R"({"error":{"developerText":"x"},"obj":{"flute":"v 0 0 0\n"}})");
}

} // namespace Varn::ToolLibraries
