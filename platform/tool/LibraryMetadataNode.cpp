#include "platform/tool/LibraryMetadataNode.h"

#include "platform/tool/LibraryMetadataIndex.h"

#include <utility>

namespace Varn::ToolLibraries {

LibraryMetadataNode::LibraryMetadataNode(const gsl::not_null<std::shared_ptr<LibraryMetadata>> &metadata,
                                         std::vector<LibraryMetadataNode> children)
    : m_metadata(metadata.get())
{
    for (LibraryMetadataNode &child : children)
        m_children.push_back(std::move(child));
}

LibraryMetadataNode::LibraryMetadataNode(const LibraryMetadataNode &other)
    : m_metadata(other.m_metadata), m_children(copyOf(other.m_children))
{
}

// The metadata is shared rather than taken, so that the other one is a node still.
LibraryMetadataNode::LibraryMetadataNode(LibraryMetadataNode &&other) noexcept
    : m_metadata(other.m_metadata), // NOLINT(performance-move-constructor-init)
      m_children(other.m_index ? copyOf(other.m_children) : std::move(other.m_children))
{
}

LibraryMetadataNode &LibraryMetadataNode::operator=(const LibraryMetadataNode &other)
{
    if (this != &other)
        assign(LibraryMetadataNode(other));
    return *this;
}

LibraryMetadataNode &LibraryMetadataNode::operator=(LibraryMetadataNode &&other) noexcept
{
    if (this != &other)
        assign(LibraryMetadataNode(std::move(other)));
    return *this;
}

LibraryMetadataNode::~LibraryMetadataNode()
{
    clear(m_children);
}

void LibraryMetadataNode::setMetadata(const gsl::not_null<std::shared_ptr<LibraryMetadata>> &metadata)
{
    if (m_index)
        m_index->replaceMetadata(*this, metadata.get());
    else
        m_metadata = metadata.get();
}

/// Copies the nodes with all that is below them, without the tree that they belong to.
LibraryMetadataNode::Nodes LibraryMetadataNode::copyOf(const Nodes &nodes)
{
    Nodes copies;
    std::vector<std::pair<const Nodes *, Nodes *>> open{{&nodes, &copies}};
    while (!open.empty()) {
        const auto [from, to] = open.back();
        open.pop_back();
        for (const LibraryMetadataNode &node : *from) {
            LibraryMetadataNode &copy = to->emplace_back(node.m_metadata);
            if (!node.m_children.empty())
                open.emplace_back(&node.m_children, &copy.m_children);
        }
    }
    return copies;
}

/// Destroys the nodes, what is below before what is above: a node that goes finds no children to destroy.
void LibraryMetadataNode::clear(Nodes &nodes)
{
    while (!nodes.empty()) {
        // The children of the last node take its place in the list, which needs neither recursion nor memory.
        Nodes children = std::move(nodes.back().m_children);
        nodes.pop_back();
        nodes.splice(nodes.end(), children);
    }
}

/// Takes over the content of \a other, which belongs to no tree.
void LibraryMetadataNode::assign(LibraryMetadataNode &&other)
{
    LibraryMetadataIndex *const index = m_index;
    if (index)
        index->remove(*this);
    m_metadata.swap(other.m_metadata);
    m_children.swap(other.m_children);
    if (index)
        index->add(*m_siblings, m_self);
}

} // namespace Varn::ToolLibraries
