#include "ToolLibrary/Interface/Private/LoadThreads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

using Varn::ToolLibraries::LoadThreads;

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

constexpr std::size_t maximum = 3;

void waitForNoThreads(const LoadThreads &threads)
{
    while (threads.count() > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace

TEST(LoadThreads, AFewJobsRunAtOnceAndTheOthersWait)
{
    LoadThreads threads(maximum);
    Gate gate;
    constexpr int jobs = static_cast<int>(maximum) + 3;
    for (int job = 0; job < jobs; ++job)
        threads.start([&gate, job] { gate.pass(job); });
    EXPECT_EQ(gate.waitForBegun(maximum).size(), maximum);
    EXPECT_EQ(threads.count(), maximum);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(gate.waitForBegun(0).size(), maximum) << "one began without a thread";
    gate.open();
    gate.waitForPassed(jobs);
    waitForNoThreads(threads);
}

TEST(LoadThreads, WhenNoJobIsLeftNoThreadIs)
{
    LoadThreads threads(maximum);
    for (int round = 0; round < 3; ++round) {
        Gate gate;
        gate.open();
        threads.start([&gate] { gate.pass(0); });
        gate.waitForPassed(1);
        waitForNoThreads(threads);
    }
    EXPECT_EQ(threads.count(), 0u);
}

TEST(LoadThreads, AJobIsGoneWhenItsThreadIs)
{
    LoadThreads threads(maximum);
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = held;
    threads.start([held = std::move(held)] {});
    waitForNoThreads(threads);
    EXPECT_TRUE(watch.expired());
}

TEST(LoadThreads, TheEndWaitsForWhatHasBegunAndDropsTheRest)
{
    Gate gate;
    std::atomic<int> dropped{0};
    std::thread opener;
    {
        LoadThreads threads(1);
        threads.start([&gate] { gate.pass(0); });
        gate.waitForBegun(1);
        threads.start([&dropped] { ++dropped; });
        opener = std::thread([&gate] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            gate.open();
        });
    }
    gate.waitForPassed(1); // at once: the threads ended after it
    EXPECT_EQ(dropped, 0);
    opener.join();
}
