#include "Libraries.h"

#include "platform/utils/Messages.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Bench {

namespace {

std::string fileName(std::size_t tools)
{
    return "bench" + std::to_string(tools) + ".json";
}

void make(std::size_t tools, const std::string &file)
{
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    const std::string command = std::string("python3 '") + GENERATOR + "' --format indented --seed 7 --count " +
                                std::to_string(tools) + " -o '" + file + ".part' && mv '" + file + ".part' '" + file +
                                "'";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("Could not make " + file);
}

} // namespace

std::wstring libraryUrl(std::size_t tools)
{
    libraryFile(tools);
    return L"toollibraryroot://Local/" + Varn::Messages::fromUTF8ToWideUnicode(fileName(tools));
}

std::string libraryFile(std::size_t tools)
{
    const std::string file = std::string(LIBRARIES_DIR) + "/Local/" + fileName(tools);
    if (!std::filesystem::exists(file))
        make(tools, file);
    return file;
}

std::string libraryBytes(std::size_t tools)
{
    std::ifstream stream(libraryFile(tools), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::wstring BenchPaths::appDataFolder() const
{
    return Varn::Messages::fromUTF8ToWideUnicode(LIBRARIES_DIR);
}

} // namespace Bench
