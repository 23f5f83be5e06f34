// expected.h -- a value or the reason why there is none. The well-known interface of std::expected.
#pragma once

#include <tl/expected.hpp>

namespace Ox {

template <typename T, typename E>
using expected = tl::expected<T, E>;

template <typename E>
using unexpected = tl::unexpected<E>;

} // namespace Ox
