// QuillonProgramTest.cpp -- the program itself, as a person or a script starts it.
#include "support/LibraryFile.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

Outcome quillon(const QStringList &arguments, const QString &home, const QByteArray &input = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QUILLON_HOME"), home);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(QUILLON), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {-1, "", "quillon did not end as it should"};
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

} // namespace

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
