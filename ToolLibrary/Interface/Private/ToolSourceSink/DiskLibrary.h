// DiskLibrary.h -- a library that can be read, changed and exported: what the cache holds.
#pragma once

#include "ToolLibrary/Interface/Private/ToolSourceSink/ExportableLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSink.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT DiskLibrary : public ToolSink, public ToolSource, public ExportableLibrary
{
public:
    ~DiskLibrary() override;

    /// Brings the local image of one tool up to date with where it is really kept.
    virtual Ox::expected<void, ToolSinkError> syncTool(const ToolId &id) = 0;

protected:
    /// Repairs the contents after they were written to wholesale.
    virtual void sanitise() = 0;
};

} // namespace Varn::ToolLibraries
