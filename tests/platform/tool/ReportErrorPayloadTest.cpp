#include "platform/tool/ReportErrorPayload.h"

#include "platform/tool/Exception.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

std::string refusal(const std::string &text)
{
    try {
        ReportErrorPayload::fromJson(text);
    } catch (const InvalidInput &e) {
        return e.what();
    }
    return "read";
}

} // namespace

TEST(ReportErrorPayloadTest, KeepsAndPrintsItsTexts)
{
    const ReportErrorPayload payload("at f()\n", "{\"a\":1}", "na\u00efve");
    EXPECT_EQ(payload.callStackInfo(), "at f()\n");
    EXPECT_EQ(payload.details(), "{\"a\":1}");
    EXPECT_EQ(payload.userDescription(), "na\u00efve");
    EXPECT_EQ(payload.toJson(), "{\"callStackInfo\":\"at f()\\n\",\"details\":\"{\\\"a\\\":1}\","
                                "\"userDescription\":\"na\u00efve\"}");
}

TEST(ReportErrorPayloadTest, ReadsWhatItPrints)
{
    const ReportErrorPayload payload("a", std::string("b\0c", 3), "");
    const ReportErrorPayload read = ReportErrorPayload::fromJson(payload.toJson());
    EXPECT_EQ(read.toJson(), payload.toJson());
    EXPECT_EQ(read.details(), std::string("b\0c", 3));
}

TEST(ReportErrorPayloadTest, MissingMembersAreEmptyAndFurtherOnesArePassedOver)
{
    const ReportErrorPayload payload = ReportErrorPayload::fromJson(R"({"details":null,"userDescription":"x","y":1})");
    EXPECT_EQ(payload.toJson(), R"({"callStackInfo":"","details":"","userDescription":"x"})");
}

TEST(ReportErrorPayloadTest, RefusesABadTextAndSaysWhy)
{
    struct Row {
        const char *json, *reason;
    };
    const Row rows[] = {
        {"", "Error report is not valid JSON: The document is empty. At byte 0."},
        {"[]", "Error report is not a JSON object"},
        {R"({"callStackInfo":1})", "Error report: \"callStackInfo\" is not a text"},
        {R"({"details":{}})", "Error report: \"details\" is not a text"},
        {R"({"userDescription":["x"]})", "Error report: \"userDescription\" is not a text"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(refusal(row.json), row.reason) << row.json;
}

} // namespace Varn::ToolLibraries
