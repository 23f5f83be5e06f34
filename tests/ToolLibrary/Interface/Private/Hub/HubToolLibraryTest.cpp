#include "ToolLibrary/Interface/Private/Hub/HubToolLibrary.h"

#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/FakePlatformLibraries.h"
#include "support/LibraryFile.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"
#include "platform/tool/Exception.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string noHubLine = "3 HubToolLibrary: Failed to get platform libraries interface. Error: down";

ToolId idOf(unsigned number)
{
    return ToolId(guidOf(number));
}

QVariantMap listed(const std::string &hubToolId, const std::string &guid)
{
    return {{"toolId", QString::fromStdString(hubToolId)}, {"guid", QString::fromStdString(guid)}};
}

/// The kind and text of a refusal; "done" where there is none.
std::string outcomeOf(const Ox::expected<void, ToolSinkError> &result)
{
    if (result)
        return "done";
    return failureOf([&] {
        using namespace Ox::HubLibrariesCache;
        const auto &failure = *result.error().innerException();
        if (const auto *conflict = dynamic_cast<const HubItemConflictError *>(&failure))
            throw *conflict;
        if (const auto *missing = dynamic_cast<const HubItemMissingError *>(&failure))
            throw *missing;
        if (const auto *hub = dynamic_cast<const Ox::HubLibrariesCache::Exception *>(&failure))
            throw *hub;
        throw dynamic_cast<const ToolMissing &>(failure);
    });
}

/// Descriptions of the tools of a walk; "-" for null.
std::vector<std::string> walk(const ToolSource &source)
{
    std::vector<std::string> tools;
    for (auto it = source.begin(); it != source.end(); ++it) {
        const auto tool = *it;
        tools.push_back(tool ? tool->getDescription() : "-");
    }
    return tools;
}

class HubToolLibraryTest : public testing::Test
{
protected:
    /// Puts tools with these numbers on the hub, each described by its number.
    std::unique_ptr<HubToolLibrary> libraryOf(const std::vector<unsigned> &numbers)
    {
        QList<QVariant> tools;
        for (const unsigned number : numbers) {
            const std::string description = R"("description":")" + std::to_string(number) + "\"";
            const std::string id = m_hub->put("lib", toolText(number, description));
            tools.append(listed(id, guidOf(number)));
        }
        return std::make_unique<HubToolLibrary>("lib", tools);
    }

    std::shared_ptr<FakePlatformLibraries> m_hub = std::make_shared<FakePlatformLibraries>();
    HubInUse m_use{m_hub};
};

/// Reaches what only libraries themselves may call.
struct InsideHubToolLibrary : HubToolLibrary {
    using HubToolLibrary::HubToolLibrary;
    using HubToolLibrary::sanitise;
};

} // namespace

TEST_F(HubToolLibraryTest, AnEmptyListIsALibraryWithoutTools)
{
    const HubToolLibrary library("lib", QList<QVariant>());
    EXPECT_EQ(library.numberOfTools(), 0u);
    EXPECT_TRUE(library.begin() == library.end());
    EXPECT_THAT(library.getToolIds(), IsEmpty());
    EXPECT_EQ(library.toJson(), R"({"data":[], "version":36})");
    EXPECT_EQ(library.toQVariantMap(), (QVariantMap{{"data", QVariantList()}, {"version", 36.0}}));
    EXPECT_THAT(m_hub->calls(), IsEmpty());
    EXPECT_THAT(m_use.log(), IsEmpty());
}

TEST_F(HubToolLibraryTest, AWalkFollowsTheListAndTheIdsTheGuids)
{
    const auto library = libraryOf({3, 1, 2});
    EXPECT_EQ(library->numberOfTools(), 3u);
    EXPECT_EQ(library->getVersion(), 36);
    EXPECT_THAT(walk(*library), ElementsAre("3", "1", "2"));
    EXPECT_THAT(library->getToolIds(), ElementsAre(idOf(1), idOf(2), idOf(3)));
    EXPECT_EQ((*library->get(idOf(2)))->getDescription(), "2");
    EXPECT_EQ(library->get(idOf(4)), std::nullopt);
}

