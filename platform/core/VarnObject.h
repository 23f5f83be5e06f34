// VarnObject.h -- a setup, an operation or a folder of them in a document. Main thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "util/utility/Reference.h"

#include <string>

namespace Varn {

/// Owned through Reference.
class VARN_PLATFORM_EXPORT VarnObject : public ReferenceCountable
{
public:
    ~VarnObject() override;

    /// The name that the person at the screen gave it.
    virtual std::wstring displayName() const = 0;

    virtual bool isOperation() const { return false; }
    virtual bool isSetup() const { return false; }
};

} // namespace Varn
