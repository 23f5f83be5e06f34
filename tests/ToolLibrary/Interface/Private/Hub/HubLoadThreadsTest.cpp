#include "ToolLibrary/Interface/Private/Hub/HubLoadThreads.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

using Varn::ToolLibraries::HubLoadThreads;

namespace {

/// Counts jobs, which wait until they are let go.
class Gate
{
public:
    void pass(int job)
    {
        std::unique_lock lock(m_mutex);
        m_begun.push_back(job);
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_open; });
        ++m_passed;
        m_changed.notify_all();
    }
    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_open = true;
        m_changed.notify_all();
    }
    std::vector<int> waitForBegun(std::size_t count)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_begun.size() >= count; });
        return m_begun;
    }
    void waitForPassed(int count)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_passed >= count; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<int> m_begun;
    int m_passed = 0;
    bool m_open = false;
};

void waitForNoThreads()
{
    while (HubLoadThreads::count() > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace

TEST(HubLoadThreads, AFewJobsRunAtOnceAndTheOthersWait)
{
    waitForNoThreads();
    Gate gate;
    constexpr int jobs = static_cast<int>(HubLoadThreads::maximum) + 3;
    for (int job = 0; job < jobs; ++job)
        HubLoadThreads::start([&gate, job] { gate.pass(job); });
    EXPECT_EQ(gate.waitForBegun(HubLoadThreads::maximum).size(), HubLoadThreads::maximum);
    EXPECT_EQ(HubLoadThreads::count(), HubLoadThreads::maximum);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(gate.waitForBegun(0).size(), HubLoadThreads::maximum) << "one began without a thread";
    gate.open();
    gate.waitForPassed(jobs);
    waitForNoThreads();
}

TEST(HubLoadThreads, WhenNoJobIsLeftNoThreadIs)
{
    for (int round = 0; round < 3; ++round) {
        Gate gate;
        gate.open();
        HubLoadThreads::start([&gate] { gate.pass(0); });
        gate.waitForPassed(1);
        waitForNoThreads();
    }
    EXPECT_EQ(HubLoadThreads::count(), 0u);
}

TEST(HubLoadThreads, AJobIsGoneWhenItsThreadIs)
{
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = held;
    HubLoadThreads::start([held = std::move(held)] {});
    waitForNoThreads();
    EXPECT_TRUE(watch.expired());
}
