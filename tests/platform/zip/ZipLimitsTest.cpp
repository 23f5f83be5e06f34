#include "platform/zip/ZipLimits.h"
#include "HandMadeZip.h"
#include "platform/zip/CZipException.h"
#include "platform/zip/CZipMemFile.h"

#include <gtest/gtest.h>

#include <string>

using namespace Varn;
using TestSupport::HandMadeEnd;
using TestSupport::handMadeZip;
using TestSupport::number;

namespace {

/// The text of the failure; empty when the archive is within the limits.
std::string check(const std::string &bytes)
{
    CZipMemFile file;
    file.AttachConst(reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size());
    try {
        ZipLimits::check(file);
    } catch (const CZipException &error) {
        return error.what();
    }
    return {};
}

const std::string noArchive = "archive: no zip archive, or a truncated one";
const std::string tooMany = "archive: more than 250000 entries";
const std::string tooLong = "archive: a list of entries larger than 32 MiB";

/// An end record as it stands behind \a bytes of anything.
std::string end(std::uint64_t entries, std::uint64_t directoryBytes, std::uint64_t offset, bool zip64,
                std::uint64_t position = 0)
{
    HandMadeEnd how;
    how.zip64 = zip64;
    return TestSupport::HandMade::end(entries, directoryBytes, offset, position, how);
}

/// A file of zeros that takes no memory, with an end.
class LongFile : public CZipMemFile
{
public:
    LongFile(std::uint64_t length, const std::string &tail) : m_length(length)
    {
        CZipMemFile::Write(tail.data(), tail.size());
    }

    std::uint64_t GetLength() const override { return m_length; }
    void Seek(std::uint64_t position) override { m_at = position; }
    std::size_t Read(void *buffer, std::size_t size) override
    {
        const std::string_view tail = GetBytes();
        auto *bytes = static_cast<char *>(buffer);
        std::size_t count = 0;
        for (; count < size && m_at < m_length; ++count, ++m_at) {
            const std::uint64_t left = m_length - m_at;
            bytes[count] = left > tail.size() ? '\0' : tail[tail.size() - left];
        }
        return count;
    }

private:
    std::uint64_t m_length;
    std::uint64_t m_at = 0;
};

std::string checkLong(std::uint64_t length, const std::string &tail)
{
    LongFile file(length, tail);
    try {
        ZipLimits::check(file);
    } catch (const CZipException &error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(ZipLimitsTest, AnOrdinaryArchiveIsWithinTheLimits)
{
    EXPECT_EQ(check(handMadeZip({})), "");
    EXPECT_EQ(check(handMadeZip({{"a", "content"}})), "");
    HandMadeEnd how;
    how.zip64 = true;
    how.comment = "a comment";
    EXPECT_EQ(check(handMadeZip({{"a", "content"}}, how)), "");
    EXPECT_EQ(check("something in front of it" + handMadeZip({{"a", "content"}})), "");
}

TEST(ZipLimitsTest, WhatHasNoEndRecordIsNoArchive)
{
    const std::string archive = handMadeZip({{"a", "content"}});
    EXPECT_EQ(check(""), noArchive);
    EXPECT_EQ(check("PK\5\6"), noArchive);
    EXPECT_EQ(check("{\"data\":[],\"version\":36}"), noArchive);
    EXPECT_EQ(check(std::string(100000, 'x')), noArchive);
    for (std::size_t size = 0; size < archive.size(); ++size)
        EXPECT_EQ(check(archive.substr(0, size)), noArchive) << size;
    EXPECT_EQ(check(archive + std::string(70000, 'x')), noArchive) << "out of reach of any comment";
}

TEST(ZipLimitsTest, AnEndRecordThatLeadsOutOfTheArchiveIsNone)
{
    EXPECT_EQ(check(std::string(100, 'x') + end(1, 46, 77, false)), noArchive);
    EXPECT_EQ(check(std::string(100, 'x') + end(1, 0xFFFFFFFF, 0xFFFFFFFF, false)), noArchive);
    EXPECT_EQ(check(std::string(100, 'x') + end(1, ~std::uint64_t{0}, 1, true, 100)), noArchive);
    EXPECT_EQ(check(std::string(100, 'x') + end(1, 1, ~std::uint64_t{0}, true, 100)), noArchive);
    EXPECT_EQ(check(std::string(100, 'x') + end(1, 1, 1, true, ~std::uint64_t{0})), noArchive);
    EXPECT_EQ(check(std::string(100, 'x') + end(1, 1, 1, true, 99)), noArchive) << "no record at the place";
}

TEST(ZipLimitsTest, TheNumberOfEntriesHasALimit)
{
    EXPECT_EQ(check(std::string(100, 'x') + end(250000, 46, 0, true, 100)), "");
    EXPECT_EQ(check(std::string(100, 'x') + end(250001, 46, 0, true, 100)), tooMany);
    EXPECT_EQ(check(std::string(100, 'x') + end(std::uint64_t{1} << 40, 46, 0, true, 100)), tooMany);
    EXPECT_EQ(check(std::string(100, 'x') + end(~std::uint64_t{0}, 46, 0, true, 100)), tooMany);
}

TEST(ZipLimitsTest, EndRecordsInTheCommentCountTogether)
{
    std::string bytes(100, 'x');
    for (int i = 0; i < 4; ++i)
        bytes += end(0xFFFF, 46, 0, false);
    EXPECT_EQ(check(bytes), tooMany);
}

TEST(ZipLimitsTest, TheListOfEntriesHasALimit)
{
    const std::uint64_t most = ZipLimits::mostDirectoryBytes;
    EXPECT_EQ(checkLong(most + 100, end(1, most, 0, false)), "");
    EXPECT_EQ(checkLong(most + 100, end(1, most + 1, 0, false)), tooLong);
    EXPECT_EQ(checkLong(most + 100, end(1, most / 2, 0, false) + end(1, most / 2 + 1, 0, false)), tooLong);
}

TEST(ZipLimitsTest, TheArchiveHasALimit)
{
    EXPECT_EQ(checkLong(0x7FFFFFFF, end(0, 0, 0, false)), "");
    EXPECT_EQ(checkLong(0x80000000, end(0, 0, 0, false)), "archive: larger than 2147483647 bytes");
}
