#include "platform/core/VarnDocument.h"

#include "support/Asserts.h"

#include <gmock/gmock.h>

#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Guid;
using Varn::SafePointer;
using Varn::VarnDocument;

namespace {

std::vector<std::wstring> openTitles()
{
    std::vector<std::wstring> titles;
    for (const SafePointer<VarnDocument> &document : VarnDocument::openDocuments())
        titles.push_back(document->title());
    return titles;
}

} // namespace

TEST(VarnDocument, IsOpenFromItsMakingToItsEnd)
{
    ASSERT_THAT(openTitles(), IsEmpty());
    Guid guid;
    {
        const auto document = VarnDocument::create(L"Flange \u00FC");
        guid = document->guid();
        EXPECT_FALSE(guid.isNull());
        EXPECT_EQ(document->title(), L"Flange \u00FC");
        EXPECT_TRUE(document->isDocumentOpen());
        EXPECT_EQ(VarnDocument::getOpenDocument(guid).get(), document.get());
        EXPECT_THAT(openTitles(), ElementsAre(L"Flange \u00FC"));
    }
    EXPECT_FALSE(VarnDocument::getOpenDocument(guid).isValid());
    EXPECT_THAT(openTitles(), IsEmpty());
}

TEST(VarnDocument, DocumentsStandInTheOrderOfTheirOpening)
{
    const auto first = VarnDocument::create(L"first");
    auto second = VarnDocument::create(L"second");
    const auto third = VarnDocument::create(L"third");
    EXPECT_THAT(openTitles(), ElementsAre(L"first", L"second", L"third"));
    second.reset();
    EXPECT_THAT(openTitles(), ElementsAre(L"first", L"third"));
}

TEST(VarnDocument, TheSameTitleTwiceIsTwoDocuments)
{
    const auto first = VarnDocument::create(L"Part");
    const auto second = VarnDocument::create(L"Part");
    EXPECT_FALSE(first->guid() == second->guid());
    EXPECT_EQ(VarnDocument::getOpenDocument(first->guid()).get(), first.get());
    EXPECT_EQ(VarnDocument::getOpenDocument(second->guid()).get(), second.get());
}

TEST(VarnDocument, AClosedOneIsNoLongerListedThoughItLives)
{
    const auto document = VarnDocument::create(L"Part");
    const SafePointer<VarnDocument> pointer = VarnDocument::getOpenDocument(document->guid());
    document->close();
    EXPECT_FALSE(document->isDocumentOpen());
    EXPECT_TRUE(pointer.isValid());
    EXPECT_FALSE(VarnDocument::getOpenDocument(document->guid()).isValid());
    EXPECT_THAT(openTitles(), IsEmpty());
    document->close();
    EXPECT_FALSE(document->isDocumentOpen());
}

TEST(VarnDocument, PointersGoNullWithTheDocument)
{
    auto document = VarnDocument::create(L"Part");
    const auto pointers = VarnDocument::openDocuments();
    ASSERT_EQ(pointers.size(), 1u);
    EXPECT_TRUE(pointers.front().isValid());
    document.reset();
    EXPECT_FALSE(pointers.front().isValid());
    EXPECT_THROW(pointers.front()->title(), Varn::NullPointerException);
}

TEST(VarnDocument, UnknownGuidsHaveNoDocument)
{
    const auto document = VarnDocument::create(L"Part");
    EXPECT_FALSE(VarnDocument::getOpenDocument(Guid()).isValid());
    EXPECT_FALSE(VarnDocument::getOpenDocument(Guid::create()).isValid());
}

TEST(VarnDocument, IsMadeOnTheMainThreadOnly)
{
    const TestSupport::Asserts asserts;
    std::jthread([] { VarnDocument::create(L"Part"); }).join();
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:Thread::isMainThread()", "EXPECTS:Thread::isMainThread()"));
    EXPECT_THAT(openTitles(), IsEmpty());
}
