#include "ToolLibrary/Interface/Private/Hub/HubToolLibrariesLoader.h"

#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/FakePlatformLibraries.h"
#include "support/LibraryFile.h"

#include "ToolLibrary/Interface/Private/LoadThreads.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "platform/core/FeatureFlag.h"
#include "platform/ox/TestMgr.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <thread>

using namespace TestSupport;
using namespace Varn;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Tools::ToolLibraryUrl;

namespace {

using Type = LibraryMetadata::Type;
using Loader = HubToolLibrariesLoader;

/// Aborted from the question with that number on, counted from 0.
class AbortedLater : public Abortable
{
public:
    explicit AbortedLater(int questions) : m_left(questions) {}
    bool isAborted() const override { return m_left-- <= 0; }
    void abort() override { m_left = 0; }

private:
    mutable std::atomic<int> m_left;
};

void add(LibraryMetadataTree &tree, const std::wstring &url, Type type, const ToolLibraryLocator &parent,
         const std::optional<std::string> &folderId = std::nullopt)
{
    auto node = std::make_shared<LibraryMetadata>(L"node", type, ToolLibraryLocator(url), parent, false);
    node->setFolderId(folderId);
    tree.insert(node);
}

/// "hub://" with a project, which has a folder, two libraries with identifiers, one without and a file.
LibraryMetadataTree hubTree()
{
    LibraryMetadataTree tree;
    tree.insert(
        std::make_shared<LibraryMetadata>(L"hubs", Type::Folder, ToolLibraryLocator::HubsFolder, std::nullopt, false));
    const ToolLibraryLocator project(L"hub://p");
    add(tree, L"hub://p", Type::Folder, ToolLibraryLocator::HubsFolder, "p-id");
    add(tree, L"hub://p/a.hub", Type::Library, project, "a-id");
    add(tree, L"hub://p/f", Type::Folder, project, "f-id");
    add(tree, L"hub://p/f/b.hub", Type::Library, ToolLibraryLocator(L"hub://p/f"), "b-id");
    add(tree, L"hub://p/c.hub", Type::Library, project);
    add(tree, L"hub://p/d.hub", Type::Library, project, "");
    add(tree, L"toollibraryroot://Local/e.json", Type::Library, project, "e-id");
    return tree;
}

ToolLibraryUrl urlOf(const char *text)
{
    return ToolLibraryUrl(QString::fromLatin1(text));
}

std::vector<std::string> keysOf(const auto &map)
{
    std::vector<std::string> keys;
    for (const auto &[url, value] : map)
        keys.push_back(url.url().toStdString());
    return keys;
}

std::vector<std::string> urlsOf(const LibraryMetadataTree &tree)
{
    std::vector<std::string> urls;
    for (const ToolLibraryLocator &url : tree.traverseUrls())
        urls.push_back(QString::fromStdWString(url.url()).toStdString());
    return urls;
}

class HubToolLibrariesLoaderTest : public testing::Test
{
protected:
    HubToolLibrariesLoaderTest() { m_hub->tree = hubTree(); }
    ~HubToolLibrariesLoaderTest() override
    {
        waitForLoads(); // none may reach the hub of the next test
        FeatureFlag::reset();
        Ox::Test::TestMgr::setTesting(false);
    }

