#include "host/RpcMethods.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "host/Engine.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/LocaleRegistry.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace Quillon;
using namespace TestSupport;
namespace JsonText = Varn::ToolLibraries::JsonText;

namespace {

class RpcMethods : public testing::Test
{
protected:
    ~RpcMethods() override { Varn::LocaleRegistry::setCountry("en"); }

    Json::Value answer(const std::string &method, const std::string &parameters)
    {
        if (!m_engine)
            start();
        const auto text =
            m_dispatcher.handle(R"({"jsonrpc":"2.0","id":1,"method":")" + method + R"(","params":)" + parameters + "}");
        return JsonText::parse(text.value()).value();
    }

    Json::Value result(const std::string &method, const std::string &parameters)
    {
        const Json::Value whole = answer(method, parameters);
        EXPECT_TRUE(whole.isMember("result")) << JsonText::print(whole);
        return whole["result"];
    }

    std::string resultText(const std::string &method, const std::string &parameters)
    {
        return JsonText::print(result(method, parameters));
    }

    /// "code type message" of a call that fails.
    std::string error(const std::string &method, const std::string &parameters)
    {
        const Json::Value failure = answer(method, parameters)["error"];
        return std::to_string(failure["code"].asInt()) + ' ' + failure["data"]["type"].asString() + ' ' +
               failure["message"].asString();
    }

    std::string looseFile(const char16_t *name, const std::string &text)
    {
        writeFile(m_paths.loose(name), text);
        return R"({"path":")" + m_paths.loose(name).toStdString() + R"("})";
    }

    TestPaths m_paths;

private:
    void start()
    {
        m_engine.emplace();
        addReadingMethods(m_dispatcher, m_engine->interface());
        addConversionMethods(m_dispatcher);
        addStateMethods(m_dispatcher);
    }

    std::optional<Engine> m_engine; // from the first call on: it lists what lies in the folders by then
    JsonRpcDispatcher m_dispatcher;
};

const std::string twoTools = libraryText(
    {toolText(2, R"("type":"drill","unit":"inches","geometry":{"DC":0.5})"), toolText(1, R"("type":"flat end mill")")});

} // namespace

TEST_F(RpcMethods, ALibraryOutsideTheTreeIsReadInGuidOrder)
{
    const std::string file = looseFile(u"a.json", twoTools);
    const Json::Value library = result("library", R"({"locator":)" + file + "}");
    ASSERT_EQ(library["data"].size(), 2u);
    EXPECT_EQ(library["data"][0]["guid"], guidOf(1));
    EXPECT_EQ(library["data"][1]["geometry"]["DC"], 0.5);
    EXPECT_EQ(library["version"].asInt(), 36);
}

TEST_F(RpcMethods, ALooseFileIsReadAnewAtEachCall)
{
    const std::string file = looseFile(u"a.json", twoTools);
    EXPECT_EQ(result("library", R"({"locator":)" + file + "}")["data"].size(), 2u);
    looseFile(u"a.json", libraryText({}));
    EXPECT_EQ(result("library", R"({"locator":)" + file + "}")["data"].size(), 0u);
}

TEST_F(RpcMethods, LoadingGivesTheDocumentAsItStands)
{
    const std::string file = looseFile(u"a.json", twoTools);
    const Json::Value library = result("ToolSourceLoader.load", R"({"locator":)" + file + "}");
    EXPECT_EQ(library["data"][0]["guid"], guidOf(2));
}

TEST_F(RpcMethods, ALibraryOfTheTreeIsSearchedByGuid)
{
    writeFile(m_paths.local(u"Local/a.json"), twoTools);
    const std::string locator = R"("toollibraryroot://Local/a.json")";
    const Json::Value found = result("findToolById", R"({"toolId":")" + guidOf(2) + R"(","locator":)" + locator + "}");
    EXPECT_EQ(found["libraryId"], "toollibraryroot://Local/a.json");
    EXPECT_EQ(found["tool"]["type"], "drill");
    EXPECT_TRUE(result("findToolById", R"({"toolId":")" + guidOf(3) + R"(","locator":)" + locator + "}").isNull());
    EXPECT_TRUE(result("findToolById", R"({"toolId":"nonsense","locator":)" + locator + "}").isNull());

    const Json::Value all = result("getToolsFromLibrary", R"({"locator":)" + locator + "}");
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0]["tool"]["guid"], guidOf(2)); // the library's own order
    EXPECT_EQ(all[1]["libraryId"], "toollibraryroot://Local/a.json");
}

