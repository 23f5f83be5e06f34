#include "ToolLibrary/Interface/Private/ToolLibraryCacheInMemory.h"
#include "support/Failure.h"
#include "support/IndexNodes.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "ToolLibrary/CamDocuments.h"
#include "ToolLibrary/Interface/Private/LoadThreads.h"
#include "ToolLibrary/Interface/Private/StandardLibraryIndexProvider.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "platform/core/VarnApplication.h"
#include "platform/core/VarnDocument.h"
#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

#include <QFile>

#include <filesystem>
#include <latch>
#include <thread>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Gt;
using testing::StartsWith;
using Varn::Tools::CamDocuments;
using Varn::Tools::ToolLibraryUrl;

namespace {

ToolLibraryUrl localUrl(const QString &name)
{
    return ToolLibraryUrl(QStringLiteral("toollibraryroot://Local/") + name);
}

/// Keeps every thread for files busy while it lives.
class BusyThreads
{
public:
    BusyThreads()
    {
        for (std::size_t i = 0; i < LoadThreads::ofFiles().maximum(); ++i)
            LoadThreads::ofFiles().start([this] {
                m_begun.count_down();
                m_end.wait();
            });
        m_begun.wait();
    }
    ~BusyThreads()
    {
        m_end.count_down();
        waitForThreads();
    }
    BusyThreads(const BusyThreads &) = delete;
    BusyThreads &operator=(const BusyThreads &) = delete;

    static void waitForThreads()
    {
        while (LoadThreads::ofFiles().count() > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

private:
    std::latch m_begun{static_cast<std::ptrdiff_t>(LoadThreads::ofFiles().maximum())};
    std::latch m_end{1};
};

class ToolLibraryCacheInMemoryTest : public testing::Test
{
protected:
    ~ToolLibraryCacheInMemoryTest() override { BusyThreads::waitForThreads(); }

    void addLocal(const QString &name, const std::string &text = libraryText({toolText(1)}))
    {
        writeFile(m_paths.local(u"Local/") + name, text);
    }
    /// "a0.json", "a1.json", ...
    void addNumbered(int count)
    {
        for (int i = 0; i < count; ++i)
            addLocal(QStringLiteral("a%1.json").arg(i));
    }
    std::string readFailure(const QString &name) const
    {
        return "LibraryFormatError: Failed to read or parse JSON file: " + m_paths.local(u"Local/").toStdString() +
               name.toStdString();
    }

    TestPaths m_paths;
    std::shared_ptr<StandardLibraryIndexProvider> m_provider = std::make_shared<StandardLibraryIndexProvider>();
};

std::size_t openFiles()
{
    const auto at = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(at), end(at)));
}

} // namespace

TEST_F(ToolLibraryCacheInMemoryTest, EveryLibraryOfTheTreeCanBeHad)
{
    addLocal(u"a.json"_qs);
    addLocal(u"sub/b.json"_qs, libraryText({toolText(1), toolText(2)}));
    writeFile(m_paths.system(u"Samples/Probes.json"), libraryText({}));
    const ToolLibraryCacheInMemory cache(m_provider);
    EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"a.json"_qs))->numberOfTools(), 1u);
    EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"sub/b.json"_qs))->numberOfTools(), 2u);
    EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"Library.json"_qs))->numberOfTools(), 0u);
    EXPECT_TRUE(cache.hasLibrary(ToolLibraryUrl(u"systemlibraryroot://Samples/Probes.json"_qs)));
    EXPECT_FALSE(cache.hasLibrary(ToolLibraryUrl(u"vendor://Blum/Blum Probes.json"_qs)));
    EXPECT_FALSE(cache.hasLibrary(ToolLibraryUrl(u"toollibraryroot://Local"_qs)));
    EXPECT_EQ(nodesOf(cache.libraryIndex()), nodesOf(m_provider->libraryIndex()));
}

TEST_F(ToolLibraryCacheInMemoryTest, LibrariesAreLoadedWithoutBeingAskedFor)
{
    addLocal(u"a.json"_qs);
    addLocal(u"bad.json"_qs, "broken");
    const ToolLibraryCacheInMemory cache(m_provider);
    BusyThreads::waitForThreads();
    const auto progress = cache.loadProgress();
    EXPECT_EQ(progress.ended, 3u);
    EXPECT_EQ(progress.total, 3u);
    QFile::remove(m_paths.local(u"Local/a.json"));
    EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"a.json"_qs))->numberOfTools(), 1u);
}

