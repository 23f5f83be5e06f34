// StopAtAssert.h -- ends an operation at its first failed assertion, for a test of one that cannot run on behind it.
#pragma once

#include "util/utility/Assert.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace TestSupport {

/// Turns testing on and raises each failed assertion as a FailedAssert until it dies; then all is as before. Not
/// nested.
class StopAtAssert
{
public:
    struct FailedAssert : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    StopAtAssert() : m_wasTesting(_debug::isTesting())
    {
        m_previous = _debug::setAssertHandler(
            [](std::string_view message, std::string_view, int) { throw FailedAssert(std::string(message)); });
        _debug::setTesting(true);
    }
    ~StopAtAssert()
    {
        _debug::setTesting(m_wasTesting);
        _debug::setAssertHandler(std::move(m_previous));
    }
    StopAtAssert(const StopAtAssert &) = delete;
    StopAtAssert &operator=(const StopAtAssert &) = delete;

private:
    _debug::AssertHandler m_previous;
    bool m_wasTesting;
};

/// What the assertion says at which \a operation stops; empty when there is none.
template <typename Operation>
std::string stoppingAssert(const Operation &operation)
{
    const StopAtAssert stop;
    try {
        operation();
    } catch (const StopAtAssert::FailedAssert &failed) {
        return failed.what();
    }
    return {};
}

} // namespace TestSupport
