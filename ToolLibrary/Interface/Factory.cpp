#include "ToolLibrary/Interface/Factory.h"

#include "ToolLibrary/Interface/APIUserInteraction.h"
#include "ToolLibrary/Interface/Private/StandardLibraryIndexProvider.h"
#include "ToolLibrary/Interface/Private/ToolLibraryCacheInMemory.h"
#include "ToolLibrary/Interface/Private/ToolLibraryInterfaceImpl.h"
#include "ToolLibrary/Interface/mode/ManageModeConfiguration.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

std::weak_ptr<ToolLibraryInterface> liveInstance;

std::shared_ptr<ToolLibraryInterface> makeNew(Factory::Args args)
{
    if (!args.cache)
        args.cache = std::make_shared<ToolLibraryCacheInMemory>(std::make_shared<StandardLibraryIndexProvider>());
    if (!args.modeConfiguration)
        args.modeConfiguration = std::make_shared<ManageModeConfiguration>();
    if (!args.userInteraction)
        args.userInteraction = std::make_shared<APIUserInteraction>();
    return std::make_shared<ToolLibraryInterfaceImpl>(*args.modeConfiguration, *args.cache, *args.userInteraction);
}

} // namespace

std::shared_ptr<ToolLibraryInterface> Factory::make(Args args)
{
    const SafePointer<VarnDocument> document = args.document;
    std::shared_ptr<ToolLibraryInterface> instance = liveInstance.lock();
    if (!instance) {
        instance = makeNew(std::move(args));
        liveInstance = instance;
    } else if (args.modeConfiguration) {
        if (auto *implementation = dynamic_cast<ToolLibraryInterfaceImpl *>(instance.get()))
            implementation->setModeConfiguration(*args.modeConfiguration);
    }
    instance->setActiveDocument(document);
    instance->refreshDocumentLibraries();
    return instance;
}

std::shared_ptr<ToolLibraryInterface> Factory::make(SafePointer<VarnDocument> document, QWidget *parent,
                                                    std::optional<std::shared_ptr<ModeConfiguration>> modeConfiguration,
                                                    std::optional<std::shared_ptr<ToolLibraryCache>> cache,
                                                    std::optional<std::shared_ptr<UserInteraction>> userInteraction)
{
    return make(
        Args{std::move(document), parent, std::move(modeConfiguration), std::move(cache), std::move(userInteraction)});
}

} // namespace Varn::ToolLibraries
