#include "platform/utils/FileReplacement.h"
#include "support/Rights.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <thread>

#include <grp.h>

using TestSupport::AsNobody;
using Varn::FileReplacement;

namespace {

class FileReplacementRightsTest : public testing::Test
{
protected:
    FileReplacementRightsTest() { TestSupport::letEveryoneIn({m_folder.path()}); }

    std::string at(const char *name) const { return m_folder.filePath(name).toStdString(); }

    void make(const char *name, mode_t mode, gid_t group = gid_t(-1)) const
    {
        std::ofstream(at(name)) << "old";
        ASSERT_EQ(chmod(at(name).c_str(), mode), 0);
        ASSERT_EQ(chown(at(name).c_str(), uid_t(-1), group), 0);
    }

    bool replace(const char *name) const
    {
        FileReplacement file(m_folder.filePath(name).toStdWString());
        return file.write("new") && file.commit();
    }

    struct stat statusOf(const std::string &path) const
    {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status;
    }

    QTemporaryDir m_folder;
};

/// The groups of this process while it lives; only an administrator may change them.
class Groups
{
public:
    explicit Groups(gid_t only) : m_before(static_cast<std::size_t>(getgroups(0, nullptr)))
    {
        EXPECT_EQ(getgroups(static_cast<int>(m_before.size()), m_before.data()), m_before.size());
        EXPECT_EQ(setgroups(1, &only), 0);
    }
    ~Groups() { EXPECT_EQ(setgroups(m_before.size(), m_before.data()), 0); }
    Groups(const Groups &) = delete;
    Groups &operator=(const Groups &) = delete;

private:
    std::vector<gid_t> m_before;
};

} // namespace

TEST_F(FileReplacementRightsTest, AGroupStaysForAWriterWhoIsInIt)
{
    constexpr gid_t joined = 54321;
    const bool administrator = geteuid() == 0;
    make("a.json", 0664, administrator ? joined : getegid());
    const gid_t group = statusOf(at("a.json")).st_gid;
    if (administrator) {
        const Groups groups(joined);
        const AsNobody nobody;
        EXPECT_TRUE(replace("a.json"));
    } else {
        EXPECT_TRUE(replace("a.json"));
    }
    EXPECT_EQ(statusOf(at("a.json")).st_gid, group);
    EXPECT_EQ(statusOf(at("a.json")).st_mode & 07777, 0664U);
}

TEST_F(FileReplacementRightsTest, AnotherGroupGetsNoMoreThanTheWorld)
{
    const bool administrator = geteuid() == 0;
    make("a.json", 0656, administrator ? 54322 : getegid());
    if (administrator) {
        const AsNobody nobody; // who is not in the group of the file
        EXPECT_TRUE(replace("a.json"));
    }
    EXPECT_EQ(statusOf(at("a.json")).st_mode & 07777, administrator ? 0646U : 0656U);
}

TEST_F(FileReplacementRightsTest, NobodyElseCanOpenAPrivateFileWhileItIsMade)
{
    make("a.json", 0600);
    std::atomic<bool> done{false};
    std::atomic<int> open{0};
    std::thread observer([&] {
        const QDir folder(m_folder.path());
        while (!done)
            for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden)) {
                struct stat status = {};
                if (stat(at(qPrintable(name)).c_str(), &status) == 0)
                    open += (status.st_mode & 077) != 0;
            }
    });
    for (int i = 0; i < 3000; ++i)
        const FileReplacement file(m_folder.filePath("a.json").toStdWString());
    done = true;
    observer.join();
    EXPECT_EQ(open, 0);
}
