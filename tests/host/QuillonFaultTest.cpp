// QuillonFaultTest.cpp -- the program meets what goes wrong on a real machine: it is killed, the disk is full, files
// may not be written, others write the same file. Nothing is lost, and an error says what happened.
#include "support/FileContent.h"
#include "support/LibraryFile.h"
#include "support/LibraryGenerator.h"
#include "support/QuillonProcess.h"

#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <random>
#include <thread>

#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using Outcome = QuillonProcess::Outcome;

namespace {

unsigned toolsIn(const QString &path)
{
    const auto locator = ToolLibraryLocator::fromFilePath(path.toStdWString());
    return ToolSourceLoader::loadFromNonDocument(locator, Varn::AbortableImpl())->numberOfTools();
}

/// Two libraries that take turns as the content of a third file.
class QuillonFault : public testing::Test
{
protected:
    static constexpr unsigned fewTools = 150;
    static constexpr unsigned moreTools = 400;

    QuillonFault()
        : m_few({QStringLiteral("--count"), QString::number(fewTools)}),
          m_more({QStringLiteral("--count"), QString::number(moreTools)})
    {
        chmod(qPrintable(m_folder.path()), 0755); // an unprivileged user must get in
    }

    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString home() const { return path(QStringLiteral("home")); }

    QuillonProcess save(const LibraryGenerator &library, const QString &to, const std::function<void()> &inChild = {})
    {
        return QuillonProcess({QStringLiteral("convert"), library.path(), to, QStringLiteral("--force")}, home(),
                              inChild);
    }

    /// Kills one save after the other at any moment; after each the file is the old library or the new one.
    void killSaves(const QString &file, int saves);

    /// Another user than root, whom no permission stops; whoever runs the tests is fine if it is not root.
    static void becomeUnprivileged()
    {
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0))
            _exit(99);
    }
    void giveAway(const QString &file) const
    {
        if (geteuid() == 0 && chown(qPrintable(file), 65534, 65534) != 0)
            ADD_FAILURE() << "cannot give " << file.toStdString() << " away";
    }
    QStringList entriesBeside() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir m_folder;
    LibraryGenerator m_few;
    LibraryGenerator m_more;
};

void QuillonFault::killSaves(const QString &file, int saves)
{
    ASSERT_EQ(save(m_few, file).finish().status, 0);
    QElapsedTimer timer;
    timer.start();
    ASSERT_EQ(save(m_more, file).finish().status, 0);
    std::mt19937 random(saves);
    std::uniform_int_distribution<qint64> moment(0, timer.nsecsElapsed() / 1000 * 5 / 4);
    int killed = 0;
    int changed = 0;
    unsigned before = moreTools;
    for (int i = 0; i < saves; ++i) {
        QuillonProcess process = save(i % 2 ? m_more : m_few, file);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        process.process().kill();
        process.process().waitForFinished();
        killed += process.process().exitStatus() == QProcess::CrashExit;
        const unsigned now = toolsIn(file);
        ASSERT_THAT(now, AnyOf(fewTools, moreTools)) << "after " << i << " saves";
        changed += now != before;
        before = now;
    }
    EXPECT_GT(killed, saves / 4) << "most ended before they were killed";
    EXPECT_GT(changed, 0) << "none came to its end";
    ASSERT_EQ(save(m_few, file).finish().status, 0);
    EXPECT_EQ(entriesBeside(), QStringList{QFileInfo(file).fileName()}) << "what the killed left is swept";
}

} // namespace

TEST_F(QuillonFault, AKilledSaveLeavesTheOldLibraryOrTheNew)
{
    killSaves(path(QStringLiteral("library.json")), 100);
}

TEST_F(QuillonFault, AKilledSaveLeavesTheOldArchiveOrTheNew)
{
    killSaves(path(QStringLiteral("library.tools")), 100);
}

