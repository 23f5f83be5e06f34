// The operations of the interface that give whole libraries and pages.
#include "ToolLibrary/Interface/Private/ToolLibraryInterfaceImpl.h"
#include "support/Asserts.h"
#include "support/EngineTest.h"
#include "support/Failure.h"
#include "support/LibraryGenerator.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"
#include "ToolLibrary/Util/Tool3DGeometryMap.h"

#include <gmock/gmock.h>

#include <cstdio>

using namespace TestSupport;
using namespace Varn;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char *notYet = "NotSupportedError: Not yet supported";

class LibrariesOfTheInterface : public EngineTest<>
{
protected:
    std::string libraryOf(const ToolLibraryLocator &locator) { return m_engine.library(locator)->toJson(); }

    std::string failureOfLibrary(const ToolLibraryLocator &locator)
    {
        return failureOf([&] { m_engine.library(locator); });
    }
};

/// An interface whose pages a test writes, and which keeps the requests.
class EngineOfWrittenPages : public ToolLibraryInterfaceImpl
{
public:
    using ToolLibraryInterfaceImpl::ToolLibraryInterfaceImpl;

    std::unique_ptr<ToolPage> fetchTools(const ToolPageRequest &request) override
    {
        requests.push_back(request);
        return ToolPage::fromJson(page);
    }
    std::optional<const LibraryTool> findToolById(ToolLibraryLocator library, ToolId toolId) override
    {
        asked.push_back(library.url());
        return ToolLibraryInterfaceImpl::findToolById(library, toolId);
    }
    using ToolLibraryInterfaceImpl::findToolById;

    std::string page;
    std::vector<ToolPageRequest> requests;
    std::vector<std::wstring> asked;
};

using WrittenPages = EngineTest<EngineOfWrittenPages>;

/// An interface that may have changed what pages are, so that a library is made of them.
class DerivedEngine : public ToolLibraryInterfaceImpl
{
public:
    using ToolLibraryInterfaceImpl::ToolLibraryInterfaceImpl;
};

using EngineOfPages = EngineTest<DerivedEngine>;

std::string loadReport(const char *type, const char *extension, unsigned tools)
{
    return std::string(R"(LOAD_TOOL_LIBRARY {"extension":")") + extension +
           R"(","libraryDialogName":"TOOL_LIBRARY","numberOfTools":")" + std::to_string(tools) + R"(","type":")" +
           type + R"("})";
}

} // namespace

TEST_F(LibrariesOfTheInterface, ALibraryComesWholeInTheOrderOfItsGuids)
{
    m_cache->add(libraryUrl, R"({"x":1,"version":36,"data":[)" + toolText(3) + "," + toolText(1) + "," +
                                 toolText(2, R"("n":2,"d":2.5,"u":null,"t":"é🛠")") + "]}");
    const Asserts asserts;
    const auto library = m_engine.library(ToolLibraryLocator(libraryUrl));
    EXPECT_EQ(library->numberOfTools(), 3u);
    EXPECT_EQ(library->version(), 36);
    EXPECT_EQ(library->toJson(),
              libraryText({toolText(1), R"({"d":2.5,"guid":")" + guidOf(2) + R"(","n":2,"t":"é🛠","u":null})",
                           toolText(3)}));
    EXPECT_THAT(asserts.messages(), IsEmpty());
    EXPECT_THAT(m_reports, ElementsAre(loadReport("local", "json", 3)));
}

TEST_F(LibrariesOfTheInterface, ALibraryIsThePageOfAllItsTools)
{
    const std::string text = LibraryGenerator({QStringLiteral("--count"), QStringLiteral("200")}).text();
    m_cache->add(libraryUrl, text);
    const ToolLibraryLocator locator(libraryUrl);
    const QVariantMap page =
        JsonConvert::toQVariantMap(m_engine.fetchTools(ToolPageRequest({locator}, "[]", 200, 0, "", ""))->toJson());
    const QVariantMap library{
        {QStringLiteral("data"), page[QStringLiteral("data")].toMap()[QString::fromWCharArray(libraryUrl)]},
        {QStringLiteral("version"), page[QStringLiteral("version")]}};
    EXPECT_EQ(library[QStringLiteral("data")].toList().size(), 200);
    EXPECT_EQ(libraryOf(locator), JsonConvert::fromQVariantMap(library));
}

TEST_F(LibrariesOfTheInterface, AnEmptyLibraryComesAsAnEmptyList)
{
    m_cache->add(libraryUrl, R"({"data":[]})");
    EXPECT_EQ(libraryOf(ToolLibraryLocator(libraryUrl)), R"({"data":[],"version":36})");
    EXPECT_THAT(m_reports, ElementsAre(loadReport("local", "json", 0)));
}

