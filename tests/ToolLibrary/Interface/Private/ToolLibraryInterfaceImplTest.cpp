#include "ToolLibrary/Interface/Private/ToolLibraryInterfaceImpl.h"
#include "support/Asserts.h"
#include "support/EngineTest.h"
#include "support/Failure.h"
#include "support/StopAtAssert.h"
#include "support/VirtualTable.h"

#include "platform/core/ToolSpecification.h"
#include "platform/core/VarnApplication.h"
#include "platform/core/VarnDocument.h"

#include <gmock/gmock.h>

#include <future>
#include <thread>

using namespace TestSupport;
using namespace Varn;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using NodeType = LibraryMetadata::Type;

namespace {

constexpr const char *notYet = "NotSupportedError: Not yet supported";

using InterfaceOverACache = EngineTest<>;

std::vector<std::string> textsOf(const std::vector<LibraryTool> &tools)
{
    std::vector<std::string> texts;
    for (const LibraryTool &tool : tools)
        texts.push_back(tool.toJson());
    return texts;
}

std::string libraryTool(const wchar_t *url, const std::string &tool)
{
    return R"({"libraryId":")" + QString::fromWCharArray(url).toStdString() + R"(","tool":)" + tool + "}";
}

/// Runs \a call on a thread of its own while this one serves as the main thread.
template <typename Call>
auto onAnotherThread(const Call &call)
{
    auto result = std::async(std::launch::async, call);
    while (result.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready)
        VarnApplication::pumpMainThread();
    return result.get();
}

} // namespace

TEST(ToolLibraryInterfaceImpl, TheOperationsStandInTheirSettledOrder)
{
    using I = ToolLibraryInterface;
    const std::pair<const char *, std::size_t> operations[] = {
        {"initialLoadTask", slotOf(&I::initialLoadTask)},
        {"toolLibrariesIndex", slotOf(&I::toolLibrariesIndex)},
        {"library", slotOf(&I::library)},
        {"fetchTools", slotOf(&I::fetchTools)},
        {"fetchUnusedTools", slotOf(&I::fetchUnusedTools)},
        {"createLibraries", slotOf(&I::createLibraries)},
        {"createHubLibrary", slotOf(&I::createHubLibrary)},
        {"deleteLibraries", slotOf(&I::deleteLibraries)},
        {"duplicateLibraries", slotOf(&I::duplicateLibraries)},
        {"pasteNodes", slotOf(&I::pasteNodes)},
        {"editLibraries", slotOf(&I::editLibraries)},
        {"createFolders", slotOf(&I::createFolders)},
        {"deleteFolders", slotOf(&I::deleteFolders)},
        {"editFolders", slotOf(&I::editFolders)},
        {"exportLibraries", slotOf(&I::exportLibraries)},
        {"importLibraries", slotOf(&I::importLibraries)},
        {"importConfirmedLibraries", slotOf(&I::importConfirmedLibraries)},
        {"importTools", slotOf(&I::importTools)},
        {"importConfirmedTools", slotOf(&I::importConfirmedTools)},
        {"import3DTool(path)", slotOf<Import3DToolResult (I::*)(const std::wstring &)>(&I::import3DTool)},
        {"import3DTool()", slotOf<Import3DToolResult (I::*)()>(&I::import3DTool)},
        {"createTools", slotOf(&I::createTools)},
        {"deleteTools", slotOf(&I::deleteTools)},
        {"editTools", slotOf(&I::editTools)},
        {"mergeTools", slotOf(&I::mergeTools)},
        {"selectToolForOperation", slotOf(&I::selectToolForOperation)},
        {"editToolPageOnlyModeSettings", slotOf(&I::editToolPageOnlyModeSettings)},
        {"renderTool", slotOf(&I::renderTool)},
        {"reportError", slotOf(&I::reportError)},
        {"openExternalLink", slotOf(&I::openExternalLink)},
        {"getActiveDocumentUrl", slotOf(&I::getActiveDocumentUrl)},
        {"getDocumentUrl", slotOf(&I::getDocumentUrl)},
        {"findToolById(id)", slotOf<std::optional<const LibraryTool> (I::*)(ToolId)>(&I::findToolById)},
        {"findToolById(library, id)",
         slotOf<std::optional<const LibraryTool> (I::*)(ToolLibraryLocator, ToolId)>(&I::findToolById)},
        {"getAllLibraryUrls", slotOf(&I::getAllLibraryUrls)},
        {"getToolsFromLibrary", slotOf(&I::getToolsFromLibrary)},
        {"getNextAvailableToolNumber", slotOf(&I::getNextAvailableToolNumber)},
        {"getToolSelectionType", slotOf(&I::getToolSelectionType)},
        {"getToolSpecificationFromJson", slotOf(&I::getToolSpecificationFromJson)},
        {"getLatestTools", slotOf(&I::getLatestTools)},
        {"refreshHubLibraries", slotOf(&I::refreshHubLibraries)},
        {"getHubLastSyncTime", slotOf(&I::getHubLastSyncTime)},
        {"setActiveDocument", slotOf(&I::setActiveDocument)},
        {"refreshDocumentLibraries", slotOf(&I::refreshDocumentLibraries)},
    };
    std::size_t slot = 0;
    for (const auto &[name, found] : operations)
        EXPECT_EQ(found, slot++) << name;
}