TEST_F(RpcMethods, ALooseFileIsNoLibraryOfTheTree)
{
    const std::string path = m_paths.loose(u"a.json").toStdString();
    const std::string file = looseFile(u"a.json", twoTools);
    const std::string missing = "-32000 LibraryMissing Unable to find tool library " + path;
    EXPECT_EQ(error("getToolsFromLibrary", R"({"locator":)" + file + "}"), missing);
    EXPECT_EQ(error("findToolById", R"({"toolId":"x","locator":)" + file + "}"), missing);
    EXPECT_EQ(error("getToolsFromLibrary", R"({"locator":"toollibraryroot://Local"})"),
              "-32000 InvalidInput Not a library URL");
}

TEST_F(RpcMethods, APageHoldsWhatWasAskedForAndWhatFailed)
{
    const std::string file = looseFile(u"a.json", twoTools);
    const std::string bad = looseFile(u"b.json", "nonsense");
    const auto request = [&](int limit, int offset, const std::string &filters, const std::string &search,
                             const std::string &sort) {
        return R"({"libraryIds":[)" + bad + "," + file + R"(],"filtersState":)" + filters + R"(,"searchQuery":")" +
               search + R"(","sortState":)" + sort + R"(,"pageLimit":)" + std::to_string(limit) + R"(,"pageOffset":)" +
               std::to_string(offset) + "}";
    };
    const std::string path = m_paths.loose(u"a.json").toStdString();
    const std::string badPath = m_paths.loose(u"b.json").toStdString();
    for (const char *nothing : {"[]", R"("[]")", R"("")", R"(" [ ] ")"}) {
        const Json::Value page = result("fetchTools", request(1, 1, nothing, "", nothing));
        ASSERT_EQ(page["data"][path].size(), 1u) << nothing;
        EXPECT_EQ(page["data"][path][0]["guid"], guidOf(2));
        EXPECT_EQ(page["data"][badPath]["error"]["developerText"], "Failed to read or parse JSON file: " + badPath);
        EXPECT_EQ(page["matched"].asInt(), 2);
        EXPECT_EQ(page["total"].asInt(), 2);
        EXPECT_EQ(page["limit"].asInt(), 1);
        EXPECT_EQ(page["offset"].asInt(), 1);
        EXPECT_EQ(JsonText::print(page["toolTypes"]), R"(["drill","flat end mill"])");
    }
    EXPECT_EQ(result("fetchTools", request(1, 0, R"([{"key":"x","values":[]}])", "", "[]"))["matched"], 0);
    EXPECT_EQ(result("fetchTools", request(1, 0, R"("broken")", "", "[]"))["matched"], 2);
    EXPECT_EQ(result("fetchTools", request(1, 0, "[]", "flat END", "[]"))["matched"], 1);
    const Json::Value sorted = result(
        "fetchTools", request(2, 0, "[]", "", R"([{"key":"components.indexedProperties.tool_type","order":"asc"}])"));
    EXPECT_EQ(sorted["data"][path][0]["type"], "drill");
    EXPECT_EQ(error("fetchTools", request(1, 0, "[1]", "", "[]")).substr(0, 17), "-32000 LogicError");
}

TEST_F(RpcMethods, AToolHasItsName)
{
    const std::string tool =
        R"({"tool":{"type":"drill","unit":"inches","geometry":{"DC":0.5},"post-process":{"number":3}})";
    const char *name = "3 - ∅1/2\" (Drill)";
    EXPECT_EQ(result("ToolNameGenerator.generateName", tool + "}"), name);
    EXPECT_EQ(result("ToolNameGenerator.generateName", tool + R"(,"country":"xx"})"), name);
    EXPECT_EQ(result("IndexedTool.describe", tool + R"(,"keys":[]})")["name"], name);
}

