// MessageCatalogues.h -- catalogues of translations as files hold them. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Varn {

/// From the id of a message to its translation, UTF-8.
using MessageCatalogue = std::map<std::string, std::string, std::less<>>;

namespace MessageCatalogues {

/// The catalogue in a JSON text, an object {English text: translation} in UTF-8. The error begins with \a name, and
/// with the line and column where the text is broken.
VARN_PLATFORM_EXPORT tl::expected<MessageCatalogue, QString> parse(const QByteArray &json, const QString &name);

/// The codes of the languages whose catalogues are compiled in, in ascending order. English is none of them.
VARN_PLATFORM_EXPORT std::vector<std::string> builtInLanguages();

/// The compiled-in catalogue of one of these languages; an empty one for any other.
VARN_PLATFORM_EXPORT MessageCatalogue readBuiltIn(const std::string &language);

} // namespace MessageCatalogues

} // namespace Varn
