#include "platform/core/CloudLibraries.h"

#include "support/Asserts.h"
#include "support/CloudEvents.h"
#include "support/FileContent.h"
#include "support/Rights.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

using Varn::CloudLibraries;

namespace {

class CloudFolder : public testing::Test
{
protected:
    ~CloudFolder() override { CloudLibraries::reset(); }
};

} // namespace

TEST_F(CloudFolder, ThereAreNoneUntilAFolderIsConfigured)
{
    EXPECT_FALSE(CloudLibraries::EnableCloudLibraries());
    EXPECT_FALSE(CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES).isValid());
}

TEST_F(CloudFolder, AConfiguredFolderIsTheOneWithTheCopies)
{
    CloudLibraries::configure(L"/cloud/of the shop/\u00FC/");
    EXPECT_TRUE(CloudLibraries::EnableCloudLibraries());
    const auto libraries = CloudLibraries::get(CloudLibraries::LibraryType(1));
    ASSERT_TRUE(libraries.isValid());
    EXPECT_EQ(libraries->getCachedCloudLibrariesFolder(), L"/cloud/of the shop/\u00FC");
}

TEST_F(CloudFolder, ARelativeFolderCountsFromTheCurrentOne)
{
    CloudLibraries::configure(L"cloud");
    EXPECT_EQ(CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES)->getCachedCloudLibrariesFolder(),
              QDir::currentPath().toStdWString() + L"/cloud");
}

TEST_F(CloudFolder, OnlyToolLibrariesAreKeptThere)
{
    CloudLibraries::configure(L"/cloud");
    for (const int type : {0, 2, -1})
        EXPECT_FALSE(CloudLibraries::get(CloudLibraries::LibraryType(type)).isValid()) << type;
}

TEST_F(CloudFolder, PointersGoNullWhenTheFolderChangesOrGoes)
{
    CloudLibraries::configure(L"/one");
    const auto one = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    CloudLibraries::configure(L"/two");
    EXPECT_FALSE(one.isValid());
    const auto two = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    EXPECT_EQ(two->getCachedCloudLibrariesFolder(), L"/two");
    CloudLibraries::reset();
    EXPECT_FALSE(two.isValid());
    EXPECT_FALSE(CloudLibraries::EnableCloudLibraries());
    CloudLibraries::reset();
    CloudLibraries::configure(L"/three");
    CloudLibraries::configure(L"");
    EXPECT_FALSE(CloudLibraries::EnableCloudLibraries());
}

TEST_F(CloudFolder, FollowingTheMissingOneIsAFaultThatSaysSo)
{
    const TestSupport::Asserts asserts;
    const auto libraries = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    EXPECT_THROW(libraries->getCachedCloudLibrariesFolder(), Varn::NullPointerException);
    EXPECT_THAT(asserts.messages(), testing::ElementsAre("object"));
}

TEST_F(CloudFolder, EachChangeReachesTheListenerOnce)
{
    const TestSupport::CloudEvents events(L"/cloud");
    CloudLibraries::fireCloudUploadEvent(L"/cloud/\u00FC.json");
    CloudLibraries::fireCloudRenameEvent(L"/cloud/a", L"/cloud/b");
    CloudLibraries::markFileAsDeleted(L"/cloud/c.json");
    CloudLibraries::fireCloudDeleteEvent(L"/cloud/c.json");
    EXPECT_THAT(events.texts(), testing::ElementsAre("uploaded /cloud/\u00FC.json", "renamed /cloud/a to /cloud/b",
                                                     "marked as deleted /cloud/c.json", "deleted /cloud/c.json"));
}

