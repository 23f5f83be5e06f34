#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/FileContent.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "ToolLibrary/CamDocuments.h"
#include "ToolLibrary/IO/ZipToolFormat.h"
#include "platform/core/FeatureFlag.h"
#include "platform/core/VarnDocument.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"

#include <gmock/gmock.h>

#include <thread>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::AbortableImpl;
using Varn::VarnDocument;

namespace {

constexpr const char *invalidLocator = "InvalidInput: Invalid library locator.";
constexpr const char *unsupportedFormat = "InvalidInput: Unsupported format.";
constexpr const char *notYet = "NotSupportedError: Not yet supported";
constexpr const char *notOpen = "LibraryMissing: No document with the given URL is open.";

ToolLibraryLocator pathOf(const QString &path)
{
    return ToolLibraryLocator::fromFilePath(path.toStdWString());
}

std::string failureOfLoad(const ToolLibraryLocator &locator)
{
    return failureOf([&] { ToolSourceLoader::load(locator, AbortableImpl()); });
}

std::string failureOfDirectLoad(const ToolLibraryLocator &locator)
{
    return failureOf([&] { ToolSourceLoader::loadFromNonDocument(locator, AbortableImpl()); });
}

std::string unreadable(const QString &path)
{
    return "LibraryFormatError: Failed to read or parse JSON file: " + path.toStdString();
}

void putArchive(const QString &path, const std::vector<std::pair<QString, std::string>> &entries)
{
    QDir().mkpath(path.section(u'/', 0, -2));
    Varn::Tools::ZipToolFormat archive(path);
    archive.create();
    for (const auto &[name, content] : entries)
        EXPECT_TRUE(archive.addFile(name, QByteArray::fromStdString(content)));
    EXPECT_TRUE(archive.write());
}

/// Counts how often it is asked.
class CountingAbortable : public AbortableImpl
{
public:
    bool isAborted() const override { return ++m_questions, AbortableImpl::isAborted(); }
    long questions() const { return m_questions; }

private:
    mutable std::atomic<long> m_questions{0};
};

} // namespace

TEST(ToolSourceLoader, ReadsALibraryFileUnderEveryName)
{
    const TestPaths paths;
    const char16_t *const names[] = {
        u"a.json", u"a.JSON", u"a.tools",      u"a.Tools",           u"a.zetlib",
        u"a.txt",  u"a.dat",  u"a.holderstxt", u"a.other",           u"a",
        u"a.hub",  u".json",  u"a.json.",      u"Fräser 🛠.json", u"a b%20c.json",
    };
    for (const char16_t *const name : names) {
        const QString path = paths.loose(name);
        writeFile(path, libraryText({toolText(1)}));
        EXPECT_EQ(ToolSourceLoader::load(pathOf(path), AbortableImpl())->toJson(), libraryText({toolText(1)}))
            << path.toStdString();
        EXPECT_EQ(ToolSourceLoader::loadFromNonDocument(pathOf(path), AbortableImpl())->numberOfTools(), 1u);
    }
}

TEST(ToolSourceLoader, ReadsALibraryOfTheTree)
{
    const TestPaths paths;
    writeFile(paths.local(u"Local/a.json"), libraryText({toolText(1)}));
    writeFile(paths.local(u"Local/b.tools"), libraryText({toolText(2)}));
    writeFile(paths.local(u"Local/c.zetlib"), libraryText({toolText(3)}));
    writeFile(paths.system(u"Samples/d.json"), libraryText({toolText(4)}));
    writeFile(paths.cloud(u"e/f.json"), libraryText({toolText(5)}));
    const std::pair<const wchar_t *, unsigned> rows[] = {
        {L"toollibraryroot://Local/a.json", 1},
        {L"toollibraryroot://Local/b.tools", 2},
        {L"toollibraryroot://Local/c.zetlib", 3},
        {L"systemlibraryroot://Samples/d.json", 4},
        {L"cloud://e/f.json", 5},
    };
    for (const auto &[url, number] : rows) {
        const auto source = ToolSourceLoader::load(ToolLibraryLocator(url), AbortableImpl());
        EXPECT_THAT(source->getToolIds(), ElementsAre(ToolId(guidOf(number))));
    }
}

