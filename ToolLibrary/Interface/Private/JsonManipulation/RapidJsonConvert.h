// RapidJsonConvert.h -- RapidJSON values to and from QVariant trees, and to text. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QVariant>

#include <rapidjson/document.h>
#include <rapidjson/writer.h>

#include <json/value.h>

#include <string>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT RapidJsonConvert
{
public:
    using Allocator = rapidjson::Document::AllocatorType;

    /// A value built in \a allocator. A double that is not finite, or is subnormal, becomes null, as does a variant
    /// that is neither a plain value nor convertible to a text, a list or a map.
    static rapidjson::Value fromQVariant(const QVariant &variant, Allocator &allocator);

    /// Every number becomes a double. Of members with one name the last counts.
    static QVariant toQVariant(const rapidjson::Value &value);

    /// The value that a jsoncpp reader makes of toString(value): integers stay integers, the last of several members
    /// with one name counts. A document that was not checked for it can hold texts that are no UTF-8; in the value
    /// U+FFFD stands where they break.
    static Json::Value toJsonValue(const rapidjson::Value &value);

    /// Compact text in UTF-8.
    static std::string toString(const rapidjson::Value &value);

    /// Writes the value into a writer of RapidJSON's form.
    template <typename Writer>
    static void toString(const rapidjson::Value &value, Writer &writer);
};

/// Reports a write that failed; it can only fail for a number that is not finite.
TOOL_LIBRARY_EXPORT void assertWritten(bool success);

template <typename Writer>
void RapidJsonConvert::toString(const rapidjson::Value &value, Writer &writer)
{
    assertWritten(value.Accept(writer));
}

} // namespace Varn::ToolLibraries
