// ModeConfiguration.h -- which mode the host's tool library dialog runs in, and what it starts with.
#pragma once

#include "ToolLibrary/Interface/ToolSelection.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "util/utility/Reference.h"

#include <QString>

#include <optional>

namespace Varn {
class VarnObject;
}

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ModeConfiguration
{
public:
    /// The mode's word: "MANAGE" and others.
    virtual QString id() const = 0;

    /// In the language of the moment.
    virtual QString windowTitle() const = 0;

    /// The operation that the dialog is about; empty in modes without one.
    virtual Reference<VarnObject> operation() const = 0;

    virtual std::optional<ToolSelection> initialSelection() const = 0;
    virtual ~ModeConfiguration();
};

} // namespace Varn::ToolLibraries
