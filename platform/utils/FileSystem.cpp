#include "platform/utils/FileSystem.h"

#include "platform/utils/WideCharacters.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Varn {

namespace {

namespace fs = std::filesystem;

constexpr char32_t byteEscape = 0xDC00;  // a byte of 80 to FF that is no UTF-8 is this + byte
constexpr std::size_t longestName = 255; // bytes: NAME_MAX of the common file systems

bool isSeparator(wchar_t c)
{
    return c == L'/' || c == L'\\';
}

wchar_t lowerAscii(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

// '*' is any text, '?' one character.
bool matches(std::wstring_view name, std::wstring_view pattern)
{
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::wstring_view::npos; // the last one met
    std::size_t starEnd = 0;                    // where in the name its text ends so far
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            starEnd = n;
        } else if (p < pattern.size() && (pattern[p] == L'?' || lowerAscii(pattern[p]) == lowerAscii(name[n]))) {
            ++p;
            ++n;
        } else if (star != std::wstring_view::npos) {
            p = star + 1;
            n = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', p) == std::wstring_view::npos;
}

} // namespace

fs::path FileSystem::toPath(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const char32_t c = WideCharacters::next(text, i);
        if (c >= byteEscape + 0x80 && c <= byteEscape + 0xFF)
            bytes.push_back(static_cast<char>(c - byteEscape));
        else
            WideCharacters::appendUtf8(bytes, c == 0 ? WideCharacters::replacement : c);
    }
    return fs::path(std::move(bytes));
}

std::wstring FileSystem::fromPath(const fs::path &path)
{
    const std::string &bytes = path.native();
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t start = i;
        UChar32 character = 0;
        U8_NEXT(bytes.data(), i, bytes.size(), character);
        if (character >= 0) {
            text.push_back(static_cast<wchar_t>(character));
            continue;
        }
        for (std::size_t bad = start; bad < i; ++bad)
            text.push_back(static_cast<wchar_t>(byteEscape + static_cast<unsigned char>(bytes[bad])));
    }
    return text;
}

std::wstring FileSystem::fromQString(QStringView text)
{
    const std::wstring units(text.utf16(), text.utf16() + text.size());
    std::wstring wide;
    wide.reserve(units.size());
    for (std::size_t i = 0; i < units.size();)
        wide += static_cast<wchar_t>(WideCharacters::next(units, i));
    return wide;
}

std::wstring FileSystem::getFileName(std::wstring_view path)
{
    return std::wstring(path.substr(path.rfind(L'/') + 1));
}

std::wstring FileSystem::getFolder(std::wstring_view path)
{
    const auto separator = path.rfind(L'/');
    if (separator == std::wstring_view::npos)
        return {};
    return std::wstring(path.substr(0, std::max<std::size_t>(separator, 1)));
}

std::wstring FileSystem::getExtension(std::wstring_view path)
{
    const std::wstring name = getFileName(path);
    const auto dot = name.rfind(L'.');
    if (dot == std::wstring::npos || name == L"." || name == L"..")
        return {};
    return name.substr(dot);
}

bool FileSystem::hasExtension(std::wstring_view path, std::wstring_view extension)
{
    return std::ranges::equal(getExtension(path), extension, {}, lowerAscii, lowerAscii);
}

std::wstring FileSystem::combine(std::wstring_view folder, std::wstring_view name)
{
    if (folder.empty() || name.empty())
        return std::wstring(folder.empty() ? name : folder);
    while (!name.empty() && name.front() == L'/')
        name.remove_prefix(1);
    std::wstring path(folder);
    if (path.back() != L'/')
        path.push_back(L'/');
    return path.append(name);
}

std::wstring FileSystem::getNativePath(std::wstring_view path)
{
    std::wstring native(path);
    std::ranges::replace(native, L'\\', L'/');
    return native;
}