TEST_F(ToolLibraryCacheInMemoryTest, ALibraryThatNoThreadHasComeToIsLoadedByWhoAsks)
{
    addNumbered(20);
    const BusyThreads busy;
    const ToolLibraryCacheInMemory cache(m_provider);
    EXPECT_EQ(cache.loadProgress().ended, 0u) << "the constructor reads no library";
    EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"a7.json"_qs))->numberOfTools(), 1u);
    EXPECT_EQ(cache.loadProgress().ended, 1u);
}

TEST_F(ToolLibraryCacheInMemoryTest, ManyWhoAskForOneLibraryGetTheSame)
{
    addLocal(u"a.json"_qs);
    const ToolLibraryCacheInMemory cache(m_provider);
    std::vector<std::shared_ptr<DiskLibrary>> seen(8);
    {
        std::vector<std::jthread> threads;
        for (auto &library : seen)
            threads.emplace_back([&] { library = cache.getLoadedLibrary(localUrl(u"a.json"_qs)); });
    }
    for (const auto &library : seen)
        EXPECT_EQ(library, seen.front());
}

TEST_F(ToolLibraryCacheInMemoryTest, AFailureIsKnownAndStays)
{
    addLocal(u"bad.json"_qs, "broken");
    const ToolLibraryCacheInMemory cache(m_provider);
    const ToolLibraryUrl bad = localUrl(u"bad.json"_qs);
    EXPECT_TRUE(cache.hasLibrary(bad));
    EXPECT_EQ(failureOf([&] { cache.getLoadedLibrary(bad); }), readFailure(u"bad.json"_qs));
    addLocal(u"bad.json"_qs);
    EXPECT_EQ(failureOf([&] { cache.getLoadedLibrary(bad); }), readFailure(u"bad.json"_qs));
}

TEST_F(ToolLibraryCacheInMemoryTest, WhatIsNoLibraryOrUnknownIsRefused)
{
    const ToolLibraryCacheInMemory cache(m_provider);
    const auto get = [&](const QString &url) {
        return failureOf([&] { cache.getLoadedLibrary(ToolLibraryUrl(url)); });
    };
    EXPECT_EQ(get(u"toollibraryroot://Local"_qs), "InvalidInput: Not a library URL");
    EXPECT_EQ(get(u"toollibraryroot://Nowhere"_qs), "InvalidInput: Not a library URL");
    EXPECT_EQ(get(u""_qs), "InvalidInput: Not a library URL");
    EXPECT_EQ(get(u"toollibraryroot://Local/ü.json"_qs),
              "LibraryMissing: Unable to find tool library toollibraryroot://Local/ü.json");
    EXPECT_EQ(get(u"vendor://Blum/Blum Probes.json"_qs),
              "LibraryMissing: Unable to find tool library vendor://Blum/Blum Probes.json");
}

TEST_F(ToolLibraryCacheInMemoryTest, AFileMayVanishBreakOrChangeBeforeItIsRead)
{
    for (const QString &name : {u"gone.json"_qs, u"cut.json"_qs, u"new.json"_qs, u"folder.json"_qs, u"none.json"_qs})
        addLocal(name);
    const BusyThreads busy;
    const ToolLibraryCacheInMemory cache(m_provider);
    QFile::remove(m_paths.local(u"Local/gone.json"));
    QFile::resize(m_paths.local(u"Local/cut.json"), 20);
    QFile::resize(m_paths.local(u"Local/none.json"), 0);
    addLocal(u"new.json"_qs, libraryText({toolText(1), toolText(2)}));
    QFile::remove(m_paths.local(u"Local/folder.json"));
    QDir().mkpath(m_paths.local(u"Local/folder.json"));
    for (const QString &name : {u"gone.json"_qs, u"cut.json"_qs, u"none.json"_qs, u"folder.json"_qs})
        EXPECT_EQ(failureOf([&] { cache.getLoadedLibrary(localUrl(name)); }), readFailure(name));
    EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"new.json"_qs))->numberOfTools(), 2u);
}

TEST_F(ToolLibraryCacheInMemoryTest, AnAbortReachesEveryLoadThatHasNotEnded)
{
    addLocal(u"early.json"_qs);
    addLocal(u"late.json"_qs);
    const BusyThreads busy;
    const ToolLibraryCacheInMemory cache(m_provider);
    cache.getLoadedLibrary(localUrl(u"early.json"_qs));
    EXPECT_FALSE(cache.initialLoadTask()->isAborted());
    cache.initialLoadTask()->abort();
    EXPECT_EQ(failureOf([&] { cache.getLoadedLibrary(localUrl(u"late.json"_qs)); }), readFailure(u"late.json"_qs));
    EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"early.json"_qs))->numberOfTools(), 1u);
}

