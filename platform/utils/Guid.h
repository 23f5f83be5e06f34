// Guid.h -- a 128 bit identifier after RFC 4122. A value type, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QUuid>

#include <string>
#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT Guid
{
public:
    /// The null GUID, all bits zero.
    Guid() = default;
    explicit Guid(const QUuid &uuid) : m_uuid(uuid) {}

    /// A new random GUID (version 4).
    static Guid create();

    /// Makes this one a new random GUID.
    void generate() { *this = create(); }

    /// Reads 36 characters, or 38 with braces, in either case. Anything else gives the null GUID.
    static Guid fromString(std::string_view text);

    /// 36 characters, lower case, no braces.
    std::string asString() const;

    /// Below 0, 0 or above 0, in the order of the texts.
    static int compare(const Guid &a, const Guid &b);

    bool isNull() const { return m_uuid.isNull(); }
    const QUuid &uuid() const { return m_uuid; }

    friend bool operator==(const Guid &a, const Guid &b) { return a.m_uuid == b.m_uuid; }

private:
    QUuid m_uuid;
};

} // namespace Varn
