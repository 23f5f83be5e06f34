#include "platform/tool/LibraryMetadataTree.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"
#include "platform/tool/LibraryMetadataIndex.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

using Node = LibraryMetadataNode;
using Nodes = std::list<Node>;

/// The nodes of the list and all below them, parents first.
std::vector<const Node *> collect(const Nodes &nodes)
{
    std::vector<const Node *> result;
    std::vector<std::pair<Nodes::const_iterator, Nodes::const_iterator>> open{{nodes.begin(), nodes.end()}};
    while (!open.empty()) {
        auto &[next, end] = open.back();
        if (next == end) {
            open.pop_back();
            continue;
        }
        const Node &node = *next++;
        result.push_back(&node);
        if (!node.children().empty())
            open.emplace_back(node.children().begin(), node.children().end());
    }
    return result;
}

/// The same nodes for an owner of them who may change them.
std::vector<Node *> mutableNodes(const std::vector<const Node *> &nodes)
{
    std::vector<Node *> result;
    result.reserve(nodes.size());
    for (const Node *node : nodes)
        result.push_back(const_cast<Node *>(node));
    return result;
}

std::vector<const Node *> pointers(const Nodes &nodes)
{
    std::vector<const Node *> result;
    for (const Node &node : nodes)
        result.push_back(&node);
    return result;
}

/// Prints the object of \a node up to the first of its children.
void printOpenNode(const Node &node, std::string &json)
{
    Json::Value object = node.metadata()->toJsonValue();
    object.removeMember("children"); // such as came in with a node that a host took out of a printed tree
    JsonText::print(object, json);
    json.pop_back();
    json += object.empty() ? "\"children\":[" : ",\"children\":[";
}

} // namespace

struct LibraryMetadataTree::Forest {
    Nodes roots;
    LibraryMetadataIndex index;

    /// Enters nodes that were put among the roots by hand.
    void addRoots()
    {
        for (auto root = roots.begin(); root != roots.end(); ++root)
            index.add(roots, root);
    }
};

LibraryMetadataTree::LibraryMetadataTree() : m_forest(std::make_unique<Forest>()) {}

LibraryMetadataTree::LibraryMetadataTree(const Node &root) : LibraryMetadataTree()
{
    m_forest->roots.push_back(root);
    m_forest->addRoots();
}

LibraryMetadataTree::LibraryMetadataTree(const LibraryMetadataTree &other)
    : JSONSerializable(other), m_forest(std::make_unique<Forest>())
{
    m_forest->roots = Node::copyOf(other.m_forest->roots);
    m_forest->addRoots();
}

LibraryMetadataTree::LibraryMetadataTree(LibraryMetadataTree &&other) noexcept : LibraryMetadataTree()
{
    m_forest.swap(other.m_forest);
}

LibraryMetadataTree &LibraryMetadataTree::operator=(LibraryMetadataTree other) noexcept
{
    m_forest.swap(other.m_forest);
    return *this;
}

LibraryMetadataTree::~LibraryMetadataTree() = default;

Node &LibraryMetadataTree::insert(const gsl::not_null<std::shared_ptr<LibraryMetadata>> &metadata)
{
    return attach(Node(metadata), InsertionPosition::Back);
}

Node &LibraryMetadataTree::insert(const Node &node, InsertionPosition position)
{
    return attach(Node(node), position);
}

Node &LibraryMetadataTree::attach(Node &&node, InsertionPosition position)
{
    const std::optional<ToolLibraryLocator> &url = node.metadata()->parent();
    Node *const parent = url ? find(*url) : nullptr;
    Nodes &siblings = parent ? parent->m_children : m_forest->roots;
    const auto before = position == InsertionPosition::Front ? siblings.begin() : siblings.end();
    const auto place = siblings.insert(before, std::move(node));
    m_forest->index.add(siblings, place);
    return *place;
}

void LibraryMetadataTree::erase(const ToolLibraryLocator &url)
{
    // The one given may go with its node.
    const ToolLibraryLocator wanted = url; // NOLINT(performance-unnecessary-copy-initialization)
    while (Node *const node = m_forest->index.findLast(wanted)) {
        m_forest->index.remove(*node);
        node->m_siblings->erase(node->m_self);
    }
}

Node *LibraryMetadataTree::find(const ToolLibraryLocator &url)
{
    return m_forest->index.find(url);
}

const Node *LibraryMetadataTree::find(const ToolLibraryLocator &url) const
{
    return m_forest->index.find(url);
}

std::vector<const Node *> LibraryMetadataTree::traverse() const
{
    return collect(m_forest->roots);
}

std::vector<const Node *> LibraryMetadataTree::traverseNodes(const Node &node) const
{
    return collect(node.children());
}

std::vector<Node *> LibraryMetadataTree::traverseNodes(Node &node)
{
    return mutableNodes(collect(node.children()));
}

std::vector<const Node *> LibraryMetadataTree::traverseRootNodes() const
{
    return pointers(m_forest->roots);
}

std::vector<Node *> LibraryMetadataTree::traverseRootNodes()
{
    return mutableNodes(pointers(m_forest->roots));
}

std::vector<ToolLibraryLocator> LibraryMetadataTree::traverseUrls() const
{
    std::vector<ToolLibraryLocator> urls;
    for (const Node *node : traverse())
        urls.push_back(node->metadata()->url());
    return urls;
}

std::string LibraryMetadataTree::toJson() const
{
    struct OpenList {
        Nodes::const_iterator begin, next, end;
    };
    const auto openList = [](const Nodes &nodes) { return OpenList{nodes.begin(), nodes.begin(), nodes.end()}; };
    std::string json = "[";
    std::vector<OpenList> open{openList(m_forest->roots)};
    while (!open.empty()) {
        OpenList &list = open.back();
        if (list.next == list.end) {
            json += open.size() > 1 ? "]}" : "]";
            open.pop_back();
            continue;
        }
        if (list.next != list.begin)
            json += ',';
        const Node &node = *list.next++;
        printOpenNode(node, json);
        open.push_back(openList(node.children()));
    }
    return json;
}

LibraryMetadataTree LibraryMetadataTree::fromJson(const std::string &json)
{
    std::string error;
    std::optional<Json::Value> value = JsonText::parse(json, &error);
    if (!value)
        throw InvalidInput("Library tree is not valid JSON: " + error);
    LibraryMetadataTree tree;
    std::vector<std::pair<Json::Value, Nodes *>> open;
    open.emplace_back(std::move(*value), &tree.m_forest->roots);
    while (!open.empty()) {
        auto [list, nodes] = std::move(open.back());
        open.pop_back();
        if (!list.isArray())
            throw InvalidInput("Library tree: nodes that are not a list");
        for (Json::Value &object : list) {
            Json::Value children(Json::arrayValue);
            if (object.isObject())
                object.removeMember("children", &children);
            Node &node = nodes->emplace_back(LibraryMetadata::fromJsonValue(std::move(object)));
            open.emplace_back(std::move(children), &node.m_children);
        }
    }
    tree.m_forest->addRoots();
    return tree;
}

} // namespace Varn::ToolLibraries
