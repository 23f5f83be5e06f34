#include "host/JsonRpcDispatcher.h"

#include "platform/ox/HubLibrariesCache.h"
#include "platform/tool/Exception.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Quillon;

namespace {

JsonRpcDispatcher dispatcherUnderTest()
{
    JsonRpcDispatcher dispatcher;
    dispatcher.add("echo", {{{"text", RpcKind::Text}},
                            [](const RpcParameters &parameters) { return "\"" + parameters.text("text") + "\""; }});
    dispatcher.add("every", {{{"text", RpcKind::Text},
                              {"integer", RpcKind::Integer},
                              {"boolean", RpcKind::Boolean},
                              {"object", RpcKind::Object},
                              {"locator", RpcKind::Locator},
                              {"texts", RpcKind::TextList},
                              {"locators", RpcKind::LocatorList},
                              {"state", RpcKind::ListOrText},
                              {"optional", RpcKind::Integer, true}},
                             [](const RpcParameters &parameters) { return parameters.listOrText("state"); }});
    dispatcher.add("nothing", {{}, [](const RpcParameters &) { return std::string("null"); }});
    dispatcher.add("fail", {{{"how", RpcKind::Text}, {"locator", RpcKind::Locator, true}},
                            [](const RpcParameters &parameters) -> std::string {
                                const std::string how = parameters.text("how");
                                if (how == "ours")
                                    throw Varn::ToolLibraries::LibraryMissing("Gone: \"x\"", L"Weg: ä");
                                if (how == "hub")
                                    throw Ox::HubLibrariesCache::HubItemConflictError("Lost the race");
                                throw std::runtime_error("Plain");
                            }});
    return dispatcher;
}

std::string answerTo(std::string_view message)
{
    return dispatcherUnderTest().handle(message).value_or("no answer");
}

} // namespace

