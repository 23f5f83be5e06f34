#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/LibraryFile.h"

#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "platform/utils/Abortable.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <algorithm>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Library = std::shared_ptr<RapidjsonToolLibrary>;

constexpr const char *unparsed = "LibraryFormatError: Failed to parse library JSON";
constexpr const char *noObject = "LibraryFormatError: JSON tool library should be an object";
constexpr const char *noData = "LibraryFormatError: JSON tool library has no data";
constexpr const char *noArray = "LibraryFormatError: Data member must be an array";
constexpr const char *noTool = "LibraryFormatError: JSON tool data format is invalid";

Library load(const std::string &text)
{
    return RapidjsonToolLibrary::fromString(text, Varn::AbortableImpl());
}

std::string loadFailure(const std::string &text)
{
    return failureOf([&] { load(text); });
}

std::string notMigrated(int version)
{
    return "NotSupportedError: Tools of format version " + std::to_string(version) +
           " cannot be migrated to version 36 yet";
}

std::vector<std::string> textsOf(const ToolSource &source)
{
    std::vector<std::string> texts;
    for (auto at = source.begin(); at != source.end(); ++at)
        texts.push_back((*at)->toJson());
    return texts;
}

/// Reaches what only libraries themselves may call.
struct InsideDiskLibrary : DiskLibrary {
    static auto sanitiseOperation() { return &InsideDiskLibrary::sanitise; }
};

void sanitise(DiskLibrary &library)
{
    (library.*InsideDiskLibrary::sanitiseOperation())();
}

class Aborted : public Varn::Abortable
{
public:
    bool isAborted() const override { return ++m_questions > m_patience; }
    void abort() override { m_patience = 0; }
    int questions() const { return m_questions; }
    explicit Aborted(int patience = 0) : m_patience(patience) {}

private:
    int m_patience;
    mutable int m_questions = 0;
};

} // namespace

TEST(RapidjsonToolLibraryLoad, RefusesWhatIsNoLibrary)
{
    struct Row {
        const char *text;
        const char *failure;
    };
    const Row rows[] = {
        {R"([])", noObject},
        {R"([{"data":[]}])", noObject},
        {R"(1)", noObject},
        {R"("data")", noObject},
        {R"(null)", noObject},
        {R"(true)", noObject},
        {R"({})", noData},
        {R"({"Data":[]})", noData},
        {R"({"version":36})", noData},
        {R"({"x":{"data":[]}})", noData},
        {R"({"data":null})", noArray},
        {R"({"data":{}})", noArray},
        {R"({"data":"[]","version":1})", noArray},
        {R"({"data":7})", noArray},
        {R"({"data":[1],"version":36})", noTool},
        {R"({"data":[null],"version":36})", noTool},
        {R"({"data":[[]],"version":36})", noTool},
        {R"({"data":["x"],"version":36})", noTool},
        {R"({"data":[{},{},7],"version":36})", noTool},
        {R"({"data":[{"guid":"11111111-2222-4333-8444-000000000001"},false],"version":36})", noTool},
        {R"({"data":[3],"version":1})", noTool}, // told before the version is looked at
    };
    for (const Row &row : rows)
        EXPECT_EQ(loadFailure(row.text), row.failure) << row.text;
}

TEST(RapidjsonToolLibraryLoad, RefusesWhatIsNoJson)
{
    const std::string rows[] = {
        "",
        " ",
        "{",
        "nonsense",
        R"({"data":[],})",
        R"({"data":[],"version":36}})",
        R"({"data":[]} x)",
        R"({"data":[{"x":NaN}]})",
        R"({"data":[{"x":Infinity}]})",
        R"({"data":[{"x":'a'}]})",
        R"({"data":[/* none */]})",
        R"({data:[]})",
        R"({"data":[{"x":01}]})",
        R"({"data":[{"x":1e400}]})",
        "{\"data\":[{\"x\":\"line\nend\"}]}",
        R"({"data":[{"x":"\x"}]})",
        R"({"data":[{"x":"\ud800"}]})",
        R"({"data":[],"deep":)" + std::string(1000, '[') + std::string(1000, ']') + "}",
        std::string(1000000, '['),
        std::string(100000, '{'),
        std::string("\xFF\xFE{\0}\0", 6), // a text of another encoding is for the reader of files
    };
    for (const std::string &row : rows)
        EXPECT_EQ(loadFailure(row), unparsed) << row.substr(0, 60);
}

