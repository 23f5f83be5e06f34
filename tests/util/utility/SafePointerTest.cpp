#include "util/utility/SafePointer.h"
#include "support/Asserts.h"

#include <gmock/gmock.h>

using namespace Varn;
using testing::ElementsAre;

namespace {

struct Target : SafePointerTarget {
    int value = 7;
};

} // namespace

TEST(SafePointer, ReachesItsTargetWhileThatLives)
{
    Target target;
    const SafePointer<Target> pointer(&target);
    EXPECT_TRUE(pointer.isValid());
    EXPECT_EQ(pointer->value, 7);
    EXPECT_EQ(&*pointer, &target);
}

TEST(SafePointer, BecomesNullWithTheDeathOfItsTarget)
{
    auto target = std::make_unique<Target>();
    const SafePointer<Target> pointer(target.get());
    const SafePointer<Target> copy = pointer;
    target.reset();
    EXPECT_FALSE(pointer);
    EXPECT_EQ(copy.get(), nullptr);
    EXPECT_TRUE(pointer == SafePointer<Target>());
}

TEST(SafePointer, FollowingANullOneRaisesAndReportsWhileTesting)
{
    const SafePointer<Target> pointer;
    EXPECT_THROW(pointer->value, NullPointerException);

    const TestSupport::Asserts asserts;
    EXPECT_THROW(*pointer, NullPointerException);
    EXPECT_THAT(asserts.messages(), ElementsAre("object"));
}

TEST(SafePointer, ACopiedTargetHasALifeOfItsOwn)
{
    auto target = std::make_unique<Target>();
    const Target copy = *target;
    const SafePointer<const Target> pointer(&copy);
    target.reset();
    EXPECT_TRUE(pointer.isValid());
}
