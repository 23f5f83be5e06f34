#include "platform/zip/DeflatedFile.h"
#include "ZipTestSupport.h"
#include "platform/zip/ZipLimits.h"

#include <gmock/gmock.h>

#include <random>
#include <system_error>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;
using testing::Pair;
using Cause = CZipException::Cause;

namespace {

constexpr std::size_t chunk = DeflatedFile::chunkSize;

std::unique_ptr<DeflatedFile> deflated(std::string_view content, std::size_t block = 65536)
{
    auto file = std::make_unique<DeflatedFile>();
    for (; content.size() > block; content.remove_prefix(block))
        file->Append(content.substr(0, block));
    file->Append(content);
    file->Finish();
    return file;
}

std::string archiveOf(std::unique_ptr<DeflatedFile> file)
{
    CZipMemFile image;
    CZipArchive archive;
    EXPECT_TRUE(archive.Open(image, CZipArchive::Create));
    archive.AddDeflatedFile(std::move(file), L"tools.json");
    archive.Close();
    return std::string(image.GetBytes());
}

/// Text that repeats itself now and then, as libraries do.
std::string textOf(std::size_t size)
{
    std::mt19937 random(7);
    std::string text;
    while (text.size() < size)
        text += "    \"number\": " + std::to_string(random() % 1000) + ",\n";
    text.resize(size);
    return text;
}

/// Bytes that nothing makes smaller.
std::string noiseOf(std::size_t size)
{
    std::mt19937 random(7);
    std::string noise(size, '\0');
    for (char &byte : noise)
        byte = static_cast<char>(random());
    return noise;
}

} // namespace

TEST(DeflatedFile, EverySizeComesBack)
{
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{32768}, chunk - 1, chunk, chunk + 1,
                                   2 * chunk, 7 * chunk + 12345})
        for (const std::string &content : {textOf(size), noiseOf(size)}) {
            auto file = deflated(content);
            EXPECT_EQ(file->GetContentSize(), size);
            const auto entries = entriesOf(archiveOf(std::move(file)));
            ASSERT_TRUE(entries) << size;
            EXPECT_TRUE(*entries == (Entries{{L"tools.json", content}})) << size;
        }
}

TEST(DeflatedFile, IsAboutAsSmallAsInOnePiece)
{
    const std::string content = textOf(10 * chunk);
    const std::size_t whole = zipOf({{L"tools.json", content}}).size();
    EXPECT_LT(archiveOf(deflated(content)).size(), whole + whole / 50);
}

TEST(DeflatedFile, TheBytesDoNotDependOnHowTheContentComes)
{
    const std::string content = textOf(2 * chunk + 77);
    const std::string once(deflated(content, content.size())->GetBytes());
    for (const std::size_t block : {std::size_t{1000}, chunk - 1, chunk, chunk + 1})
        EXPECT_TRUE(deflated(content, block)->GetBytes() == once) << block;
}

TEST(DeflatedFile, ItsHeaderSaysWhatIsInIt)
{
    const std::string content = textOf(3 * chunk);
    Image image(archiveOf(deflated(content)));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Existing));
    EXPECT_EQ(archive.GetFileInfo(0)->GetUncompressedSize(), content.size());
    EXPECT_LT(archive.GetFileInfo(0)->GetCompressedSize(), content.size() / 3);
    add(archive, L"other", "1");
    archive.Close();
    EXPECT_TRUE(entriesOf(std::string(image.GetBytes())) == (Entries{{L"tools.json", content}, {L"other", "1"}}));
}

TEST(DeflatedFile, OnlyAFinishedContentIsAdded)
{
    CZipMemFile image;
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(image, CZipArchive::Create));
    auto open = std::make_unique<DeflatedFile>();
    open->Append("x");
    EXPECT_EQ(causeOf([&] { archive.AddDeflatedFile(std::move(open), L"a"); }), Cause::NotAllowed);
    EXPECT_EQ(causeOf([&] { archive.AddDeflatedFile(deflated("x"), L"../a"); }), Cause::BadName);
    EXPECT_EQ(causeOf([&] { archive.AddDeflatedFile(deflated("x"), L"folder/"); }), Cause::BadName);
    archive.AddDeflatedFile(deflated("x"), L"a");
    EXPECT_EQ(causeOf([&] { archive.AddDeflatedFile(deflated("y"), L"a"); }), Cause::NameTaken);
    EXPECT_EQ(archive.GetCount(), 1);
    archive.Close();
    EXPECT_EQ(entriesOf(std::string(image.GetBytes())), (Entries{{L"a", "x"}}));
    EXPECT_EQ(causeOf([&] { archive.AddDeflatedFile(deflated("x"), L"b"); }), Cause::NotAllowed) << "closed";
}

TEST(DeflatedFile, WithoutAThreadToBeHadTheBytesAreTheSame)
{
    const std::string content = textOf(5 * chunk);
    const std::string expected = archiveOf(deflated(content));
    const pid_t child = fork();
    if (child == 0) {
        const rlimit none{0, 0};
        const bool alone = setrlimit(RLIMIT_NPROC, &none) == 0 && (geteuid() != 0 || setuid(65534) == 0);
        try {
            std::thread([] {}).join();
            _exit(2); // not alone
        } catch (const std::system_error &) {
        }
        try {
            _exit(alone && archiveOf(deflated(content)) == expected ? 0 : 1);
        } catch (...) {
            _exit(3);
        }
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(DeflatedFile, NothingFollowsTheEnd)
{
    DeflatedFile file;
    file.Append("x");
    file.Finish();
    const std::string bytes(file.GetBytes());
    file.Finish();
    EXPECT_EQ(causeOf([&] { file.Append("y"); }), Cause::NotAllowed);
    EXPECT_EQ(file.GetBytes(), bytes);
    EXPECT_EQ(file.GetContentSize(), 1u);
}

TEST(DeflatedFile, WhatIsNotFinishedGoesWithoutATrace)
{
    for (int i = 0; i < 20; ++i) {
        DeflatedFile file;
        file.Append(textOf(3 * chunk)); // some of it is on its way when the file dies
    }
}

TEST(DeflatedFile, ItHasTheLimitOfAnEntry)
{
    const char byte = 'x';
    DeflatedFile file;
    // No byte of what is too much is looked at.
    EXPECT_EQ(causeOf([&] { file.Append({&byte, ZipLimits::mostBytes + 1}); }), Cause::TooLarge);
    file.Append("x");
    EXPECT_EQ(causeOf([&] { file.Append({&byte, ZipLimits::mostBytes}); }), Cause::TooLarge);
    EXPECT_EQ(file.GetContentSize(), 1u);
    file.Append("y");
    file.Finish();
    EXPECT_EQ(file.GetContentSize(), 2u);
}
