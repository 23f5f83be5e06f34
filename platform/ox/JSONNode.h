// JSONNode.h -- a JSON document of the platform. Immutable once it is there, any thread.
#pragma once

#include "platform/ox/JSONRef.h"

#include <json/value.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Ox {

/// A parsed document, shared by all that point into it.
class VARN_PLATFORM_EXPORT JSONNode : public std::enable_shared_from_this<JSONNode>
{
    class Private // only parse() makes nodes
    {
        friend class JSONNode;
        Private() = default;
    };

public:
    /// A text of more bytes than this is refused: jsoncpp counts in 31 bits.
    static constexpr std::size_t maximumSize = 0x7FFFFFFF;
    /// A text nested deeper than this many arrays and objects is refused.
    static constexpr int maximumDepth = 1000;

    /// Reads a JSON text after RFC 8259 in UTF-8, any value as root. Null for anything else: comments, trailing commas,
    /// more than one root, a byte order mark, broken UTF-8, a number beyond the range of a double, also if only by its
    /// exponent (0e999), and the two limits above. Of members with the same name the last counts.
    static std::shared_ptr<const JSONNode> parse(std::string_view text);

    JSONNode(Private, Json::Value root);

    /// The member of the root object with that name, compared byte by byte. Nothing when the root is no object or lacks
    /// it.
    std::optional<JSONRef> get(std::string_view key) const;

    JSONRef root() const;

    /// The document as UTF-8 text: without blanks, or with line ends and indents of four when \a pretty. Parsing it
    /// gives an equal document: doubles have up to 17 digits, and a point or exponent also when they are whole. Members
    /// come in ascending order of their names.
    std::string stringify(bool pretty = false) const;

private:
    Json::Value m_root;
};

} // namespace Ox
