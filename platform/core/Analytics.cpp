#include "platform/core/Analytics.h"

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <atomic>
#include <mutex>

namespace Varn::Analytics {

namespace {

std::atomic<bool> trackingAllowed{false};

struct Targets {
    std::mutex mutex;
    QString path;               // guarded by mutex, which also keeps the lines of the file whole
    ZETAnalyticsMgr::Sink sink; // guarded by mutex
};

Targets &targets()
{
    static Targets instance;
    return instance;
}

QByteArray lineOf(const BasicReport &report)
{
    QJsonObject data;
    for (auto entry = report.miscData().begin(); entry != report.miscData().end(); ++entry)
        data.insert(entry.key(), entry.value());
    const QJsonObject line{
        {QStringLiteral("time"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
        {QStringLiteral("event"), report.eventType()},
        {QStringLiteral("command"), report.commandName()},
        {QStringLiteral("data"), data},
    };
    return QJsonDocument(line).toJson(QJsonDocument::Compact);
}

/// Locked by the caller.
void append(const QString &path, const QByteArray &line)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(line + '\n');
}

} // namespace

bool ZETAnalyticsMgr::isTrackingAllowed()
{
    return trackingAllowed.load(std::memory_order_relaxed);
}

void ZETAnalyticsMgr::setTrackingAllowed(bool allowed)
{
    trackingAllowed.store(allowed, std::memory_order_relaxed);
}

void ZETAnalyticsMgr::setFile(const std::wstring &path)
{
    const std::lock_guard lock(targets().mutex);
    targets().path = QString::fromStdWString(path);
}

void ZETAnalyticsMgr::setSink(Sink sink)
{
    const std::lock_guard lock(targets().mutex);
    targets().sink = std::move(sink);
}

void ZETAnalyticsMgr::track(const BasicReport &report)
{
    if (!isTrackingAllowed())
        return;
    const QByteArray line = lineOf(report);
    Sink sink;
    {
        const std::lock_guard lock(targets().mutex);
        sink = targets().sink;
        if (!targets().path.isEmpty())
            append(targets().path, line);
    }
    if (sink)
        sink(line);
}

} // namespace Varn::Analytics
