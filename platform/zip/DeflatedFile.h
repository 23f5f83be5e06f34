// DeflatedFile.h -- the content of an entry, compressed while it comes, so that it is never whole in memory. One thread
// at a time; the work is shared out among threads of its own.
#pragma once

#include "platform/zip/CZipMemFile.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <future>
#include <string>
#include <string_view>

namespace Varn {

/// A file of "deflated" data (RFC 1951) at zlib's usual level 6. The content is cut into chunks that are compressed
/// side by side, each with the end of the one before as its dictionary. The same content gives the same bytes, on any
/// number of processors.
class VARN_PLATFORM_EXPORT DeflatedFile : public CZipMemFile
{
public:
    static constexpr std::size_t chunkSize = std::size_t{1} << 18;

    DeflatedFile();
    ~DeflatedFile() override;

    /// Takes the next bytes of the content. Raises CZipException with the cause TooLarge beyond ZipLimits::mostBytes.
    void Append(std::string_view bytes);

    /// Ends the content. Only now the file is complete; nothing may be appended any more.
    void Finish();
    bool IsFinished() const { return m_finished; }

    std::uint64_t GetContentSize() const { return m_contentSize; }
    std::uint32_t GetContentChecksum() const { return m_checksum; } ///< CRC-32, of what is finished

private:
    struct Packed {
        std::string bytes;
        std::uint32_t checksum;
        std::size_t contentSize;
    };

    static Packed pack(const std::string &content, const std::string &dictionary, bool last);
    void packChunk(bool last);
    void take(std::size_t mostLeft);

    std::string m_chunk;      // content that is not yet on its way
    std::string m_dictionary; // the end of what is
    std::deque<std::future<Packed>> m_packed;
    std::uint64_t m_contentSize = 0;
    std::uint32_t m_checksum = 0;
    bool m_finished = false;
};

} // namespace Varn
