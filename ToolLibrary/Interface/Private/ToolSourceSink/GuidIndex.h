// GuidIndex.h -- the place of each tool of a list by its GUID, found in a time that does not grow with the list.
// Reading from several threads is safe while nothing writes.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QHash>
#include <QUuid>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Varn::ToolLibraries {

/// A removal shifts the places of all later tools, so the hash keeps sequence numbers, which only grow along the list,
/// and the place of one is found among them by halving.
class TOOL_LIBRARY_EXPORT GuidIndex
{
public:
    void clear();

    /// Adds the tool that is now last; false, and nothing changes, when there is one with that GUID.
    bool append(const QUuid &guid);

    std::optional<std::size_t> find(const QUuid &guid) const;

    /// The tool at \a position has left the list, and those behind it have closed up.
    void remove(const QUuid &guid, std::size_t position);

private:
    QHash<QUuid, std::uint32_t> m_sequenceOf;
    std::vector<std::uint32_t> m_sequences; // by place, ascending
    std::uint32_t m_next = 0;
};

} // namespace Varn::ToolLibraries
