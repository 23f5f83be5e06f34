// Bare.h -- the bare measures: what the same bytes cost without the engine.
#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>

#include <string>
#include <string_view>
#include <vector>

namespace Bench {

/// R: RapidJSON's document parse with default flags and chunks of 64 KiB.
void parseBare(const std::string &bytes, rapidjson::Document &document);

/// P: RapidJSON's compact writer over the whole document; gives the length.
std::size_t printBare(const rapidjson::Document &document);

/// W: the text of a library file by RapidJSON's own indenting writer, in one pass.
void printIndentedBare(const rapidjson::Document &document, rapidjson::StringBuffer &text);

/// D: writes the bytes beside \a file, syncs, renames, syncs the folder.
void replaceFileBare(const std::string &file, std::string_view bytes);

/// zlib at its usual level 6, in memory.
std::string deflateBare(std::string_view bytes);
std::string inflateBare(const std::string &packed, std::size_t size);

/// The GUIDs of the tools, in their order.
std::vector<std::string> guidsOf(const rapidjson::Document &library);

} // namespace Bench
