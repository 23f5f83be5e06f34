#include "platform/ox/XMLNode.h"
#include "platform/ox/XMLDocument.h"
#include "platform/utils/FileOutputStream.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace std::string_literals;
using Ox::Status;
using Ox::XMLDocument;
using Ox::XMLNode;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class XMLNodeTest : public testing::Test
{
protected:
    XMLDocument read(std::string_view text)
    {
        const std::wstring path = (m_folder.path() + "/document.xml").toStdWString();
        EXPECT_TRUE(Varn::FileOutputStream(path).write(text));
        Status status;
        XMLDocument document(path, status, false);
        EXPECT_TRUE(status.isOk()) << status.description().toStdString();
        return document;
    }
    // The document as it is after a save and a load.
    XMLDocument reread(const XMLDocument &document) { return read(document.toString()); }

    QTemporaryDir m_folder;
};

std::vector<std::string> keysOf(const std::vector<XMLNode> &nodes)
{
    std::vector<std::string> keys;
    for (const XMLNode &node : nodes)
        keys.push_back(node.key());
    return keys;
}

} // namespace

TEST_F(XMLNodeTest, FindsChildrenByKey)
{
    const XMLNode root =
        read("<package>\n <tool n='1'/>text<!-- no --><language/><tool n='2'/><Tool/>\n</package>").root();
    EXPECT_EQ(root.key(), "package");
    EXPECT_THAT(keysOf(root.getChildren()), ElementsAre("tool", "language", "tool", "Tool"));
    EXPECT_THAT(keysOf(root.getChildren("tool")), ElementsAre("tool", "tool"));
    EXPECT_THAT(root.getChildren("text"), IsEmpty());
    EXPECT_EQ(root.findChild("tool").attribute("n"), "1");
    EXPECT_TRUE(root.findChild("tool") == root.getChildren().front());
    EXPECT_FALSE(root.findChild("missing").exists());
    EXPECT_FALSE(root.findChild("").exists());
}

