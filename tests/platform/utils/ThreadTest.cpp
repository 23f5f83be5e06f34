#include "platform/utils/Thread.h"

#include <gtest/gtest.h>

#include <thread>

using Varn::Thread;

TEST(Thread, TheThreadThatLoadedTheLibraryIsTheMainThread)
{
    EXPECT_TRUE(Thread::isMainThread());
    bool isMain = true;
    std::thread([&isMain] { isMain = Thread::isMainThread(); }).join();
    EXPECT_FALSE(isMain);
}

TEST(Thread, AnotherThreadCanBecomeTheMainThread)
{
    bool isMain = false;
    std::thread([&isMain] {
        Thread::setMainThread();
        isMain = Thread::isMainThread();
    }).join();
    EXPECT_TRUE(isMain);
    EXPECT_FALSE(Thread::isMainThread());
    Thread::setMainThread();
    EXPECT_TRUE(Thread::isMainThread());
}
