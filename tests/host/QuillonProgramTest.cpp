// QuillonProgramTest.cpp -- the program itself, as a person or a script starts it.
#include "support/LibraryFile.h"
#include "support/QuillonProcess.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Outcome = QuillonProcess::Outcome;

TEST(QuillonProgram, KeepsEverythingUnderItsHome)
{
    const QTemporaryDir home;
    writeFile(home.filePath(QStringLiteral("libraries/Local/Mine.json")), libraryText({toolText(1)}));
    writeFile(home.filePath(QStringLiteral("Brennmoor/Lodestar/libraries/Samples/Probes.json")), libraryText({}));
    const Outcome urls =
        quillon({QStringLiteral("rpc")}, home.path(), R"({"jsonrpc":"2.0","id":1,"method":"getAllLibraryUrls"})");
    EXPECT_EQ(urls.status, 0);
    EXPECT_THAT(urls.out, StartsWith("{\"jsonrpc\":\"2.0\",\"result\":[\"toollibraryroot://Local/Library.json\","
                                     "\"toollibraryroot://Local/Mine.json\","
                                     "\"systemlibraryroot://Samples/Probes.json\",\"vendor://"));
    const Outcome tools =
        quillon({QStringLiteral("tools"), QStringLiteral("toollibraryroot://Local/Mine.json")}, home.path());
    EXPECT_THAT(tools.out, HasSubstr("Tools 1 to 1 of 1"));
}

TEST(QuillonProgram, TheHomeOfTheCommandLineWins)
{
    const QTemporaryDir home;
    const QTemporaryDir other;
    writeFile(other.filePath(QStringLiteral("libraries/Local/Other.json")), libraryText({}));
    const Outcome urls = quillon({QStringLiteral("--home"), other.path(), QStringLiteral("rpc")}, home.path(),
                                 R"({"jsonrpc":"2.0","id":1,"method":"getAllLibraryUrls"})");
    EXPECT_THAT(urls.out, HasSubstr("toollibraryroot://Local/Other.json"));
}

TEST(QuillonProgram, EndsWithTheStatusOfItsCommand)
{
    const QTemporaryDir home;
    EXPECT_EQ(quillon({QStringLiteral("--help")}, home.path()).status, 0);
    EXPECT_EQ(quillon({}, home.path()).status, 2);
    const Outcome failed = quillon({QStringLiteral("tools"), QStringLiteral("/nowhere/a.json")}, home.path());
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err, "/nowhere/a.json: Failed to read or parse JSON file: /nowhere/a.json\n");
}

TEST(QuillonProgram, AFreshHomeGetsTheSamplesAndALibrary)
{
    const QTemporaryDir home;
    const Outcome tree = quillon({QStringLiteral("tree"), QStringLiteral("--tools")}, home.path());
    EXPECT_EQ(tree.status, 0);
    EXPECT_THAT(tree.out, HasSubstr("\n    Library                                      0  toollibraryroot://Local/"));
    EXPECT_THAT(tree.out, HasSubstr("\n    Milling Tools (Metric)                     246  systemlibraryroot://"));
    EXPECT_EQ(tree.err, "");
    const QStringList entries = QDir(home.filePath(QStringLiteral("Brennmoor/Lodestar/libraries"))).entryList();
    EXPECT_EQ(entries.filter(QStringLiteral("Samples")).size(), 1) << "nothing stays of the way there";
}

TEST(QuillonProgram, SamplesThatAPersonTookAwayDoNotComeBack)
{
    const QTemporaryDir home;
    const QString samples = home.filePath(QStringLiteral("Brennmoor/Lodestar/libraries/Samples"));
    quillon({QStringLiteral("tree")}, home.path());
    ASSERT_TRUE(QFile::remove(samples + QStringLiteral("/Milling Tools (Inch).json")));
    EXPECT_THAT(quillon({QStringLiteral("tree")}, home.path()).out, Not(HasSubstr("Milling Tools (Inch)")));
}

TEST(QuillonProgram, ALooseFileLeavesTheHomeAlone)
{
    const QTemporaryDir home;
    const QTemporaryDir folder;
    writeFile(folder.filePath(QStringLiteral("a.json")), libraryText({toolText(1)}));
    EXPECT_EQ(quillon({QStringLiteral("tools"), folder.filePath(QStringLiteral("a.json"))}, home.path()).status, 0);
    EXPECT_TRUE(QDir(home.path()).isEmpty());
}

TEST(QuillonProgram, AnyLibraryOfTheTreeOpens)
{
    const QTemporaryDir home;
    for (const char *name : {"Fräser", "立铣刀", "100% \"good\"", "a'b c#d?e"})
        writeFile(home.filePath(QStringLiteral("libraries/Local/%1.json").arg(QString::fromUtf8(name))),
                  libraryText({toolText(1)}));
    const Outcome urls =
        quillon({QStringLiteral("rpc")}, home.path(), R"({"jsonrpc":"2.0","id":1,"method":"getAllLibraryUrls"})");
    const QJsonArray list =
        QJsonDocument::fromJson(QByteArray::fromStdString(urls.out))[QStringLiteral("result")].toArray();
    int opened = 0;
    for (const QJsonValue &url : list) {
        if (url.toString().startsWith(QStringLiteral("vendor://")))
            continue;
        EXPECT_EQ(quillon({QStringLiteral("tools"), url.toString()}, home.path()).status, 0)
            << url.toString().toStdString();
        ++opened;
    }
    EXPECT_GE(opened, 5 + 4);
}
