#include "platform/core/CloudLibraries.h"

#include "support/Asserts.h"

#include <QDir>

#include <gmock/gmock.h>

using Varn::CloudLibraries;

namespace {

class CloudFolder : public testing::Test
{
protected:
    ~CloudFolder() override { CloudLibraries::reset(); }
};

} // namespace

TEST_F(CloudFolder, ThereAreNoneUntilAFolderIsConfigured)
{
    EXPECT_FALSE(CloudLibraries::EnableCloudLibraries());
    EXPECT_FALSE(CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES).isValid());
}

TEST_F(CloudFolder, AConfiguredFolderIsTheOneWithTheCopies)
{
    CloudLibraries::configure(L"/cloud/of the shop/\u00FC/");
    EXPECT_TRUE(CloudLibraries::EnableCloudLibraries());
    const auto libraries = CloudLibraries::get(CloudLibraries::LibraryType(1));
    ASSERT_TRUE(libraries.isValid());
    EXPECT_EQ(libraries->getCachedCloudLibrariesFolder(), L"/cloud/of the shop/\u00FC");
}

TEST_F(CloudFolder, ARelativeFolderCountsFromTheCurrentOne)
{
    CloudLibraries::configure(L"cloud");
    EXPECT_EQ(CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES)->getCachedCloudLibrariesFolder(),
              QDir::currentPath().toStdWString() + L"/cloud");
}

TEST_F(CloudFolder, OnlyToolLibrariesAreKeptThere)
{
    CloudLibraries::configure(L"/cloud");
    for (const int type : {0, 2, -1})
        EXPECT_FALSE(CloudLibraries::get(CloudLibraries::LibraryType(type)).isValid()) << type;
}

TEST_F(CloudFolder, PointersGoNullWhenTheFolderChangesOrGoes)
{
    CloudLibraries::configure(L"/one");
    const auto one = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    CloudLibraries::configure(L"/two");
    EXPECT_FALSE(one.isValid());
    const auto two = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    EXPECT_EQ(two->getCachedCloudLibrariesFolder(), L"/two");
    CloudLibraries::reset();
    EXPECT_FALSE(two.isValid());
    EXPECT_FALSE(CloudLibraries::EnableCloudLibraries());
    CloudLibraries::reset();
    CloudLibraries::configure(L"/three");
    CloudLibraries::configure(L"");
    EXPECT_FALSE(CloudLibraries::EnableCloudLibraries());
}

TEST_F(CloudFolder, FollowingTheMissingOneIsAFaultThatSaysSo)
{
    const TestSupport::Asserts asserts;
    const auto libraries = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    EXPECT_THROW(libraries->getCachedCloudLibrariesFolder(), Varn::NullPointerException);
    EXPECT_THAT(asserts.messages(), testing::ElementsAre("object"));
}
