#include "HandMadeZip.h"
#include "ZipTestSupport.h"
#include "platform/zip/EntryNames.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;
using Cause = CZipException::Cause;

namespace {

constexpr std::uint64_t large = std::uint64_t{1} << 40;

std::string lines(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "a line of a library " + std::to_string(i) + "\n";
    return text;
}

/// An archive whose only entry cannot be read, and why.
struct EntryRow {
    const char *what;
    HandMadeEntry entry;
    Cause cause;
};
// clang-format off
const EntryRow entryRows[] = {
    { "wrong checksum",             { .name = "a", .content = "content", .crc = 1 },                                        Cause::Damaged     },
    { "wrong checksum of nothing",  { .name = "a", .content = "", .crc = 1 },                                               Cause::Damaged     },
    { "shorter than it says",       { .name = "a", .content = "content", .size = 8 },                                       Cause::Damaged     },
    { "far shorter than it says",   { .name = "a", .content = "content", .size = 0x10000000 },                              Cause::Damaged     },
    { "nothing of what it says",    { .name = "a", .content = "", .size = 0x10000000 },                                     Cause::Damaged     },
    { "longer than it says",        { .name = "a", .content = "content", .size = 6 },                                       Cause::Damaged     },
    { "says it is empty",           { .name = "a", .content = "content", .size = 0 },                                       Cause::Damaged     },
    { "deflated, longer",           { .name = "a", .content = deflateStored("content"), .method = 8, .size = 6 },           Cause::Damaged     },
    { "deflated, shorter",          { .name = "a", .content = deflateStored("content"), .method = 8, .size = 0x10000000 },  Cause::Damaged     },
    { "deflated, says it is empty", { .name = "a", .content = deflateStored("content"), .method = 8, .size = 0 },           Cause::Damaged     },
    { "not deflated",               { .name = "a", .content = "\7ontent", .method = 8 },                                    Cause::Damaged     },
    { "cut deflate stream",         { .name = "a", .content = deflateStored("content").substr(0, 8), .method = 8, .size = 7 }, Cause::Damaged  },
    { "packed beyond the end",      { .name = "a", .content = "content", .size = 5000, .packed = 5000 },                    Cause::Damaged     },
    { "packed without end",         { .name = "a", .content = "content", .packed = large, .zip64 = true },                  Cause::Damaged     },
    { "header beyond the end",      { .name = "a", .content = "content", .offset = 5000 },                                  Cause::Damaged     },
    { "header far beyond the end",  { .name = "a", .content = "content", .offset = large, .zip64 = true },                  Cause::Damaged     },
    { "needs a password",           { .name = "a", .content = std::string(20, 'x'), .flags = 1, .size = 8 },                Cause::Encrypted   },
    { "strongly encrypted",         { .name = "a", .content = std::string(20, 'x'), .flags = 0x41, .size = 8 },             Cause::Encrypted   },
    { "deflate64",                  { .name = "a", .content = "content", .method = 9 },                                     Cause::Unsupported },
    { "bzip2",                      { .name = "a", .content = "content", .method = 12 },                                    Cause::Unsupported },
    { "lzma",                       { .name = "a", .content = "content", .method = 14 },                                    Cause::Unsupported },
    { "xz",                         { .name = "a", .content = "content", .method = 95 },                                    Cause::Unsupported },
    { "a method of nobody",         { .name = "a", .content = "content", .method = 0xFFFF },                                Cause::Unsupported },
};

/// An archive that does not open, and why.
struct ArchiveRow {
    const char *what;
    std::string bytes;
    std::string error; ///< begins so
};
const ArchiveRow archiveRows[] = {
    { "empty",                       "",                                                                       "archive: no zip archive, or a truncated one" },
    { "JSON",                        "{\"data\":[],\"version\":36}",                                           "archive: no zip archive, or a truncated one" },
    { "zeros",                       std::string(5000, '\0'),                                                  "archive: no zip archive, or a truncated one" },
    { "one entry too few",           handMadeZip({{"a", "1"}}, {.entries = 2}),                                "archive: " },
    { "many entries too few",        handMadeZip({{"a", "1"}}, {.entries = 0xFFFF}),                           "archive: " },
    { "no entry said",               handMadeZip({{"a", "1"}}, {.entries = 0, .zip64 = true}),                 "archive: " },
    { "countless entries",           handMadeZip({{"a", "1"}}, {.entries = large, .zip64 = true}),             "archive: more than 250000 entries" },
    { "list shorter than said",      handMadeZip({{"a", "1"}}, {.bytes = 40}),                                 "archive: " },
    { "list beyond the end",         handMadeZip({{"a", "1"}}, {.bytes = 4000}),                               "archive: no zip archive, or a truncated one" },
    { "list at a wrong place",       handMadeZip({{"a", "1"}}, {.offset = 0}),                                 "archive: " },
    { "several disks",               handMadeZip({{"a", "1"}}, {.disk = 1}),                                   "archive: Multi-disk zip archives not supported" },
    { "UTF-8 that is none",          handMadeZip({{.name = "a\xff", .content = "1", .flags = 0x800}}),         "archive: " },
    { "an entry beyond the limit",   handMadeZip({{.name = "a", .content = "1", .size = 0x80000000}}),         "entry 'a': more than 2147483647 bytes" },
    { "an entry without end",        handMadeZip({{.name = "a", .content = "1", .size = large, .zip64 = true}}), "entry 'a': more than 2147483647 bytes" },
    { "an entry of 2^64 - 1",        handMadeZip({{.name = "a", .content = "1", .size = ~std::uint64_t{0}, .zip64 = true}}), "entry 'a': more than 2147483647 bytes" },
    { "too much together",           handMadeZip({{.name = "a", .content = "1", .size = 0x7FFFFFFF},
                                                  {.name = "b", .content = "1", .size = 1}}),                  "entry 'b': more than 2147483647 bytes" },
};

struct NameRow {
    const char *what;
    std::string raw;
    int flags;
    std::wstring name;
};
const NameRow nameRows[] = {
    { "ASCII",                  "tools.json",       0,     L"tools.json"         },
    { "UTF-8 that says so",     "\xc3\xbc",         0x800, L"\u00fc"             },
    { "UTF-8 that does not",    "\xc3\xbc",         0,     L"\u00fc"             },
    { "code page 437",          "\x81",             0,     L"\u00fc"             },
    { "cut UTF-8",              "a\xc3",            0,     L"a\u251c"            },
    { "a NUL",                  {"a\0b", 3},        0,     L"a b"                },
    { "UTF-8 with a NUL",       {"\xc3\xbc\0b", 4}, 0x800, L"\u00fc b"           },
    { "a control character",    "a\1b",             0,     L"a\u263ab"           },
    { "empty",                  "",                 0,     L""                   },
    { "a line end",             "a\nb",             0,     L"a\nb"               },
};
// clang-format on

} // namespace

