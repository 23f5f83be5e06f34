#include "ToolLibrary/IO/ByteArrayCZipMemFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using Varn::Tools::ByteArrayCZipMemFile;

TEST(ByteArrayCZipMemFileTest, ReadsFromTheByteArrayWithoutACopy)
{
    const QByteArray bytes("content");
    ByteArrayCZipMemFile file(bytes);
    EXPECT_EQ(file.GetBytes().data(), bytes.constData());
    char buffer[16];
    EXPECT_EQ(std::string(buffer, file.Read(buffer, sizeof buffer)), "content");
}

TEST(ByteArrayCZipMemFileTest, AWriteLeavesTheSharedByteArrayAlone)
{
    const QByteArray bytes("content");
    ByteArrayCZipMemFile file(bytes);
    file.Write("C", 1);
    EXPECT_EQ(file.GetBytes(), "Content");
    EXPECT_EQ(bytes, "content");
}

TEST(ByteArrayCZipMemFileTest, WritesIntoTheMemoryThatResizeGave)
{
    ByteArrayCZipMemFile file;
    char *memory = file.resize(7);
    std::memcpy(memory, "content", 7);
    EXPECT_EQ(file.GetBytes(), "content");
    file.Seek(3);
    file.Write("roll", 4);
    EXPECT_EQ(std::string(memory, 7), "conroll");
    EXPECT_EQ(file.GetBytes().data(), memory);
}

TEST(ByteArrayCZipMemFileTest, GrowsBeyondTheByteArray)
{
    ByteArrayCZipMemFile file;
    std::memcpy(file.resize(3), "abc", 3);
    file.Seek(3);
    file.Write("def", 3);
    EXPECT_EQ(file.GetBytes(), "abcdef");
    EXPECT_EQ(file.GetLength(), 6U);
}

TEST(ByteArrayCZipMemFileTest, ResizeDropsTheOldContentAndTheEmptyFileIsEmpty)
{
    ByteArrayCZipMemFile file(QByteArray("content"));
    file.Seek(4);
    file.resize(0);
    EXPECT_EQ(file.GetLength(), 0U);
    EXPECT_EQ(file.GetPosition(), 0U);
    char buffer[4];
    EXPECT_EQ(file.Read(buffer, sizeof buffer), 0U);
    EXPECT_EQ(ByteArrayCZipMemFile().GetLength(), 0U);
}
