// ParameterTable.h -- the parameters of one tool by name: an expression with a unit each, evaluated when somebody asks.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ExpressionValue.h"
#include "platform/core/MaybeLocalizedMessage.h"
#include "platform/core/ParameterEnum.h"
#include "platform/core/Strategy.h"
#include "platform/core/Units.h"
#include "platform/core/Variant.h"
#include "util/utility/SafePointer.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn {

class ParameterExpression;
class ParameterValues;

/// A value: a copy is a table of its own, which shares what neither changes. A fresh one costs next to nothing; what
/// nobody has set stands at the default of its definition, which usually follows other parameters.
///
///     ParameterTable table(Strategy::ROTATING);
///     table.setParameter(L"tool_type", L"ball end mill");
///     table.setParameter(L"tool_diameter", 0.5, Units::UNIT_INCHES);
///     table.getDouble(L"tool_cornerRadius", Units::UNIT_MILLIMETERS);    // 6.35, half the diameter
///
/// A value is kept until something changes that its evaluation has asked for, directly or through others. A parameter
/// without a value (a cycle, an unknown name, a text where a number is wanted, a division by zero) reads as false, 0 or
/// the empty text, and says why: Parameter::getError(). However long chains of parameters are, reading uses a bounded
/// part of the stack. docs/parameters.md lists the parameters, docs/expressions.md tells the language.
///
/// A table is for one thread at a time, as are the Parameter objects that it hands out; copies may go to other threads.
class VARN_PLATFORM_EXPORT ParameterTable : public SafePointerTarget
{
public:
    /// The quantity of a parameter, which decides its units and its rounding. Not its value type.
    enum Kind : int {
        KIND_NONE = 0, ///< texts, booleans, enumerations, counts and plain numbers
        KIND_LENGTH = 1,
        KIND_ANGLE = 2,
        KIND_FEED_PER_REVOLUTION = 3,
        KIND_FEED_PER_TOOTH = 4,
        KIND_TIME = 5,
        KIND_VELOCITY = 6,         ///< feedrates and surface speeds: two decimals in millimeters, three in inches
        KIND_ROTATIONAL_SPEED = 7, ///< turns per minute: whole numbers
        KIND_POWER = 8,
        KIND_PRESSURE = 9,
        KIND_GAS_FLOW = 10,
        KIND_MASS_FLOW = 11,
        KIND_CURRENT = 12,
        KIND_VOLTAGE = 13,
        KIND_HARDNESS = 14,
    };

    /// What a value of a parameter is. Not its quantity.
    enum Type : int {
        TYPE_BOOLEAN = 1,
        TYPE_INTEGER = 4,
        TYPE_FLOAT = 5,
        TYPE_STRING = 6,
        TYPE_ENUM = 8, ///< a text out of VarnParameters::getParameterEnum
    };

    /// What must be true for a good value.
    struct Constraint {
        std::wstring expression;
        MaybeLocalizedMessage message; ///< what is wrong when it is not
    };

    /// What is known of a parameter in the tables of one strategy and one system of units. Expressions are empty where
    /// there are none.
    struct ParameterDef {
        int number = 0; ///< 0 for a numbered parameter
        std::wstring id;
        Type type = TYPE_FLOAT;
        Kind kind = KIND_NONE;
        std::wstring typeName; ///< "LengthParameter", the word of the web dialog
        LocalizedMessage title;
        LocalizedMessage fullTitle;      ///< says which tool part is meant where the title alone leaves it open
        LocalizedMessage inlineTitle;    ///< for a place in a line
        std::wstring description;        ///< English
        std::wstring defaultExpression;  ///< in the default unit of the kind
        std::wstring enableExpression;   ///< empty: always enabled
        std::wstring disabledExpression; ///< empty: a disabled parameter keeps its value
        std::vector<Constraint> errors;
        std::vector<Constraint> warnings;
        std::vector<int> flags;   ///< 38: belongs to the tool library; 1, 2, 12: no column of a spreadsheet
        std::wstring enumeration; ///< its name, for TYPE_ENUM
        bool isFeedSpeed = false; ///< belongs to a preset of feeds and speeds

