#include "ToolLibrary/Interface/Private/ToolSourceSink/FilteredToolSource.h"

#include "util/utility/Assert.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Varn::ToolLibraries {

FilteredToolSource::FilteredToolSource(gsl::not_null<std::shared_ptr<const ToolSource>> parent,
                                       std::vector<ToolId> toolIds)
    : m_parent(parent), m_toolIds(toolIds)
{
    // clang-format off
    VARN_EXPECTS(std::ranges::all_of(toolIds, [parent](const ToolId& id) -> bool { return parent->get(id).has_value(); }));
    // clang-format on
}

std::string FilteredToolSource::toJson() const
{
    throw std::runtime_error("FilteredToolSource::toJson() is not implemented");
}

std::optional<std::shared_ptr<Tool>> FilteredToolSource::get(ToolId id) const
{
    if (std::ranges::find(m_toolIds, id) == m_toolIds.end())
        return std::nullopt;
    return m_parent->get(id);
}

unsigned int FilteredToolSource::numberOfTools() const
{
    return static_cast<unsigned int>(m_toolIds.size());
}

std::vector<ToolId> FilteredToolSource::getToolIds() const
{
    return m_toolIds;
}

int FilteredToolSource::getVersion() const
{
    return m_parent->getVersion();
}

std::unique_ptr<const Tool> FilteredToolSource::at(unsigned int index) const
{
    VARN_EXPECTS(index < numberOfTools());
    const std::optional<std::shared_ptr<Tool>> maybeTool = m_parent->get(m_toolIds.at(index));
    VARN_ASSERT(maybeTool && *maybeTool);
    return maybeTool && *maybeTool ? (*maybeTool)->clone() : nullptr;
}

} // namespace Varn::ToolLibraries
