#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/LibraryFile.h"

#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

#include <random>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

namespace {

using Library = std::shared_ptr<RapidjsonToolLibrary>;

Library libraryOf(const std::string &text)
{
    return RapidjsonToolLibrary::fromString(text, Varn::AbortableImpl());
}

Library libraryWith(const std::vector<unsigned> &numbers)
{
    std::vector<std::string> tools;
    for (const unsigned number : numbers)
        tools.push_back(toolText(number, R"("type":"drill")"));
    return libraryOf(libraryText(tools));
}

ToolId idOf(unsigned number)
{
    return ToolId(guidOf(number));
}

std::vector<std::string> textsOf(const ToolSource &source)
{
    std::vector<std::string> texts;
    for (auto at = source.begin(); at != source.end(); ++at)
        texts.push_back((*at)->toJson());
    return texts;
}

/// "class: text" of a refusal, "done" without one.
std::string outcome(const Ox::expected<void, ToolSinkError> &result)
{
    if (result)
        return "done";
    EXPECT_FALSE(result.error().translatedWhat().has_value());
    return failureOf([&] {
        // The failure itself must be one that a caller can tell by its class.
        if (const auto access = std::dynamic_pointer_cast<AccessError>(result.error().innerException()))
            throw *access;
        if (const auto missing = std::dynamic_pointer_cast<ToolMissing>(result.error().innerException()))
            throw *missing;
        throw std::runtime_error(result.error().what());
    });
}

/// A tool of which nobody has checked the text.
class UncheckedTool : public Tool
{
public:
    explicit UncheckedTool(std::string text) : Tool(), m_text(std::move(text)) {}
    std::string toJson() const override { return m_text; }

private:
    std::string m_text;
};

} // namespace

TEST(RapidjsonToolLibrary, ListsItsToolsInTheirOrder)
{
    const Library library = libraryWith({2, 3, 1});
    EXPECT_EQ(library->numberOfTools(), 3u);
    EXPECT_THAT(library->getToolIds(), ElementsAre(idOf(2), idOf(3), idOf(1)));
    EXPECT_THAT(textsOf(*library), ElementsAre(toolText(2, R"("type":"drill")"), toolText(3, R"("type":"drill")"),
                                               toolText(1, R"("type":"drill")")));
}

TEST(RapidjsonToolLibrary, FindsAToolById)
{
    const Library library = libraryWith({2, 3, 1});
    ASSERT_TRUE(library->get(idOf(3)).has_value());
    EXPECT_EQ((*library->get(idOf(3)))->toJson(), toolText(3, R"("type":"drill")"));
    EXPECT_EQ((*library->get(idOf(3)))->getToolId(), idOf(3));
    EXPECT_FALSE(library->get(idOf(4)).has_value());
    EXPECT_FALSE(library->get(ToolId("no guid")).has_value());
    EXPECT_FALSE(libraryOf(R"({"data":[]})")->get(idOf(1)).has_value());
}

TEST(RapidjsonToolLibrary, FindsAToolInAnyNotationOfItsGuid)
{
    const Library library = libraryOf(R"({"version":36,"data":[{"guid":"{ABCDEF01-2222-4333-8444-000000000001}"}]})");
    EXPECT_TRUE(library->get(ToolId("abcdef01-2222-4333-8444-000000000001")).has_value());
    EXPECT_THAT(library->getToolIds(), ElementsAre(ToolId("{abcdef01-2222-4333-8444-000000000001}")));
}

TEST(RapidjsonToolLibrary, AToolFromGetHasItsTextFromTheStart)
{
    const Library library = libraryWith({1, 2});
    const std::shared_ptr<Tool> taken = *library->get(idOf(1));
    const std::unique_ptr<const Tool> clone = (*library->begin())->clone();
    ASSERT_TRUE(library->updateTool(idOf(1), Tool(R"({"type":"ball end mill"})")).has_value());
    EXPECT_EQ(taken->toJson(), toolText(1, R"("type":"drill")"));
    EXPECT_EQ(clone->toJson(), toolText(1, R"("type":"drill")"));
    EXPECT_EQ(clone->getType(), "drill");
}

