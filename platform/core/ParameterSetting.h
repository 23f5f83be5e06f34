// ParameterSetting.h -- what somebody has set a parameter to. Immutable once made, shared by the copies of a table.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ParameterExpression.h"
#include "platform/core/Units.h"

#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace Varn {

struct VARN_PLATFORM_EXPORT ParameterSetting {
    std::wstring expression;
    Units::Unit unit;
    bool isOwn; ///< given by a person or a file, not computed from others

    /// What the text means: nothing for an empty one, a plain value, an expression, or why it is none.
    std::variant<std::monostate, bool, double, std::wstring, ParameterExpression, ExpressionError> meaning;

    static std::shared_ptr<const ParameterSetting> make(std::wstring_view expression, Units::Unit unit, bool isOwn);
    static std::shared_ptr<const ParameterSetting> ofBoolean(bool value);
    static std::shared_ptr<const ParameterSetting> ofNumber(double value, Units::Unit unit, bool isOwn);
    static std::shared_ptr<const ParameterSetting> ofText(std::wstring_view text);
};

} // namespace Varn
