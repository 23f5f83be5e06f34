#include "platform/zip/DeflatedFile.h"

#include "platform/zip/CZipException.h"
#include "platform/zip/ZipLimits.h"

#include <zlib.h>

#include <algorithm>
#include <new>
#include <thread>
#include <utility>

namespace Varn {

namespace {

constexpr int level = 6;
constexpr int memoryLevel = 9;            // as libzip compresses
constexpr std::size_t windowSize = 32768; // how far back deflate looks

/// A stream of raw deflate data, without a header of zlib.
class Deflater
{
public:
    Deflater()
    {
        if (deflateInit2(&m_stream, level, Z_DEFLATED, -MAX_WBITS, memoryLevel, Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~Deflater() { deflateEnd(&m_stream); }
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;

    void setDictionary(std::string_view bytes)
    {
        deflateSetDictionary(&m_stream, data(bytes), static_cast<uInt>(bytes.size()));
    }

    /// All of \a content, up to a whole byte.
    std::string pack(std::string_view content, bool last)
    {
        constexpr std::size_t flushMarker = 16; // what a flush adds to the bound at most
        std::string packed(deflateBound(&m_stream, content.size()) + flushMarker, '\0');
        m_stream.next_in = data(content);
        m_stream.avail_in = static_cast<uInt>(content.size());
        m_stream.next_out = reinterpret_cast<Bytef *>(packed.data());
        m_stream.avail_out = static_cast<uInt>(packed.size());
        const int result = deflate(&m_stream, last ? Z_FINISH : Z_SYNC_FLUSH);
        if (result != (last ? Z_STREAM_END : Z_OK) || m_stream.avail_in > 0)
            throw CZipException(CZipException::Cause::NotAllowed, "memory file: could not be compressed");
        packed.resize(packed.size() - m_stream.avail_out);
        return packed;
    }

private:
    static Bytef *data(std::string_view bytes)
    {
        return reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data())); // zlib only reads it
    }

    z_stream m_stream{};
};

std::size_t helpers()
{
    return std::clamp(std::thread::hardware_concurrency(), 1u, 16u);
}

} // namespace

DeflatedFile::DeflatedFile() = default;

DeflatedFile::~DeflatedFile() = default;

void DeflatedFile::Append(std::string_view bytes)
{
    if (m_finished)
        throw CZipException(CZipException::Cause::NotAllowed, "memory file: its content has ended");
    if (bytes.size() > ZipLimits::mostBytes - m_contentSize)
        throw CZipException(CZipException::Cause::TooLarge, "memory file: more than 2147483647 bytes");
    m_contentSize += bytes.size();
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), chunkSize - m_chunk.size());
        m_chunk.append(bytes.substr(0, count));
        bytes.remove_prefix(count);
        if (m_chunk.size() == chunkSize)
            packChunk(false);
    }
}

void DeflatedFile::Finish()
{
    if (m_finished)
        return;
    packChunk(true);
    take(0);
    m_finished = true;
}

DeflatedFile::Packed DeflatedFile::pack(const std::string &content, const std::string &dictionary, bool last)
{
    Deflater deflater;
    if (!dictionary.empty())
        deflater.setDictionary(dictionary);
    const uLong checksum = crc32_z(0, reinterpret_cast<const Bytef *>(content.data()), content.size());
    return {deflater.pack(content, last), static_cast<std::uint32_t>(checksum), content.size()};
}

/// Sends the chunk on its way. Two for each processor may be on it, so that no helper waits for this thread.
void DeflatedFile::packChunk(bool last)
{
    take(2 * helpers() - 1);
    const std::string chunk = std::exchange(m_chunk, {});
    m_chunk.reserve(last ? 0 : chunkSize);
    const std::string dictionary =
        std::exchange(m_dictionary, chunk.substr(chunk.size() - std::min(chunk.size(), windowSize)));
    // Where no thread is to be had the chunk is packed when it is taken. Nothing is moved: what was moved into a thread
    // that could not begin is gone.
    constexpr auto anyWay = std::launch::async | std::launch::deferred;
    m_packed.push_back(std::async(anyWay, pack, chunk, dictionary, last));
}

/// Writes what is packed until at most \a mostLeft chunks are on their way.
void DeflatedFile::take(std::size_t mostLeft)
{
    while (m_packed.size() > mostLeft) {
        const Packed packed = m_packed.front().get();
        m_packed.pop_front();
        Write(packed.bytes.data(), packed.bytes.size());
        m_checksum = static_cast<std::uint32_t>(
            crc32_combine(m_checksum, packed.checksum, static_cast<z_off_t>(packed.contentSize)));
    }
}

} // namespace Varn