TEST(RapidjsonToolLibrary, AWalkAfterARemovalGetsNothingAtItsEnd)
{
    const Library library = libraryWith({1, 2});
    auto at = ++library->begin();
    ASSERT_TRUE(library->removeTool(idOf(1)).has_value());
    EXPECT_EQ(*at, nullptr);
    const Asserts asserts;
    EXPECT_EQ(*at, nullptr);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:index < numberOfTools()"));
}

TEST(RapidjsonToolLibrary, IsWrittenWithoutBlanksAndWithEveryMemberOfItsRoot)
{
    const std::string text = R"({"name":"A","data":[)" + toolText(1, R"("x":[1,2.5,null,true,"é\n"])") +
                             R"(],"version":36,"more":{"deep":[{}]},"big":12345678901234567890})";
    const Library library = libraryOf(" \n" + text + "\t");
    const Asserts asserts;
    EXPECT_EQ(library->toJson(), text);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(RapidjsonToolLibrary, ADocumentWithAParseErrorIsAProgrammingErrorOfTheWriter)
{
    rapidjson::Document document;
    document.Parse("{");
    document.SetObject();
    document.AddMember("data", rapidjson::Value(rapidjson::kArrayType), document.GetAllocator());
    const RapidjsonToolLibrary library(std::move(document));
    const Asserts asserts;
    EXPECT_EQ(library.toJson(), R"({"data":[],"version":36})");
    EXPECT_THAT(asserts.messages(), ElementsAre("!m_doc.HasParseError()"));
}

TEST(RapidjsonToolLibrary, IsExportedAsAMapInWhichEveryNumberIsADouble)
{
    const Library library = libraryOf(R"({"data":[)" + toolText(1, R"("n":2,"u":null)") + R"(],"version":36,"x":"y"})");
    const QVariantMap map = library->toQVariantMap();
    EXPECT_EQ(map.keys(), (QStringList{"data", "version", "x"}));
    EXPECT_EQ(map["version"].typeId(), QMetaType::Double);
    EXPECT_EQ(map["version"].toDouble(), 36);
    const QVariantList tools = map["data"].toList();
    ASSERT_EQ(tools.size(), 1);
    const QVariantMap tool = tools.front().toMap();
    EXPECT_EQ(tool["guid"].toString().toStdString(), guidOf(1));
    EXPECT_EQ(tool["n"].typeId(), QMetaType::Double);
    EXPECT_FALSE(tool["u"].isValid());
    EXPECT_TRUE(tool.contains("u"));
}

TEST(RapidjsonToolLibrary, ANewToolGoesToTheEnd)
{
    const Library library = libraryWith({2, 1});
    EXPECT_EQ(outcome(library->createTool(idOf(0), Tool(toolText(0)))), "done");
    EXPECT_THAT(library->getToolIds(), ElementsAre(idOf(2), idOf(1), idOf(0)));
    EXPECT_TRUE(library->get(idOf(0)).has_value());
}

TEST(RapidjsonToolLibrary, ATakenIdIsRefused)
{
    const Library library = libraryWith({1});
    const std::string before = library->toJson();
    EXPECT_EQ(outcome(library->createTool(ToolId("{" + guidOf(1) + "}"), Tool(toolText(5)))),
              "AccessError: Tool " + guidOf(1) + " already exists");
    EXPECT_EQ(library->toJson(), before);
}

TEST(RapidjsonToolLibrary, AToolIsStoredUnderTheIdThatTheSinkIsGiven)
{
    struct Row {
        const char *given;
        const char *stored; // without the guid, which is last
    };
    const Row rows[] = {
        {R"({})", R"({)"},
        {R"({"a":1})", R"({"a":1,)"},
        {R"({"guid":"99999999-2222-4333-8444-000000000009","a":1,"b":2})", R"({"b":2,"a":1,)"},
        {R"({"a":1,"guid":"x","b":2,"c":3})", R"({"a":1,"c":3,"b":2,)"},
        {R"({"a":1,"guid":7})", R"({"a":1,)"},
        {R"({"guid":null})", R"({)"},
        {R"({"guid":"x","a":1,"guid":"y"})", R"({"a":1,)"},
        {R"({"guid":"x","guid":"y","guid":"z"})", R"({)"},
        {R"({"nested":{"guid":"x"}})", R"({"nested":{"guid":"x"},)"},
    };
    for (const Row &row : rows) {
        const Library library = libraryWith({1});
        const std::string stored = std::string(row.stored) + R"("guid":")";
        EXPECT_EQ(outcome(library->createTool(idOf(7), Tool(row.given))), "done");
        EXPECT_EQ(textsOf(*library).back(), stored + guidOf(7) + R"("})") << row.given;
        EXPECT_EQ(outcome(library->updateTool(idOf(1), Tool(row.given))), "done");
        EXPECT_EQ(textsOf(*library).front(), stored + guidOf(1) + R"("})") << row.given;
    }
}

