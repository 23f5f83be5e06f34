#include "platform/tool/Exception.h"

#include <utility>

namespace Varn::ToolLibraries {

Exception::Exception(std::string_view message, std::optional<std::wstring> translated)
    : std::runtime_error(std::string(message)), m_translated(std::move(translated))
{
}

Exception::~Exception() = default;
InvalidInput::~InvalidInput() = default;
LibraryMissing::~LibraryMissing() = default;
ToolMissing::~ToolMissing() = default;
FolderMissing::~FolderMissing() = default;
AccessError::~AccessError() = default;
IOError::~IOError() = default;
LibraryFormatError::~LibraryFormatError() = default;
LibraryLoadError::~LibraryLoadError() = default;
GeometryLoadError::~GeometryLoadError() = default;
NotSupportedError::~NotSupportedError() = default;
UnknownError::~UnknownError() = default;
UserCancellation::~UserCancellation() = default;

GeometryExportError::GeometryExportError(unsigned int errorCode, const char *message,
                                         std::optional<std::wstring> translated)
    : Exception(message, std::move(translated)), m_errorCode(errorCode)
{
}

GeometryExportError::~GeometryExportError() = default;

} // namespace Varn::ToolLibraries