TEST(ToolLibraryInterfaceImpl, IsMadeOfThreeServices)
{
    const auto mode = std::make_shared<ManageModeConfiguration>();
    const auto cache = std::make_shared<FakeLibraryCache>();
    const auto prompts = std::make_shared<APIUserInteraction>();
    const Asserts asserts;
    {
        const ToolLibraryInterfaceImpl engine(mode, cache, prompts);
        EXPECT_TRUE(cache->documents());
        EXPECT_GT(mode.use_count(), 1);
        EXPECT_GT(prompts.use_count(), 1);
        EXPECT_THAT(asserts.messages(), IsEmpty());
    }
    EXPECT_EQ(mode.use_count(), 1);
    const ToolLibraryInterfaceImpl unmoded(nullptr, cache, prompts);
    const ToolLibraryInterfaceImpl promptless(mode, cache, nullptr);
    EXPECT_THAT(asserts.messages(), ElementsAre("!!m_modeConfiguration", "!!m_userInteraction"));
}

TEST(ToolLibraryInterfaceImpl, WithoutACacheItStops)
{
    EXPECT_EQ(stoppingAssert([] {
                  ToolLibraryInterfaceImpl(std::make_shared<ManageModeConfiguration>(), nullptr,
                                           std::make_shared<APIUserInteraction>());
              }),
              "!!m_cachedLibraries");
}

TEST(ToolLibraryInterfaceImpl, CanBeMadeWithAnActiveDocument)
{
    const auto document = VarnDocument::create(L"Bracket");
    const auto cache = std::make_shared<FakeLibraryCache>();
    const Asserts asserts;
    const ToolLibraryInterfaceImpl engine(document.get(), std::make_shared<ManageModeConfiguration>(), cache,
                                          std::make_shared<APIUserInteraction>());
    ASSERT_TRUE(engine.getActiveDocumentUrl().has_value());
    EXPECT_EQ(*engine.getActiveDocumentUrl(), engine.getDocumentUrl(*document));
    EXPECT_EQ(cache->documents()->active().get(), document.get());
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolLibraryInterfaceImpl, TakesANewModeButNoNullOne)
{
    const auto first = std::make_shared<ManageModeConfiguration>();
    ToolLibraryInterfaceImpl engine(first, std::make_shared<FakeLibraryCache>(),
                                    std::make_shared<APIUserInteraction>());
    engine.setModeConfiguration(std::make_shared<ManageModeConfiguration>());
    EXPECT_EQ(first.use_count(), 1);
    const Asserts asserts;
    engine.setModeConfiguration(nullptr);
    EXPECT_THAT(asserts.messages(), ElementsAre("!!modeConfiguration"));
}

TEST_F(InterfaceOverACache, TheCacheGivesItsLoadTask)
{
    EXPECT_EQ(m_engine.initialLoadTask(), m_cache->initialLoadTask());
    m_engine.initialLoadTask()->abort();
    EXPECT_TRUE(m_cache->initialLoadTask()->isAborted());
}

