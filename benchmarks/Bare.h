// Bare.h -- the bare measures: what the same bytes cost without the engine.
#pragma once

#include <rapidjson/document.h>

#include <memory>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace Bench {

/// R: RapidJSON's document parse with default flags and chunks of 64 KiB.
void parseBare(const std::string &bytes, rapidjson::Document &document);

/// P: RapidJSON's compact writer over the whole document; gives the length.
std::size_t printBare(const rapidjson::Document &document);

/// A table of the tools by GUID in SQLite, in memory.
class ToolTable
{
public:
    explicit ToolTable(const rapidjson::Document &library);
    ~ToolTable();
    ToolTable(const ToolTable &) = delete;
    ToolTable &operator=(const ToolTable &) = delete;

    /// The tool's text.
    std::string find(const std::string &guid) const;

private:
    sqlite3 *m_database = nullptr;
    sqlite3_stmt *m_query = nullptr;
};

/// The GUIDs of the tools, in their order.
std::vector<std::string> guidsOf(const rapidjson::Document &library);

} // namespace Bench
