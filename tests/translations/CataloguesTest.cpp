// CataloguesTest.cpp -- the catalogues of translations against the texts of the sources. A program of its own: what
// other tests register is no text of ours.
#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryParameter.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/ToolInsert.h"
#include "platform/utils/LocaleRegistry.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <set>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Varn::LocaleRegistry;
using Varn::LocalizedMessage;
using Varn::MessageCatalogue;
using Varn::ToolGeometry;
using Varn::ToolSpecification;

namespace {

using Texts = std::set<std::string>;

constexpr const char *languages[] = {"de", "en", "fr", "ja"};

QString contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QString catalogueText(const std::string &language)
{
    return contentOf(QStringLiteral(SOURCE_DIR "/translations/%1.json").arg(QString::fromStdString(language)));
}

MessageCatalogue catalogueOf(const std::string &language)
{
    const auto catalogue =
        Varn::MessageCatalogues::parse(catalogueText(language).toUtf8(), QString::fromStdString(language));
    EXPECT_TRUE(catalogue) << catalogue.error().toStdString();
    return catalogue.value_or(MessageCatalogue());
}

Texts keysOf(const MessageCatalogue &catalogue)
{
    Texts keys;
    for (const auto &[key, text] : catalogue)
        keys.insert(key);
    return keys;
}

/// "de: Drill" for each of \a some that is none of \a all.
std::vector<std::string> without(const std::string &language, const Texts &some, const Texts &all)
{
    std::vector<std::string> missing;
    for (const std::string &text : some)
        if (!all.contains(text))
            missing.push_back(language + ": " + text);
    return missing;
}

/// What the sources give to registerMessage.
struct Registrations {
    Texts literals;
    Texts others; ///< "file: argument" of what is no literal
};

Registrations registrationsInSources()
{
    static const QRegularExpression call(QStringLiteral(R"(registerMessage\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+|[^)]*)\))"));
    static const QRegularExpression seam(QStringLiteral(R"("\s*")"));
    Registrations found;
    for (const char *folder : {"ToolLibrary", "platform", "host"}) {
        QDirIterator files(QStringLiteral(SOURCE_DIR "/") + QLatin1String(folder),
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            if (path.contains(QStringLiteral("/LocaleRegistry."))) // its declaration
                continue;
            for (const QRegularExpressionMatch &match : call.globalMatch(contentOf(path))) {
                QString argument = match.captured(1).trimmed();
                if (!argument.startsWith(u'"')) {
                    found.others.insert(
                        (path.section(QStringLiteral(SOURCE_DIR "/"), 1) + ": " + argument).toStdString());
                    continue;
                }
                argument.remove(seam);
                const QByteArray list = "[" + argument.toUtf8() + "]"; // the escapes that we use are those of JSON
                found.literals.insert(QJsonDocument::fromJson(list)[0].toString().toStdString());
            }
        }
    }
    return found;
}

/// The texts that come out of tables are registered by the first question.
Texts allMessages()
{
    ToolSpecification::getToolTypeAsLocalizedString(ToolGeometry::TYPE_DRILL);
    ToolSpecification::getInsertTypeTitle(ToolGeometry::INSERT_CUSTOM);
    ToolSpecification::getHolderTypeTitle(ToolGeometry::HOLDER_CUSTOM);
    Varn::Tools::getToolLibraryParameter(Varn::Tools::ToolLibraryParametersEnum::DC);
    Varn::ToolInsert::init();
    for (const auto type : Varn::ToolBlock::s_turretConnectionTypes)
        Varn::ToolBlock::getAsEnumValue(type);
    Varn::Tools::ToolLibraryUrl(QStringLiteral("systemlibraryroot://Samples/Probes.json")).localizedSampleLibraryName();
    Varn::ParameterTable::Parameter::getDefaultKindUnit(Varn::ParameterTable::KIND_LENGTH, true);
    const std::vector<std::string> registered = LocaleRegistry::registeredMessages();
    Texts all = registrationsInSources().literals;
    all.insert(registered.begin(), registered.end());
    return all;
}

std::multiset<QString> matchesIn(const std::string &text, const QString &pattern)
{
    std::multiset<QString> found;
    const QRegularExpression expression(pattern, QRegularExpression::UseUnicodePropertiesOption);
    for (const QRegularExpressionMatch &match : expression.globalMatch(QString::fromStdString(text)))
        found.insert(match.captured(1));
    return found;
}

std::string textIn(const std::string &language, const LocalizedMessage &message)
{
    const std::wstring code(language.begin(), language.end());
    return QString::fromStdWString(LocaleRegistry::getLocalizedMessage(message, code)).toStdString();
}

/// The names that stand more than once in a table of titles from \a first to \a last.
template <typename Value, typename Title>
std::vector<std::string> repeatedNames(const std::string &language, Title title, Value first, Value last)
{
    Texts names;
    std::vector<std::string> repeated;
    for (int value = first; value <= last; ++value) {
        const std::string name = textIn(language, title(Value(value)));
        if (!names.insert(name).second)
            repeated.push_back(language + ": " + name);
    }
    return repeated;
}

} // namespace

TEST(Catalogues, EveryTextStandsInEveryLanguage)
{
    const Texts all = allMessages();
    EXPECT_GT(all.size(), 550u);
    for (const char *language : languages)
        EXPECT_THAT(without(language, all, keysOf(catalogueOf(language))), IsEmpty());
}

