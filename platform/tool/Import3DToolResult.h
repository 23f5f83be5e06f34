// Import3DToolResult.h -- what became of a file that was to be read as the 3D geometry of a tool. A value, any thread.
#pragma once

#include "platform/tool/Exception.h"
#include "platform/tool/JSONSerializable.h"
#include "platform/utils/Guid.h"

#include <optional>
#include <string>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT Import3DToolResult : public JSONSerializable
{
public:
    /// The person chose no file.
    explicit Import3DToolResult(std::nullopt_t);

    explicit Import3DToolResult(const Exception &exception);

    /// The geometry with that id has been read.
    static Import3DToolResult fromGeometryId(const Guid &geometryId);

    /// The geometry that was read; nothing when none was chosen, and on failure.
    const std::optional<Guid> &geometryId() const { return m_geometryId; }
    bool hasError() const { return m_error.has_value(); }

    /// The English text of the failure; empty without one.
    std::string errorText() const { return m_error.value_or(std::string()); }
    const std::optional<std::wstring> &translatedErrorText() const { return m_translated; }

    /// {"item":{"id": GUID}}; {"item":null} when nothing was chosen; {"item":null,"error"} on failure.
    std::string toJson() const override;

private:
    std::optional<Guid> m_geometryId;
    std::optional<std::string> m_error;
    std::optional<std::wstring> m_translated;
};

} // namespace Varn::ToolLibraries
