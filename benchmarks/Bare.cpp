#include "Bare.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <zlib.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace Bench {

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

std::vector<std::string> guidsOf(const rapidjson::Document &library)
{
    std::vector<std::string> guids;
    for (const auto &tool : library["data"].GetArray())
        guids.emplace_back(tool["guid"].GetString());
    return guids;
}

} // namespace Bench
