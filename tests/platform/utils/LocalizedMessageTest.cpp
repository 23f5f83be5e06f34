#include "platform/utils/LocalizedMessage.h"
#include "platform/utils/LocaleRegistry.h"

#include <gtest/gtest.h>

using Varn::LocaleRegistry;
using Varn::LocalizedMessage;

TEST(LocalizedMessage, ADefaultOneIsTheEmptyText)
{
    const LocalizedMessage message;
    EXPECT_EQ(message.asWideString(), L"");
    EXPECT_EQ(message.asString(), "");
    EXPECT_TRUE(message.asQString().isEmpty());
    EXPECT_STREQ(message.c_str(), L"");
    EXPECT_EQ(message.id(), "");
    EXPECT_TRUE(message == LocalizedMessage());
}

TEST(LocalizedMessage, GivesItsTextInEveryFormOfString)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("\u00d8 of %1 \U0001F529");
    EXPECT_EQ(message.asWideString(), L"\u00d8 of %1 \U0001F529");
    EXPECT_EQ(message.asString(), "\u00d8 of %1 \U0001F529");
    EXPECT_EQ(message.asQString(), QStringLiteral("\u00d8 of %1 \U0001F529"));
    EXPECT_EQ(message.asQString().arg(5), QStringLiteral("\u00d8 of 5 \U0001F529"));
    EXPECT_STREQ(message.c_str(), L"\u00d8 of %1 \U0001F529");
}

TEST(LocalizedMessage, ACopyIsTheSameMessage)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("LocalizedMessageTest one");
    const LocalizedMessage copy = message;
    EXPECT_TRUE(copy == message);
    EXPECT_FALSE(copy == LocaleRegistry::registerMessage("LocalizedMessageTest two"));
    EXPECT_FALSE(copy == LocalizedMessage());
}

TEST(LocalizedMessage, APointerToTheTextStaysWhenTheLanguageChanges)
{
    const LocalizedMessage message = LocaleRegistry::registerMessage("LocalizedMessageTest pointer");
    LocaleRegistry::addCatalogue("xm", {{"LocalizedMessageTest pointer", "translated"}});
    const wchar_t *const english = message.c_str();
    LocaleRegistry::setCountry("xm");
    const wchar_t *const translated = message.c_str();
    LocaleRegistry::addCatalogue("xm", {{"LocalizedMessageTest pointer", "translated again"}});
    LocaleRegistry::setCountry("en");
    EXPECT_STREQ(english, L"LocalizedMessageTest pointer");
    EXPECT_STREQ(translated, L"translated");
}
