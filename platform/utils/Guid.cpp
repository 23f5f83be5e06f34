#include "platform/utils/Guid.h"

#include <cstring>
#include <tuple>

namespace Varn {

Guid Guid::create()
{
    return Guid(QUuid::createUuid());
}

Guid Guid::fromString(std::string_view text)
{
    return Guid(QUuid::fromString(QUtf8StringView(text.data(), static_cast<qsizetype>(text.size()))));
}

std::string Guid::asString() const
{
    return m_uuid.toByteArray(QUuid::WithoutBraces).toStdString();
}

int Guid::compare(const Guid &a, const Guid &b)
{
    // The text prints the fields from left to right, most significant digit first, so the fields order as the text
    // does.
    const auto head = [](const QUuid &uuid) { return std::tuple(uuid.data1, uuid.data2, uuid.data3); };
    if (head(a.m_uuid) != head(b.m_uuid))
        return head(a.m_uuid) < head(b.m_uuid) ? -1 : 1;
    return std::memcmp(a.m_uuid.data4, b.m_uuid.data4, sizeof a.m_uuid.data4);
}

} // namespace Varn
