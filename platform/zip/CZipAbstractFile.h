// CZipAbstractFile.h -- bytes with a position: what an archive is read from and written to, and what its entries come
// from and go to. One thread at a time.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <cstddef>
#include <cstdint>

namespace Varn {

/// The operations raise CZipException, cause FileError unless told otherwise.
class VARN_PLATFORM_EXPORT CZipAbstractFile
{
public:
    CZipAbstractFile() = default;
    CZipAbstractFile(const CZipAbstractFile &) = delete;
    CZipAbstractFile &operator=(const CZipAbstractFile &) = delete;
    virtual ~CZipAbstractFile();

    virtual void Close() = 0;

    /// Reads as many bytes as there are, at most \a size, and says how many; 0 at the end.
    virtual std::size_t Read(void *buffer, std::size_t size) = 0;

    /// Writes all bytes, over what is there and beyond the end.
    virtual void Write(const void *bytes, std::size_t size) = 0;

    /// Moves to \a position, counted from the start. It may lie beyond the end: a write there fills the gap with zeros.
    virtual void Seek(std::uint64_t position) = 0;
    virtual std::uint64_t GetPosition() const = 0;

    virtual std::uint64_t GetLength() const = 0;

    /// Cuts the end off, or adds zeros. The position stays.
    virtual void SetLength(std::uint64_t length) = 0;
};

} // namespace Varn
