#include "SqliteTables.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"

#include <sqlite3.h>

#include <cmath>
#include <stdexcept>

namespace Bench {

using Varn::ToolLibraries::RapidJsonConvert;

namespace {

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

std::string textAt(sqlite3_stmt *statement, int column)
{
    const auto *text = static_cast<const char *>(sqlite3_column_blob(statement, column));
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
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
        const std::string text = RapidJsonConvert::toString(tool);
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
    std::string found = textAt(m_query.get(), 0);
    sqlite3_reset(m_query.get());
    return found;
}

PageTable::PageTable(const std::vector<Tool> &tools)
{
    m_database.run("create table tool (row integer primary key, name text, search text, type text, diameter real, "
                   "json text); begin");
    const SqliteDatabase::Statement insert = m_database.prepare("insert into tool values (null, ?, ?, ?, ?, ?)");
    for (const Tool &tool : tools) {
        bind(insert.get(), 1, tool.name);
        bind(insert.get(), 2, tool.searchText);
        bind(insert.get(), 3, tool.type);
        sqlite3_bind_double(insert.get(), 4, tool.diameter);
        bind(insert.get(), 5, tool.json);
        step(insert.get());
        sqlite3_reset(insert.get());
    }
    m_database.run("commit; create index by_name on tool (name); create index by_diameter on tool (diameter); "
                   "create index by_type on tool (type); analyze");
    const std::string condition = " where instr(search, ?1) and diameter between ?2 and ?3";
    for (const std::string order : {"name", "diameter"})
        for (const std::string &where : {std::string(), condition})
            m_queries.push_back(m_database.prepare(
                ("select json from tool" + where + " order by " + order + " limit ?4 offset ?5").c_str()));
    for (const std::string &where : {std::string(), condition})
        m_counts.push_back(m_database.prepare(("select type, count(*) from tool" + where + " group by type").c_str()));
}

PageTable::Page PageTable::page(const std::string &searchText, double lower, double upper, Order order, int limit,
                                int offset) const
{
    const bool hasConditions = !searchText.empty() || std::isfinite(lower) || std::isfinite(upper);
    sqlite3_stmt *query = m_queries[(order == Order::Name ? 0U : 2U) + (hasConditions ? 1U : 0U)].get();
    sqlite3_stmt *count = m_counts[hasConditions ? 1U : 0U].get();
    for (sqlite3_stmt *statement : {query, count}) {
        if (!hasConditions)
            continue;
        bind(statement, 1, searchText);
        sqlite3_bind_double(statement, 2, lower);
        sqlite3_bind_double(statement, 3, upper);
    }
    sqlite3_bind_int(query, 4, limit);
    sqlite3_bind_int(query, 5, offset);
    Page page{};
    while (step(query))
        page.tools.push_back(textAt(query, 0));
    while (step(count)) {
        page.types.push_back(textAt(count, 0));
        page.matched += sqlite3_column_int64(count, 1);
    }
    sqlite3_reset(query);
    sqlite3_reset(count);
    return page;
}

} // namespace Bench
