// Factory.h -- the only way to a ToolLibraryInterface. One call at a time.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolLibraryInterface.h"
#include "platform/tool/UserInteraction.h"
#include "util/utility/SafePointer.h"

#include <memory>
#include <optional>

class QWidget;

namespace Varn {
class VarnDocument;
}

namespace Varn::ToolLibraries {

class ModeConfiguration;
class ToolLibraryCache;

/// At most one interface lives in a process: the one that the last caller still holds is given again. When its last
/// pointer goes it dies with its cache, and the next call starts over.
class TOOL_LIBRARY_EXPORT Factory
{
public:
    /// What the interface is made with. What is left empty gets a standard one.
    struct Args {
        SafePointer<VarnDocument> document; ///< becomes the active document, also of an interface that lives already
        QWidget *parent = nullptr;          ///< of dialogs
        std::optional<std::shared_ptr<ModeConfiguration>> modeConfiguration; ///< taken over by a living interface too
        std::optional<std::shared_ptr<ToolLibraryCache>> cache;              ///< only for a new one
        std::optional<std::shared_ptr<UserInteraction>> userInteraction;     ///< only for a new one
    };

    /// Whoever gives no cache gets one of the person's own tree, which begins to load at once.
    static std::shared_ptr<ToolLibraryInterface> make(Args args);
    static std::shared_ptr<ToolLibraryInterface>
    make(SafePointer<VarnDocument> document, QWidget *parent,
         std::optional<std::shared_ptr<ModeConfiguration>> modeConfiguration,
         std::optional<std::shared_ptr<ToolLibraryCache>> cache,
         std::optional<std::shared_ptr<UserInteraction>> userInteraction);
};

} // namespace Varn::ToolLibraries