TEST_F(LibrariesOfTheInterface, AFileOutsideOfTheTreeIsReadAnew)
{
    const ToolLibraryLocator file = looseFile(u"Fräser.json", libraryText({toolText(1)}));
    EXPECT_EQ(libraryOf(file), libraryText({toolText(1)}));
    looseFile(u"Fräser.json", libraryText({toolText(2)}));
    EXPECT_EQ(libraryOf(file), libraryText({toolText(2)}));
    EXPECT_THAT(m_reports, ElementsAre(loadReport("other", "json", 1), loadReport("other", "json", 1)));
    EXPECT_EQ(m_cache->loads(), 0);
}

TEST_F(LibrariesOfTheInterface, AFileWhoseNameIsNoUnicodeIsServed)
{
    // The file system gives a byte that is no UTF-8 as half of a surrogate pair.
    const std::wstring path = m_paths.loose(u"").toStdWString() + L"/a\xDCFF.json";
    const std::string bytes = m_paths.loose(u"").toStdString() + "/a\xFF.json";
    std::FILE *file = std::fopen(bytes.c_str(), "wb");
    ASSERT_TRUE(file);
    std::fputs(libraryText({toolText(1)}).c_str(), file);
    std::fclose(file);
    const Asserts asserts;
    EXPECT_EQ(libraryOf(ToolLibraryLocator::fromFilePath(path)), libraryText({toolText(1)}));
    EXPECT_THAT(asserts.messages(), IsEmpty());
    EXPECT_EQ(std::remove(bytes.c_str()), 0); // Qt, which removes the folder, does not see it
}

