#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/FileOutputStream.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace std::string_literals;
using testing::Contains;
using testing::Not;
using Varn::FileSystem;
using Varn::LocaleRegistry;
using Varn::LocalizedMessage;

namespace {

// The registry lasts as long as the process, so each test has messages and, from "xa" on, a country of its own.
class LocaleRegistryTest : public testing::Test
{
protected:
    ~LocaleRegistryTest() override { LocaleRegistry::setCountry("en"); }

    std::wstring write(std::string_view content) const
    {
        const std::wstring path = at(L"texts.json");
        EXPECT_TRUE(Varn::FileOutputStream(path).write(content));
        return path;
    }
    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }
    // The error of reading such a file, without its folder.
    std::string errorOf(std::string_view content) const
    {
        const auto read = LocaleRegistry::readCatalogue("xz", write(content));
        if (read)
            return "no error";
        return read.error().mid(m_folder.path().size() + 1).toStdString();
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(LocaleRegistryTest, TheSameTextGivesTheSameMessage)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Same text");
    EXPECT_TRUE(message == LocaleRegistry::registerMessage("Same text"));
    EXPECT_TRUE(message == LocaleRegistry::get()->registerMessage("Same text"));
    EXPECT_FALSE(message == LocaleRegistry::registerMessage("same text"));
    EXPECT_EQ(message.id(), "Same text");
}

TEST_F(LocaleRegistryTest, TheFirstTextOfAnIdStays)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("registry.id", "First text");
    EXPECT_EQ(message.asString(), "First text");
    EXPECT_TRUE(message == LocaleRegistry::registerMessage("registry.id", "Second text"));
    EXPECT_EQ(message.asString(), "First text");
    EXPECT_EQ(message.id(), "registry.id");
}

TEST_F(LocaleRegistryTest, TheEmptyTextIsTheEmptyMessage)
{
    LocaleRegistry::addCatalogue("xa", {{"", "something"}});
    LocaleRegistry::setCountry("xa");
    EXPECT_TRUE(LocaleRegistry::registerMessage("") == LocalizedMessage());
    EXPECT_EQ(LocaleRegistry::registerMessage("", "").asString(), "");
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(LocaleRegistry::registerMessage(""), L"xa"), L"");
    EXPECT_THAT(LocaleRegistry::registeredMessages(), Not(Contains("")));
}

TEST_F(LocaleRegistryTest, AnIdMayHoldANul)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("cut\0here"s);
    EXPECT_EQ(message.asString(), "cut\0here"s);
    EXPECT_FALSE(message == LocaleRegistry::registerMessage("cut"));
}

TEST_F(LocaleRegistryTest, AMessageFollowsTheCountryOfTheMoment)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Follows");
    LocaleRegistry::addCatalogue("xb", {{"Follows", "Folgt \u00e4"}});
    EXPECT_EQ(message.asWideString(), L"Follows");
    LocaleRegistry::setCountry("xb");
    EXPECT_EQ(message.asWideString(), L"Folgt \u00e4");
    LocaleRegistry::setCountry("en");
    EXPECT_EQ(message.asWideString(), L"Follows");
}

TEST_F(LocaleRegistryTest, ACatalogueMayComeBeforeOrAfterMessageAndCountry)
{
    LocaleRegistry::addCatalogue("xc", {{"Early", "1"}, {"Late", "2"}});
    LocaleRegistry::setCountry("xc");
    const LocalizedMessage late = LocaleRegistry::registerMessage("Late");
    EXPECT_EQ(late.asString(), "2");
    const LocalizedMessage added = LocaleRegistry::registerMessage("Added");
    EXPECT_EQ(added.asString(), "Added");
    LocaleRegistry::addCatalogue("xc", {{"Added", "3"}});
    EXPECT_EQ(added.asString(), "3");
    EXPECT_EQ(late.asString(), "2") << "a second catalogue adds to the first";
    LocaleRegistry::addCatalogue("xc", {{"Late", "4"}});
    EXPECT_EQ(late.asString(), "4");
}

TEST_F(LocaleRegistryTest, WhatHasNoTranslationStaysEnglish)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Stays English");
    LocaleRegistry::addCatalogue("xd", {{"Something else", "x"}, {"Stays English", ""}});
    for (const char *country : {"xd", "no such country", "", "-", "xd-", "\xFF"}) {
        LocaleRegistry::setCountry(country);
        EXPECT_EQ(message.asString(), "Stays English") << country;
    }
}

