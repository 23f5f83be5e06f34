#include "HandMadeZip.h"
#include "ZipTestSupport.h"
#include "platform/zip/ZipLimits.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;
using testing::IsEmpty;
using Cause = CZipException::Cause;

namespace {

/// A file that says it is as long as one likes.
class BoastfulFile : public CZipMemFile
{
public:
    explicit BoastfulFile(std::uint64_t length) : m_length(length) {}
    std::uint64_t GetLength() const override { return m_length; }

private:
    std::uint64_t m_length;
};

/// A file whose reads or writes fail, as on a broken disk.
class BrokenFile : public CZipMemFile
{
public:
    std::size_t Read(void *buffer, std::size_t size) override
    {
        if (m_broken)
            throw CZipException(Cause::FileError, "broken");
        return CZipMemFile::Read(buffer, size);
    }
    void Write(const void *bytes, std::size_t size) override
    {
        if (m_broken)
            throw CZipException(Cause::FileError, "broken");
        CZipMemFile::Write(bytes, size);
    }

    bool m_broken = true;
};

std::string lines(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "{\"guid\":\"" + std::to_string(i) + "\",\"type\":\"flat end mill\"}\n";
    return text;
}

} // namespace

TEST(CZipArchiveTest, WhatWasAddedIsThereAfterCloseInItsOrder)
{
    const Entries entries{
        {L"tools.json", lines(5000)}, {L"b/\u5de5\u5177.3DTool", std::string("\0\1\2", 3)}, {L"a", ""}};
    EXPECT_EQ(entriesOf(zipOf(entries)), entries);
}

TEST(CZipArchiveTest, TheSameEntriesGiveTheSameBytes)
{
    const Entries entries{{L"tools.json", lines(100)}, {L"a.3DTool", "solid"}, {L"folder/", ""}};
    EXPECT_EQ(zipOf(entries), zipOf(entries));
}

