// ToolLibraryParametersEnum.h -- the properties of the tool library's vocabulary, by the position of their rows.
#pragma once

namespace Varn::Tools {

/// Named after the keys, with '_' for what no name can have; the second row of a key also bears its parameter's name.
enum class ToolLibraryParametersEnum : int {
#define ROW(enumerator, ...) enumerator,
#include "ToolLibrary/ToolLibraryParameters.def"
#undef ROW
};

} // namespace Varn::Tools
