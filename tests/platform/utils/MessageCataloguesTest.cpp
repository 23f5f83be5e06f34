#include "platform/utils/MessageCatalogues.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Varn::MessageCatalogue;
namespace MessageCatalogues = Varn::MessageCatalogues;

TEST(MessageCatalogues, ACatalogueIsAnObjectOfTexts)
{
    const auto catalogue =
        MessageCatalogues::parse(R"({"b": "Z\u00e4hne", "a": "", "": "x", "\u00d8 \"1\"": "2"})", "n");
    ASSERT_TRUE(catalogue) << catalogue.error().toStdString();
    EXPECT_THAT(*catalogue,
                ElementsAre(Pair("", "x"), Pair("a", ""), Pair("b", "Z\u00e4hne"), Pair("\u00d8 \"1\"", "2")));
}

TEST(MessageCatalogues, AnErrorBeginsWithTheNameAndThePlace)
{
    const struct {
        const char *json;
        const char *error;
    } rows[] = {
        {"", "de.json:1:1: illegal value"},
        {"{\n\"a\": \"b\",\n]", "de.json:3:2: unterminated object"},
        {"{\"a\": \"\xFF\"}", "de.json:1:8: invalid UTF8 string"},
        {"[]", "de.json: a catalogue is an object {English text: translation}"},
        {"{\"a\": {\"b\": \"c\"}}", "de.json: the translation of \"a\" is no text"},
    };
    for (const auto &row : rows) {
        const auto catalogue = MessageCatalogues::parse(row.json, QStringLiteral("de.json"));
        ASSERT_FALSE(catalogue) << row.json;
        EXPECT_EQ(catalogue.error().toStdString(), row.error);
    }
}

TEST(MessageCatalogues, OnlyLanguagesThatAreCompiledInHaveTexts)
{
    EXPECT_THAT(MessageCatalogues::builtInLanguages(), ElementsAre("de", "fr", "ja"));
    for (const std::string &language : MessageCatalogues::builtInLanguages())
        EXPECT_GT(MessageCatalogues::readBuiltIn(language).size(), 100u) << language;
    for (const char *language : {"en", "", "DE", "de-at", "../translations/de", "\xFF"})
        EXPECT_THAT(MessageCatalogues::readBuiltIn(language), IsEmpty()) << language;
}
