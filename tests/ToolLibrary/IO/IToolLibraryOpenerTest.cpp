#include "ToolLibrary/IO/IToolLibraryOpener.h"
#include "platform/core/Analytics.h"
#include "support/Asserts.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Analytics::ZETAnalyticsMgr;

namespace {

class Opener : public Varn::Tools::IToolLibraryOpener
{
public:
    explicit Opener(const std::wstring &name) : IToolLibraryOpener(name) {}
    using IToolLibraryOpener::logAnalyticsEvent;
};

class IToolLibraryOpenerTest : public testing::Test
{
protected:
    IToolLibraryOpenerTest()
    {
        ZETAnalyticsMgr::setSink(
            [this](const QByteArray &line) { m_reports.push_back(QJsonDocument::fromJson(line).object()); });
        ZETAnalyticsMgr::setTrackingAllowed(true);
    }
    ~IToolLibraryOpenerTest() override
    {
        ZETAnalyticsMgr::setTrackingAllowed(false);
        ZETAnalyticsMgr::setSink({});
    }

    std::vector<QJsonObject> m_reports;
};

} // namespace

TEST_F(IToolLibraryOpenerTest, AnEventIsReportedUnderTheNameOfTheOpener)
{
    const TestSupport::Asserts asserts;
    Opener(L"OPEN_LIBRARY \u00e9").logAnalyticsEvent(L"OPENED");
    ASSERT_EQ(m_reports.size(), 1U);
    EXPECT_EQ(m_reports[0]["event"], "LIBRARY_DIALOG");
    EXPECT_EQ(m_reports[0]["command"], "OPENED");
    EXPECT_EQ(m_reports[0]["data"].toObject(),
              (QJsonObject{{"libraryDialogName", QStringLiteral("OPEN_LIBRARY \u00e9")}}));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(IToolLibraryOpenerTest, NothingIsReportedWhileTrackingIsOff)
{
    ZETAnalyticsMgr::setTrackingAllowed(false);
    Opener(L"A").logAnalyticsEvent(L"B");
    EXPECT_THAT(m_reports, IsEmpty());
}

TEST_F(IToolLibraryOpenerTest, AnEmptyNameOrDescriptionIsAProgrammingErrorAndReportedAllTheSame)
{
    {
        const TestSupport::Asserts asserts;
        Opener(L"").logAnalyticsEvent(L"");
        EXPECT_THAT(asserts.messages(), ElementsAre("!m_name.empty()", "!description.empty()"));
    }
    Opener(L"").logAnalyticsEvent(L"");
    EXPECT_EQ(m_reports.size(), 2U);
}
