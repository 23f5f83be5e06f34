// ToolId.h -- the identifier of a tool. A value type, any thread.
#pragma once

#include "platform/utils/Guid.h"

#include <cstddef>
#include <functional>
#include <string>

namespace Varn::ToolLibraries {

class ToolId
{
public:
    /// From the text of a GUID; what is none gives the id of the null GUID, which no tool has.
    explicit ToolId(const std::string &guid) : m_guid(Guid::fromString(guid)) {}
    explicit ToolId(const Guid &guid) : m_guid(guid) {}

    const Guid &guid() const { return m_guid; }

    friend bool operator==(const ToolId &a, const ToolId &b) { return a.m_guid == b.m_guid; }

private:
    Guid m_guid;
};

} // namespace Varn::ToolLibraries

template <>
struct std::hash<Varn::ToolLibraries::ToolId> {
    std::size_t operator()(const Varn::ToolLibraries::ToolId &id) const noexcept { return qHash(id.guid().uuid()); }
};
