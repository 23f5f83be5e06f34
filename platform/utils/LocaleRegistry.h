// LocaleRegistry.h -- the texts that people read, in the language of the process. Any thread may call any operation.
#pragma once

#include "platform/utils/LocalizedMessage.h"
#include "platform/utils/MessageCatalogues.h"

#include <QString>

#include <tl/expected.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Varn {

/// One registry per process. A message is registered under its English text, which stands wherever a language has no
/// translation; a catalogue holds the translations of one country. Country codes are ASCII such as "en", "de" or
/// "pt-br"; their case does not matter, '_' is '-', and what "de-at" lacks comes from "de". The country is "en" at
/// first.
///
/// The library brings catalogues of German, French and Japanese along, and reads one when a text is first wanted in its
/// language. A host's own translations of the same texts count before them, whenever they are added.
///
///     const LocalizedMessage message = LocaleRegistry::registerMessage("Could not open %1.");
///     show(message.asQString().arg(name));
class VARN_PLATFORM_EXPORT LocaleRegistry
{
public:
    using Catalogue = MessageCatalogue; ///< from message id to translation, UTF-8

    /// The registry as an object, never null. All operations are static as well.
    static LocaleRegistry *get();

    /// The message of that English text (UTF-8), which is also its id. The same text gives the same message.
    static LocalizedMessage registerMessage(std::string_view englishText);

    /// For a message whose id is not its text. The text of the first call for an id stays. An empty id gives the empty
    /// message, which has no translation.
    static LocalizedMessage registerMessage(std::string_view id, std::string_view englishText);

    /// The ids of all registered messages, in ascending order.
    static std::vector<std::string> registeredMessages();

    /// Sets the language of the process. A country without a catalogue gets English texts.
    static void setCountry(std::string_view code);

    /// Another number whenever a text may read differently from before.
    static std::uint64_t revision();

    /// The code as it was set, in lower case and with '-'.
    static std::string country();
    static std::wstring getCurrentCountryCode(); ///< country() as wide text

    /// The codes that there are texts for, in ascending order: "en", those of the library's catalogues, and those of
    /// catalogues that were added.
    static std::vector<std::string> languages();

    /// Whether there are texts for a code or for its language.
    static bool hasLanguage(std::string_view code);

    /// The text of a message in the language of \a countryCode, in English where that has none.
    static std::wstring getLocalizedMessage(const LocalizedMessage &message, std::wstring_view countryCode);

    /// Adds translations, also of messages that are not registered yet; a later translation replaces an earlier one, an
    /// empty one counts as none.
    static void addCatalogue(std::string_view countryCode, const Catalogue &translations);

    /// Adds the translations of a JSON file, an object {English text: translation} in UTF-8. Gives the number of its
    /// members. A file that is missing, broken or holds something else adds nothing; the error names it, and the line
    /// and column where it is broken.
    static tl::expected<std::size_t, QString> readCatalogue(std::string_view countryCode, const std::wstring &path);

private:
    LocaleRegistry() = default;
    struct Texts;
    static Texts &texts();
};

} // namespace Varn
