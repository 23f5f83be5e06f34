#include "ToolLibrary/IO/IToolLibraryOpener.h"

#include "platform/core/Analytics.h"
#include "util/utility/Assert.h"

#include <utility>

namespace Varn::Tools {

IToolLibraryOpener::IToolLibraryOpener(std::wstring name) : m_name(std::move(name))
{
    VARN_ASSERT(!m_name.empty());
}

IToolLibraryOpener::~IToolLibraryOpener() = default;

void IToolLibraryOpener::logAnalyticsEvent(const std::wstring &description) const
{
    VARN_ASSERT(!description.empty());
    Analytics::BasicReport report(QString::fromLatin1(Analytics::ZET::LIBRARY_DIALOG));
    report.setMiscData(QStringLiteral("libraryDialogName"), QString::fromStdWString(m_name));
    report.setCommandName(QString::fromStdWString(description));
    Analytics::ZETAnalyticsMgr::track(report);
}

} // namespace Varn::Tools
