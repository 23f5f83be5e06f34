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
