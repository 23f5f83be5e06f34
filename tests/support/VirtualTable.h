// VirtualTable.h -- where in the table of its class a virtual operation stands, for interfaces whose order is a promise
// to hosts that were built earlier.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace TestSupport {

/// The slot of \a operation, which is virtual, counted from 0; a destructor takes two. By the C++ ABI that gcc and
/// clang share: a pointer to a virtual member function holds the offset in the table, and a flag in one of its two
/// halves.
template <typename Member>
std::size_t slotOf(Member operation)
{
    struct Parts {
        std::intptr_t function;
        std::ptrdiff_t adjustment;
    };
    static_assert(sizeof(Member) == sizeof(Parts));
    const std::intptr_t function = std::bit_cast<Parts>(operation).function;
    return static_cast<std::size_t>(function & ~std::intptr_t{1}) / sizeof(void *);
}

} // namespace TestSupport
