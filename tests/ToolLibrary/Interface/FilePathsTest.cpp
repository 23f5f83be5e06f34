#include "ToolLibrary/Interface/FilePaths.h"
#include "support/Asserts.h"
#include "support/TestPaths.h"

#include "platform/core/CloudLibraries.h"
#include "platform/core/VarnApplication.h"
#include "util/utility/SafePointer.h"

#include <gmock/gmock.h>

using namespace Varn::Tools;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::CloudLibraries;
using Varn::VarnApplication;

TEST(FilePaths, TheLastInstanceIsAskedUntilItDies)
{
    const FilePaths &before = FilePaths::get();
    {
        const TestSupport::TestPaths outer;
        EXPECT_EQ(&FilePaths::get(), &outer);
        {
            const TestSupport::TestPaths inner;
            EXPECT_EQ(&FilePaths::get(), &inner);
        }
        EXPECT_EQ(&FilePaths::get(), &outer);
    }
    EXPECT_EQ(&FilePaths::get(), &before);
}

TEST(FilePaths, InstancesThatInterleaveAreAProgrammingError)
{
    const FilePaths &before = FilePaths::get();
    auto outer = std::make_unique<TestSupport::TestPaths>();
    auto inner = std::make_unique<TestSupport::TestPaths>();
    const TestSupport::Asserts asserts;
    outer.reset();
    EXPECT_THAT(asserts.messages(), ElementsAre("Scoped instances should not be interleaved"));
    EXPECT_EQ(&FilePaths::get(), inner.get());
    inner.reset();
    EXPECT_EQ(asserts.messages().size(), 1u);
    EXPECT_EQ(&FilePaths::get(), &before);
}

TEST(FilePaths, NestedInstancesAreNoError)
{
    const TestSupport::Asserts asserts;
    {
        const TestSupport::TestPaths outer;
        const TestSupport::TestPaths inner;
    }
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(DefaultFilePaths, TheFoldersOfAPersonAreReadOnceAndKept)
{
    const DefaultFilePaths paths;
    VarnApplication::setHomeFolder(L"/first");
    const std::wstring data = paths.appDataFolder();
    const std::wstring system = paths.systemLibrariesFolder();
    const std::wstring local = paths.localLibrariesFolder();
    EXPECT_EQ(local, data + L"/libraries");
    EXPECT_TRUE(system.ends_with(L"/Brennmoor/Lodestar/libraries"));
    VarnApplication::setHomeFolder(L"/second");
    EXPECT_EQ(paths.appDataFolder(), data);
    EXPECT_EQ(paths.systemLibrariesFolder(), system);
    EXPECT_EQ(paths.localLibrariesFolder(), local);
    VarnApplication::setHomeFolder(L"");
}

TEST(DefaultFilePaths, TheCloudFolderFollowsItsConfiguration)
{
    const DefaultFilePaths paths;
    CloudLibraries::configure(L"/somewhere/cloud");
    EXPECT_EQ(paths.cloudLibrariesFolder(), L"/somewhere/cloud");
    CloudLibraries::reset();
    EXPECT_THROW(paths.cloudLibrariesFolder(), Varn::NullPointerException);
    const TestSupport::Asserts asserts;
    EXPECT_THROW(paths.cloudLibrariesFolder(), Varn::NullPointerException);
    EXPECT_THAT(asserts.messages(), ElementsAre("object"));
}
