#include "platform/ox/TemporaryFile.h"
#include "platform/utils/FileSystem.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include <stdlib.h>

using Ox::TemporaryFile;
using Varn::FileSystem;

namespace {

// Makes the temporary files of a test in a folder of its own.
class TemporaryFileTest : public testing::Test
{
protected:
    TemporaryFileTest()
    {
        if (const char *const before = ::getenv("TMPDIR"))
            m_before = before;
        ::setenv("TMPDIR", m_folder.path().toUtf8().constData(), 1);
    }
    ~TemporaryFileTest() override
    {
        if (m_before)
            ::setenv("TMPDIR", m_before->c_str(), 1);
        else
            ::unsetenv("TMPDIR");
    }
    std::wstring folder() const { return m_folder.path().toStdWString(); }
    std::size_t count() const { return FileSystem::getFiles(folder(), L"*").size(); }

    QTemporaryDir m_folder;
    std::optional<std::string> m_before;
};

} // namespace

TEST_F(TemporaryFileTest, IsThereWhileTheObjectLives)
{
    std::wstring path;
    {
        const TemporaryFile file(L".3DTool");
        path = file.filePath();
        EXPECT_TRUE(FileSystem::isFile(path));
        EXPECT_EQ(FileSystem::getFolder(path), folder());
        EXPECT_EQ(FileSystem::getExtension(path), L".3DTool");
        EXPECT_EQ(std::filesystem::file_size(FileSystem::toPath(path)), 0U);
    }
    EXPECT_FALSE(FileSystem::exists(path));
}

TEST_F(TemporaryFileTest, OnlyItsUserMayOpenIt)
{
    const TemporaryFile file;
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(FileSystem::toPath(file.filePath())).permissions(),
              perms::owner_read | perms::owner_write);
}

TEST_F(TemporaryFileTest, EveryOneHasAnotherName)
{
    std::vector<TemporaryFile> files(50);
    std::set<std::wstring> paths;
    for (const TemporaryFile &file : files)
        paths.insert(file.filePath());
    EXPECT_EQ(paths.size(), files.size());
    EXPECT_EQ(count(), files.size());
    files.clear();
    EXPECT_EQ(count(), 0U);
}

TEST_F(TemporaryFileTest, TheExtensionMayHoldAnyCharacterButASlash)
{
    const TemporaryFile file(L".\u5de5 XXXXXX");
    EXPECT_EQ(FileSystem::getExtension(file.filePath()), L".\u5de5 XXXXXX");
    EXPECT_TRUE(FileSystem::isFile(file.filePath()));
    EXPECT_THROW(TemporaryFile(L"/../x"), std::filesystem::filesystem_error);
    EXPECT_EQ(count(), 1U);
}

TEST_F(TemporaryFileTest, AReleasedOneStays)
{
    std::wstring path;
    {
        TemporaryFile file(L".json");
        const std::wstring before = file.filePath();
        path = file.release();
        EXPECT_EQ(path, before);
        EXPECT_EQ(file.filePath(), L"");
        EXPECT_EQ(file.release(), L"");
    }
    EXPECT_TRUE(FileSystem::isFile(path));
}

TEST_F(TemporaryFileTest, MovesWithItsOwner)
{
    TemporaryFile first;
    const std::wstring path = first.filePath();
    {
        TemporaryFile second(std::move(first));
        EXPECT_EQ(second.filePath(), path);
        TemporaryFile third;
        const std::wstring gone = third.filePath();
        third = std::move(second);
        EXPECT_FALSE(FileSystem::exists(gone));
        EXPECT_EQ(third.filePath(), path);
        EXPECT_TRUE(FileSystem::exists(path));
    }
    EXPECT_FALSE(FileSystem::exists(path));
}

TEST_F(TemporaryFileTest, OneThatIsGoneAlreadyIsFine)
{
    const TemporaryFile file;
    EXPECT_FALSE(FileSystem::remove(file.filePath()));
}

TEST_F(TemporaryFileTest, ThrowsWhenItCannotBeCreated)
{
    const std::wstring long255(255, L'a');
    EXPECT_THROW(TemporaryFile{long255}, std::filesystem::filesystem_error);
}
