#include "host/LibraryShelf.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "platform/tool/Exception.h"

#include <gmock/gmock.h>

#include <thread>

using namespace Quillon;
using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using Varn::Tools::ToolLibraryUrl;

namespace {

ToolLibraryUrl url(const char *text)
{
    return ToolLibraryUrl(QString::fromUtf8(text));
}

std::vector<std::string> nodesOf(const LibraryMetadataTree &tree)
{
    std::vector<std::string> names;
    for (const LibraryMetadataNode *node : tree.traverse())
        names.push_back(QString::fromStdWString(node->metadata()->url().url()).toStdString());
    return names;
}

} // namespace

TEST(LibraryShelf, ListsTheLibrariesOfItsTwoFolders)
{
    const TestPaths paths;
    writeFile(paths.local(u"Local/b.json"), libraryText({}));
    writeFile(paths.local(u"Local/a.json"), "broken");
    writeFile(paths.local(u"Local/notes.txt"), "");
    writeFile(paths.local(u"Local/a\nb.json"), libraryText({})); // a name with a newline is no library
    writeFile(paths.system(u"Samples/Probes.json"), libraryText({}));
    const LibraryShelf shelf;
    EXPECT_THAT(nodesOf(shelf.libraryIndex()),
                ElementsAre("all://", "toollibraryroot://Local", "toollibraryroot://Local/a.json",
                            "toollibraryroot://Local/b.json", "systemlibraryroot://Samples",
                            "systemlibraryroot://Samples/Probes.json"));
}

TEST(LibraryShelf, ALibraryIsReadOnceAndAFailureStays)
{
    const TestPaths paths;
    writeFile(paths.local(u"Local/a.json"), libraryText({toolText(1)}));
    writeFile(paths.local(u"Local/bad.json"), "broken");
    const LibraryShelf shelf;
    const auto first = shelf.getLoadedLibrary(url("toollibraryroot://Local/a.json"));
    EXPECT_EQ(first, shelf.getLoadedLibrary(url("toollibraryroot://Local/a.json")));
    EXPECT_TRUE(shelf.hasLibrary(url("toollibraryroot://Local/bad.json")));
    EXPECT_THROW(shelf.getLoadedLibrary(url("toollibraryroot://Local/bad.json")), LibraryFormatError);
    writeFile(paths.local(u"Local/bad.json"), libraryText({}));
    EXPECT_THROW(shelf.getLoadedLibrary(url("toollibraryroot://Local/bad.json")), LibraryFormatError);
}

TEST(LibraryShelf, WhatItDoesNotHaveIsMissing)
{
    const TestPaths paths;
    const LibraryShelf shelf;
    EXPECT_FALSE(shelf.hasLibrary(url("toollibraryroot://Local/a.json")));
    EXPECT_FALSE(shelf.hasLibrary(url("cloud://a.json")));
    EXPECT_THROW(shelf.getLoadedLibrary(url("toollibraryroot://Local/a.json")), LibraryMissing);
    EXPECT_THROW(shelf.getLoadedLibrary(url("toollibraryroot://Local")), InvalidInput);
}

TEST(LibraryShelf, ThreadsThatAskTogetherGetOneLibrary)
{
    const TestPaths paths;
    writeFile(paths.local(u"Local/a.json"), libraryText({toolText(1)}));
    const LibraryShelf shelf;
    std::vector<std::shared_ptr<DiskLibrary>> found(4);
    std::vector<std::thread> threads;
    for (auto &place : found)
        threads.emplace_back([&] { place = shelf.getLoadedLibrary(url("toollibraryroot://Local/a.json")); });
    for (auto &thread : threads)
        thread.join();
    EXPECT_THAT(found, testing::Each(found[0]));
    EXPECT_NE(found[0], nullptr);
}

TEST(LibraryShelf, RefusesToChangeAnything)
{
    const TestPaths paths;
    LibraryShelf shelf;
    QMap<QString, QVariant> node;
    const ToolLibraryUrl library = url("toollibraryroot://Local/a.json");
    EXPECT_THROW(shelf.createLibrary(library, {}, node), NotSupportedError);
    EXPECT_THROW(shelf.deleteLibrary(library), NotSupportedError);
    EXPECT_THROW(shelf.createFolder(library, node), NotSupportedError);
    EXPECT_THROW(shelf.refreshCache("HUB_ITEMS"), NotSupportedError);
    EXPECT_FALSE(shelf.getHubLastSyncTime());
}
