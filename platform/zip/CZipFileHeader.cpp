#include "platform/zip/CZipFileHeader.h"

#include <utility>

namespace Varn {

CZipFileHeader::CZipFileHeader(CZipString name, std::uint64_t uncompressedSize, std::uint64_t compressedSize,
                               bool encrypted)
    : m_name(std::move(name)),
      m_uncompressedSize(uncompressedSize),
      m_compressedSize(compressedSize),
      m_encrypted(encrypted)
{
}

} // namespace Varn
