#include "platform/tool/ToolId.h"

#include <gtest/gtest.h>

#include <unordered_set>

using Varn::Guid;
using Varn::ToolLibraries::ToolId;

namespace {

const std::string text = "0123abcd-89ef-4123-8567-89abcdef0123";

} // namespace

TEST(ToolIdTest, IsAGuidOrTheTextOfOne)
{
    const Guid guid = Guid::fromString(text);
    EXPECT_EQ(ToolId(text).guid(), guid);
    EXPECT_EQ(ToolId(guid).guid(), guid);
    EXPECT_EQ(ToolId("{0123ABCD-89EF-4123-8567-89ABCDEF0123}"), ToolId(guid));
    EXPECT_EQ(ToolId(text).guid().asString(), text);
}

TEST(ToolIdTest, WhatIsNoGuidIsTheNullGuid)
{
    for (const char *bad : {"", "drill", "0123abcd-89ef-4123-8567-89abcdef012", "0123abcd89ef4123856789abcdef0123",
                            "0123abcg-89ef-4123-8567-89abcdef0123", "00000000-0000-0000-0000-000000000000"}) {
        EXPECT_TRUE(ToolId(std::string(bad)).guid().isNull()) << bad;
        EXPECT_EQ(ToolId(std::string(bad)), ToolId(Guid())) << bad;
    }
}

TEST(ToolIdTest, EqualIdentifiersHaveEqualHashes)
{
    const ToolId one(Guid::create());
    const ToolId other(Guid::create());
    ToolId copy = other;
    EXPECT_EQ(copy, other);
    EXPECT_FALSE(one == other);
    copy = one;
    EXPECT_EQ(copy, one);
    const std::unordered_set<ToolId> ids{one, other, copy, ToolId(one.guid().asString())};
    EXPECT_EQ(ids.size(), 2U);
    EXPECT_EQ(ids.count(ToolId(other.guid())), 1U);
}
