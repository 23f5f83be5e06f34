#include "ToolLibrary/Interface/Private/ToolSourceSink/FilteredToolSource.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/FakeToolSource.h"
#include "support/LibraryFile.h"

#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char *missingTool =
    "EXPECTS:std::ranges::all_of(toolIds, [parent](const ToolId& id) -> bool { return parent->get(id).has_value(); })";

ToolId idOf(unsigned number)
{
    return ToolId(guidOf(number));
}

std::shared_ptr<RapidjsonToolLibrary> threeTools()
{
    return RapidjsonToolLibrary::fromString(libraryText({toolText(1), toolText(2), toolText(3)}),
                                            Varn::AbortableImpl());
}

std::vector<std::string> walk(const ToolSource &source)
{
    std::vector<std::string> texts;
    for (auto at = source.begin(); at != source.end(); ++at) {
        const std::unique_ptr<const Tool> tool = *at;
        texts.push_back(tool ? tool->toJson() : "nothing");
    }
    return texts;
}

} // namespace

TEST(FilteredToolSource, GivesTheToolsInTheOrderOfTheList)
{
    const Asserts asserts;
    const FilteredToolSource source(threeTools(), {idOf(3), idOf(1)});
    EXPECT_THAT(walk(source), ElementsAre(toolText(3), toolText(1)));
    EXPECT_THAT(source.getToolIds(), ElementsAre(idOf(3), idOf(1)));
    EXPECT_EQ(source.numberOfTools(), 2u);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(FilteredToolSource, KeepsAToolThatIsListedTwice)
{
    const FilteredToolSource source(threeTools(), {idOf(2), idOf(1), idOf(2)});
    EXPECT_THAT(walk(source), ElementsAre(toolText(2), toolText(1), toolText(2)));
    EXPECT_EQ(source.numberOfTools(), 3u);
    EXPECT_THAT(source.getToolIds(), ElementsAre(idOf(2), idOf(1), idOf(2)));
}

TEST(FilteredToolSource, HasOnlyWhatIsListed)
{
    const FilteredToolSource source(threeTools(), {idOf(2)});
    ASSERT_TRUE(source.get(idOf(2)).has_value());
    EXPECT_EQ((*source.get(idOf(2)))->toJson(), toolText(2));
    EXPECT_FALSE(source.get(idOf(1)).has_value()) << "the parent has it, the list does not";
    EXPECT_FALSE(source.get(idOf(9)).has_value());
    EXPECT_FALSE(source.get(ToolId(std::string())).has_value());
}

TEST(FilteredToolSource, WithAnEmptyListIsEmpty)
{
    const Asserts asserts;
    const FilteredToolSource source(threeTools(), {});
    EXPECT_TRUE(source.begin() == source.end());
    EXPECT_EQ(source.numberOfTools(), 0u);
    EXPECT_THAT(source.getToolIds(), IsEmpty());
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(FilteredToolSource, HasTheVersionOfItsParent)
{
    for (const int version : {1, 36, 99})
        EXPECT_EQ(FilteredToolSource(std::make_shared<FakeToolSource>(std::vector{toolText(1)}, version), {idOf(1)})
                      .getVersion(),
                  version);
}

TEST(FilteredToolSource, IsNeverWritten)
{
    const FilteredToolSource source(threeTools(), {idOf(2)});
    EXPECT_EQ(failureOf([&] { source.toJson(); }), "runtime_error: FilteredToolSource::toJson() is not implemented");
}

TEST(FilteredToolSource, KeepsItsParentAlive)
{
    auto parent = threeTools();
    const std::weak_ptr<ToolSource> watch = parent;
    {
        const FilteredToolSource source(std::move(parent), {idOf(2)});
        parent.reset();
        EXPECT_FALSE(watch.expired());
        EXPECT_THAT(walk(source), ElementsAre(toolText(2)));
    }
    EXPECT_TRUE(watch.expired());
}

TEST(FilteredToolSource, AToolOfTheWalkStandsAlone)
{
    auto source = std::make_unique<FilteredToolSource>(threeTools(), std::vector{idOf(2)});
    const std::unique_ptr<const Tool> tool = *source->begin();
    source.reset();
    EXPECT_EQ(tool->toJson(), toolText(2));
    EXPECT_EQ(tool->getToolId(), idOf(2));
}

TEST(FilteredToolSource, AListedToolThatTheParentLacksIsAProgrammingError)
{
    const Asserts asserts;
    const FilteredToolSource source(threeTools(), {idOf(1), idOf(9)});
    EXPECT_THAT(asserts.messages(), ElementsAre(missingTool));
}

TEST(FilteredToolSource, AToolThatTheParentHasLostIsAProgrammingErrorOfTheWalk)
{
    const auto parent = threeTools();
    const FilteredToolSource source(parent, {idOf(1), idOf(2)});
    ASSERT_TRUE(parent->removeTool(idOf(2)).has_value());
    const Asserts asserts;
    EXPECT_THAT(walk(source), ElementsAre(toolText(1), "nothing"));
    EXPECT_THAT(asserts.messages(), ElementsAre("maybeTool && *maybeTool"));
}

TEST(FilteredToolSource, OutsideOfTestsAMissingToolIsPassedOver)
{
    const FilteredToolSource source(threeTools(), {idOf(9), idOf(1)});
    EXPECT_EQ(source.numberOfTools(), 2u);
    EXPECT_FALSE(source.get(idOf(9)).has_value());
    EXPECT_THAT(walk(source), ElementsAre("nothing", toolText(1)));
}

TEST(FilteredToolSource, CanViewAView)
{
    const auto inner = std::make_shared<FilteredToolSource>(threeTools(), std::vector{idOf(3), idOf(2)});
    const FilteredToolSource outer(inner, {idOf(2), idOf(3)});
    EXPECT_THAT(walk(outer), ElementsAre(toolText(2), toolText(3)));
}
