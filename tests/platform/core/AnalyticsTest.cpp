#include "platform/core/Analytics.h"

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <mutex>
#include <thread>
#include <vector>

using Varn::Analytics::BasicReport;
using Varn::Analytics::ZETAnalyticsMgr;
namespace ZET = Varn::Analytics::ZET;

namespace {

class AnalyticsReports : public testing::Test
{
protected:
    AnalyticsReports()
    {
        ZETAnalyticsMgr::setSink([this](const QByteArray &line) {
            const std::lock_guard lock(m_mutex);
            m_lines.push_back(line);
        });
        ZETAnalyticsMgr::setFile(path().toStdWString());
    }
    ~AnalyticsReports() override
    {
        ZETAnalyticsMgr::setTrackingAllowed(false);
        ZETAnalyticsMgr::setSink({});
        ZETAnalyticsMgr::setFile({});
    }

    QString path() const { return m_folder.filePath("analytics.jsonl"); }

    QList<QByteArray> fileLines() const
    {
        QFile file(path());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QList<QByteArray> lines = file.readAll().split('\n');
        EXPECT_EQ(lines.takeLast(), "") << "the file ends with a newline";
        return lines;
    }

    QTemporaryDir m_folder;
    std::mutex m_mutex;
    std::vector<QByteArray> m_lines; // guarded by m_mutex
};

BasicReport importReport()
{
    BasicReport report(ZET::LIBRARY_DIALOG);
    report.setCommandName("IMPORT_TOOL_LIBRARY");
    report.setMiscData("libraryDialogName", "TOOL_LIBRARY");
    report.setMiscData("name", QString::fromWCharArray(L"Fr\u00E4ser \"8\"\nnew"));
    return report;
}

} // namespace

TEST_F(AnalyticsReports, AreOffUntilThePersonTurnsThemOn)
{
    EXPECT_FALSE(ZETAnalyticsMgr::isTrackingAllowed());
    ZETAnalyticsMgr::track(importReport());
    EXPECT_TRUE(m_lines.empty());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(AnalyticsReports, EachIsOneLineOfJson)
{
    ZETAnalyticsMgr::setTrackingAllowed(true);
    EXPECT_TRUE(ZETAnalyticsMgr::isTrackingAllowed());
    const QDateTime before = QDateTime::currentDateTimeUtc();
    ZETAnalyticsMgr::track(importReport());
    ZETAnalyticsMgr::track(BasicReport(ZET::DEFECT_REPORT));

    const QList<QByteArray> lines = fileLines();
    ASSERT_EQ(lines.size(), 2);
    ASSERT_EQ(m_lines.size(), 2u);
    EXPECT_EQ(lines[0], m_lines[0]);
    EXPECT_EQ(lines[1], m_lines[1]);

    const QJsonObject line = QJsonDocument::fromJson(lines[0]).object();
    EXPECT_EQ(line.keys(), (QStringList{"command", "data", "event", "time"}));
    EXPECT_EQ(line["event"].toString(), "LIBRARY_DIALOG");
    EXPECT_EQ(line["command"].toString(), "IMPORT_TOOL_LIBRARY");
    EXPECT_EQ(line["data"].toObject().toVariantMap(),
              (QVariantMap{{"libraryDialogName", "TOOL_LIBRARY"},
                           {"name", QString::fromWCharArray(L"Fr\u00E4ser \"8\"\nnew")}}));
    const QDateTime time = QDateTime::fromString(line["time"].toString(), Qt::ISODateWithMs);
    EXPECT_EQ(time.offsetFromUtc(), 0);
    EXPECT_LE(std::abs(before.msecsTo(time)), 60'000);
}

TEST_F(AnalyticsReports, StopAtOnceWhenTurnedOff)
{
    ZETAnalyticsMgr::setTrackingAllowed(true);
    ZETAnalyticsMgr::track(importReport());
    ZETAnalyticsMgr::setTrackingAllowed(false);
    ZETAnalyticsMgr::track(importReport());
    EXPECT_EQ(fileLines().size(), 1);
    EXPECT_EQ(m_lines.size(), 1u);
}

TEST_F(AnalyticsReports, AFileThatCannotBeWrittenLosesTheReportAndNothingElse)
{
    ZETAnalyticsMgr::setTrackingAllowed(true);
    ZETAnalyticsMgr::setFile((m_folder.path() + "/missing/folder/analytics.jsonl").toStdWString());
    ZETAnalyticsMgr::track(importReport());
    EXPECT_EQ(m_lines.size(), 1u);
    ZETAnalyticsMgr::setFile(m_folder.path().toStdWString()); // a folder
    ZETAnalyticsMgr::track(importReport());
    EXPECT_EQ(m_lines.size(), 2u);
}

TEST_F(AnalyticsReports, NeedNeitherFileNorSink)
{
    ZETAnalyticsMgr::setTrackingAllowed(true);
    ZETAnalyticsMgr::setFile({});
    ZETAnalyticsMgr::track(importReport());
    ZETAnalyticsMgr::setSink({});
    ZETAnalyticsMgr::track(importReport());
    EXPECT_EQ(m_lines.size(), 1u);
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(AnalyticsReports, ASinkMayReportItself)
{
    int depth = 0;
    ZETAnalyticsMgr::setSink([&](const QByteArray &) {
        if (++depth < 3)
            ZETAnalyticsMgr::track(importReport());
    });
    ZETAnalyticsMgr::setTrackingAllowed(true);
    ZETAnalyticsMgr::track(importReport());
    EXPECT_EQ(depth, 3);
}

TEST_F(AnalyticsReports, LinesOfManyThreadsStayWhole)
{
    ZETAnalyticsMgr::setTrackingAllowed(true);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([] {
                for (int round = 0; round < 50; ++round)
                    ZETAnalyticsMgr::track(importReport());
            });
        }
    }
    const QList<QByteArray> lines = fileLines();
    EXPECT_EQ(lines.size(), 200);
    for (const QByteArray &line : lines)
        EXPECT_TRUE(QJsonDocument::fromJson(line).isObject()) << line.toStdString();
}