TEST(ToolSourceLoader, RefusesWhatNamesNoLibraryBeforeItLooksAtTheDisk)
{
    const TestPaths paths;
    QDir().mkpath(paths.local(u"Local/folder"));
    const wchar_t *const urls[] = {
        L"",
        L"all://",
        L"document://",
        L"toollibraryroot://Local",
        L"toollibraryroot://Local/folder",
        L"toollibraryroot://Local/a.JSON",
        L"toollibraryroot://Local/a.csv",
        L"toollibraryroot://Local/a.tsv",
        L"systemlibraryroot://Samples",
        L"cloud://",
        L"cloud://folder",
        L"hub://",
        L"hub://folder",
        L"hub://folder/a.hub",
        L"hub://folder/a.json",
        L"http://example.com/a.json",
        L"https://example.com/a.json",
        L"nothing://a.json",
        L"/tmp/a.json", // a path that is said to be a URL
        L"a.json",
    };
    for (const wchar_t *const url : urls) {
        const std::string name = QString::fromWCharArray(url).toStdString();
        EXPECT_EQ(failureOfLoad(ToolLibraryLocator(url)), invalidLocator) << name;
        EXPECT_EQ(failureOfDirectLoad(ToolLibraryLocator(url)), invalidLocator) << name;
    }
}

TEST(ToolSourceLoader, AVendorLibraryHasNoFile)
{
    EXPECT_EQ(failureOfLoad(ToolLibraryLocator(L"vendor://a/b.json")), "Exception: Not implemented");
}

TEST(ToolSourceLoader, RefusesTheFormatsThatHaveNoReader)
{
    const TestPaths paths;
    const std::pair<const char16_t *, const char *> rows[] = {
        {u"a.tsv", unsupportedFormat},
        {u"a.TSV", unsupportedFormat},
        {u"a.csv", notYet},
        {u"a.CSV", notYet},
        {u"a.zip", notYet},
        {u"a.Zip", notYet},
    };
    for (const auto &[name, failure] : rows) {
        const QString path = paths.loose(name);
        EXPECT_EQ(failureOfLoad(pathOf(path)), failure) << path.toStdString();
        writeFile(path, libraryText({toolText(1)})); // whatever is in it
        EXPECT_EQ(failureOfLoad(pathOf(path)), failure) << path.toStdString();
        EXPECT_EQ(failureOfDirectLoad(pathOf(path)), failure) << path.toStdString();
    }
}

TEST(ToolSourceLoader, NamesTheFileThatItCouldNotRead)
{
    const TestPaths paths;
    QDir().mkpath(paths.loose(u"folder.json"));
    const std::string archive = std::string("PK\x03\x04", 4) + std::string(60, '\0');
    const std::pair<const char16_t *, std::string> rows[] = {
        {u"empty.json", ""},
        {u"text.json", "no JSON"},
        {u"cut.json", R"({"data":[)"},
        {u"Fräser 🛠.json", "{"},
        {u"archive.tools", archive},
        {u"text.tools", "no JSON"},
        {u"other", "x"},
        {u"other.xyz", archive},
        {u"a.hub", "x"},
    };
    for (const auto &[name, content] : rows) {
        const QString path = paths.loose(name);
        EXPECT_EQ(failureOfLoad(pathOf(path)), unreadable(path)) << "a file that is not there";
        writeFile(path, content);
        EXPECT_EQ(failureOfLoad(pathOf(path)), unreadable(path));
    }
    EXPECT_EQ(failureOfLoad(pathOf(paths.loose(u"folder.json"))), unreadable(paths.loose(u"folder.json")));
    EXPECT_EQ(failureOfLoad(pathOf(paths.loose(u"missing/a.json"))), unreadable(paths.loose(u"missing/a.json")));
    EXPECT_EQ(failureOfLoad(pathOf(QString())), unreadable(QString()));
    EXPECT_EQ(failureOfLoad(ToolLibraryLocator(L"toollibraryroot://Local/a.json")),
              unreadable(paths.local(u"Local/a.json")));
}

