#include "Bare.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <sqlite3.h>
#include <zlib.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

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

void printIndentedBare(const rapidjson::Document &document, rapidjson::StringBuffer &text)
{
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(text);
    document.Accept(writer);
}

void replaceFileBare(const std::string &file, std::string_view bytes)
{
    const std::string beside = file + ".beside";
    const int descriptor = open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    const std::string folderName = std::filesystem::path(file).parent_path().string();
    const int folder = open(folderName.c_str(), O_RDONLY | O_DIRECTORY);
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = write(descriptor, bytes.data() + written, bytes.size() - written);
        if (count <= 0)
            throw std::runtime_error("Could not write " + beside);
        written += static_cast<std::size_t>(count);
    }
    const bool good = fsync(descriptor) == 0 && close(descriptor) == 0 && rename(beside.c_str(), file.c_str()) == 0 &&
                      fsync(folder) == 0 && close(folder) == 0;
    if (!good)
        throw std::runtime_error("Could not replace " + file);
}

std::string deflateBare(std::string_view bytes)
{
    uLongf size = compressBound(bytes.size());
    std::string packed(size, '\0');
    if (compress2(reinterpret_cast<Bytef *>(packed.data()), &size, reinterpret_cast<const Bytef *>(bytes.data()),
                  bytes.size(), 6) != Z_OK)
        throw std::runtime_error("Could not deflate");
    packed.resize(size);
    return packed;
}

std::string inflateBare(const std::string &packed, std::size_t size)
{
    std::string bytes(size, '\0');
    uLongf length = size;
    if (uncompress(reinterpret_cast<Bytef *>(bytes.data()), &length, reinterpret_cast<const Bytef *>(packed.data()),
                   packed.size()) != Z_OK ||
        length != size)
        throw std::runtime_error("Could not inflate");
    return bytes;
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
