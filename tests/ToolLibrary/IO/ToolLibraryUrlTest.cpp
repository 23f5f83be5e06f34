#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "support/Asserts.h"
#include "support/TestPaths.h"

#include "platform/ox/TestMgr.h"
#include "platform/tool/Exception.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

using namespace Varn::Tools;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ToolLibraries::ToolLibraryLocator;

namespace {

ToolLibraryUrl url(const char *text)
{
    return ToolLibraryUrl(QString::fromUtf8(text));
}

std::string text(const QString &string)
{
    return string.toStdString();
}

std::vector<std::string> texts(const QStringList &strings)
{
    std::vector<std::string> result;
    for (const QString &string : strings)
        result.push_back(string.toStdString());
    return result;
}

template <typename Failure, typename Call>
std::string whatOf(const Call &call)
{
    try {
        call();
    } catch (const Failure &failure) {
        return typeid(failure) == typeid(Failure) ? failure.what() : "an exception of another class";
    }
    return "no exception";
}

void touch(const QString &path)
{
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

} // namespace

TEST(ToolLibraryUrl, IsReadIntoSchemeFolderFileAndVersion)
{
    struct Row {
        const char *text;
        ToolLibraryUrl::ProtocolType protocol;
        int version;
        const char *path;
    };
    const Row rows[] = {
        {"toollibraryroot://Local/My Tools.json", ToolLibraryUrl::Local, 1, "Local/My Tools.json"},
        {"systemlibraryroot://Samples/Probes.json", ToolLibraryUrl::System, 1, "Samples/Probes.json"},
        {"systemlibraryroot", ToolLibraryUrl::Unknown, -1, "systemlibraryroot"},
        {"cloud://a/b.tools", ToolLibraryUrl::Cloud, 2, "a/b.tools"},
        {"hub://p/x.hub", ToolLibraryUrl::Hub, 3, "p/x.hub"},
        {"custom://c/old.zetlib", ToolLibraryUrl::Custom, 0, "c/old.zetlib"},
        {"vendor://v/w.json", ToolLibraryUrl::Vendor, 1, "v/w.json"},
        {"all://", ToolLibraryUrl::All, -1, ""},
        {"document://a/b", ToolLibraryUrl::Document, -1, "a/b"},
        {"local://x.json", ToolLibraryUrl::Unknown, 1, "x.json"},
        {"http://h/x.json", ToolLibraryUrl::Unknown, 1, "h/x.json"},
        {"https://h/x.json", ToolLibraryUrl::Unknown, 1, "h/x.json"},
        {"x.hub", ToolLibraryUrl::Unknown, 3, "x.hub"},
        {"/home/me/a.json", ToolLibraryUrl::Unknown, 1, "/home/me/a.json"},
        {"toollibraryroot://Local/a.JSON", ToolLibraryUrl::Local, -1, "Local/a.JSON"},
        {"toollibraryroot://Local/a.csv", ToolLibraryUrl::Local, -1, "Local/a.csv"},
        {"toollibraryroot://Local/", ToolLibraryUrl::Local, -1, "Local/"},
        {"toollibraryroot://Local/.json/", ToolLibraryUrl::Local, -1, "Local/.json/"},
        {"", ToolLibraryUrl::Unknown, -1, ""},
        {"toollibraryroot://工具/Fräser.json", ToolLibraryUrl::Local, 1, "工具/Fräser.json"},
        {"toollibraryroot://a\nb.json", ToolLibraryUrl::Local, -1, "a\nb.json"}, // the name stops at the newline
    };
    for (const Row &row : rows) {
        EXPECT_EQ(url(row.text).protocol(), row.protocol) << row.text;
        EXPECT_EQ(url(row.text).version(), row.version) << row.text;
        EXPECT_EQ(text(url(row.text).libraryPath()), row.path) << row.text;
        EXPECT_EQ(text(url(row.text).url()), row.text);
    }
}

TEST(ToolLibraryUrl, ADefaultOneIsUnknownAndEmpty)
{
    const ToolLibraryUrl none;
    EXPECT_TRUE(none.isUnknown());
    EXPECT_FALSE(none.isValid());
    EXPECT_EQ(none.version(), -1);
    EXPECT_TRUE(none.url().isEmpty());
    EXPECT_TRUE(none.libraryPath().isEmpty());
}

TEST(ToolLibraryUrl, WritesTheSchemeOfEachProtocol)
{
    struct Row {
        ToolLibraryUrl::ProtocolType written;
        const char *url;
        ToolLibraryUrl::ProtocolType readBack;
        const char *nodeType;
    };
    const Row rows[] = {
        {ToolLibraryUrl::Document, "document://p", ToolLibraryUrl::Document, "document"},
        {ToolLibraryUrl::Local, "toollibraryroot://p", ToolLibraryUrl::Local, "local"},
        {ToolLibraryUrl::System, "systemlibraryroot://p", ToolLibraryUrl::System, "systemlibraryroot"},
        {ToolLibraryUrl::Http, "http://p", ToolLibraryUrl::Unknown, "Unknown"},
        {ToolLibraryUrl::Https, "https://p", ToolLibraryUrl::Unknown, "Unknown"},
        {ToolLibraryUrl::Cloud, "cloud://p", ToolLibraryUrl::Cloud, "cloud"},
        {ToolLibraryUrl::All, "all://p", ToolLibraryUrl::All, "all"},
        {ToolLibraryUrl::Custom, "custom://p", ToolLibraryUrl::Custom, "custom"},
        {ToolLibraryUrl::Hub, "hub://p", ToolLibraryUrl::Hub, "hub"},
        {ToolLibraryUrl::Vendor, "vendor://p", ToolLibraryUrl::Vendor, "vendor"},
        {ToolLibraryUrl::Unknown, "", ToolLibraryUrl::Unknown, "Unknown"},
    };
    for (const Row &row : rows) {
        const ToolLibraryUrl written(QStringLiteral("p"), row.written);
        EXPECT_EQ(text(written.url()), row.url);
        EXPECT_EQ(written.protocol(), row.readBack) << row.url;
        EXPECT_EQ(text(written.nodeTypeFromProtocol()), row.nodeType) << row.url;
        EXPECT_FALSE(written.isWebLibrary()) << row.url;
    }
    EXPECT_TRUE(ToolLibraryUrl(QStringLiteral("p"), ToolLibraryUrl::Unknown).url().isNull());
}

TEST(ToolLibraryUrl, TellsFoldersLibrariesAndRootsApart)
{
    using Question = bool (ToolLibraryUrl::*)() const;
    struct Row {
        const char *url;
        const char *name;
        Question test;
        bool answer;
    };
#define ROW(url, test, answer)                                                                                         \
    {                                                                                                                  \
        url, #test, &ToolLibraryUrl::test, answer                                                                      \
    }
    const Row rows[] = {
        ROW("x.hub", isLibraryFile, true),
        ROW("hub://p/x.hub", isHubLibrary, true),
        ROW("hub://p/x.hub", isLibraryFile, false),
        ROW("hub://p/x.hub", isFolder, false),
        ROW("hub://p/x.hub", isHubFolder, false),
        ROW("hub://p", isHubFolder, true),
        ROW("hub://p", isHubRootFolder, false),
        ROW("hub://", isHubRootFolder, true),
        ROW("hub://", isHubFolder, true),
        ROW("cloud://", isCloudRootFolder, true),
        ROW("cloud://", isCloudFolder, true),
        ROW("cloud://", isFolder, true),
        ROW("cloud://a.json", isCloudLibrary, true),
        ROW("cloud://a.json", isCloudFolder, false),
        ROW("cloud://a.json", isLibraryFile, true),
        ROW("cloud://a", isCloudFolder, true),
        ROW("vendor://", isVendorRootFolder, true),
        ROW("vendor://", isVendorFolder, true),
        ROW("vendor://a/b.json", isVendorLibrary, true),
        ROW("vendor://a/b.json", isLibraryFile, true),
        ROW("vendor://a", isVendorFolder, true),
        ROW("document://", isDocumentRootFolder, true),
        ROW("document://", isFolder, true),
        ROW("document://a", isDocumentLibrary, true),
        ROW("document://a", isSetup, false),
        ROW("document://a", isLibrary, true),
        ROW("document://a/b", isSetup, true),
        ROW("document://a/b", isDocumentLibrary, false),
        ROW("document://a/b", isLibrary, true),
        ROW("document", isSetup, false),
        ROW("toollibraryroot://Local", isLocalRootFolder, true),
        ROW("toollibraryroot://Local", isLocalFolder, true),
        ROW("toollibraryroot://Local", isLocalLibrary, true),
        ROW("toollibraryroot://Local/", isLocalRootFolder, false),
        ROW("toollibraryroot://Local/a.json", isLocalLibrary, true),
        ROW("toollibraryroot://Local/a.json", isLocalFolder, false),
        ROW("toollibraryroot://Local/a.json", isLibrary, true),
        ROW("systemlibraryroot", isSystemRootFolder, true),
        ROW("systemlibraryroot://", isSystemRootFolder, false),
        ROW("systemlibraryroot://Samples", isSamplesRootFolder, true),
        ROW("systemlibraryroot://Samples/a.json", isSampleLibrary, true),
        ROW("systemlibraryroot://Samples/a.json", isSystemLibrary, true),
        ROW("systemlibraryroot://samples/a.json", isSampleLibrary, false),
        ROW("systemlibraryroot://x/My Sample.json", isSampleLibrary, true),
        ROW("toollibraryroot://Samples/a.json", isSampleLibrary, false),
        ROW("all://", isAllLibrary, true),
        ROW("all://", isFolder, true),
        ROW("custom://c", isCustomFolder, true),
        ROW("custom://c/a.json", isCustomFolder, true),
        ROW("custom://c/a.json", isCustomLibrary, true),
        ROW("http://h/a.json", isWebLibrary, false),
        ROW("toollibraryroot://Local", needsUpgrade, true),
        ROW("toollibraryroot://a.zetlib", needsUpgrade, true),
        ROW("toollibraryroot://a.json", needsUpgrade, false),
        ROW("toollibraryroot://a.tools", needsUpgrade, false),
        ROW("hub://p/x.hub", needsUpgrade, false),
        ROW("nonsense", isUnknown, true),
        ROW("nonsense", isFolder, true),
    };
#undef ROW
    for (const Row &row : rows)
        EXPECT_EQ((url(row.url).*row.test)(), row.answer) << row.name << " of " << row.url;
}

TEST(ToolLibraryUrl, EveryNodeIsEitherALibraryOrAFolder)
{
    for (const char *node : {"", "a", "a.json", "hub://a.hub", "document://a", "document://a/b", "cloud://", "all://",
                             "vendor://a.json", "http://a.json", "toollibraryroot://Local"})
        EXPECT_NE(url(node).isLibrary(), url(node).isFolder()) << node;
}

TEST(ToolLibraryUrl, ALocalLibraryHasItsNames)
{
    const ToolLibraryUrl library = url("toollibraryroot://Local/My Tools.json");
    EXPECT_EQ(text(library.extension()), ".json");
    EXPECT_EQ(text(library.libraryName()), "Local/My Tools");
    EXPECT_EQ(text(library.libraryBaseName()), "My Tools");
    EXPECT_EQ(text(library.libraryDisplayName()), "My Tools");
    EXPECT_EQ(library.libraryFileSystemPath(), std::filesystem::path("Local/My Tools.json"));
    EXPECT_EQ(text(library.parentUrl().url()), "toollibraryroot://Local");
    EXPECT_EQ(text(url("toollibraryroot://Local/sub/a.b.tools").libraryBaseName()), "a.b");
    EXPECT_EQ(text(url("toollibraryroot://Local/folder").extension()), "");
    EXPECT_EQ(text(url("toollibraryroot://Local/folder").libraryBaseName()), "folder");
}

TEST(ToolLibraryUrl, TheNameOfADocumentIsAProgrammingError)
{
    const TestSupport::Asserts asserts;
    EXPECT_EQ(text(url("document://a").libraryName()), "a");
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:!isDocumentLibrary() && !isSetup()"));
}

TEST(ToolLibraryUrl, OnlyASetupHasASetupName)
{
    EXPECT_EQ(text(url("document://a/b").setupName()), "b");
    EXPECT_EQ(text(url("document://a/b/c").setupName()), "b/c");
    const TestSupport::Asserts asserts;
    url("document://a").setupName();
    EXPECT_THAT(asserts.messages(), ElementsAre("isSetup()"));
}

TEST(ToolLibraryUrl, ASetupKnowsItsDocument)
{
    EXPECT_EQ(text(url("document://a/b").documentUrl().url()), "document://a");
    EXPECT_EQ(text(url("document://a").documentUrl().url()), "document://a");
    EXPECT_TRUE(url("document://").documentUrl() == ToolLibraryUrl());
    EXPECT_TRUE(url("toollibraryroot://Local/a.json").documentUrl() == ToolLibraryUrl());
}

TEST(ToolLibraryUrl, TheParentIsTheFolderAround)
{
    struct Row {
        const char *url;
        const char *parent;
    };
    const Row rows[] = {
        {"toollibraryroot://Local/My Tools.json", "toollibraryroot://Local"},
        {"toollibraryroot://Local", "toollibraryroot://"},
        {"toollibraryroot://Local/sub/a.json", "toollibraryroot://Local/sub"},
        {"cloud://a.json", "cloud://"},
        {"cloud://a/b", "cloud://a"},
        {"a.json", "a.json"}, // neither scheme nor folder: its own parent
        {"/a.json", ""},
        {"/home/me/a.json", "/home/me"},
        {"toollibraryroot://Local/", ""}, // unknown
        {"cloud://", ""},                 // unknown
        {"document://a/b", "document://a"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(text(url(row.url).parentUrl().url()), row.parent) << row.url;
    EXPECT_TRUE(url("cloud://a/").parentUrl().isUnknown());
}

TEST(ToolLibraryUrl, TheParentOfADefaultUrlIsRestrictedFlow)
{
    const TestSupport::Asserts asserts;
    EXPECT_TRUE(ToolLibraryUrl().parentUrl() == ToolLibraryUrl());
    EXPECT_THAT(asserts.messages(), ElementsAre("Restricted flow"));
}

TEST(ToolLibraryUrl, AChildIsJoinedBehindAFolder)
{
    EXPECT_EQ(text(url("toollibraryroot://Local").makeChildUrl(QStringLiteral("a.json")).url()),
              "toollibraryroot://Local/a.json");
    EXPECT_EQ(text(url("cloud://").makeChildUrl(QStringLiteral("a.json")).url()), "cloud://a.json");
    const TestSupport::Asserts asserts;
    url("toollibraryroot://a.json").makeChildUrl(QString());
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:isFolder()", "EXPECTS:!name.isEmpty()"));
}

TEST(ToolLibraryUrl, ConvertingReplacesEveryOccurrenceOfTheExtension)
{
    EXPECT_EQ(text(url("toollibraryroot://a.json/b.json").convertTo(QStringLiteral(".tools"))),
              "toollibraryroot://a.tools/b.tools");
    EXPECT_EQ(text(url("toollibraryroot://a.zetlib").convertToCurrentVersion()), "toollibraryroot://a.json");
    EXPECT_EQ(text(url("toollibraryroot://a.JSON").convertTo(QStringLiteral(".tools"))), "toollibraryroot://a.JSON");
    EXPECT_EQ(text(url("toollibraryroot://a.json.JSON.json").convertTo(QStringLiteral(".x"))),
              "toollibraryroot://a.x.JSON.x");
}

TEST(ToolLibraryUrl, TheExtensionsComeInTheirOrder)
{
    EXPECT_THAT(texts(ToolLibraryUrl::allFileExtensions(true)), ElementsAre(".zetlib", ".json", ".tools", ".csv"));
    EXPECT_THAT(texts(ToolLibraryUrl::allFileExtensions(false)), ElementsAre("zetlib", "json", "tools", "csv"));
    EXPECT_THAT(texts(ToolLibraryUrl::atRestFileExtensions(true, true)), ElementsAre(".json", ".tools", ".zetlib"));
    EXPECT_THAT(texts(ToolLibraryUrl::atRestFileExtensions(false, false)), ElementsAre("json", "tools"));
    EXPECT_EQ(text(ToolLibraryUrl::currentExtension()), ".json");
    EXPECT_EQ(text(ToolLibraryUrl::libraryP21Extension), ".p21");
    EXPECT_EQ(text(ToolLibraryUrl::libraryGTCExtension), ".zip");
    EXPECT_EQ(text(ToolLibraryUrl::libraryCsvExtension), ".csv");
    EXPECT_EQ(ToolLibraryUrl::MAX_LIBRARY_ID, 65535);
}

TEST(ToolLibraryUrl, ComparesByItsText)
{
    EXPECT_TRUE(url("cloud://a") == url("cloud://a"));
    EXPECT_FALSE(url("cloud://a") == url("cloud://A"));
    EXPECT_TRUE(url("cloud://A") < url("cloud://a"));
    EXPECT_FALSE(url("cloud://a") < url("cloud://a"));
    EXPECT_TRUE(url("cloud://a") < url("hub://a"));
    EXPECT_TRUE(url("cloud://z") < url("cloud://\u00e9")); // by code unit, not by any language
}

TEST(ToolLibraryUrl, GoesToALocatorAndBack)
{
    const ToolLibraryUrl library = url("toollibraryroot://Local/工具.json");
    const ToolLibraryLocator locator = library;
    EXPECT_FALSE(locator.isFilePath());
    EXPECT_TRUE(ToolLibraryUrl(locator) == library);
}

TEST(ToolLibraryUrl, EachProtocolLiesInItsFolder)
{
    const TestSupport::TestPaths paths;
    EXPECT_EQ(text(url("toollibraryroot://Local/a.json").fullFilePath()), text(paths.local(u"Local/a.json")));
    EXPECT_EQ(text(url("systemlibraryroot://Samples/a.json").fullFilePath()), text(paths.system(u"Samples/a.json")));
    EXPECT_EQ(text(url("cloud://a.json").fullFilePath()), text(paths.cloud(u"a.json")));
    EXPECT_EQ(text(url("custom://c/a.json").fullFilePath()), "c/a.json");
    EXPECT_EQ(text(url("/home/me/a.json").fullFilePath()), "/home/me/a.json");
    EXPECT_EQ(whatOf<Varn::ToolLibraries::Exception>([] { url("vendor://a.json").fullFilePath(); }), "Not implemented");
}

TEST(ToolLibraryUrl, AFreeNameStaysAsItIs)
{
    const ToolLibraryUrl library = url("toollibraryroot://Local/a.json");
    EXPECT_TRUE(ToolLibraryUrl::makeUniqueUrl(library, [](const QString &) { return true; }) == library);
}

TEST(ToolLibraryUrl, ATakenNameGetsTheNextNumber)
{
    std::vector<std::string> asked;
    const ToolLibraryUrl unique =
        ToolLibraryUrl::makeUniqueUrl(url("toollibraryroot://Local/a.tools"), [&](const QString &name) {
            asked.push_back(name.toStdString());
            return asked.size() == 3;
        });
    EXPECT_EQ(text(unique.url()), "toollibraryroot://Local/a 2.tools");
    EXPECT_THAT(asked, ElementsAre("a", "a 1", "a 2"));
}

TEST(ToolLibraryUrl, ThereAreNamesUpTo65534)
{
    int refusals = 0;
    const ToolLibraryUrl last = ToolLibraryUrl::makeUniqueUrl(url("toollibraryroot://Local/a.json"),
                                                              [&](const QString &) { return refusals++ == 65534; });
    EXPECT_EQ(text(last.url()), "toollibraryroot://Local/a 65534.json");

    int asked = 0;
    const auto never = [&](const QString &) {
        ++asked;
        return false;
    };
    EXPECT_EQ(whatOf<Varn::ToolLibraries::IOError>(
                  [&] { ToolLibraryUrl::makeUniqueUrl(url("toollibraryroot://Local/a.json"), never); }),
              "Failed to generate a unique name");
    EXPECT_EQ(asked, 65535);
}

TEST(ToolLibraryUrl, OnDiskEveryLibraryFormBlocksAName)
{
    const TestSupport::TestPaths paths;
    for (const char16_t *taken : {u"Local/a.tools", u"Local/b.zetlib", u"Local/c.json", u"Local/c 1.tools"})
        touch(paths.local(taken));
    const auto unique = [](const char *wanted) { return text(ToolLibraryUrl::makeUniqueUrlOnDisk(url(wanted)).url()); };
    EXPECT_EQ(unique("toollibraryroot://Local/a.json"), "toollibraryroot://Local/a 1.json");
    EXPECT_EQ(unique("toollibraryroot://Local/b.json"), "toollibraryroot://Local/b 1.json");
    EXPECT_EQ(unique("toollibraryroot://Local/c.tools"), "toollibraryroot://Local/c 2.tools");
    EXPECT_EQ(unique("toollibraryroot://Local/free.json"), "toollibraryroot://Local/free.json");
}

TEST(ToolLibraryUrl, OnDiskAFolderIsBlockedByItsOwnNameAlone)
{
    const TestSupport::TestPaths paths;
    touch(paths.local(u"Local/a.json"));
    QDir().mkpath(paths.local(u"Local/b"));
    const auto unique = [](const char *wanted) { return text(ToolLibraryUrl::makeUniqueUrlOnDisk(url(wanted)).url()); };
    EXPECT_EQ(unique("toollibraryroot://Local/a"), "toollibraryroot://Local/a");
    EXPECT_EQ(unique("toollibraryroot://Local/b"), "toollibraryroot://Local/b 1");
}

TEST(ToolLibraryUrl, VendorAndHubNodesHaveNoPlaceOnDisk)
{
    for (const char *node : {"vendor://a.json", "vendor://a", "vendor://", "hub://p/x.hub", "hub://p", "hub://"})
        EXPECT_EQ(
            whatOf<Varn::ToolLibraries::NotSupportedError>([&] { ToolLibraryUrl::makeUniqueUrlOnDisk(url(node)); }),
            "Not supported")
            << node;
}

TEST(ToolLibraryUrl, TheRootsHaveTheirTexts)
{
    struct Row {
        const char *url;
        const char *name;
    };
    const Row rows[] = {
        {"toollibraryroot://Local", "Local"},
        {"cloud://", "Cloud"},
        {"systemlibraryroot://Samples", "Quillon Library"},
        {"document://", "Documents"},
        {"systemlibraryroot://Samples/Milling Tools (Metric).json", "Milling Tools (Metric)"},
        {"hub://", "Hub Libraries"},
        {"vendor://", "Vendor"},
        {"hub://p/x.hub", "x"},
        {"toollibraryroot://Local/sub", "sub"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(text(url(row.url).libraryDisplayName()), row.name) << row.url;
}

TEST(ToolLibraryUrl, ASampleWithoutTranslationKeepsItsName)
{
    const ToolLibraryUrl sample = url("systemlibraryroot://Samples/My own.json");
    EXPECT_EQ(text(sample.localizedSampleLibraryName()), "My own");
    const TestSupport::Asserts asserts;
    EXPECT_EQ(text(sample.localizedSampleLibraryName()), "My own");
    EXPECT_THAT(asserts.messages(), ElementsAre("All sample libraries should be translated"));
}

TEST(ToolLibraryUrl, UnderThePlatformsTestSwitchAnySampleNameWillDo)
{
    const TestSupport::Asserts asserts;
    Ox::Test::TestMgr::setTesting(true);
    url("systemlibraryroot://Samples/My own.json").localizedSampleLibraryName();
    Ox::Test::TestMgr::setTesting(false);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolLibraryUrl, WhatIsNoSampleHasNoSampleName)
{
    const TestSupport::Asserts asserts;
    url("toollibraryroot://Local/Probes.json").localizedSampleLibraryName();
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:isSampleLibrary()"));
}

TEST(ToolLibraryUrl, HugeAndOddTextsAreFolderShapedOrUnknown)
{
    QString slashes(1 << 20, u'/');
    QString parts;
    for (int i = 0; i < 100000; ++i)
        parts += QStringLiteral("a/");
    for (const QString &text : {slashes, parts, QString(1 << 20, u'x'), QString(QChar(0)), QStringLiteral("://"),
                                QStringLiteral("a://b://c.json"), QString(QChar(0xD800))}) {
        const ToolLibraryUrl odd(text);
        EXPECT_EQ(odd.url(), text);
        EXPECT_TRUE(odd.isUnknown());
        odd.parentUrl();
        odd.libraryName();
    }
}
