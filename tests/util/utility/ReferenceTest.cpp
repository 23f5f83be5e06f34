#include "util/utility/Reference.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace Varn;

namespace {

struct Counted : ReferenceCountable {
    explicit Counted(int &counter) : deaths(counter) {}
    ~Counted() override { ++deaths; }
    int &deaths;
};

} // namespace

TEST(Reference, TheLastReferenceDestroysTheObject)
{
    int deaths = 0;
    Reference<Counted> first(new Counted(deaths));
    {
        const Reference<Counted> second = first;
        EXPECT_EQ(first->referenceCount(), 2u);
        EXPECT_TRUE(first == second);
    }
    EXPECT_EQ(deaths, 0);
    first = nullptr;
    EXPECT_EQ(deaths, 1);
    EXPECT_FALSE(first);
}

TEST(Reference, AMovedReferenceIsEmptyAndTheCountStays)
{
    int deaths = 0;
    Reference<Counted> first(new Counted(deaths));
    const Reference<Counted> second = std::move(first);
    EXPECT_EQ(second->referenceCount(), 1u);
    EXPECT_EQ(first.get(), nullptr); // NOLINT(bugprone-use-after-move): the state after a move is the promise
}

TEST(Reference, AssigningAReferenceToItselfKeepsTheObject)
{
    int deaths = 0;
    Reference<Counted> reference(new Counted(deaths));
    const Reference<Counted> &same = reference;
    reference = same;
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(reference->referenceCount(), 1u);
}

TEST(Reference, CopiesOnManyThreadsLeaveTheRightCount)
{
    int deaths = 0;
    const Reference<Counted> shared(new Counted(deaths));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&shared] {
            for (int k = 0; k < 1000; ++k)
                const Reference<Counted> copy = shared;
        });
    for (auto &thread : threads)
        thread.join();
    EXPECT_EQ(shared->referenceCount(), 1u);
    EXPECT_EQ(deaths, 0);
}
