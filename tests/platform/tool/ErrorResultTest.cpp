#include "platform/tool/ErrorResult.h"

#include "platform/tool/JsonText.h"

#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>

namespace Varn::ToolLibraries {

namespace {

std::string payload(const char *message, std::optional<std::wstring> translated)
{
    return JsonText::print(ErrorResult::createPayload(message, std::move(translated)));
}

struct Silent : std::exception {
    const char *what() const noexcept override { return nullptr; }
};

} // namespace

TEST(ErrorResultTest, HoldsBothTexts)
{
    EXPECT_EQ(
        payload("Tool not found", L"Werkzeug nicht gefunden \u00fc"),
        "{\"error\":{\"developerText\":\"Tool not found\",\"translatedText\":\"Werkzeug nicht gefunden \u00fc\"}}");
}

TEST(ErrorResultTest, LeavesAMissingTranslationOutButNotAnEmptyOne)
{
    EXPECT_EQ(payload("x", std::nullopt), R"({"error":{"developerText":"x"}})");
    EXPECT_EQ(payload("", L""), R"({"error":{"developerText":"","translatedText":""}})");
}

TEST(ErrorResultTest, ANullMessageIsAnUnknownException)
{
    EXPECT_EQ(payload(nullptr, std::nullopt), R"({"error":{"developerText":"Unknown exception"}})");
    EXPECT_EQ(payload(nullptr, L"x"), R"({"error":{"developerText":"Unknown exception","translatedText":"x"}})");
}

TEST(ErrorResultTest, BytesThatAreNoUtf8AreReplaced)
{
    const std::string json = payload("caf\xE9 au lait", std::nullopt);
    EXPECT_EQ(json, "{\"error\":{\"developerText\":\"caf\uFFFD au lait\"}}");
    EXPECT_TRUE(JsonText::parse(json));
}

TEST(ErrorResultTest, TheTextOfAnExceptionIsNeverNull)
{
    EXPECT_EQ(ErrorResult::textOf(std::runtime_error("x")), "x");
    EXPECT_EQ(ErrorResult::textOf(Silent()), "Unknown exception");
}

} // namespace Varn::ToolLibraries
