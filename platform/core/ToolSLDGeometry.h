// ToolSLDGeometry.h -- the solid model of a tool as its file (.3DTool) holds it; see docs/3dtool-file.md. Any thread.
#pragma once

#include "platform/nc/Tool3DGeometry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class TopoDS_Shape;

namespace Varn {

class FileInputStream;

/// Keeps the bytes of the solid as they came and makes the solid of them at the first question, so that files are
/// loaded, saved and copied byte for byte also by a build without OpenCASCADE.
class VARN_PLATFORM_EXPORT ToolSLDGeometry : public Tool3DGeometry
{
public:
    /// Bytes of a solid that a file may hold.
    static constexpr std::uint64_t mostBytes = 0x7FFFFFFF;

    ~ToolSLDGeometry() override;

    /// Reads \a stream from where it stands to its end. The frame of the file is checked, the solid itself is not.
    /// \throws ToolLibraries::IOError "3D geometry " and the id, ": " and what is wrong with the file.
    static std::unique_ptr<ToolSLDGeometry> load(const std::wstring &id, FileInputStream &stream);

    /// \throws as ToolSolid::toBytes.
    static std::unique_ptr<ToolSLDGeometry> fromSolid(const std::wstring &id, const TopoDS_Shape &solid);

    /// The same solid under another id. Both share its bytes. REQUIRES: geometry; null without one.
    static std::shared_ptr<ToolSLDGeometry> copy(const std::shared_ptr<const ToolSLDGeometry> &geometry,
                                                 const std::wstring &newId);

    /// The bytes of the solid, without the frame of the file.
    std::string_view solidBytes() const;

    /// The solid, made once and kept; copies share it.
    /// \throws as ToolSolid::fromBytes, at each call again.
    std::shared_ptr<const TopoDS_Shape> solid() const;

private:
    class Content;

    ToolSLDGeometry(const std::wstring &id, std::shared_ptr<Content> content);

    bool writeTo(const Sink &sink) const override;

    std::shared_ptr<Content> m_content;
};

} // namespace Varn
