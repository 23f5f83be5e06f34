#include "platform/zip/CZipMemFile.h"

#include "platform/zip/CZipException.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace Varn {

void CZipMemFile::Free::operator()(unsigned char *memory) const
{
    std::free(memory);
}

CZipMemFile::CZipMemFile(std::size_t growBy) : m_growBy(growBy) {}

CZipMemFile::~CZipMemFile() = default;

void CZipMemFile::Attach(unsigned char *memory, std::size_t size, std::size_t growBy)
{
    AttachConst(memory, size);
    m_attached = memory;
    m_capacity = size;
    m_growBy = growBy;
}

void CZipMemFile::AttachConst(const unsigned char *memory, std::size_t size)
{
    Close();
    m_data = memory;
    m_size = size;
}

void CZipMemFile::Close()
{
    m_own.reset();
    m_attached = nullptr;
    m_data = nullptr;
    m_size = 0;
    m_capacity = 0;
    m_position = 0;
}

std::size_t CZipMemFile::Read(void *buffer, std::size_t size)
{
    if (m_position >= m_size)
        return 0;
    const std::size_t count = std::min<std::size_t>(size, m_size - m_position);
    if (count > 0)
        std::memcpy(buffer, m_data + m_position, count);
    m_position += count;
    return count;
}

void CZipMemFile::Write(const void *bytes, std::size_t size)
{
    if (size == 0)
        return;
    if (size > std::numeric_limits<std::uint64_t>::max() - m_position)
        throw CZipException(CZipException::Cause::TooLarge, "memory file: beyond the end of the memory");
    const std::uint64_t end = m_position + size;
    reserve(std::max<std::uint64_t>(end, m_size));
    if (m_position > m_size)
        SetLength(m_position);
    unsigned char *memory = m_own ? m_own.get() : m_attached;
    std::memcpy(memory + m_position, bytes, size);
    m_size = std::max<std::size_t>(m_size, end);
    m_position = end;
}

void CZipMemFile::SetLength(std::uint64_t length)
{
    if (length > m_size) {
        reserve(length);
        std::memset((m_own ? m_own.get() : m_attached) + m_size, 0, length - m_size);
    }
    m_size = length;
}

std::string_view CZipMemFile::GetBytes() const
{
    return {reinterpret_cast<const char *>(m_data), m_size};
}

/// Makes memory that may be written, of at least \a capacity bytes, with the content in it.
void CZipMemFile::reserve(std::uint64_t capacity)
{
    if (capacity <= m_capacity)
        return;
    if (m_attached && m_growBy == 0)
        throw CZipException(CZipException::Cause::TooLarge, "memory file: the attached memory is full");
    const std::uint64_t wanted = std::max({capacity, m_size + m_size / 2, m_size + std::uint64_t{m_growBy}});
    auto *memory = static_cast<unsigned char *>(std::realloc(m_own.get(), wanted));
    if (!memory)
        throw std::bad_alloc();
    if (!m_own && m_size > 0)
        std::memcpy(memory, m_data, m_size);
    (void)m_own.release(); // realloc() has freed or moved it
    m_own.reset(memory);
    m_attached = nullptr;
    m_data = memory;
    m_capacity = wanted;
}

} // namespace Varn
