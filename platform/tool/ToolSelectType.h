// ToolSelectType.h -- what a tool is selected for. The numbers cross the interface. A value, any thread.
#pragma once

namespace Varn::ToolLibraries {

enum class ToolSelectType {
    Operation = 0, ///< the tool of an operation
    Reference = 1, ///< the reference tool of an operation
    Template = 2,  ///< the tool of an operation template
};

} // namespace Varn::ToolLibraries
