#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "support/Failure.h"
#include "support/LibraryFile.h"

#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

#include <limits>

using namespace TestSupport;
using namespace Varn::ToolLibraries;

namespace {

constexpr const char *passes = "none";
constexpr const char *holder = "LibraryFormatError: Tool 'holder' must be an object";
constexpr const char *gauge = "LibraryFormatError: Tool 'gaugeLength' must be a non-negative number";
constexpr const char *start = "LibraryFormatError: Tool 'start-values' must be an object";
constexpr const char *presets = "LibraryFormatError: Tool 'presets' must be a non-empty array";
constexpr const char *unit = "LibraryFormatError: Tool 'unit' must be 'millimeters' or 'inches'";

struct Row {
    const char *members;
    const char *outcome;
};

void expectOutcome(const Row &row)
{
    for (const char *const version : {"36", "37"}) {
        const std::string text = R"({"data":[)" + toolText(1, row.members) + R"(],"version":)" + version + "}";
        EXPECT_EQ(failureOf([&] { RapidjsonToolLibrary::fromString(text, Varn::AbortableImpl()); }), row.outcome)
            << text;
    }
}

std::string failureOfTools(const std::vector<std::string> &tools)
{
    return failureOf([&] { RapidjsonToolLibrary::fromString(libraryText(tools), Varn::AbortableImpl()); });
}

} // namespace

TEST(RapidjsonToolLibrarySchema, AHolderIsAnObject)
{
    const Row rows[] = {
        {R"("x":1)", passes},
        {R"("holder":{})", passes},
        {R"("holder":{"x":[]})", passes},
        {R"("holder":null)", holder},
        {R"("holder":"ER16")", holder},
        {R"("holder":[])", holder},
        {R"("holder":1)", holder},
        {R"("holder":false)", holder},
        {R"("holder":[{"gaugeLength":1}])", holder},
        {R"("Holder":"ER16")", passes},
        {R"("holder":{},"holder":1)", passes}, // the first counts
    };
    for (const Row &row : rows)
        expectOutcome(row);
}

TEST(RapidjsonToolLibrarySchema, AGaugeLengthIsANumberNotBelowZero)
{
    const Row rows[] = {
        {R"("holder":{"gaugeLength":0})", passes},
        {R"("holder":{"gaugeLength":-0})", passes},
        {R"("holder":{"gaugeLength":-0.0})", passes},
        {R"("holder":{"gaugeLength":12})", passes},
        {R"("holder":{"gaugeLength":12.5})", passes},
        {R"("holder":{"gaugeLength":18446744073709551615})", passes},
        {R"("holder":{"gaugeLength":1e308})", passes},
        {R"("holder":{"gaugeLength":-1})", gauge},
        {R"("holder":{"gaugeLength":-0.001})", gauge},
        {R"("holder":{"gaugeLength":-5e-324})", gauge},
        {R"("holder":{"gaugeLength":-9223372036854775808})", gauge},
        {R"("holder":{"gaugeLength":"12"})", gauge},
        {R"("holder":{"gaugeLength":null})", gauge},
        {R"("holder":{"gaugeLength":true})", gauge},
        {R"("holder":{"gaugeLength":[]})", gauge},
        {R"("holder":{"gaugeLength":{}})", gauge},
        {R"("gaugeLength":-1)", passes}, // only that of the holder is looked at
        {R"("geometry":{"gaugeLength":-1})", passes},
        {R"("holder":{"holder":{"gaugeLength":-1}})", passes},
    };
    for (const Row &row : rows)
        expectOutcome(row);
}

TEST(RapidjsonToolLibrarySchema, AGaugeLengthThatIsNoNumberAtAllPasses)
{
    for (const double length : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        rapidjson::Document document;
        document.Parse(libraryText({toolText(1, R"("holder":{"gaugeLength":0})")}).c_str());
        document["data"][0]["holder"]["gaugeLength"].SetDouble(length);
        EXPECT_EQ(RapidjsonToolLibrary(std::move(document)).numberOfTools(), 1u);
    }
}

TEST(RapidjsonToolLibrarySchema, StartValuesHoldAPreset)
{
    const Row rows[] = {
        {R"("start-values":{"presets":[{}]})", passes},
        {R"("start-values":{"presets":[null]})", passes}, // what a preset is, is not looked at
        {R"("start-values":{"presets":[1,2],"x":1})", passes},
        {R"("start-values":null)", start},
        {R"("start-values":[])", start},
        {R"("start-values":"none")", start},
        {R"("start-values":1)", start},
        {R"("start-values":{})", presets},
        {R"("start-values":{"Presets":[{}]})", presets},
        {R"("start-values":{"presets":null})", presets},
        {R"("start-values":{"presets":[]})", presets},
        {R"("start-values":{"presets":{}})", presets},
        {R"("start-values":{"presets":{"a":1}})", presets},
        {R"("start-values":{"presets":"x"})", presets},
        {R"("presets":[])", passes},
    };
    for (const Row &row : rows)
        expectOutcome(row);
}

TEST(RapidjsonToolLibrarySchema, AUnitIsOneOfTwoTextsOrNull)
{
    const Row rows[] = {
        {R"("unit":"millimeters")", passes},
        {R"("unit":"inches")", passes},
        {R"("unit":"\u0069nches")", passes},
        {R"("unit":null)", passes},
        {R"("unit":"mm")", unit},
        {R"("unit":"")", unit},
        {R"("unit":"Millimeters")", unit},
        {R"("unit":"INCHES")", unit},
        {R"("unit":"inches ")", unit},
        {R"("unit":"inches\u0000")", unit},
        {R"("unit":"inch")", unit},
        {R"("unit":1)", unit},
        {R"("unit":false)", unit},
        {R"("unit":["inches"])", unit},
        {R"("unit":{})", unit},
        {R"("holder":{"unit":"mm"})", passes}, // only that of the tool is looked at
    };
    for (const Row &row : rows)
        expectOutcome(row);
}

TEST(RapidjsonToolLibrarySchema, TheChecksOfAToolRunInTheirOrder)
{
    const Row rows[] = {
        {R"("unit":"mm","start-values":{},"holder":1)", holder},
        {R"("unit":"mm","start-values":1,"holder":{"gaugeLength":-1})", gauge},
        {R"("unit":"mm","start-values":1)", start},
        {R"("unit":"mm","start-values":{})", presets},
        {R"("unit":"mm")", unit},
    };
    for (const Row &row : rows)
        expectOutcome(row);
}

TEST(RapidjsonToolLibrarySchema, TheFirstToolThatFailsDecides)
{
    const std::string good = toolText(1, R"("unit":"inches")");
    const std::string badUnit = toolText(2, R"("unit":"mm")");
    const std::string badHolder = toolText(3, R"("holder":1)");
    EXPECT_EQ(failureOfTools({good, badUnit, badHolder}), unit);
    EXPECT_EQ(failureOfTools({good, badHolder, badUnit}), holder);
    EXPECT_EQ(failureOfTools({good}), passes);
}

TEST(RapidjsonToolLibrarySchema, AToolThatIsDroppedIsNotChecked)
{
    EXPECT_EQ(failureOfTools({R"({"unit":"mm"})", toolText(1), toolText(1, R"("holder":1)")}), passes);
}

TEST(RapidjsonToolLibrarySchema, AToolThatIsNoObjectIsToldBeforeAnyCheck)
{
    EXPECT_EQ(failureOfTools({toolText(1, R"("unit":"mm")"), "7"}),
              "LibraryFormatError: JSON tool data format is invalid");
}
