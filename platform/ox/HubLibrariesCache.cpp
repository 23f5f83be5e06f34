#include "platform/ox/HubLibrariesCache.h"

#include <utility>

namespace Ox::HubLibrariesCache {

Exception::Exception(std::string_view message, std::optional<std::wstring> translated)
    : std::runtime_error(std::string(message)), m_translated(std::move(translated))
{
}

Exception::~Exception() = default;
HubItemConflictError::~HubItemConflictError() = default;
HubItemMissingError::~HubItemMissingError() = default;

} // namespace Ox::HubLibrariesCache
