#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"
#include "support/Asserts.h"
#include "support/FakeToolSource.h"
#include "support/LibraryFile.h"
#include "support/StopAtAssert.h"
#include "support/VirtualTable.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using Iterator = ToolSource::const_iterator;

namespace {

const std::vector<std::string> threeTools{toolText(1), toolText(2), toolText(3)};

std::vector<std::string> walk(const ToolSource &source)
{
    std::vector<std::string> texts;
    for (Iterator at = source.begin(); at != source.end(); ++at)
        texts.push_back((*at)->toJson());
    return texts;
}

} // namespace

TEST(ToolSource, TheOperationsStandInTheirSettledOrder)
{
    EXPECT_EQ(slotOf(&JSONSerializable::toJson), 0u);
    EXPECT_EQ(slotOf(&ToolSource::toJson), 0u); // the destructor behind it takes two
    EXPECT_EQ(slotOf(&ToolSource::get), 3u);
    EXPECT_EQ(slotOf(&ToolSource::begin), 4u);
    EXPECT_EQ(slotOf(&ToolSource::end), 5u);
    EXPECT_EQ(slotOf(&ToolSource::numberOfTools), 6u);
    EXPECT_EQ(slotOf(&ToolSource::getToolIds), 7u);
    EXPECT_EQ(slotOf(&ToolSource::getVersion), 8u);
}

TEST(ToolSource, AnIteratorIsAPointerAndTwoNumbers)
{
    EXPECT_EQ(sizeof(Iterator), sizeof(void *) + 2 * sizeof(std::uint32_t));
}

TEST(ToolSource, AWalkGivesEveryToolInOrder)
{
    const FakeToolSource source(threeTools);
    const Asserts asserts;
    EXPECT_EQ(walk(source), threeTools);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolSource, AnEmptySourceEndsWhereItBegins)
{
    const FakeToolSource source;
    const Asserts asserts;
    EXPECT_TRUE(source.begin() == source.end());
    EXPECT_TRUE(Iterator(&source) == Iterator());
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolSource, EndsAreEqualWhateverSourceTheyCameFrom)
{
    const FakeToolSource one(threeTools);
    const FakeToolSource other({toolText(9)});
    Iterator walked = other.begin();
    ++walked;
    const Asserts asserts;
    EXPECT_TRUE(one.end() == other.end());
    EXPECT_TRUE(walked == one.end());
    EXPECT_TRUE(one.end() == walked);
    EXPECT_TRUE(Iterator() == walked);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolSource, AnEndDiffersFromEveryLiveIterator)
{
    const FakeToolSource one(threeTools);
    const FakeToolSource other({toolText(9)});
    const Asserts asserts;
    EXPECT_FALSE(one.end() == one.begin());
    EXPECT_FALSE(one.begin() == one.end());
    EXPECT_FALSE(other.end() == one.begin());
    EXPECT_FALSE(one.begin() == other.end());
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolSource, LiveIteratorsAreEqualAtTheSamePlace)
{
    const FakeToolSource source(threeTools);
    Iterator moved = source.begin();
    EXPECT_TRUE(moved == source.begin());
    ++moved;
    EXPECT_FALSE(moved == source.begin());
    EXPECT_TRUE(moved != source.begin());
    EXPECT_TRUE(moved == ++source.begin());
}

TEST(ToolSource, LiveIteratorsOfTwoSourcesAreAProgrammingErrorAndCompareByPlace)
{
    const FakeToolSource one(threeTools);
    const FakeToolSource other({toolText(8), toolText(9)});
    {
        const Asserts asserts;
        EXPECT_TRUE(one.begin() == other.begin());
        EXPECT_FALSE(++one.begin() == other.begin());
        EXPECT_THAT(asserts.messages(), ElementsAre("Mismatched iterator parents", "Mismatched iterator parents"));
    }
    int reports = 0;
    auto previous = _debug::setAssertHandler([&](auto, auto, int) { ++reports; });
    EXPECT_TRUE(one.begin() == other.begin());
    EXPECT_FALSE(++one.begin() == other.begin());
    _debug::setAssertHandler(std::move(previous));
    EXPECT_EQ(reports, 0) << "only a process that is testing hears of it";
}

TEST(ToolSource, TheEndHasNoTool)
{
    const FakeToolSource source(threeTools);
    EXPECT_EQ(stoppingAssert([&] { *source.end(); }), "EXPECTS:!isEnd()");
    EXPECT_EQ(stoppingAssert([&] { *source.begin(); }), "");
}

TEST(ToolSource, EachLookMakesAToolOfItsOwn)
{
    const FakeToolSource source(threeTools);
    const Iterator at = source.begin();
    const std::unique_ptr<const Tool> first = *at;
    const std::unique_ptr<const Tool> second = *at;
    EXPECT_NE(first, second);
    EXPECT_EQ(first->toJson(), second->toJson());
    EXPECT_EQ(source.walked(), 2);
}

TEST(ToolSource, APreIncrementGivesTheIteratorItself)
{
    const FakeToolSource source(threeTools);
    Iterator at = source.begin();
    EXPECT_EQ(&++at, &at);
    EXPECT_EQ((*at)->toJson(), toolText(2));
    ++at;
    EXPECT_FALSE(at == source.end());
    ++at;
    EXPECT_TRUE(at == source.end());
    ++at; // an end stays one
    EXPECT_TRUE(at == source.end());
}

TEST(ToolSource, APostIncrementStaysWhereItIs)
{
    const FakeToolSource source(threeTools);
    Iterator at = ++source.begin();
    const Iterator before = at++;
    EXPECT_TRUE(before == at);
    EXPECT_EQ((*before)->toJson(), toolText(2));
    EXPECT_EQ((*at)->toJson(), toolText(2));
    Iterator end = source.end();
    EXPECT_TRUE(end++ == source.end());
    EXPECT_TRUE(end == source.end());
}

TEST(ToolSource, APostIncrementBySomeStepsAsFarAndGivesTheStateBefore)
{
    const FakeToolSource source(threeTools);
    Iterator at = source.begin();
    EXPECT_EQ((*at.operator++(2))->toJson(), toolText(1));
    EXPECT_EQ((*at)->toJson(), toolText(3));
    EXPECT_EQ((*at.operator++(1))->toJson(), toolText(3));
    EXPECT_TRUE(at == source.end());
    at = source.begin();
    at.operator++(1000);
    EXPECT_TRUE(at == source.end());
}

TEST(ToolSource, AWalkSeesTheSizeThatItBeganWith)
{
    FakeToolSource source({toolText(1)});
    Iterator at = source.begin();
    source.texts.push_back(toolText(2));
    ++at;
    EXPECT_TRUE(at == source.end());
    EXPECT_THAT(walk(source), ElementsAre(toolText(1), toolText(2)));
}
