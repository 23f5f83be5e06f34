#include "platform/nc/Tool3DGeometry.h"

#include "platform/utils/FileOutputStream.h"
#include "platform/utils/FileReplacement.h"

namespace Varn {

Tool3DGeometry::~Tool3DGeometry() = default;

bool Tool3DGeometry::save(FileOutputStream &stream) const
{
    return writeTo([&stream](std::string_view bytes) { return stream.write(bytes); });
}

bool Tool3DGeometry::save(FileReplacement &file) const
{
    return writeTo([&file](std::string_view bytes) { return file.write(bytes); });
}

} // namespace Varn