    static void waitForLoads()
    {
        while (LoadThreads::ofHub().count() > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    std::shared_ptr<FakePlatformLibraries> m_hub = std::make_shared<FakePlatformLibraries>();
    std::optional<HubInUse> m_use{m_hub};
    LibraryMetadataTree m_tree = hubTree();
    Loader::Libraries m_libraries;
    std::shared_ptr<Abortable> m_abortable = std::make_shared<AbortableImpl>();
};

} // namespace

TEST_F(HubToolLibrariesLoaderTest, TheIndexIsThatOfTheHub)
{
    EXPECT_EQ(urlsOf(Loader::getIndex()), urlsOf(m_tree));
    EXPECT_THAT(m_use->log(), IsEmpty());
}

TEST_F(HubToolLibrariesLoaderTest, NodesOfTheHubAreAddedToTheTree)
{
    LibraryMetadataTree tree;
    tree.insert(std::make_shared<LibraryMetadata>(L"all", Type::Folder, ToolLibraryLocator::UserLibrariesFolder,
                                                  std::nullopt, false));
    Loader::createHubLibraryAndAddNodes(tree);
    EXPECT_TRUE(tree.contains(ToolLibraryLocator::UserLibrariesFolder));
    EXPECT_TRUE(tree.contains(ToolLibraryLocator(L"hub://p/a.hub")));
}

TEST_F(HubToolLibrariesLoaderTest, WithoutAHubThereAreNoNodesAndALineInTheLog)
{
    m_use.reset();
    m_use.emplace("down");
    EXPECT_THAT(urlsOf(Loader::getIndex()), IsEmpty());
    Loader::createHubLibraryAndAddNodes(m_tree);
    EXPECT_EQ(urlsOf(m_tree), urlsOf(hubTree()));
    EXPECT_THAT(m_use->log(), ElementsAre("1 HubToolLibrariesLoader: down", "1 HubToolLibrariesLoader: down"));
}

TEST_F(HubToolLibrariesLoaderTest, AHubThatFailsIsLikeNone)
{
    m_hub->failAt("index", "no index");
    m_hub->failAt("addHubLibraryNodes", "no place");
    EXPECT_THAT(urlsOf(Loader::getIndex()), IsEmpty());
    Loader::createHubLibraryAndAddNodes(m_tree);
    EXPECT_EQ(urlsOf(m_tree), urlsOf(hubTree()));
    EXPECT_THAT(m_use->log(), ElementsAre("1 HubToolLibrariesLoader: no index", "1 HubToolLibrariesLoader: no place"));
}

TEST_F(HubToolLibrariesLoaderTest, AMissingHubAssertsExceptUnderTest)
{
    m_use.reset();
    m_use.emplace("down");
    const Asserts asserts;
    Loader::getIndex();
    Loader::createHubLibraryAndAddNodes(m_tree);
    EXPECT_THAT(asserts.messages(), ElementsAre("down", "down"));
    Ox::Test::TestMgr::setTesting(true);
    Loader::getIndex();
    Loader::createHubLibraryAndAddNodes(m_tree);
    EXPECT_EQ(asserts.messages().size(), 2u);
    EXPECT_EQ(m_use->log().size(), 4u);
}

TEST_F(HubToolLibrariesLoaderTest, WithoutAConfiguredHubTheIndexIsEmptyWithoutALine)
{
    m_use.reset();
    const auto old = Ox::AppLogMgr::setSink([](int, std::string_view text) { ADD_FAILURE() << text; });
    EXPECT_THAT(urlsOf(Loader::getIndex()), IsEmpty());
    Ox::AppLogMgr::setSink(old);
}

TEST_F(HubToolLibrariesLoaderTest, EachLibraryWithAnIdentifierIsLoaded)
{
    m_hub->put("a-id", toolText(1));
    m_hub->put("b-id", toolText(2));
    m_hub->put("b-id", toolText(3));
    const Asserts asserts;
    Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, m_abortable);
    EXPECT_THAT(keysOf(m_libraries), ElementsAre("hub://p/a.hub", "hub://p/f/b.hub"));
    const auto a = m_libraries.at(urlOf("hub://p/a.hub")).get();
    const auto b = m_libraries.at(urlOf("hub://p/f/b.hub")).get();
    EXPECT_THAT(a->getToolIds(), ElementsAre(ToolId(guidOf(1))));
    EXPECT_THAT(b->getToolIds(), ElementsAre(ToolId(guidOf(2)), ToolId(guidOf(3))));
    EXPECT_THAT(asserts.messages(), IsEmpty());

    m_hub->put("x", toolText(4));
    EXPECT_TRUE(a->createTool(ToolId(guidOf(5)), Tool(toolText(5))));
    EXPECT_EQ(m_hub->calls().back(), "createTool a-id " + toolText(5)) << "it knows its identifier";
}

TEST_F(HubToolLibrariesLoaderTest, AnEarlierEntryIsReplacedAndOthersStay)
{
    std::promise<std::shared_ptr<DiskLibrary>> earlier;
    earlier.set_value(nullptr);
    const auto future = earlier.get_future().share();
    m_libraries[urlOf("hub://p/a.hub")] = future;
    m_libraries[urlOf("toollibraryroot://Local/e.json")] = future;
    Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, m_abortable);
    EXPECT_EQ(m_libraries.size(), 3u);
    EXPECT_NE(m_libraries.at(urlOf("hub://p/a.hub")).get(), nullptr);
    EXPECT_EQ(m_libraries.at(urlOf("toollibraryroot://Local/e.json")).get(), nullptr);
}

TEST_F(HubToolLibrariesLoaderTest, IdentifiersOfFoldersAndLibrariesAreNotedOnRequest)
{
    Loader::HubFolders folders;
    Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, folders, m_abortable, m_abortable);
    EXPECT_THAT(keysOf(folders), ElementsAre("hub://p", "hub://p/a.hub", "hub://p/f", "hub://p/f/b.hub"));
    EXPECT_EQ(folders.at(urlOf("hub://p/f")), "f-id");
    EXPECT_EQ(folders.at(urlOf("hub://p/a.hub")), "a-id");
    EXPECT_EQ(m_libraries.size(), 2u);
}