TEST_F(InterfaceOverACache, ATreeReportsHowManyLibrariesItHas)
{
    m_cache->addNode(L"all://", NodeType::Folder);
    m_cache->addNode(L"toollibraryroot://Local", NodeType::Folder, ToolLibraryLocator(L"all://"));
    m_cache->addNode(L"cloud://folder", NodeType::Folder);
    m_cache->addNode(L"document://11111111-2222-4333-8444-000000000001", NodeType::Document);
    for (const wchar_t *const url :
         {L"toollibraryroot://Local/a.json", L"toollibraryroot://Local/b.tools", L"toollibraryroot://c.zetlib",
          L"cloud://folder/a.json", L"cloud://b.json", L"systemlibraryroot://Samples/a.json", L"hub://x/a.hub",
          L"vendor://x/a.json", L"custom://x/a.json"})
        m_cache->addNode(url, NodeType::Library);
    EXPECT_EQ(m_engine.toolLibrariesIndex().toJson(), m_cache->libraryIndex().toJson());
    EXPECT_THAT(m_reports, ElementsAre(R"(NUMBER_OF_LIBRARIES {"libraryDialogName":"TOOL_LIBRARY",)"
                                       R"("numberOfCloudLibraries":"2","numberOfLocalLibraries":"3"})"));
}

TEST_F(InterfaceOverACache, AnEmptyTreeReportsZeros)
{
    EXPECT_EQ(m_engine.toolLibrariesIndex().toJson(), "[]");
    EXPECT_THAT(m_reports, ElementsAre(R"(NUMBER_OF_LIBRARIES {"libraryDialogName":"TOOL_LIBRARY",)"
                                       R"("numberOfCloudLibraries":"0","numberOfLocalLibraries":"0"})"));
}

TEST_F(InterfaceOverACache, ToolsOfALibraryComeInItsOwnOrder)
{
    m_cache->add(libraryUrl, libraryText({toolText(3), toolText(1, R"("z":1,"a":2.0)"), toolText(2)}));
    EXPECT_THAT(textsOf(m_engine.getToolsFromLibrary(ToolLibraryLocator(libraryUrl))),
                ElementsAre(libraryTool(libraryUrl, toolText(3)),
                            libraryTool(libraryUrl, toolText(1, R"("z":1,"a":2.0)")),
                            libraryTool(libraryUrl, toolText(2))));
    m_cache->add(otherUrl, R"({"data":[]})");
    EXPECT_THAT(m_engine.getToolsFromLibrary(ToolLibraryLocator(otherUrl)), IsEmpty());
    EXPECT_THAT(m_reports, IsEmpty());
}

TEST_F(InterfaceOverACache, ToolsThatAreGivenOutStandAlone)
{
    const auto library = RapidjsonToolLibrary::fromString(libraryText({toolText(1), toolText(2)}), AbortableImpl());
    m_cache->add(libraryUrl, library);
    const auto tools = m_engine.getToolsFromLibrary(ToolLibraryLocator(libraryUrl));
    const auto found = m_engine.findToolById(ToolLibraryLocator(libraryUrl), idOf(2));
    ASSERT_TRUE(library->updateTool(idOf(1), Tool(R"({"x":1})")).has_value());
    ASSERT_TRUE(library->removeTool(idOf(2)).has_value());
    EXPECT_THAT(textsOf(tools),
                ElementsAre(libraryTool(libraryUrl, toolText(1)), libraryTool(libraryUrl, toolText(2))));
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->toJson(), libraryTool(libraryUrl, toolText(2)));
}