TEST_F(HubToolLibraryTest, OfTwoListedToolsWithOneGuidTheFirstStays)
{
    const QList<QVariant> tools{listed("a", guidOf(1)), listed("b", guidOf(2)), listed("c", guidOf(1))};
    const std::string text = "Tools with duplicate GUIDs found: " + guidOf(1);
    {
        const HubToolLibrary library("lib", tools);
        EXPECT_EQ(library.numberOfTools(), 2u);
        EXPECT_THAT(m_use.log(), ElementsAre("3 HubToolLibrary: " + text));
        library.get(idOf(1));
        EXPECT_EQ(m_hub->calls().back(), "getTool a");
    }
    const Asserts asserts;
    const HubToolLibrary library("lib", tools);
    EXPECT_EQ(library.numberOfTools(), 2u);
    EXPECT_THAT(asserts.messages(), ElementsAre(text));
}

TEST_F(HubToolLibraryTest, AListedToolLacksNeitherItsIdNorItsGuid)
{
    const QList<QVariant> tools{QVariantMap{{"guid", "x"}}, QVariantMap{{"toolId", "a"}}, 5};
    const Asserts asserts;
    const HubToolLibrary library("lib", tools);
    EXPECT_THAT(asserts.messages(),
                ElementsAre("Expected Hub tool to contain ID.", "Expected Hub tool to contain Guid.",
                            testing::StartsWith("Tools with duplicate GUIDs found: "),
                            "Expected Hub tool to contain ID.", "Expected Hub tool to contain Guid.",
                            testing::StartsWith("Tools with duplicate GUIDs found: ")));
    EXPECT_EQ(library.numberOfTools(), 1u) << "they share the null GUID";
}

TEST_F(HubToolLibraryTest, ATextIsJoinedFromTheToolsInTheOrderOfTheirGuids)
{
    const auto library = libraryOf({2, 1});
    EXPECT_EQ(library->toJson(), R"({"data":[{"description":"1","guid":")" + guidOf(1) +
                                     R"("},{"description":"2","guid":")" + guidOf(2) + R"("}], "version":36})");
    const QVariantList data = library->toQVariantMap().value("data").toList();
    ASSERT_EQ(data.size(), 2);
    EXPECT_EQ(data[1].toMap().value("description"), "2");
}

TEST_F(HubToolLibraryTest, AToolThatTheHubLostIsNullInAWalkAndLeftOutOfATextWithALineEach)
{
    const auto library = libraryOf({1, 2, 3});
    m_hub->drop("tool-2");
    const std::string line = "3 HubToolLibrary: Failed to find tool in cache: tool-2. Error: tool-2 is gone";
    EXPECT_THAT(walk(*library), ElementsAre("1", "-", "3"));
    EXPECT_EQ(library->get(idOf(2)), std::nullopt);
    EXPECT_EQ(library->toQVariantMap().value("data").toList().size(), 2);
    EXPECT_THAT(m_use.log(), ElementsAre(line, line, line));
    EXPECT_EQ(library->numberOfTools(), 3u);

    m_hub->drop("tool-3"); // nothing is left of the comma behind the first
    EXPECT_EQ(JsonConvert::toQVariantMap(library->toJson()).value("data").toList().size(), 1);
}

TEST_F(HubToolLibraryTest, AnIndexBeyondTheEndAssertsAndIsNull)
{
    const auto library = libraryOf({1, 2});
    auto it = library->begin();
    ++it;
    ASSERT_TRUE(library->removeTool(idOf(1)));
    EXPECT_EQ(*it, nullptr);
    const Asserts asserts;
    EXPECT_EQ(*it, nullptr);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:index < numberOfTools()"));
}

TEST_F(HubToolLibraryTest, ACreatedToolIsTheLastAndGoesToTheHubAsItIs)
{
    const auto library = libraryOf({5});
    const std::string json = toolText(1, R"( "description" : "new")");
    EXPECT_EQ(outcomeOf(library->createTool(idOf(1), Tool(json))), "done");
    EXPECT_EQ(m_hub->calls().back(), "createTool lib " + json);
    EXPECT_THAT(walk(*library), ElementsAre("5", "new"));
    EXPECT_EQ((*library->get(idOf(1)))->getDescription(), "new");
}

