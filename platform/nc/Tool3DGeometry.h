// Tool3DGeometry.h -- a solid model of a tool that is there, whatever holds it. Immutable, any thread.
#pragma once

#include "platform/nc/Tool3DGeometryBase.h"

#include <functional>
#include <string_view>

namespace Varn {

class FileOutputStream;
class FileReplacement;

class VARN_PLATFORM_EXPORT Tool3DGeometry : public Tool3DGeometryBase
{
public:
    ~Tool3DGeometry() override;

    /// Writes a whole geometry file. False when not all bytes were taken; whether they reached the disk is told by the
    /// stream's close(), or by the replacement's commit().
    bool save(FileOutputStream &stream) const;
    bool save(FileReplacement &file) const;

protected:
    using Tool3DGeometryBase::Tool3DGeometryBase;

    /// Takes the next bytes of a file; false when it could not take all of them.
    using Sink = std::function<bool(std::string_view)>;

private:
    /// Hands the bytes of the file to \a sink, in order, until it answers false.
    virtual bool writeTo(const Sink &sink) const = 0;
};

} // namespace Varn