TEST_F(InterfaceOverACache, OnlyLibrariesOfTheCacheGiveTheirToolsOut)
{
    m_cache->addBroken(otherUrl, "torn");
    const ToolLibraryLocator loose = looseFile(u"c.json", libraryText({toolText(3)}));
    const std::string path = m_paths.loose(u"c.json").toStdString();
    const std::pair<ToolLibraryLocator, std::string> rows[] = {
        {loose, "LibraryMissing: Unable to find tool library " + path},
        {ToolLibraryLocator(libraryUrl), "LibraryMissing: Unable to find tool library toollibraryroot://Local/a.json"},
        {ToolLibraryLocator(otherUrl), "LibraryFormatError: torn (translated)"},
        {ToolLibraryLocator(L"document://11111111-2222-4333-8444-000000000001"), "LibraryMissing: Document not found"},
        {ToolLibraryLocator(L"document://nothing"), "LibraryMissing: Document not found"},
    };
    for (const auto &[locator, failure] : rows) {
        const ToolLibraryLocator &library = locator;
        EXPECT_EQ(failureOf([&] { m_engine.getToolsFromLibrary(library); }), failure);
        EXPECT_EQ(failureOf([&] { m_engine.findToolById(library, idOf(1)); }), failure);
    }
}

TEST_F(InterfaceOverACache, AnOpenDocumentIsNotReadYet)
{
    const auto document = VarnDocument::create(L"Bracket");
    const ToolLibraryLocator url = m_engine.getDocumentUrl(*document);
    const Asserts asserts;
    EXPECT_EQ(failureOf([&] { m_engine.getToolsFromLibrary(url); }), notYet);
    EXPECT_EQ(failureOf([&] { m_engine.findToolById(url, idOf(1)); }), notYet);
    EXPECT_EQ(failureOf([&] { m_engine.library(url); }), notYet);
    document->close();
    EXPECT_EQ(failureOf([&] { m_engine.getToolsFromLibrary(url); }), "LibraryMissing: Document not found");
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(InterfaceOverACache, ADocumentIsLookedForOnTheMainThread)
{
    const auto document = VarnDocument::create(L"Bracket");
    const ToolLibraryLocator open = m_engine.getDocumentUrl(*document);
    const ToolLibraryLocator closed(L"document://11111111-2222-4333-8444-000000000001");
    EXPECT_EQ(onAnotherThread([&] { return failureOf([&] { m_engine.getToolsFromLibrary(open); }); }), notYet);
    EXPECT_EQ(onAnotherThread([&] { return failureOf([&] { m_engine.findToolById(closed, idOf(1)); }); }),
              "LibraryMissing: Document not found")
        << "the failure comes out on the calling thread";
}

TEST_F(InterfaceOverACache, AToolIsFoundInOneLibrary)
{
    m_cache->add(libraryUrl, libraryText({toolText(1), toolText(2)}));
    const ToolLibraryLocator library(libraryUrl);
    ASSERT_TRUE(m_engine.findToolById(library, idOf(2)).has_value());
    EXPECT_EQ(m_engine.findToolById(library, idOf(2))->toJson(), libraryTool(libraryUrl, toolText(2)));
    EXPECT_FALSE(m_engine.findToolById(library, idOf(3)).has_value());
    EXPECT_FALSE(m_engine.findToolById(library, ToolId("no guid")).has_value());
}

TEST_F(InterfaceOverACache, AToolIsFoundInTheFirstLibraryThatHasIt)
{
    m_cache->addNode(L"toollibraryroot://Local", NodeType::Folder);
    m_cache->addNode(L"document://11111111-2222-4333-8444-000000000001", NodeType::Document);
    m_cache->addNode(L"vendor://x/a.json", NodeType::Library);
    m_cache->add(libraryUrl, libraryText({toolText(1, R"("from":"a")")}));
    m_cache->add(otherUrl, libraryText({toolText(1, R"("from":"b")"), toolText(2)}));
    m_cache->addBroken(L"toollibraryroot://Local/c.json", "torn");
    const auto find = [&](unsigned number) { return m_engine.findToolById(idOf(number)); };
    EXPECT_EQ(find(1)->toJson(), libraryTool(libraryUrl, toolText(1, R"("from":"a")")));
    EXPECT_EQ(m_cache->loads(), 1) << "the first hit ends the search";
    EXPECT_EQ(find(2)->toJson(), libraryTool(otherUrl, toolText(2)));
    EXPECT_EQ(failureOf([&] { find(3); }), "LibraryFormatError: torn (translated)") << "no bad library is skipped";
}

TEST_F(InterfaceOverACache, AToolThatNoLibraryHasIsNoFailure)
{
    EXPECT_FALSE(m_engine.findToolById(idOf(1)).has_value());
    m_cache->add(libraryUrl, libraryText({toolText(1)}));
    m_cache->add(otherUrl, R"({"data":[]})");
    EXPECT_FALSE(m_engine.findToolById(idOf(9)).has_value());
    EXPECT_EQ(m_cache->loads(), 2) << "after every library was looked into";
}

TEST_F(InterfaceOverACache, ALibraryOfTheTreeThatTheCacheLacksRaises)
{
    m_cache->addNode(libraryUrl, NodeType::Library);
    EXPECT_EQ(failureOf([&] { m_engine.findToolById(idOf(1)); }),
              "LibraryMissing: Unable to find tool library toollibraryroot://Local/a.json");
}

TEST_F(InterfaceOverACache, AllUrlsAreThoseOfDocumentsAndLibraries)
{
    EXPECT_THAT(m_engine.getAllLibraryUrls(), IsEmpty());
    const ToolLibraryLocator root(L"all://");
    const ToolLibraryLocator folder(L"toollibraryroot://Local");
    m_cache->addNode(L"all://", NodeType::Folder);
    m_cache->addNode(L"toollibraryroot://Local", NodeType::Folder, root);
    m_cache->addNode(L"systemlibraryroot://Samples/s.json", NodeType::Library, root);
    m_cache->addNode(libraryUrl, NodeType::Library, folder);
    m_cache->addNode(L"document://11111111-2222-4333-8444-000000000001", NodeType::Document, folder);
    m_cache->addNode(L"vendor://x/a.json", NodeType::Library);
    EXPECT_THAT(m_engine.getAllLibraryUrls(),
                ElementsAre(ToolLibraryLocator(libraryUrl),
                            ToolLibraryLocator(L"document://11111111-2222-4333-8444-000000000001"),
                            ToolLibraryLocator(L"systemlibraryroot://Samples/s.json"),
                            ToolLibraryLocator(L"vendor://x/a.json")))
        << "in the order of the walk through the tree";
    EXPECT_THAT(m_reports, IsEmpty());
}

TEST_F(InterfaceOverACache, TheActiveDocumentFollowsTheHost)
{
    EXPECT_FALSE(m_engine.getActiveDocumentUrl().has_value());
    auto document = VarnDocument::create(L"Bracket");
    m_engine.setActiveDocument(document.get());
    EXPECT_EQ(m_engine.getActiveDocumentUrl(), m_engine.getDocumentUrl(*document));
    EXPECT_EQ(m_engine.getDocumentUrl(*document),
              ToolLibraryLocator(L"document://" + QString::fromStdString(document->guid().asString()).toStdWString()));
    document.reset();
    EXPECT_FALSE(m_engine.getActiveDocumentUrl().has_value());
}

TEST_F(InterfaceOverACache, DocumentsAreListedOnTheMainThread)
{
    const auto document = VarnDocument::create(L"Bracket");
    EXPECT_THAT(m_cache->documents()->urls(), IsEmpty());
    const Asserts asserts;
    onAnotherThread([&] { return m_engine.refreshDocumentLibraries(), 0; });
    EXPECT_EQ(m_cache->documents()->urls().size(), 1);
    EXPECT_EQ(m_cache->refreshes(), 1);
    EXPECT_THAT(asserts.messages(), IsEmpty()) << "the list asserts that it changes on the main thread";
}

TEST_F(InterfaceOverACache, ManyThreadsMayReadAtOnce)
{
    m_cache->add(libraryUrl, libraryText({toolText(1), toolText(2)}));
    m_cache->add(otherUrl, libraryText({toolText(3)}));
    const ToolLibraryLocator loose = looseFile(u"c.json", libraryText({toolText(4)}));
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 5; ++round) {
                right += m_engine.library(ToolLibraryLocator(libraryUrl))->numberOfTools() == 2;
                right += m_engine.library(loose)->numberOfTools() == 1;
                right += m_engine.findToolById(idOf(3)).has_value();
                right += m_engine.getToolsFromLibrary(ToolLibraryLocator(libraryUrl)).size() == 2;
                right += m_engine.getAllLibraryUrls().size() == 2;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(right, 4 * 5 * 5);
}
