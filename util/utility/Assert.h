// Assert.h -- assertions that a test can read: a programming error is reported with its condition and place while the
// process says that it is testing; otherwise nothing happens and the code runs on. Any thread.
#pragma once

#include <platform/VarnPlatformExport.h>

#include <functional>
#include <string_view>

namespace _debug {

/// Receives the text of a failed assertion, the source file and the line.
using AssertHandler = std::function<void(std::string_view message, std::string_view source, int line)>;

/// True while assertions report. Off at start, so a host never sees one.
VARN_PLATFORM_EXPORT bool isTesting();
VARN_PLATFORM_EXPORT void setTesting(bool testing);

/// Installs what receives failed assertions and returns what did before. Without one they go to the standard error.
VARN_PLATFORM_EXPORT AssertHandler setAssertHandler(AssertHandler handler);

/// Hands a failed assertion to the handler, if isTesting(); never stops the caller.
VARN_PLATFORM_EXPORT void failTestForAssert(std::string_view message, std::string_view source, int line);

} // namespace _debug

/// Reports \a message, if the process is testing.
#define VARN_FAIL(message)                                                                                             \
    do {                                                                                                               \
        if (::_debug::isTesting())                                                                                     \
            ::_debug::failTestForAssert(message, __FILE__, __LINE__);                                                  \
    } while (false)

/// Reports \a message when the condition does not hold. The condition is evaluated only while testing: it may be
/// costly, and must have no effect.
#define VARN_ASSERT_TEXT(condition, message)                                                                           \
    do {                                                                                                               \
        if (::_debug::isTesting() && !(condition))                                                                     \
            ::_debug::failTestForAssert(message, __FILE__, __LINE__);                                                  \
    } while (false)

#define VARN_ASSERT(...) VARN_ASSERT_TEXT((__VA_ARGS__), #__VA_ARGS__)             ///< an invariant
#define VARN_EXPECTS(...) VARN_ASSERT_TEXT((__VA_ARGS__), "EXPECTS:" #__VA_ARGS__) ///< a precondition
#define VARN_ENSURES(...) VARN_ASSERT_TEXT((__VA_ARGS__), "ENSURES:" #__VA_ARGS__) ///< a postcondition