TEST_F(XMLNodeTest, TheTextIsAllThatStandsDirectlyInTheElement)
{
    struct Row {
        const char *xml;
        const char *text;
    };
    const Row rows[] = {
        {"<a/>", ""},
        {"<a></a>", ""},
        {"<a> \n </a>", ""},
        {"<a> x </a>", " x "},
        {"<a>x<!-- y -->z</a>", "xz"},
        {"<a>x<b>y</b>z</a>", "xz"},
        {"<a>x<![CDATA[<y> &amp;]]>z</a>", "x<y> &amp;z"},
        {"<a>&lt;&amp;&gt;&quot;&apos;&#65;&#x5de5;</a>", "<&>\"'A\u5de5"},
        {"<a>\u00e4 \U0001F529</a>", "\u00e4 \U0001F529"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(read(row.xml).root().text(), row.text) << row.xml;
}

TEST_F(XMLNodeTest, AttributesAreThereOrNot)
{
    const XMLNode root = read("<a b='1' c='' b='2' d='&lt;&#10;\u00e4'/>").root();
    EXPECT_EQ(root.attribute("b"), "1");
    EXPECT_EQ(root.attribute("c"), "");
    EXPECT_EQ(root.attribute("d"), "<\n\u00e4");
    EXPECT_EQ(root.attribute("B"), std::nullopt);
    EXPECT_EQ(root.attribute(""), std::nullopt);
}

TEST_F(XMLNodeTest, WhatIsWrittenReadsBackEqual)
{
    XMLDocument document("settings");
    XMLNode root = document.root();
    XMLNode folder = root.addChild("folder");
    folder.setText("/home/\u5de5 <\"&'> \U0001F529\ttab\nline ]]> end");
    EXPECT_TRUE(folder.setAttribute("kind", "a \"quoted\" <&'>\n\t\r \u00e4"));
    EXPECT_TRUE(root.addChild("\u00e4-1.b").setAttribute("_x", ""));
    root.addChild("folder");

    const XMLNode again = reread(document).root();
    EXPECT_EQ(again.key(), "settings");
    EXPECT_THAT(keysOf(again.getChildren()), ElementsAre("folder", "\u00e4-1.b", "folder"));
    EXPECT_EQ(again.findChild("folder").text(), "/home/\u5de5 <\"&'> \U0001F529\ttab\nline ]]> end");
    EXPECT_EQ(again.findChild("folder").attribute("kind"), "a \"quoted\" <&'>\n\t\r \u00e4");
    EXPECT_EQ(again.findChild("\u00e4-1.b").attribute("_x"), "");
}

TEST_F(XMLNodeTest, ANewTextReplacesTheOldOneAndLeavesTheChildren)
{
    XMLDocument document = read("<a>x<b>inner</b>y<![CDATA[z]]></a>");
    XMLNode root = document.root();
    root.setText("new");
    EXPECT_EQ(root.text(), "new");
    EXPECT_EQ(root.findChild("b").text(), "inner");
    const XMLDocument saved = reread(document);
    EXPECT_EQ(saved.root().text(), "new");
    EXPECT_EQ(saved.root().findChild("b").text(), "inner");
    root.setText("");
    EXPECT_EQ(root.text(), "");
    EXPECT_THAT(keysOf(root.getChildren()), ElementsAre("b"));
}

TEST_F(XMLNodeTest, ANewAttributeReplacesTheOldOne)
{
    XMLDocument document("a");
    XMLNode root = document.root();
    EXPECT_TRUE(root.setAttribute("b", "1"));
    EXPECT_TRUE(root.setAttribute("b", "2"));
    EXPECT_EQ(root.attribute("b"), "2");
    EXPECT_THAT(document.toString(), HasSubstr("<a b=\"2\" />"));
}

TEST_F(XMLNodeTest, WhatXmlCannotHoldBecomesTheReplacementCharacter)
{
    struct Row {
        const char *name;
        std::string text;
    };
    const Row rows[] = {
        {"NUL", "a\0z"s},           {"control character", "a\x1Bz"},
        {"broken UTF-8", "a\xFFz"}, {"U+FFFE", "a\xEF\xBF\xBEz"},
        {"U+FFFF", "a\uFFFFz"},     {"encoded surrogate", "a\uFFFDz"},
    };
    for (const Row &row : rows) {
        XMLDocument document("a");
        document.root().setText(row.text);
        document.root().setAttribute("b", row.text);
        const XMLDocument again = reread(document);
        EXPECT_EQ(again.root().text(), "a\uFFFDz") << row.name;
        EXPECT_EQ(again.root().attribute("b"), "a\uFFFDz") << row.name;
    }
}

TEST_F(XMLNodeTest, WhatIsNoNameAddsNothing)
{
    XMLDocument document("a");
    XMLNode root = document.root();
    for (const std::string &name : {""s, "1a"s, "-a"s, ".a"s, "a b"s, "a>"s, "a/"s, "a\"b"s, "a\0b"s, "a\xFF"s, "<"s}) {
        EXPECT_FALSE(root.addChild(name).exists()) << name;
        EXPECT_FALSE(root.setAttribute(name, "x")) << name;
        EXPECT_FALSE(XMLDocument(name).root().exists()) << name;
    }
    EXPECT_EQ(document.toString(), "<?xml version=\"1.0\"?>\n<a />\n");
}

TEST_F(XMLNodeTest, OneThatDoesNotExistIsHarmless)
{
    XMLNode nothing;
    EXPECT_FALSE(nothing.exists());
    EXPECT_EQ(nothing.key(), "");
    EXPECT_EQ(nothing.text(), "");
    EXPECT_EQ(nothing.attribute("a"), std::nullopt);
    EXPECT_THAT(nothing.getChildren(), IsEmpty());
    EXPECT_THAT(nothing.getChildren("a"), IsEmpty());
    EXPECT_FALSE(nothing.findChild("a").findChild("b").exists());
    nothing.setText("x");
    EXPECT_FALSE(nothing.setAttribute("a", "x"));
    EXPECT_FALSE(nothing.addChild("a").exists());
    EXPECT_EQ(nothing.text(), "");
    EXPECT_TRUE(nothing == XMLNode());
}

TEST_F(XMLNodeTest, KeepsItsDocumentAlive)
{
    XMLNode child = read("<a><b>inner</b></a>").root().findChild("b");
    EXPECT_EQ(child.text(), "inner");
    child.addChild("c").setText("more");
    EXPECT_EQ(child.findChild("c").text(), "more");
}
