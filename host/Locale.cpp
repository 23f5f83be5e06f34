#include "host/Locale.h"

#include "platform/utils/LocaleRegistry.h"

#include <cstdlib>

namespace Quillon {

using Varn::LocaleRegistry;

std::string countryOf(std::string_view locale)
{
    return std::string(locale.substr(0, locale.find_first_of(".@")));
}

std::string countryOfEnvironment()
{
    for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char *locale = std::getenv(name);
        if (!locale || !*locale)
            continue;
        const std::string country = countryOf(locale);
        return LocaleRegistry::hasLanguage(country) ? country : "en";
    }
    return "en";
}

LocaleScope::LocaleScope(std::string_view locale) : m_before(LocaleRegistry::country())
{
    if (!locale.empty())
        LocaleRegistry::setCountry(countryOf(locale));
}

LocaleScope::~LocaleScope()
{
    LocaleRegistry::setCountry(m_before);
}

} // namespace Quillon
