#include "host/Locale.h"

#include "platform/utils/LocaleRegistry.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <map>

using namespace Quillon;
using Varn::LocaleRegistry;

namespace {

/// Variables of the environment for as long as it lives; all others of the three are not there.
class Environment
{
public:
    explicit Environment(const std::map<std::string, QByteArray> &variables)
    {
        for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
            if (qEnvironmentVariableIsSet(name))
                m_before[name] = qgetenv(name);
            qunsetenv(name);
        }
        for (const auto &[name, value] : variables)
            qputenv(name.c_str(), value);
    }
    ~Environment()
    {
        for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"})
            qunsetenv(name);
        for (const auto &[name, value] : m_before)
            qputenv(name.c_str(), value);
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    std::map<std::string, QByteArray> m_before;
};

} // namespace

TEST(Locale, TheCountryStandsBeforeEncodingAndVariant)
{
    EXPECT_EQ(countryOf("de_DE.UTF-8"), "de_DE");
    EXPECT_EQ(countryOf("de_DE@euro"), "de_DE");
    EXPECT_EQ(countryOf("de_DE.ISO-8859-15@euro"), "de_DE");
    EXPECT_EQ(countryOf("fr"), "fr");
    EXPECT_EQ(countryOf(""), "");
    EXPECT_EQ(countryOf("."), "");
}

TEST(Locale, TheFirstVariableThatSaysSomethingDecides)
{
    const struct {
        std::map<std::string, QByteArray> variables;
        const char *country;
    } rows[] = {
        {{}, "en"},
        {{{"LANG", "C"}}, "en"},
        {{{"LANG", "POSIX"}}, "en"},
        {{{"LANG", "C.UTF-8"}}, "en"},
        {{{"LANG", "de_DE.UTF-8"}}, "de_DE"},
        {{{"LANG", "de"}}, "de"},
        {{{"LANG", "en_US.UTF-8"}}, "en_US"},
        {{{"LANG", "es_ES.UTF-8"}}, "en"},
        {{{"LANG", "/etc/passwd"}}, "en"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}, "fr_FR"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "ja_JP.eucJP"}}, "ja_JP"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", ""}, {"LC_ALL", ""}}, "de_DE"},
        {{{"LANG", "de_DE"}, {"LC_ALL", "C"}}, "en"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "es_ES"}}, "en"},
    };
    for (const auto &row : rows) {
        const Environment environment(row.variables);
        EXPECT_EQ(countryOfEnvironment(), row.country);
    }
}

TEST(Locale, AScopePutsBackTheLanguageBefore)
{
    LocaleRegistry::setCountry("ja");
    {
        const LocaleScope german("de_AT.UTF-8");
        EXPECT_EQ(LocaleRegistry::country(), "de-at");
        const LocaleScope same("");
        EXPECT_EQ(LocaleRegistry::country(), "de-at");
    }
    EXPECT_EQ(LocaleRegistry::country(), "ja");
    LocaleRegistry::setCountry("en");
}
