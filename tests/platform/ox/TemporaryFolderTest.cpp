#include "platform/ox/TemporaryFolder.h"
#include "platform/utils/FileOutputStream.h"
#include "platform/utils/FileSystem.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include <stdlib.h>

using Ox::TemporaryFolder;
using Varn::FileOutputStream;
using Varn::FileSystem;

namespace {

// Makes the temporary folders of a test in a folder of its own.
class TemporaryFolderTest : public testing::Test
{
protected:
    TemporaryFolderTest()
    {
        if (const char *const before = ::getenv("TMPDIR"))
            m_before = before;
        setTmpDir(m_folder.path().toStdString());
    }
    ~TemporaryFolderTest() override
    {
        if (m_before)
            setTmpDir(*m_before);
        else
            ::unsetenv("TMPDIR");
    }
    static void setTmpDir(const std::string &path) { ::setenv("TMPDIR", path.c_str(), 1); }
    std::wstring folder() const { return m_folder.path().toStdWString(); }

    QTemporaryDir m_folder;
    std::optional<std::string> m_before;
};

} // namespace

TEST_F(TemporaryFolderTest, IsThereAndEmptyWhileTheObjectLives)
{
    std::wstring path;
    {
        const TemporaryFolder temporary(L"", true, true);
        path = temporary.folderPath();
        EXPECT_TRUE(FileSystem::isDirectory(path));
        EXPECT_TRUE(std::filesystem::is_empty(FileSystem::toPath(path)));
        EXPECT_EQ(FileSystem::getFolder(path), folder());
    }
    EXPECT_FALSE(FileSystem::exists(path));
}

TEST_F(TemporaryFolderTest, OnlyItsUserMayEnter)
{
    const TemporaryFolder temporary(L"", true, true);
    EXPECT_EQ(std::filesystem::status(FileSystem::toPath(temporary.folderPath())).permissions(),
              std::filesystem::perms::owner_all);
}

TEST_F(TemporaryFolderTest, GoesWithAllThatIsInItButFollowsNoLink)
{
    const std::wstring kept = FileSystem::combine(folder(), L"kept");
    ASSERT_TRUE(FileOutputStream(kept).isOpen());
    std::wstring path;
    {
        const TemporaryFolder temporary(L"", true, true);
        path = temporary.folderPath();
        ASSERT_FALSE(FileSystem::createFolders(FileSystem::combine(path, L"a/b \u5de5")));
        ASSERT_TRUE(FileOutputStream(FileSystem::combine(path, L"a/b \u5de5/file")).isOpen());
        const std::wstring noUtf8 = {L'a', L'/', static_cast<wchar_t>(0xDCFF)};
        ASSERT_TRUE(FileOutputStream(FileSystem::combine(path, noUtf8)).isOpen());
        std::filesystem::create_symlink(FileSystem::toPath(kept), FileSystem::toPath(path + L"/link"));
        std::filesystem::create_directory_symlink(FileSystem::toPath(folder()), FileSystem::toPath(path + L"/up"));
    }
    EXPECT_FALSE(FileSystem::exists(path));
    EXPECT_TRUE(FileSystem::isFile(kept));
}

TEST_F(TemporaryFolderTest, TwoOfOneNameAreTwoFolders)
{
    const TemporaryFolder first(L"gtc", true, true);
    const TemporaryFolder second(L"gtc", true, true);
    EXPECT_NE(first.folderPath(), second.folderPath());
    for (const TemporaryFolder *const temporary : {&first, &second}) {
        EXPECT_TRUE(FileSystem::isDirectory(temporary->folderPath()));
        EXPECT_TRUE(FileSystem::getFileName(temporary->folderPath()).starts_with(L"gtc-"));
    }
}

TEST_F(TemporaryFolderTest, WithoutCreateThePathIsOnlyChosen)
{
    std::wstring path;
    {
        const TemporaryFolder temporary(L"later", false, true);
        path = temporary.folderPath();
        EXPECT_FALSE(FileSystem::exists(path));
        ASSERT_FALSE(FileSystem::createFolders(FileSystem::combine(path, L"sub")));
    }
    EXPECT_FALSE(FileSystem::exists(path));
    const TemporaryFolder neverMade(L"", false, true);
}

TEST_F(TemporaryFolderTest, WithoutRemoveAtEndItStays)
{
    std::wstring path;
    {
        const TemporaryFolder temporary(L"", true, false);
        path = temporary.folderPath();
    }
    EXPECT_TRUE(FileSystem::isDirectory(path));
}

TEST_F(TemporaryFolderTest, MovesWithItsOwner)
{
    TemporaryFolder first(L"", true, true);
    const std::wstring path = first.folderPath();
    {
        TemporaryFolder second(std::move(first));
        EXPECT_EQ(second.folderPath(), path);
        TemporaryFolder third(L"", true, true);
        const std::wstring gone = third.folderPath();
        third = std::move(second);
        EXPECT_FALSE(FileSystem::exists(gone));
        EXPECT_EQ(third.folderPath(), path);
        EXPECT_TRUE(FileSystem::isDirectory(path));
    }
    EXPECT_FALSE(FileSystem::exists(path));
    EXPECT_EQ(first.folderPath(), L"");
}

TEST_F(TemporaryFolderTest, ANameCannotLeadElsewhere)
{
    EXPECT_THROW(TemporaryFolder(L"../x", true, true), std::filesystem::filesystem_error);
    EXPECT_THROW(TemporaryFolder(L"/x", false, true), std::filesystem::filesystem_error);
    EXPECT_THROW(TemporaryFolder(std::wstring(255, L'a'), true, true), std::filesystem::filesystem_error);
    const TemporaryFolder dots(L"..", true, true);
    EXPECT_EQ(FileSystem::getFolder(dots.folderPath()), folder());
}

TEST_F(TemporaryFolderTest, TheFolderOfTheSystemIsAnAbsolutePathThatExists)
{
    EXPECT_EQ(TemporaryFolder::systemFolder(), folder());
    setTmpDir(m_folder.path().toStdString() + "//");
    EXPECT_EQ(TemporaryFolder::systemFolder(), folder());
    setTmpDir(m_folder.path().toStdString() + "/missing");
    EXPECT_EQ(TemporaryFolder::systemFolder(), L"/tmp");
    setTmpDir(".");
    EXPECT_TRUE(TemporaryFolder::systemFolder().starts_with(L"/"));
}
