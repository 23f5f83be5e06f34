// QuillonProgramTest.cpp -- the program itself, as a person or a script starts it.
#include "support/LibraryFile.h"
#include "support/QuillonProcess.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::AllOf;
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

TEST(QuillonProgram, SpeaksTheLanguageOfItsEnvironmentOrOfItsArguments)
{
    const QTemporaryDir home;
    const struct {
        QuillonProcess::Variables variables;
        QStringList locale;
        const char *root;
    } rows[] = {
        {{}, {}, "User Libraries"},
        {{{"LANG", "de_DE.UTF-8"}}, {}, "Benutzerbibliotheken"},
        {{{"LANG", "ja_JP.UTF-8"}, {"LC_ALL", ""}}, {}, "ユーザーライブラリ"},
        {{{"LANG", "pt_BR.UTF-8"}}, {}, "User Libraries"},
        {{{"LANG", "de_DE.UTF-8"}, {"LC_MESSAGES", "fr_FR.UTF-8"}}, {}, "Bibliothèques utilisateur"},
        {{{"LANG", "de_DE.UTF-8"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "C"}}, {}, "User Libraries"},
        {{{"LANG", "de_DE.UTF-8"}, {"QUILLON_LOCALE", "fr"}}, {}, "Bibliothèques utilisateur"},
        {{{"QUILLON_LOCALE", "fr"}}, {"--locale", "de_AT.UTF-8"}, "Benutzerbibliotheken"},
        {{{"LANG", "de_DE.UTF-8"}}, {"--locale", "en"}, "User Libraries"},
    };
    for (const auto &row : rows) {
        const Outcome tree =
            QuillonProcess(row.locale + QStringList{QStringLiteral("tree")}, home.path(), {}, row.variables).finish();
        EXPECT_EQ(tree.status, 0) << tree.err;
        EXPECT_THAT(tree.out, HasSubstr(std::string("\n") + row.root + " "));
    }
}

TEST(QuillonProgram, SamplesAndTypesHaveTheirNamesInTheLanguage)
{
    const QTemporaryDir home;
    const QStringList german{QStringLiteral("--locale"), QStringLiteral("de")};
    EXPECT_THAT(quillon(german + QStringList{QStringLiteral("tree")}, home.path()).out,
                AllOf(HasSubstr("\n  Lokal "), HasSubstr("\n    Drehwerkzeuge (Zoll) "),
                      HasSubstr("systemlibraryroot://Samples/Turning Tools (Inch).json")));
    const QString milling = QStringLiteral("systemlibraryroot://Samples/Milling Tools (Metric).json");
    EXPECT_THAT(quillon(german + QStringList{QStringLiteral("tools"), milling}, home.path()).out,
                AllOf(HasSubstr("  Schaftfräser  "), Not(HasSubstr("  Flat end mill  "))));
}

TEST(QuillonProgram, ALanguageWithoutTextsIsWrongUsage)
{
    const QTemporaryDir home;
    for (const char *locale : {"pt", "", "C", "deutsch"}) {
        const Outcome tree =
            quillon({QStringLiteral("--locale"), QLatin1String(locale), QStringLiteral("tree")}, home.path());
        EXPECT_EQ(tree.status, 2) << locale;
        EXPECT_THAT(tree.err, HasSubstr("no texts in \"" + std::string(locale) + "\", only in de, en, fr, ja"));
    }
    const QuillonProcess::Variables variables{{QStringLiteral("QUILLON_LOCALE"), QStringLiteral("pt")}};
    EXPECT_EQ(QuillonProcess({QStringLiteral("tree")}, home.path(), {}, variables).finish().status, 2);
}
