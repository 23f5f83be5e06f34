// SqliteTables.h -- the tools as tables of SQLite in memory, to look them up in.
#pragma once

#include <rapidjson/document.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace Bench {

class SqliteDatabase
{
public:
    SqliteDatabase();
    ~SqliteDatabase();
    SqliteDatabase(const SqliteDatabase &) = delete;
    SqliteDatabase &operator=(const SqliteDatabase &) = delete;

    void run(const char *statements);

    using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)>;
    Statement prepare(const char *text);

private:
    sqlite3 *m_database = nullptr;
};

/// Tools by GUID.
class ToolTable
{
public:
    explicit ToolTable(const rapidjson::Document &library);

    /// The tool's text.
    std::string find(const std::string &guid) const;

private:
    SqliteDatabase m_database;
    SqliteDatabase::Statement m_query;
};

/// Names, search texts, types and diameters beside the texts of the tools, with an index for each column that orders.
class PageTable
{
public:
    struct Tool {
        std::string name;
        std::string searchText;
        std::string type;
        double diameter;
        std::string json;
    };
    explicit PageTable(const std::vector<Tool> &tools);

    enum class Order { Name, Diameter };
    struct Page {
        std::vector<std::string> tools; ///< their texts
        std::int64_t matched;
        std::vector<std::string> types; ///< of all that matched
    };
    /// What a page tells; a search text or range that is empty restricts nothing.
    Page page(const std::string &searchText, double lower, double upper, Order order, int limit, int offset) const;

private:
    SqliteDatabase m_database;
    std::vector<SqliteDatabase::Statement> m_queries; ///< by order, without and with conditions
    std::vector<SqliteDatabase::Statement> m_counts;  ///< of each type, without and with conditions
};

} // namespace Bench
