// UsageError.h -- the words of a command were wrong: told like a failure, but with a status of its own.
#pragma once

#include <stdexcept>

namespace Quillon {

class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace Quillon
