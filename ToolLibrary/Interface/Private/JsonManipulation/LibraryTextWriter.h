// LibraryTextWriter.h -- the text of a library, straight from the parsed document. Stateless, any thread.
//
// The long way, a QVariantMap of the library and a QJsonDocument of that map, holds the library three times over and
// the text beside it. Files must not change because a library took the short way, so the bytes are the same.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <rapidjson/document.h>

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

/// Prints byte for byte what QJsonDocument::toJson(Indented) makes of the document once it has gone through
/// RapidJsonConvert::toQVariant: members in the order of the UTF-16 units of their names, of several with one name the
/// last; every number as a double, whole ones up to 2^53 without an exponent; what is no UTF-8 as U+FFFD.
class TOOL_LIBRARY_EXPORT LibraryTextWriter
{
public:
    /// Takes the next bytes of the text, some 64 KiB each time; false ends the printing.
    using Sink = std::function<bool(std::string_view)>;

    /// False when the sink was. REQUIRES: an object.
    static bool print(const rapidjson::Value &object, const Sink &sink);

    /// The same for a library document whose tools leave a document: each element of "data" gets a new GUID of
    /// GuidUtil::createGuid(), one after the other, and loses the marks of a document tool. The library stays as it is.
    static bool printWithNewGuids(const rapidjson::Value &library, const Sink &sink);

    /// {"data":[tools],"version"} as QJsonDocument::toJson(Compact) has it, with the elements \a order of \a tools.
    /// False when the sink was. REQUIRES: an array, and indices into it.
    static bool printCompact(const rapidjson::Value &tools, const std::vector<std::uint32_t> &order, int version,
                             const Sink &sink);
};

} // namespace Varn::ToolLibraries
