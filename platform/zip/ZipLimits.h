// ZipLimits.h -- how large an archive may be, so that no file of a few kilobytes takes all memory or time. Stateless,
// any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <cstdint>
#include <limits>

namespace Varn {

class CZipAbstractFile;

/// No limit on the ratio of compression: a library of 100,000 tools is 453 MB of text that repeats itself, and is
/// welcome.
class VARN_PLATFORM_EXPORT ZipLimits
{
public:
    /// Bytes of an archive, of an entry, and of all entries of an archive together, uncompressed.
    static constexpr std::uint64_t mostBytes = std::numeric_limits<std::int32_t>::max();

    /// Room for a geometry of each tool and of each holder in a library of 100,000 tools.
    static constexpr std::uint64_t mostEntries = 250'000;

    /// Bytes of the list of entries at the end of an archive: 134 for each of the most entries.
    static constexpr std::uint64_t mostDirectoryBytes = std::uint64_t{32} << 20;

    /// Holds the size of \a archive and what its end says of the list of entries against the limits, before anything is
    /// made of that list. Raises CZipException: NoArchive, TooLarge, or what reading raises. The position is lost.
    static void check(CZipAbstractFile &archive);
};

} // namespace Varn
