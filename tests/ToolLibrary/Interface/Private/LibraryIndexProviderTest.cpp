#include "ToolLibrary/Interface/Private/LibraryIndexProvider.h"
#include "support/Asserts.h"
#include "support/IndexNodes.h"

#include "ToolLibrary/CamDocuments.h"
#include "platform/core/VarnApplication.h"
#include "platform/core/VarnDocument.h"

#include <gmock/gmock.h>

#include <future>
#include <thread>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::VarnDocument;
using Varn::Tools::CamDocuments;
using Position = LibraryMetadataTree::InsertionPosition;

namespace {

std::shared_ptr<LibraryMetadata> root(const wchar_t *url)
{
    return std::make_shared<LibraryMetadata>(L"n", LibraryMetadata::Type::Folder, ToolLibraryLocator(url), std::nullopt,
                                             false);
}

LibraryMetadataTree forest(const std::vector<const wchar_t *> &urls)
{
    LibraryMetadataTree tree;
    for (const wchar_t *url : urls)
        tree.insert(root(url));
    return tree;
}

} // namespace

TEST(LibraryIndexProvider, WithoutDocumentsTheTreeIsItsRoot)
{
    const LibraryMetadataTree index = LibraryIndexProvider().libraryIndex();
    EXPECT_EQ(index.toJson(), R"([{"name":"User Libraries","type":"folder","url":"all://","children":[]}])");
    EXPECT_TRUE(LibraryIndexProvider().getDocumentLibraries().traverse().empty());
}

TEST(LibraryIndexProvider, DocumentsLieBelowTheUserLibraries)
{
    const auto bracket = VarnDocument::create(L"Bracket");
    LibraryIndexProvider provider;
    provider.setDocumentIndex(std::make_shared<CamDocuments>());
    const LibraryMetadataTree index = provider.libraryIndex();
    EXPECT_THAT(nodesOf(index), ElementsAre("all:// User Libraries", "  document:// Documents",
                                            "    " + CamDocuments::urlOf(*bracket).url().toStdString() + " Bracket"));
    EXPECT_EQ(index.find(ToolLibraryLocator::DocumentsFolder)->metadata()->parent(),
              ToolLibraryLocator::UserLibrariesFolder);
}

TEST(LibraryIndexProvider, DocumentsAreReadOnTheMainThread)
{
    const auto bracket = VarnDocument::create(L"Bracket");
    LibraryIndexProvider provider;
    provider.setDocumentIndex(std::make_shared<CamDocuments>());
    auto read = std::async(std::launch::async, [&] { return provider.getDocumentLibraries(); });
    while (read.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready)
        Varn::VarnApplication::pumpMainThread();
    EXPECT_EQ(read.get().traverse().size(), 2u);
}

TEST(LibraryIndexProvider, RootsKeepTheirOrderAtEitherEnd)
{
    LibraryMetadataTree index = forest({L"all://"});
    LibraryIndexProvider::addToUserLibraries(index, forest({L"x://1", L"x://2"}), Position::Back);
    LibraryIndexProvider::addToUserLibraries(index, forest({L"y://1", L"y://2"}), Position::Back);
    LibraryIndexProvider::addToUserLibraries(index, forest({L"f://1", L"f://2"}), Position::Front);
    LibraryIndexProvider::addToUserLibraries(index, forest({L"g://1", L"g://2"}), Position::Front);
    EXPECT_THAT(urlsOf(index),
                ElementsAre("all://", "g://1", "g://2", "f://1", "f://2", "x://1", "x://2", "y://1", "y://2"))
        << "the second tree at the front is ahead of the first";
    EXPECT_EQ(index.find(ToolLibraryLocator(L"g://1"))->metadata()->parent(), ToolLibraryLocator::UserLibrariesFolder);
}

TEST(LibraryIndexProvider, ATreeWithoutUserLibrariesIsAMistake)
{
    const Asserts asserts;
    LibraryMetadataTree index;
    LibraryIndexProvider::addToUserLibraries(index, forest({L"x://1"}), Position::Back);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:index.contains(ToolLibraryLocator::UserLibrariesFolder)"));
    EXPECT_THAT(urlsOf(index), ElementsAre("x://1")) << "and yet nothing is lost";
}