TEST_F(RpcMethods, AUrlDescribesItself)
{
    const Json::Value setup = result("ToolLibraryUrl.describe", R"({"url":"document://a/b"})");
    EXPECT_EQ(setup["isSetup"], true);
    EXPECT_EQ(setup["setupName"], "b");
    EXPECT_EQ(setup["documentUrl"], "document://a");
    EXPECT_EQ(setup["parentUrl"], "document://a");
    EXPECT_EQ(setup["protocol"].asInt(), 0);
    EXPECT_EQ(setup["version"].asInt(), -1);
    EXPECT_EQ(setup.size(), 3u + 29 + 10 + 3) << "every predicate and name, and nothing else";

    const Json::Value vendor = result("ToolLibraryUrl.describe", R"({"url":"vendor://a.json"})");
    EXPECT_EQ(vendor["fullFilePath"]["error"]["developerText"], "Not implemented");
    const Json::Value local = result("ToolLibraryUrl.describe", R"({"url":"toollibraryroot://Local/x.json"})");
    EXPECT_EQ(local["fullFilePath"], m_paths.local(u"Local/x.json").toStdString());
    EXPECT_EQ(local["libraryName"], "Local/x");
}

TEST_F(RpcMethods, UrlsAreMadeFromTheirParts)
{
    EXPECT_EQ(resultText("ToolLibraryUrl.makeChildUrl", R"({"url":"cloud://","name":"a.json"})"),
              R"("cloud://a.json")");
    EXPECT_EQ(resultText("ToolLibraryUrl.convertTo", R"({"url":"cloud://a.json","extension":".tools"})"),
              R"("cloud://a.tools")");
    EXPECT_EQ(resultText("ToolLibraryUrl.fromPath", R"({"path":"p/a.json","protocol":1})"),
              R"("toollibraryroot://p/a.json")");
    EXPECT_EQ(resultText("ToolLibraryUrl.fromPath", R"({"path":"p","protocol":10})"), R"("")");
    EXPECT_EQ(error("ToolLibraryUrl.fromPath", R"({"path":"p","protocol":11})"),
              "-32602  Parameter protocol must be 0 to 10");
    EXPECT_EQ(resultText("ToolLibraryUrl.allFileExtensions", R"({"withDot":false})"),
              R"(["zetlib","json","tools","csv"])");
    EXPECT_EQ(resultText("ToolLibraryUrl.atRestFileExtensions", R"({"withDot":true,"withZetLib":false})"),
              R"([".json",".tools"])");
}

TEST_F(RpcMethods, AUniqueUrlLooksAtTheDisk)
{
    writeFile(m_paths.local(u"Local/a.tools"), "");
    EXPECT_EQ(resultText("ToolLibraryUrl.makeUniqueUrlOnDisk", R"({"url":"toollibraryroot://Local/a.json"})"),
              R"("toollibraryroot://Local/a 1.json")");
    EXPECT_EQ(error("ToolLibraryUrl.makeUniqueUrlOnDisk", R"({"url":"hub://a"})"),
              "-32000 NotSupportedError Not supported");
}

TEST_F(RpcMethods, ALocatorDescribesItself)
{
    const Json::Value path = result("ToolLibraryLocatorInterrogator.describe", R"({"locator":{"path":"/x/Y.JSON"}})");
    EXPECT_EQ(path["isLocalJson"], true);
    EXPECT_EQ(path["filePath"], "/x/Y.JSON");
    EXPECT_TRUE(path["url"].isNull());
    const Json::Value hub = result("ToolLibraryLocatorInterrogator.describe", R"({"locator":"hub://p/x.hub"})");
    EXPECT_EQ(hub["isHub"], true);
    EXPECT_EQ(hub["isLocalFile"], true);
    EXPECT_EQ(hub["isLocalJson"], false);
    EXPECT_EQ(hub["url"], "hub://p/x.hub");
    const Json::Value folder = result("ToolLibraryLocatorInterrogator.describe", R"({"locator":"cloud://"})");
    EXPECT_TRUE(folder["filePath"].isNull());
}

TEST_F(RpcMethods, PropertiesKeepTheKindOfTheirNumbers)
{
    const std::string tool =
        R"("tool":{"unit":"inches","description":"x","geometry":{"DC":3.0,"LCF":2.5,"HAND":true,"OAL":3000000000}})";
    const std::string keys =
        R"("keys":["tool_diameter","tool_fluteLength","tool_clockwise","tool_overallLength","DC"])";
    const std::string asRapid = R"({"DC":null,"tool_clockwise":true,"tool_diameter":3,"tool_fluteLength":2.5,)"
                                R"("tool_overallLength":null})";
    EXPECT_EQ(resultText("Tool.properties", "{" + tool + "," + keys + "}"), asRapid);
    EXPECT_EQ(resultText("Tool.properties", "{" + tool + "," + keys + R"(,"as":"rapidjson"})"), asRapid);
    EXPECT_EQ(
        resultText("Tool.properties", "{" + tool + "," + keys + R"(,"as":"ox"})"),
        R"({"DC":null,"tool_clockwise":true,"tool_diameter":3.0,"tool_fluteLength":2.5,"tool_overallLength":null})");
    EXPECT_EQ(error("Tool.properties", "{" + tool + "," + keys + R"(,"as":"xml"})"),
              "-32602  Parameter as must be \"rapidjson\" or \"ox\"");
}

TEST_F(RpcMethods, AnIndexedToolDescribesItself)
{
    EXPECT_EQ(resultText("IndexedTool.describe",
                         R"({"tool":{"type":"drill","unit":"inches","vendor":"V","product-id":"P","comment":"C",)"
                         R"("geometry":{"DC":1}},"keys":["tool_diameter.normValue","tool_diameter","nothing"]})"),
              R"x({"comment":"C","name":"∅1\" (Drill)","productId":"P","rounded":{"nothing":null,"tool_diameter":1.0,)x"
              R"("tool_diameter.normValue":25.4},"type":1,"unit":0,"vendor":"V"})");
}

TEST_F(RpcMethods, TheTreeListsItsLibraries)
{
    writeFile(m_paths.local(u"Local/a.json"), twoTools);
    writeFile(m_paths.system(u"Samples/Probes.json"), libraryText({}));
    const Json::Value urls = result("getAllLibraryUrls", "{}");
    ASSERT_EQ(urls.size(), 3u + 35u);
    EXPECT_EQ(urls[0], "toollibraryroot://Local/Library.json");
    EXPECT_EQ(urls[1], "toollibraryroot://Local/a.json");
    EXPECT_EQ(urls[2], "systemlibraryroot://Samples/Probes.json");
    EXPECT_EQ(urls[3], "vendor://BitsBits/BitsBits Cutting Tools.json");
}

TEST_F(RpcMethods, TheTreeIsAListOfNodes)
{
    writeFile(m_paths.system(u"Samples/Probes.json"), libraryText({}));
    const Json::Value tree = result("toolLibrariesIndex", "{}");
    ASSERT_EQ(tree.size(), 2u);
    EXPECT_EQ(tree[0]["url"], "all://");
    EXPECT_EQ(JsonText::print(tree[0]["children"][2]),
              R"({"children":[{"children":[],"name":"Probes","parent":"systemlibraryroot://Samples",)"
              R"("readonly":true,"type":"library","url":"systemlibraryroot://Samples/Probes.json"}],)"
              R"("name":"Quillon Library","parent":"all://","readonly":true,"type":"folder",)"
              R"("url":"systemlibraryroot://Samples"})");
    EXPECT_EQ(tree[1]["url"], "vendor://");
    EXPECT_EQ(error("toolLibrariesIndex", R"({"x":1})"), "-32602  Unknown parameter: x");
}

TEST_F(RpcMethods, TheInitialLoadCanBeAborted)
{
    EXPECT_EQ(resultText("initialLoadTask", "{}"), R"({"aborted":false})");
    EXPECT_EQ(resultText("initialLoadTask.abort", "{}"), "null");
    EXPECT_EQ(resultText("initialLoadTask", "{}"), R"({"aborted":true})");
}

TEST_F(RpcMethods, BrokenFilesAreNamedInTheError)
{
    const std::string million(1000000, '[');
    for (const std::string &text : {std::string(), std::string("[]"), std::string("{\"data\":[}"), million,
                                    std::string("{\"data\":[]}\xFF"), std::string("{\"data\":[],}")}) {
        const std::string file = looseFile(u"broken.json", text);
        const std::string failure = error("library", R"({"locator":)" + file + "}");
        const bool named = failure.find(m_paths.loose(u"broken.json").toStdString()) != std::string::npos;
        EXPECT_TRUE(named || failure == "-32000 LibraryFormatError JSON tool library should be an object")
            << failure << " for " << text.substr(0, 20);
    }
    EXPECT_EQ(error("library", R"({"locator":{"path":")" + m_paths.loose(u"").toStdString() + R"("}})"),
              "-32000 LibraryFormatError Failed to read or parse JSON file: " + m_paths.loose(u"").toStdString());
}

TEST_F(RpcMethods, NamesFollowTheLanguageThatIsSet)
{
    const std::string tool = R"({"tool":{"guid":")" + guidOf(1) + R"(","type":"reamer"}})";
    const std::string samples = R"({"url":"systemlibraryroot://Samples/Probes.json"})";
    const struct {
        const char *country;
        const char *name;
        const char *sample;
    } rows[] = {
        {"de", "Reibahle", "Messtaster"}, {"FR_fr", "Alésoir", "Palpeurs"},        {"ja", "リーマ", "タッチプローブ"},
        {"en", "Reamer", "Probes"},       {"no such country", "Reamer", "Probes"}, {"", "Reamer", "Probes"},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(result("locale.set", std::string(R"({"country":")") + row.country + "\"}").isNull());
        EXPECT_EQ(result("ToolNameGenerator.generateName", tool), row.name);
        EXPECT_EQ(result("ToolLibraryUrl.describe", samples)["libraryDisplayName"], row.sample);
    }
    EXPECT_EQ(answer("locale.set", "{}")["error"]["code"], -32602);
    EXPECT_EQ(answer("locale.set", R"({"country":7})")["error"]["code"], -32602);
}

TEST_F(RpcMethods, ANodeOfTheTreeKeepsTheNameThatItWasMadeWith)
{
    EXPECT_EQ(result("toolLibrariesIndex", "{}")[0]["name"], "User Libraries");
    result("locale.set", R"({"country":"de"})");
    EXPECT_EQ(result("toolLibrariesIndex", "{}")[0]["name"], "User Libraries");
}