TEST_F(ToolLibraryCacheInMemoryTest, TheDeathOfTheCacheWaitsForNoLoadAndLeavesNothing)
{
    addNumbered(50);
    const std::size_t filesBefore = openFiles();
    std::weak_ptr<DiskLibrary> loaded;
    std::shared_ptr<Varn::Abortable> task;
    {
        const BusyThreads busy;
        auto cache = std::make_unique<ToolLibraryCacheInMemory>(m_provider);
        loaded = cache->getLoadedLibrary(localUrl(u"a0.json"_qs));
        task = cache->initialLoadTask();
        cache.reset(); // while no thread has come to any of its loads
        EXPECT_FALSE(task->isAborted());
    }
    EXPECT_TRUE(loaded.expired());
    EXPECT_EQ(task.use_count(), 1) << "a load holds it";
    EXPECT_EQ(openFiles(), filesBefore);
    for (int round = 0; round < 20; ++round)
        ToolLibraryCacheInMemory cache(m_provider); // dies while its loads are under way
    BusyThreads::waitForThreads();
    EXPECT_EQ(openFiles(), filesBefore);
}

TEST_F(ToolLibraryCacheInMemoryTest, ACopySharesTheLoads)
{
    addLocal(u"a.json"_qs);
    const BusyThreads busy;
    auto cache = std::make_unique<ToolLibraryCacheInMemory>(m_provider);
    const ToolLibraryCacheInMemory copy(*cache);
    const auto library = cache->getLoadedLibrary(localUrl(u"a.json"_qs));
    cache.reset();
    EXPECT_EQ(copy.getLoadedLibrary(localUrl(u"a.json"_qs)), library);
    EXPECT_EQ(copy.getLoadedLibrary(localUrl(u"Library.json"_qs))->numberOfTools(), 0u);
    EXPECT_EQ(nodesOf(copy.libraryIndex()), nodesOf(m_provider->libraryIndex()));
}

TEST_F(ToolLibraryCacheInMemoryTest, ALibraryThatIsListedTwiceIsLoadedOnce)
{
    struct Provider : LibraryIndexProvider {
        LibraryMetadataTree libraryIndex() const override
        {
            LibraryMetadataTree index = LibraryIndexProvider::libraryIndex();
            for (const wchar_t *name : {L"one", L"two"})
                index.insert(std::make_shared<LibraryMetadata>(name, LibraryMetadata::Type::Library,
                                                               ToolLibraryLocator(L"toollibraryroot://Local/a.json"),
                                                               ToolLibraryLocator::UserLibrariesFolder, false));
            index.insert(std::make_shared<LibraryMetadata>(L"folder", LibraryMetadata::Type::Folder,
                                                           ToolLibraryLocator(L"toollibraryroot://Local/b.json"),
                                                           ToolLibraryLocator::UserLibrariesFolder, false));
            return index;
        }
    };
    addLocal(u"a.json"_qs);
    addLocal(u"b.json"_qs);
    const ToolLibraryCacheInMemory cache(std::make_shared<Provider>());
    EXPECT_EQ(cache.loadProgress().total, 1u);
    EXPECT_FALSE(cache.hasLibrary(localUrl(u"b.json"_qs))) << "the tree says that it is a folder";
}

TEST_F(ToolLibraryCacheInMemoryTest, DocumentsComeToTheFrontWithARefresh)
{
    const auto bracket = Varn::VarnDocument::create(L"Bracket");
    ToolLibraryCacheInMemory cache(m_provider);
    const auto top = [&] {
        std::vector<std::string> urls;
        const LibraryMetadataTree index = cache.libraryIndex();
        for (const auto &child : index.find(ToolLibraryLocator::UserLibrariesFolder)->children())
            urls.push_back(narrow(child.metadata()->url().url()));
        return urls;
    };
    const auto documents = std::make_shared<CamDocuments>();
    cache.setDocumentIndex(documents);
    EXPECT_THAT(top(), ElementsAre("toollibraryroot://Local", "systemlibraryroot://Samples"));
    for (int round = 0; round < 2; ++round) {
        cache.refreshDocumentLibraries();
        EXPECT_THAT(top(), ElementsAre("document://", "toollibraryroot://Local", "systemlibraryroot://Samples"));
        EXPECT_TRUE(cache.libraryIndex().contains(CamDocuments::urlOf(*bracket)));
    }
    bracket->close();
    documents->refresh();
    cache.refreshDocumentLibraries();
    EXPECT_FALSE(cache.libraryIndex().contains(CamDocuments::urlOf(*bracket)));
    EXPECT_TRUE(cache.libraryIndex().contains(ToolLibraryLocator::DocumentsFolder));
}

