// ManageModeConfiguration.h -- the mode in which libraries are managed. Any thread.
#pragma once

#include "ToolLibrary/Interface/mode/ModeConfiguration.h"

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ManageModeConfiguration : public ModeConfiguration
{
public:
    QString id() const override;
    QString windowTitle() const override;
    Reference<VarnObject> operation() const override;
    std::optional<ToolSelection> initialSelection() const override;
};

} // namespace Varn::ToolLibraries
