#include "platform/utils/MessageCatalogues.h"

#include "util/utility/Assert.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace Varn {

namespace {

constexpr QLatin1String folder(":/varn/translations/");
constexpr QLatin1String extension(".json");

QString malformed(const QString &name, const QByteArray &json, const QJsonParseError &error)
{
    const QByteArray before = json.left(error.offset);
    const auto line = before.count('\n') + 1;
    const auto column = before.size() - before.lastIndexOf('\n');
    return name + QStringLiteral(":%1:%2: ").arg(line).arg(column) + error.errorString();
}

} // namespace

tl::expected<MessageCatalogue, QString> MessageCatalogues::parse(const QByteArray &json, const QString &name)
{
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return tl::unexpected(malformed(name, json, error));
    if (!document.isObject())
        return tl::unexpected(name + QStringLiteral(": a catalogue is an object {English text: translation}"));

    MessageCatalogue catalogue;
    const QJsonObject object = document.object();
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (!member.value().isString())
            return tl::unexpected(name + QStringLiteral(": the translation of \"%1\" is no text").arg(member.key()));
        catalogue.emplace(member.key().toStdString(), member.value().toString().toStdString());
    }
    return catalogue;
}

std::vector<std::string> MessageCatalogues::builtInLanguages()
{
    std::vector<std::string> languages;
    for (const QString &name : QDir(folder).entryList({QLatin1Char('*') + extension}))
        languages.push_back(name.chopped(extension.size()).toStdString());
    std::ranges::sort(languages);
    return languages;
}

MessageCatalogue MessageCatalogues::readBuiltIn(const std::string &language)
{
    const std::vector<std::string> languages = builtInLanguages();
    if (!std::ranges::binary_search(languages, language)) // such as one that leads through other folders
        return {};
    const QString name = folder + QString::fromStdString(language) + extension;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto catalogue = parse(file.readAll(), name);
    VARN_ASSERT(catalogue.has_value());
    return catalogue.value_or(MessageCatalogue());
}

} // namespace Varn