TEST(RapidjsonToolLibraryLoad, ReadsAQJsonDocument)
{
    const QJsonObject tool{{"guid", QString::fromStdString(guidOf(1))}, {"n", 1.5}};
    const QJsonDocument document(QJsonObject{{"data", QJsonArray{tool}}, {"version", 36}});
    const Library library = RapidjsonToolLibrary::fromDocument(document, Varn::AbortableImpl());
    EXPECT_EQ(library->toJson(), libraryText({toolText(1, R"("n":1.5)")}));
}

TEST(RapidjsonToolLibraryLoad, RefusesAQJsonDocumentAsItDoesAText)
{
    const auto failure = [](const QJsonDocument &document) {
        return failureOf([&] { RapidjsonToolLibrary::fromDocument(document, Varn::AbortableImpl()); });
    };
    EXPECT_EQ(failure(QJsonDocument()), unparsed);
    EXPECT_EQ(failure(QJsonDocument(QJsonArray())), noObject);
    EXPECT_EQ(failure(QJsonDocument(QJsonObject())), noData);
    EXPECT_EQ(failureOf([] {
                  RapidjsonToolLibrary::fromDocument(QJsonDocument(QJsonObject{{"data", QJsonArray()}}), Aborted());
              }),
              unparsed);
}

TEST(RapidjsonToolLibraryLoad, AnAbortEndsTheReadingAtTheEndOfAnObject)
{
    const std::string text = libraryText({toolText(1, R"("a":{},"b":[{},{}])"), toolText(2)});
    const Aborted counter(1000);
    EXPECT_EQ(RapidjsonToolLibrary::fromString(text, counter)->numberOfTools(), 2u);
    EXPECT_EQ(counter.questions(), 6) << "once for each object, and for nothing else";
    for (int patience = 0; patience < 6; ++patience) {
        const Aborted aborted(patience);
        EXPECT_EQ(failureOf([&] { RapidjsonToolLibrary::fromString(text, aborted); }), unparsed);
        EXPECT_EQ(aborted.questions(), patience + 1);
    }
    EXPECT_EQ(failureOf([&] { RapidjsonToolLibrary::fromString("[1,2]", Aborted()); }), noObject)
        << "a text without objects is not stopped";
}

TEST(RapidjsonToolLibraryLoad, TakesADocumentOver)
{
    rapidjson::Document document;
    document.Parse(libraryText({toolText(1)}).c_str());
    const RapidjsonToolLibrary library(std::move(document));
    EXPECT_EQ(library.toJson(), libraryText({toolText(1)}));
}

TEST(RapidjsonToolLibraryLoad, AnEmptyListIsALibrary)
{
    const Library library = load(R"({"data":[]})");
    EXPECT_EQ(library->numberOfTools(), 0u);
    EXPECT_EQ(library->getVersion(), 36);
    EXPECT_EQ(library->toJson(), R"({"data":[],"version":36})");
    EXPECT_THAT(library->getToolIds(), IsEmpty());
    EXPECT_TRUE(library->begin() == library->end());
}

TEST(RapidjsonToolLibraryLoad, SkipsAByteOrderMark)
{
    EXPECT_EQ(load("\xEF\xBB\xBF" + libraryText({toolText(1)}))->numberOfTools(), 1u);
}

