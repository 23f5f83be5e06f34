// Variant.h -- a value of one of the kinds that a parameter can have. A value type, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace Varn {

/// A boolean, an integer, a double, a text, or no value at all.
class VARN_PLATFORM_EXPORT Variant
{
public:
    Variant() = default; ///< no value
    explicit Variant(bool value) : m_value(value) {}
    explicit Variant(int value) : m_value(value) {}
    explicit Variant(double value) : m_value(value) {}
    explicit Variant(std::wstring value) : m_value(std::move(value)) {}
    explicit Variant(const wchar_t *value) : m_value(std::wstring(value)) {}
    explicit Variant(const void *) = delete; // no pointer is meant as a boolean

    bool isEmpty() const { return std::holds_alternative<std::monostate>(m_value); }
    bool isBool() const { return std::holds_alternative<bool>(m_value); }
    bool isInt() const { return std::holds_alternative<int>(m_value); }
    bool isDouble() const { return std::holds_alternative<double>(m_value); }
    bool isText() const { return std::holds_alternative<std::wstring>(m_value); }

    /// A number is true unless it is 0 or a NaN; a text is true when it reads "true" or as a number that is true.
    bool getAsBool() const;

    /// The nearest integer, half away from zero, held within the range of int; a NaN and a text that is no number give
    /// 0.
    int getAsInt() const;

    /// true is 1; a text is read as a decimal number with a point, blanks around it allowed, and is 0 if it is none.
    double getAsDouble() const;

    /// "true" or "false", a number with the fewest digits that read back equal and a decimal point, the text itself, or
    /// nothing for no value.
    std::wstring getAsWideString() const;
    std::string getAsString() const; ///< the same in UTF-8

    /// \a message with the text of \a value in place of each "%1". "%10" is another place and stays.
    static std::wstring getSubstitution(std::wstring_view message, const Variant &value);

    /// Integers and doubles compare as numbers, other kinds only with their own. A NaN equals nothing.
    friend VARN_PLATFORM_EXPORT bool operator==(const Variant &a, const Variant &b);

private:
    std::variant<std::monostate, bool, int, double, std::wstring> m_value;
};

} // namespace Varn
