// Validified.h -- a value with a flag that says whether it means anything. A value type.
#pragma once

#include "util/utility/Assert.h"

#include <utility>

namespace Varn {

/// The answer of a lookup that can fail. Reading an invalid one is a programming error and gives the default value.
template <typename T>
class Validified
{
public:
    Validified() = default;
    Validified(T value) : m_value(std::move(value)), m_valid(true) {}

    bool isValid() const { return m_valid; }
    explicit operator bool() const { return m_valid; }

    const T &value() const
    {
        VARN_ASSERT(m_valid);
        return m_value;
    }
    const T &operator*() const { return value(); }
    T valueOr(T fallback) const { return m_valid ? m_value : std::move(fallback); }

private:
    T m_value{};
    bool m_valid = false;
};

} // namespace Varn
