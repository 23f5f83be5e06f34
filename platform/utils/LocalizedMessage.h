// LocalizedMessage.h -- a text for people that follows the language of the process. A value, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QString>

#include <atomic>
#include <string>

namespace Varn {

class LocaleRegistry;

/// A handle on a message of the LocaleRegistry. Each call answers in the language that is set at that moment, in
/// English where that has no translation. Copies are cheap and equal; a default one is the empty text in every
/// language.
class VARN_PLATFORM_EXPORT LocalizedMessage
{
public:
    LocalizedMessage() = default;

    std::wstring asWideString() const { return text(); }
    std::string asString() const; ///< UTF-8
    QString asQString() const;

    /// The wide text with a NUL behind it; stays valid, and as it is, until the process ends.
    const wchar_t *c_str() const { return text().c_str(); }

    /// The key of the message in the catalogues: its English text, where it was registered with that alone.
    const std::string &id() const;

    friend bool operator==(const LocalizedMessage &, const LocalizedMessage &) = default;

private:
    friend class LocaleRegistry;
    struct Record {
        const std::string *id = nullptr;
        const std::wstring *english = nullptr;
        std::atomic<const std::wstring *> current{nullptr};
    };
    explicit LocalizedMessage(const Record &record) : m_record(&record) {}
    const std::wstring &text() const;

    const Record *m_record = nullptr; // lives as long as the process
};

} // namespace Varn
