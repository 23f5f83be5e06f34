// Analytics.h -- reports on how the product is used, for the person alone: they go to a local file, and only while the
// person has turned them on. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <functional>
#include <string>
#include <utility>

namespace Varn::Analytics {

/// The event types in use.
namespace ZET {
inline constexpr const char *LIBRARY_DIALOG = "LIBRARY_DIALOG";
inline constexpr const char *DEFECT_REPORT = "DEFECT_REPORT";
} // namespace ZET

/// One event. A value.
class BasicReport
{
public:
    explicit BasicReport(QString eventType) : m_eventType(std::move(eventType)) {}

    const QString &eventType() const { return m_eventType; }

    /// What was done, such as "IMPORT_TOOL_LIBRARY".
    const QString &commandName() const { return m_commandName; }
    void setCommandName(const QString &name) { m_commandName = name; }

    const QMap<QString, QString> &miscData() const { return m_miscData; }
    void setMiscData(const QString &key, const QString &value) { m_miscData.insert(key, value); }

private:
    QString m_eventType;
    QString m_commandName;
    QMap<QString, QString> m_miscData;
};

class VARN_PLATFORM_EXPORT ZETAnalyticsMgr
{
public:
    /// Receives each report as one line of JSON without the newline. Called on the thread of track(), no lock held.
    using Sink = std::function<void(const QByteArray &line)>;

    /// Off at the start of the process.
    static bool isTrackingAllowed();
    static void setTrackingAllowed(bool allowed);

    /// The file that reports are appended to, made when it is missing; an empty path, as at the start, is no file.
    static void setFile(const std::wstring &path);

    /// What receives the reports beside the file; none at the start, and with an empty function.
    static void setSink(Sink sink);

    /// Sends \a report as {"time","event","command","data":{..}} in UTF-8, the time in UTC after ISO 8601. Nothing
    /// happens while tracking is off. A file that cannot be written loses the report: no work fails for a report.
    static void track(const BasicReport &report);
};

} // namespace Varn::Analytics
