// Asserts.h -- lets a test see the assertions that fire while it runs.
#pragma once

#include "util/utility/Assert.h"

#include <mutex>
#include <string>
#include <vector>

namespace TestSupport {

/// Turns testing on and collects the messages of failed assertions until it dies; then all is as before. Not nested.
class Asserts
{
public:
    Asserts();
    ~Asserts();
    Asserts(const Asserts &) = delete;
    Asserts &operator=(const Asserts &) = delete;

    /// The messages so far, in order.
    std::vector<std::string> messages() const;

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_messages; // guarded by m_mutex
    _debug::AssertHandler m_previous;
    bool m_wasTesting;
};

} // namespace TestSupport