TEST_F(LocaleRegistryTest, ACountryFallsBackToItsLanguage)
{
    LocaleRegistry::addCatalogue("xe", {{"Both", "language"}, {"Language only", "language"}});
    LocaleRegistry::addCatalogue("xe-AT", {{"Both", "country"}});
    const LocalizedMessage both = LocaleRegistry::registerMessage("Both");
    const LocalizedMessage only = LocaleRegistry::registerMessage("Language only");
    struct Row {
        const char *country;
        const char *both;
        const char *only;
    };
    const Row rows[] = {
        {"xe", "language", "language"},    {"xe-at", "country", "language"},   {"XE_AT", "country", "language"},
        {"xe-ch", "language", "language"}, {"xe-at-x", "country", "language"}, {"xea", "Both", "Language only"},
    };
    for (const Row &row : rows) {
        LocaleRegistry::setCountry(row.country);
        EXPECT_EQ(both.asString(), row.both) << row.country;
        EXPECT_EQ(only.asString(), row.only) << row.country;
    }
}

TEST_F(LocaleRegistryTest, TellsTheCountryThatWasSet)
{
    LocaleRegistry::setCountry("PT_br");
    EXPECT_EQ(LocaleRegistry::country(), "pt-br");
    EXPECT_EQ(LocaleRegistry::getCurrentCountryCode(), L"pt-br");
}

TEST_F(LocaleRegistryTest, AMessageCanBeHadInAnotherLanguageThanTheCurrentOne)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Leading angle of a test");
    LocaleRegistry::addCatalogue("xf", {{"Leading angle of a test", "Einstellwinkel"}});
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(message, L"xf"), L"Einstellwinkel");
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(message, L"XF_x"), L"Einstellwinkel");
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(message, L"en"), L"Leading angle of a test");
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(message, L"\u5de5"), L"Leading angle of a test");
    EXPECT_EQ(message.asWideString(), L"Leading angle of a test");
}

TEST_F(LocaleRegistryTest, GermanFrenchAndJapaneseComeWithTheLibrary)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Face mill");
    struct Row {
        const char *country;
        const wchar_t *text;
    };
    const Row rows[] = {
        {"de", L"Planfr\u00e4ser"},
        {"fr", L"Fraise \u00e0 surfacer"},
        {"ja", L"\u6b63\u9762\u30d5\u30e9\u30a4\u30b9"},
        {"DE_ch", L"Planfr\u00e4ser"},
        {"en", L"Face mill"},
        {"en-gb", L"Face mill"},
        {"d", L"Face mill"},
        {"dee", L"Face mill"},
        {"../translations/de", L"Face mill"},
    };
    for (const Row &row : rows) {
        const std::wstring country(row.country, row.country + std::char_traits<char>::length(row.country));
        EXPECT_EQ(LocaleRegistry::getLocalizedMessage(message, country), row.text) << row.country;
        LocaleRegistry::setCountry(row.country);
        EXPECT_EQ(message.asWideString(), row.text) << row.country;
    }
}

// The test is the first of its process to want French.
TEST_F(LocaleRegistryTest, AHostsOwnTranslationCountsBeforeTheLibrarys)
{
    const LocalizedMessage drill = LocaleRegistry::registerMessage("Drill");
    const LocalizedMessage reamer = LocaleRegistry::registerMessage("Reamer");
    const LocalizedMessage probe = LocaleRegistry::registerMessage("Probe");
    LocaleRegistry::addCatalogue("fr", {{"Drill", "M\u00e8che"}, {"Probe", ""}});
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(drill, L"fr"), L"M\u00e8che") << "added before the first question";
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(reamer, L"fr"), L"Al\u00e9soir");
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(probe, L"fr"), L"Palpeur");
    LocaleRegistry::addCatalogue("fr", {{"Drill", "Foret"}, {"Reamer", "Al\u00e9soir machine"}});
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(reamer, L"fr"), L"Al\u00e9soir machine") << "added after it";
    LocaleRegistry::addCatalogue("fr", {{"Reamer", "Al\u00e9soir"}});
}

TEST_F(LocaleRegistryTest, TellsTheLanguagesThatItHas)
{
    LocaleRegistry::addCatalogue("xl", {{"Drill", "x"}});
    LocaleRegistry::addCatalogue("xn-A", {{"Drill", "x"}});
    for (const char *code : {"de", "en", "fr", "ja", "xl", "xn-a"}) {
        EXPECT_THAT(LocaleRegistry::languages(), Contains(code));
        EXPECT_TRUE(LocaleRegistry::hasLanguage(code)) << code;
    }
    EXPECT_TRUE(std::ranges::is_sorted(LocaleRegistry::languages()));
    for (const char *code : {"DE", "de_AT", "en-GB", "ja_JP", "XN_A", "xn-a-b"})
        EXPECT_TRUE(LocaleRegistry::hasLanguage(code)) << code;
    for (const char *code : {"", "-", "C", "POSIX", "d", "den", "de.UTF-8", "xn", "xn-ab", "pt", "\xFF"})
        EXPECT_FALSE(LocaleRegistry::hasLanguage(code)) << code;
}

TEST_F(LocaleRegistryTest, ThreadsThatAreTheFirstToWantALanguageAllHaveIt)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Thread mill");
    std::atomic<int> missing{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            if (LocaleRegistry::getLocalizedMessage(message, L"ja") == L"Thread mill")
                ++missing;
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(missing, 0);
}

