#include "platform/utils/FileOutputStream.h"
#include "platform/utils/FileInputStream.h"
#include "support/Asserts.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <array>

#include <sys/stat.h>

using namespace std::string_literals;
using testing::ElementsAre;
using Varn::FileInputStream;
using Varn::FileOutputStream;
using Varn::FileSystem;

namespace {

class FileOutputStreamTest : public testing::Test
{
protected:
    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }
    static std::optional<std::string> read(const std::wstring &path) { return FileInputStream(path).readAll(); }

    QTemporaryDir m_folder;
};

// A device on which every write fails for want of room, as on a full disk.
const std::wstring fullDisk = L"/dev/full";

} // namespace

TEST_F(FileOutputStreamTest, WritesTheBytesAsTheyAre)
{
    const std::wstring path = at(L"\u5de5\u5177 new\nline");
    FileOutputStream stream(path);
    ASSERT_TRUE(stream.isOpen());
    EXPECT_TRUE(stream.write("a\r\nb\0c"s));
    const std::array bytes = {std::byte{0x1A}, std::byte{0xFF}};
    EXPECT_TRUE(stream.write(bytes));
    EXPECT_TRUE(stream.write(""));
    EXPECT_EQ(stream.size(), 8U);
    EXPECT_TRUE(stream.close());
    EXPECT_EQ(read(path), "a\r\nb\0c\x1A\xFF"s);
}

TEST_F(FileOutputStreamTest, AFlushMakesTheBytesVisibleToOthers)
{
    FileOutputStream stream(at(L"file"));
    EXPECT_TRUE(stream.write("abc"));
    EXPECT_EQ(read(at(L"file")), "");
    EXPECT_TRUE(stream.flush());
    EXPECT_EQ(read(at(L"file")), "abc");
}

TEST_F(FileOutputStreamTest, DeathWritesWhatIsBuffered)
{
    {
        FileOutputStream stream(at(L"file"));
        EXPECT_TRUE(stream.write("abc"));
    }
    EXPECT_EQ(read(at(L"file")), "abc");
}

TEST_F(FileOutputStreamTest, AFileThatExistsIsEmptiedFirst)
{
    EXPECT_TRUE(FileOutputStream(at(L"file")).write("old and longer"));
    EXPECT_TRUE(FileOutputStream(at(L"file")).write("new"));
    EXPECT_EQ(read(at(L"file")), "new");
    EXPECT_TRUE(FileOutputStream(at(L"file")).isOpen());
    EXPECT_EQ(read(at(L"file")), "");
}

TEST_F(FileOutputStreamTest, ClosingReportsAFlushThatFailed)
{
    FileOutputStream stream(fullDisk);
    ASSERT_TRUE(stream.isOpen());
    EXPECT_TRUE(stream.write("fits into the buffer"));
    EXPECT_FALSE(stream.close());
    EXPECT_FALSE(stream.isOpen());
}

TEST_F(FileOutputStreamTest, AFailureStays)
{
    FileOutputStream stream(fullDisk);
    EXPECT_TRUE(stream.write("fits into the buffer"));
    EXPECT_FALSE(stream.flush());
    EXPECT_FALSE(stream.write("more"));
    EXPECT_FALSE(stream.flush());
    EXPECT_FALSE(stream.close());
}

TEST_F(FileOutputStreamTest, AWriteBeyondTheBufferFailsAtOnce)
{
    FileOutputStream stream(fullDisk);
    EXPECT_FALSE(stream.write(std::string(1'000'000, 'x')));
    EXPECT_FALSE(stream.close());
}

TEST_F(FileOutputStreamTest, WhatCannotBeWrittenDoesNotOpen)
{
    ASSERT_EQ(::mkfifo(FileSystem::toPath(at(L"pipe")).c_str(), 0600), 0);
    for (const std::wstring &path : {at(L""), at(L"missing/file"), at(L"pipe"), L""s}) {
        FileOutputStream stream(path);
        EXPECT_FALSE(stream.isOpen()) << FileSystem::toPath(path);
        EXPECT_FALSE(stream.write("abc")) << FileSystem::toPath(path);
        EXPECT_FALSE(stream.flush()) << FileSystem::toPath(path);
        EXPECT_FALSE(stream.close()) << FileSystem::toPath(path);
        EXPECT_EQ(stream.size(), std::nullopt) << FileSystem::toPath(path);
    }
}

TEST_F(FileOutputStreamTest, AStreamClosesOnce)
{
    FileOutputStream stream(at(L"file"));
    EXPECT_TRUE(stream.close());
    EXPECT_FALSE(stream.close());
    EXPECT_FALSE(stream.write("late"));
    EXPECT_EQ(read(at(L"file")), "");
}

TEST_F(FileOutputStreamTest, AStreamCanBeHandedOn)
{
    FileOutputStream first(at(L"file"));
    EXPECT_TRUE(first.write("a"));
    FileOutputStream second(std::move(first));
    EXPECT_TRUE(second.write("b"));
    EXPECT_EQ(second.size(), 2U);
    EXPECT_TRUE(second.close());
    EXPECT_EQ(read(at(L"file")), "ab");
}

TEST_F(FileOutputStreamTest, OnlyTheFlagsForWritingOpenAStream)
{
    EXPECT_TRUE(FileOutputStream(at(L"file"), 65).isOpen());
    EXPECT_FALSE(FileOutputStream(at(L"other"), 80).isOpen());
    EXPECT_FALSE(FileSystem::exists(at(L"other")));

    const TestSupport::Asserts asserts;
    EXPECT_FALSE(FileOutputStream(at(L"other"), 80).isOpen());
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:flags == writeBinary"));
}
