// LibraryMetadataTree.h -- the folders, libraries and documents that a person sees, as an ordered forest. A value:
// copies are independent, but share the metadata. Many threads may read one while none changes it.
#pragma once

#include "platform/tool/JSONSerializable.h"
#include "platform/tool/LibraryMetadataNode.h"

#include <gsl/gsl>

#include <memory>
#include <vector>

namespace Varn::ToolLibraries {

/// Nodes are found by their URLs in constant time, and put in or taken out in the time of what is below them. A pointer
/// to a node is good until that node is erased or its tree dies. Several nodes may bear the same URL; the first to come
/// is the one that is found. No operation recurses, however deep the tree is.
class VARN_PLATFORM_EXPORT LibraryMetadataTree : public JSONSerializable
{
public:
    using Node = LibraryMetadataNode;
    /// Where among its siblings a node goes.
    enum class InsertionPosition { Front = 0, Back = 1 };

    LibraryMetadataTree();
    explicit LibraryMetadataTree(const Node &root);
    LibraryMetadataTree(const LibraryMetadataTree &other);
    LibraryMetadataTree(LibraryMetadataTree &&other) noexcept; ///< leaves an empty tree
    LibraryMetadataTree &operator=(LibraryMetadataTree other) noexcept;
    ~LibraryMetadataTree() override;

    /// Puts a node under its parent(), at the back; among the roots when it has none, or one that is not in the tree,
    /// so that nothing is lost to the person.
    Node &insert(const gsl::not_null<std::shared_ptr<LibraryMetadata>> &metadata);

    /// Puts a copy of \a node with all that is below it under its parent(), by the same rule.
    Node &insert(const Node &node, InsertionPosition position);

    /// Takes every node with that URL out, with all that is below it. Unknown URLs are passed over.
    void erase(const ToolLibraryLocator &url);

    /// Null when there is none.
    Node *find(const ToolLibraryLocator &url);
    const Node *find(const ToolLibraryLocator &url) const;
    bool contains(const ToolLibraryLocator &url) const { return find(url) != nullptr; }

    /// All nodes, parents before children, in child order.
    std::vector<const Node *> traverse() const;

    /// All nodes below \a node, without itself, in the order of traverse().
    std::vector<const Node *> traverseNodes(const Node &node) const;
    std::vector<Node *> traverseNodes(Node &node);

    std::vector<const Node *> traverseRootNodes() const;
    std::vector<Node *> traverseRootNodes();

    /// The URLs of traverse().
    std::vector<ToolLibraryLocator> traverseUrls() const;

    /// The list of the roots; each node is the object of its metadata with its nodes as the list "children".
    std::string toJson() const override;

    /// Reads the text that toJson() gives; where a node stands in the text decides its place, not its "parent". Throws
    /// InvalidInput for what is no such list, and for one of more than 499 levels.
    static LibraryMetadataTree fromJson(const std::string &json);

private:
    struct Forest;

    Node &attach(Node &&node, InsertionPosition position);

    std::unique_ptr<Forest> m_forest; ///< never null; its address is known to the nodes
};

} // namespace Varn::ToolLibraries