TEST(RapidjsonToolLibraryLoad, ServesTheDeepestTextThatItTakes)
{
    // The root, the list and the tool are three of the 1,000 levels.
    const std::string deep = std::string(997, '[') + std::string(997, ']');
    const std::string text = libraryText({toolText(1, "\"x\":" + deep)});
    const Library library = load(text);
    EXPECT_EQ(library->toJson(), text);
    EXPECT_EQ((*library->get(ToolId(guidOf(1))))->toJson(), toolText(1, "\"x\":" + deep));
    EXPECT_EQ((*library->begin())->getToolValue()["x"].size(), 1u);
    EXPECT_EQ(library->toQVariantMap()["data"].toList().size(), 1);
    const std::unique_ptr<const Tool> tool = (*library->begin())->clone();
    EXPECT_TRUE(library->updateTool(ToolId(guidOf(1)), *tool).has_value());
    EXPECT_EQ(loadFailure(libraryText({toolText(1, "\"x\":[" + deep + "]")})), unparsed);
}

TEST(RapidjsonToolLibraryLoad, OfToolsWithOneGuidTheFirstStays)
{
    const Library library = load(libraryText({toolText(2, R"("n":1)"), toolText(1, R"("n":2)"), toolText(2, R"("n":3)"),
                                              toolText(3, R"("n":4)"), toolText(1, R"("n":5)")}));
    EXPECT_THAT(textsOf(*library),
                ElementsAre(toolText(2, R"("n":1)"), toolText(1, R"("n":2)"), toolText(3, R"("n":4)")));
    EXPECT_EQ((*library->get(ToolId(guidOf(3))))->toJson(), toolText(3, R"("n":4)"));
}

TEST(RapidjsonToolLibraryLoad, OneGuidInTwoNotationsIsOneGuid)
{
    const Library library = load(R"({"version":36,"data":[
        {"guid":"abcdef01-2222-4333-8444-000000000001","n":1},
        {"guid":"ABCDEF01-2222-4333-8444-000000000001","n":2},
        {"guid":"{abcdef01-2222-4333-8444-000000000001}","n":3}]})");
    EXPECT_THAT(textsOf(*library), ElementsAre(R"({"guid":"abcdef01-2222-4333-8444-000000000001","n":1})"));
}

