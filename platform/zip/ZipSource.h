// ZipSource.h -- a file of ours as libzip reads and writes one. One thread at a time.
#pragma once

#include "platform/zip/CZipMemFile.h"

#include <zip.h>

#include <memory>

namespace Varn {

class DeflatedFile;

/// Lives as long as the source that libzip has of it, and is deleted by that. An exception of the file becomes an error
/// of the source.
class ZipSource
{
public:
    struct Free {
        void operator()(zip_source_t *source) const { zip_source_free(source); }
    };
    using Pointer = std::unique_ptr<zip_source_t, Free>;

    /// The file that holds an archive, which outlives the source. What libzip writes takes its place at the end, at
    /// once.
    static Pointer forArchive(CZipAbstractFile &file);

    /// The content of an entry that is to be written.
    static Pointer forEntry(std::unique_ptr<CZipAbstractFile> file);
    static Pointer forEntry(std::unique_ptr<DeflatedFile> file); ///< copied as it is

    ZipSource(CZipAbstractFile &file, bool writable);
    ZipSource(const ZipSource &) = delete;
    ZipSource &operator=(const ZipSource &) = delete;
    ~ZipSource();

private:
    static Pointer make(std::unique_ptr<ZipSource> source);
    static zip_int64_t call(void *source, void *data, zip_uint64_t size, zip_source_cmd_t command) noexcept;
    zip_int64_t answer(void *data, zip_uint64_t size, zip_source_cmd_t command);
    zip_int64_t seek(CZipAbstractFile &file, void *data, zip_uint64_t size);
    zip_int64_t stat(void *data) const;
    zip_int64_t write(const void *data, zip_uint64_t size);
    zip_int64_t commit();
    zip_int64_t supported() const;

    CZipAbstractFile &m_file;
    std::unique_ptr<CZipAbstractFile> m_owned;
    const DeflatedFile *m_deflated = nullptr; // the owned file, if it is one
    bool m_writable;
    CZipMemFile m_written; // until it takes the place of the content of m_file
    zip_error_t m_error;
};

} // namespace Varn
