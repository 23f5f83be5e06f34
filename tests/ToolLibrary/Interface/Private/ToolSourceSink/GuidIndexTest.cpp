#include "ToolLibrary/Interface/Private/ToolSourceSink/GuidIndex.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

using Varn::ToolLibraries::GuidIndex;

namespace {

QUuid guid(unsigned number)
{
    return QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

/// The index must answer as a search through the list does.
void expectSame(const GuidIndex &index, const std::vector<unsigned> &list, unsigned highest)
{
    for (unsigned number = 1; number <= highest; ++number) {
        const auto place = std::ranges::find(list, number);
        const auto found = index.find(guid(number));
        ASSERT_EQ(found.has_value(), place != list.end()) << number;
        if (found) {
            ASSERT_EQ(*found, static_cast<std::size_t>(place - list.begin())) << number;
        }
    }
}

} // namespace

TEST(GuidIndex, FindsNothingInAnEmptyList)
{
    const GuidIndex index;
    EXPECT_FALSE(index.find(guid(1)).has_value());
    EXPECT_FALSE(index.find(QUuid()).has_value());
}

TEST(GuidIndex, PlacesFollowTheOrderOfAppends)
{
    GuidIndex index;
    EXPECT_TRUE(index.append(guid(7)));
    EXPECT_TRUE(index.append(guid(3)));
    EXPECT_TRUE(index.append(guid(5)));
    EXPECT_EQ(index.find(guid(7)), 0u);
    EXPECT_EQ(index.find(guid(3)), 1u);
    EXPECT_EQ(index.find(guid(5)), 2u);
}

TEST(GuidIndex, ARepeatedGuidChangesNothing)
{
    GuidIndex index;
    index.append(guid(1));
    index.append(guid(2));
    EXPECT_FALSE(index.append(guid(1)));
    EXPECT_EQ(index.find(guid(1)), 0u);
    EXPECT_TRUE(index.append(guid(3)));
    EXPECT_EQ(index.find(guid(3)), 2u);
}

TEST(GuidIndex, ARemovalClosesTheGap)
{
    GuidIndex index;
    for (unsigned number = 1; number <= 4; ++number)
        index.append(guid(number));
    index.remove(guid(2), 1);
    expectSame(index, {1, 3, 4}, 5);
    index.remove(guid(1), 0);
    expectSame(index, {3, 4}, 5);
    index.remove(guid(4), 1);
    expectSame(index, {3}, 5);
    EXPECT_TRUE(index.append(guid(2)));
    expectSame(index, {3, 2}, 5);
}

TEST(GuidIndex, TheNullGuidIsOneLikeAnyOther)
{
    GuidIndex index;
    EXPECT_TRUE(index.append(QUuid()));
    EXPECT_FALSE(index.append(QUuid()));
    EXPECT_EQ(index.find(QUuid()), 0u);
}

TEST(GuidIndex, StartsOverAfterAClear)
{
    GuidIndex index;
    index.append(guid(1));
    index.append(guid(2));
    index.clear();
    expectSame(index, {}, 3);
    EXPECT_TRUE(index.append(guid(2)));
    expectSame(index, {2}, 3);
}

TEST(GuidIndex, ACopyIsIndependent)
{
    GuidIndex index;
    index.append(guid(1));
    GuidIndex copy = index;
    copy.append(guid(2));
    copy.remove(guid(1), 0);
    expectSame(index, {1}, 3);
    expectSame(copy, {2}, 3);
}

TEST(GuidIndex, AnswersAsASearchThroughTheListAfterAnyChanges)
{
    std::mt19937 random(5);
    GuidIndex index;
    std::vector<unsigned> list;
    for (int step = 0; step < 3000; ++step) {
        const unsigned number = 1 + random() % 40;
        const auto place = std::ranges::find(list, number);
        if (random() % 2 == 0) {
            ASSERT_EQ(index.append(guid(number)), place == list.end());
            if (place == list.end())
                list.push_back(number);
        } else if (place != list.end()) {
            index.remove(guid(number), static_cast<std::size_t>(place - list.begin()));
            list.erase(place);
        }
        expectSame(index, list, 40);
    }
}