        bool hasFlag(int flag) const;
    };

    class Parameter;

    static constexpr const wchar_t *TrueExpression = L"true";
    static constexpr const wchar_t *FalseExpression = L"false";

    /// The expression whose value is \a text: in single quotes, those within doubled.
    static std::wstring getStringAsExpression(std::wstring_view text);

    /// A table without parameters, metric, until VarnParameters fills it.
    ParameterTable();

    /// The parameters of \a strategy, each at its default; none for what is no strategy.
    explicit ParameterTable(Strategy::Type strategy, bool metric = true);

    ParameterTable(const ParameterTable &other);
    ParameterTable(ParameterTable &&other);
    ParameterTable &operator=(const ParameterTable &other);
    ParameterTable &operator=(ParameterTable &&other);
    ~ParameterTable();

    Strategy::Type getStrategy() const;

    /// Decides the defaults, and the unit of numbers that come without one. What was set with a unit stays as it is.
    bool isMetric() const;
    void setMetric(bool metric);

    /// Forgets what has been evaluated, for instance because a feature flag has changed.
    void initializeParser();

    /// Numbered parameters such as "segment_1_height" are there once they have been set.
    bool hasParameter(std::wstring_view name) const;

    /// The parameter of that name, which reads from and writes to this table: its values live as long as either. Raises
    /// ToolLibraries::InvalidInput "Unknown parameter: NAME" when there is none. An assignment to the table, and
    /// VarnParameters filling it anew, leave the old values to those who hold their parameters.
    std::shared_ptr<Parameter> getParameter(std::wstring_view name);
    std::shared_ptr<const Parameter> getParameter(std::wstring_view name) const;

    /// The same; null when there is none.
    std::shared_ptr<Parameter> getParameterNoThrow(std::wstring_view name);
    std::shared_ptr<const Parameter> getParameterNoThrow(std::wstring_view name) const;

    /// All of them in the order of their numbers, then the numbered ones in the order in which they came.
    std::vector<std::shared_ptr<Parameter>> getParameters();
    std::vector<std::shared_ptr<const Parameter>> getParameters() const;

    // Reading by name, as the operations of Parameter do. Each raises for an unknown name.
    bool getBoolean(std::wstring_view name) const;
    int getInt(std::wstring_view name) const;
    double getDouble(std::wstring_view name, Units::Unit unit) const;
    std::wstring getWideMessage(std::wstring_view name) const;

    // Setting by name, as the operations of Parameter do, as values of the tool's own. Each raises for an unknown name;
    // a numbered parameter is made.
    void setParameter(std::wstring_view name, bool value);
    void setParameter(std::wstring_view name, int value);
    void setParameter(std::wstring_view name, double value, Units::Unit unit);
    void setParameter(std::wstring_view name, std::wstring_view text);
    void setParameter(std::wstring_view name, const wchar_t *text);
    void setParameter(std::wstring_view name, const std::wstring &text);
    void setParameter(std::wstring_view name, const void *) = delete; // no pointer is meant as a boolean
    void setParameterExpression(std::wstring_view name, std::wstring_view expression,
                                Units::Unit unit = Units::UNIT_NONE);

    /// The enabled parameters with a value that breaks an error or a warning constraint, in the order of
    /// getParameters(). Errors are also a parameter without a value (unless its expression is empty), a number that is
    /// not whole where an integer is wanted, an enumeration value that is not offered, and a disabled parameter whose
    /// enable expression is itself at fault. A constraint over another parameter that has no value is not counted: the
    /// fault is told there.
    std::vector<std::shared_ptr<Parameter>> getParametersWithErrors();
    std::vector<std::shared_ptr<Parameter>> getParametersWithWarnings();
    std::vector<std::shared_ptr<const Parameter>> getParametersWithErrors() const;
    std::vector<std::shared_ptr<const Parameter>> getParametersWithWarnings() const;

    /// The value of an expression over the parameters, numbers in the default units of the table. A text in it lives
    /// until the table changes.
    ExpressionResult evaluate(const ParameterExpression &expression) const;

private:
    friend class LinkedParameter;
    friend class VarnParameters;