TEST_F(HubToolLibrariesLoaderTest, NothingIsLoadedWhereNothingIsToBe)
{
    const auto loaded = [&](LibraryMetadataTree tree, const std::shared_ptr<Abortable> &abortable) {
        Loader::startLoadingAndAppendLibraries(tree, m_libraries, abortable);
        return m_libraries.size();
    };
    const auto aborted = std::make_shared<AbortableImpl>();
    aborted->abort();
    EXPECT_EQ(loaded(m_tree, aborted), 0u);
    EXPECT_EQ(loaded(m_tree, nullptr), 0u);
    EXPECT_EQ(loaded(LibraryMetadataTree(), m_abortable), 0u);
    FeatureFlag::setEnabled("tool-library-v4-hub-libraries", false);
    EXPECT_EQ(loaded(m_tree, m_abortable), 0u);
    EXPECT_THAT(m_hub->calls(), IsEmpty());
}

TEST_F(HubToolLibrariesLoaderTest, AnAbortComesOutOfTheFuture)
{
    // Asked once before the walk, once before each load is queued, once when it begins.
    for (const int questions : {1, 2, 3}) {
        m_libraries.clear();
        Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, std::make_shared<AbortedLater>(questions));
        ASSERT_EQ(m_libraries.size(), 2u) << questions;
        int interrupted = 0;
        for (const auto &[url, future] : m_libraries) {
            const std::string failure = failureOf([&] { future.get(); });
            interrupted += failure == "LibraryLoadError: Library load interrupted";
        }
        EXPECT_GE(interrupted, 1) << questions;
    }
    EXPECT_THAT(m_use->log(), IsEmpty());
}

TEST_F(HubToolLibrariesLoaderTest, AnAbortReachesLoadsThatWaitAndOneThatIsUnderWay)
{
    std::promise<void> begun;
    std::promise<void> go;
    std::shared_future<void> gone = go.get_future().share();
    std::atomic<int> listings{0};
    m_hub->meanwhile = [&](const std::string &) {
        if (++listings == static_cast<int>(LoadThreads::ofHub().maximum()))
            begun.set_value();
        gone.wait();
    };
    const int count = static_cast<int>(LoadThreads::ofHub().maximum()) + 2;
    for (int i = 0; i < count; ++i)
        add(m_tree, L"hub://p/n" + std::to_wstring(i) + L".hub", Type::Library, ToolLibraryLocator(L"hub://p"), "n-id");
    Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, m_abortable);
    begun.get_future().wait();
    m_abortable->abort();
    go.set_value();
    int interrupted = 0;
    int listing = 0;
    for (const auto &[url, future] : m_libraries) {
        const std::string failure = failureOf([&] { future.get(); });
        interrupted += failure == "LibraryLoadError: Library load interrupted";
        listing += failure == "Exception: Listing aborted";
    }
    EXPECT_EQ(listing, static_cast<int>(LoadThreads::ofHub().maximum()));
    EXPECT_EQ(interrupted + listing, count + 2);
}

TEST_F(HubToolLibrariesLoaderTest, AFailureOfTheHubComesOutOfTheFutureEachTime)
{
    m_hub->failAt<Ox::HubLibrariesCache::HubItemMissingError>("listTools", "gone");
    Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, m_abortable);
    const auto future = m_libraries.at(urlOf("hub://p/a.hub"));
    for (int i = 0; i < 2; ++i) {
        try {
            future.get();
            ADD_FAILURE() << "no failure";
        } catch (const Ox::HubLibrariesCache::Exception &failure) {
            EXPECT_STREQ(failure.what(), "gone");
            EXPECT_EQ(failure.translatedWhat(), L"translated gone");
        }
    }
}

TEST_F(HubToolLibrariesLoaderTest, WithoutAHubTheReasonComesOutOfTheFuture)
{
    m_use.reset();
    m_use.emplace("down");
    Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, m_abortable);
    for (const auto &[url, future] : m_libraries)
        EXPECT_EQ(failureOf([&] { future.get(); }), "Exception: down");
    EXPECT_THAT(m_use->log(), IsEmpty());
}

TEST_F(HubToolLibrariesLoaderTest, NobodyWaitsForALoadThatIsNotWanted)
{
    std::promise<void> go;
    std::shared_future<void> gone = go.get_future().share();
    m_hub->meanwhile = [gone](const std::string &) { gone.wait(); };
    Loader::startLoadingAndAppendLibraries(m_tree, m_libraries, m_abortable);
    m_libraries.clear(); // the last copies of the futures
    const std::weak_ptr<Abortable> watch = m_abortable;
    m_abortable.reset();
    EXPECT_FALSE(watch.expired()) << "the loads are under way";
    go.set_value();
    waitForLoads();
    EXPECT_TRUE(watch.expired()) << "nothing is left of them";
}
