#include "ToolLibrary/Interface/Private/ToolLibraryCacheInMemory.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/FakePlatformLibraries.h"
#include "support/IndexNodes.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "ToolLibrary/Interface/Private/LibraryIndexProvider.h"
#include "ToolLibrary/Interface/Private/LoadThreads.h"
#include "ToolLibrary/Interface/Private/StandardLibraryIndexProvider.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"

#include <gmock/gmock.h>

#include <thread>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Tools::ToolLibraryUrl;
using Refresh = Varn::LibrariesPlatform::HubLibraryRefreshResult;
using Type = LibraryMetadata::Type;
using Nodes = Refresh::Nodes;

namespace {

constexpr const char *brqNode = "HUB_BRQLIBRARYNODE";
constexpr const char *items = "HUB_ITEMS";

std::shared_ptr<LibraryMetadata> node(const std::wstring &name, Type type, const std::wstring &url,
                                      const std::wstring &parent, const std::optional<std::string> &id)
{
    auto metadata =
        std::make_shared<LibraryMetadata>(name, type, ToolLibraryLocator(url), ToolLibraryLocator(parent), false);
    metadata->setFolderId(id);
    return metadata;
}

std::shared_ptr<LibraryMetadata> folder(const wchar_t *url, const wchar_t *parent, const char *id)
{
    return node(L"folder", Type::Folder, url, parent, std::string(id));
}

std::shared_ptr<LibraryMetadata> library(const wchar_t *url, const wchar_t *parent, const char *id,
                                         const wchar_t *name = L"library")
{
    return node(name, Type::Library, url, parent, std::string(id));
}

QVariantMap contents(const char *folderId, std::initializer_list<unsigned> tools)
{
    QVariantList list;
    for (const unsigned tool : tools)
        list.append(
            QVariantMap{{u"toolId"_qs, QString::number(tool)}, {u"guid"_qs, QString::fromStdString(guidOf(tool))}});
    return {{u"folderId"_qs, QString::fromLatin1(folderId)}, {u"tools"_qs, list}};
}

/// A hub with a project that has a folder, a library "a" in it, and a library "b" beside.
class ToolLibraryCacheHubTest : public testing::Test
{
protected:
    ToolLibraryCacheHubTest()
    {
        m_hub->tree.insert(std::make_shared<LibraryMetadata>(L"Hub Libraries", Type::Folder,
                                                             ToolLibraryLocator::HubsFolder, std::nullopt, false));
        for (const auto &metadata : nodes())
            m_hub->tree.insert(metadata);
        m_hub->put("a-id", toolText(1));
        m_hub->put("a-id", toolText(2));
        m_hub->put("b-id", toolText(3));
    }
    ~ToolLibraryCacheHubTest() override { waitForLoads(); }

    static Nodes nodes()
    {
        return {folder(L"hub://p", L"hub://", "p-id"), folder(L"hub://p/f", L"hub://p", "f-id"),
                library(L"hub://p/f/a.hub", L"hub://p/f", "a-id"), library(L"hub://p/b.hub", L"hub://p", "b-id")};
    }
    static Nodes itemNodes()
    {
        Nodes all = nodes();
        all.erase(all.begin());
        return all;
    }

