#include "platform/tool/LibraryMetadataTree.h"

#include "platform/tool/Exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Node = LibraryMetadataTree::Node;
using Position = LibraryMetadataTree::InsertionPosition;

ToolLibraryLocator at(const std::wstring &url)
{
    return ToolLibraryLocator(url);
}

std::shared_ptr<LibraryMetadata> metadata(const std::wstring &url, const std::wstring &parent = L"",
                                          const std::wstring &name = L"")
{
    std::optional<ToolLibraryLocator> above;
    if (!parent.empty())
        above = at(parent);
    return std::make_shared<LibraryMetadata>(name, LibraryMetadata::Type::Folder, at(url), above, std::nullopt);
}

template <typename Nodes>
std::vector<std::wstring> urlsOf(const Nodes &nodes)
{
    std::vector<std::wstring> urls;
    urls.reserve(nodes.size());
    for (const Node *node : nodes)
        urls.push_back(node->metadata()->url().url());
    return urls;
}

std::vector<std::wstring> urlsOf(const LibraryMetadataTree &tree)
{
    return urlsOf(tree.traverse());
}

/// a(b(c, d), e), f
LibraryMetadataTree smallTree()
{
    LibraryMetadataTree tree;
    tree.insert(metadata(L"a"));
    tree.insert(metadata(L"b", L"a"));
    tree.insert(metadata(L"e", L"a"));
    tree.insert(metadata(L"c", L"b"));
    tree.insert(metadata(L"d", L"b"));
    tree.insert(metadata(L"f"));
    return tree;
}

LibraryMetadataTree deepTree(int levels)
{
    LibraryMetadataTree tree;
    tree.insert(metadata(L"0"));
    for (int i = 1; i < levels; ++i)
        tree.insert(metadata(std::to_wstring(i), std::to_wstring(i - 1)));
    return tree;
}

/// Every node can be found, and nothing else.
void expectConsistent(const LibraryMetadataTree &tree)
{
    for (const Node *node : tree.traverse())
        EXPECT_EQ(tree.find(node->metadata()->url()), node);
}

std::string refusal(const std::string &json)
{
    try {
        LibraryMetadataTree::fromJson(json);
    } catch (const InvalidInput &e) {
        return e.what();
    }
    return "read";
}

} // namespace

TEST(LibraryMetadataTreeTest, AnEmptyTreeHoldsNothing)
{
    LibraryMetadataTree tree;
    EXPECT_THAT(tree.traverse(), IsEmpty());
    EXPECT_THAT(tree.traverseRootNodes(), IsEmpty());
    EXPECT_THAT(tree.traverseUrls(), IsEmpty());
    EXPECT_EQ(tree.find(at(L"a")), nullptr);
    tree.erase(at(L"a"));
    EXPECT_EQ(tree.toJson(), "[]");
}

TEST(LibraryMetadataTreeTest, TraversesParentsBeforeChildrenInChildOrder)
{
    const LibraryMetadataTree tree = smallTree();
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"b", L"c", L"d", L"e", L"f"));
    EXPECT_THAT(urlsOf(tree.traverseRootNodes()), ElementsAre(L"a", L"f"));
    EXPECT_THAT(tree.traverseUrls(), ElementsAre(at(L"a"), at(L"b"), at(L"c"), at(L"d"), at(L"e"), at(L"f")));
    expectConsistent(tree);
}

TEST(LibraryMetadataTreeTest, TraversesBelowANodeWithoutTheNode)
{
    LibraryMetadataTree tree = smallTree();
    EXPECT_THAT(urlsOf(tree.traverseNodes(*tree.find(at(L"a")))), ElementsAre(L"b", L"c", L"d", L"e"));
    EXPECT_THAT(urlsOf(tree.traverseNodes(*tree.find(at(L"c")))), IsEmpty());
    const LibraryMetadataTree &readable = tree;
    EXPECT_THAT(urlsOf(readable.traverseNodes(*readable.find(at(L"b")))), ElementsAre(L"c", L"d"));
}

TEST(LibraryMetadataTreeTest, NodesOfATraversalMayBeChanged)
{
    LibraryMetadataTree tree = smallTree();
    for (Node *node : tree.traverseNodes(*tree.find(at(L"b"))))
        node->setMetadata(metadata(node->metadata()->url().url() + L"2", L"b"));
    for (Node *node : tree.traverseRootNodes())
        node->setMetadata(metadata(node->metadata()->url().url() + L"3"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a3", L"b", L"c2", L"d2", L"e", L"f3"));
    expectConsistent(tree);
    EXPECT_FALSE(tree.contains(at(L"a")));
}

TEST(LibraryMetadataTreeTest, InsertsASubtreeAtEitherEnd)
{
    LibraryMetadataTree tree = smallTree();
    const Node subtree(metadata(L"x", L"a"), {Node(metadata(L"y", L"x")), Node(metadata(L"z", L"x"))});
    tree.insert(subtree, Position::Front);
    tree.insert(Node(metadata(L"w", L"a")), Position::Back);
    tree.insert(Node(metadata(L"v")), Position::Front);
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"v", L"a", L"x", L"y", L"z", L"b", L"c", L"d", L"e", L"w", L"f"));
    expectConsistent(tree);
}

