#include "platform/ox/XMLDocument.h"

#include "platform/utils/FileInputStream.h"

#include <QSaveFile>
#include <QXmlStreamReader>

#include <pugixml.hpp>

#include <algorithm>
#include <optional>
#include <string_view>

namespace Ox {

namespace {

struct Fault {
    QString place; // ":line:column", or empty
    QString cause;
};

QString placeOf(qint64 line, qint64 column)
{
    return QStringLiteral(":%1:%2").arg(line).arg(column);
}

QString placeOf(std::string_view content, const pugi::xml_parse_result &result)
{
    // In any other encoding the offset is one into the parser's own copy.
    if (result.encoding != pugi::encoding_utf8 || result.offset < 0)
        return {};
    const auto before = content.substr(0, static_cast<std::size_t>(result.offset));
    const auto lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    return placeOf(std::ranges::count(before, '\n') + 1, static_cast<qint64>(before.size() - lineStart) + 1);
}

class DepthCheck : public pugi::xml_tree_walker
{
public:
    bool for_each(pugi::xml_node &node) override
    {
        return node.type() != pugi::node_element || depth() < XMLDocument::maximumDepth;
    }
};

std::optional<Fault> checkWellFormed(std::string_view content)
{
    QXmlStreamReader reader(QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size())));
    while (!reader.atEnd())
        reader.readNext();
    if (!reader.hasError())
        return std::nullopt;
    return Fault{placeOf(reader.lineNumber(), reader.columnNumber() + 1), reader.errorString()};
}

std::optional<Fault> load(pugi::xml_document &document, std::string_view content, bool validate)
{
    const pugi::xml_parse_result result = document.load_buffer(content.data(), content.size());
    if (!result)
        return Fault{placeOf(content, result), QString::fromUtf8(result.description())};
    DepthCheck depthCheck;
    if (!document.traverse(depthCheck))
        return Fault{{}, QStringLiteral("Nested deeper than %1 elements").arg(XMLDocument::maximumDepth)};
    return validate ? checkWellFormed(content) : std::nullopt;
}

struct StringWriter : pugi::xml_writer {
    std::string text;
    void write(const void *data, std::size_t size) override { text.append(static_cast<const char *>(data), size); }
};

} // namespace

XMLDocument::XMLDocument(const std::wstring &path, Status &status, bool validate)
    : m_document(std::make_shared<pugi::xml_document>())
{
    const QString name = QString::fromStdWString(path);
    const auto content = Varn::FileInputStream(path).readAll();
    if (!content) {
        status.addCode(QStringLiteral("XML_UNREADABLE"), name + QStringLiteral(": cannot be read"));
        return;
    }
    if (const auto fault = load(*m_document, *content, validate)) {
        m_document->reset();
        status.addCode(QStringLiteral("XML_MALFORMED"), name + fault->place + QStringLiteral(": ") + fault->cause);
    }
}

XMLDocument::XMLDocument(const XMLString &rootKey) : m_document(std::make_shared<pugi::xml_document>())
{
    if (XMLNode::isName(rootKey))
        m_document->append_child(rootKey.c_str());
}

XMLDocument::XMLDocument(XMLDocument &&) noexcept = default;
XMLDocument &XMLDocument::operator=(XMLDocument &&) noexcept = default;
XMLDocument::~XMLDocument() = default;

XMLNode XMLDocument::root() const
{
    const pugi::xml_node element = m_document->document_element();
    return element ? XMLNode(m_document, element.internal_object()) : XMLNode();
}

std::string XMLDocument::toString() const
{
    StringWriter writer;
    m_document->save(writer, "  ", pugi::format_default, pugi::encoding_utf8);
    return writer.text;
}

Status XMLDocument::save(const std::wstring &path) const
{
    const QString name = QString::fromStdWString(path);
    const std::string text = toString();
    QSaveFile file(name);
    Status status;
    const auto size = static_cast<qint64>(text.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), size) != size || !file.commit())
        status.addCode(QStringLiteral("XML_UNWRITABLE"), name + QStringLiteral(": ") + file.errorString());
    return status;
}

} // namespace Ox
