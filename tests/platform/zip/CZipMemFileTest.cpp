#include "platform/zip/CZipMemFile.h"
#include "platform/zip/CZipException.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

using Varn::CZipException;
using Varn::CZipMemFile;

namespace {

using Bytes = std::array<unsigned char, 4>;

std::string read(CZipMemFile &file, std::size_t size)
{
    std::string bytes(size, '\0');
    bytes.resize(file.Read(bytes.data(), size));
    return bytes;
}

} // namespace

TEST(CZipMemFileTest, IsEmptyAtFirst)
{
    CZipMemFile file;
    EXPECT_EQ(file.GetLength(), 0U);
    EXPECT_EQ(file.GetPosition(), 0U);
    EXPECT_EQ(file.GetBytes(), "");
    EXPECT_EQ(read(file, 4), "");
}

TEST(CZipMemFileTest, ReadsFromThePositionAndNoMoreThanThereIs)
{
    CZipMemFile file;
    file.Write("abcdef", 6);
    EXPECT_EQ(file.GetPosition(), 6U);
    file.Seek(2);
    EXPECT_EQ(read(file, 3), "cde");
    EXPECT_EQ(read(file, 3), "f");
    EXPECT_EQ(read(file, 3), "");
    file.Seek(1000);
    EXPECT_EQ(read(file, 3), "");
}

TEST(CZipMemFileTest, WritesOverAndBeyondTheEnd)
{
    CZipMemFile file(1);
    file.Write("abc", 3);
    file.Seek(2);
    file.Write("CDE", 3);
    EXPECT_EQ(file.GetBytes(), "abCDE");
    file.Write("", 0);
    EXPECT_EQ(file.GetBytes(), "abCDE");
}

TEST(CZipMemFileTest, AGapIsFilledWithZeros)
{
    CZipMemFile file;
    file.Seek(3);
    EXPECT_EQ(file.GetLength(), 0U);
    file.Write("x", 1);
    EXPECT_EQ(file.GetBytes(), std::string("\0\0\0x", 4));
}

TEST(CZipMemFileTest, AGapIsFilledWithZerosWhereTheFileWasLongerBefore)
{
    CZipMemFile file;
    file.Write("abcdef", 6);
    file.SetLength(1);
    file.Seek(4);
    file.Write("x", 1);
    EXPECT_EQ(file.GetBytes(), std::string("a\0\0\0x", 5));
}

TEST(CZipMemFileTest, TheLengthCanBeSetAndThePositionStays)
{
    CZipMemFile file;
    file.Write("abc", 3);
    file.SetLength(5);
    EXPECT_EQ(file.GetBytes(), std::string("abc\0\0", 5));
    file.SetLength(1);
    EXPECT_EQ(file.GetBytes(), "a");
    EXPECT_EQ(file.GetPosition(), 3U);
    file.SetLength(0);
    EXPECT_EQ(file.GetBytes(), "");
}

TEST(CZipMemFileTest, ManySmallWritesGiveOneContent)
{
    CZipMemFile file;
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        const std::string word = std::to_string(i);
        file.Write(word.data(), word.size());
        expected += word;
    }
    EXPECT_EQ(file.GetBytes(), expected);
}

TEST(CZipMemFileTest, CloseDropsTheContentAndTheFileCanBeUsedAgain)
{
    CZipMemFile file;
    file.Write("abc", 3);
    file.Close();
    EXPECT_EQ(file.GetLength(), 0U);
    EXPECT_EQ(file.GetPosition(), 0U);
    file.Write("x", 1);
    EXPECT_EQ(file.GetBytes(), "x");
}

TEST(CZipMemFileTest, WritesIntoAttachedMemory)
{
    Bytes memory{'a', 'b', 'c', 'd'};
    CZipMemFile file;
    file.Write("old", 3);
    file.Attach(memory.data(), memory.size());
    EXPECT_EQ(file.GetBytes(), "abcd");
    file.Write("AB", 2);
    EXPECT_EQ(memory, (Bytes{'A', 'B', 'c', 'd'}));
    EXPECT_EQ(static_cast<const void *>(file.GetBytes().data()), memory.data());
}

TEST(CZipMemFileTest, AttachedMemoryThatMayNotGrowIsALimit)
{
    Bytes memory{'a', 'b', 'c', 'd'};
    CZipMemFile file;
    file.Attach(memory.data(), memory.size());
    file.Seek(3);
    try {
        file.Write("DE", 2);
        FAIL() << "written beyond the end";
    } catch (const CZipException &error) {
        EXPECT_EQ(error.cause(), CZipException::Cause::TooLarge);
    }
    EXPECT_THROW(file.SetLength(5), CZipException);
    EXPECT_EQ(file.GetBytes(), "abcd");
    file.SetLength(2);
    file.SetLength(4);
    EXPECT_EQ(file.GetBytes(), std::string("ab\0\0", 4));
}

TEST(CZipMemFileTest, BeyondAttachedMemoryTheFileGoesOnInItsOwn)
{
    Bytes memory{'a', 'b', 'c', 'd'};
    CZipMemFile file;
    file.Attach(memory.data(), memory.size(), 16);
    file.Seek(3);
    file.Write("DE", 2);
    EXPECT_EQ(file.GetBytes(), "abcDE");
    file.Seek(0);
    file.Write("A", 1);
    EXPECT_EQ(memory, (Bytes{'a', 'b', 'c', 'd'}));
}

TEST(CZipMemFileTest, ConstMemoryIsCopiedBeforeTheFirstWrite)
{
    const Bytes memory{'a', 'b', 'c', 'd'};
    CZipMemFile file;
    file.AttachConst(memory.data(), memory.size());
    EXPECT_EQ(static_cast<const void *>(file.GetBytes().data()), memory.data());
    file.Write("A", 1);
    EXPECT_EQ(file.GetBytes(), "Abcd");
    EXPECT_EQ(memory, (Bytes{'a', 'b', 'c', 'd'}));
}

TEST(CZipMemFileTest, ShortenedConstMemoryGrowsWithZeros)
{
    const Bytes memory{'a', 'b', 'c', 'd'};
    CZipMemFile file;
    file.AttachConst(memory.data(), memory.size());
    file.SetLength(1);
    file.SetLength(3);
    EXPECT_EQ(file.GetBytes(), std::string("a\0\0", 3));
    EXPECT_EQ(memory, (Bytes{'a', 'b', 'c', 'd'}));
}

TEST(CZipMemFileTest, AWriteAtTheEndOfAllMemoryIsRefused)
{
    CZipMemFile file;
    file.Write("abc", 3);
    file.Seek(std::numeric_limits<std::uint64_t>::max());
    EXPECT_THROW(file.Write("xy", 2), CZipException);
    EXPECT_EQ(file.GetBytes(), "abc");
    file.Seek(std::numeric_limits<std::uint64_t>::max() / 2);
    EXPECT_THROW(file.Write("x", 1), std::bad_alloc);
    EXPECT_EQ(file.GetBytes(), "abc");
}
