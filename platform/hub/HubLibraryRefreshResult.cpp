#include "platform/hub/HubLibraryRefreshResult.h"

#include "util/utility/Assert.h"

#include <utility>

namespace Varn::LibrariesPlatform {

HubLibraryRefreshResult::HubLibraryRefreshResult(Nodes libraryNodes, QList<QVariant> libraryTools)
    : m_hasValue(true), m_libraryNodes(std::move(libraryNodes)), m_libraryTools(std::move(libraryTools))
{
}

HubLibraryRefreshResult::HubLibraryRefreshResult(const gsl::not_null<std::shared_ptr<Failure>> &error)
    : m_error(error.get())
{
}

const Ox::HubLibrariesCache::Exception &HubLibraryRefreshResult::error() const
{
    VARN_EXPECTS(hasError());
    static const Failure none("Unknown exception");
    return m_error ? *m_error : none;
}

void HubLibraryRefreshResult::addWarning(const QString &message, const QString &code)
{
    m_status.addCode(code, message, Ox::StatusCode::Severity::Warning);
}

} // namespace Varn::LibrariesPlatform