TEST(JsonRpcDispatcher, ARequestIsAnsweredUnderItsId)
{
    struct Row {
        const char *message;
        const char *answer;
    };
    const Row rows[] = {
        {R"({"jsonrpc":"2.0","id":1,"method":"nothing"})", R"({"jsonrpc":"2.0","result":null,"id":1})"},
        {R"({"jsonrpc":"2.0","id":1,"method":"nothing","params":{}})", R"({"jsonrpc":"2.0","result":null,"id":1})"},
        {R"({"jsonrpc":"2.0","id":"a\"b","method":"nothing"})", R"({"jsonrpc":"2.0","result":null,"id":"a\"b"})"},
        {R"({"jsonrpc":"2.0","id":null,"method":"nothing"})", R"({"jsonrpc":"2.0","result":null,"id":null})"},
        {R"({"jsonrpc":"2.0","id":18446744073709551615,"method":"nothing"})",
         R"({"jsonrpc":"2.0","result":null,"id":18446744073709551615})"},
        {R"({"jsonrpc":"2.0","id":1.5,"method":"nothing"})", R"({"jsonrpc":"2.0","result":null,"id":1.5})"},
        {R"({"id":1,"params":{"text":"grün"},"method":"echo","jsonrpc":"2.0"})",
         R"({"jsonrpc":"2.0","result":"grün","id":1})"},
        {"  {\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"nothing\"}\r", R"({"jsonrpc":"2.0","result":null,"id":1})"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(answerTo(row.message), row.answer) << row.message;
}

TEST(JsonRpcDispatcher, ANotificationGetsNoAnswerWhateverHappens)
{
    for (const char *message : {R"({"jsonrpc":"2.0","method":"nothing"})", R"({"jsonrpc":"2.0","method":"unknown"})",
                                R"({"jsonrpc":"2.0","method":"echo","params":{}})",
                                R"({"jsonrpc":"2.0","method":"fail","params":{"how":"ours"}})",
                                R"([{"jsonrpc":"2.0","method":"nothing"},{"jsonrpc":"2.0","method":"nothing"}])"})
        EXPECT_EQ(answerTo(message), "no answer") << message;
}

TEST(JsonRpcDispatcher, WhatIsNoJsonOrNoUtf8IsAParseError)
{
    const std::string parseError = R"({"jsonrpc":"2.0","error":{"code":-32700,"message":"Parse error"},"id":null})";
    const std::string deep(1000000, '[');
    const std::string balanced = std::string(1001, '[') + std::string(1001, ']');
    for (const std::string &message :
         {std::string(), std::string("   "), std::string("nonsense"), std::string("{"), std::string("{\"a\":1,}"),
          std::string("// comment\n{}"), std::string("{} {}"), std::string("[NaN]"), std::string("'a'"),
          std::string("\"\xFF\""), std::string("\"\xED\xA0\x80\""), std::string("\xEF\xBB\xBF{}"),
          std::string("{}\0{}", 5), std::string("\"\\ud800\""), std::string("\"\\udc00\""), deep, balanced})
        EXPECT_EQ(answerTo(message), parseError) << message.substr(0, 20);
}

TEST(JsonRpcDispatcher, WhatIsNoRequestIsInvalid)
{
    const std::string invalid = R"({"jsonrpc":"2.0","error":{"code":-32600,"message":"Invalid Request"},"id":null})";
    for (const char *message :
         {"{}", "[]", "1", "null", "\"text\"", R"({"jsonrpc":"2.0"})", R"({"method":"nothing","id":1})",
          R"({"jsonrpc":"1.0","method":"nothing","id":1})", R"({"jsonrpc":2.0,"method":"nothing","id":1})",
          R"({"jsonrpc":"2.0","method":1,"id":1})", R"({"jsonrpc":"2.0","method":"nothing","id":{}})",
          R"({"jsonrpc":"2.0","method":"nothing","id":true})",
          R"({"jsonrpc":"2.0","method":"nothing","id":1,"params":"x"})",
          R"({"jsonrpc":"2.0","method":"nothing","id":1,"params":null})"})
        EXPECT_EQ(answerTo(message), invalid) << message;
}

TEST(JsonRpcDispatcher, AnUnknownMethodIsNamed)
{
    EXPECT_EQ(answerTo(R"({"jsonrpc":"2.0","method":"nix","id":7})"),
              R"({"jsonrpc":"2.0","error":{"code":-32601,"message":"Method not found: nix"},"id":7})");
}

TEST(JsonRpcDispatcher, ABatchAnswersInItsOrderWithoutTheNotifications)
{
    EXPECT_EQ(answerTo(R"([{"jsonrpc":"2.0","id":1,"method":"nothing"},{"jsonrpc":"2.0","method":"nothing"},5,)"
                       R"({"jsonrpc":"2.0","id":2,"method":"nix"}])"),
              R"([{"jsonrpc":"2.0","result":null,"id":1},)"
              R"({"jsonrpc":"2.0","error":{"code":-32600,"message":"Invalid Request"},"id":null},)"
              R"({"jsonrpc":"2.0","error":{"code":-32601,"message":"Method not found: nix"},"id":2}])");
}

TEST(JsonRpcDispatcher, ParametersThatDoNotFitAreNamed)
{
    struct Row {
        const char *method;
        const char *parameters;
        const char *message;
    };
    const Row rows[] = {
        {"echo", R"({})", "Missing parameter: text"},
        {"echo", R"({"text":null})", "Missing parameter: text"},
        {"echo", R"({"text":1})", "Parameter text must be a text"},
        {"echo", R"({"text":"a","more":1})", "Unknown parameter: more"},
        {"echo", R"({"Text":"a"})", "Missing parameter: text"},
        {"echo", R"(["a"])", "Parameters are given by name"},
        {"nothing", R"([])", "Parameters are given by name"},
        {"nothing", R"({"x":1})", "Unknown parameter: x"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(answerTo(std::string(R"({"jsonrpc":"2.0","id":1,"method":")") + row.method + R"(","params":)" +
                           row.parameters + "}"),
                  std::string(R"({"jsonrpc":"2.0","error":{"code":-32602,"message":")") + row.message +
                      R"("},"id":1})");
}

TEST(JsonRpcDispatcher, EachKindOfParameterTakesItsOwn)
{
    struct Row {
        const char *name;
        const char *good;
        std::vector<const char *> bad;
    };
    const Row rows[] = {
        {"text", R"("a")", {"1", "[]", "{}", "true"}},
        {"integer", "-5", {"1.5", "1.0", "2147483648", "\"1\"", "true"}},
        {"boolean", "false", {"0", "\"false\"", "[]"}},
        {"object", "{}", {"[]", "\"{}\"", "1"}},
        {"locator", R"({"path":"/a"})", {"{}", R"({"path":1})", R"({"path":"a","x":1})", "[]", "1"}},
        {"texts", R"(["a","b"])", {R"("a")", "[1]", R"(["a",null])", "{}"}},
        {"locators", R"(["a",{"path":"b"}])", {R"("a")", "[1]", "[{}]", "{}"}},
        {"state", "[1]", {"1", "{}", "true"}},
        {"optional", "null", {"\"1\"", "1.5"}},
    };
    const auto call = [&rows](const Row *changed, const char *value) {
        std::string parameters;
        for (const Row &row : rows)
            parameters += (parameters.empty() ? "" : ",") + std::string("\"") + row.name +
                          "\":" + (&row == changed ? value : row.good);
        return answerTo(R"({"jsonrpc":"2.0","id":1,"method":"every","params":{)" + parameters + "}}");
    };
    EXPECT_EQ(call(nullptr, ""), R"({"jsonrpc":"2.0","result":[1],"id":1})");
    for (const Row &row : rows)
        for (const char *bad : row.bad)
            EXPECT_NE(call(&row, bad).find("-32602"), std::string::npos) << row.name << " = " << bad;
    EXPECT_EQ(call(&rows[7], R"("[broken")"), R"({"jsonrpc":"2.0","result":[broken,"id":1})")
        << "texts pass as they are";
}

TEST(JsonRpcDispatcher, AFailureIsToldWithItsClassAndTexts)
{
    const auto failure = [](const std::string &parameters) {
        return answerTo(R"({"jsonrpc":"2.0","id":1,"method":"fail","params":)" + parameters + "}");
    };
    EXPECT_EQ(failure(R"({"how":"ours"})"), R"({"jsonrpc":"2.0","error":{"code":-32000,"message":"Gone: \"x\"",)"
                                            R"("data":{"type":"LibraryMissing","translatedText":"Weg: ä"}},"id":1})");
    EXPECT_EQ(failure(R"({"how":"hub","locator":{"path":"/a"}})"),
              R"({"jsonrpc":"2.0","error":{"code":-32000,"message":"Lost the race",)"
              R"("data":{"type":"HubItemConflictError","translatedText":null,"locator":{"path":"/a"}}},"id":1})");
    EXPECT_EQ(failure(R"({"how":"any","locator":"cloud://a.json"})"),
              R"({"jsonrpc":"2.0","error":{"code":-32000,"message":"Plain",)"
              R"("data":{"type":"runtime_error","translatedText":null,"locator":"cloud://a.json"}},"id":1})");
}
