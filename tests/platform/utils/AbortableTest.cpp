#include "platform/utils/Abortable.h"

#include <gtest/gtest.h>

#include <thread>

using Varn::Abortable;
using Varn::AbortableImpl;

TEST(Abortable, RunsAtFirstAndStaysAborted)
{
    AbortableImpl flag;
    EXPECT_FALSE(flag.isAborted());
    flag.abort();
    EXPECT_TRUE(flag.isAborted());
    flag.abort();
    EXPECT_TRUE(flag.isAborted());
}

TEST(Abortable, AnAbortReachesAnotherThread)
{
    AbortableImpl flag;
    Abortable &base = flag;
    std::thread worker([&base] {
        while (!base.isAborted())
            std::this_thread::yield();
    });
    base.abort();
    worker.join(); // hangs if the abort never arrives
    EXPECT_TRUE(base.isAborted());
}
