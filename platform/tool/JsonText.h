// JsonText.h -- strict reading and loss-free writing of JSON texts as Json::Value, which the library's own reader and
// writer do not give: those take comments, control characters and broken UTF-8, read and print doubles by the process
// locale, print infinities as numbers and recurse without bound. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <json/value.h>

#include <optional>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries::JsonText {

/// The value of \a text, by RFC 8259 alone: any value may be the root, nothing but blanks around it (no byte order
/// mark), valid UTF-8. Whole numbers without point and exponent are integers as far as 64 bits go; every other number
/// is the double nearest to it. Of duplicate members the last stands. Empty when the text breaks a rule, is nested
/// deeper than 1000 levels or holds a number beyond the range of a double; \a error, when given, then says what is
/// wrong and where.
VARN_PLATFORM_EXPORT std::optional<Json::Value> parse(std::string_view text, std::string *error = nullptr);

/// The text of \a value in UTF-8, without blanks; members in the order of their names. A double has the fewest digits
/// that read back equal, and always a decimal point or an exponent; one that is no finite number is null. Never
/// recurses.
VARN_PLATFORM_EXPORT std::string print(const Json::Value &value);

/// Appends the text of print() to \a out.
VARN_PLATFORM_EXPORT void print(const Json::Value &value, std::string &out);

/// Appends \a text (UTF-8) to \a out as a JSON string with its quotation marks.
VARN_PLATFORM_EXPORT void printString(std::string_view text, std::string &out);

} // namespace Varn::ToolLibraries::JsonText