TEST(RapidjsonToolLibrary, AnUpdatedToolKeepsItsPlace)
{
    const Library library = libraryWith({1, 2, 3});
    EXPECT_EQ(outcome(library->updateTool(idOf(2), Tool(R"({"type":"tap"})"))), "done");
    EXPECT_THAT(textsOf(*library),
                ElementsAre(toolText(1, R"("type":"drill")"), R"({"type":"tap","guid":")" + guidOf(2) + R"("})",
                            toolText(3, R"("type":"drill")")));
}

TEST(RapidjsonToolLibrary, ARemovedToolLeavesTheOthersInTheirOrder)
{
    const Library library = libraryWith({1, 2, 3, 4});
    EXPECT_EQ(outcome(library->removeTool(idOf(2))), "done");
    EXPECT_THAT(library->getToolIds(), ElementsAre(idOf(1), idOf(3), idOf(4)));
    EXPECT_EQ((*library->get(idOf(4)))->getToolId(), idOf(4));
    EXPECT_EQ(outcome(library->removeTool(idOf(4))), "done");
    EXPECT_EQ(outcome(library->removeTool(idOf(1))), "done");
    EXPECT_EQ(outcome(library->removeTool(idOf(3))), "done");
    EXPECT_EQ(library->numberOfTools(), 0u);
    EXPECT_EQ(library->toJson(), R"({"data":[],"version":36})");
    EXPECT_EQ(outcome(library->createTool(idOf(3), Tool("{}"))), "done") << "its id is free again";
}

TEST(RapidjsonToolLibrary, AnUnknownToolIsNeitherUpdatedNorRemoved)
{
    const Library library = libraryWith({1});
    const std::string before = library->toJson();
    for (const ToolId &id : {idOf(2), ToolId(std::string())}) {
        EXPECT_EQ(outcome(library->updateTool(id, Tool("{}"))), "ToolMissing: Tool not found in library");
        EXPECT_EQ(outcome(library->removeTool(id)), "ToolMissing: Tool not found in library");
    }
    EXPECT_EQ(library->toJson(), before);
}

TEST(RapidjsonToolLibrary, ATextThatIsNoObjectIsAnExceptionAndChangesNothing)
{
    const std::string rows[] = {
        "",
        "{",
        "[]",
        "1",
        "null",
        "\"a\"",
        "nonsense",
        "{}{}",
        "{},",
        "{'a':1}",
        "{a:1}",
        "{\"a\"}",
        "{\"a\":1,}",
        "{\"a\":NaN}",
        "// x\n{}",
        "[{}]",
        "{\"a\":1e999}",
        std::string("\0{}", 3),
        "{\"a\":" + std::string(1000, '[') + std::string(1000, ']') + "}",
    };
    const Library library = libraryWith({1});
    const std::string before = library->toJson();
    for (const std::string &row : rows) {
        EXPECT_EQ(failureOf([&] { library->createTool(idOf(2), UncheckedTool(row)); }),
                  "InvalidInput: Unable to create tool")
            << row;
        EXPECT_EQ(failureOf([&] { library->updateTool(idOf(1), UncheckedTool(row)); }),
                  "InvalidInput: Unable to create tool")
            << row;
    }
    EXPECT_EQ(library->toJson(), before);
    EXPECT_FALSE(library->get(idOf(2)).has_value());
    EXPECT_EQ(outcome(library->createTool(idOf(2), Tool("{}"))), "done");
}