TEST_F(HubToolLibraryTest, AToolWithATakenGuidGetsANewOneAndAnAssertion)
{
    const auto library = libraryOf({1});
    const Asserts asserts;
    EXPECT_EQ(outcomeOf(library->createTool(idOf(1), Tool(toolText(1, R"("description":"copy")")))), "done");
    EXPECT_THAT(asserts.messages(), ElementsAre("Tool already exists!"));
    EXPECT_THAT(walk(*library), ElementsAre("1", "copy"));
    const QVariantMap copy = JsonConvert::toQVariantMap((*++library->begin())->toJson());
    EXPECT_EQ(copy.value("reference_guid").toString().toStdString(), guidOf(1));
    EXPECT_TRUE(copy.contains("last_modified"));
    const ToolId id(copy.value("guid").toString().toStdString());
    EXPECT_FALSE(id.guid().isNull());
    EXPECT_EQ((*library->get(id))->getDescription(), "copy");
    EXPECT_EQ((*library->get(idOf(1)))->getDescription(), "1");
}

TEST_F(HubToolLibraryTest, AnUpdateWritesTheGuidAndTakesTheNewHubId)
{
    const auto library = libraryOf({1, 2});
    EXPECT_EQ(outcomeOf(library->updateTool(idOf(1), Tool(toolText(9, R"("description":"better")")))), "done");
    const std::string held = m_hub->held("tool-1+");
    ASSERT_EQ(held.substr(0, 4), "lib ");
    const QVariantMap map = JsonConvert::toQVariantMap(held.substr(4));
    EXPECT_EQ(map.value("guid").toString().toStdString(), guidOf(1));
    EXPECT_EQ(map.value("reference_guid").toString().toStdString(), guidOf(9));
    EXPECT_THAT(walk(*library), ElementsAre("better", "2"));
    EXPECT_EQ(outcomeOf(library->removeTool(idOf(1))), "done");
    EXPECT_EQ(m_hub->calls().back(), "removeTool tool-1+");
}

TEST_F(HubToolLibraryTest, BehindARemovedToolTheOthersMoveUp)
{
    const auto library = libraryOf({5, 4, 3, 2, 1});
    EXPECT_EQ(outcomeOf(library->removeTool(idOf(3))), "done");
    EXPECT_THAT(walk(*library), ElementsAre("5", "4", "2", "1"));
    for (const unsigned number : {1u, 2u, 4u, 5u})
        EXPECT_EQ((*library->get(idOf(number)))->getDescription(), std::to_string(number));
    EXPECT_EQ(library->get(idOf(3)), std::nullopt);
    EXPECT_EQ(outcomeOf(library->createTool(idOf(6), Tool(toolText(6, R"("description":"6")")))), "done");
    EXPECT_THAT(walk(*library), ElementsAre("5", "4", "2", "1", "6"));
}

TEST_F(HubToolLibraryTest, ASyncAsksTheHubAndChangesNothing)
{
    const auto library = libraryOf({1, 2});
    EXPECT_EQ(outcomeOf(library->syncTool(idOf(2))), "done");
    EXPECT_EQ(m_hub->calls().back(), "syncTool tool-2");
    EXPECT_EQ(library->numberOfTools(), 2u);
}

TEST_F(HubToolLibraryTest, ASyncOfAToolThatVanishedTakesItOut)
{
    const auto library = libraryOf({1, 2, 3});
    m_hub->drop("tool-1");
    EXPECT_EQ(outcomeOf(library->syncTool(idOf(1))), "HubItemMissingError: tool-1 is gone");
    EXPECT_THAT(walk(*library), ElementsAre("2", "3"));
    EXPECT_EQ((*library->get(idOf(3)))->getDescription(), "3");
    EXPECT_EQ(outcomeOf(library->syncTool(idOf(1))), "ToolMissing: Tool " + guidOf(1) + " does not exist!");
}

TEST_F(HubToolLibraryTest, AnUnknownIdIsAMissingTool)
{
    const auto library = libraryOf({1});
    const std::string missing = "ToolMissing: Tool " + guidOf(7) + " does not exist!";
    EXPECT_EQ(outcomeOf(library->updateTool(idOf(7), Tool(toolText(7)))), missing);
    EXPECT_EQ(outcomeOf(library->removeTool(idOf(7))), missing);
    EXPECT_EQ(outcomeOf(library->syncTool(idOf(7))), missing);
    EXPECT_THAT(m_hub->calls(), IsEmpty());
    EXPECT_EQ(library->numberOfTools(), 1u);
}

