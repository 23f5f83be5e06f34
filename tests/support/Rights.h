// Rights.h -- what keeps a process from writing: missing rights, a full disk.
#pragma once

#include <QString>

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TestSupport {

/// Takes the rights of an administrator away while it lives: nothing is read-only for one. Whoever runs as one owns
/// \a files as nobody would.
class AsNobody
{
public:
    explicit AsNobody(const std::vector<QString> &files = {}) : m_user(geteuid())
    {
        if (m_user != 0)
            return;
        for (const QString &file : files)
            EXPECT_EQ(chown(file.toStdString().c_str(), nobody, nobody), 0);
        EXPECT_EQ(seteuid(nobody), 0);
    }
    ~AsNobody() { EXPECT_EQ(seteuid(m_user), 0); }
    AsNobody(const AsNobody &) = delete;
    AsNobody &operator=(const AsNobody &) = delete;

private:
    static constexpr uid_t nobody = 65534;
    uid_t m_user;
};

/// No file of this process gets longer than \a bytes while it lives, as if the disk were full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &m_limit), 0);
        const rlimit small{bytes, m_limit.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    ~FullDisk()
    {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &m_limit), 0);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_limit{};
    void (*m_handler)(int);
};

inline void makeReadOnly(const QString &path)
{
    EXPECT_EQ(chmod(path.toStdString().c_str(), 0444), 0);
}

inline void letEveryoneIn(const std::vector<QString> &folders)
{
    for (const QString &folder : folders)
        EXPECT_EQ(chmod(folder.toStdString().c_str(), 0777), 0);
}

} // namespace TestSupport