TEST(LibraryMetadataTreeTest, InsertGivesTheNewNode)
{
    LibraryMetadataTree tree;
    const Node &a = tree.insert(metadata(L"a"));
    EXPECT_EQ(tree.find(at(L"a")), &a);
    const Node &b = tree.insert(Node(metadata(L"b", L"a")), Position::Front);
    EXPECT_EQ(tree.find(at(L"b")), &b);
}

TEST(LibraryMetadataTreeTest, PositionsHaveTheNumbersThatHostsKnow)
{
    EXPECT_EQ(int(Position::Front), 0);
    EXPECT_EQ(int(Position::Back), 1);
}

TEST(LibraryMetadataTreeTest, ANodeOfAnUnknownParentGoesAmongTheRoots)
{
    LibraryMetadataTree tree = smallTree();
    tree.insert(metadata(L"x", L"nowhere"));
    tree.insert(Node(metadata(L"y", L"nowhere"), {Node(metadata(L"z", L"y"))}), Position::Front);
    tree.insert(metadata(L"self", L"self"));
    EXPECT_THAT(urlsOf(tree.traverseRootNodes()), ElementsAre(L"y", L"a", L"f", L"x", L"self"));
    EXPECT_EQ(tree.find(at(L"x"))->metadata()->parent(), at(L"nowhere"));
    tree.insert(metadata(L"nowhere"));
    EXPECT_THAT(urlsOf(tree.traverseNodes(*tree.find(at(L"nowhere")))), IsEmpty());
    expectConsistent(tree);
}

TEST(LibraryMetadataTreeTest, APathIsNoParentByTheSameText)
{
    LibraryMetadataTree tree = smallTree();
    const auto node = metadata(L"x");
    node->setParent(ToolLibraryLocator::fromFilePath(L"a"));
    tree.insert(node);
    EXPECT_THAT(urlsOf(tree.traverseRootNodes()), ElementsAre(L"a", L"f", L"x"));
    EXPECT_FALSE(tree.contains(ToolLibraryLocator::fromFilePath(L"a")));
}

TEST(LibraryMetadataTreeTest, ErasesANodeWithAllBelowIt)
{
    LibraryMetadataTree tree = smallTree();
    tree.erase(at(L"b"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"e", L"f"));
    EXPECT_FALSE(tree.contains(at(L"c")));
    tree.erase(at(L"unknown"));
    tree.erase(at(L"a"));
    tree.erase(at(L"f"));
    EXPECT_THAT(urlsOf(tree), IsEmpty());
    tree.insert(metadata(L"c", L"b"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"c"));
}

TEST(LibraryMetadataTreeTest, ErasesByTheUrlOfTheNodeItself)
{
    LibraryMetadataTree tree = smallTree();
    tree.erase(tree.find(at(L"b"))->metadata()->url());
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"e", L"f"));
}

TEST(LibraryMetadataTreeTest, OfSeveralNodesWithOneUrlTheFirstToComeIsFound)
{
    LibraryMetadataTree tree = smallTree();
    Node &second = tree.insert(metadata(L"e", L"f", L"second"));
    tree.insert(Node(metadata(L"e", L"", L"third")), Position::Front);
    EXPECT_EQ(tree.find(at(L"e"))->metadata()->name(), L"");
    tree.find(at(L"e"))->setMetadata(metadata(L"g", L"a"));
    EXPECT_EQ(tree.find(at(L"e")), &second);
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"e", L"a", L"b", L"c", L"d", L"g", L"f", L"e"));
}

TEST(LibraryMetadataTreeTest, EraseLeavesNoNodeOfThatUrl)
{
    LibraryMetadataTree tree = smallTree();
    tree.insert(metadata(L"b", L"b"));
    tree.insert(metadata(L"b", L"f"));
    tree.erase(at(L"b"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"e", L"f"));
    EXPECT_FALSE(tree.contains(at(L"b")));
}

