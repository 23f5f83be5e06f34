// LibraryMetadataNode.h -- a node of the tree of libraries with all that hangs below it. A value; many threads may read
// one while none changes it.
#pragma once

#include "platform/tool/LibraryMetadata.h"

#include <gsl/gsl>

#include <list>
#include <memory>
#include <vector>

namespace Varn::ToolLibraries {

class LibraryMetadataIndex;

/// Copies are deep, but share the metadata. A node that belongs to a tree changes by the operations of the tree and by
/// those below, which keep the tree's index of URLs right; moving from it copies. No operation recurses, however deep
/// the tree is.
class VARN_PLATFORM_EXPORT LibraryMetadataNode
{
public:
    explicit LibraryMetadataNode(const gsl::not_null<std::shared_ptr<LibraryMetadata>> &metadata,
                                 std::vector<LibraryMetadataNode> children = {});
    LibraryMetadataNode(const LibraryMetadataNode &other);
    LibraryMetadataNode(LibraryMetadataNode &&other) noexcept;
    LibraryMetadataNode &operator=(const LibraryMetadataNode &other);
    LibraryMetadataNode &operator=(LibraryMetadataNode &&other) noexcept;
    ~LibraryMetadataNode();

    /// Never null.
    const std::shared_ptr<LibraryMetadata> &metadata() const { return m_metadata; }

    /// Replaces the metadata in place, also by one of another URL: the node keeps its place and its children, and the
    /// tree finds it by the new URL from then on.
    void setMetadata(const gsl::not_null<std::shared_ptr<LibraryMetadata>> &metadata);

    const std::list<LibraryMetadataNode> &children() const { return m_children; }

private:
    friend class LibraryMetadataIndex;
    friend class LibraryMetadataTree;
    using Nodes = std::list<LibraryMetadataNode>;

    static Nodes copyOf(const Nodes &nodes);
    static void clear(Nodes &nodes);
    void assign(LibraryMetadataNode &&other);

    std::shared_ptr<LibraryMetadata> m_metadata;
    Nodes m_children;

    // These three are set by the index of the tree that the node belongs to, and mean nothing without one.
    LibraryMetadataIndex *m_index = nullptr;
    Nodes *m_siblings = nullptr;
    Nodes::iterator m_self; ///< in m_siblings
};

} // namespace Varn::ToolLibraries
