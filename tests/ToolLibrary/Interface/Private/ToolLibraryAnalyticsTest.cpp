#include "ToolLibrary/Interface/Private/ToolLibraryAnalytics.h"
#include "platform/core/Analytics.h"
#include "support/Asserts.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPoint>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Analytics::ZETAnalyticsMgr;
using Varn::ToolLibraries::ToolLibraryAnalytics;

namespace {

class ToolLibraryAnalyticsTest : public testing::Test
{
protected:
    ToolLibraryAnalyticsTest()
    {
        ZETAnalyticsMgr::setSink(
            [this](const QByteArray &line) { m_reports.push_back(QJsonDocument::fromJson(line).object()); });
        ZETAnalyticsMgr::setTrackingAllowed(true);
    }
    ~ToolLibraryAnalyticsTest() override
    {
        ZETAnalyticsMgr::setTrackingAllowed(false);
        ZETAnalyticsMgr::setSink({});
    }

    std::vector<QJsonObject> m_reports;
};

} // namespace

TEST_F(ToolLibraryAnalyticsTest, AReportNamesTheDialogTheCommandAndTheValues)
{
    const TestSupport::Asserts asserts;
    ToolLibraryAnalytics::sendReport("LOAD_TOOL_LIBRARY", {{"numberOfTools", 12}, {"format", "json"}, {"local", true}});
    ASSERT_EQ(m_reports.size(), 1U);
    EXPECT_EQ(m_reports[0]["event"], "LIBRARY_DIALOG");
    EXPECT_EQ(m_reports[0]["command"], "LOAD_TOOL_LIBRARY");
    EXPECT_EQ(
        m_reports[0]["data"].toObject(),
        (QJsonObject{
            {"libraryDialogName", "TOOL_LIBRARY"}, {"numberOfTools", "12"}, {"format", "json"}, {"local", "true"}}));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(ToolLibraryAnalyticsTest, AReportMayHaveNoValues)
{
    ToolLibraryAnalytics::sendReport("NUMBER_OF_LIBRARIES", {});
    ASSERT_EQ(m_reports.size(), 1U);
    EXPECT_EQ(m_reports[0]["data"].toObject(), (QJsonObject{{"libraryDialogName", "TOOL_LIBRARY"}}));
}

TEST_F(ToolLibraryAnalyticsTest, AValueWithoutATextIsAProgrammingError)
{
    const QVariantMap values{{"good", 1}, {"point", QPoint(1, 2)}};
    const QJsonObject expected{{"libraryDialogName", "TOOL_LIBRARY"}, {"good", "1"}, {"point", ""}};
    ToolLibraryAnalytics::sendReport("X", values);
    {
        const TestSupport::Asserts asserts;
        ToolLibraryAnalytics::sendReport("X", values);
        EXPECT_THAT(asserts.messages(), ElementsAre("value.canConvert<QString>()"));
    }
    ASSERT_EQ(m_reports.size(), 2U);
    EXPECT_EQ(m_reports[0]["data"].toObject(), expected);
    EXPECT_EQ(m_reports[1]["data"].toObject(), expected);
}

TEST_F(ToolLibraryAnalyticsTest, NothingHappensWhileTrackingIsOff)
{
    ZETAnalyticsMgr::setTrackingAllowed(false);
    const TestSupport::Asserts asserts;
    ToolLibraryAnalytics::sendReport("X", {{"point", QPoint()}});
    EXPECT_THAT(m_reports, IsEmpty());
    EXPECT_THAT(asserts.messages(), IsEmpty());
}