TEST(LibraryMetadataTreeTest, ARenamedNodeKeepsItsPlaceAndIsFoundByItsNewUrl)
{
    LibraryMetadataTree tree = smallTree();
    Node *const node = tree.find(at(L"b"));
    node->setMetadata(metadata(L"new", L"a"));
    EXPECT_EQ(tree.find(at(L"new")), node);
    EXPECT_EQ(tree.find(at(L"b")), nullptr);
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"new", L"c", L"d", L"e", L"f"));
    tree.insert(metadata(L"x", L"new"));
    tree.erase(at(L"c"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"new", L"d", L"x", L"e", L"f"));
    tree.erase(at(L"new"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"e", L"f"));
}

TEST(LibraryMetadataTreeTest, PointersStayGoodWhileOthersComeAndGo)
{
    LibraryMetadataTree tree = smallTree();
    const Node *const d = tree.find(at(L"d"));
    for (int i = 0; i < 100; ++i)
        tree.insert(Node(metadata(L"n" + std::to_wstring(i), L"b")), i % 2 ? Position::Front : Position::Back);
    tree.erase(at(L"c"));
    tree.erase(at(L"n50"));
    const LibraryMetadataTree moved = std::move(tree);
    EXPECT_EQ(moved.find(at(L"d")), d);
    EXPECT_EQ(d->metadata()->url(), at(L"d"));
}

TEST(LibraryMetadataTreeTest, ACopyIsIndependentAndSharesTheMetadata)
{
    LibraryMetadataTree tree = smallTree();
    LibraryMetadataTree copy = tree;
    EXPECT_EQ(copy.find(at(L"c"))->metadata(), tree.find(at(L"c"))->metadata());
    EXPECT_NE(copy.find(at(L"c")), tree.find(at(L"c")));
    tree.erase(at(L"b"));
    copy.insert(metadata(L"g", L"d"));
    copy.find(at(L"e"))->setMetadata(metadata(L"e2", L"a"));
    EXPECT_THAT(urlsOf(copy), ElementsAre(L"a", L"b", L"c", L"d", L"g", L"e2", L"f"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"e", L"f"));
    expectConsistent(copy);
    expectConsistent(tree);
    tree = copy;
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"b", L"c", L"d", L"g", L"e2", L"f"));
}

TEST(LibraryMetadataTreeTest, ATreeThatWasMovedFromIsEmptyAndUsable)
{
    LibraryMetadataTree tree = smallTree();
    LibraryMetadataTree moved = std::move(tree);
    EXPECT_THAT(urlsOf(tree), IsEmpty()); // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(tree.contains(at(L"a")));
    tree.insert(metadata(L"x"));
    moved.insert(metadata(L"y", L"f"));
    moved.erase(at(L"a"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"x"));
    EXPECT_THAT(urlsOf(moved), ElementsAre(L"f", L"y"));
    moved = std::move(tree);
    EXPECT_THAT(urlsOf(moved), ElementsAre(L"x"));
}

TEST(LibraryMetadataTreeTest, AnIndexOfOneNodeHoldsWhatIsBelowIt)
{
    const Node root(metadata(L"a", L"elsewhere"), {Node(metadata(L"b")), Node(metadata(L"c"))});
    const LibraryMetadataTree tree(root);
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"b", L"c"));
    expectConsistent(tree);
}

TEST(LibraryMetadataTreeTest, ANodeOfTheTreeMayBeInsertedAgain)
{
    LibraryMetadataTree tree = smallTree();
    tree.insert(*tree.find(at(L"a")), Position::Back);
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"b", L"c", L"d", L"e", L"f", L"a", L"b", L"c", L"d", L"e"));
}

TEST(LibraryMetadataTreeTest, PrintsNodesWithTheirChildren)
{
    LibraryMetadataTree tree;
    tree.insert(metadata(L"a", L"", L"A"));
    tree.insert(metadata(L"b", L"a", L"B"));
    tree.insert(metadata(L"c", L"a", L"C"));
    tree.insert(metadata(L"d", L"", L"D"));
    EXPECT_EQ(tree.toJson(), R"([{"name":"A","type":"folder","url":"a","children":[)"
                             R"({"name":"B","parent":"a","type":"folder","url":"b","children":[]},)"
                             R"({"name":"C","parent":"a","type":"folder","url":"c","children":[]}]},)"
                             R"({"name":"D","type":"folder","url":"d","children":[]}])");
}

TEST(LibraryMetadataTreeTest, ReadsWhatItPrints)
{
    const std::string text = smallTree().toJson();
    const LibraryMetadataTree tree = LibraryMetadataTree::fromJson(text);
    EXPECT_EQ(tree.toJson(), text);
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a", L"b", L"c", L"d", L"e", L"f"));
    expectConsistent(tree);
    EXPECT_EQ(LibraryMetadataTree::fromJson("[]").toJson(), "[]");
}

