// FilteredToolSource.h -- a read-only view of a source, restricted to a list of tools: what a setup of a document looks
// like to the rest of the system. Threads as for ToolSource.
#pragma once

#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"

#include <gsl/gsl>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT FilteredToolSource : public ToolSource
{
public:
    /// The tools come in the order of \a toolIds, one for each entry. REQUIRES: \a parent has them all.
    FilteredToolSource(gsl::not_null<std::shared_ptr<const ToolSource>> parent, std::vector<ToolId> toolIds);

    /// Throws std::runtime_error: a filtered view is never written or exported.
    std::string toJson() const override;

    /// Nothing for a tool outside the list, even if the parent has it.
    std::optional<std::shared_ptr<Tool>> get(ToolId id) const override;
    unsigned int numberOfTools() const override;
    std::vector<ToolId> getToolIds() const override;
    int getVersion() const override;

private:
    std::unique_ptr<const Tool> at(unsigned int index) const override;

    gsl::not_null<std::shared_ptr<const ToolSource>> m_parent;
    std::vector<ToolId> m_toolIds;
};

} // namespace Varn::ToolLibraries
