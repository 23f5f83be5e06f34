// LibraryMetadataIndex.h -- finds the nodes of one tree of libraries by their URLs. Part of the tree, under its thread
// rule.
#pragma once

#include "platform/tool/LibraryMetadataNode.h"

#include <unordered_map>
#include <vector>

namespace Varn::ToolLibraries {

/// Knows every node that was added with all that is below it, and is known by them.
class LibraryMetadataIndex
{
public:
    using Node = LibraryMetadataNode;
    using Nodes = std::list<Node>;

    /// The node with that URL, the first that was added when there are several; null for none.
    Node *find(const ToolLibraryLocator &url) const;

    /// The one of them that was added last.
    Node *findLast(const ToolLibraryLocator &url) const;

    /// Enters the node at \a place of \a siblings with all that is below it.
    void add(Nodes &siblings, Nodes::iterator place);

    /// Forgets \a node and all that is below it.
    void remove(Node &node);

    void replaceMetadata(Node &node, std::shared_ptr<LibraryMetadata> metadata);

private:
    void removeUrl(const Node &node);

    std::unordered_map<ToolLibraryLocator, std::vector<Node *>> m_nodes; ///< no list is empty
};

} // namespace Varn::ToolLibraries
