// JSONSerializable.h -- base of everything that can print itself as JSON.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT JSONSerializable
{
public:
    JSONSerializable() = default;
    JSONSerializable(const JSONSerializable &) = default;
    JSONSerializable &operator=(const JSONSerializable &) = default;

    /// JSON text in UTF-8, without blanks.
    virtual std::string toJson() const = 0;
    virtual ~JSONSerializable();
};

} // namespace Varn::ToolLibraries
