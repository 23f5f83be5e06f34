// Reference.h -- an intrusive counted pointer. The count is atomic, so references to one object may live on several
// threads; one Reference object stays on one thread at a time.
#pragma once

#include <atomic>
#include <cstddef>
#include <utility>

namespace Varn {

/// Base of what a Reference can own. A copy starts with a count of its own.
class ReferenceCountable
{
public:
    ReferenceCountable() = default;
    ReferenceCountable(const ReferenceCountable &) {}
    ReferenceCountable &operator=(const ReferenceCountable &) { return *this; }
    virtual ~ReferenceCountable() = default;

    void addReference() const { m_count.fetch_add(1, std::memory_order_relaxed); }
    void releaseReference() const
    {
        if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }
    std::size_t referenceCount() const { return m_count.load(std::memory_order_relaxed); }

private:
    mutable std::atomic<std::size_t> m_count{0};
};

/// Owns a share of a ReferenceCountable; empty by default.
template <typename T>
class Reference
{
public:
    Reference() = default;
    Reference(std::nullptr_t) {}
    Reference(T *object) : m_object(object) { acquire(); }
    Reference(const Reference &other) : m_object(other.m_object) { acquire(); }
    Reference(Reference &&other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~Reference() { release(); }

    Reference &operator=(Reference other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T *get() const { return m_object; }
    T *operator->() const { return m_object; }
    T &operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    friend bool operator==(const Reference &a, const Reference &b) { return a.m_object == b.m_object; }

private:
    void acquire()
    {
        if (m_object)
            m_object->addReference();
    }
    void release()
    {
        if (m_object)
            m_object->releaseReference();
    }

    T *m_object = nullptr;
};

} // namespace Varn
