// ZipTestSupport.h -- archives in memory, in the words of a test.
#pragma once

#include "platform/zip/CZipArchive.h"
#include "platform/zip/CZipMemFile.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TestSupport {

/// Bytes as a file that reads them.
class Image : public Varn::CZipMemFile
{
public:
    explicit Image(std::string bytes = {}) : m_bytes(std::move(bytes))
    {
        AttachConst(reinterpret_cast<const unsigned char *>(m_bytes.data()), m_bytes.size());
    }
    ~Image() override { CZipMemFile::Close(); }

private:
    std::string m_bytes;
};

using Entries = std::vector<std::pair<std::wstring, std::string>>;

inline void add(Varn::CZipArchive &archive, const std::wstring &name, const std::string &content, int level = -1)
{
    archive.AddNewFile(std::make_unique<Image>(content), name, level);
}

/// The bytes of an archive of these entries.
inline std::string zipOf(const Entries &entries)
{
    Varn::CZipMemFile image;
    Varn::CZipArchive archive;
    if (!archive.Open(image, Varn::CZipArchive::Create))
        return archive.GetOpenError();
    for (const auto &[name, content] : entries)
        add(archive, name, content);
    archive.Close();
    return std::string(image.GetBytes());
}

inline std::string contentOf(const Varn::CZipArchive &archive, int index)
{
    Varn::CZipMemFile content;
    archive.ExtractFile(index, content);
    return std::string(content.GetBytes());
}

/// Names and contents of an archive's entries; nothing when it does not open.
inline std::optional<Entries> entriesOf(const std::string &bytes)
{
    Image image(bytes);
    Varn::CZipArchive archive;
    if (!archive.Open(image, Varn::CZipArchive::ReadOnly))
        return std::nullopt;
    Entries entries;
    for (int i = 0; i < archive.GetCount(); ++i)
        entries.emplace_back(archive.GetFileInfo(i)->GetFileName(), contentOf(archive, i));
    return entries;
}

/// The cause of the CZipException that \a work raises; nothing when it raises none.
template <typename Work>
std::optional<Varn::CZipException::Cause> causeOf(Work work)
{
    try {
        work();
    } catch (const Varn::CZipException &error) {
        return error.cause();
    }
    return std::nullopt;
}

} // namespace TestSupport
