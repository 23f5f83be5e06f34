// CZipMemFile.h -- a file in memory. One thread at a time.
#pragma once

#include "platform/zip/CZipAbstractFile.h"

#include <memory>
#include <string_view>

namespace Varn {

/// Empty at first and growing on its own, or attached to memory of the caller.
class VARN_PLATFORM_EXPORT CZipMemFile : public CZipAbstractFile
{
public:
    /// \a growBy is the least number of bytes that own memory grows by; a large file grows by half its size.
    explicit CZipMemFile(std::size_t growBy = 1024);
    ~CZipMemFile() override;

    /// The file is these \a size bytes from now on, the position their start; what it held is dropped. The memory stays
    /// the caller's and must outlive the attachment. Writes go into it, until one goes beyond its end: then the file
    /// goes on in memory of its own, or, for \a growBy 0, raises CZipException with the cause TooLarge.
    void Attach(unsigned char *memory, std::size_t size, std::size_t growBy = 0);

    /// As Attach(), for memory that is only read: the first write goes to a copy.
    void AttachConst(const unsigned char *memory, std::size_t size);

    /// Drops the content and what is attached; the file is empty and can be used again.
    void Close() override;

    std::size_t Read(void *buffer, std::size_t size) override;
    void Write(const void *bytes, std::size_t size) override;
    void Seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t GetPosition() const override { return m_position; }
    std::uint64_t GetLength() const override { return m_size; }
    void SetLength(std::uint64_t length) override;

    /// The content, until the next change.
    std::string_view GetBytes() const;

private:
    struct Free {
        void operator()(unsigned char *memory) const;
    };

    void reserve(std::uint64_t capacity);

    std::unique_ptr<unsigned char, Free> m_own; // null while attached or empty
    unsigned char *m_attached = nullptr;        // null unless attached to memory that may be written
    const unsigned char *m_data = nullptr;      // the content, own or attached
    std::size_t m_size = 0;
    std::size_t m_capacity = 0; // of what may be written
    std::uint64_t m_position = 0;
    std::size_t m_growBy;
};

} // namespace Varn
