// XMLNode.h -- an element of an XML document. A handle; a document and its nodes belong to one thread at a time.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pugi {
class xml_document;
struct xml_node_struct;
} // namespace pugi

namespace Ox {

using XMLString = std::string; ///< UTF-8

/// Copies are the same element, and each keeps the whole document alive. One that does not exist has no key, text,
/// attribute or child, and changes to it do nothing. What XML cannot hold in texts and attributes (control characters
/// but tab and line ends, U+FFFE, U+FFFF, broken UTF-8) is written as U+FFFD.
class VARN_PLATFORM_EXPORT XMLNode
{
public:
    /// One that does not exist.
    XMLNode() = default;

    bool exists() const { return m_node != nullptr; }

    /// The name of the element with its prefix, such as "language".
    XMLString key() const;

    /// The text directly in the element, CDATA too, comments and child elements left out. Pieces that are nothing but
    /// blanks are dropped when a document is read; of entities only those that XML itself defines are resolved.
    XMLString text() const;

    /// Replaces the text; child elements stay behind it. A carriage return reads back as a line feed.
    void setText(std::string_view text);

    /// The value of an attribute, nothing without it; of two with one name the first.
    std::optional<XMLString> attribute(const XMLString &name) const;

    /// Sets or adds an attribute. False when there is no element or \a name is no XML name.
    bool setAttribute(const XMLString &name, std::string_view value);

    /// The child elements in the order of the document: all, or those of one key.
    std::vector<XMLNode> getChildren() const;
    std::vector<XMLNode> getChildren(const XMLString &key) const;

    /// The first child element of that key; one that does not exist if there is none.
    XMLNode findChild(const XMLString &key) const;

    /// Adds an element behind the others. One that does not exist when \a key is no XML name.
    XMLNode addChild(const XMLString &key);

    friend bool operator==(const XMLNode &a, const XMLNode &b) { return a.m_node == b.m_node; }

private:
    friend class XMLDocument;
    XMLNode(std::shared_ptr<pugi::xml_document> document, pugi::xml_node_struct *node);
    static bool isName(std::string_view text);

    std::shared_ptr<pugi::xml_document> m_document; // owns m_node
    pugi::xml_node_struct *m_node = nullptr;
};

} // namespace Ox
