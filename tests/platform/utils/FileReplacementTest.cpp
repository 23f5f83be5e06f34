#include "platform/utils/FileReplacement.h"
#include "support/Rights.h"

#include "platform/utils/FileSystem.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::string_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::AsNobody;
using TestSupport::FullDisk;
using Varn::FileReplacement;
using Varn::FileSystem;
namespace fs = std::filesystem;

namespace {

class FileReplacementTest : public testing::Test
{
protected:
    FileReplacementTest() { chmod(m_folder.path().toStdString().c_str(), 0777); }

    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }
    fs::path path(std::wstring_view name) const { return FileSystem::toPath(at(name)); }

    void make(std::wstring_view name, const std::string &content, mode_t mode = 0644) const
    {
        std::ofstream(path(name), std::ios::binary) << content;
        ASSERT_EQ(chmod(path(name).c_str(), mode), 0);
    }

    std::string content(std::wstring_view name) const
    {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    mode_t modeOf(std::wstring_view name) const
    {
        struct stat status = {};
        EXPECT_EQ(stat(path(name).c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    /// The names in the folder, those of what is being written among them.
    std::set<std::string> names() const
    {
        std::set<std::string> all;
        for (const auto &entry : fs::directory_iterator(m_folder.path().toStdString()))
            all.insert(entry.path().filename().string());
        return all;
    }

    bool replace(std::wstring_view name, std::string_view bytes) const
    {
        FileReplacement file(at(name));
        return file.isOpen() && file.write(bytes) && file.commit();
    }

    /// What lies in the folder beside \a name while it is being replaced: one name.
    std::string besideName(std::wstring_view name) const
    {
        const std::set<std::string> before = names();
        const FileReplacement file(at(name));
        for (const std::string &now : names())
            if (!before.contains(now))
                return now;
        return {};
    }

    QTemporaryDir m_folder;
};

/// \a beside with another process in the place of the one that it names.
std::string ofProcess(std::string beside, pid_t process)
{
    const std::string own = '-' + std::to_string(getpid()) + '-';
    const std::size_t place = beside.find(own);
    EXPECT_NE(place, std::string::npos) << beside;
    return beside.replace(place, own.size(), '-' + std::to_string(process) + '-');
}

/// A process that has ended and been waited for.
pid_t deadProcess()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
    return child;
}

} // namespace

TEST_F(FileReplacementTest, WritesANewFile)
{
    EXPECT_TRUE(replace(L"new.json", "a\r\n\0b"s));
    EXPECT_EQ(content(L"new.json"), "a\r\n\0b"s);
    EXPECT_TRUE(replace(L"empty.json", ""));
    EXPECT_EQ(content(L"empty.json"), "");
    EXPECT_THAT(names(), ElementsAre("empty.json", "new.json"));
}

TEST_F(FileReplacementTest, TheOldFileIsThereUntilTheCommit)
{
    make(L"a.json", "old");
    FileReplacement file(at(L"a.json"));
    ASSERT_TRUE(file.isOpen());
    EXPECT_TRUE(file.write("ne"));
    EXPECT_TRUE(file.write(""));
    EXPECT_TRUE(file.write("w"));
    EXPECT_EQ(content(L"a.json"), "old");
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(content(L"a.json"), "new");
    EXPECT_THAT(names(), ElementsAre("a.json"));
}

TEST_F(FileReplacementTest, WithoutACommitNothingChangesAndNothingStays)
{
    make(L"a.json", "old");
    {
        FileReplacement old(at(L"a.json"));
        EXPECT_TRUE(old.write("new"));
        FileReplacement fresh(at(L"b.json"));
        EXPECT_TRUE(fresh.write("new"));
        EXPECT_THAT(names(), SizeIs(3));
    }
    EXPECT_EQ(content(L"a.json"), "old");
    EXPECT_THAT(names(), ElementsAre("a.json"));
}

TEST_F(FileReplacementTest, ACommitIsDoneOnce)
{
    FileReplacement file(at(L"a.json"));
    EXPECT_TRUE(file.write("x"));
    EXPECT_TRUE(file.commit());
    EXPECT_FALSE(file.isOpen());
    EXPECT_FALSE(file.commit());
    EXPECT_FALSE(file.write("y"));
    EXPECT_EQ(content(L"a.json"), "x");
}

TEST_F(FileReplacementTest, WhatIsBesideTheFileIsNoLibrary)
{
    make(L"a.json", "old");
    for (const wchar_t *name : {L"a.json", L"new.tools"}) {
        const std::string beside = besideName(name);
        EXPECT_TRUE(beside.starts_with(".")) << beside;
        EXPECT_EQ(fs::path(beside).extension(), ".part");
    }
    EXPECT_NE(besideName(L"a.json"), besideName(L"a.json")) << "a name of its own each time";
}

TEST_F(FileReplacementTest, AReaderKeepsTheFileThatItOpened)
{
    make(L"a.json", "old");
    std::ifstream reader(path(L"a.json"));
    EXPECT_TRUE(replace(L"a.json", "new and longer"));
    std::string text;
    reader >> text;
    EXPECT_EQ(text, "old");
}

TEST_F(FileReplacementTest, PermissionsAndOwnerStay)
{
    for (const mode_t mode : {0600, 0640, 0644, 0664, 0755, 0200}) {
        make(L"a.json", "old", mode);
        if (geteuid() == 0) {
            ASSERT_EQ(chown(path(L"a.json").c_str(), 65534, 65534), 0);
        }
        EXPECT_TRUE(replace(L"a.json", "new"));
        EXPECT_EQ(modeOf(L"a.json"), mode);
        struct stat status = {};
        ASSERT_EQ(stat(path(L"a.json").c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, geteuid() == 0 ? 65534 : geteuid());
        fs::remove(path(L"a.json"));
    }
}

TEST_F(FileReplacementTest, ANewFileHasThePermissionsOfTheProcess)
{
    const mode_t before = umask(027);
    EXPECT_TRUE(replace(L"a.json", "x"));
    umask(before);
    EXPECT_EQ(modeOf(L"a.json"), 0640U);
}

TEST_F(FileReplacementTest, LinksStayAndTheFileBehindThemIsReplaced)
{
    ASSERT_TRUE(fs::create_directory(path(L"far")));
    make(L"far/real.json", "old");
    fs::create_symlink("real.json", path(L"far/near"));
    fs::create_symlink("far/near", path(L"relative"));
    fs::create_symlink(path(L"relative"), path(L"absolute"));
    fs::create_directory_symlink("far", path(L"folder"));
    for (const wchar_t *name : {L"far/near", L"relative", L"absolute", L"folder/near", L"folder/real.json"}) {
        const std::string text = path(name).string();
        EXPECT_TRUE(replace(name, text));
        EXPECT_EQ(content(L"far/real.json"), text);
    }
    for (const wchar_t *name : {L"far/near", L"relative", L"absolute", L"folder"})
        EXPECT_TRUE(fs::is_symlink(path(name))) << path(name);
    EXPECT_FALSE(fs::is_symlink(path(L"far/real.json")));
    EXPECT_THAT(names(), ElementsAre("absolute", "far", "folder", "relative"));
}

TEST_F(FileReplacementTest, ALinkThatLeadsNowhereGetsItsFile)
{
    fs::create_symlink("missing.json", path(L"link"));
    EXPECT_TRUE(replace(L"link", "new"));
    EXPECT_TRUE(fs::is_symlink(path(L"link")));
    EXPECT_EQ(content(L"missing.json"), "new");
    fs::create_symlink("no folder/a.json", path(L"lost"));
    EXPECT_FALSE(FileReplacement(at(L"lost")).isOpen());
    EXPECT_THAT(names(), ElementsAre("link", "lost", "missing.json"));
}

TEST_F(FileReplacementTest, LinksInACircleAreRefused)
{
    fs::create_symlink("b", path(L"a"));
    fs::create_symlink("a", path(L"b"));
    fs::create_symlink("self", path(L"self"));
    for (const wchar_t *name : {L"a", L"b", L"self"}) {
        EXPECT_FALSE(replace(name, "x")) << path(name);
        EXPECT_FALSE(FileReplacement(at(name)).isOpen()) << path(name);
        EXPECT_TRUE(fs::is_symlink(path(name))) << path(name);
    }
    EXPECT_THAT(names(), ElementsAre("a", "b", "self"));
}

TEST_F(FileReplacementTest, AFileWithSeveralNamesIsWrittenInPlace)
{
    for (const std::string &text : {"new"s, "much longer than the old file"s, ""s}) {
        make(L"a.json", "the old file");
        fs::create_hard_link(path(L"a.json"), path(L"twin.json"));
        EXPECT_TRUE(replace(L"a.json", text));
        EXPECT_EQ(content(L"a.json"), text);
        EXPECT_EQ(content(L"twin.json"), text);
        EXPECT_EQ(fs::hard_link_count(path(L"a.json")), 2U);
        EXPECT_THAT(names(), ElementsAre("a.json", "twin.json"));
        fs::remove(path(L"twin.json"));
    }
}

TEST_F(FileReplacementTest, WhatCannotBeOpenedForWritingIsRefused)
{
    ASSERT_TRUE(fs::create_directory(path(L"folder")));
    ASSERT_EQ(mkfifo(path(L"pipe").c_str(), 0600), 0);
    make(L"plain", "x");
    const std::set<std::string> before = names();
    const std::wstring paths[] = {
        at(L"folder"),
        at(L"pipe"),
        at(L"missing/a"),
        at(L"plain/a"),
        at(L"plain/"),
        at(L"new/"),
        at(L"folder/.."),
        at(L"folder/."),
        at(std::wstring(256, L'n')),
        L"",
        L"/",
        L"/dev/null",
        L"/dev/full",
    };
    for (const std::wstring &wanted : paths) {
        FileReplacement file(wanted);
        EXPECT_FALSE(file.isOpen()) << FileSystem::toPath(wanted);
        EXPECT_FALSE(file.write("x")) << FileSystem::toPath(wanted);
        EXPECT_FALSE(file.commit()) << FileSystem::toPath(wanted);
    }
    EXPECT_EQ(names(), before);
    EXPECT_EQ(content(L"plain"), "x");
}

TEST_F(FileReplacementTest, TheLongestNameIsWritten)
{
    const std::wstring name(255, L'n');
    EXPECT_TRUE(replace(name, "one"));
    EXPECT_TRUE(replace(name, "two"));
    EXPECT_EQ(content(name), "two");
    EXPECT_THAT(names(), SizeIs(1));
}

TEST_F(FileReplacementTest, AReadOnlyFileIsRefused)
{
    make(L"a.json", "old", 0444);
    const AsNobody nobody;
    EXPECT_FALSE(FileReplacement(at(L"a.json")).isOpen());
    EXPECT_FALSE(replace(L"a.json", "new"));
    EXPECT_EQ(content(L"a.json"), "old");
    EXPECT_THAT(names(), ElementsAre("a.json"));
}

TEST_F(FileReplacementTest, InAReadOnlyFolderTheFileIsWrittenInPlace)
{
    make(L"a.json", "the old file", 0666);
    ASSERT_EQ(chmod(m_folder.path().toStdString().c_str(), 0555), 0);
    {
        const AsNobody nobody;
        EXPECT_TRUE(replace(L"a.json", "new"));
        EXPECT_EQ(content(L"a.json"), "new");
        EXPECT_TRUE(replace(L"a.json", "new and longer than before"));
        EXPECT_FALSE(FileReplacement(at(L"b.json")).isOpen());
    }
    EXPECT_EQ(content(L"a.json"), "new and longer than before");
    EXPECT_THAT(names(), ElementsAre("a.json"));
}

TEST_F(FileReplacementTest, InPlaceTheOldFileStaysUntilTheFirstWrite)
{
    make(L"a.json", "old");
    fs::create_hard_link(path(L"a.json"), path(L"twin.json"));
    {
        const FileReplacement file(at(L"a.json"));
        EXPECT_TRUE(file.isOpen());
    }
    EXPECT_EQ(content(L"a.json"), "old");
}

TEST_F(FileReplacementTest, AFullDiskLeavesTheOldFile)
{
    make(L"a.json", "old");
    bool opened = false;
    bool written = true;
    bool again = true;
    bool committed = true;
    {
        const FullDisk disk(1000);
        FileReplacement file(at(L"a.json"));
        opened = file.isOpen();
        written = file.write(std::string(600, 'x')) && file.write(std::string(600, 'y'));
        again = file.write("z");
        committed = file.commit();
    }
    EXPECT_TRUE(opened);
    EXPECT_FALSE(written);
    EXPECT_FALSE(again) << "a failure stays";
    EXPECT_FALSE(committed);
    EXPECT_EQ(content(L"a.json"), "old");
    EXPECT_THAT(names(), ElementsAre("a.json"));
    EXPECT_TRUE(replace(L"a.json", std::string(2000, 'x'))) << "with room again";
}

TEST_F(FileReplacementTest, ATargetThatBecomesAFolderFailsAtTheCommit)
{
    FileReplacement file(at(L"a.json"));
    EXPECT_TRUE(file.write("x"));
    ASSERT_TRUE(fs::create_directory(path(L"a.json")));
    EXPECT_FALSE(file.commit());
    EXPECT_TRUE(fs::is_directory(path(L"a.json")));
}

TEST_F(FileReplacementTest, AFolderThatGoesAwayFailsTheCommit)
{
    ASSERT_TRUE(fs::create_directory(path(L"folder")));
    FileReplacement file(at(L"folder/a.json"));
    EXPECT_TRUE(file.write("x"));
    fs::remove_all(path(L"folder"));
    EXPECT_FALSE(file.commit());
}

TEST_F(FileReplacementTest, LeftoversOfDeadProcessesAreSweptThoseOfOthersStay)
{
    make(L"a.json", "old");
    const std::string own = besideName(L"a.json");
    const std::string other = besideName(L"b.json");
    const pid_t dead = deadProcess();
    const std::string swept[] = {ofProcess(own, dead), ofProcess(own, dead) + ".part"};
    const std::string kept[] = {
        ofProcess(own, 1),                           // a living process
        ofProcess(own, getppid()),                   // another
        ofProcess(other, dead),                      // of another file
        ofProcess(own, dead) + ".json",              // a library, whatever its name
        "x" + ofProcess(own, dead),                  //
        own.substr(0, own.find('-', 9)) + "-.part",  // no process
        own.substr(0, own.find('-', 9)) + "-x.part", //
        own.substr(0, own.find('-', 9)) + "-99999999999999999999.part",
    };
    for (const std::string &name : swept)
        make(FileSystem::fromPath(name), "left");
    for (const std::string &name : kept)
        make(FileSystem::fromPath(name), "left");
    EXPECT_TRUE(replace(L"a.json", "new"));
    std::set<std::string> expected(std::begin(kept), std::end(kept));
    expected.insert("a.json");
    EXPECT_EQ(names(), expected);
}

TEST_F(FileReplacementTest, ALeftoverOfAnEarlierProcessWithTheSameIdIsSwept)
{
    // In a container each start may get the same id.
    make(L"a.json", "old");
    const std::string own = besideName(L"a.json");
    const std::string id = '-' + std::to_string(getpid()) + '-';
    const std::size_t behindId = own.find(id) + id.size();
    for (const char *counter : {"0", "1", "2", "3", "1234567"})
        make(FileSystem::fromPath(own.substr(0, behindId) + counter + ".part"), "left");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(replace(L"a.json", "new"));
        EXPECT_THAT(names(), ElementsAre("a.json"));
    }
}

TEST_F(FileReplacementTest, WhatThisProcessIsWritingIsNotSwept)
{
    make(L"a.json", "old");
    FileReplacement first(at(L"a.json"));
    EXPECT_TRUE(first.write("first"));
    EXPECT_TRUE(replace(L"a.json", "second"));
    EXPECT_EQ(content(L"a.json"), "second");
    EXPECT_TRUE(first.commit());
    EXPECT_EQ(content(L"a.json"), "first") << "the later one stands";
    EXPECT_THAT(names(), ElementsAre("a.json"));
}

TEST_F(FileReplacementTest, WritersInManyThreadsLeaveOneOfTheirTexts)
{
    make(L"a.json", std::string(100'000, 'o'));
    std::vector<int> failures(4);
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < failures.size(); ++i)
            threads.emplace_back([&, i] {
                for (int turn = 0; turn < 10; ++turn)
                    failures[i] += !replace(L"a.json", std::string(100'000, static_cast<char>('a' + i)));
            });
    }
    EXPECT_THAT(failures, Each(0));
    const std::string text = content(L"a.json");
    EXPECT_EQ(text, std::string(100'000, text.empty() ? ' ' : text[0]));
    EXPECT_THAT(names(), ElementsAre("a.json"));
}

TEST_F(FileReplacementTest, AProcessThatIsKilledLeavesTheOldFileOrTheNewOne)
{
    const std::string old(200'000, 'o');
    make(L"a.json", old);
    const std::wstring target = at(L"a.json");
    for (int round = 0; round < 10; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (;;) {
                FileReplacement file(target);
                const std::string half(100'000, 'n');
                if (!file.write(half) || !file.write(half) || !file.commit())
                    _exit(1);
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(3 + 4 * round));
        EXPECT_EQ(kill(child, SIGKILL), 0);
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "the child failed to write";
        const std::string text = content(L"a.json");
        EXPECT_TRUE(text == old || text == std::string(200'000, 'n')) << text.size();
    }
    EXPECT_TRUE(replace(L"a.json", "last"));
    EXPECT_THAT(names(), ElementsAre("a.json")) << "what the dead left is swept";
}

TEST_F(FileReplacementTest, NoDescriptorStaysOpen)
{
    const auto openFiles = [] {
        const auto at = fs::directory_iterator("/proc/self/fd");
        return std::distance(begin(at), end(at));
    };
    make(L"twin.json", "x");
    fs::create_hard_link(path(L"twin.json"), path(L"other.json"));
    const auto before = openFiles();
    replace(L"a.json", "x");
    replace(L"a.json", "y");
    replace(L"twin.json", "y");
    replace(L"missing/a.json", "x");
    FileReplacement(at(L"b.json"));
    EXPECT_EQ(openFiles(), before);
}

TEST_F(FileReplacementTest, ARelativePathIsOneFromTheCurrentFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(m_folder.path().toStdString());
    EXPECT_TRUE(FileReplacement(L"a.json").isOpen());
    FileReplacement file(L"a.json");
    const bool written = file.write("x") && file.commit();
    fs::current_path(before);
    EXPECT_TRUE(written);
    EXPECT_EQ(content(L"a.json"), "x");
    EXPECT_THAT(names(), ElementsAre("a.json"));
}