TEST_F(LibrariesOfTheInterface, ATextWithHalfASurrogatePairDoesNotCostTheLibrary)
{
    const ToolLibraryLocator file = looseFile(u"a.json", libraryText({toolText(1, R"("description":"a\udc00b")")}));
    const Asserts asserts;
    const std::string text = libraryOf(file);
    EXPECT_TRUE(JsonText::parse(text).has_value()) << "whatever became of the text, it must be Unicode";
    EXPECT_NE(text.find(guidOf(1)), std::string::npos);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(LibrariesOfTheInterface, TheDeepestLibraryIsServedWhole)
{
    const std::string text = libraryText({toolText(1, "\"x\":" + std::string(997, '[') + std::string(997, ']'))});
    const ToolLibraryLocator file = looseFile(u"a.json", text);
    const Asserts asserts;
    EXPECT_EQ(libraryOf(file), text);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(LibrariesOfTheInterface, OnlyTheLoadOfAFileThatIsNotOursIsReported)
{
    const auto load = [&](const wchar_t *url) {
        m_reports.clear();
        m_cache->add(url, libraryText({toolText(1), toolText(2)}));
        m_engine.library(ToolLibraryLocator(url));
        return m_reports;
    };
    EXPECT_THAT(load(L"toollibraryroot://Local/a.json"), ElementsAre(loadReport("local", "json", 2)));
    EXPECT_THAT(load(L"toollibraryroot://Local/a.tools"), ElementsAre(loadReport("local", "tools", 2)));
    EXPECT_THAT(load(L"toollibraryroot://Local/a.zetlib"), ElementsAre(loadReport("local", "zetlib", 2)));
    EXPECT_THAT(load(L"cloud://folder/a.json"), ElementsAre(loadReport("cloud", "json", 2)));
    EXPECT_THAT(load(L"custom://folder/a.json"), ElementsAre(loadReport("other", "json", 2)));
    EXPECT_THAT(load(L"hub://folder/a.hub"), ElementsAre(loadReport("other", "hub", 2)));
    EXPECT_THAT(load(L"systemlibraryroot://Samples/a.json"), IsEmpty());
    EXPECT_THAT(load(L"systemlibraryroot://a.json"), IsEmpty());
    m_reports.clear();
    m_engine.library(looseFile(u"a.tools", libraryText({})));
    m_engine.library(looseFile(u"a.dat", libraryText({})));
    m_engine.library(looseFile(u"b", libraryText({})));
    EXPECT_THAT(m_reports,
                ElementsAre(loadReport("other", "tools", 0), loadReport("other", "", 0), loadReport("other", "", 0)));
}

TEST_F(LibrariesOfTheInterface, ALoadThatFailedIsNotReported)
{
    m_cache->addBroken(libraryUrl, "torn");
    EXPECT_EQ(failureOfLibrary(ToolLibraryLocator(libraryUrl)), "LibraryFormatError: torn (translated)");
    EXPECT_EQ(failureOfLibrary(ToolLibraryLocator(L"toollibraryroot://Local")),
              "InvalidInput: Invalid library locator.");
    EXPECT_EQ(failureOfLibrary(ToolLibraryLocator(L"document://11111111-2222-4333-8444-000000000001")),
              "LibraryMissing: No document with the given URL is open.");
    const ToolLibraryLocator bad = looseFile(u"bad.json", "{");
    EXPECT_EQ(failureOfLibrary(bad),
              "LibraryFormatError: Failed to read or parse JSON file: " + m_paths.loose(u"bad.json").toStdString());
    EXPECT_THAT(m_reports, IsEmpty());
}

TEST_F(LibrariesOfTheInterface, ANewerLibraryComesUnderTheCurrentVersion)
{
    m_cache->add(libraryUrl, R"({"version":40,"data":[)" + toolText(1) + "]}");
    EXPECT_EQ(libraryOf(ToolLibraryLocator(libraryUrl)), libraryText({toolText(1)}));
}

TEST_F(LibrariesOfTheInterface, APageHoldsLibrariesOfTheTreeAndLooseFiles)
{
    m_cache->add(libraryUrl, libraryText({toolText(2), toolText(1)}));
    m_cache->addBroken(otherUrl, "torn");
    const ToolLibraryLocator loose = looseFile(u"c.json", libraryText({toolText(3)}));
    const ToolPageRequest request({ToolLibraryLocator(libraryUrl), ToolLibraryLocator(otherUrl), loose}, "[]", 2, 1, "",
                                  "");
    const Json::Value data = m_engine.fetchTools(request)->value()["data"];
    EXPECT_EQ(JsonText::print(data["toollibraryroot://Local/a.json"]), "[" + toolText(2) + "]");
    EXPECT_EQ(JsonText::print(data["toollibraryroot://Local/b.json"]),
              R"({"error":{"developerText":"torn","translatedText":"translated torn"}})");
    EXPECT_EQ(JsonText::print(data[m_paths.loose(u"c.json").toStdString()]), "[" + toolText(3) + "]");
    EXPECT_THAT(m_reports, IsEmpty());
}

TEST_F(LibrariesOfTheInterface, AnUncheckedPageDoesNotLookChecked)
{
    m_cache->add(libraryUrl, libraryText({toolText(1)}));
    const ToolPageRequest request({ToolLibraryLocator(libraryUrl)}, "", 1, 0, "", "");
    Options::setEnableToolValidation(true);
    EXPECT_EQ(failureOf([&] { m_engine.fetchTools(request); }), notYet);
    EXPECT_EQ(failureOfLibrary(ToolLibraryLocator(libraryUrl)), notYet);
    EXPECT_EQ(m_engine.getToolsFromLibrary(ToolLibraryLocator(libraryUrl)).size(), 1u) << "no page is made here";
    Options::setEnableToolValidation(false);
    EXPECT_EQ(failureOf([&] { m_engine.fetchTools(request); }), "none");
}

TEST_F(LibrariesOfTheInterface, ALoadIsReportedBeforeItsPageIsMade)
{
    m_cache->add(libraryUrl, libraryText({toolText(1)}));
    Options::setEnableToolValidation(true);
    EXPECT_EQ(failureOfLibrary(ToolLibraryLocator(libraryUrl)), notYet);
    EXPECT_THAT(m_reports, ElementsAre(loadReport("local", "json", 1)));
}

TEST_F(LibrariesOfTheInterface, TenThousandToolsAskTheCacheNoOftenerThanOne)
{
    std::vector<std::string> tools;
    for (unsigned number = 1; number <= 10000; ++number)
        tools.push_back(toolText(number));
    m_cache->add(libraryUrl, libraryText(tools));
    m_cache->add(otherUrl, libraryText({toolText(1)}));
    EXPECT_TRUE(libraryOf(ToolLibraryLocator(libraryUrl)) == libraryText(tools));
    const int forMany = m_cache->loads();
    libraryOf(ToolLibraryLocator(otherUrl));
    EXPECT_EQ(m_cache->loads(), 2 * forMany);
    EXPECT_EQ(m_engine.getToolsFromLibrary(ToolLibraryLocator(libraryUrl)).size(), 10000u);
    EXPECT_EQ(m_cache->loads(), 2 * forMany + 1);
}

TEST_F(WrittenPages, ALibraryIsOnePageOfTheInterface)
{
    m_cache->add(libraryUrl, libraryText({toolText(1), toolText(2)}));
    m_engine.page = R"({"data":{"toollibraryroot://Local/a.json":[{"a":1}],"other":[]},"version":12,"total":3})";
    const auto library = m_engine.library(ToolLibraryLocator(libraryUrl));
    EXPECT_EQ(library->toJson(), R"({"data":[{"a":1}],"version":12})");
    ASSERT_EQ(m_engine.requests.size(), 1u);
    const ToolPageRequest &request = m_engine.requests.front();
    EXPECT_THAT(request.libraryIds(), ElementsAre(ToolLibraryLocator(libraryUrl)));
    EXPECT_EQ(request.filtersState(), "[]");
    EXPECT_EQ(request.pageLimit(), 2);
    EXPECT_EQ(request.pageOffset(), 0);
    EXPECT_EQ(request.searchQuery(), "");
    EXPECT_EQ(request.sortState(), "");
}

TEST_F(WrittenPages, APageWithoutAVersionIsOfTheCurrentOne)
{
    m_cache->add(libraryUrl, R"({"data":[]})");
    m_engine.page = R"({"data":{"toollibraryroot://Local/a.json":[]}})";
    EXPECT_EQ(m_engine.library(ToolLibraryLocator(libraryUrl))->toJson(), R"({"data":[],"version":36})");
}

TEST_F(WrittenPages, APageWithoutTheLibraryIsAProgrammingErrorAndGivesNoTools)
{
    m_cache->add(libraryUrl, R"({"data":[]})");
    m_engine.page = R"({"data":{"toollibraryroot://Local/b.json":[{}]},"version":36})";
    const ToolLibraryLocator library(libraryUrl);
    EXPECT_EQ(m_engine.library(library)->toJson(), R"({"data":[],"version":36})");
    const Asserts asserts;
    EXPECT_EQ(m_engine.library(library)->numberOfTools(), 0u);
    EXPECT_THAT(asserts.messages(), ElementsAre("Tool page should contain library url"));
}

TEST_F(WrittenPages, ALibraryThatBrokeMeanwhileIsAFailureAndNotEmpty)
{
    m_cache->add(libraryUrl, libraryText({toolText(1)}));
    m_engine.page = R"({"data":{"toollibraryroot://Local/a.json":{"error":{"developerText":"torn"}}},"version":36})";
    EXPECT_EQ(failureOf([&] { m_engine.library(ToolLibraryLocator(libraryUrl)); }), "LibraryLoadError: torn");
}

TEST_F(EngineOfPages, AFileThatVanishesBetweenTwoLooksIsAFailure)
{
    bool there = true;
    const auto library = RapidjsonToolLibrary::fromString(libraryText({toolText(1)}), AbortableImpl());
    m_cache->add(libraryUrl, [&]() -> std::shared_ptr<DiskLibrary> {
        if (!std::exchange(there, false))
            throw LibraryFormatError("gone", L"translated");
        return library;
    });
    EXPECT_EQ(failureOf([&] { m_engine.library(ToolLibraryLocator(libraryUrl)); }),
              "LibraryLoadError: gone (translated)");
}

TEST_F(EngineOfPages, ALibraryIsTheSameByWayOfPages)
{
    m_cache->add(libraryUrl, libraryText({toolText(3), toolText(1), toolText(2, R"("d":2.5)")}));
    const auto library = m_engine.library(ToolLibraryLocator(libraryUrl));
    EXPECT_EQ(library->toJson(), libraryText({toolText(1), R"({"d":2.5,"guid":")" + guidOf(2) + R"("})", toolText(3)}));
    EXPECT_EQ(library->numberOfTools(), 3u);
}

TEST_F(WrittenPages, ASearchThroughAllLibrariesAsksTheInterfaceForEachOne)
{
    m_cache->add(libraryUrl, R"({"data":[]})");
    m_cache->add(otherUrl, libraryText({toolText(1)}));
    EXPECT_TRUE(m_engine.findToolById(idOf(1)).has_value());
    EXPECT_THAT(m_engine.asked, ElementsAre(libraryUrl, otherUrl));
}

TEST_F(LibrariesOfTheInterface, TheSolidsBesideALibraryAreKnownOnceItIsOpened)
{
    using Map = Tool3DGeometryMap;
    m_cache->add(libraryUrl, libraryText({toolText(1)}));
    writeFile(m_paths.local(u"Local/solid-1.3DTool"), "unread");
    EXPECT_FALSE(Map::has(L"solid-1"));
    m_engine.library(ToolLibraryLocator(libraryUrl));
    ASSERT_TRUE(Map::has(L"solid-1"));
    EXPECT_THAT(Map::getLocations(L"solid-1"), ElementsAre(Tools::ToolLibraryUrl(ToolLibraryLocator(libraryUrl))));
    Map::syncLibraries({});
}
