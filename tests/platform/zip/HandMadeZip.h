// HandMadeZip.h -- zip archives byte by byte, so that a test can have each of them say what no honest writer would.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

/// The checksum of the format: CRC-32 of ISO 3309, polynomial 0xEDB88320.
inline std::uint32_t crc32(std::string_view bytes)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int i = 0; i < 8; ++i)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

/// \a value in \a size bytes, little endian.
inline std::string number(std::uint64_t value, int size)
{
    std::string bytes;
    for (int i = 0; i < size; ++i, value >>= 8)
        bytes.push_back(static_cast<char>(value & 0xFF));
    return bytes;
}

/// An entry. What is not given is as it should be for \a content stored as it is.
struct HandMadeEntry {
    std::string name = {};
    std::string content = {};                 ///< the bytes that stand in the archive
    int method = 0;                           ///< 0 stored, 8 deflated
    int flags = 0;                            ///< 1 encrypted, 0x800 the name is UTF-8
    std::optional<std::uint32_t> crc = {};    ///< of the uncompressed content
    std::optional<std::uint64_t> size = {};   ///< uncompressed
    std::optional<std::uint64_t> packed = {}; ///< compressed
    std::optional<std::uint64_t> offset = {}; ///< of the local header
    bool zip64 = false;                       ///< sizes and offset of 64 bits, in the extra field
};

/// The end of an archive. What is not given is as it should be.
struct HandMadeEnd {
    std::optional<std::uint64_t> entries = {};
    std::optional<std::uint64_t> bytes = {};  ///< of the list of entries
    std::optional<std::uint64_t> offset = {}; ///< of the list of entries
    std::string comment = {};
    bool zip64 = false;
    int disk = 0;
};

namespace HandMade {

/// What both headers of an entry begin with, behind the signature.
inline std::string header(const HandMadeEntry &entry, std::uint64_t offset, bool central)
{
    const std::uint64_t size = entry.size.value_or(entry.content.size());
    const std::uint64_t packed = entry.packed.value_or(entry.content.size());
    const std::uint64_t large = 0xFFFFFFFF;
    std::string extra;
    if (entry.zip64)
        extra = number(1, 2) + number(central ? 24 : 16, 2) + number(size, 8) + number(packed, 8) +
                (central ? number(offset, 8) : "");
    std::string bytes = number(20, 2) + number(static_cast<unsigned>(entry.flags), 2) +
                        number(static_cast<unsigned>(entry.method), 2) + number(0, 2) + number(0x21, 2) +
                        number(entry.crc.value_or(crc32(entry.content)), 4) + number(entry.zip64 ? large : packed, 4) +
                        number(entry.zip64 ? large : size, 4) + number(entry.name.size(), 2) + number(extra.size(), 2);
    if (central)
        bytes += number(0, 2) + number(0, 2) + number(0, 2) + number(0100644U << 16, 4) +
                 number(entry.zip64 ? large : offset, 4);
    return bytes + entry.name + extra;
}

inline std::string end(std::uint64_t entries, std::uint64_t bytes, std::uint64_t offset, std::uint64_t position,
                       const HandMadeEnd &end)
{
    std::string result;
    if (end.zip64) {
        result = "PK\6\6" + number(44, 8) + number(45, 2) + number(45, 2) + number(0, 4) + number(0, 4) +
                 number(entries, 8) + number(entries, 8) + number(bytes, 8) + number(offset, 8);
        result += "PK\6\7" + number(0, 4) + number(position, 8) + number(1, 4);
        entries = bytes = offset = 0xFFFFFFFF;
    }
    return result + "PK\5\6" + number(static_cast<unsigned>(end.disk), 2) + number(static_cast<unsigned>(end.disk), 2) +
           number(entries, 2) + number(entries, 2) + number(bytes, 4) + number(offset, 4) +
           number(end.comment.size(), 2) + end.comment;
}

} // namespace HandMade

inline std::string handMadeZip(const std::vector<HandMadeEntry> &entries, const HandMadeEnd &end = {})
{
    std::string bytes;
    std::string directory;
    for (const HandMadeEntry &entry : entries) {
        const std::uint64_t offset = entry.offset.value_or(bytes.size());
        directory += "PK\1\2" + number(20, 2) + HandMade::header(entry, offset, true);
        bytes += "PK\3\4" + HandMade::header(entry, offset, false) + entry.content;
    }
    return bytes + directory +
           HandMade::end(end.entries.value_or(entries.size()), end.bytes.value_or(directory.size()),
                         end.offset.value_or(bytes.size()), bytes.size() + directory.size(), end);
}

/// \a content as a deflate stream of one block without compression, after RFC 1951.
inline std::string deflateStored(std::string_view content)
{
    return "\1" + number(content.size(), 2) + number(~content.size() & 0xFFFF, 2) + std::string(content);
}

} // namespace TestSupport
