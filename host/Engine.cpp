#include "host/Engine.h"

#include "host/SampleLibraries.h"

#include "ToolLibrary/Interface/Factory.h"
#include "ToolLibrary/Interface/Private/StandardLibraryIndexProvider.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"

#include <utility>

namespace Quillon {

using namespace Varn::ToolLibraries;
using Varn::FileSystem;
using Varn::Messages;

Engine::Engine(Tree tree)
{
    std::shared_ptr<LibraryIndexProvider> provider;
    if (tree == Tree::Whole) {
        installSampleLibraries();
        provider = std::make_shared<StandardLibraryIndexProvider>();
    } else {
        provider = std::make_shared<LibraryIndexProvider>();
    }
    m_cache = std::make_shared<ToolLibraryCacheInMemory>(std::move(provider));
    Factory::Args args;
    args.cache = m_cache;
    m_interface = Factory::make(std::move(args));
}

Engine::~Engine()
{
    m_cache->initialLoadTask()->abort();
}

Engine::Tree treeFor(const ToolLibraryLocator &library)
{
    return library.isFilePath() ? Engine::Tree::None : Engine::Tree::Whole;
}

ToolLibraryLocator libraryNamed(const std::string &name)
{
    if (name.find("://") != std::string::npos)
        return ToolLibraryLocator(Messages::fromUTF8ToWideUnicode(name));
    return ToolLibraryLocator::fromFilePath(FileSystem::fromPath(name)); // whose name need not be UTF-8
}

} // namespace Quillon
