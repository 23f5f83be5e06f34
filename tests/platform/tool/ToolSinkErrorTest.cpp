#include "platform/tool/ToolSinkError.h"
#include "platform/ox/HubLibrariesCache.h"
#include "platform/ox/expected.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

using HubException = Ox::HubLibrariesCache::Exception;
using Ox::HubLibrariesCache::HubItemConflictError;

ToolSinkError refusal()
{
    return ToolSinkError(std::shared_ptr<Exception>(std::make_shared<ToolMissing>("Tool not found in library")));
}

ToolSinkError conflict()
{
    return ToolSinkError(
        std::shared_ptr<HubException>(std::make_shared<HubItemConflictError>("newer", L"neuer \u00fc")));
}

} // namespace

TEST(ToolSinkErrorTest, HasTheTextsOfTheFailure)
{
    EXPECT_STREQ(refusal().what(), "Tool not found in library");
    EXPECT_EQ(refusal().translatedWhat(), std::nullopt);
    EXPECT_STREQ(conflict().what(), "newer");
    EXPECT_EQ(conflict().translatedWhat(), L"neuer \u00fc");
}

TEST(ToolSinkErrorTest, TheKindOfTheFailureCanBeTold)
{
    const auto failure = std::make_shared<AccessError>("a");
    EXPECT_EQ(ToolSinkError(std::shared_ptr<Exception>(failure)).innerException(), failure);
    EXPECT_TRUE(std::dynamic_pointer_cast<ToolMissing>(refusal().innerException()));
    EXPECT_FALSE(std::dynamic_pointer_cast<AccessError>(refusal().innerException()));
    EXPECT_TRUE(std::dynamic_pointer_cast<HubItemConflictError>(conflict().innerException()));
    EXPECT_FALSE(std::dynamic_pointer_cast<Exception>(conflict().innerException()));
}

TEST(ToolSinkErrorTest, CopiesShareTheFailure)
{
    auto original = std::make_unique<ToolSinkError>(conflict());
    const ToolSinkError copy(*original);
    ToolSinkError assigned = refusal();
    assigned = *original;
    EXPECT_EQ(copy.innerException(), original->innerException());
    original.reset();
    EXPECT_STREQ(copy.what(), "newer");
    EXPECT_STREQ(assigned.what(), "newer");
    EXPECT_EQ(assigned.translatedWhat(), L"neuer \u00fc");
}

TEST(ToolSinkErrorTest, ANullFailureEndsTheProgram)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(ToolSinkError(std::shared_ptr<Exception>()), "");
    EXPECT_DEATH(ToolSinkError(std::shared_ptr<HubException>()), "");
}

TEST(ToolSinkErrorTest, IsWhatASinkAnswersInsteadOfSuccess)
{
    using Result = Ox::expected<void, ToolSinkError>;
    EXPECT_TRUE(Result().has_value());
    const Result failed = Ox::unexpected<ToolSinkError>(refusal());
    ASSERT_FALSE(failed.has_value());
    EXPECT_STREQ(failed.error().what(), "Tool not found in library");
}

} // namespace Varn::ToolLibraries
