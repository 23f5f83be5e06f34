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
