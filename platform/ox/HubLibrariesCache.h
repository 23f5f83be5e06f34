// HubLibrariesCache.h -- the failures of the local cache of the hub. Values.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Ox::HubLibrariesCache {

/// A failure of the hub. Apart from std::exception it has no base in common with the exceptions of the tool library.
class VARN_PLATFORM_EXPORT Exception : public std::runtime_error
{
public:
    explicit Exception(std::string_view message, std::optional<std::wstring> translated = std::nullopt);
    ~Exception() override;

    /// The text for the person at the screen; empty when what() has to do.
    const std::optional<std::wstring> &translatedWhat() const { return m_translated; }

private:
    std::optional<std::wstring> m_translated;
};

/// The hub holds a newer state of the item than the one that the change was made on.
class VARN_PLATFORM_EXPORT HubItemConflictError : public Exception
{
public:
    using Exception::Exception;
    ~HubItemConflictError() override;
};

/// The item is no longer on the hub.
class VARN_PLATFORM_EXPORT HubItemMissingError : public Exception
{
public:
    using Exception::Exception;
    ~HubItemMissingError() override;
};

} // namespace Ox::HubLibrariesCache
