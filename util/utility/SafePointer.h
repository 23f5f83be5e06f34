// SafePointer.h -- a pointer that knows when its target has died, and says so instead of crashing.
//
// The target derives from SafePointerTarget. A SafePointer does not own it: when the target is destroyed every
// SafePointer to it becomes null. Copies may live on any thread; target and pointers are used on one thread at a time,
// since nothing keeps the target alive between a test and a use.
#pragma once

#include "util/utility/Assert.h"

#include <memory>
#include <stdexcept>

namespace Varn {

/// A null pointer was followed.
class VARN_PLATFORM_EXPORT NullPointerException : public std::runtime_error
{
public:
    NullPointerException();
    ~NullPointerException() override;
};

/// Base of what a SafePointer can point to. Copying a target gives the copy an identity of its own.
class SafePointerTarget
{
public:
    SafePointerTarget() = default;
    SafePointerTarget(const SafePointerTarget &) {}
    SafePointerTarget &operator=(const SafePointerTarget &) { return *this; }

    /// Leads to \a self, which is this object, until it dies.
    template <typename T>
    std::weak_ptr<T> weakPointerTo(T *self) const
    {
        return std::shared_ptr<T>(m_lifetime, self);
    }

protected:
    ~SafePointerTarget() = default;

private:
    std::shared_ptr<char> m_lifetime = std::make_shared<char>(); // owns nothing but the fact that this object lives
};

template <typename T>
class SafePointer
{
public:
    SafePointer() = default;
    SafePointer(std::nullptr_t) {}
    SafePointer(T *object)
    {
        if (object)
            m_target = object->weakPointerTo(object);
    }

    /// The target, or null when there is none or it has died. Never raises.
    T *get() const { return m_target.lock().get(); }
    bool isValid() const { return get() != nullptr; }
    explicit operator bool() const { return isValid(); }

    /// Raises NullPointerException when there is no target.
    T *operator->() const { return &checked(); }
    T &operator*() const { return checked(); }

    friend bool operator==(const SafePointer &a, const SafePointer &b) { return a.get() == b.get(); }

private:
    T &checked() const
    {
        T *object = get();
        VARN_ASSERT(object);
        if (!object)
            throw NullPointerException();
        return *object;
    }

    std::weak_ptr<T> m_target;
};

} // namespace Varn
