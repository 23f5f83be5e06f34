#include "ToolLibrary/Interface/Private/ToolLibraryAnalytics.h"

#include "platform/core/Analytics.h"
#include "util/utility/Assert.h"

namespace Varn::ToolLibraries {

void ToolLibraryAnalytics::sendReport(const QString &commandName, const QVariantMap &values)
{
    if (!Analytics::ZETAnalyticsMgr::isTrackingAllowed())
        return;
    Analytics::BasicReport report(QString::fromLatin1(Analytics::ZET::LIBRARY_DIALOG));
    report.setMiscData(QStringLiteral("libraryDialogName"), QStringLiteral("TOOL_LIBRARY"));
    report.setCommandName(commandName);
    for (auto entry = values.begin(); entry != values.end(); ++entry) {
        const QVariant &value = entry.value();
        VARN_ASSERT(value.canConvert<QString>());
        report.setMiscData(entry.key(), value.toString());
    }
    Analytics::ZETAnalyticsMgr::track(report);
}

} // namespace Varn::ToolLibraries