TEST_F(CloudFolder, NothingIsToldWithoutAFolderOrAListener)
{
    int count = 0;
    const auto listener = [&](const CloudLibraries::Event &) { ++count; };
    const auto tellAll = [] {
        CloudLibraries::fireCloudUploadEvent(L"/a");
        CloudLibraries::fireCloudRenameEvent(L"/a", L"/b");
        CloudLibraries::markFileAsDeleted(L"/a");
        CloudLibraries::fireCloudDeleteEvent(L"/a");
    };
    CloudLibraries::setListener(listener);
    tellAll();
    EXPECT_EQ(count, 0) << "no folder";
    CloudLibraries::configure(L"/cloud");
    tellAll();
    EXPECT_EQ(count, 4) << "the listener was there first";
    CloudLibraries::configure(L"/other");
    tellAll();
    EXPECT_EQ(count, 8) << "another folder keeps the listener";
    CloudLibraries::setListener({});
    tellAll();
    CloudLibraries::setListener(listener);
    CloudLibraries::reset();
    CloudLibraries::configure(L"/cloud");
    tellAll();
    EXPECT_EQ(count, 8) << "it went with the reset";
}

TEST_F(CloudFolder, AListenerMayCallBack)
{
    CloudLibraries::configure(L"/cloud");
    std::vector<std::wstring> paths;
    CloudLibraries::setListener([&](const CloudLibraries::Event &event) {
        paths.push_back(event.path);
        CloudLibraries::setListener({});
        CloudLibraries::fireCloudDeleteEvent(
            CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES)->getCachedCloudLibrariesFolder());
    });
    CloudLibraries::fireCloudUploadEvent(L"/cloud/a");
    EXPECT_THAT(paths, testing::ElementsAre(L"/cloud/a"));
}

TEST_F(CloudFolder, AnyThreadMayTell)
{
    CloudLibraries::configure(L"/cloud");
    std::atomic<int> count{0};
    CloudLibraries::setListener([&](const CloudLibraries::Event &) { ++count; });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([] {
            for (int i = 0; i < 100; ++i)
                CloudLibraries::fireCloudUploadEvent(L"/cloud/a");
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(count, 400);
}

TEST_F(CloudFolder, ExplicitSyncIsForFilesOfTheFolderOnceTheHostSaysSo)
{
    EXPECT_FALSE(CloudLibraries::isUsingExplicitSync(L"/cloud/a.json"));
    CloudLibraries::configure(L"/cloud");
    EXPECT_FALSE(CloudLibraries::isUsingExplicitSync(L"/cloud/a.json"));
    CloudLibraries::setExplicitSync(true);
    const std::pair<const wchar_t *, bool> rows[] = {
        {L"/cloud/a.json", true}, {L"/cloud", true},       {L"/cloud/", true},
        {L"/cloud/x/../a", true}, {L"/cloud/../a", false}, {L"/cloudy/a.json", false},
        {L"/a.json", false},      {L"a.json", false},      {L"", false},
    };
    for (const auto &[path, expected] : rows)
        EXPECT_EQ(CloudLibraries::isUsingExplicitSync(path), expected) << QString::fromWCharArray(path).toStdString();
    CloudLibraries::reset();
    CloudLibraries::configure(L"/cloud");
    EXPECT_FALSE(CloudLibraries::isUsingExplicitSync(L"/cloud/a.json"));
}

TEST_F(CloudFolder, WriteRightsAreThoseOfTheFileSystem)
{
    const QTemporaryDir folder;
    TestSupport::letEveryoneIn({folder.path()});
    QDir(folder.path()).mkpath("open/inner");
    QDir(folder.path()).mkpath("closed");
    TestSupport::letEveryoneIn({folder.filePath("open"), folder.filePath("open/inner")});
    TestSupport::makeReadOnly(folder.filePath("closed"));
    QFile file(folder.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    CloudLibraries::configure(folder.path().toStdWString());
    const auto libraries = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    const TestSupport::AsNobody nobody;
    const std::pair<std::string, bool> rows[] = {
        {"", true},           {"open", true},  {"open/inner", true}, {folder.filePath("open").toStdString(), true},
        {"closed", false},    {"none", false}, {"file", false},      {"/proc", false},
        {"open/none", false},
    };
    for (const auto &[path, expected] : rows)
        EXPECT_EQ(libraries->userCanWriteToFolder(path), expected) << path;
}