TEST_F(LocaleRegistryTest, ListsTheRegisteredMessagesInOrder)
{
    LocaleRegistry::registerMessage("Listed b");
    LocaleRegistry::registerMessage("Listed a");
    LocaleRegistry::registerMessage("Listed a");
    LocaleRegistry::addCatalogue("xg", {{"Never registered", "x"}});
    const auto ids = LocaleRegistry::registeredMessages();
    EXPECT_TRUE(std::ranges::is_sorted(ids));
    EXPECT_EQ(std::ranges::count(ids, "Listed a"), 1);
    EXPECT_EQ(std::ranges::count(ids, "Listed b"), 1);
    EXPECT_EQ(std::ranges::count(ids, "Never registered"), 0);
}

TEST_F(LocaleRegistryTest, ReadsACatalogueFromAFile)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Could not open \"%1\".");
    const auto read = LocaleRegistry::readCatalogue(
        "xh",
        write("{\"Could not open \\\"%1\\\".\": \"\u00d6ffnen von \\u201e%1\\u201c ging nicht.\", \"x\": \"y\"}"));
    ASSERT_TRUE(read) << read.error().toStdString();
    EXPECT_EQ(*read, 2U);
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(message, L"xh"), L"\u00d6ffnen von \u201e%1\u201c ging nicht.");
    EXPECT_EQ(LocaleRegistry::readCatalogue("xh", write("{}")), 0U);
}

TEST_F(LocaleRegistryTest, ABrokenCatalogueNamesItsFileAndPlace)
{
    EXPECT_EQ(errorOf("{\n  \"a\": \"b\",\n  oops\n}"), "texts.json:3:4: unterminated object");
    EXPECT_EQ(errorOf(""), "texts.json:1:1: illegal value");
    EXPECT_EQ(errorOf("{\"a\": \"b\"} x"), "texts.json:1:12: garbage at the end of the document");
    EXPECT_EQ(errorOf("[\"a\"]"), "texts.json: a catalogue is an object {English text: translation}");
    EXPECT_EQ(errorOf("{\"a\": \"b\", \"Feed\": 7}"), "texts.json: the translation of \"Feed\" is no text");
    EXPECT_EQ(errorOf(std::string(5000, '[')).substr(0, 11), "texts.json:");
}

TEST_F(LocaleRegistryTest, ABrokenCatalogueAddsNothing)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("All or nothing");
    EXPECT_FALSE(LocaleRegistry::readCatalogue("xi", write("{\"All or nothing\": \"x\", \"b\": null}")));
    EXPECT_EQ(LocaleRegistry::getLocalizedMessage(message, L"xi"), L"All or nothing");
}

TEST_F(LocaleRegistryTest, AFileThatCannotBeReadIsNamed)
{
    for (const wchar_t *name : {L"missing \u5de5.json", L""}) {
        const auto read = LocaleRegistry::readCatalogue("xj", at(name));
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error(), QString::fromStdWString(at(name)) + ": cannot be read");
    }
}

TEST_F(LocaleRegistryTest, ThreadsThatRegisterTheSameTextsGetTheSameMessages)
{
    constexpr int texts = 200;
    std::vector<std::vector<LocalizedMessage>> found(4);
    std::vector<std::thread> threads;
    for (auto &mine : found) {
        threads.emplace_back([&mine] {
            for (int i = 0; i < texts; ++i)
                mine.push_back(LocaleRegistry::registerMessage("Shared " + std::to_string(i)));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (int i = 0; i < texts; ++i) {
        EXPECT_EQ(found[0][static_cast<std::size_t>(i)].asString(), "Shared " + std::to_string(i));
        for (const auto &other : found)
            EXPECT_TRUE(other[static_cast<std::size_t>(i)] == found[0][static_cast<std::size_t>(i)]);
    }
}

TEST_F(LocaleRegistryTest, AReaderSeesOneLanguageOrTheOtherWhileAnotherThreadSwitches)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("Switched under way");
    LocaleRegistry::addCatalogue("xk", {{"Switched under way", "Unterwegs gewechselt"}});
    std::atomic<bool> isDone{false};
    std::atomic<int> strange{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            while (!isDone) {
                for (const std::wstring &text :
                     {message.asWideString(), LocaleRegistry::getLocalizedMessage(message, L"xk")}) {
                    if (text != L"Switched under way" && !text.starts_with(L"Unterwegs gewechselt"))
                        ++strange;
                }
                std::this_thread::yield();
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        LocaleRegistry::setCountry(i % 2 ? "en" : "xk");
        LocaleRegistry::addCatalogue("xk", {{"Switched under way", "Unterwegs gewechselt " + std::to_string(i)}});
        LocaleRegistry::registerMessage("Registered under way " + std::to_string(i));
    }
    isDone = true;
    for (std::thread &reader : readers)
        reader.join();
    EXPECT_EQ(strange, 0);
}
