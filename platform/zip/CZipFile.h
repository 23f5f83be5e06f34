// CZipFile.h -- a file on the disk, as the archive classes see one. One thread at a time.
#pragma once

#include "platform/zip/CZipAbstractFile.h"
#include "platform/zip/CZipTypes.h"

namespace Varn {

/// Closed at first. Only regular files open: no folder, pipe or device. Not buffered: for blocks, not for bytes.
class VARN_PLATFORM_EXPORT CZipFile : public CZipAbstractFile
{
public:
    enum class OpenMode {
        Read,      ///< what is there, to read
        ReadWrite, ///< what is there, to read and write
        Create     ///< made or emptied, to read and write
    };

    CZipFile() = default;
    ~CZipFile() override;

    /// False when the file could not be opened so; then this one is closed.
    bool Open(const CZipString &path, OpenMode mode);
    bool IsClosed() const { return m_descriptor < 0; }

    /// Raises CZipException when bytes that were written are lost. Closed afterwards all the same. Fine when closed.
    void Close() override;

    // Each raises CZipException on a closed file too.
    std::size_t Read(void *buffer, std::size_t size) override;
    void Write(const void *bytes, std::size_t size) override;
    void Seek(std::uint64_t position) override;
    std::uint64_t GetPosition() const override;
    std::uint64_t GetLength() const override;
    void SetLength(std::uint64_t length) override;

private:
    void expect(bool good, const char *what) const;

    int m_descriptor = -1;
    CZipString m_path;
};

} // namespace Varn
