// ToolErrorFactory.h -- makes the faults of tools. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ToolError.h"

#include <QVariant>

#include <memory>
#include <string>

namespace Varn {

class VARN_PLATFORM_EXPORT ToolErrorFactory
{
public:
    /// A fault of a value, with the text for its code in the language of the moment.
    static std::shared_ptr<ToolError> make(int code, const std::wstring &parameter = {},
                                           const std::wstring &value = {});

    /// The same with a text of the caller's, such as one of ParameterTable::Parameter::getErrorMessages().
    static std::shared_ptr<ToolError> make(int code, const std::wstring &parameter, const std::wstring &value,
                                           const std::wstring &message);

    /// Reads an entry of the list "errors". Members that are missing or of another kind count as empty: without a
    /// "kind" the code decides, without a "message" it has the text of its code. What is no map is an error of the code
    /// 0.
    static std::shared_ptr<ToolError> make(const QVariant &entry);
};

} // namespace Varn
