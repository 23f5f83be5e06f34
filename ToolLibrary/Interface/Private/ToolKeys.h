// ToolKeys.h -- the keys by which the requests for pages name what they filter and sort by, and the values that they
// stand for. Stateless; threads as the tool.
#pragma once

#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"

#include <json/value.h>

#include <optional>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries::ToolKeys {

inline constexpr std::string_view name = "components.info.name";
inline constexpr std::string_view propertyPrefix = "components.indexedProperties.";
inline constexpr std::string_view type = "components.indexedProperties.tool_type";
inline constexpr std::string_view unit = "components.indexedProperties.tool_unit";

/// The property that \a key names; nothing for any other key.
std::optional<std::string_view> propertyOf(std::string_view key);

/// The rounded number of a tool under a key of a property; nothing for any other key.
std::optional<double> numberOf(const IndexedTool &tool, std::string_view key);

/// The name or a text of a tool, in UTF-8; nothing for a key that is neither.
std::optional<std::string> textOf(const IndexedTool &tool, std::string_view key);

/// Reads the JSON of a request. A text that is broken gives what could be read before the fault, if anything.
Json::Value parseState(std::string_view json);

} // namespace Varn::ToolLibraries::ToolKeys
