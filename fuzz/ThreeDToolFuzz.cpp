// ThreeDToolFuzz.cpp -- any bytes as a geometry file, and as the solid in one. A file that loads is saved as it came; a
// solid that is without fault is read by the modelling library or refused in a documented way.
#include "MemoryFile.h"
#include "platform/core/ToolSLDGeometry.h"
#include "platform/core/ToolSolid.h"
#include "platform/core/ToolSolidForm.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileInputStream.h"
#include "platform/utils/FileOutputStream.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

using namespace Varn;
using FuzzSupport::expect;
using FuzzSupport::MemoryFile;

namespace {

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