TEST(ToolSourceLoader, AFileOfAnotherProgramIsNotCalledBroken)
{
    const TestPaths paths;
    for (const char16_t *const name : {u"a.zetlib", u"a.holderstxt", u"a.txt", u"a.DAT"}) {
        const QString path = paths.loose(name);
        EXPECT_EQ(failureOfLoad(pathOf(path)), unreadable(path)) << "it is not there";
        writeFile(path, "T1 D6");
        EXPECT_EQ(failureOfLoad(pathOf(path)), notYet) << path.toStdString();
        AbortableImpl aborted;
        aborted.abort();
        EXPECT_EQ(failureOf([&] { ToolSourceLoader::load(pathOf(path), aborted); }), unreadable(path));
    }
    QDir().mkpath(paths.loose(u"folder.txt"));
    EXPECT_EQ(failureOfLoad(pathOf(paths.loose(u"folder.txt"))), unreadable(paths.loose(u"folder.txt")));
    writeFile(paths.local(u"Local/a.zetlib"), "<xml/>");
    EXPECT_EQ(failureOfLoad(ToolLibraryLocator(L"toollibraryroot://Local/a.zetlib")), notYet);
}

TEST(ToolSourceLoader, APackageIsRefusedByItsSwitchFirst)
{
    const TestPaths paths;
    Varn::FeatureFlag::setEnabled("tool-gtc-import", false);
    EXPECT_EQ(failureOfLoad(pathOf(paths.loose(u"a.zip"))),
              "UnknownError: tool-gtc-import Feature Flag is not enabled.");
    Varn::FeatureFlag::reset();
    putArchive(paths.loose(u"a.zip"), {{"tools.json", libraryText({toolText(1)})}});
    EXPECT_EQ(failureOfLoad(pathOf(paths.loose(u"a.zip"))), notYet) << "never a library";
}

TEST(ToolSourceLoader, ReadsTheDocumentInAnArchive)
{
    const TestPaths paths;
    const std::string text = libraryText({toolText(1), toolText(2)});
    for (const QString &path :
         {paths.loose(u"a.tools"), paths.loose(u"Fr\u00e4ser \U0001F6E0.TOOLS"), paths.local(u"Local/b.tools")}) {
        putArchive(path, {{"1.3DTool", "solid"}, {"tools.json", text}});
        EXPECT_EQ(ToolSourceLoader::load(pathOf(path), AbortableImpl())->toJson(), text) << path.toStdString();
    }
    EXPECT_EQ(ToolSourceLoader::load(ToolLibraryLocator(L"toollibraryroot://Local/b.tools"), AbortableImpl())->toJson(),
              text);
    putArchive(paths.loose(u"mark.tools"), {{"tools.json", "\xEF\xBB\xBF" + text}});
    EXPECT_EQ(ToolSourceLoader::load(pathOf(paths.loose(u"mark.tools")), AbortableImpl())->numberOfTools(), 2u);
}

TEST(ToolSourceLoader, AnArchiveUnderANameThatIsNoUtf8IsRead)
{
    const TestPaths paths;
    const QString good = paths.loose(u"a.tools");
    putArchive(good, {{"tools.json", libraryText({toolText(1)})}});
    const std::wstring odd = paths.loose(u"byte ").toStdWString() + static_cast<wchar_t>(0xDCFF) + L".tools";
    std::filesystem::rename(good.toStdString(), Varn::FileSystem::toPath(odd));
    EXPECT_EQ(ToolSourceLoader::load(ToolLibraryLocator::fromFilePath(odd), AbortableImpl())->numberOfTools(), 1u);
    const Varn::Tools::ToolLibraryUrl url(QString::fromStdWString(odd), Varn::Tools::ToolLibraryUrl::Custom);
    EXPECT_EQ(ToolSourceLoader::load(url, AbortableImpl())->numberOfTools(), 1u);
    EXPECT_FALSE(Varn::FileSystem::remove(odd)); // the temporary folder does not find every name
}