TEST_F(HubToolLibraryTest, AFailureOfTheHubIsTheRefusalAndLeavesTheLibrary)
{
    const auto library = libraryOf({1, 2});
    using Conflict = Ox::HubLibrariesCache::HubItemConflictError;
    m_hub->failAt("createTool", "full");
    m_hub->failAt<Conflict>("updateTool", "newer");
    m_hub->failAt("removeTool", "locked");
    m_hub->failAt("syncTool", "offline");
    EXPECT_EQ(outcomeOf(library->createTool(idOf(3), Tool(toolText(3)))), "Exception: full");
    EXPECT_EQ(outcomeOf(library->updateTool(idOf(1), Tool(toolText(1)))), "HubItemConflictError: newer");
    EXPECT_EQ(outcomeOf(library->removeTool(idOf(1))), "Exception: locked");
    EXPECT_EQ(outcomeOf(library->syncTool(idOf(1))), "Exception: offline");
    EXPECT_EQ(library->removeTool(idOf(1)).error().translatedWhat(), L"translated locked");
    EXPECT_THAT(walk(*library), ElementsAre("1", "2"));

    m_hub->recover();
    const Asserts asserts; // the GUID is free again
    EXPECT_EQ(outcomeOf(library->createTool(idOf(3), Tool(toolText(3)))), "done");
    EXPECT_THAT(asserts.messages(), IsEmpty());
    EXPECT_TRUE(library->get(idOf(3)));
}

TEST_F(HubToolLibraryTest, ALibraryIsNeverRepairedHere)
{
    InsideHubToolLibrary library("lib", QList<QVariant>());
    EXPECT_EQ(failureOf([&] { library.sanitise(); }), "Exception: Not implemented yet!");
}

TEST(HubToolLibraryWithoutHub, ReadsGiveNothingAndALine)
{
    const HubInUse use("down");
    const HubToolLibrary library("lib", QList<QVariant>{listed("a", guidOf(1))});
    EXPECT_THAT(walk(library), ElementsAre("-"));
    EXPECT_EQ(library.get(idOf(1)), std::nullopt);
    EXPECT_EQ(library.toJson(), R"({"data":[], "version":36})");
    EXPECT_THAT(use.log(), ElementsAre(noHubLine, noHubLine, noHubLine));
    EXPECT_EQ(library.numberOfTools(), 1u);

    const Asserts asserts;
    walk(library);
    library.get(idOf(1));
    library.toJson();
    EXPECT_THAT(asserts.messages(), ElementsAre("down", "down")) << "a text is not worth one";
}

TEST(HubToolLibraryWithoutHub, WritesAreRefused)
{
    const HubInUse use("down");
    HubToolLibrary library("lib", QList<QVariant>{listed("a", guidOf(1))});
    EXPECT_EQ(outcomeOf(library.createTool(idOf(2), Tool(toolText(2)))), "Exception: down");
    EXPECT_EQ(outcomeOf(library.updateTool(idOf(1), Tool(toolText(1)))), "Exception: down");
    EXPECT_EQ(outcomeOf(library.removeTool(idOf(1))), "Exception: down");
    EXPECT_EQ(outcomeOf(library.syncTool(idOf(1))), "Exception: down");
    EXPECT_THAT(library.getToolIds(), ElementsAre(idOf(1)));
    EXPECT_THAT(use.log(), IsEmpty());
}

TEST(HubToolLibraryWithoutHub, AHubThatIsNotConfiguredRefusesWritesAndLosesNoTool)
{
    HubToolLibrary library("lib", QList<QVariant>{listed("a", guidOf(1))});
    EXPECT_EQ(outcomeOf(library.createTool(idOf(2), Tool(toolText(2)))), "Exception: No hub is configured");
    EXPECT_EQ(outcomeOf(library.syncTool(idOf(1))), "Exception: No hub is configured");
    EXPECT_EQ(library.numberOfTools(), 1u);
}
