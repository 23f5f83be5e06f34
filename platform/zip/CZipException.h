// CZipException.h -- why an operation on an archive or its files failed. A value.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <stdexcept>
#include <string>

namespace Varn {

/// Raised by every failed call of the archive classes but for CZipArchive::Open(). what() is UTF-8 and names the entry
/// or file.
class VARN_PLATFORM_EXPORT CZipException : public std::runtime_error
{
public:
    enum class Cause {
        NoArchive,   ///< the bytes are no zip archive, or one in several parts
        Damaged,     ///< the archive or an entry contradicts itself: truncated, a wrong checksum, a wrong size
        TooLarge,    ///< beyond one of the limits of ZipLimits
        Encrypted,   ///< an entry that needs a password
        Unsupported, ///< an entry compressed by a method other than "stored" and "deflated"
        BadName,     ///< a name that would leave the target folder, or that no file can have
        NameTaken,   ///< an entry of this name is there already
        NotAllowed,  ///< a call that the state or the mode does not allow, such as any on a closed archive
        FileError,   ///< a file could not be opened, read or written
        Aborted      ///< the Abortable said so
    };

    CZipException(Cause cause, const std::string &text);
    ~CZipException() override;

    Cause cause() const { return m_cause; }

private:
    Cause m_cause;
};

} // namespace Varn
