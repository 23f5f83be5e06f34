#include "platform/tool/ToolSinkError.h"

#include "platform/ox/HubLibrariesCache.h"

namespace Varn::ToolLibraries {

ToolSinkError::ToolSinkError(gsl::not_null<std::shared_ptr<Exception>> failure)
    : m_failure(failure.get()), m_translated(failure->translatedWhat())
{
}

ToolSinkError::ToolSinkError(gsl::not_null<std::shared_ptr<Ox::HubLibrariesCache::Exception>> failure)
    : m_failure(failure.get()), m_translated(failure->translatedWhat())
{
}

} // namespace Varn::ToolLibraries
