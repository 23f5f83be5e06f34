// JSONRef.h -- a place in a JSON document of the platform. A value; the document is immutable, so any thread may read.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Json {
class Value;
}

namespace Ox {

class JSONNode;

/// Points at a value of a document and keeps that alive; cheap to copy. A place that is not there reads as null.
class VARN_PLATFORM_EXPORT JSONRef
{
public:
    /// A null of no document.
    JSONRef();

    /// True if this is an object with a member of that name, compared byte by byte; a member that is null counts.
    bool exists(std::string_view key) const;

    /// The member of that name; a null reference when there is none or this is no object.
    JSONRef operator[](std::string_view key) const;

    /// The number of members of an object or elements of an array, 0 for all else.
    std::size_t size() const;

    /// The element of an array; a null reference beyond its end and when this is no array.
    JSONRef at(std::size_t index) const;

    bool isNull() const;
    bool isObject() const;
    bool isArray() const;
    bool isString() const;
    bool isBool() const;

    /// True for a number that is written without fraction and exponent and fits in 32 bits with sign.
    bool isInt() const;

    /// True for a number with fraction or exponent, such as 3.0 or 1e2, or beyond 64 bits. So an integer of more than
    /// 32 bits is neither int nor double.
    bool isDouble() const;

    std::string asHString() const;           ///< the text, UTF-8; empty for all but a text
    bool asBool() const;                     ///< false for all but true
    std::optional<int> getInt() const;       ///< nothing unless isInt()
    std::optional<double> getDouble() const; ///< any number, the double nearest to it; nothing for all else

private:
    friend class JSONNode;
    JSONRef(std::shared_ptr<const JSONNode> document, const Json::Value &value);
    const Json::Value *member(std::string_view key) const;

    std::shared_ptr<const JSONNode> m_document; // owns what m_value points at
    const Json::Value *m_value;                 // never null
};

} // namespace Ox