TEST(ToolSourceLoader, AnArchiveThatHoldsNoDocumentIsTriedAsOne)
{
    const TestPaths paths;
    const std::string document = libraryText({toolText(1)});
    const QString path = paths.loose(u"a.tools");
    putArchive(path, {});
    EXPECT_EQ(failureOfLoad(pathOf(path)), unreadable(path));
    for (const char *name : {"Tools.json", "tools.JSON", "folder/tools.json", "tools.json.txt"}) {
        putArchive(path, {{name, document}});
        EXPECT_EQ(failureOfLoad(pathOf(path)), unreadable(path)) << name;
    }
    putArchive(path, {{"tools.json", document}, {"tools.jsom", document}});
    std::string twice = contentOf(path);
    for (std::size_t at = 0; (at = twice.find("tools.jsom", at)) != std::string::npos;)
        twice.replace(at, 10, "tools.json");
    writeFile(path, twice);
    EXPECT_EQ(failureOfLoad(pathOf(path)), unreadable(path)) << "which of the two?";
    putArchive(path, {{"tools.json", document}});
    std::string damaged = contentOf(path);
    damaged[damaged.find("tools.json") + 12] ^= 0x10;
    writeFile(path, damaged);
    EXPECT_EQ(failureOfLoad(pathOf(path)), unreadable(path)) << "damaged";
}

TEST(ToolSourceLoader, ADocumentInAnArchiveThatIsBadTextSaysSo)
{
    const TestPaths paths;
    const QString path = paths.loose(u"\u00fc.tools");
    const std::string failure = "LibraryFormatError: Failed to parse JSON from tools.json: " + path.toStdString();
    for (const std::string &text : {std::string(), std::string("no JSON"), std::string(R"({"data":[)")}) {
        putArchive(path, {{"tools.json", text}});
        EXPECT_EQ(failureOfLoad(pathOf(path)), failure) << text;
    }
    putArchive(path, {{"tools.json", R"({"data":7})"}});
    EXPECT_EQ(failureOfLoad(pathOf(path)), "LibraryFormatError: Data member must be an array");
}

TEST(ToolSourceLoader, AnAbortEndsTheReadOfAnArchive)
{
    const TestPaths paths;
    const QString path = paths.loose(u"a.tools");
    putArchive(path, {{"tools.json", libraryText({toolText(1)})}});
    AbortableImpl aborted;
    aborted.abort();
    EXPECT_EQ(failureOf([&] { ToolSourceLoader::load(pathOf(path), aborted); }), unreadable(path));
    const CountingAbortable counting;
    ToolSourceLoader::load(pathOf(path), counting);
    EXPECT_GT(counting.questions(), 2) << "asked for the blocks and for the objects";
}

TEST(ToolSourceLoader, PassesOnWhatTheLibrarySays)
{
    const TestPaths paths;
    const std::pair<std::string, std::string> rows[] = {
        {"[]", "LibraryFormatError: JSON tool library should be an object"},
        {"{}", "LibraryFormatError: JSON tool library has no data"},
        {R"({"data":[7]})", "LibraryFormatError: JSON tool data format is invalid"},
        {libraryText({toolText(1, R"("unit":"mm")")}),
         "LibraryFormatError: Tool 'unit' must be 'millimeters' or 'inches'"},
        {R"({"data":[)" + toolText(1) + "]}",
         "NotSupportedError: Tools of format version 1 cannot be migrated to version 36 yet"},
    };
    for (const auto &[text, failure] : rows) {
        writeFile(paths.loose(u"a.json"), text);
        EXPECT_EQ(failureOfLoad(pathOf(paths.loose(u"a.json"))), failure);
    }
}

TEST(ToolSourceLoader, ReadsAFileAnewEachTime)
{
    const TestPaths paths;
    const QString path = paths.loose(u"a.json");
    writeFile(path, libraryText({toolText(1)}));
    const auto first = ToolSourceLoader::load(pathOf(path), AbortableImpl());
    writeFile(path, libraryText({toolText(2), toolText(3)}));
    const auto second = ToolSourceLoader::load(pathOf(path), AbortableImpl());
    EXPECT_EQ(first->numberOfTools(), 1u);
    EXPECT_EQ(second->numberOfTools(), 2u);
}

TEST(ToolSourceLoader, ADocumentHasToBeOpen)
{
    const auto closed = VarnDocument::create(L"Closed");
    closed->close();
    const std::wstring url = ToolLibraryLocator(Varn::Tools::CamDocuments::urlOf(*closed)).url();
    for (const std::wstring &text :
         {url, url + L"/Setup 1", std::wstring(L"document://nothing"), std::wstring(L"document://nothing/Setup 1"),
          std::wstring(L"document://00000000-0000-0000-0000-000000000000")})
        EXPECT_EQ(failureOfLoad(ToolLibraryLocator(text)), notOpen) << QString::fromStdWString(text).toStdString();
}