TEST(CZipArchiveHostileTest, AnEntryThatCannotBeReadSaysWhy)
{
    for (const EntryRow &row : entryRows) {
        Image image(handMadeZip({row.entry, {"good", "good content"}}));
        CZipArchive archive;
        ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly)) << row.what << ": " << archive.GetOpenError();
        CZipMemFile content;
        const auto extract = [&] { archive.ExtractFile(0, content); };
        EXPECT_EQ(causeOf(extract), row.cause) << row.what;
        EXPECT_LE(content.GetLength(), row.entry.size.value_or(7)) << row.what;
        EXPECT_EQ(causeOf(extract), row.cause) << row.what << ", a second time";
        EXPECT_EQ(contentOf(archive, 1), "good content") << row.what;
    }
}

TEST(CZipArchiveHostileTest, TheTextOfAFailureNamesTheEntry)
{
    Image image(handMadeZip({{.name = "d\xc3\xa9/a", .content = "content", .crc = 1}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    try {
        contentOf(archive, 0);
        FAIL() << "extracted";
    } catch (const CZipException &error) {
        EXPECT_STREQ(error.what(), "entry 'd\u00e9/a': CRC error");
    }
}

TEST(CZipArchiveHostileTest, AnArchiveThatDoesNotOpenSaysWhy)
{
    for (const ArchiveRow &row : archiveRows)
        for (const auto mode : {CZipArchive::ReadOnly, CZipArchive::Existing}) {
            Image image(row.bytes);
            CZipArchive archive;
            EXPECT_FALSE(archive.Open(image, mode)) << row.what;
            EXPECT_TRUE(archive.IsClosed()) << row.what;
            EXPECT_TRUE(archive.GetOpenError().starts_with(row.error)) << row.what << ": " << archive.GetOpenError();
            EXPECT_EQ(image.GetBytes(), row.bytes) << row.what;
        }
}

TEST(CZipArchiveHostileTest, EveryNameIsATextAndStaysTheSame)
{
    for (const NameRow &row : nameRows) {
        Image image(handMadeZip({{.name = row.raw, .content = "1", .flags = row.flags}, {"other", "2"}}));
        CZipArchive archive;
        ASSERT_TRUE(archive.Open(image, CZipArchive::Existing)) << row.what << ": " << archive.GetOpenError();
        EXPECT_EQ(archive.GetFileInfo(0)->GetFileName(), row.name) << row.what;
        CZipArray<int> indexes;
        archive.GetIndexes({row.name}, indexes);
        EXPECT_THAT(indexes, ElementsAre(0)) << row.what;
        archive.RemoveFiles({1});
        archive.Close();
        EXPECT_EQ(entriesOf(std::string(image.GetBytes())), (Entries{{row.name, "1"}})) << row.what;
    }
}

TEST(CZipArchiveHostileTest, NamesThatReadAlikeAreOneName)
{
    Image image(handMadeZip({{"\xc3\xbc", "1"}, {"\x81", "2"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    CZipArray<int> indexes;
    archive.GetIndexes({L"\u00fc"}, indexes);
    EXPECT_THAT(indexes, ElementsAre(0, 1));
    EXPECT_EQ(contentOf(archive, 1), "2");
}

TEST(CZipArchiveHostileTest, Zip64IsRead)
{
    const std::string bytes = handMadeZip({{.name = "a", .content = "content", .zip64 = true},
                                           {.name = "b",
                                            .content = deflateStored("deflated"),
                                            .method = 8,
                                            .crc = TestSupport::crc32("deflated"),
                                            .size = 8,
                                            .zip64 = true}},
                                          {.comment = "with a comment", .zip64 = true});
    EXPECT_EQ(entriesOf(bytes), (Entries{{L"a", "content"}, {L"b", "deflated"}}));
}

TEST(CZipArchiveHostileTest, ReadingOneEntryDoesNotTouchTheOthers)
{
    std::string bytes = zipOf({{L"good", lines(1000)}, {L"bad", lines(1000)}});
    const std::size_t bad = bytes.find("bad"); // in its local header
    bytes.replace(bad + 3, 200, 200, '\xff');
    Image image(bytes);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    EXPECT_EQ(contentOf(archive, 0), lines(1000));
    EXPECT_EQ(causeOf([&] { contentOf(archive, 1); }), Cause::Damaged);
    EXPECT_EQ(contentOf(archive, 0), lines(1000));
}

TEST(CZipArchiveHostileTest, ABombEndsAtTheSizeThatItClaims)
{
    std::string bytes = zipOf({{L"a", std::string(10'000'000, 'x')}});
    ASSERT_LT(bytes.size(), 20000U);
    const std::size_t central = bytes.find("PK\1\2");
    bytes.replace(central + 24, 4, number(100'000, 4));
    Image image(bytes);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly));
    std::size_t received = 0;
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, [&](std::string_view block) { received += block.size(); }); }),
              Cause::Damaged);
    EXPECT_LE(received, 100'000U);
}

TEST(CZipArchiveHostileTest, AnHonestEntryMayBeATenThousandthOfItsSize)
{
    // Deflate does not get below a thousandth of the size; a library of the same tool many times comes close.
    const std::string content(5'000'000, 'x');
    const std::string bytes = zipOf({{L"a", content}});
    EXPECT_LT(bytes.size() * 900, content.size());
    EXPECT_EQ(entriesOf(bytes), (Entries{{L"a", content}}));
}

TEST(CZipArchiveHostileTest, EntriesThatShareTheirContentCountEach)
{
    std::vector<HandMadeEntry> entries{{"0", std::string(1000, 'x')}};
    for (int i = 1; i < 100; ++i)
        entries.push_back({.name = std::to_string(i),
                           .content = "",
                           .crc = TestSupport::crc32(entries[0].content),
                           .size = 1000,
                           .packed = 1000,
                           .offset = 0});
    Image image(handMadeZip(entries));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    EXPECT_EQ(contentOf(archive, 99), entries[0].content);
    for (HandMadeEntry &entry : entries)
        entry.size = 30'000'000;
    Image bomb(handMadeZip(entries));
    EXPECT_FALSE(archive.Open(bomb, CZipArchive::ReadOnly)) << "3 GB together";
}

TEST(CZipArchiveHostileTest, ManyEntriesAreFine)
{
    std::vector<HandMadeEntry> entries;
    for (int i = 0; i < 10000; ++i)
        entries.push_back({std::to_string(i), "x"});
    const std::string bytes = handMadeZip(entries, {.zip64 = true});
    Image image(bytes);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::ReadOnly)) << archive.GetOpenError();
    EXPECT_EQ(archive.GetCount(), 10000);
    CZipArray<int> indexes;
    archive.GetIndexes({L"9999"}, indexes);
    EXPECT_THAT(indexes, ElementsAre(9999));
    EXPECT_EQ(contentOf(archive, 9999), "x");
}

TEST(CZipArchiveHostileTest, EndRecordsInTheCommentDoNotTakeLong)
{
    std::vector<HandMadeEntry> entries;
    for (int i = 0; i < 1000; ++i)
        entries.push_back({std::to_string(i), "x"});
    const std::string archive = handMadeZip(entries);
    const std::string end = archive.substr(archive.size() - 22);
    std::string comment;
    while (comment.size() + 22 <= 0xFFFF)
        comment += end;
    Image image(archive.substr(0, archive.size() - 2) + number(comment.size(), 2) + comment);
    CZipArchive opened;
    EXPECT_FALSE(opened.Open(image, CZipArchive::ReadOnly)); // each would be followed: 3 million entries
    EXPECT_EQ(opened.GetOpenError(), "archive: more than 250000 entries");
}

TEST(CZipArchiveHostileTest, ATruncatedArchiveDoesNotOpen)
{
    const std::string bytes = zipOf({{L"tools.json", lines(20)}, {L"a.3DTool", "solid"}});
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_EQ(entriesOf(bytes.substr(0, size)), std::nullopt) << size;
}

/// With any byte of it changed an archive does not open, or has entries that cannot be read, or the entries that it
/// had: the checksum lets no wrong content pass.
TEST(CZipArchiveHostileTest, NoChangedByteGivesWrongContent)
{
    const Entries entries{{L"tools.json", lines(20)}, {L"a.3DTool", "solid"}, {L"f/", ""}};
    const std::string good = zipOf(entries);
    for (std::size_t at = 0; at < good.size(); ++at)
        for (const int change : {0x01, 0x80, 0xff}) {
            std::string bytes = good;
            bytes[at] = static_cast<char>(bytes[at] ^ change);
            Image image(bytes);
            CZipArchive archive;
            if (!archive.Open(image, CZipArchive::ReadOnly)) {
                EXPECT_FALSE(archive.GetOpenError().empty());
                continue;
            }
            for (int i = 0; i < archive.GetCount(); ++i) {
                CZipMemFile content;
                const auto cause = causeOf([&] { archive.ExtractFile(i, content); });
                const std::string &expected = entries[static_cast<std::size_t>(i)].second;
                EXPECT_TRUE(cause || content.GetBytes() == expected) << "byte " << at << " changed by " << change;
            }
        }
}