TEST(RapidjsonToolLibrary, AnIdIsRefusedBeforeTheTextIsRead)
{
    const Library library = libraryWith({1});
    EXPECT_EQ(outcome(library->createTool(idOf(1), UncheckedTool("nonsense"))),
              "AccessError: Tool " + guidOf(1) + " already exists");
    EXPECT_EQ(outcome(library->updateTool(idOf(2), UncheckedTool("nonsense"))),
              "ToolMissing: Tool not found in library");
}

TEST(RapidjsonToolLibrary, WhatTheSinkIsGivenIsNotCheckedAsAFileIs)
{
    const Library library = libraryWith({1});
    EXPECT_EQ(outcome(library->createTool(idOf(2), Tool(R"({"unit":"mm","holder":1,"start-values":{}})"))), "done");
    EXPECT_EQ(outcome(library->updateTool(idOf(1), Tool(R"({"unit":"mm"})"))), "done");
    EXPECT_EQ(library->numberOfTools(), 2u);
}

TEST(RapidjsonToolLibrary, TakesItsOwnToolsAsInput)
{
    const Library library = libraryWith({1, 2});
    for (unsigned number = 3; number < 40; ++number) // the array moves while it grows
        EXPECT_EQ(outcome(library->createTool(idOf(number), **library->begin())), "done");
    EXPECT_EQ(outcome(library->updateTool(idOf(1), **++library->begin())), "done");
    EXPECT_EQ(outcome(library->updateTool(idOf(2), **++library->begin())), "done");
    const std::string stored = R"({"type":"drill","guid":")";
    EXPECT_EQ(textsOf(*library)[0], stored + guidOf(1) + R"("})");
    EXPECT_EQ(textsOf(*library)[1], stored + guidOf(2) + R"("})");
    EXPECT_EQ(textsOf(*library)[38], stored + guidOf(39) + R"("})");
}

TEST(RapidjsonToolLibrary, HasNothingToSynchronise)
{
    const Library library = libraryWith({1});
    const std::string before = library->toJson();
    EXPECT_EQ(outcome(library->syncTool(idOf(1))), "done");
    EXPECT_EQ(outcome(library->syncTool(idOf(2))), "done");
    EXPECT_EQ(library->toJson(), before);
}

TEST(RapidjsonToolLibrary, ATextMayHoldAnyCharacter)
{
    const std::string tool = R"({"description":"nul \u0000 quote \" pair 🛠 \\"})";
    const Library library = libraryWith({1});
    EXPECT_EQ(outcome(library->updateTool(idOf(1), Tool(tool))), "done");
    const Library again = libraryOf(library->toJson());
    EXPECT_EQ(again->toJson(), library->toJson());
    EXPECT_EQ((*again->begin())->getDescription(), "nul \0 quote \" pair 🛠 \\"s);
}

TEST(RapidjsonToolLibrary, AnswersAsAListDoesAfterAnyChanges)
{
    std::mt19937 random(11);
    const Library library = libraryWith({});
    std::vector<std::pair<unsigned, int>> model; // number of the tool, and its "x"
    const auto placeOf = [&](unsigned number) {
        return std::ranges::find(model, number, &std::pair<unsigned, int>::first);
    };
    for (int step = 0; step < 2000; ++step) {
        const unsigned number = random() % 25;
        const Tool tool("{\"x\":" + std::to_string(step) + "}");
        const auto place = placeOf(number);
        const bool known = place != model.end();
        switch (random() % 3) {
        case 0:
            ASSERT_EQ(library->createTool(idOf(number), tool).has_value(), !known);
            if (!known)
                model.emplace_back(number, step);
            break;
        case 1:
            ASSERT_EQ(library->updateTool(idOf(number), tool).has_value(), known);
            if (known)
                place->second = step;
            break;
        default:
            ASSERT_EQ(library->removeTool(idOf(number)).has_value(), known);
            if (known)
                model.erase(place);
        }
        ASSERT_EQ(library->get(idOf(number)).has_value(), placeOf(number) != model.end());
        ASSERT_EQ(library->numberOfTools(), model.size());
    }
    std::vector<std::string> expected;
    for (const auto &[number, x] : model)
        expected.push_back("{\"x\":" + std::to_string(x) + ",\"guid\":\"" + guidOf(number) + "\"}");
    EXPECT_EQ(textsOf(*library), expected);
    EXPECT_EQ(textsOf(*libraryOf(library->toJson())), expected);
}
