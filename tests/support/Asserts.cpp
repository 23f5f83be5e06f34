#include "support/Asserts.h"

namespace TestSupport {

Asserts::Asserts() : m_wasTesting(_debug::isTesting())
{
    m_previous = _debug::setAssertHandler([this](std::string_view message, std::string_view, int) {
        const std::lock_guard lock(m_mutex);
        m_messages.emplace_back(message);
    });
    _debug::setTesting(true);
}

Asserts::~Asserts()
{
    _debug::setTesting(m_wasTesting);
    _debug::setAssertHandler(std::move(m_previous));
}

std::vector<std::string> Asserts::messages() const
{
    const std::lock_guard lock(m_mutex);
    return m_messages;
}

} // namespace TestSupport