TEST_F(QuillonFault, AFullDiskLeavesTheOldLibrary)
{
    const QString json = path(QStringLiteral("library.json"));
    const QString tools = path(QStringLiteral("library.tools"));
    ASSERT_EQ(save(m_few, json).finish().status, 0);
    ASSERT_EQ(save(m_few, tools).finish().status, 0);
    const std::string jsonBefore = contentOf(json);
    const std::string toolsBefore = contentOf(tools);
    for (const rlim_t bytes : {rlim_t(0), rlim_t(1), rlim_t(1000), rlim_t(20'000)}) {
        const auto limit = [bytes] {
            const rlimit size{bytes, bytes};
            setrlimit(RLIMIT_FSIZE, &size);
            std::signal(SIGXFSZ, SIG_IGN); // the write fails, as on a full disk
        };
        const Outcome toJson = save(m_more, json, limit).finish();
        EXPECT_EQ(toJson.status, 1);
        EXPECT_THAT(toJson.err, HasSubstr(": Could not write data to JSON file: " + json.toStdString() + "\n"));
        EXPECT_EQ(contentOf(json), jsonBefore);
        const Outcome toTools = save(m_more, tools, limit).finish();
        EXPECT_EQ(toTools.status, 1);
        EXPECT_THAT(toTools.err, HasSubstr(": Failed to export library\n"));
        EXPECT_EQ(contentOf(tools), toolsBefore);
    }
    EXPECT_EQ(entriesBeside(), (QStringList{QStringLiteral("library.json"), QStringLiteral("library.tools")}));
}

TEST_F(QuillonFault, OnAFullDiskNoLibraryIsWithoutItsGeometries)
{
    std::string solid(100'000, '\0'); // it does not get smaller
    std::ranges::generate(solid, std::mt19937(7));
    QDir(m_folder.path()).mkpath(QStringLiteral("in"));
    writeFile(path(QStringLiteral("in/a.json")),
              libraryText({toolText(1, R"("geometry":{"3DGeometry":{"id":"solid"}})")}));
    writeFile(path(QStringLiteral("in/solid.3DTool")), solid);
    const auto convert = [this](const char *from, const char *to, const std::function<void()> &inChild = {}) {
        return QuillonProcess({QStringLiteral("convert"), path(QString::fromLatin1(from)),
                               path(QString::fromLatin1(to)), QStringLiteral("--force")},
                              home(), inChild)
            .finish();
    };
    const auto limit = [] { // room for the library alone
        const rlimit size{20'000, 20'000};
        setrlimit(RLIMIT_FSIZE, &size);
        std::signal(SIGXFSZ, SIG_IGN);
    };
    ASSERT_EQ(convert("in/a.json", "a.tools").status, 0);
    const std::string before = contentOf(path(QStringLiteral("a.tools")));
    EXPECT_EQ(convert("in/a.json", "a.tools", limit).status, 1);
    EXPECT_EQ(contentOf(path(QStringLiteral("a.tools"))), before);
    EXPECT_EQ(convert("in/a.json", "b.tools", limit).status, 1);
    EXPECT_EQ(convert("a.tools", "b.json", limit).status, 1);
    EXPECT_EQ(entriesBeside(), QStringList{QStringLiteral("a.tools")});
}

TEST_F(QuillonFault, AReadOnlyFileIsRefused)
{
    const QString json = path(QStringLiteral("library.json"));
    ASSERT_EQ(save(m_few, json).finish().status, 0);
    const std::string before = contentOf(json);
    giveAway(m_folder.path());
    giveAway(json);
    chmod(qPrintable(json), 0444);
    chmod(qPrintable(QFileInfo(m_more.path()).path()), 0755);
    const Outcome outcome = save(m_more, json, becomeUnprivileged).finish();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(": Cannot open JSON file for writing: " + json.toStdString() + "\n"));
    EXPECT_EQ(contentOf(json), before);
}

TEST_F(QuillonFault, AReadOnlyArchiveOfOnesOwnIsWritten)
{
    const QString tools = path(QStringLiteral("library.tools"));
    ASSERT_EQ(save(m_few, tools).finish().status, 0);
    giveAway(m_folder.path());
    giveAway(tools);
    chmod(qPrintable(tools), 0444);
    chmod(qPrintable(QFileInfo(m_more.path()).path()), 0755);
    EXPECT_EQ(save(m_more, tools, becomeUnprivileged).finish().status, 0);
    EXPECT_EQ(toolsIn(tools), moreTools);
}

TEST_F(QuillonFault, InAReadOnlyFolderNothingNewIsMadeAndWhatIsThereIsWrittenInPlace)
{
    const QString json = path(QStringLiteral("library.json"));
    ASSERT_EQ(save(m_few, json).finish().status, 0);
    giveAway(json);
    chmod(qPrintable(json), 0644);
    chmod(qPrintable(QFileInfo(m_more.path()).path()), 0755);
    chmod(qPrintable(m_folder.path()), 0555);
    EXPECT_EQ(save(m_more, json, becomeUnprivileged).finish().status, 0);
    EXPECT_EQ(toolsIn(json), moreTools);
    for (const char *name : {"new.json", "new.tools"}) {
        const Outcome outcome = save(m_more, path(QString::fromLatin1(name)), becomeUnprivileged).finish();
        EXPECT_EQ(outcome.status, 1) << name;
        EXPECT_FALSE(QFile::exists(path(QString::fromLatin1(name))));
    }
    chmod(qPrintable(m_folder.path()), 0755);
}

TEST_F(QuillonFault, AHomeThatMayNotBeWrittenStillHasATree)
{
    QDir().mkpath(home());
    chmod(qPrintable(home()), 0555);
    const Outcome tree = QuillonProcess({QStringLiteral("tree")}, home(), becomeUnprivileged).finish();
    EXPECT_EQ(tree.status, 0);
    EXPECT_THAT(tree.out, HasSubstr("  Local "));
    EXPECT_THAT(tree.out, Not(HasSubstr("Library.json")));
}

TEST_F(QuillonFault, OfTwoWhoSaveOneLibraryTheLaterStands)
{
    for (const QString &name : {QStringLiteral("library.json"), QStringLiteral("library.tools")}) {
        const QString file = path(name);
        for (int round = 0; round < 25; ++round) {
            QuillonProcess one = save(m_few, file);
            QuillonProcess other = save(m_more, file);
            EXPECT_EQ(one.finish().status, 0);
            EXPECT_EQ(other.finish().status, 0);
            ASSERT_THAT(toolsIn(file), AnyOf(fewTools, moreTools));
        }
        EXPECT_EQ(save(m_few, file).finish().status, 0);
        EXPECT_EQ(toolsIn(file), fewTools);
        QFile::remove(file);
    }
}

TEST_F(QuillonFault, TenThousandLibrariesInOneFolderAreListed)
{
    for (int i = 0; i < 10'000; ++i)
        writeFile(home() + QStringLiteral("/libraries/Local/many/%1.json").arg(i), libraryText({toolText(1)}));
    const Outcome tree = quillon({QStringLiteral("tree")}, home());
    EXPECT_EQ(tree.status, 0);
    EXPECT_THAT(tree.out, HasSubstr("toollibraryroot://Local/many/9999.json"));
    const Outcome last =
        quillon({QStringLiteral("tools"), QStringLiteral("toollibraryroot://Local/many/9999.json")}, home());
    EXPECT_THAT(last.out, HasSubstr("Tools 1 to 1 of 1"));
}

TEST_F(QuillonFault, ALinkToItsOwnParentEnds)
{
    writeFile(home() + QStringLiteral("/libraries/Local/sub/a.json"), libraryText({}));
    ASSERT_TRUE(
        QFile::link(home() + QStringLiteral("/libraries/Local"), home() + QStringLiteral("/libraries/Local/sub/up")));
    const Outcome tree = quillon({QStringLiteral("tree"), QStringLiteral("--tools")}, home());
    EXPECT_EQ(tree.status, 0);
    EXPECT_THAT(tree.out, HasSubstr("toollibraryroot://Local/sub/up"));
    EXPECT_THAT(tree.out, Not(HasSubstr("sub/up/sub")));
}

TEST_F(QuillonFault, AFileThatVanishesWhileLibrariesLoadIsAnErrorThatNamesIt)
{
    const QString local = home() + QStringLiteral("/libraries/Local/");
    QDir().mkpath(local);
    int failed = 0;
    for (int round = 0; round < 10; ++round) {
        for (const QString &name : {QStringLiteral("a.json"), QStringLiteral("b.json"), QStringLiteral("c.json")})
            QFile::copy(m_more.path(), local + name);
        writeFile(local + QStringLiteral("z.json"), libraryText({toolText(1)}));
        QuillonProcess process({QStringLiteral("rpc")}, home());
        process.process().write("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"initialLoadTask\"}\n");
        ASSERT_TRUE(process.process().waitForReadyRead());
        if (round % 2)
            QFile::resize(local + QStringLiteral("z.json"), 30);
        else
            QFile::remove(local + QStringLiteral("z.json"));
        const Outcome outcome = process.finish("{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"getToolsFromLibrary\","
                                               "\"params\":{\"locator\":\"toollibraryroot://Local/z.json\"}}\n");
        EXPECT_EQ(outcome.status, 0);
        const bool isFailure = outcome.out.find("LibraryFormatError") != std::string::npos;
        failed += isFailure;
        EXPECT_THAT(outcome.out, HasSubstr(isFailure ? "Failed to read or parse JSON file: " +
                                                           (local + QStringLiteral("z.json")).toStdString()
                                                     : guidOf(1)));
    }
    RecordProperty("failed", failed); // the others had been read before
}
