#include "SqliteTables.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <sqlite3.h>

#include <cmath>
#include <stdexcept>

namespace Bench {

namespace {

std::string textOf(const rapidjson::Value &value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

void check(int status, sqlite3 *database)
{
    if (status != SQLITE_OK && status != SQLITE_DONE && status != SQLITE_ROW)
        throw std::runtime_error(sqlite3_errmsg(database));
}

void bind(sqlite3_stmt *statement, int place, const std::string &text)
{
    sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

/// False behind the last row.
bool step(sqlite3_stmt *statement)
{
    const int status = sqlite3_step(statement);
    check(status, sqlite3_db_handle(statement));
    return status == SQLITE_ROW;
}

} // namespace

SqliteDatabase::SqliteDatabase()
{
    check(sqlite3_open(":memory:", &m_database), m_database);
}

SqliteDatabase::~SqliteDatabase()
{
    sqlite3_close(m_database);
}

void SqliteDatabase::run(const char *statements)
{
    check(sqlite3_exec(m_database, statements, nullptr, nullptr, nullptr), m_database);
}

SqliteDatabase::Statement SqliteDatabase::prepare(const char *text)
{
    sqlite3_stmt *statement = nullptr;
    check(sqlite3_prepare_v2(m_database, text, -1, &statement, nullptr), m_database);
    return {statement, &sqlite3_finalize};
}

ToolTable::ToolTable(const rapidjson::Document &library) : m_query(nullptr, &sqlite3_finalize)
{
    m_database.run("create table tool (guid text primary key, json text) without rowid; begin");
    const SqliteDatabase::Statement insert = m_database.prepare("insert into tool values (?, ?)");
    for (const auto &tool : library["data"].GetArray()) {
        const std::string text = textOf(tool);
        const std::string guid = tool["guid"].GetString();
        bind(insert.get(), 1, guid);
        bind(insert.get(), 2, text);
        step(insert.get());
        sqlite3_reset(insert.get());
    }
    m_database.run("commit");
    m_query = m_database.prepare("select json from tool where guid = ?");
}

std::string ToolTable::find(const std::string &guid) const
{
    bind(m_query.get(), 1, guid);
    if (!step(m_query.get()))
        throw std::runtime_error("A tool is missing");
    const auto *text = static_cast<const char *>(sqlite3_column_blob(m_query.get(), 0));
    std::string found(text, static_cast<std::size_t>(sqlite3_column_bytes(m_query.get(), 0)));
    sqlite3_reset(m_query.get());
    return found;
}

PageTable::PageTable(const std::vector<Tool> &tools)
{
    m_database.run("create table tool (row integer primary key, name text, search text, diameter real); begin");
    const SqliteDatabase::Statement insert = m_database.prepare("insert into tool values (?, ?, ?, ?)");
    for (std::size_t row = 0; row < tools.size(); ++row) {
        sqlite3_bind_int64(insert.get(), 1, static_cast<std::int64_t>(row));
        bind(insert.get(), 2, tools[row].name);
        bind(insert.get(), 3, tools[row].searchText);
        sqlite3_bind_double(insert.get(), 4, tools[row].diameter);
        step(insert.get());
        sqlite3_reset(insert.get());
    }
    m_database.run("commit; create index by_name on tool (name); create index by_diameter on tool (diameter); analyze");
    for (const char *query : {
             "select row from tool order by name limit ?4 offset ?5",
             "select row from tool where instr(search, ?1) and diameter between ?2 and ?3 order by name limit ?4 "
             "offset ?5",
             "select row from tool order by diameter limit ?4 offset ?5",
             "select row from tool where instr(search, ?1) and diameter between ?2 and ?3 order by diameter limit ?4 "
             "offset ?5",
         })
        m_queries.push_back(m_database.prepare(query));
}

std::vector<std::int64_t> PageTable::page(const std::string &searchText, double lower, double upper, Order order,
                                          int limit, int offset) const
{
    const bool hasConditions = !searchText.empty() || std::isfinite(lower) || std::isfinite(upper);
    sqlite3_stmt *query = m_queries[(order == Order::Name ? 0U : 2U) + (hasConditions ? 1U : 0U)].get();
    if (hasConditions) {
        bind(query, 1, searchText);
        sqlite3_bind_double(query, 2, lower);
        sqlite3_bind_double(query, 3, upper);
    }
    sqlite3_bind_int(query, 4, limit);
    sqlite3_bind_int(query, 5, offset);
    std::vector<std::int64_t> rows;
    while (step(query))
        rows.push_back(sqlite3_column_int64(query, 0));
    sqlite3_reset(query);
    return rows;
}

} // namespace Bench
