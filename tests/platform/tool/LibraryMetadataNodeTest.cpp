#include "platform/tool/LibraryMetadataNode.h"

#include "platform/tool/LibraryMetadataTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

using Node = LibraryMetadataTree::Node;

std::shared_ptr<LibraryMetadata> metadata(const std::wstring &url, const std::wstring &parent = L"")
{
    std::optional<ToolLibraryLocator> above;
    if (!parent.empty())
        above = ToolLibraryLocator(parent);
    return std::make_shared<LibraryMetadata>(url, LibraryMetadata::Type::Folder, ToolLibraryLocator(url), above,
                                             std::nullopt);
}

std::vector<std::wstring> childrenOf(const Node &node)
{
    std::vector<std::wstring> urls;
    for (const Node &child : node.children())
        urls.push_back(child.metadata()->url().url());
    return urls;
}

Node family()
{
    return Node(metadata(L"a"), {Node(metadata(L"b"), {Node(metadata(L"c"))}), Node(metadata(L"d"))});
}

std::vector<std::wstring> urlsOf(const LibraryMetadataTree &tree)
{
    std::vector<std::wstring> urls;
    for (const ToolLibraryLocator &url : tree.traverseUrls())
        urls.push_back(url.url());
    return urls;
}

/// A chain of \a length nodes, each the only child of the one before.
Node chain(int length)
{
    Node node(metadata(std::to_wstring(length)));
    for (int i = length - 1; i > 0; --i) {
        std::vector<Node> children;
        children.push_back(std::move(node));
        node = Node(metadata(std::to_wstring(i)), std::move(children));
    }
    return node;
}

} // namespace

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LibraryMetadataNodeTest, ChildrenKeepTheirOrder)
{
    const Node node = family();
    EXPECT_THAT(childrenOf(node), ElementsAre(L"b", L"d"));
    EXPECT_THAT(childrenOf(node.children().front()), ElementsAre(L"c"));
}

TEST(LibraryMetadataNodeTest, ACopyIsIndependentAndSharesTheMetadata)
{
    Node node = family();
    const Node copy = node;
    EXPECT_EQ(copy.metadata(), node.metadata());
    EXPECT_EQ(copy.children().front().metadata(), node.children().front().metadata());
    node = Node(metadata(L"x"));
    EXPECT_EQ(copy.metadata()->url().url(), L"a");
    EXPECT_THAT(childrenOf(copy), ElementsAre(L"b", L"d"));
    EXPECT_THAT(childrenOf(node), IsEmpty());
}

TEST(LibraryMetadataNodeTest, MovingTakesTheChildrenAndLeavesALeaf)
{
    Node node = family();
    const Node moved = std::move(node);
    EXPECT_THAT(childrenOf(moved), ElementsAre(L"b", L"d"));
    ASSERT_TRUE(node.metadata()); // NOLINT(bugprone-use-after-move)
    EXPECT_THAT(childrenOf(node), IsEmpty());
}

TEST(LibraryMetadataNodeTest, MetadataIsReplacedInPlace)
{
    Node node = family();
    const auto other = metadata(L"x");
    node.setMetadata(other);
    EXPECT_EQ(node.metadata(), other);
    EXPECT_THAT(childrenOf(node), ElementsAre(L"b", L"d"));
}

TEST(LibraryMetadataNodeTest, AssigningItselfChangesNothing)
{
    Node node = family();
    Node &same = node;
    node = same;
    EXPECT_THAT(childrenOf(node), ElementsAre(L"b", L"d"));
    node = std::move(same);
    EXPECT_THAT(childrenOf(node), ElementsAre(L"b", L"d"));
}

TEST(LibraryMetadataNodeTest, ANodeMayBecomeItsOwnChild)
{
    Node node = family();
    const Node child = node.children().front();
    node = child;
    EXPECT_EQ(node.metadata()->url().url(), L"b");
    EXPECT_THAT(childrenOf(node), ElementsAre(L"c"));
    node = node.children().front();
    EXPECT_EQ(node.metadata()->url().url(), L"c");
}

TEST(LibraryMetadataNodeTest, MovingOutOfATreeCopies)
{
    LibraryMetadataTree tree{family()};
    const Node taken = std::move(*tree.find(ToolLibraryLocator(L"a")));
    EXPECT_THAT(childrenOf(taken), ElementsAre(L"b", L"d"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"b", L"c", L"d"));
    EXPECT_TRUE(tree.contains(ToolLibraryLocator(L"c")));
}

TEST(LibraryMetadataNodeTest, AssigningToANodeOfATreeKeepsTheIndexRight)
{
    LibraryMetadataTree tree{family()};
    *tree.find(ToolLibraryLocator(L"b")) = Node(metadata(L"x"), {Node(metadata(L"y"))});
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"x", L"y", L"d"));
    EXPECT_FALSE(tree.contains(ToolLibraryLocator(L"b")));
    EXPECT_FALSE(tree.contains(ToolLibraryLocator(L"c")));
    ASSERT_TRUE(tree.contains(ToolLibraryLocator(L"y")));
    tree.erase(ToolLibraryLocator(L"y"));
    tree.erase(ToolLibraryLocator(L"x"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"d"));
}

TEST(LibraryMetadataNodeTest, TenThousandLevelsAreCopiedMovedAndDestroyed)
{
    Node node = chain(10000);
    Node copy = node;
    node = Node(metadata(L"x"));
    const Node moved = std::move(copy);
    LibraryMetadataTree tree(moved);
    EXPECT_EQ(tree.traverse().size(), 10000U);
    tree.find(ToolLibraryLocator(L"5000"))->setMetadata(metadata(L"middle"));
    *tree.find(ToolLibraryLocator(L"middle")) = Node(metadata(L"end"));
    EXPECT_EQ(tree.traverse().size(), 5000U);
}

} // namespace Varn::ToolLibraries
