#include "platform/utils/LocaleRegistry.h"

#include "platform/utils/FileInputStream.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <set>
#include <shared_mutex>

namespace Varn {

namespace {

// By language, each done once its catalogue has been read. Not made with the texts: a message may be registered before
// the resources of the library are there.
std::map<std::string, std::once_flag, std::less<>> &builtInCatalogues()
{
    static auto &flags = *[] {
        auto *made = new std::map<std::string, std::once_flag, std::less<>>;
        for (const std::string &language : MessageCatalogues::builtInLanguages())
            made->try_emplace(language);
        return made;
    }();
    return flags;
}

} // namespace

// The texts are interned and never freed: a handle reads its text without a lock, whatever catalogue comes meanwhile.
struct LocaleRegistry::Texts {
    using Translations = std::map<std::string, const std::wstring *, std::less<>>; // by message id

    std::shared_mutex mutex; // guards all others
    std::set<std::wstring> interned;
    std::map<std::string, LocalizedMessage::Record, std::less<>> messages; // by id
    std::map<std::string, Translations, std::less<>> catalogues;           // by country
    std::string country = "en";
    std::atomic<std::uint64_t> revision = 0; // not guarded

    // Before a text of that country is looked up, and without the lock. What is there already is a host's, and stays.
    void readBuiltIn(std::string_view code)
    {
        const auto found = builtInCatalogues().find(code.substr(0, code.find('-')));
        if (found == builtInCatalogues().end())
            return;
        std::call_once(found->second, [&, &language = found->first] {
            const MessageCatalogue translations = MessageCatalogues::readBuiltIn(language);
            const std::unique_lock lock(mutex);
            for (const auto &[id, translation] : translations)
                catalogues[language].try_emplace(id, intern(translation));
        });
    }

    const std::wstring *intern(std::string_view utf8)
    {
        return &*interned.insert(Messages::fromUTF8ToWideUnicode(utf8)).first;
    }

    // What the code has, else its language: "de-at", then "de". English when neither has the message.
    const std::wstring *find(const LocalizedMessage::Record &message, std::string_view code) const
    {
        for (;;) {
            if (const auto catalogue = catalogues.find(code); catalogue != catalogues.end())
                if (const auto text = catalogue->second.find(*message.id); text != catalogue->second.end())
                    return text->second;
            const auto dash = code.rfind('-');
            if (dash == std::string_view::npos)
                return message.english;
            code = code.substr(0, dash);
        }
    }

    void refresh()
    {
        for (auto &[id, message] : messages)
            message.current.store(find(message, country), std::memory_order_release);
        ++revision;
    }
};

namespace {

std::string normalized(std::string_view code)
{
    std::string result(code);
    for (char &c : result) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        else if (c == '_')
            c = '-';
    }
    return result;
}

} // namespace

LocaleRegistry::Texts &LocaleRegistry::texts()
{
    // Never destroyed: a thread that outlives main may still ask for a text.
    static auto &instance = *new Texts;
    return instance;
}

LocaleRegistry *LocaleRegistry::get()
{
    static LocaleRegistry registry;
    return &registry;
}

LocalizedMessage LocaleRegistry::registerMessage(std::string_view englishText)
{
    return registerMessage(englishText, englishText);
}

LocalizedMessage LocaleRegistry::registerMessage(std::string_view id, std::string_view englishText)
{
    if (id.empty())
        return {};
    Texts &all = texts();
    {
        const std::shared_lock lock(all.mutex);
        if (const auto known = all.messages.find(id); known != all.messages.end())
            return LocalizedMessage(known->second);
    }
    const std::unique_lock lock(all.mutex);
    const auto [message, isNew] = all.messages.try_emplace(std::string(id));
    LocalizedMessage::Record &record = message->second;
    if (isNew) {
        record.id = &message->first;
        record.english = all.intern(englishText);
        record.current.store(all.find(record, all.country), std::memory_order_release);
    }
    return LocalizedMessage(record);
}

std::vector<std::string> LocaleRegistry::registeredMessages()
{
    Texts &all = texts();
    const std::shared_lock lock(all.mutex);
    std::vector<std::string> ids;
    ids.reserve(all.messages.size());
    for (const auto &[id, message] : all.messages)
        ids.push_back(id);
    return ids;
}

void LocaleRegistry::setCountry(std::string_view code)
{
    std::string country = normalized(code);
    Texts &all = texts();
    all.readBuiltIn(country);
    const std::unique_lock lock(all.mutex);
    all.country = std::move(country);
    all.refresh();
}

std::uint64_t LocaleRegistry::revision()
{
    return texts().revision.load();
}

std::string LocaleRegistry::country()
{
    Texts &all = texts();
    const std::shared_lock lock(all.mutex);
    return all.country;
}

std::wstring LocaleRegistry::getCurrentCountryCode()
{
    return Messages::fromUTF8ToWideUnicode(country());
}

std::vector<std::string> LocaleRegistry::languages()
{
    std::set<std::string> codes{"en"};
    Texts &all = texts();
    const std::shared_lock lock(all.mutex);
    for (const auto &[language, read] : builtInCatalogues())
        codes.insert(language);
    for (const auto &[code, translations] : all.catalogues)
        codes.insert(code);
    return {codes.begin(), codes.end()};
}

bool LocaleRegistry::hasLanguage(std::string_view code)
{
    const std::string wanted = normalized(code);
    const std::vector<std::string> known = languages();
    return std::ranges::any_of(known, [&](const std::string &each) {
        return wanted == each || (wanted.starts_with(each) && wanted[each.size()] == '-');
    });
}

std::wstring LocaleRegistry::getLocalizedMessage(const LocalizedMessage &message, std::wstring_view countryCode)
{
    if (!message.m_record)
        return {};
    const std::string code = normalized(Messages::fromWideUnicodeToUTF8(countryCode));
    Texts &all = texts();
    all.readBuiltIn(code);
    const std::shared_lock lock(all.mutex);
    return *all.find(*message.m_record, code);
}

void LocaleRegistry::addCatalogue(std::string_view countryCode, const Catalogue &translations)
{
    Texts &all = texts();
    const std::unique_lock lock(all.mutex);
    auto &catalogue = all.catalogues[normalized(countryCode)];
    for (const auto &[id, translation] : translations) {
        if (!translation.empty())
            catalogue.insert_or_assign(id, all.intern(translation));
    }
    all.refresh();
}

tl::expected<std::size_t, QString> LocaleRegistry::readCatalogue(std::string_view countryCode, const std::wstring &path)
{
    const QString name = QString::fromStdWString(path);
    FileInputStream file(path);
    const auto content = file.readAll();
    if (!content)
        return tl::unexpected(name + QStringLiteral(": cannot be read"));

    const auto catalogue = MessageCatalogues::parse(QByteArray::fromStdString(*content), name);
    if (!catalogue)
        return tl::unexpected(catalogue.error());
    addCatalogue(countryCode, *catalogue);
    return catalogue->size();
}

} // namespace Varn
