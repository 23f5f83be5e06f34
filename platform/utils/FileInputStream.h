// FileInputStream.h -- the bytes of a file, read from its start. One thread at a time.
#pragma once

#include "platform/utils/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace Varn {

/// Opens a regular file to read and closes it when it dies. Folders, pipes and devices do not open.
class VARN_PLATFORM_EXPORT FileInputStream
{
public:
    /// How to open: 16, read what is there, and 64, bytes without any change of line ends. The only flags of this
    /// class.
    static constexpr int readBinary = 80;

    explicit FileInputStream(const std::wstring &path, int flags = readBinary);

    bool isOpen() const { return m_file != nullptr; }

    /// Reads as many bytes as there are, at most those of \a buffer, and says how many; 0 at the end of the file.
    /// Nothing when the stream is closed or the reading fails.
    std::optional<std::size_t> read(std::span<std::byte> buffer);

    /// The bytes from here to the end of the file. Nothing when the stream is closed, the reading fails, or there are
    /// more than \a limit of them.
    std::optional<std::string> readAll(std::size_t limit = std::string::npos);

    /// The size of the file in bytes at this moment. Nothing when the stream is closed.
    std::optional<std::uint64_t> size() const;

    void close() { m_file.reset(); }

private:
    FileSystem::File m_file;
};

} // namespace Varn
