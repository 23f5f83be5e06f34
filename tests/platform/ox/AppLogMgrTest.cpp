#include "platform/ox/AppLogMgr.h"

#include <gmock/gmock.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using Ox::AppLogMgr;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

// Starts without a sink and leaves the one that was there.
class AppLogMgrTest : public testing::Test
{
protected:
    AppLogMgrTest() : m_previous(AppLogMgr::setSink({})) {}
    ~AppLogMgrTest() override { AppLogMgr::setSink(m_previous); }

    AppLogMgr::Sink collector()
    {
        return [this](int level, std::string_view text) { m_lines.emplace_back(level, text); };
    }

    std::vector<std::pair<int, std::string>> m_lines;

private:
    AppLogMgr::Sink m_previous;
};

} // namespace

TEST_F(AppLogMgrTest, NothingIsPrintedWithoutASink)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    AppLogMgr::appLog(1, "dropped");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(AppLogMgrTest, TheSinkGetsEveryLevelAndTextInOrder)
{
    AppLogMgr::setSink(collector());
    AppLogMgr::appLog(3, "HubToolLibrary: Failed to find tool in cache: x");
    AppLogMgr::appLog(1, "");
    AppLogMgr::appLog(-1, std::string_view("a\0b", 3));
    EXPECT_THAT(m_lines, ElementsAre(Pair(3, "HubToolLibrary: Failed to find tool in cache: x"), Pair(1, ""),
                                     Pair(-1, std::string("a\0b", 3))));
}

TEST_F(AppLogMgrTest, InstallingASinkGivesBackTheOneBefore)
{
    EXPECT_FALSE(AppLogMgr::setSink(collector()));
    AppLogMgr::Sink first = AppLogMgr::setSink({});
    ASSERT_TRUE(first);
    AppLogMgr::appLog(1, "dropped");
    EXPECT_FALSE(AppLogMgr::setSink(first));
    AppLogMgr::appLog(1, "kept");
    EXPECT_THAT(m_lines, ElementsAre(Pair(1, "kept")));
}

TEST_F(AppLogMgrTest, ASinkThatThrowsLosesItsLineOnly)
{
    AppLogMgr::setSink([this](int level, std::string_view text) {
        if (level == 1)
            throw std::runtime_error("disk full");
        m_lines.emplace_back(level, text);
    });
    AppLogMgr::appLog(1, "lost");
    AppLogMgr::appLog(3, "kept");
    EXPECT_THAT(m_lines, ElementsAre(Pair(3, "kept")));
}

TEST_F(AppLogMgrTest, WhatTheSinkLogsItselfIsDropped)
{
    AppLogMgr::setSink([this](int level, std::string_view text) {
        m_lines.emplace_back(level, text);
        AppLogMgr::appLog(level, "from within");
    });
    AppLogMgr::appLog(1, "outer");
    AppLogMgr::appLog(1, "second");
    EXPECT_THAT(m_lines, ElementsAre(Pair(1, "outer"), Pair(1, "second")));
}

TEST_F(AppLogMgrTest, ASinkMayReplaceItself)
{
    const std::string name = "a text long enough that it lies on the heap";
    AppLogMgr::setSink([this, name](int level, std::string_view) {
        AppLogMgr::setSink(collector());
        m_lines.emplace_back(level, name); // this sink is still alive
    });
    AppLogMgr::appLog(1, "first");
    AppLogMgr::appLog(2, "second");
    EXPECT_THAT(m_lines, ElementsAre(Pair(1, name), Pair(2, "second")));
}

TEST_F(AppLogMgrTest, LinesOfManyThreadsArriveWholeAndOneAtATime)
{
    AppLogMgr::setSink(collector());
    std::vector<std::thread> threads;
    for (int level = 0; level < 4; ++level) {
        threads.emplace_back([level] {
            for (int n = 0; n < 500; ++n)
                AppLogMgr::appLog(level, "line " + std::to_string(n));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    ASSERT_EQ(m_lines.size(), 2000U);
    int next[4] = {};
    for (const auto &[level, text] : m_lines)
        EXPECT_EQ(text, "line " + std::to_string(next[level]++));
}

TEST_F(AppLogMgrTest, NoThreadIsInTheOldSinkOnceItIsReplaced)
{
    std::atomic<bool> isDone{false};
    std::thread logger([&isDone] {
        while (!isDone)
            AppLogMgr::appLog(1, "line");
    });
    int strange = 0;
    for (int round = 0; round < 40; ++round) {
        std::atomic<int> calls{0};
        AppLogMgr::setSink([&calls](int, std::string_view) { ++calls; });
        std::this_thread::yield();
        AppLogMgr::setSink({});
        const int atTheEnd = calls;
        std::this_thread::yield();
        strange += calls != atTheEnd;
    }
    isDone = true;
    logger.join();
    EXPECT_EQ(strange, 0);
}