std::wstring FileSystem::trimLeadingSeparator(std::wstring_view path)
{
    return std::wstring(std::ranges::find_if_not(path, isSeparator), path.end());
}

bool FileSystem::isValidFileName(std::wstring_view name)
{
    if (name.empty() || name == L"." || name == L"..")
        return false;
    const auto allowed = [](wchar_t c) {
        return WideCharacters::isCharacter(static_cast<char32_t>(c)) && !isSeparator(c) && c >= 0x20 && c != 0x7F;
    };
    return std::ranges::all_of(name, allowed) && toPath(name).native().size() <= longestName;
}

bool FileSystem::exists(std::wstring_view path)
{
    std::error_code error;
    return fs::exists(toPath(path), error);
}

bool FileSystem::isDirectory(std::wstring_view path)
{
    std::error_code error;
    return fs::is_directory(toPath(path), error);
}

bool FileSystem::isFile(std::wstring_view path)
{
    std::error_code error;
    return fs::is_regular_file(toPath(path), error);
}

std::vector<std::wstring> FileSystem::getFiles(std::wstring_view folder, std::wstring_view pattern)
{
    std::vector<std::wstring> names;
    std::error_code error;
    for (fs::directory_iterator entry(toPath(folder), error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::error_code unreadable;
        std::wstring name = fromPath(entry->path().filename());
        if (entry->is_regular_file(unreadable) && matches(name, pattern))
            names.push_back(std::move(name));
    }
    std::ranges::sort(names);
    return names;
}

FileSystem::File FileSystem::openForReading(const std::wstring &path)
{
    // Without O_NONBLOCK the opening of a pipe waits until somebody writes into it.
    const int descriptor = ::open(toPath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    struct stat status = {};
    std::FILE *file = nullptr;
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        file = ::fdopen(descriptor, "rb");
    if (!file)
        ::close(descriptor);
    return File(file);
}

std::error_code FileSystem::createFolders(std::wstring_view path)
{
    const fs::path folder = toPath(path);
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error && !fs::is_directory(folder, error) && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    return error;
}

std::error_code FileSystem::copy(std::wstring_view from, std::wstring_view to, bool overwrite)
{
    const fs::path source = toPath(from);
    const fs::path target = toPath(to);
    std::error_code error;
    if (fs::is_directory(source, error))
        return std::make_error_code(std::errc::is_a_directory);
    const bool wasThere = fs::exists(fs::symlink_status(target, error));
    const auto options = overwrite ? fs::copy_options::overwrite_existing : fs::copy_options::none;
    fs::copy_file(source, target, options, error);
    if (error && !wasThere && error != std::errc::file_exists) {
        std::error_code ignored;
        fs::remove(target, ignored);
    }
    return error;
}

std::error_code FileSystem::renameFolder(std::wstring_view from, std::wstring_view to)
{
    const fs::path source = toPath(from);
    const fs::path target = toPath(to);
    std::error_code error;
    if (!fs::is_directory(source, error))
        return error ? error : std::make_error_code(std::errc::not_a_directory);
    if (fs::exists(fs::symlink_status(target, error)))
        return std::make_error_code(std::errc::file_exists);
    fs::rename(source, target, error);
    return error;
}

std::error_code FileSystem::remove(std::wstring_view path)
{
    const fs::path file = toPath(path);
    std::error_code error;
    if (fs::is_directory(fs::symlink_status(file, error)))
        return std::make_error_code(std::errc::is_a_directory);
    fs::remove(file, error);
    return error;
}

std::error_code FileSystem::removeFolderRecursive(std::wstring_view path)
{
    const fs::path folder = toPath(path);
    std::error_code error;
    if (!fs::is_directory(folder, error))
        return error ? error : std::make_error_code(std::errc::not_a_directory);
    if (!folder.lexically_normal().has_relative_path())
        return std::make_error_code(std::errc::operation_not_permitted);
    fs::remove_all(folder, error);
    return error;
}

} // namespace Varn
