#include "platform/utils/FileInputStream.h"
#include "support/Asserts.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <array>
#include <fstream>

#include <sys/stat.h>

using namespace std::string_literals;
using testing::ElementsAre;
using Varn::FileInputStream;
using Varn::FileSystem;

namespace {

class FileInputStreamTest : public testing::Test
{
protected:
    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }
    std::wstring write(std::wstring_view name, std::string_view content) const
    {
        std::ofstream(FileSystem::toPath(at(name)), std::ios::binary) << content;
        return at(name);
    }

    QTemporaryDir m_folder;
};

std::string asText(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

} // namespace

TEST_F(FileInputStreamTest, ReadsTheBytesAsTheyAre)
{
    const std::string content = "a\r\nb\0c\x1A\xFF"s;
    FileInputStream stream(write(L"\u5de5\u5177 new\nline", content));
    ASSERT_TRUE(stream.isOpen());
    EXPECT_EQ(stream.size(), content.size());
    EXPECT_EQ(stream.readAll(), content);
    EXPECT_EQ(stream.readAll(), "") << "at the end there is nothing left";
}

TEST_F(FileInputStreamTest, ReadsPieceByPieceToTheEnd)
{
    FileInputStream stream(write(L"file", "abcdefgh"));
    std::array<std::byte, 3> buffer;
    std::string pieces;
    for (const std::size_t expected : {3, 3, 2, 0, 0}) {
        const auto count = stream.read(buffer);
        ASSERT_EQ(count, expected);
        pieces += asText(std::span(buffer).first(*count)) + "|";
    }
    EXPECT_EQ(pieces, "abc|def|gh|||");
    EXPECT_EQ(stream.read({}), 0U);
}

TEST_F(FileInputStreamTest, ALargeFileComesWhole)
{
    std::string content(1'000'000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * i % 251);
    const std::wstring path = write(L"large", content);
    EXPECT_EQ(FileInputStream(path).readAll(), content);
    EXPECT_EQ(FileInputStream(path).readAll(content.size()), content);
    EXPECT_EQ(FileInputStream(path).readAll(content.size() - 1), std::nullopt);
}

TEST_F(FileInputStreamTest, AnEmptyFileIsOpenAndEmpty)
{
    FileInputStream stream(write(L"empty", ""));
    EXPECT_TRUE(stream.isOpen());
    EXPECT_EQ(stream.size(), 0U);
    EXPECT_EQ(stream.readAll(0), "");
}

TEST_F(FileInputStreamTest, WhatIsNoRegularFileDoesNotOpen)
{
    ASSERT_EQ(::mkfifo(FileSystem::toPath(at(L"pipe")).c_str(), 0600), 0);
    for (const std::wstring &path : {at(L"missing"), at(L""), at(L"pipe"), L"/dev/zero"s, L""s}) {
        FileInputStream stream(path);
        std::array<std::byte, 3> buffer;
        EXPECT_FALSE(stream.isOpen()) << FileSystem::toPath(path);
        EXPECT_EQ(stream.read(buffer), std::nullopt) << FileSystem::toPath(path);
        EXPECT_EQ(stream.readAll(), std::nullopt) << FileSystem::toPath(path);
        EXPECT_EQ(stream.size(), std::nullopt) << FileSystem::toPath(path);
        stream.close();
    }
}

TEST_F(FileInputStreamTest, AClosedStreamGivesNothing)
{
    FileInputStream stream(write(L"file", "abc"));
    stream.close();
    EXPECT_FALSE(stream.isOpen());
    EXPECT_EQ(stream.readAll(), std::nullopt);
    EXPECT_EQ(stream.size(), std::nullopt);
}

TEST_F(FileInputStreamTest, AStreamCanBeHandedOn)
{
    FileInputStream first(write(L"file", "abc"));
    FileInputStream second(std::move(first));
    EXPECT_EQ(second.readAll(), "abc");
}

TEST_F(FileInputStreamTest, OnlyTheFlagsForReadingOpenAStream)
{
    const std::wstring path = write(L"file", "abc");
    EXPECT_TRUE(FileInputStream(path, 80).isOpen());
    EXPECT_FALSE(FileInputStream(path, 65).isOpen());

    const TestSupport::Asserts asserts;
    EXPECT_FALSE(FileInputStream(path, 65).isOpen());
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:flags == readBinary"));
}