TEST(Catalogues, NoTranslationIsLeftOver)
{
    const Texts all = allMessages();
    for (const char *language : languages)
        EXPECT_THAT(without(language, keysOf(catalogueOf(language)), all), IsEmpty());
}

// A table that registers its texts by another way than a literal must be asked for one in allMessages().
TEST(Catalogues, TheTablesOfTextsAreKnown)
{
    EXPECT_THAT(
        registrationsInSources().others,
        UnorderedElementsAre(
            "ToolLibrary/IO/LibraryDisplayNames.cpp: name", "platform/core/ParameterDefinitionsReader.cpp: text",
            "ToolLibrary/ToolLibraryParameter.cpp: text, text", "platform/core/ToolSpecification.cpp: row.title",
            "platform/nc/ToolBlock.cpp: row.title", "platform/nc/ToolInsertChoices.cpp: row.title"));
}

TEST(Catalogues, EnglishIsTheTextItself)
{
    for (const auto &[key, text] : catalogueOf("en"))
        EXPECT_EQ(key, text);
}

TEST(Catalogues, AreSortedWithOneTextALine)
{
    for (const char *language : languages) {
        QStringList lines;
        for (const auto &[key, text] : catalogueOf(language)) {
            const auto quoted = [](QString part) {
                return u'"' + part.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\"")) + u'"';
            };
            lines.append("  " + quoted(QString::fromStdString(key)) + ": " + quoted(QString::fromStdString(text)));
        }
        EXPECT_EQ(catalogueText(language).toStdString(), ("{\n" + lines.join(",\n") + "\n}\n").toStdString());
    }
}

TEST(Catalogues, NoTranslationIsEmptyOrPaddedOtherwiseThanTheText)
{
    const auto padding = [](const std::string &text) {
        const QString whole = QString::fromStdString(text);
        const qsizetype at = whole.indexOf(whole.trimmed());
        return std::pair(at, whole.size() - whole.trimmed().size() - at);
    };
    for (const char *language : languages)
        for (const auto &[key, text] : catalogueOf(language)) {
            EXPECT_FALSE(QString::fromStdString(text).trimmed().isEmpty()) << language << ": " << key;
            EXPECT_EQ(padding(text), padding(key)) << language << ": " << key;
        }
}

TEST(Catalogues, PlaceholdersLettersAndNumbersAgreeWithTheEnglish)
{
    const QString placeholders = QStringLiteral("(%\\d+)");
    const QString styleLetters = QStringLiteral("\\b([A-Z])\\s?:");
    const QString degrees = QStringLiteral("([\\d.,]+)°");
    for (const char *language : languages) {
        for (const auto &[key, text] : catalogueOf(language)) {
            EXPECT_EQ(matchesIn(key, placeholders), matchesIn(text, placeholders)) << language << ": " << key;
            EXPECT_EQ(matchesIn(key, styleLetters), matchesIn(text, styleLetters)) << language << ": " << key;
            const bool hasComma = language == std::string("de") || language == std::string("fr");
            std::string english = key;
            if (hasComma) // 107.5° is 107,5° there; the other points of a text do not stand before a degree sign
                english = QString::fromStdString(key)
                              .replace(QRegularExpression(QStringLiteral("(\\d)\\.(\\d+°)")), QStringLiteral("\\1,\\2"))
                              .toStdString();
            EXPECT_EQ(matchesIn(english, degrees), matchesIn(text, degrees)) << language << ": " << key;
        }
    }
}

TEST(Catalogues, EachTypeHasANameOfItsOwn)
{
    for (const char *language : languages) {
        EXPECT_THAT(repeatedNames(language, ToolSpecification::getToolTypeAsLocalizedString, ToolGeometry::TYPE_NONE,
                                  ToolGeometry::TYPE_PLUNGE_MILL),
                    IsEmpty());
        EXPECT_THAT(repeatedNames(language, ToolSpecification::getInsertTypeTitle, ToolGeometry::INSERT_CUSTOM,
                                  ToolGeometry::INSERT_THREAD_TRAPEZOID),
                    IsEmpty());
        EXPECT_THAT(repeatedNames(language, ToolSpecification::getHolderTypeTitle, ToolGeometry::HOLDER_NONE,
                                  ToolGeometry::HOLDER_CUSTOM),
                    IsEmpty());
    }
}

TEST(Catalogues, EachSampleHasANameOfItsOwn)
{
    for (const char *language : languages) {
        LocaleRegistry::setCountry(language);
        Texts names;
        const QStringList files = QDir(QStringLiteral(SOURCE_DIR "/samples")).entryList({QStringLiteral("*.json")});
        for (const QString &file : files) {
            const Varn::Tools::ToolLibraryUrl url("systemlibraryroot://Samples/" + file);
            const QString name = url.localizedSampleLibraryName();
            EXPECT_TRUE(names.insert(name.toStdString()).second) << language << ": " << name.toStdString();
            EXPECT_EQ(name == url.libraryBaseName(), language == std::string("en"))
                << language << ": " << name.toStdString();
        }
        EXPECT_EQ(names.size(), 15u);
    }
    LocaleRegistry::setCountry("en");
}

TEST(Catalogues, WhatIsCompiledInStandsInTheFolder)
{
    EXPECT_THAT(Varn::MessageCatalogues::builtInLanguages(), ElementsAre("de", "fr", "ja"));
    for (const std::string &language : Varn::MessageCatalogues::builtInLanguages())
        EXPECT_EQ(Varn::MessageCatalogues::readBuiltIn(language), catalogueOf(language)) << language;
}
