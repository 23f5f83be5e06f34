// Locale.h -- the language that a person wants quillon's texts in. Main thread.
#pragma once

#include <string>
#include <string_view>

namespace Quillon {

/// The country code in the name of a locale: "de_DE" of "de_DE.UTF-8" and "de_DE@euro".
std::string countryOf(std::string_view locale);

/// The country that the environment names as POSIX has it, in the first of LC_ALL, LC_MESSAGES and LANG that is there
/// and not empty; "en" when there are no texts for that.
std::string countryOfEnvironment();

/// Sets the language of the process to \a locale unless that is empty, and puts back the one before when it dies.
class LocaleScope
{
public:
    explicit LocaleScope(std::string_view locale);
    ~LocaleScope();
    LocaleScope(const LocaleScope &) = delete;
    LocaleScope &operator=(const LocaleScope &) = delete;

private:
    std::string m_before;
};

} // namespace Quillon
