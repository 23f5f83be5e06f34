// Import3DToolResult.h -- what became of a file that was to be read as the 3D geometry of a tool. A value, any thread.
#pragma once

#include "platform/tool/Exception.h"
#include "platform/tool/JSONSerializable.h"

#include <optional>
#include <string>

namespace Varn {
class Tool3DGeometry;
} // namespace Varn

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT Import3DToolResult : public JSONSerializable
{
public:
    /// The person chose no file.
    explicit Import3DToolResult(std::nullopt_t);

    explicit Import3DToolResult(const Exception &exception);

    /// The geometry has been read. Its id is kept, not the geometry.
    explicit Import3DToolResult(const Tool3DGeometry &geometry);

    /// The geometry that was read; nothing when none was chosen, and on failure.
    const std::optional<std::wstring> &geometryId() const { return m_geometryId; }
    bool hasError() const { return m_error.has_value(); }

    /// The English text of the failure; empty without one.
    std::string errorText() const { return m_error.value_or(std::string()); }
    const std::optional<std::wstring> &translatedErrorText() const { return m_translated; }

    /// {"item":{"id": id of the geometry}}; {"item":null} when nothing was chosen; {"item":null,"error"} on failure.
    std::string toJson() const override;

private:
    std::optional<std::wstring> m_geometryId;
    std::optional<std::string> m_error;
    std::optional<std::wstring> m_translated;
};

} // namespace Varn::ToolLibraries