TEST(RapidjsonToolLibraryLoad, AToolWithoutAUsableGuidDisappears)
{
    const char *const tools[] = {
        R"({})",
        R"({"GUID":"11111111-2222-4333-8444-000000000001"})",
        R"({"guid":null})",
        R"({"guid":7})",
        R"({"guid":true})",
        R"({"guid":["11111111-2222-4333-8444-000000000001"]})",
        R"({"guid":{"guid":"11111111-2222-4333-8444-000000000001"}})",
        R"({"guid":""})",
        R"({"guid":"not a guid"})",
        R"({"guid":"11111111-2222-4333-8444-00000000000"})",
        R"({"guid":"11111111222243338444000000000001"})",
        R"({"guid":" 11111111-2222-4333-8444-000000000001"})",
        R"({"guid":"11111111-2222-4333-8444-00000000000g"})",
        R"({"guid":"11111111-2222-4333-8444-00000000000\u0000"})",
        R"({"guid":"１1111111-2222-4333-8444-000000000001"})",
        R"({"guid":"00000000-0000-0000-0000-000000000000"})",
        R"({"guid":"{00000000-0000-0000-0000-000000000000}"})",
        R"({"guid":"bad","guid":"11111111-2222-4333-8444-000000000001"})", // the first counts
    };
    const Asserts asserts;
    for (const std::string tool : tools)
        EXPECT_EQ(load(libraryText({tool, toolText(9), tool}))->toJson(), libraryText({toolText(9)})) << tool;
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(RapidjsonToolLibraryLoad, AGuidIsReadAsQUuidReadsIt)
{
    const std::string good = guidOf(1);
    const std::string rows[] = {
        good,
        "{" + good + "}",
        "{" + good,
        good + "}",
        good + " and more",
        "{" + good + "} and more",
        good + "é",
        "é" + good,
        good.substr(0, 35) + "é",
        good.substr(0, 8) + "_" + good.substr(9),
        "0x" + good,
        "{" + good.substr(0, 35),
        "{" + good.substr(0, 35) + "}",
        std::string(38, '0'),
        std::string(38, 'f'),
        "{",
        "}",
        "{}",
    };
    for (const std::string &row : rows) {
        const bool kept = load(libraryText({R"({"guid":")" + row + R"("})"}))->numberOfTools() == 1;
        EXPECT_EQ(kept, !QUuid(QString::fromStdString(row)).isNull()) << row;
    }
}

TEST(RapidjsonToolLibraryLoad, OfTwoGuidMembersTheFirstCounts)
{
    const Library library = load(
        libraryText({R"({"guid":")" + guidOf(1) + R"(","guid":")" + guidOf(2) + R"("})", toolText(2), toolText(1)}));
    EXPECT_THAT(library->getToolIds(), ElementsAre(ToolId(guidOf(1)), ToolId(guidOf(2))));
}

TEST(RapidjsonToolLibraryLoad, OlderToolsAreRefusedByTheVersionThatTheyCountAs)
{
    struct Row {
        const char *version; // with its name and comma
        int countsAs;
    };
    const Row rows[] = {
        {"", 1},
        {R"("version":0,)", 0},
        {R"("version":1,)", 1},
        {R"("version":35,)", 35},
        {R"("version":-7,)", 0},
        {R"("version":12.0,)", 1},
        {R"("version":36.0,)", 1},
        {R"("version":37.5,)", 1},
        {R"("version":"36",)", 1},
        {R"("version":null,)", 1},
        {R"("version":true,)", 1},
        {R"("version":[36],)", 1},
        {R"("version":2147483648,)", 1},
        {R"("version":-2147483649,)", 1},
        {R"("version":4294967332,)", 1}, // 36 in its lower half
        {R"("Version":36,)", 1},
        {R"("version":12,"version":36,)", 12}, // the first counts
    };
    for (const Row &row : rows)
        EXPECT_EQ(loadFailure(std::string("{") + row.version + R"("data":[)" + toolText(1) + "]}"),
                  notMigrated(row.countsAs))
            << row.version;
}

TEST(RapidjsonToolLibraryLoad, WithoutToolsEveryOlderVersionBecomesTheCurrentOne)
{
    const char *const versions[] = {
        R"("version":0)",
        R"("version":1)",
        R"("version":35)",
        R"("version":-7)",
        R"("version":12.0)",
        R"("version":36.0)",
        R"("version":"x")",
        R"("version":null)",
        R"("version":{})",
        R"("version":2147483648)",
        R"("version":35,"version":99,"version":1)",
    };
    for (const std::string version : versions) {
        const Library library = load("{" + version + R"(,"a":1,"data":[],"b":2})");
        EXPECT_EQ(library->getVersion(), 36) << version;
        const std::string text = library->toJson();
        EXPECT_TRUE(text.ends_with(R"(,"version":36})")) << text;
        EXPECT_EQ(text.find("version"), text.rfind("version")) << text;
        EXPECT_NE(text.find(R"("data":[])"), std::string::npos) << text;
        EXPECT_EQ(load(text)->toJson(), text) << "a current library stays as it is";
    }
}

TEST(RapidjsonToolLibraryLoad, ToolsThatAreDroppedNeedNoMigration)
{
    EXPECT_EQ(load(R"({"version":3,"data":[{"guid":""},{},{"unit":"mm"}]})")->toJson(), R"({"data":[],"version":36})");
}

TEST(RapidjsonToolLibraryLoad, MigrationComesBeforeTheChecksOfTools)
{
    EXPECT_EQ(loadFailure(R"({"version":35,"data":[)" + toolText(1, R"("unit":"mm")") + "]}"), notMigrated(35));
}

TEST(RapidjsonToolLibraryLoad, ANewerLibraryStaysAsItIs)
{
    for (const char *const version : {"37", "100", "2147483647"}) {
        const std::string text = R"({"version":)" + std::string(version) + R"(,"data":[)" +
                                 toolText(1, R"("type":"unspecified","new":{"x":1})") + R"(],"more":1})";
        const Library library = load(text);
        EXPECT_EQ(std::to_string(library->getVersion()), version);
        EXPECT_EQ(library->toJson(), text);
    }
}

TEST(RapidjsonToolLibraryLoad, ACurrentToolIsNotJudgedByItsType)
{
    const std::string text =
        libraryText({toolText(1), toolText(2, R"("type":"unspecified")"), toolText(3, R"("type":7)")});
    EXPECT_EQ(load(text)->toJson(), text);
}

TEST(RapidjsonToolLibraryLoad, SanitiseDropsToolsWithoutAGuidAndChecksNothing)
{
    const Library library = load(libraryText({toolText(1), toolText(2)}));
    const ToolId none{std::string()};
    ASSERT_TRUE(library->createTool(none, Tool(R"({"n":1})")).has_value());
    ASSERT_TRUE(library->createTool(ToolId(guidOf(3)), Tool(R"({"unit":"mm"})")).has_value());
    ASSERT_TRUE(library->get(none).has_value());
    sanitise(*library);
    EXPECT_THAT(library->getToolIds(), ElementsAre(ToolId(guidOf(1)), ToolId(guidOf(2)), ToolId(guidOf(3))));
    EXPECT_FALSE(library->get(none).has_value());
    EXPECT_EQ((*library->get(ToolId(guidOf(3))))->getToolId(), ToolId(guidOf(3)));
    EXPECT_EQ(library->getVersion(), 36);
}

TEST(RapidjsonToolLibraryLoad, SanitiseLeavesASoundLibraryAlone)
{
    const std::string text = R"({"x":1,"version":40,"data":[)" + toolText(1) + "]}";
    const Library library = load(text);
    sanitise(*library);
    EXPECT_EQ(library->toJson(), text);
    const Library empty = load(R"({"data":[]})");
    sanitise(*empty);
    EXPECT_EQ(empty->toJson(), R"({"data":[],"version":36})");
}

TEST(RapidjsonToolLibraryLoad, ALibraryWhoseMembersMovedInTheUpgradeCanBeChanged)
{
    const char *const texts[] = {
        R"({"version":1,"a":1,"data":[]})",
        R"({"data":[],"a":1,"version":1})",
        R"({"version":1,"version":2,"version":3,"data":[]})",
        R"({"data":[]})",
    };
    for (const char *const text : texts) {
        const Library library = load(text);
        for (unsigned number = 1; number <= 20; ++number)
            ASSERT_TRUE(library->createTool(ToolId(guidOf(number)), Tool("{}")).has_value());
        ASSERT_TRUE(library->removeTool(ToolId(guidOf(4))).has_value());
        EXPECT_EQ(library->numberOfTools(), 19u);
        EXPECT_EQ((*library->get(ToolId(guidOf(20))))->toJson(), toolText(20));
        EXPECT_EQ(load(library->toJson())->toJson(), library->toJson());
    }
}

TEST(RapidjsonToolLibraryLoad, EveryOneOfManyVersionsIsTakenOut)
{
    std::string members;
    for (int i = 0; i < 1000; ++i)
        members += R"("version":1,"o":0,"p":1,)";
    const std::string text = load("{" + members + R"("data":[]})")->toJson();
    EXPECT_EQ(text.find("version"), text.rfind("version"));
    EXPECT_EQ(std::ranges::count(text, 'o'), 1001); // one is in the last version
    EXPECT_EQ(std::ranges::count(text, 'p'), 1000);
}
