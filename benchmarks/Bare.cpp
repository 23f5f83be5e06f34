#include "Bare.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <sqlite3.h>

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

} // namespace

void parseBare(const std::string &bytes, rapidjson::Document &document)
{
    if (document.Parse(bytes.c_str()).HasParseError())
        throw std::runtime_error("The measured library is broken");
}

std::size_t printBare(const rapidjson::Document &document)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    return buffer.GetSize();
}

ToolTable::ToolTable(const rapidjson::Document &library)
{
    check(sqlite3_open(":memory:", &m_database), m_database);
    check(sqlite3_exec(m_database, "create table tool (guid text primary key, json text) without rowid; begin", nullptr,
                       nullptr, nullptr),
          m_database);
    sqlite3_stmt *insert = nullptr;
    check(sqlite3_prepare_v2(m_database, "insert into tool values (?, ?)", -1, &insert, nullptr), m_database);
    for (const auto &tool : library["data"].GetArray()) {
        const std::string text = textOf(tool);
        sqlite3_bind_text(insert, 1, tool["guid"].GetString(), -1, SQLITE_STATIC);
        sqlite3_bind_text(insert, 2, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
        check(sqlite3_step(insert), m_database);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    check(sqlite3_exec(m_database, "commit", nullptr, nullptr, nullptr), m_database);
    check(sqlite3_prepare_v2(m_database, "select json from tool where guid = ?", -1, &m_query, nullptr), m_database);
}

ToolTable::~ToolTable()
{
    sqlite3_finalize(m_query);
    sqlite3_close(m_database);
}

std::string ToolTable::find(const std::string &guid) const
{
    sqlite3_bind_text(m_query, 1, guid.data(), static_cast<int>(guid.size()), SQLITE_STATIC);
    check(sqlite3_step(m_query), m_database);
    const auto *text = static_cast<const char *>(sqlite3_column_blob(m_query, 0));
    std::string found(text, static_cast<std::size_t>(sqlite3_column_bytes(m_query, 0)));
    sqlite3_reset(m_query);
    return found;
}

std::vector<std::string> guidsOf(const rapidjson::Document &library)
{
    std::vector<std::string> guids;
    for (const auto &tool : library["data"].GetArray())
        guids.emplace_back(tool["guid"].GetString());
    return guids;
}

} // namespace Bench