TEST(ToolSourceLoader, AnOpenDocumentIsNotReadYet)
{
    const auto document = VarnDocument::create(L"Bracket");
    const std::wstring url = ToolLibraryLocator(Varn::Tools::CamDocuments::urlOf(*document)).url();
    EXPECT_EQ(failureOfLoad(ToolLibraryLocator(url)), notYet);
    EXPECT_EQ(failureOfLoad(ToolLibraryLocator(url + L"/Setup 1")), notYet);
    AbortableImpl aborted;
    aborted.abort();
    EXPECT_EQ(failureOf([&] { ToolSourceLoader::load(ToolLibraryLocator(url), aborted); }), notYet)
        << "a document cannot be aborted";
}

TEST(ToolSourceLoader, ADocumentIsNoMatterOfTheLoadOfFiles)
{
    const auto document = VarnDocument::create(L"Bracket");
    const ToolLibraryLocator locator = Varn::Tools::CamDocuments::urlOf(*document);
    EXPECT_EQ(failureOfDirectLoad(locator), unreadable(QString::fromStdString(document->guid().asString())));
    const Asserts asserts;
    failureOfDirectLoad(locator);
    EXPECT_THAT(asserts.messages(), testing::Contains("EXPECTS:!locator.isDocument()"));
}

TEST(ToolSourceLoader, NothingIsAssertedOfAnyFile)
{
    const TestPaths paths;
    const Asserts asserts;
    for (const char16_t *const name :
         {u"a.json", u"a.tools", u"a.tsv", u"a.csv", u"a.zip", u"a.zetlib", u"a.txt", u"a.other", u"a"}) {
        failureOfLoad(pathOf(paths.loose(name)));
        writeFile(paths.loose(name), libraryText({toolText(1)}));
        failureOfLoad(pathOf(paths.loose(name)));
    }
    failureOfLoad(ToolLibraryLocator(L"toollibraryroot://Local/a.json"));
    failureOfLoad(ToolLibraryLocator(L"hub://folder/a.hub"));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ToolSourceLoader, AnAbortedLoadIsAnUnreadableFile)
{
    const TestPaths paths;
    const QString path = paths.loose(u"a.json");
    writeFile(path, libraryText({toolText(1)}));
    AbortableImpl aborted;
    aborted.abort();
    EXPECT_EQ(failureOf([&] { ToolSourceLoader::load(pathOf(path), aborted); }), unreadable(path));
    EXPECT_EQ(failureOf([&] { ToolSourceLoader::loadFromNonDocument(pathOf(path), aborted); }), unreadable(path));
    writeFile(path, "[1,2]");
    EXPECT_EQ(failureOf([&] { ToolSourceLoader::load(pathOf(path), aborted); }),
              "LibraryFormatError: JSON tool library should be an object")
        << "a text without objects is not stopped";
}

TEST(ToolSourceLoader, AsksTheAbortableOnceForEachObject)
{
    const TestPaths paths;
    const QString path = paths.loose(u"a.json");
    for (const unsigned size : {0u, 1u, 100u, 1000u, 10000u}) {
        std::vector<std::string> tools;
        for (unsigned number = 1; number <= size; ++number)
            tools.push_back(toolText(number, R"("geometry":{"DC":6})"));
        writeFile(path, libraryText(tools));
        const CountingAbortable abortable;
        EXPECT_EQ(ToolSourceLoader::load(pathOf(path), abortable)->numberOfTools(), size);
        EXPECT_EQ(abortable.questions(), 1 + 2 * long(size));
    }
}

TEST(ToolSourceLoader, ManyThreadsMayLoadAtOnce)
{
    const TestPaths paths;
    writeFile(paths.loose(u"a.json"), libraryText({toolText(1), toolText(2)}));
    writeFile(paths.loose(u"bad.json"), "{");
    std::atomic<int> good{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 10; ++round) {
                good += int(ToolSourceLoader::load(pathOf(paths.loose(u"a.json")), AbortableImpl())->numberOfTools());
                good += failureOfLoad(pathOf(paths.loose(u"bad.json"))) == "none" ? 1000 : 0;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(good, 4 * 10 * 2);
}
