// CZipFileHeader.h -- what the directory of an archive says of one entry. A value.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/zip/CZipTypes.h"

#include <cstdint>

namespace Varn {

/// Sizes in bytes. They are claims of the archive; CZipArchive::ExtractFile() holds them against the content.
class VARN_PLATFORM_EXPORT CZipFileHeader
{
public:
    CZipFileHeader(CZipString name, std::uint64_t uncompressedSize, std::uint64_t compressedSize, bool encrypted);

    /// Path within the archive. A name that is not marked as UTF-8 is taken for it when it is valid, and for code page
    /// 437 otherwise, so that every name is a text and always the same one; control characters are then the signs that
    /// the code page has in their place.
    const CZipString &GetFileName() const { return m_name; }

    std::uint64_t GetUncompressedSize() const { return m_uncompressedSize; }
    std::uint64_t GetCompressedSize() const { return m_compressedSize; } ///< 0 for one that is yet to be written
    bool IsEncrypted() const { return m_encrypted; }
    bool IsDirectory() const { return !m_name.empty() && m_name.back() == L'/'; }

private:
    CZipString m_name;
    std::uint64_t m_uncompressedSize;
    std::uint64_t m_compressedSize;
    bool m_encrypted;
};

} // namespace Varn