    std::shared_ptr<ParameterValues> m_values; ///< never null
};

/// A parameter of a table. Every operation reads from or writes to the table's values.
class VARN_PLATFORM_EXPORT ParameterTable::Parameter
{
public:
    Parameter(std::shared_ptr<ParameterValues> values, std::size_t slot);

    std::wstring getName() const;
    const ParameterDef &getDefinition() const; ///< for a numbered parameter that of its pattern, with an empty id
    Type getType() const { return getDefinition().type; }
    Kind getKind() const { return getDefinition().kind; }
    bool hasFlag(int flag) const { return getDefinition().hasFlag(flag); }

    /// The unit of numbers of a quantity in metric or in inch data; UNIT_NONE for KIND_NONE.
    static Units::Unit getDefaultKindUnit(Kind kind, bool metric);

    /// The unit in which people read the value: the default unit of its kind for the table's metric flag.
    Units::Unit getDisplayUnit() const;

    /// The number is given in \a unit, or in the display unit for UNIT_NONE, and so are those of the names in it: in
    /// the default units of the system (metric, inch) that \a unit is of. An empty expression is no value; one that
    /// cannot be read is an error of the parameter. \a isOwn: a person or a file gave it, rather than a link computed
    /// it.
    void setExpression(std::wstring_view expression, Units::Unit unit, bool isOwn);

    // Own values. A text becomes the expression for that text.
    void set(bool value);
    void set(int value);
    void set(double value, Units::Unit unit); ///< what is not finite is an error of the parameter
    void set(std::wstring_view text);
    void set(const wchar_t *text) { set(std::wstring_view(text)); }
    void set(const std::wstring &text) { set(std::wstring_view(text)); }
    void set(const void *) = delete;

    /// Back to the default; with \a keepOwn only if the value is no own one.
    void reset(bool keepOwn);

    /// The expression that counts while the parameter is enabled, the default one unless another was set.
    std::wstring getExpression() const;
    Units::Unit getUnit() const; ///< that of the expression
    const std::wstring &getSystemDefaultExpression() const { return getDefinition().defaultExpression; }
    bool isDefault() const; ///< nothing was set
    bool isOwn() const;     ///< what was set is an own value

    /// False while the enable expression is false or has no value.
    bool isEnabled() const;

    /// Whether there is a value: a disabled parameter has one too.
    bool hasValue() const;

    /// Why there is no value; nothing when there is one, or when the expression is empty. The message begins with the
    /// name of the parameter at which evaluation failed.
    std::optional<ExpressionError> getError() const;

    Variant getValue() const; ///< an integer for TYPE_INTEGER, in the display unit
    bool getAsBoolean() const;
    int getAsInt() const; ///< the nearest whole number, half away from zero

    /// The value in \a unit, in the display unit for UNIT_NONE and for a unit of another quantity. Exactly the number
    /// that was set when it is asked for in the unit in which it was set.
    double getAsDouble(Units::Unit unit) const;

    /// A text as it is; a number in the display unit with the fewest digits that read back equal; "true", "false";
    /// empty without a value.
    std::wstring getAsWideMessage() const;
    std::string getAsMessage() const; ///< the same in UTF-8

    /// What people read: "12.5 mm", the description of an enumeration value, in the language of the moment.
    std::wstring getAsText() const;

    /// Whether \a expression is that of an enumeration value that the strategy has and that is offered now. False for a
    /// parameter of another type.
    bool isValidEnumValue(std::wstring_view expression) const;

    /// What a person reads of each broken constraint of an enabled parameter, in the order of the definition, behind
    /// the faults that need none. Each names the parameter and its value with the unit, and the limit where the
    /// constraint compares the parameter with one: "Corner radius is 6 mm (limit: 5.01 mm). The corner radius must not
    /// exceed half the cutting diameter."
    std::vector<std::wstring> getErrorMessages() const;
    std::vector<std::wstring> getWarningMessages() const;

    /// The same for one constraint of the definition, broken or not; of any other the limit is not told.
    std::wstring message(const Constraint &constraint) const;

private:
    std::shared_ptr<ParameterValues> m_values;
    std::size_t m_slot;
};

} // namespace Varn
