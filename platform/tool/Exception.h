// Exception.h -- the failures that end an operation of the tool library. Each carries an English text and, where the
// person at the screen should read another, a translated one. Values.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries {

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

/// A subclass adds only its type, by which callers tell the failures apart.
#define VARN_EXCEPTION(name)                                                                                           \
    class VARN_PLATFORM_EXPORT name : public Exception                                                                 \
    {                                                                                                                  \
    public:                                                                                                            \
        using Exception::Exception;                                                                                    \
        ~name() override;                                                                                              \
    };

VARN_EXCEPTION(InvalidInput)       ///< a request that can never succeed as stated
VARN_EXCEPTION(LibraryMissing)     ///< a library that should exist does not
VARN_EXCEPTION(ToolMissing)        ///< a tool that should exist does not
VARN_EXCEPTION(FolderMissing)      ///< a folder that should exist does not
VARN_EXCEPTION(AccessError)        ///< the file system refused
VARN_EXCEPTION(IOError)            ///< reading or writing failed
VARN_EXCEPTION(LibraryFormatError) ///< a library file has the wrong form
VARN_EXCEPTION(LibraryLoadError)   ///< a library could not be loaded
VARN_EXCEPTION(GeometryLoadError)  ///< a tool's 3D geometry cannot be restored
VARN_EXCEPTION(NotSupportedError)  ///< a known operation on a node that does not allow it
VARN_EXCEPTION(UnknownError)       ///< the catch-all
VARN_EXCEPTION(UserCancellation)   ///< the user dismissed a dialog

#undef VARN_EXCEPTION

/// Some geometry could not be written. The code is that of the host's table of errors, 0 when there is none.
class VARN_PLATFORM_EXPORT GeometryExportError : public Exception
{
public:
    using Exception::Exception;
    GeometryExportError(unsigned int errorCode, const char *message, std::optional<std::wstring> translated);
    ~GeometryExportError() override;

    unsigned int errorCode() const { return m_errorCode; }

private:
    unsigned int m_errorCode = 0;
};

} // namespace Varn::ToolLibraries