TEST_F(ToolLibraryCacheInMemoryTest, WithoutADocumentIndexARefreshLeavesNoDocumentNodes)
{
    ToolLibraryCacheInMemory cache(m_provider);
    cache.refreshDocumentLibraries();
    EXPECT_FALSE(cache.libraryIndex().contains(ToolLibraryLocator::DocumentsFolder));
}

TEST_F(ToolLibraryCacheInMemoryTest, DocumentsAreInTheTreeAsSoonAsTheyAreRead)
{
    // Else of two refreshes the one that read earlier could put its documents in later.
    const auto bracket = Varn::VarnDocument::create(L"Bracket");
    ToolLibraryCacheInMemory cache(m_provider);
    cache.setDocumentIndex(std::make_shared<CamDocuments>());
    for (int round = 0; round < 20; ++round) {
        const std::jthread other([&] { cache.refreshDocumentLibraries(); });
        while (Varn::VarnApplication::pumpMainThread() == 0)
            std::this_thread::yield();
        ASSERT_TRUE(cache.libraryIndex().contains(CamDocuments::urlOf(*bracket))) << round;
        cache.setDocumentIndex(nullptr);
        const std::jthread remover([&] { cache.refreshDocumentLibraries(); });
        while (cache.libraryIndex().contains(ToolLibraryLocator::DocumentsFolder))
            Varn::VarnApplication::pumpMainThread();
        cache.setDocumentIndex(std::make_shared<CamDocuments>());
    }
}

TEST_F(ToolLibraryCacheInMemoryTest, DocumentsMayBeReplacedWhileTheyAreRead)
{
    const auto bracket = Varn::VarnDocument::create(L"Bracket");
    ToolLibraryCacheInMemory cache(m_provider);
    const std::shared_ptr<CamDocuments> documents[] = {std::make_shared<CamDocuments>(),
                                                       std::make_shared<CamDocuments>()};
    cache.setDocumentIndex(documents[0]);
    std::atomic<bool> end{false};
    const std::jthread other([&] {
        for (int round = 0; round < 20'000; ++round) {
            cache.setDocumentIndex(documents[round % 2]);
            documents[0]->setActive(round % 2 ? bracket.get() : nullptr);
        }
        end = true;
    });
    while (!end)
        cache.refreshDocumentLibraries();
    EXPECT_TRUE(cache.libraryIndex().contains(CamDocuments::urlOf(*bracket)));
}

TEST_F(ToolLibraryCacheInMemoryTest, TheTreeMayBeReadWhileItChanges)
{
    addNumbered(20);
    ToolLibraryCacheInMemory cache(m_provider);
    const auto documents = std::make_shared<CamDocuments>();
    cache.setDocumentIndex(documents);
    std::atomic<bool> end{false};
    std::vector<std::jthread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back([&] {
            while (!end) {
                const auto index = cache.libraryIndex();
                EXPECT_THAT(index.traverse().size(), Gt(20u));
                EXPECT_EQ(cache.getLoadedLibrary(localUrl(u"a3.json"_qs))->numberOfTools(), 1u);
                EXPECT_TRUE(cache.hasLibrary(localUrl(u"a4.json"_qs)));
            }
        });
    for (int round = 0; round < 100; ++round)
        cache.refreshDocumentLibraries();
    cache.initialLoadTask()->abort();
    end = true;
}

TEST_F(ToolLibraryCacheInMemoryTest, ChangesAreRefusedUntilTheyAreServed)
{
    ToolLibraryCacheInMemory cache(m_provider);
    QVariantMap node;
    const ToolLibraryUrl url = localUrl(u"a.json"_qs);
    const std::function<void()> operations[] = {
        [&] { cache.createLibrary(url, {}, node); },
        [&] { cache.createHubLibraryAndAddNodes(); },
        [&] { cache.deleteLibrary(url); },
        [&] { cache.duplicateLibrary(url, url, node); },
        [&] { cache.editLibrary(url, node); },
        [&] { cache.createFolder(url, node); },
        [&] { cache.deleteFolder(url); },
        [&] { cache.editFolder(url, node); },
        [&] { cache.makeUniqueUrl(url); },
    };
    for (const auto &operation : operations)
        EXPECT_EQ(failureOf(operation), "NotSupportedError: Not yet supported");
}
