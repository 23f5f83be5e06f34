#include "platform/core/ToolSolid.h"

#include "platform/core/ToolSolidForm.h"
#include "platform/tool/Exception.h"

#include <BinTools.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Shape.hxx>

#include <exception>
#include <istream>
#include <sstream>
#include <streambuf>

namespace Varn {

using ToolLibraries::GeometryLoadError;
using ToolLibraries::InvalidInput;
using ToolLibraries::IOError;

namespace {

/// Bytes as they lie in memory, for a reader that wants a stream. The reader asks for its place in the stream.
class BytesBuffer : public std::streambuf
{
public:
    explicit BytesBuffer(std::string_view bytes)
    {
        char *begin = const_cast<char *>(bytes.data()); // nothing is ever put into it
        setg(begin, begin, begin + bytes.size());
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode) override
    {
        const off_type from = direction == std::ios_base::beg   ? 0
                              : direction == std::ios_base::cur ? gptr() - eback()
                                                                : egptr() - eback();
        const off_type target = from + offset;
        if (target < 0 || target > egptr() - eback())
            return pos_type(off_type(-1));
        setg(eback(), eback() + target, egptr());
        return pos_type(target);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override
    {
        return seekoff(off_type(position), std::ios_base::beg, mode);
    }
};

[[noreturn]] void fail(const std::string &what)
{
    throw GeometryLoadError("The solid cannot be read: " + what);
}

} // namespace

bool ToolSolid::isAvailable()
{
    return true;
}

std::string ToolSolid::toBytes(const TopoDS_Shape &shape)
{
    if (shape.IsNull())
        throw InvalidInput("There is no solid to write");
    std::ostringstream stream;
    try {
        BinTools::Write(shape, stream, /* with triangles */ false, /* with normals */ false,
                        BinTools_FormatVersion_VERSION_4);
    } catch (const Standard_Failure &failure) {
        throw IOError(std::string("The solid cannot be written: ") + failure.GetMessageString());
    }
    if (!stream)
        throw IOError("The solid cannot be written");
    std::string bytes = std::move(stream).str();
    if (const auto fault = ToolSolidForm::findFault(bytes)) // it could never be read again
        throw InvalidInput("The solid cannot be kept: " + *fault);
    return bytes;
}

std::shared_ptr<const TopoDS_Shape> ToolSolid::fromBytes(std::string_view bytes)
{
    // The modelling library trusts what it reads: it must see no count, index or nesting that nobody has checked.
    if (const auto fault = ToolSolidForm::findFault(bytes))
        fail(*fault);
    auto shape = std::make_shared<TopoDS_Shape>();
    try {
        BytesBuffer buffer(bytes);
        std::istream stream(&buffer);
        BinTools::Read(*shape, stream);
    } catch (const Standard_Failure &failure) {
        const char *message = failure.GetMessageString();
        fail(message && *message ? message : failure.DynamicType()->Name());
    } catch (const std::exception &failure) {
        fail(failure.what());
    }
    if (shape->IsNull())
        fail("it is empty");
    return shape;
}

} // namespace Varn
