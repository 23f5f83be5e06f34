// FileOutputStream.h -- bytes that go into a file, from its start. One thread at a time.
#pragma once

#include "platform/utils/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Varn {

/// Creates or empties a file and writes it through a buffer. Whoever must know that all bytes arrived calls close():
/// death closes the file as well, but cannot tell. A failure stays: from then on every operation fails.
class VARN_PLATFORM_EXPORT FileOutputStream
{
public:
    /// How to open: 1, create or empty, and 64, bytes without any change of line ends. The only flags of this class.
    static constexpr int writeBinary = 65;

    explicit FileOutputStream(const std::wstring &path, int flags = writeBinary);

    bool isOpen() const { return m_file != nullptr; }

    /// False when the stream is closed or not all bytes could be taken.
    bool write(std::span<const std::byte> bytes);
    bool write(std::string_view bytes) { return write(std::as_bytes(std::span(bytes))); }

    /// Hands what is buffered to the system. False when the stream is closed or a byte was lost, now or before.
    bool flush();

    /// Flushes and closes. False when a byte was lost, now or before, and when the stream was closed already.
    bool close();

    /// The bytes written so far, buffered ones too. Nothing when the stream is closed.
    std::optional<std::uint64_t> size() const;

private:
    FileSystem::File m_file;
    std::uint64_t m_size = 0;
    bool m_failed = false;
};

} // namespace Varn
