// ToolOverwriteChoice.h -- the answer of a person to the question whether operations follow a preset that was edited.
// The numbers cross the interface. A value, any thread.
#pragma once

namespace Varn::ToolLibraries {

enum class ToolOverwriteChoice {
    Update = 0, ///< the operations take the new feeds and speeds; the first answer, also where nobody may be asked
    Keep = 1,   ///< the operations keep theirs; the second answer
    Cancel = 2, ///< the edit is off
};

} // namespace Varn::ToolLibraries
