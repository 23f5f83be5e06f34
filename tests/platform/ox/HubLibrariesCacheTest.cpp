#include "platform/ox/HubLibrariesCache.h"
#include "platform/tool/Exception.h"

#include <gtest/gtest.h>

#include <type_traits>

using Ox::HubLibrariesCache::Exception;
using Ox::HubLibrariesCache::HubItemConflictError;
using Ox::HubLibrariesCache::HubItemMissingError;

TEST(HubLibrariesCache, AnExceptionCarriesItsTexts)
{
    const Exception plain("Hub is offline");
    EXPECT_STREQ(plain.what(), "Hub is offline");
    EXPECT_EQ(plain.translatedWhat(), std::nullopt);

    const Exception translated("Hub is offline", L"Der Hub ist nicht erreichbar");
    EXPECT_STREQ(translated.what(), "Hub is offline");
    EXPECT_EQ(translated.translatedWhat(), L"Der Hub ist nicht erreichbar");
}

TEST(HubLibrariesCache, TheTextNeedNotEndInANul)
{
    EXPECT_STREQ(Exception(std::string_view("offline again").substr(0, 7)).what(), "offline");
    EXPECT_STREQ(Exception("").what(), "");
}

TEST(HubLibrariesCache, AConflictAndALossAreToldFromOtherFailures)
{
    const auto kindOf = [](const auto &failure) {
        try {
            throw failure;
        } catch (const HubItemConflictError &) {
            return "conflict";
        } catch (const HubItemMissingError &) {
            return "missing";
        } catch (const Exception &) {
            return "other";
        }
    };
    EXPECT_STREQ(kindOf(HubItemConflictError("newer")), "conflict");
    EXPECT_STREQ(kindOf(HubItemMissingError("gone")), "missing");
    EXPECT_STREQ(kindOf(Exception("offline")), "other");
    EXPECT_EQ(HubItemConflictError("newer", L"neuer").translatedWhat(), L"neuer");
}

TEST(HubLibrariesCache, HasOnlyTheStandardExceptionsInCommonWithTheToolLibrary)
{
    EXPECT_TRUE((std::is_base_of_v<std::runtime_error, Exception>));
    EXPECT_FALSE((std::is_base_of_v<Varn::ToolLibraries::Exception, Exception>));
    EXPECT_FALSE((std::is_base_of_v<Exception, Varn::ToolLibraries::Exception>));
}
