#include "platform/zip/ZipSource.h"

#include "platform/zip/CZipException.h"
#include "platform/zip/DeflatedFile.h"
#include "platform/zip/ZipLimits.h"

#include <cerrno>
#include <new>
#include <utility>

namespace Varn {

ZipSource::Pointer ZipSource::forArchive(CZipAbstractFile &file)
{
    return make(std::make_unique<ZipSource>(file, true));
}

ZipSource::Pointer ZipSource::forEntry(std::unique_ptr<CZipAbstractFile> file)
{
    auto source = std::make_unique<ZipSource>(*file, false);
    source->m_owned = std::move(file);
    return make(std::move(source));
}

ZipSource::Pointer ZipSource::forEntry(std::unique_ptr<DeflatedFile> file)
{
    auto source = std::make_unique<ZipSource>(*file, false);
    source->m_deflated = file.get();
    source->m_owned = std::move(file);
    return make(std::move(source));
}

ZipSource::Pointer ZipSource::make(std::unique_ptr<ZipSource> source)
{
    Pointer made(zip_source_function_create(call, source.get(), nullptr));
    if (!made)
        throw std::bad_alloc();
    (void)source.release(); // the command ZIP_SOURCE_FREE deletes it
    return made;
}

ZipSource::ZipSource(CZipAbstractFile &file, bool writable) : m_file(file), m_writable(writable)
{
    zip_error_init(&m_error);
}

ZipSource::~ZipSource()
{
    zip_error_fini(&m_error);
}

zip_int64_t ZipSource::call(void *source, void *data, zip_uint64_t size, zip_source_cmd_t command) noexcept
{
    auto *self = static_cast<ZipSource *>(source);
    if (command == ZIP_SOURCE_FREE) {
        delete self;
        return 0;
    }
    try {
        return self->answer(data, size, command);
    } catch (const CZipException &) {
        zip_error_set(&self->m_error, command == ZIP_SOURCE_READ ? ZIP_ER_READ : ZIP_ER_WRITE, EIO);
    } catch (const std::bad_alloc &) {
        zip_error_set(&self->m_error, ZIP_ER_MEMORY, 0);
    }
    return -1;
}

zip_int64_t ZipSource::answer(void *data, zip_uint64_t size, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return supported();
    case ZIP_SOURCE_OPEN:
        m_file.Seek(0);
        return 0;
    case ZIP_SOURCE_READ:
        return static_cast<zip_int64_t>(m_file.Read(data, size));
    case ZIP_SOURCE_SEEK:
        return seek(m_file, data, size);
    case ZIP_SOURCE_TELL:
        return static_cast<zip_int64_t>(m_file.GetPosition());
    case ZIP_SOURCE_STAT:
        return stat(data);
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&m_error, data, size);
    case ZIP_SOURCE_WRITE:
        return write(data, size);
    case ZIP_SOURCE_SEEK_WRITE:
        return seek(m_written, data, size);
    case ZIP_SOURCE_TELL_WRITE:
        return static_cast<zip_int64_t>(m_written.GetPosition());
    case ZIP_SOURCE_COMMIT_WRITE:
        return commit();
    case ZIP_SOURCE_BEGIN_WRITE:
    case ZIP_SOURCE_ROLLBACK_WRITE:
        m_written.Close();
        return 0;
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_REMOVE:
        return 0; // an archive without entries is written by CZipArchive
    default:
        zip_error_set(&m_error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

zip_int64_t ZipSource::seek(CZipAbstractFile &file, void *data, zip_uint64_t size)
{
    const zip_int64_t position =
        zip_source_seek_compute_offset(file.GetPosition(), file.GetLength(), data, size, &m_error);
    if (position < 0)
        return -1;
    file.Seek(static_cast<std::uint64_t>(position));
    return 0;
}

zip_int64_t ZipSource::stat(void *data) const
{
    auto *answer = static_cast<zip_stat_t *>(data);
    zip_stat_init(answer);
    answer->size = m_file.GetLength();
    answer->valid = ZIP_STAT_SIZE;
    if (m_deflated) {
        answer->comp_size = answer->size;
        answer->size = m_deflated->GetContentSize();
        answer->crc = m_deflated->GetContentChecksum();
        answer->comp_method = ZIP_CM_DEFLATE;
        answer->valid |= ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
    }
    return sizeof(zip_stat_t);
}

zip_int64_t ZipSource::write(const void *data, zip_uint64_t size)
{
    if (size > ZipLimits::mostBytes - m_written.GetPosition()) {
        zip_error_set(&m_error, ZIP_ER_WRITE, EFBIG);
        return -1;
    }
    m_written.Write(data, size);
    return static_cast<zip_int64_t>(size);
}

zip_int64_t ZipSource::commit()
{
    const std::string_view bytes = m_written.GetBytes();
    m_file.Seek(0);
    m_file.Write(bytes.data(), bytes.size()); // first, for a file without room for it is then as it was
    m_file.SetLength(bytes.size());
    m_written.Close();
    return 0;
}

zip_int64_t ZipSource::supported() const
{
    const zip_int64_t reads =
        zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                       ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, -1);
    if (!m_writable)
        return reads;
    return reads | zip_source_make_command_bitmap(ZIP_SOURCE_BEGIN_WRITE, ZIP_SOURCE_COMMIT_WRITE,
                                                  ZIP_SOURCE_ROLLBACK_WRITE, ZIP_SOURCE_WRITE, ZIP_SOURCE_SEEK_WRITE,
                                                  ZIP_SOURCE_TELL_WRITE, ZIP_SOURCE_REMOVE, -1);
}

} // namespace Varn
