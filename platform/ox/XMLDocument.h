// XMLDocument.h -- an XML document in memory, from a file or new. A document and its nodes belong to one thread at a
// time.
#pragma once

#include "platform/ox/Status.h"
#include "platform/ox/XMLNode.h"

#include <memory>
#include <string>

namespace Ox {

/// Owns its elements together with the nodes handed out, which may outlive it. A document type declaration is skipped:
/// no entity is ever expanded and no other file is read.
class VARN_PLATFORM_EXPORT XMLDocument
{
public:
    /// A document nested deeper than this many elements is refused.
    static constexpr int maximumDepth = 1000;

    /// Reads a file: UTF-8, or UTF-16, UTF-32 or Latin-1 that says so. If \a validate, the document must be well-formed
    /// in every respect; else small faults pass, such as an attribute given twice or text behind the root. On a failure
    /// \a status gets "XML_UNREADABLE" or "XML_MALFORMED" with the file, and where known line, column and cause; the
    /// document has no root then. A status that was not ok does not stop the reading.
    XMLDocument(const std::wstring &path, Status &status, bool validate);

    /// A new document with a root of that key and nothing else; without a root when \a rootKey is no XML name.
    explicit XMLDocument(const XMLString &rootKey);

    XMLDocument(XMLDocument &&) noexcept;
    XMLDocument &operator=(XMLDocument &&) noexcept;
    ~XMLDocument();

    /// The outermost element; one that does not exist after a failed reading.
    XMLNode root() const;

    /// UTF-8 with a declaration in front, one element a line, indented by two.
    std::string toString() const;

    /// Writes toString() to a file. The file is replaced as a whole once all is written: after a failure the old one is
    /// still there. A status that is not ok has "XML_UNWRITABLE" with the file and the cause.
    Status save(const std::wstring &path) const;

private:
    std::shared_ptr<pugi::xml_document> m_document; // null only in one that was moved from
};

} // namespace Ox
