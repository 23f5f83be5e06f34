#include "util/utility/Assert.h"
#include "support/Asserts.h"

#include <gmock/gmock.h>

#include <thread>

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// Leaves the switch and the handler as they were.
class AssertTest : public testing::Test
{
protected:
    AssertTest() : m_wasTesting(_debug::isTesting()), m_previous(_debug::setAssertHandler({})) {}
    ~AssertTest() override
    {
        _debug::setTesting(m_wasTesting);
        _debug::setAssertHandler(m_previous);
    }

private:
    bool m_wasTesting;
    _debug::AssertHandler m_previous;
};

} // namespace

TEST_F(AssertTest, IsNotTestingUnlessATestSaysSo)
{
    EXPECT_FALSE(_debug::isTesting());
    {
        const TestSupport::Asserts asserts;
        EXPECT_TRUE(_debug::isTesting());
    }
    EXPECT_FALSE(_debug::isTesting());
}

TEST_F(AssertTest, EachMacroReportsItsConditionInItsOwnForm)
{
    const TestSupport::Asserts asserts;
    const int size = 0;
    VARN_ASSERT(size > 1);
    VARN_EXPECTS(size > 2);
    VARN_ENSURES(size > 3);
    VARN_ASSERT_TEXT(size > 4, "size is small");
    VARN_FAIL("Restricted flow");
    EXPECT_THAT(asserts.messages(),
                ElementsAre("size > 1", "EXPECTS:size > 2", "ENSURES:size > 3", "size is small", "Restricted flow"));
}

TEST_F(AssertTest, AConditionThatHoldsReportsNothing)
{
    const TestSupport::Asserts asserts;
    VARN_ASSERT(true);
    VARN_EXPECTS(1 + 1 == 2);
    VARN_ENSURES(!false);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(AssertTest, AConditionMayHoldACommaWithoutParentheses)
{
    const TestSupport::Asserts asserts;
    VARN_ASSERT(std::pair<int, int>(1, 2).first == 2);
    EXPECT_THAT(asserts.messages(), ElementsAre("std::pair<int, int>(1, 2).first == 2"));
}

TEST_F(AssertTest, WithoutTestingNoHandlerIsCalledAndNoConditionEvaluated)
{
    int calls = 0;
    int evaluations = 0;
    _debug::setAssertHandler([&calls](std::string_view, std::string_view, int) { ++calls; });
    VARN_ASSERT(++evaluations < 0);
    VARN_EXPECTS(++evaluations < 0);
    VARN_FAIL("never");
    _debug::failTestForAssert("never", "file.cpp", 1);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(evaluations, 0);

    _debug::setTesting(true);
    VARN_ASSERT(++evaluations < 0);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(evaluations, 1);
}

TEST_F(AssertTest, AHandlerLearnsThePlace)
{
    _debug::setTesting(true);
    std::string place;
    int at = 0;
    _debug::setAssertHandler([&](std::string_view, std::string_view source, int line) {
        place = source;
        at = line;
    });
    VARN_ASSERT(false);
    EXPECT_EQ(at, __LINE__ - 1);
    EXPECT_THAT(place, EndsWith("AssertTest.cpp"));
}

TEST_F(AssertTest, InstallingAHandlerGivesBackTheOneBefore)
{
    _debug::setTesting(true);
    std::vector<int> calls;
    const auto handler = [&calls](int number) {
        return [&calls, number](std::string_view, std::string_view, int) { calls.push_back(number); };
    };
    EXPECT_FALSE(_debug::setAssertHandler(handler(1)));
    auto first = _debug::setAssertHandler(handler(2));
    ASSERT_TRUE(first);
    VARN_FAIL("to the second");
    _debug::setAssertHandler(std::move(first));
    VARN_FAIL("to the first");
    EXPECT_THAT(calls, ElementsAre(2, 1));
}

TEST_F(AssertTest, WithoutAHandlerAFailureGoesToTheStandardError)
{
    _debug::setTesting(true);
    testing::internal::CaptureStderr();
    VARN_ASSERT(2 < 1);
    const std::string output = testing::internal::GetCapturedStderr();
    EXPECT_THAT(output, HasSubstr("AssertTest.cpp:"));
    EXPECT_THAT(output, EndsWith(": assertion failed: 2 < 1\n"));
}

TEST_F(AssertTest, AHandlerMayReplaceItself)
{
    _debug::setTesting(true);
    int calls = 0;
    _debug::setAssertHandler([&calls](std::string_view, std::string_view, int) {
        ++calls;
        _debug::setAssertHandler([&calls](std::string_view, std::string_view, int) { calls += 10; });
    });
    VARN_FAIL("first");
    VARN_FAIL("second");
    EXPECT_EQ(calls, 11);
}

TEST_F(AssertTest, FailuresOfManyThreadsAllArrive)
{
    const TestSupport::Asserts asserts;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int n = 0; n < 500; ++n)
                VARN_ASSERT(n < 0);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(asserts.messages().size(), 2000U);
}