    static void waitForLoads()
    {
        while (LoadThreads::ofHub().count() > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    std::vector<std::string> hubUrls() const
    {
        std::vector<std::string> urls;
        for (const std::string &url : urlsOf(m_cache->libraryIndex()))
            if (url.starts_with("hub://"))
                urls.push_back(url);
        return urls;
    }
    bool has(const char *url) const { return m_cache->hasLibrary(ToolLibraryUrl(QString::fromLatin1(url))); }
    unsigned toolsOf(const char *url) const
    {
        return m_cache->getLoadedLibrary(ToolLibraryUrl(QString::fromLatin1(url)))->numberOfTools();
    }
    void makeCache() { m_cache = std::make_unique<ToolLibraryCacheInMemory>(m_provider); }

    TestPaths m_paths;
    std::shared_ptr<FakePlatformLibraries> m_hub = std::make_shared<FakePlatformLibraries>();
    std::optional<HubInUse> m_use{m_hub};
    std::shared_ptr<StandardLibraryIndexProvider> m_provider = std::make_shared<StandardLibraryIndexProvider>();
    std::unique_ptr<ToolLibraryCacheInMemory> m_cache;
};

} // namespace

TEST_F(ToolLibraryCacheHubTest, HubLibrariesAreLoadedBesideTheFiles)
{
    makeCache();
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/b.hub"));
    EXPECT_EQ(toolsOf("hub://p/f/a.hub"), 2u);
    EXPECT_EQ(toolsOf("hub://p/b.hub"), 1u);
    EXPECT_EQ(toolsOf("toollibraryroot://Local/Library.json"), 0u);
}

TEST_F(ToolLibraryCacheHubTest, AHubThatDoesNotAnswerHoldsUpNoFile)
{
    std::promise<void> answer;
    const std::shared_future<void> answered = answer.get_future().share();
    m_hub->meanwhile = [answered](const std::string &operation) {
        if (operation == "listTools")
            answered.wait();
    };
    makeCache();
    EXPECT_EQ(toolsOf("toollibraryroot://Local/Library.json"), 0u);
    answer.set_value();
    EXPECT_EQ(toolsOf("hub://p/f/a.hub"), 2u);
}

TEST_F(ToolLibraryCacheHubTest, WithoutAHubTheFilesAreThereAndRefreshesFail)
{
    m_use.reset();
    const HubInUse none("no network");
    makeCache();
    EXPECT_THAT(hubUrls(), IsEmpty());
    EXPECT_EQ(toolsOf("toollibraryroot://Local/Library.json"), 0u);
    for (const char *kind : {brqNode, items}) {
        const Refresh result = m_cache->refreshCache(kind);
        EXPECT_FALSE(result.hasValue());
        ASSERT_TRUE(result.hasError());
        EXPECT_STREQ(result.error().what(), "no network");
    }
    EXPECT_FALSE(m_cache->getHubLastSyncTime());
}

TEST_F(ToolLibraryCacheHubTest, TheLastSyncIsThatOfTheHub)
{
    makeCache();
    EXPECT_FALSE(m_cache->getHubLastSyncTime());
    m_hub->syncTime = std::chrono::system_clock::time_point(std::chrono::seconds(77));
    EXPECT_EQ(m_cache->getHubLastSyncTime(), m_hub->syncTime);
}

TEST_F(ToolLibraryCacheHubTest, ARefreshWithoutAValueChangesNothing)
{
    makeCache();
    const auto before = nodesOf(m_cache->libraryIndex());
    for (const char *kind : {brqNode, items}) {
        Refresh empty;
        empty.addWarning(u"slow"_qs, u"W1"_qs);
        m_hub->libraryNodes = empty;
        m_hub->items = empty;
        const Refresh result = m_cache->refreshCache(kind);
        EXPECT_FALSE(result.hasValue());
        EXPECT_FALSE(result.hasError());
        EXPECT_TRUE(result.hasWarnings());
    }
    m_hub->failAt("fetchLibraryNodes", "down");
    m_hub->failAt("fetchItems", "down too");
    EXPECT_STREQ(m_cache->refreshCache(brqNode).error().what(), "down");
    EXPECT_STREQ(m_cache->refreshCache(items).error().what(), "down too");
    EXPECT_EQ(nodesOf(m_cache->libraryIndex()), before);
    EXPECT_EQ(toolsOf("hub://p/f/a.hub"), 2u);
}

TEST_F(ToolLibraryCacheHubTest, ARefreshOfTheTopReplacesAddsAndRemovesNodes)
{
    m_hub->tree.insert(folder(L"hub://old", L"hub://", "old-id"));
    makeCache();
    m_hub->libraryNodes = Refresh(
        Nodes{node(L"Renamed", Type::Folder, L"hub://p", L"hub://", "p2-id"), folder(L"hub://q", L"hub://", "q-id")});
    const Refresh result = m_cache->refreshCache(brqNode);
    EXPECT_TRUE(result.hasValue());
    EXPECT_EQ(result.libraryNodes().size(), 2u);
    EXPECT_THAT(hubUrls(),
                ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/b.hub", "hub://q"));
    EXPECT_EQ(m_cache->libraryIndex().find(ToolLibraryLocator(L"hub://p"))->metadata()->name(), L"Renamed");
}

TEST_F(ToolLibraryCacheHubTest, ATopNodeWithoutAnIdentifierIsAMistakeOfTheHub)
{
    makeCache();
    m_hub->libraryNodes = Refresh(Nodes{node(L"p", Type::Folder, L"hub://p", L"hub://", std::nullopt)});
    const Asserts asserts;
    EXPECT_TRUE(m_cache->refreshCache(brqNode).hasValue());
    EXPECT_THAT(asserts.messages(), ElementsAre("folderId"));
}

TEST_F(ToolLibraryCacheHubTest, ARefreshOfTheTopWithoutAHubRootIsHarmless)
{
    m_hub->tree = LibraryMetadataTree();
    makeCache();
    m_hub->libraryNodes = Refresh(Nodes{});
    EXPECT_TRUE(m_cache->refreshCache(brqNode).hasValue());
    EXPECT_THAT(hubUrls(), IsEmpty());
}

TEST_F(ToolLibraryCacheHubTest, ALibraryThatIsGoneLeavesTheTreeAndTheCache)
{
    makeCache();
    m_hub->items = Refresh(Nodes{library(L"hub://p/b.hub", L"hub://p", "b-id")}, {contents("b-id", {3, 4})});
    EXPECT_TRUE(m_cache->refreshCache(items).hasValue());
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/b.hub"));
    EXPECT_FALSE(has("hub://p/f/a.hub"));
    EXPECT_EQ(toolsOf("hub://p/b.hub"), 2u);
    // The node below the root is still known: when it comes with the items later, it is no new one.
    m_hub->items = Refresh(Nodes{node(L"Other name", Type::Folder, L"hub://p", L"hub://", "p-id"),
                                 library(L"hub://p/b.hub", L"hub://p", "b-id")},
                           {contents("b-id", {})});
    m_cache->refreshCache(items);
    EXPECT_EQ(m_cache->libraryIndex().find(ToolLibraryLocator(L"hub://p"))->metadata()->name(), L"folder");
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/b.hub"));
}

TEST_F(ToolLibraryCacheHubTest, NodesThatStayKeepTheirMetadataAndNewOnesCome)
{
    makeCache();
    Nodes fetched = itemNodes();
    fetched[1] = library(L"hub://p/f/a.hub", L"hub://p/f", "a-id", L"Other name");
    fetched.push_back(library(L"hub://p/f/c.hub", L"hub://p/f", "c-id", L"New"));
    m_hub->items = Refresh(fetched, {contents("a-id", {1}), contents("b-id", {2}), contents("c-id", {3, 4, 5})});
    const Refresh result = m_cache->refreshCache(items);
    EXPECT_EQ(result.libraryNodes().size(), 4u);
    EXPECT_EQ(result.libraryTools().size(), 3);
    EXPECT_THAT(hubUrls(),
                ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/f/c.hub", "hub://p/b.hub"));
    EXPECT_EQ(m_cache->libraryIndex().find(ToolLibraryLocator(L"hub://p/f/a.hub"))->metadata()->name(), L"library");
    EXPECT_EQ(toolsOf("hub://p/f/a.hub"), 1u);
    EXPECT_EQ(toolsOf("hub://p/f/c.hub"), 3u);
}

TEST_F(ToolLibraryCacheHubTest, ANodeThatTheCacheNeverKnewAsOneOfTheHubIsLeftAlone)
{
    m_hub->tree.insert(node(L"mine", Type::Folder, L"hub://p/mine", L"hub://p", std::nullopt));
    makeCache();
    m_hub->items = Refresh(Nodes{}, {});
    m_cache->refreshCache(items);
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/mine"));
}

TEST_F(ToolLibraryCacheHubTest, ToolsOfNoKnownLibraryAreDroppedInSilence)
{
    makeCache();
    m_hub->items = Refresh(itemNodes(), {contents("a-id", {1}), contents("x-id", {2}), contents("f-id", {3})});
    const Asserts asserts;
    const Refresh result = m_cache->refreshCache(items);
    EXPECT_TRUE(result.hasValue());
    EXPECT_TRUE(has("hub://p/f/a.hub"));
    EXPECT_FALSE(has("hub://p/b.hub")) << "a library whose tools did not come is not loaded";
    EXPECT_THAT(asserts.messages(), IsEmpty());
    EXPECT_THAT(m_use->log(), IsEmpty());
}

TEST_F(ToolLibraryCacheHubTest, WarningsComeAlong)
{
    makeCache();
    m_hub->items = Refresh(itemNodes(), {});
    m_hub->items.addWarning(u"slow"_qs, u"W1"_qs);
    m_hub->items.addWarning(u"late"_qs, u"W2"_qs);
    const Refresh result = m_cache->refreshCache(items);
    ASSERT_EQ(result.status().getTopLevelStatusCodes().size(), 2u);
    EXPECT_EQ(result.status().getTopLevelStatusCodes()[0].message(), u"slow"_qs);
    EXPECT_EQ(result.status().getTopLevelStatusCodes()[0].code(), u"W1"_qs);
    EXPECT_EQ(result.status().getTopLevelStatusCodes()[1].message(), u"late"_qs);
    EXPECT_TRUE(result.status().isOk());
}

TEST_F(ToolLibraryCacheHubTest, AnyOtherKindIsARefreshOfTheItems)
{
    makeCache();
    m_hub->items = Refresh(Nodes{}, {});
    EXPECT_TRUE(m_cache->refreshCache("anything").hasValue());
    EXPECT_FALSE(has("hub://p/b.hub"));
}

TEST_F(ToolLibraryCacheHubTest, TheTreeCanBeReadWhileTheHubThinks)
{
    makeCache();
    waitForLoads();
    bool seen = false;
    m_hub->meanwhile = [&](const std::string &operation) {
        if (operation == "fetchItems")
            seen = !m_cache->libraryIndex().traverse().empty() && has("hub://p/b.hub");
    };
    m_hub->items = Refresh(Nodes{}, {});
    m_cache->refreshCache(items);
    EXPECT_TRUE(seen);
}

TEST_F(ToolLibraryCacheHubTest, ARefreshThatOvertookAnotherCounts)
{
    makeCache();
    Nodes more = itemNodes();
    more.push_back(library(L"hub://p/new.hub", L"hub://p", "new-id"));
    bool isFirst = true;
    m_hub->meanwhile = [&](const std::string &operation) {
        if (operation != "fetchItems" || !std::exchange(isFirst, false))
            return;
        m_hub->items = Refresh(more, {contents("new-id", {1})});
        m_cache->refreshCache(items);
        m_hub->items = Refresh(itemNodes(), {contents("b-id", {1})});
    };
    m_cache->refreshCache(items);
    EXPECT_FALSE(has("hub://p/new.hub"));
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/b.hub"));
}

TEST_F(ToolLibraryCacheHubTest, AResultWithoutAValueComesAsItIs)
{
    makeCache();
    Refresh empty;
    empty.addWarning(u"slow"_qs, u"W1"_qs);
    m_hub->items = empty;
    EXPECT_EQ(m_cache->refreshCache(items).status().getTopLevelStatusCodes().size(), 1u);
}

TEST_F(ToolLibraryCacheHubTest, AHubThatIsSetLaterGetsItsRoot)
{
    const LibraryMetadataTree tree = std::exchange(m_hub->tree, LibraryMetadataTree());
    makeCache();
    ASSERT_THAT(hubUrls(), IsEmpty());
    m_hub->libraryNodes = Refresh(Nodes{folder(L"hub://p", L"hub://", "p-id")});
    m_hub->items = Refresh(itemNodes(), {contents("a-id", {1})});
    for (int round = 0; round < 2; ++round) {
        m_cache->refreshCache(brqNode);
        m_cache->refreshCache(items);
        EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/b.hub"));
    }
    const LibraryMetadataTree index = m_cache->libraryIndex();
    const LibraryMetadataTree::Node *root = index.find(ToolLibraryLocator::HubsFolder);
    ASSERT_TRUE(root);
    EXPECT_EQ(root->metadata()->name(), L"Hub Libraries");
    EXPECT_EQ(root->metadata()->parent(), ToolLibraryLocator::UserLibrariesFolder);
    EXPECT_EQ(toolsOf("hub://p/f/a.hub"), 1u);
}

TEST_F(ToolLibraryCacheHubTest, ChildrenMayComeBeforeTheirParents)
{
    makeCache();
    Nodes fetched = itemNodes();
    fetched.insert(fetched.begin(),
                   {library(L"hub://p/g/h/c.hub", L"hub://p/g/h", "c-id"), folder(L"hub://p/g/h", L"hub://p/g", "h-id"),
                    folder(L"hub://p/g", L"hub://p", "g-id")});
    m_hub->items = Refresh(fetched, {});
    EXPECT_EQ(m_cache->refreshCache(items).libraryNodes(), fetched);
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/b.hub",
                                       "hub://p/g", "hub://p/g/h", "hub://p/g/h/c.hub"));
}

TEST_F(ToolLibraryCacheHubTest, NodesInACircleOrWithoutTheirParentAreAmongTheRoots)
{
    makeCache();
    m_hub->items = Refresh(Nodes{folder(L"hub://x", L"hub://y", "x-id"), folder(L"hub://y", L"hub://x", "y-id"),
                                 folder(L"hub://self", L"hub://self", "self-id"),
                                 library(L"hub://gone/z.hub", L"hub://gone", "z-id")},
                           {contents("z-id", {1})});
    m_cache->refreshCache(items);
    EXPECT_THAT(hubUrls(), testing::UnorderedElementsAre("hub://", "hub://p", "hub://x", "hub://y", "hub://self",
                                                         "hub://gone/z.hub"));
    EXPECT_EQ(toolsOf("hub://gone/z.hub"), 1u);
}

TEST_F(ToolLibraryCacheHubTest, TheRestOfTheTreeIsNotTheHubsToChange)
{
    makeCache();
    const auto before = nodesOf(m_cache->libraryIndex());
    const Nodes foreign{folder(L"toollibraryroot://Local", L"hub://", "1"), folder(L"all://", L"hub://", "2"),
                        library(L"toollibraryroot://Local/Library.json", L"hub://p", "3"), folder(L"", L"hub://", "4")};
    Nodes fetched = itemNodes();
    fetched.insert(fetched.end(), foreign.begin(), foreign.end());
    fetched.push_back(folder(L"hub://", L"hub://p", "5"));
    m_hub->items = Refresh(fetched, {contents("3", {1, 2})});
    EXPECT_EQ(m_cache->refreshCache(items).libraryNodes(), fetched);
    EXPECT_EQ(nodesOf(m_cache->libraryIndex()), before);
    EXPECT_EQ(toolsOf("toollibraryroot://Local/Library.json"), 0u);
    fetched = foreign;
    fetched.push_back(folder(L"hub://p", L"hub://", "p-id"));
    m_hub->libraryNodes = Refresh(fetched);
    m_cache->refreshCache(brqNode);
    EXPECT_EQ(nodesOf(m_cache->libraryIndex()), before);
}

TEST_F(ToolLibraryCacheHubTest, ANodeThatComesTwiceKeepsItsChildren)
{
    makeCache();
    Nodes fetched = itemNodes();
    for (const wchar_t *name : {L"one", L"two"}) {
        fetched.push_back(node(name, Type::Folder, L"hub://p/g", L"hub://p", "g-id"));
        fetched.push_back(library(L"hub://p/g/c.hub", L"hub://p/g", "c-id"));
    }
    fetched.pop_back();
    m_hub->items = Refresh(fetched, {});
    m_cache->refreshCache(items);
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/b.hub",
                                       "hub://p/g", "hub://p/g/c.hub"));
    EXPECT_EQ(m_cache->libraryIndex().find(ToolLibraryLocator(L"hub://p/g"))->metadata()->name(), L"two");
}

