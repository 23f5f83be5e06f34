#include "platform/utils/LocalizedMessage.h"

#include "platform/utils/Messages.h"

namespace Varn {

std::string LocalizedMessage::asString() const
{
    return Messages::fromWideUnicodeToUTF8(text());
}

QString LocalizedMessage::asQString() const
{
    return QString::fromStdWString(text());
}

const std::string &LocalizedMessage::id() const
{
    static const std::string empty;
    return m_record ? *m_record->id : empty;
}

const std::wstring &LocalizedMessage::text() const
{
    static const std::wstring empty;
    return m_record ? *m_record->current.load(std::memory_order_acquire) : empty;
}

} // namespace Varn