TEST(LibraryMetadataTreeTest, ThePlaceInTheTextDecidesNotTheParent)
{
    const LibraryMetadataTree tree = LibraryMetadataTree::fromJson(
        R"([{"name":"","type":"folder","url":"a","children":[{"parent":"z","type":"library","url":"b"}]}])");
    EXPECT_THAT(urlsOf(tree.traverseNodes(*tree.find(at(L"a")))), ElementsAre(L"b"));
    EXPECT_EQ(tree.find(at(L"b"))->metadata()->parent(), at(L"z"));
}

TEST(LibraryMetadataTreeTest, ANodeTakenOutOfAPrintedTreeDoesNotPrintItsFormerChildren)
{
    LibraryMetadataTree tree;
    tree.insert(LibraryMetadata::fromJson(R"({"type":"folder","url":"a","children":[{"url":"gone"}]})"));
    EXPECT_EQ(tree.toJson(), R"([{"name":"","type":"folder","url":"a","children":[]}])");
}

TEST(LibraryMetadataTreeTest, RefusesABadTextAndSaysWhy)
{
    struct Row {
        const char *json, *reason;
    };
    const Row rows[] = {
        {"", "Library tree is not valid JSON: The document is empty. At byte 0."},
        {"{}", "Library tree: nodes that are not a list"},
        {"null", "Library tree: nodes that are not a list"},
        {"[1]", "Library metadata: not a JSON object"},
        {"[[]]", "Library metadata: not a JSON object"},
        {R"([{"type":"folder"}])", "No library URL"},
        {R"([{"type":"folder","url":"a","children":{}}])", "Library tree: nodes that are not a list"},
        {R"([{"type":"folder","url":"a","children":null}])", "Library tree: nodes that are not a list"},
        {R"([{"type":"folder","url":"a","children":[{}]}])", "No library URL"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(refusal(row.json), row.reason) << row.json;
}

TEST(LibraryMetadataTreeTest, TenThousandLevelsAreWalkedCopiedPrintedAndDestroyed)
{
    LibraryMetadataTree tree = deepTree(10000);
    EXPECT_EQ(tree.traverse().size(), 10000U);
    const LibraryMetadataTree copy = tree;
    EXPECT_EQ(copy.traverseUrls().back(), at(L"9999"));
    const std::string text = copy.toJson();
    EXPECT_TRUE(text.ends_with("\"children\":[" + [] {
        std::string end;
        for (int i = 0; i < 10000; ++i)
            end += "]}";
        return end;
    }() + "]"));
    tree.erase(at(L"1"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"0"));
}

TEST(LibraryMetadataTreeTest, ReadsAsDeepAsJsonMayBe)
{
    const std::string deepest = deepTree(499).toJson();
    EXPECT_EQ(LibraryMetadataTree::fromJson(deepest).toJson(), deepest);
    EXPECT_THAT(refusal(deepTree(500).toJson()), testing::HasSubstr("Nested deeper than 1000 levels."));
}

TEST(LibraryMetadataTreeTest, TenThousandLibrariesUnderOneFolderComeAndGo)
{
    LibraryMetadataTree tree;
    tree.insert(metadata(L"root"));
    for (int i = 0; i < 10000; ++i)
        tree.insert(Node(metadata(std::to_wstring(i), L"root")), i % 2 ? Position::Front : Position::Back);
    EXPECT_EQ(tree.find(at(L"root"))->children().front().metadata()->url(), at(L"9999"));
    EXPECT_EQ(tree.find(at(L"root"))->children().back().metadata()->url(), at(L"9998"));
    for (int i = 0; i < 10000; ++i)
        ASSERT_TRUE(tree.contains(at(std::to_wstring(i)))) << i;
    for (int i = 0; i < 10000; i += 2)
        tree.erase(at(std::to_wstring(i)));
    EXPECT_EQ(tree.traverse().size(), 5001U);
    EXPECT_FALSE(tree.contains(at(L"9998")));
}

TEST(LibraryMetadataTreeTest, TwoHundredThousandNodesOfOneUrlComeAndGo)
{
    LibraryMetadataTree tree;
    tree.insert(metadata(L"a"));
    const Node *first = &tree.insert(metadata(L"same", L"a"));
    for (int i = 1; i < 200'000; ++i)
        tree.insert(metadata(L"same", L"a"));
    EXPECT_EQ(tree.find(at(L"same")), first);
    tree.erase(at(L"same"));
    EXPECT_THAT(urlsOf(tree), ElementsAre(L"a"));
}

} // namespace Varn::ToolLibraries
