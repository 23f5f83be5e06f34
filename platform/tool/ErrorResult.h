// ErrorResult.h -- the JSON of a failure as it reaches the host. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <json/value.h>

#include <exception>
#include <optional>
#include <string>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ErrorResult
{
public:
    /// {"error":{"developerText": message, "translatedText": text}}, the latter only when there is one. A null message
    /// is "Unknown exception"; bytes that are no UTF-8 are U+FFFD.
    static Json::Value createPayload(const char *message, std::optional<std::wstring> translated);

    /// what() of \a exception, or "Unknown exception" where that is null.
    static std::string textOf(const std::exception &exception);
};

} // namespace Varn::ToolLibraries
