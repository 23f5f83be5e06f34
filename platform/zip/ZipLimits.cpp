#include "platform/zip/ZipLimits.h"

#include "platform/zip/CZipAbstractFile.h"
#include "platform/zip/CZipException.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

namespace Varn {

namespace {

// Records at the end of an archive, after APPNOTE.TXT 4.3.14 to 4.3.16. Numbers are little endian.
constexpr std::string_view endSignature = {"PK\5\6", 4};
constexpr std::string_view locator64Signature = {"PK\6\7", 4};
constexpr std::string_view end64Signature = {"PK\6\6", 4};
constexpr std::uint64_t endSize = 22;
constexpr std::uint64_t locator64Size = 20;
constexpr std::uint64_t end64Size = 56;
constexpr std::uint64_t longestComment = 0xFFFF;

/// What one end record claims of the list of entries.
struct Directory {
    std::uint64_t entries = 0;
    std::uint64_t bytes = 0;
    std::uint64_t offset = 0;
};

std::uint64_t number(std::string_view bytes, std::size_t at, int size)
{
    std::uint64_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return value;
}

std::string read(CZipAbstractFile &archive, std::uint64_t position, std::uint64_t size)
{
    std::string bytes(size, '\0');
    archive.Seek(position);
    bytes.resize(archive.Read(bytes.data(), bytes.size()));
    return bytes;
}

/// The record of 64 bits that the locator before the end record leads to; nothing when there is none.
std::optional<Directory> directory64(CZipAbstractFile &archive, std::string_view locator)
{
    const std::uint64_t at = number(locator, 8, 8);
    if (at > archive.GetLength())
        return std::nullopt;
    const std::string end = read(archive, at, end64Size);
    if (end.size() < end64Size || !end.starts_with(end64Signature))
        return std::nullopt;
    return Directory{std::max(number(end, 24, 8), number(end, 32, 8)), number(end, 40, 8), number(end, 48, 8)};
}

/// What the end record at \a at claims; nothing for a record that no reader would follow.
std::optional<Directory> directory(CZipAbstractFile &archive, std::string_view tail, std::size_t at)
{
    if (at >= locator64Size && tail.substr(at - locator64Size).starts_with(locator64Signature))
        return directory64(archive, tail.substr(at - locator64Size, locator64Size));
    return Directory{number(tail, at + 10, 2), number(tail, at + 12, 4), number(tail, at + 16, 4)};
}

void expect(bool good, CZipException::Cause cause, const char *what)
{
    if (!good)
        throw CZipException(cause, std::string("archive: ") + what);
}

} // namespace

void ZipLimits::check(CZipAbstractFile &archive)
{
    using enum CZipException::Cause;
    const std::uint64_t length = archive.GetLength();
    expect(length <= mostBytes, TooLarge, "larger than 2147483647 bytes");
    const std::uint64_t tailSize = std::min(length, longestComment + endSize + locator64Size);
    const std::string tail = read(archive, length - tailSize, tailSize);
    // The comment of an archive may hold what looks like an end record, and a reader tries each: together they count.
    bool found = false;
    Directory sum;
    for (std::size_t at = tail.find(endSignature); at != std::string::npos && at + endSize <= tail.size();
         at = tail.find(endSignature, at + 1)) {
        const auto claimed = directory(archive, tail, at);
        if (!claimed || claimed->offset > length || claimed->bytes > length - claimed->offset)
            continue; // leads out of the archive
        found = true;
        sum.entries += std::min(claimed->entries, mostEntries + 1);
        sum.bytes += claimed->bytes;
    }
    expect(found, NoArchive, "no zip archive, or a truncated one");
    expect(sum.entries <= mostEntries, TooLarge, "more than 250000 entries");
    expect(sum.bytes <= mostDirectoryBytes, TooLarge, "a list of entries larger than 32 MiB");
}

} // namespace Varn
