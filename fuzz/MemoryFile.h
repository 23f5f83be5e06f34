// MemoryFile.h -- files of the fuzz targets that never reach the disk.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

namespace FuzzSupport {

/// Ends the program, in every kind of build, when something is not as it should be.
inline void expect(bool good)
{
    if (!good)
        std::abort();
}

/// A file in memory, by a path that opens it anew.
class MemoryFile
{
public:
    explicit MemoryFile(std::string_view bytes) : m_descriptor(memfd_create("fuzz", MFD_CLOEXEC))
    {
        expect(m_descriptor >= 0);
        expect(write(m_descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    }
    ~MemoryFile() { close(m_descriptor); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    std::wstring path() const { return L"/proc/self/fd/" + std::to_wstring(m_descriptor); }

private:
    int m_descriptor;
};

} // namespace FuzzSupport
