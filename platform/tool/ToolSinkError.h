// ToolSinkError.h -- why a sink refused a tool: the failure itself, wrapped. A value type; copies share the failure.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/tool/Exception.h"

#include <gsl/gsl>

#include <exception>
#include <memory>
#include <optional>
#include <string>

namespace Ox::HubLibrariesCache {
class Exception;
}

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ToolSinkError
{
public:
    explicit ToolSinkError(gsl::not_null<std::shared_ptr<Exception>> failure);
    explicit ToolSinkError(gsl::not_null<std::shared_ptr<Ox::HubLibrariesCache::Exception>> failure);

    /// The English text; lives as long as a copy of this error.
    const char *what() const { return m_failure->what(); }

    /// The text for the person at the screen, if the failure has one.
    const std::optional<std::wstring> &translatedWhat() const { return m_translated; }

    /// The failure, for a caller that tells kinds apart. Never null.
    const std::shared_ptr<std::exception> &innerException() const { return m_failure; }

private:
    std::shared_ptr<std::exception> m_failure;
    std::optional<std::wstring> m_translated;
};

} // namespace Varn::ToolLibraries
