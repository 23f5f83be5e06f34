// Abortable.h -- the flag that long work asks from time to time whether it should stop. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <atomic>

namespace Varn {

/// Asked by the work. An abort cannot be taken back.
class VARN_PLATFORM_EXPORT Abortable
{
public:
    virtual ~Abortable();
    virtual bool isAborted() const = 0;
    virtual void abort() = 0;
};

/// The flag itself; not aborted at first.
class VARN_PLATFORM_EXPORT AbortableImpl : public Abortable
{
public:
    AbortableImpl() = default;
    ~AbortableImpl() override;
    bool isAborted() const override { return m_aborted.load(std::memory_order_relaxed); }
    void abort() override { m_aborted.store(true, std::memory_order_relaxed); }

private:
    std::atomic<bool> m_aborted{false};
};

} // namespace Varn
