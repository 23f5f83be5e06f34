#include "util/utility/Validified.h"
#include "support/Asserts.h"

#include <gmock/gmock.h>

using namespace Varn;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Validified, AValueIsValid)
{
    const TestSupport::Asserts asserts;
    const Validified<int> five(5);
    EXPECT_TRUE(five.isValid());
    EXPECT_EQ(five.value(), 5);
    EXPECT_EQ(five.valueOr(9), 5);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(Validified, ReadingAnInvalidOneReportsAndGivesTheDefault)
{
    const TestSupport::Asserts asserts;
    const Validified<int> nothing;
    EXPECT_FALSE(nothing);
    EXPECT_EQ(nothing.valueOr(9), 9);
    EXPECT_THAT(asserts.messages(), IsEmpty());
    EXPECT_EQ(nothing.value(), 0);
    EXPECT_THAT(asserts.messages(), ElementsAre("m_valid"));
}

TEST(Validified, OutsideTestsAReadOfAnInvalidOneIsSilent)
{
    const Validified<int> nothing;
    EXPECT_EQ(*nothing, 0);
}
