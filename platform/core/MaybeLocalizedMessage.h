// MaybeLocalizedMessage.h -- a text for people that either follows their language or is the same in every one. A value,
// any thread.
#pragma once

#include "platform/utils/LocalizedMessage.h"

#include <string>
#include <utility>

namespace Varn {

class MaybeLocalizedMessage
{
public:
    MaybeLocalizedMessage() = default; ///< the empty text
    MaybeLocalizedMessage(LocalizedMessage message) : m_message(std::move(message)) {}
    explicit MaybeLocalizedMessage(std::wstring text) : m_text(std::move(text)) {}

    /// The text in the language of the moment.
    std::wstring asWideString() const { return m_text.empty() ? m_message.asWideString() : m_text; }

private:
    LocalizedMessage m_message;
    std::wstring m_text; ///< counts before the message
};

} // namespace Varn