TEST(CZipArchiveTest, TheHeaderTellsNameSizesAndKind)
{
    Image image(zipOf({{L"tools.json", lines(5000)}, {L"folder/", ""}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    ASSERT_EQ(archive.GetCount(), 2);
    const CZipFileHeader *header = archive.GetFileInfo(0);
    EXPECT_EQ(header->GetFileName(), L"tools.json");
    EXPECT_EQ(header->GetUncompressedSize(), lines(5000).size());
    EXPECT_LT(header->GetCompressedSize(), header->GetUncompressedSize() / 5);
    EXPECT_GT(header->GetCompressedSize(), 0U);
    EXPECT_FALSE(header->IsDirectory());
    EXPECT_FALSE(header->IsEncrypted());
    EXPECT_TRUE(archive.GetFileInfo(1)->IsDirectory());
    EXPECT_EQ(archive.GetFileInfo(2), nullptr);
    EXPECT_EQ(archive.GetFileInfo(-1), nullptr);
}

TEST(CZipArchiveTest, EntriesHaveTheAttributesOfTheSystemAndTheFirstDate)
{
    struct Row {
        int system;
        std::string file; // the system in the upper byte of "made by", the attributes at the end
        std::string folder;
    };
    const Row rows[] = {
        {CZipArchive::Unix, number(3, 1) + number(0100644U << 16, 4), number(3, 1) + number(040755U << 16 | 0x10, 4)},
        {CZipArchive::Dos, number(0, 1) + number(0x20, 4), number(0, 1) + number(0x10, 4)},
    };
    for (const Row &row : rows) {
        CZipMemFile image;
        CZipArchive archive;
        ASSERT_TRUE(archive.SetSystemCompatibility(row.system));
        ASSERT_TRUE(archive.Open(image, CZipArchive::Create));
        add(archive, L"a", "abc");
        add(archive, L"b/", "");
        archive.Close();
        const std::string bytes(image.GetBytes());
        const std::size_t file = bytes.find("PK\1\2");
        const std::size_t folder = bytes.find("PK\1\2", file + 1);
        ASSERT_NE(folder, std::string::npos);
        EXPECT_EQ(bytes.substr(file + 5, 1) + bytes.substr(file + 38, 4), row.file) << row.system;
        EXPECT_EQ(bytes.substr(folder + 5, 1) + bytes.substr(folder + 38, 4), row.folder) << row.system;
        EXPECT_EQ(bytes.substr(file + 12, 4), number(0, 2) + number(0x21, 2)) << "1980-01-01";
    }
}

TEST(CZipArchiveTest, AnUnknownSystemIsRefused)
{
    CZipArchive archive;
    EXPECT_TRUE(archive.SetSystemCompatibility(3));
    EXPECT_FALSE(archive.SetSystemCompatibility(19));
    EXPECT_FALSE(archive.SetSystemCompatibility(-1));
}

TEST(CZipArchiveTest, TheLevelDecidesHowSmallTheEntryGets)
{
    const std::string content = lines(2000);
    std::vector<std::uint64_t> sizes;
    for (const int level : {0, 1, 6, -1}) {
        CZipMemFile image;
        CZipArchive archive;
        ASSERT_TRUE(archive.Open(image, CZipArchive::Create));
        add(archive, L"a", content, level);
        archive.Close();
        ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
        EXPECT_EQ(contentOf(archive, 0), content) << level;
        sizes.push_back(archive.GetFileInfo(0)->GetCompressedSize());
    }
    EXPECT_EQ(sizes[0], content.size());
    EXPECT_GT(sizes[1], sizes[2]);
    EXPECT_EQ(sizes[2], sizes[3]);
}

TEST(CZipArchiveTest, IndexesOfANameAreAllThatBearIt)
{
    Image image(handMadeZip({{"a", "1"}, {"b", "2"}, {"a", "3"}, {"A", "4"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    CZipArray<int> indexes{7};
    archive.GetIndexes({L"a"}, indexes);
    EXPECT_THAT(indexes, ElementsAre(0, 2));
    archive.GetIndexes({L"b", L"missing", L"A"}, indexes);
    EXPECT_THAT(indexes, ElementsAre(1, 3));
    archive.GetIndexes({L"missing"}, indexes);
    EXPECT_THAT(indexes, IsEmpty());
    EXPECT_EQ(contentOf(archive, 2), "3");
}

TEST(CZipArchiveTest, MatchesAreByTheWholePath)
{
    Image image(zipOf({{L"data/", ""}, {L"data/a.p21", "1"}, {L"Data/b.p21", "2"}, {L"data.xml", "3"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    CZipArray<int> indexes{7};
    archive.FindMatches(L"data*", indexes, true);
    EXPECT_THAT(indexes, ElementsAre(0, 1, 3));
    archive.FindMatches(L"data*", indexes, false);
    EXPECT_THAT(indexes, ElementsAre(0, 1, 2, 3));
    archive.FindMatches(L"data", indexes, false);
    EXPECT_THAT(indexes, IsEmpty());
}

TEST(CZipArchiveTest, AnExtractionGoesToThePositionOfTheTarget)
{
    Image image(zipOf({{L"a", "content"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    CZipMemFile target;
    target.Write("in front: ", 10);
    archive.ExtractFile(0, target);
    EXPECT_EQ(target.GetBytes(), "in front: content");
}

TEST(CZipArchiveTest, ATargetThatIsFullEndsTheExtraction)
{
    Image image(zipOf({{L"a", "content"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    unsigned char memory[3];
    CZipMemFile target;
    target.Attach(memory, sizeof memory);
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, target); }), Cause::TooLarge);
    EXPECT_EQ(contentOf(archive, 0), "content") << "the archive is none the worse";
}

TEST(CZipArchiveTest, AnAbortIsAskedForWithEachBlock)
{
    Image image(zipOf({{L"a", std::string(1 << 20, 'x')}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    AbortableImpl abortable;
    std::size_t received = 0;
    const auto sink = [&](std::string_view block) {
        received += block.size();
        if (received >= 200000)
            abortable.abort();
    };
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, sink, abortable); }), Cause::Aborted);
    EXPECT_GE(received, 200000U);
    EXPECT_LE(received, 270000U);
    received = 0;
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, sink, abortable); }), Cause::Aborted);
    EXPECT_EQ(received, 0U);
}

TEST(CZipArchiveTest, ANewArchiveWithoutEntriesIsOneToo)
{
    const std::string empty = zipOf({});
    EXPECT_EQ(empty, handMadeZip({}));
    EXPECT_EQ(entriesOf(empty), Entries());
}

TEST(CZipArchiveTest, CreateReplacesTheOldContentAtClose)
{
    CZipMemFile image;
    image.Write("anything", 8);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Create));
    EXPECT_EQ(archive.GetCount(), 0);
    add(archive, L"a", "abc");
    EXPECT_EQ(image.GetBytes(), "anything");
    archive.Close();
    EXPECT_EQ(entriesOf(std::string(image.GetBytes())), (Entries{{L"a", "abc"}}));
}

TEST(CZipArchiveTest, AForcedCloseDropsTheChanges)
{
    const std::string before = zipOf({{L"a", "abc"}});
    Image image(before);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    add(archive, L"b", "def");
    archive.RemoveFiles({0});
    archive.Close(CZipArchive::Forced);
    EXPECT_TRUE(archive.IsClosed());
    EXPECT_EQ(image.GetBytes(), before);
}

TEST(CZipArchiveTest, AnUnchangedArchiveIsNotWritten)
{
    const std::string before = handMadeZip({{"a", "abc"}}, {.comment = "not as it would be written", .zip64 = true});
    Image image(before);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing)) << archive.GetOpenError();
    archive.Close();
    EXPECT_EQ(image.GetBytes(), before);
}

TEST(CZipArchiveTest, EntriesCanBeAddedAndRemoved)
{
    Image image(zipOf({{L"a", "1"}, {L"b", "2"}, {L"c", "3"}, {L"d", "4"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    archive.RemoveFiles({2, 0, 2});
    ASSERT_EQ(archive.GetCount(), 2);
    EXPECT_EQ(archive.GetFileInfo(0)->GetFileName(), L"b");
    EXPECT_EQ(contentOf(archive, 1), "4");
    add(archive, L"a", "new");
    ASSERT_EQ(archive.GetCount(), 3);
    EXPECT_EQ(archive.GetFileInfo(2)->GetFileName(), L"a");
    EXPECT_EQ(archive.GetFileInfo(2)->GetUncompressedSize(), 3U);
    EXPECT_EQ(causeOf([&] { contentOf(archive, 2); }), Cause::NotAllowed) << "not written yet";
    archive.RemoveFiles({0});
    archive.Close();
    EXPECT_EQ(entriesOf(std::string(image.GetBytes())), (Entries{{L"d", "4"}, {L"a", "new"}}));
}

TEST(CZipArchiveTest, WhatStaysIsCopiedAsItIs)
{
    // A name in code page 437, a method that is not read here, an entry that needs a password.
    const std::vector<HandMadeEntry> kept{{"\x81", "1"},
                                          {.name = "b", .content = "?", .method = 12, .size = 5},
                                          {.name = "c", .content = std::string(20, '?'), .flags = 1, .size = 8}};
    std::vector<HandMadeEntry> all = kept;
    all.insert(all.begin(), {"a", "0"});
    Image image(handMadeZip(all));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing)) << archive.GetOpenError();
    archive.RemoveFiles({0});
    archive.Close();
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly)) << archive.GetOpenError();
    ASSERT_EQ(archive.GetCount(), 3);
    EXPECT_EQ(archive.GetFileInfo(0)->GetFileName(), L"\u00fc");
    EXPECT_EQ(contentOf(archive, 0), "1");
    EXPECT_EQ(archive.GetFileInfo(1)->GetUncompressedSize(), 5U);
    EXPECT_TRUE(archive.GetFileInfo(2)->IsEncrypted());
    const std::string bytes(image.GetBytes());
    EXPECT_NE(bytes.find(std::string(20, '?')), std::string::npos);
    EXPECT_NE(bytes.find('\x81'), std::string::npos);
}

TEST(CZipArchiveTest, RemovingTheLastEntryLeavesAnEmptyArchive)
{
    Image image(zipOf({{L"a", "1"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    archive.RemoveFiles({0});
    archive.Close();
    EXPECT_EQ(image.GetBytes(), handMadeZip({}));
}

TEST(CZipArchiveTest, EntriesOfOneNameCanBeRemoved)
{
    Image image(handMadeZip({{"a", "1"}, {"b", "2"}, {"a", "3"}, {"a", "4"}, {"f/", ""}, {"f/", ""}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    archive.RemoveFiles({0, 2, 3, 4, 5});
    archive.Close();
    EXPECT_EQ(entriesOf(std::string(image.GetBytes())), (Entries{{L"b", "2"}}));
}

TEST(CZipArchiveTest, RemovingAnUnknownIndexRemovesNothing)
{
    Image image(zipOf({{L"a", "1"}, {L"b", "2"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    for (const int index : {2, -1}) {
        EXPECT_EQ(causeOf([&] { archive.RemoveFiles({0, index}); }), Cause::NotAllowed);
        EXPECT_EQ(archive.GetCount(), 2);
    }
    archive.RemoveFiles({});
    EXPECT_EQ(archive.GetCount(), 2);
}

TEST(CZipArchiveTest, ANameThatIsTakenOrNoPathIsRefused)
{
    CZipMemFile image;
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Create));
    add(archive, L"a", "1");
    EXPECT_EQ(causeOf([&] { add(archive, L"a", "2"); }), Cause::NameTaken);
    for (const wchar_t *name : {L"", L"../a", L"/a", L"a\\b", L"C:/a", L"a\nb"})
        EXPECT_EQ(causeOf([&] { add(archive, name, "3"); }), Cause::BadName);
    EXPECT_EQ(causeOf([&] { add(archive, std::wstring(L"b\0c", 3), "4"); }), Cause::BadName);
    EXPECT_EQ(causeOf([&] { add(archive, L"folder/", "a folder has no content"); }), Cause::BadName);
    EXPECT_EQ(causeOf([&] { add(archive, L"b", "5", 10); }), Cause::NotAllowed);
    archive.Close();
    EXPECT_EQ(entriesOf(std::string(image.GetBytes())), (Entries{{L"a", "1"}}));
}

TEST(CZipArchiveTest, AnEntryBeyondTheLimitsIsRefused)
{
    CZipMemFile image;
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Create));
    const auto boast = [&](const wchar_t *name, std::uint64_t size) {
        archive.AddNewFile(std::make_unique<BoastfulFile>(size), name);
    };
    EXPECT_EQ(causeOf([&] { boast(L"a", 0x80000000); }), Cause::TooLarge);
    boast(L"b", 0x7FFFFFFE);
    EXPECT_EQ(causeOf([&] { boast(L"c", 2); }), Cause::TooLarge) << "all together";
    archive.RemoveFiles({0});
    EXPECT_NO_THROW(add(archive, L"d", "1"));
}

TEST(CZipArchiveTest, ACloseThatFailsLeavesTheFileAsItWasAndMayBeTriedAgain)
{
    const std::string before = zipOf({{L"a", "1"}});
    Image image(before);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    auto broken = std::make_unique<BrokenFile>();
    BrokenFile &file = *broken;
    file.m_broken = false;
    file.Write("content", 7);
    file.m_broken = true;
    archive.AddNewFile(std::move(broken), L"b");
    EXPECT_EQ(causeOf([&] { archive.Close(); }), Cause::FileError);
    EXPECT_FALSE(archive.IsClosed());
    EXPECT_EQ(image.GetBytes(), before);
    file.m_broken = false;
    archive.Close();
    EXPECT_EQ(entriesOf(std::string(image.GetBytes())), (Entries{{L"a", "1"}, {L"b", "content"}}));
}

TEST(CZipArchiveTest, AFileThatCannotBeReadOrWrittenIsAFailure)
{
    BrokenFile file;
    CZipArchive archive;
    EXPECT_FALSE(archive.Open(file, CZipArchive::ReadOnly));
    EXPECT_EQ(archive.GetOpenError(), "broken");
    ASSERT_TRUE(archive.Open(file, CZipArchive::Create));
    EXPECT_EQ(causeOf([&] { archive.Close(); }), Cause::FileError);
    add(archive, L"a", "1");
    EXPECT_EQ(causeOf([&] { archive.Close(); }), Cause::FileError);
}

TEST(CZipArchiveTest, OpenDropsWhatWasOpen)
{
    CZipMemFile first;
    Image second(zipOf({{L"b", "2"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(first, CZipArchive::Create));
    add(archive, L"a", "1");
    ASSERT_TRUE(archive.Open(second, CZipArchive::ReadOnly));
    EXPECT_EQ(archive.GetFileInfo(0)->GetFileName(), L"b");
    EXPECT_EQ(first.GetLength(), 0U);
}

TEST(CZipArchiveTest, AnArchiveToBeReadAloneCannotBeChanged)
{
    Image image(zipOf({{L"a", "1"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    EXPECT_EQ(causeOf([&] { add(archive, L"b", "2"); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { archive.RemoveFiles({0}); }), Cause::NotAllowed);
}

TEST(CZipArchiveTest, EveryCallOnAClosedArchiveFailsButClose)
{
    CZipArchive archive;
    CZipMemFile target;
    CZipArray<int> indexes;
    EXPECT_TRUE(archive.IsClosed());
    EXPECT_EQ(causeOf([&] { archive.GetCount(); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { archive.GetFileInfo(0); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { archive.GetIndexes({L"a"}, indexes); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { archive.FindMatches(L"a", indexes, true); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, target); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { add(archive, L"a", "1"); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { archive.RemoveFiles({}); }), Cause::NotAllowed);
    EXPECT_NO_THROW(archive.Close());
}

TEST(CZipArchiveTest, AFileWithoutRoomForTheChangesStaysAsItWas)
{
    std::string memory = zipOf({{L"a", "1"}});
    const std::string before = memory;
    CZipMemFile image;
    image.Attach(reinterpret_cast<unsigned char *>(memory.data()), memory.size()); // and no byte more
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    add(archive, L"b", "2");
    EXPECT_EQ(causeOf([&] { archive.Close(); }), CZipException::Cause::FileError);
    EXPECT_FALSE(archive.IsClosed());
    EXPECT_EQ(image.GetBytes(), before);
    archive.Close(CZipArchive::Forced);
    EXPECT_EQ(entriesOf(memory), (Entries{{L"a", "1"}}));
}
