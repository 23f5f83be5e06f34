#include "platform/ox/XMLNode.h"

#include <unicode/utf8.h>

#include <pugixml.hpp>

#include <algorithm>
#include <utility>

namespace Ox {

namespace {

bool isText(const pugi::xml_node &node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

// Char of XML 1.0, 2.2; a negative one stands for broken UTF-8.
bool isCharacter(UChar32 c)
{
    return c >= 0x20 ? c != 0xFFFE && c != 0xFFFF : c == '\t' || c == '\n' || c == '\r';
}

XMLString withXmlCharacters(std::string_view text)
{
    constexpr std::string_view replacement = "\uFFFD";
    XMLString result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t start = i;
        UChar32 character = 0;
        U8_NEXT(text.data(), i, text.size(), character);
        result += isCharacter(character) ? text.substr(start, i - start) : replacement;
    }
    return result;
}

bool isNameStart(char c)
{
    const bool isAscii = static_cast<unsigned char>(c) < 0x80;
    return !isAscii || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':';
}

bool isNamePart(char c)
{
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

} // namespace

XMLNode::XMLNode(std::shared_ptr<pugi::xml_document> document, pugi::xml_node_struct *node)
    : m_document(std::move(document)), m_node(node)
{
}

// Name of XML 1.0, 2.3, but that every character beyond ASCII is taken for a letter.
bool XMLNode::isName(std::string_view text)
{
    return !text.empty() && isNameStart(text.front()) && std::ranges::all_of(text, isNamePart) &&
           withXmlCharacters(text) == text;
}

XMLString XMLNode::key() const
{
    return pugi::xml_node(m_node).name();
}

XMLString XMLNode::text() const
{
    XMLString text;
    for (const pugi::xml_node &child : pugi::xml_node(m_node)) {
        if (isText(child))
            text += child.value();
    }
    return text;
}

void XMLNode::setText(std::string_view text)
{
    pugi::xml_node node(m_node);
    for (pugi::xml_node child = node.first_child(); child;) {
        const pugi::xml_node next = child.next_sibling();
        if (isText(child))
            node.remove_child(child);
        child = next;
    }
    if (!text.empty())
        node.prepend_child(pugi::node_pcdata).set_value(withXmlCharacters(text).c_str());
}

std::optional<XMLString> XMLNode::attribute(const XMLString &name) const
{
    const pugi::xml_attribute found = pugi::xml_node(m_node).attribute(name.c_str());
    if (!found)
        return std::nullopt;
    return found.value();
}

bool XMLNode::setAttribute(const XMLString &name, std::string_view value)
{
    if (!isName(name))
        return false;
    pugi::xml_node node(m_node);
    pugi::xml_attribute attribute = node.attribute(name.c_str());
    if (!attribute)
        attribute = node.append_attribute(name.c_str());
    return attribute.set_value(withXmlCharacters(value).c_str());
}

std::vector<XMLNode> XMLNode::getChildren() const
{
    std::vector<XMLNode> children;
    for (const pugi::xml_node &child : pugi::xml_node(m_node)) {
        if (child.type() == pugi::node_element)
            children.push_back(XMLNode(m_document, child.internal_object()));
    }
    return children;
}

std::vector<XMLNode> XMLNode::getChildren(const XMLString &key) const
{
    std::vector<XMLNode> children;
    for (const pugi::xml_node &child : pugi::xml_node(m_node).children(key.c_str()))
        children.push_back(XMLNode(m_document, child.internal_object()));
    return children;
}

XMLNode XMLNode::findChild(const XMLString &key) const
{
    const pugi::xml_node child = pugi::xml_node(m_node).child(key.c_str());
    return child ? XMLNode(m_document, child.internal_object()) : XMLNode();
}

XMLNode XMLNode::addChild(const XMLString &key)
{
    if (!exists() || !isName(key))
        return {};
    return XMLNode(m_document, pugi::xml_node(m_node).append_child(key.c_str()).internal_object());
}

} // namespace Ox