TEST_F(ToolLibraryCacheHubTest, ToolsThatAreNoListAreNone)
{
    makeCache();
    m_hub->items = Refresh(
        itemNodes(), {QVariantMap{{u"folderId"_qs, u"a-id"_qs}, {u"tools"_qs, u"abc"_qs}}, u"no map"_qs, QVariant()});
    const Asserts asserts;
    m_cache->refreshCache(items);
    EXPECT_EQ(toolsOf("hub://p/f/a.hub"), 0u);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(ToolLibraryCacheHubTest, AHundredThousandNodesComeAndGo)
{
    makeCache();
    Nodes many;
    std::wstring deep = L"hub://p";
    for (int i = 0; i < 100'000; ++i) {
        const std::wstring name = std::to_wstring(i);
        const bool isDeep = i < 500;
        const std::wstring parent = isDeep ? deep : std::wstring(L"hub://p");
        const std::wstring url = parent + L'/' + name;
        many.push_back(node(name, Type::Folder, url, parent, "id-" + std::to_string(i)));
        deep = isDeep ? url : deep;
    }
    m_hub->items = Refresh(many, {});
    m_cache->refreshCache(items);
    EXPECT_EQ(hubUrls().size(), 100'002u);
    m_hub->items = Refresh(itemNodes(), {});
    m_cache->refreshCache(items);
    EXPECT_THAT(hubUrls(), ElementsAre("hub://", "hub://p", "hub://p/f", "hub://p/f/a.hub", "hub://p/b.hub"));
}

TEST_F(ToolLibraryCacheHubTest, LoadsThatHaveNotBegunDieWithTheCache)
{
    const int threads = static_cast<int>(LoadThreads::ofHub().maximum());
    for (int i = 0; i < threads; ++i) {
        const std::wstring url = L"hub://p/" + std::to_wstring(i) + L".hub";
        m_hub->tree.insert(node(L"more", Type::Library, url, L"hub://p", "more-id"));
    }
    std::promise<void> answer;
    const std::shared_future<void> answered = answer.get_future().share();
    std::atomic<int> listings{0};
    m_hub->meanwhile = [&listings, answered](const std::string &operation) {
        if (operation != "listTools")
            return;
        ++listings;
        answered.wait();
    };
    makeCache();
    while (listings < threads)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    m_cache.reset();
    answer.set_value();
    waitForLoads();
    EXPECT_EQ(listings, threads);
}
