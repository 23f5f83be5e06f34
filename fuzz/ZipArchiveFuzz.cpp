// ZipArchiveFuzz.cpp -- any bytes as a zip archive. What opens has entries that extract or fail in a documented way,
// and can be changed and written: then it opens again with the other entries as they were.
#include "platform/zip/CZipArchive.h"
#include "platform/zip/CZipMemFile.h"
#include "platform/zip/EntryNames.h"
#include "platform/zip/ZipLimits.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

using namespace Varn;

namespace {

void expect(bool good)
{
    if (!good)
        std::abort();
}

/// The content of an entry, or nothing for one that cannot be read.
std::optional<std::string> extract(const CZipArchive &archive, int index)
{
    const std::uint64_t claimed = archive.GetFileInfo(index)->GetUncompressedSize();
    expect(claimed <= ZipLimits::mostBytes);
    std::string content;
    try {
        archive.ExtractFile(index, [&](std::string_view block) {
            content.append(block);
            expect(content.size() <= claimed);
        });
    } catch (const CZipException &) {
        return std::nullopt;
    }
    expect(content.size() == claimed);
    return content;
}

struct Entry {
    CZipString name;
    std::optional<std::string> content;

    friend bool operator==(const Entry &, const Entry &) = default;
};

std::vector<Entry> entries(const CZipArchive &archive)
{
    std::vector<Entry> result;
    for (int i = 0; i < archive.GetCount(); ++i)
        result.push_back({archive.GetFileInfo(i)->GetFileName(), extract(archive, i)});
    return result;
}

/// Removes the first entry and adds one. False when the archive does not allow it: its local headers may be broken.
bool change(CZipArchive &archive)
{
    try {
        archive.RemoveFiles({0});
        auto added = std::make_unique<CZipMemFile>();
        added->Write("added", 5);
        archive.AddNewFile(std::move(added), L"added by the fuzzer");
        archive.Close();
        return true;
    } catch (const CZipException &) {
        archive.Close(CZipArchive::Forced);
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    CZipMemFile image;
    image.AttachConst(data, size);
    CZipArchive archive;
    if (!archive.Open(image, CZipArchive::ReadOnly)) {
        expect(archive.IsClosed() && !archive.GetOpenError().empty());
        return 0;
    }
    std::vector<Entry> before = entries(archive);
    for (const Entry &entry : before) {
        EntryNames::isSafe(entry.name);
        CZipArray<int> indexes;
        archive.GetIndexes({entry.name}, indexes);
        expect(!indexes.empty());
    }
    expect(archive.Open(image, CZipArchive::Existing));
    if (before.empty() || !change(archive))
        return 0;
    before.erase(before.begin());
    before.push_back({L"added by the fuzzer", "added"});
    expect(archive.Open(image, CZipArchive::ReadOnly));
    expect(entries(archive) == before);
    return 0;
}
