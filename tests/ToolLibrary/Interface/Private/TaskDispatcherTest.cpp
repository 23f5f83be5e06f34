#include "ToolLibrary/Interface/Private/TaskDispatcher.h"

#include "platform/core/VarnApplication.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

using namespace Varn::ToolLibraries;

namespace {

/// Runs a job at once, or never.
struct Here : TaskDispatcher::ThreadExecutor {
    void operator()(std::function<void()> job) const override { job(); }
};
struct Nowhere : TaskDispatcher::ThreadExecutor {
    void operator()(std::function<void()>) const override {}
};

} // namespace

TEST(TaskDispatcher, TheResultComesOutOfTheFuture)
{
    EXPECT_EQ(TaskDispatcher::runOnThread([] { return 7; }, Here()).get(), 7);
    bool ran = false;
    TaskDispatcher::runOnThread([&ran] { ran = true; }, Here()).get();
    EXPECT_TRUE(ran);
    EXPECT_EQ(TaskDispatcher::numPendingTasks(), 0u);
}

TEST(TaskDispatcher, AnExceptionComesOutOfTheFutureAndTheJobCountsNoMore)
{
    auto result = TaskDispatcher::runOnThread([]() -> int { throw std::runtime_error("no"); }, Here());
    EXPECT_EQ(TaskDispatcher::numPendingTasks(), 0u);
    EXPECT_THROW(result.get(), std::runtime_error);
}

TEST(TaskDispatcher, AJobThatIsDroppedEndsItsWaiterAndCountsNoMore)
{
    auto result = TaskDispatcher::runOnThread([] { return 1; }, Nowhere());
    EXPECT_EQ(TaskDispatcher::numPendingTasks(), 0u);
    EXPECT_THROW(result.get(), std::future_error);
}

TEST(TaskDispatcher, AJobMayOwnWhatCannotBeCopied)
{
    auto owned = std::make_unique<int>(5);
    EXPECT_EQ(TaskDispatcher::runOnThread([owned = std::move(owned)] { return *owned; }, Here()).get(), 5);
}

TEST(VarnMainThreadExecutor, OnTheMainThreadAJobRunsAtOnce)
{
    bool ran = false;
    const auto result = TaskDispatcher::runOnThread([&ran] { ran = true; }, VarnMainThreadExecutor());
    EXPECT_TRUE(ran);
}

TEST(VarnMainThreadExecutor, FromAnotherThreadAJobWaitsForTheMainThread)
{
    const auto mainThread = std::this_thread::get_id();
    std::thread::id ranOn;
    std::atomic<bool> done{false};
    std::thread worker([&] {
        TaskDispatcher::runOnThread([&ranOn] { ranOn = std::this_thread::get_id(); }, VarnMainThreadExecutor()).get();
        done = true;
    });
    while (!done)
        Varn::VarnApplication::pumpMainThread();
    worker.join();
    EXPECT_EQ(ranOn, mainThread);
    EXPECT_EQ(TaskDispatcher::numPendingTasks(), 0u);
}
