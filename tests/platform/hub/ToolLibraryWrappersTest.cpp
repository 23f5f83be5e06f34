#include "platform/hub/ToolLibraryWrappers.h"

#include "support/FakePlatformLibraries.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

using namespace TestSupport;
using namespace Varn;

namespace {

using Hub = IPlatformLibrariesInterface;

SafePointer<Hub> current()
{
    return ToolLibraryWrappers::getPlatformLibrariesInterface().value();
}

std::shared_ptr<FakePlatformLibraries> hubWithChild(const QString &name)
{
    auto hub = std::make_shared<FakePlatformLibraries>();
    hub->childNames = {name};
    return hub;
}

QString childOf(const SafePointer<Hub> &hub)
{
    return hub->listChildNames("f").value().join(u',');
}

} // namespace

TEST(ToolLibraryWrappers, AtFirstNoHubIsConfigured)
{
    const auto created = current()->createNode("folder", "n", "p");
    ASSERT_FALSE(created);
    EXPECT_STREQ(created.error()->what(), "No hub is configured");
    EXPECT_TRUE(current()->index().value().traverse().empty());
}

TEST(ToolLibraryWrappers, SettingAHubGivesTheOneBefore)
{
    const std::shared_ptr<Hub> first = hubWithChild("first");
    const std::shared_ptr<Hub> second = hubWithChild("second");
    const auto original = ToolLibraryWrappers::setPlatformLibrariesInterface(gsl::make_not_null(first));
    EXPECT_EQ(childOf(current()), "first");
    const auto before = ToolLibraryWrappers::setPlatformLibrariesInterface(gsl::make_not_null(second));
    EXPECT_EQ(childOf(current()), "second");
    EXPECT_EQ(before.value().get(), first);
    EXPECT_EQ(ToolLibraryWrappers::setPlatformLibrariesInterface(original).value().get(), second);
    EXPECT_EQ(childOf(current()), "");
}

TEST(ToolLibraryWrappers, AReasonInPlaceOfAHubIsTheFailure)
{
    {
        const HubInUse use("The server is down");
        const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
        ASSERT_FALSE(hub);
        EXPECT_STREQ(hub.error()->what(), "The server is down");
    }
    EXPECT_TRUE(ToolLibraryWrappers::getPlatformLibrariesInterface());
}

TEST(ToolLibraryWrappers, APointerLeadsToTheHubThatIsSetAtEachCall)
{
    const SafePointer<Hub> pointer = current();
    {
        const HubInUse use(hubWithChild("new"));
        EXPECT_EQ(childOf(pointer), "new");
    }
    EXPECT_EQ(childOf(pointer), "");
}

TEST(ToolLibraryWrappers, AHubThatIsReplacedDiesAtOnceUnlessACallIsUnderWay)
{
    auto idle = hubWithChild("idle");
    const std::weak_ptr<Hub> watch = idle;
    {
        const HubInUse use(idle);
        idle.reset();
        EXPECT_FALSE(watch.expired());
    }
    EXPECT_TRUE(watch.expired());
}

TEST(ToolLibraryWrappers, ACallUnderWayKeepsItsHub)
{
    std::promise<void> begun;
    std::promise<void> go;
    auto hub = hubWithChild("old");
    hub->meanwhile = [&](const std::string &) {
        begun.set_value();
        go.get_future().wait();
    };
    const std::weak_ptr<Hub> watch = hub;
    std::future<QString> child;
    {
        const HubInUse use(hub);
        hub.reset();
        child = std::async(std::launch::async, [] { return childOf(current()); });
        begun.get_future().wait();
    }
    EXPECT_FALSE(watch.expired());
    EXPECT_EQ(childOf(current()), "");
    go.set_value();
    EXPECT_EQ(child.get(), "old");
    EXPECT_TRUE(watch.expired());
}

TEST(ToolLibraryWrappers, HubsMayComeAndGoWhileOthersAreCalled)
{
    std::atomic<bool> stop{false};
    std::atomic<int> strange{0};
    std::vector<std::thread> callers;
    for (int i = 0; i < 3; ++i) {
        callers.emplace_back([&] {
            while (!stop) {
                const QString child = childOf(current());
                if (child != "" && child != "a")
                    ++strange;
            }
        });
    }
    for (int i = 0; i < 200; ++i)
        const HubInUse use(hubWithChild("a"));
    stop = true;
    for (std::thread &caller : callers)
        caller.join();
    EXPECT_EQ(strange, 0);
}
