#include "platform/tool/JsonSax.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

/// Counts what comes by and stops after so many numbers.
struct Counter : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Counter> {
    int numbers = 0;
    int limit = 1000;
    bool Default() { return true; }
    bool Uint(unsigned) { return ++numbers < limit; }
};

struct ExplainingCounter : Counter {
    const char *failure() const { return numbers >= limit ? "Too many numbers." : nullptr; }
    bool Uint(unsigned) { return ++numbers < limit; }
};

} // namespace

TEST(JsonSaxTest, HandsAllEventsOn)
{
    Counter counter;
    EXPECT_TRUE(JsonSax::read(R"({"a":[1,2,{"b":3}],"c":4})", counter, nullptr));
    EXPECT_EQ(counter.numbers, 4);
}

TEST(JsonSaxTest, AHandlerMayEndTheReading)
{
    Counter counter;
    counter.limit = 2;
    std::string error;
    EXPECT_FALSE(JsonSax::read("[1,2,3]", counter, &error));
    EXPECT_EQ(counter.numbers, 2);
    EXPECT_EQ(error, "Terminate parsing due to Handler error. At byte 3.");
}

TEST(JsonSaxTest, AHandlerMaySayWhyItEndedTheReading)
{
    ExplainingCounter counter;
    counter.limit = 2;
    std::string error;
    EXPECT_FALSE(JsonSax::read("[1,2,3]", counter, &error));
    EXPECT_EQ(error, "Too many numbers. At byte 3.");
    EXPECT_FALSE(JsonSax::read("[1,", counter, nullptr));
}

TEST(JsonSaxTest, TheRulesBeyondTheReaderHoldWithAnyHandler)
{
    const std::string rows[] = {
        std::string(1001, '['),
        R"("\udc00")",
        R"({"\udfff":1})",
        std::string("[]\0", 3),
    };
    for (const std::string &row : rows) {
        Counter counter;
        EXPECT_FALSE(JsonSax::read(row, counter, nullptr)) << row.substr(0, 20);
    }
}

} // namespace Varn::ToolLibraries
