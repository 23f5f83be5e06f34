#include "ToolLibrary/CamDocuments.h"
#include "support/Asserts.h"

#include "platform/core/VarnDocument.h"

#include <gmock/gmock.h>

#include <thread>

using namespace Varn::Tools;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::SafePointer;
using Varn::VarnDocument;

TEST(CamDocuments, WithoutOpenDocumentsThereIsNothing)
{
    const CamDocuments documents;
    EXPECT_TRUE(documents.urls().isEmpty());
    EXPECT_THAT(documents.documents(), IsEmpty());
    EXPECT_FALSE(documents.active());
}

TEST(CamDocuments, ADocumentIsKnownByTheUrlOfItsGuid)
{
    const auto open = VarnDocument::create(L"Bracket");
    const CamDocuments documents;
    const ToolLibraryUrl url = CamDocuments::urlOf(*open);
    EXPECT_EQ(url.url().toStdString(), "document://" + open->guid().asString());
    EXPECT_TRUE(url.isDocumentLibrary());
    EXPECT_EQ(documents.document(url).get(), open.get());
    EXPECT_THAT(documents.urls(), ElementsAre(url.url()));
    EXPECT_EQ(documents.document(ToolLibraryUrl(QStringLiteral("document://nothing"))).get(), nullptr);
}

TEST(CamDocuments, TheListChangesOnlyWithARefresh)
{
    CamDocuments documents;
    auto open = VarnDocument::create(L"Bracket");
    EXPECT_TRUE(documents.urls().isEmpty());
    documents.refresh();
    EXPECT_EQ(documents.urls().size(), 1);
    open.reset();
    EXPECT_EQ(documents.urls().size(), 1);
    EXPECT_THAT(documents.documents(), IsEmpty()); // what has closed meanwhile is left out
    documents.refresh();
    EXPECT_TRUE(documents.urls().isEmpty());
}

TEST(CamDocuments, AClosedDocumentIsNotFound)
{
    const auto document = VarnDocument::create(L"Bracket");
    const CamDocuments documents;
    document->close();
    EXPECT_FALSE(documents.document(CamDocuments::urlOf(*document)));
}

TEST(CamDocuments, TheActiveDocumentIsForgottenWithItsDeath)
{
    CamDocuments documents;
    auto open = VarnDocument::create(L"Bracket");
    documents.setActive(open.get());
    EXPECT_EQ(documents.active().get(), open.get());
    open.reset();
    EXPECT_FALSE(documents.active());
}

TEST(CamDocuments, NoDocumentHasTheDefaultUrl)
{
    const TestSupport::Asserts asserts;
    EXPECT_TRUE(CamDocuments::urlOf(SafePointer<VarnDocument>()) == ToolLibraryUrl());
    EXPECT_THAT(asserts.messages(), ElementsAre("document.isValid()"));
}

TEST(CamDocuments, OnlyTheMainThreadMayListTheOpenDocuments)
{
    CamDocuments documents;
    const TestSupport::Asserts asserts;
    std::thread([&documents] { documents.refresh(); }).join();
    EXPECT_THAT(asserts.messages(),
                ElementsAre("VarnDocument::openDocuments is not safe to access from another thread"));
}

TEST(CamDocuments, AFolderNamesNoDocument)
{
    const CamDocuments documents;
    const TestSupport::Asserts asserts;
    EXPECT_FALSE(documents.document(ToolLibraryUrl(QStringLiteral("cloud://"))));
    EXPECT_THAT(asserts.messages(), ElementsAre("url.isDocumentLibrary()"));
}

namespace {

/// "name url" of each node below the root; "*" before the active one.
std::vector<std::string> nodesOf(const Varn::ToolLibraries::LibraryMetadataTree &index)
{
    std::vector<std::string> nodes;
    for (const auto *node : index.traverseNodes(*index.traverseRootNodes().front())) {
        const auto &metadata = dynamic_cast<const CamDocuments::DocumentLibraryMetadata &>(*node->metadata());
        nodes.push_back((metadata.isActiveDocument() ? "*" : "") +
                        QString::fromStdWString(metadata.name()).toStdString());
    }
    return nodes;
}

} // namespace

TEST(CamDocuments, WithoutADocumentTheFolderIsEmpty)
{
    const auto index = CamDocuments().getIndex();
    EXPECT_EQ(index.toJson(),
              R"([{"name":"Documents","readonly":false,"type":"folder","url":"document://","children":[]}])");
}

TEST(CamDocuments, ATitleThatIsTakenGetsTheNextNumber)
{
    const auto first = VarnDocument::create(L"Bracket");
    const auto taken = VarnDocument::create(L"Bracket [2]");
    const auto second = VarnDocument::create(L"Bracket");
    const auto third = VarnDocument::create(L"Bracket");
    EXPECT_THAT(nodesOf(CamDocuments().getIndex()),
                ElementsAre("Bracket", "Bracket [2]", "Bracket [3]", "Bracket [4]"));
}

TEST(CamDocuments, TheActiveDocumentComesFirst)
{
    const auto first = VarnDocument::create(L"First");
    const auto second = VarnDocument::create(L"Second");
    const auto third = VarnDocument::create(L"Third");
    CamDocuments documents;
    documents.setActive(second.get());
    EXPECT_THAT(nodesOf(documents.getIndex()), ElementsAre("*Second", "First", "Third"));
}

TEST(CamDocuments, ADocumentThatClosedIsNoLongerListed)
{
    const auto first = VarnDocument::create(L"First");
    auto second = VarnDocument::create(L"Second");
    const CamDocuments documents;
    second.reset();
    EXPECT_THAT(nodesOf(documents.getIndex()), ElementsAre("First"));
}

TEST(CamDocuments, ADocumentsNodeTellsOfItsSetups)
{
    using Varn::ToolLibraries::ToolId;
    using Varn::ToolLibraries::ToolLibraryLocator;
    const std::string guid = "11111111-2222-4333-8444-000000000001";
    const CamDocuments::DocumentLibraryMetadata node(
        L"Bracket", ToolLibraryLocator(L"document://x"), true,
        {{L"Setup 1",
          {{L"Face", {L"face", L"Facing"}, ToolId(guid)}, {L"Manual", {L"manual", L"Manual"}, std::nullopt}}},
         {L"Empty", {}}});
    EXPECT_EQ(node.toJson(), R"({"activeDocument":true,"name":"Bracket","setups":[{"name":"Setup 1","operations":[)"
                             R"({"name":"Face","strategy":{"name":"face"},"toolID":")" +
                                 guid + R"("},{"name":"Manual","strategy":{"name":"manual"}}]},)" +
                                 R"({"name":"Empty","operations":[]}],"type":"document","url":"document://x"})");
    const CamDocuments::DocumentLibraryMetadata other(L"B", ToolLibraryLocator(L"document://y"), false, {});
    EXPECT_EQ(other.toJson(), R"({"name":"B","setups":[],"type":"document","url":"document://y"})");
}
