#include "platform/tool/LibraryMetadataIndex.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Varn::ToolLibraries {

LibraryMetadataNode *LibraryMetadataIndex::find(const ToolLibraryLocator &url) const
{
    const auto found = m_nodes.find(url);
    return found == m_nodes.end() ? nullptr : found->second.front();
}

LibraryMetadataNode *LibraryMetadataIndex::findLast(const ToolLibraryLocator &url) const
{
    const auto found = m_nodes.find(url);
    return found == m_nodes.end() ? nullptr : found->second.back();
}

void LibraryMetadataIndex::add(Nodes &siblings, Nodes::iterator place)
{
    std::vector<std::pair<Nodes *, Nodes::iterator>> open{{&siblings, place}};
    while (!open.empty()) {
        const auto [nodes, self] = open.back();
        open.pop_back();
        Node &node = *self;
        node.m_index = this;
        node.m_siblings = nodes;
        node.m_self = self;
        m_nodes[node.m_metadata->url()].push_back(&node);
        for (auto child = node.m_children.end(); child != node.m_children.begin();)
            open.emplace_back(&node.m_children, --child);
    }
}

void LibraryMetadataIndex::remove(Node &node)
{
    std::vector<Node *> open{&node};
    while (!open.empty()) {
        Node &next = *open.back();
        open.pop_back();
        removeUrl(next);
        next.m_index = nullptr;
        for (Node &child : next.m_children)
            open.push_back(&child);
    }
}

void LibraryMetadataIndex::replaceMetadata(Node &node, std::shared_ptr<LibraryMetadata> metadata)
{
    if (!(node.m_metadata->url() == metadata->url())) {
        m_nodes[metadata->url()].push_back(&node);
        removeUrl(node);
    }
    node.m_metadata = std::move(metadata);
}

void LibraryMetadataIndex::removeUrl(const Node &node)
{
    const auto found = m_nodes.find(node.m_metadata->url());
    // From the back: an erase takes the last first, so that it is not slow where many nodes share the URL.
    const auto last = std::ranges::find(found->second.rbegin(), found->second.rend(), &node);
    found->second.erase(std::prev(last.base()));
    if (found->second.empty())
        m_nodes.erase(found);
}

} // namespace Varn::ToolLibraries
