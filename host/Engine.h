// Engine.h -- the engine over a person's tree of libraries, for as long as a command runs. Main thread.
#pragma once

#include "ToolLibrary/Interface/Private/ToolLibraryCacheInMemory.h"
#include "platform/tool/ToolLibraryInterface.h"

#include <memory>
#include <string>

namespace Quillon {

class Engine
{
public:
    enum class Tree {
        Whole, ///< the person's
        None,  ///< for work on loose files
    };

    /// With the whole tree, puts the sample libraries where a person has none yet, and starts to load every library.
    explicit Engine(Tree tree = Tree::Whole);

    /// Aborts the loads that nobody waited for.
    ~Engine();
    Engine(const Engine &) = delete;
    Engine &operator=(const Engine &) = delete;

    Varn::ToolLibraries::ToolLibraryInterface *operator->() const { return m_interface.get(); }
    const std::shared_ptr<Varn::ToolLibraries::ToolLibraryInterface> &interface() const { return m_interface; }
    const Varn::ToolLibraries::ToolLibraryCacheInMemory &cache() const { return *m_cache; }

private:
    std::shared_ptr<Varn::ToolLibraries::ToolLibraryCacheInMemory> m_cache;
    std::shared_ptr<Varn::ToolLibraries::ToolLibraryInterface> m_interface;
};

/// What it takes to serve \a library: the tree is left alone for a file.
Engine::Tree treeFor(const Varn::ToolLibraries::ToolLibraryLocator &library);

/// A library as people name it: a URL, which has "://" in it, or a file.
Varn::ToolLibraries::ToolLibraryLocator libraryNamed(const std::string &name);

} // namespace Quillon
