// ThreeDToolFuzz.cpp -- any bytes as a geometry file, and as the solid in one. A file that loads is saved as it came; a
// solid that is without fault is read by the modelling library or refused in a documented way.
#include "platform/core/ToolSLDGeometry.h"
#include "platform/core/ToolSolid.h"
#include "platform/core/ToolSolidForm.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileInputStream.h"
#include "platform/utils/FileOutputStream.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

using namespace Varn;

namespace {

void expect(bool good)
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

std::unique_ptr<ToolSLDGeometry> load(const MemoryFile &file)
{
    try {
        FileInputStream stream(file.path());
        return ToolSLDGeometry::load(L"id", stream);
    } catch (const ToolLibraries::IOError &) {
        return nullptr;
    }
}

void readSolid(std::string_view bytes)
{
    try {
        expect(ToolSolid::fromBytes(bytes) != nullptr);
        expect(!ToolSolidForm::findFault(bytes));
    } catch (const ToolLibraries::GeometryLoadError &) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const MemoryFile file(bytes);
    if (const auto geometry = load(file)) {
        const MemoryFile copy{std::string_view()};
        FileOutputStream out(copy.path());
        expect(geometry->save(out) && out.close());
        expect(FileInputStream(copy.path()).readAll() == bytes);
    }
    // Behind a header of any kind: no mutation gets past the checksum.
    constexpr std::size_t headerSize = 56;
    if (ToolSolid::isAvailable())
        readSolid(bytes.substr(std::min(headerSize, size)));
    return 0;
}
