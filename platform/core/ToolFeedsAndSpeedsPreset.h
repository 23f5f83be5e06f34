// ToolFeedsAndSpeedsPreset.h -- named cutting data of a tool, one kind for each process. Immutable once made, any
// thread.
//
// What a kind holds is told by the table of ToolFeedsAndSpeeds: a details record has a member for every parameter of
// any kind, and only those of its own kind count.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ToolFeedsAndSpeeds.h"
#include "platform/core/ToolFeedsAndSpeedsPresetId.h"
#include "platform/nc/NCUnit.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Varn {

class ParameterTable;
class ToolFeedsAndSpeedsPreset;
class ToolSpecification;

using ToolPresets = std::vector<std::shared_ptr<const ToolFeedsAndSpeedsPreset>>;

/// Values of a preset, and the expressions that a person gave for some of its parameters.
class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetDetailsBase : public ToolFeedsAndSpeeds
{
public:
    /// From parameter name ("tool_feedCutting") to expression.
    using Expressions = std::map<std::wstring, std::wstring>;

    const Expressions &getExpressions() const { return m_expressions; }
    void setExpressions(Expressions expressions) { m_expressions = std::move(expressions); }
    void setExpression(const std::wstring &key, const std::wstring &expression) { m_expressions[key] = expression; }

    /// The parameters that apply, as updateEnabledKeys() found them, in the order of the table of fields.
    const std::vector<std::wstring> &getEnabledKeys() const { return m_enabledKeys; }

protected:
    void readFrom(const ParameterTable &table, NCUnit::Unit unit, ToolPresetKind kind);
    void readFrom(const ToolSpecification &tool, ToolPresetKind kind);
    void findEnabledKeys(const ParameterTable &table, ToolPresetKind kind);

private:
    friend class ToolFeedsAndSpeedsPreset;
    static std::vector<std::wstring> enabledKeysIn(const ParameterTable &table, ToolPresetKind kind);

    Expressions m_expressions;
    std::vector<std::wstring> m_enabledKeys;
};

/// The base of the details of one kind, \a Details, which says it by its member `kind`.
template <typename Details>
class ToolFeedsAndSpeedsPresetDetails : public ToolFeedsAndSpeedsPresetDetailsBase
{
public:
    ToolFeedsAndSpeedsPresetDetails() = default;

    /// The values of the parameters that \a table has, in the units of a tool in \a unit; the others are as
    /// constructed.
    ToolFeedsAndSpeedsPresetDetails(const ParameterTable &table, const NCUnit::Unit &unit)
    {
        readFrom(table, unit, Details::kind);
    }

    /// The current values of \a tool, in its unit.
    explicit ToolFeedsAndSpeedsPresetDetails(const ToolSpecification &tool) { readFrom(tool, Details::kind); }

    /// Marks the parameters of the kind that \a table has and that are enabled there.
    void updateEnabledKeys(const ParameterTable &table) { findEnabledKeys(table, Details::kind); }
};

class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPreset
{
public:
    class VARN_PLATFORM_EXPORT Metadata
    {
    public:
        Metadata(ToolFeedsAndSpeedsPresetId id, std::wstring name, std::wstring description)
            : m_id(std::move(id)), m_name(std::move(name)), m_description(std::move(description))
        {
        }

        /// Of the one preset of a tool that had none. The id is the same for every tool, for presets are told apart
        /// within one tool only; so a conversion gives the same result each time. The name is in the language of the
        /// moment.
        static Metadata createDefault();

        /// \a name, or where a preset has it already \a name with " (2)", " (3)" behind it, the first that is free.
        static std::wstring createUniquePresetName(const ToolPresets &presets, const std::wstring &name);

        const ToolFeedsAndSpeedsPresetId &id() const { return m_id; }
        const std::wstring &name() const { return m_name; }
        const std::wstring &description() const { return m_description; }

    private:
        ToolFeedsAndSpeedsPresetId m_id;
        std::wstring m_name;
        std::wstring m_description;
    };

    using Expressions = ToolFeedsAndSpeedsPresetDetailsBase::Expressions;
    using Owned = std::unique_ptr<ToolFeedsAndSpeedsPreset>;

    virtual ~ToolFeedsAndSpeedsPreset();
    ToolFeedsAndSpeedsPreset(const ToolFeedsAndSpeedsPreset &) = delete;
    ToolFeedsAndSpeedsPreset &operator=(const ToolFeedsAndSpeedsPreset &) = delete;

    const ToolFeedsAndSpeedsPresetId &id() const { return m_metadata.id(); }
    const std::wstring &name() const { return m_metadata.name(); }
    const std::wstring &description() const { return m_metadata.description(); }
    const Metadata &metadata() const { return m_metadata; }
    NCUnit::Unit unit() const { return m_unit; } ///< of the values

    virtual ToolPresetKind kind() const = 0;
    virtual const ToolFeedsAndSpeedsPresetDetailsBase &details() const = 0;

    /// Whether presets of the kind say which material they are for.
    bool isMaterialAware() const;

    /// The parameters that apply in \a table.
    std::vector<std::wstring> parameterKeys(const ParameterTable &table) const;

    /// Puts the values into the parameters that \a table has, also into those that do not apply: what applies may
    /// follow from the values. A value that there is none of turns its switch off and leaves the rest. No expressions.
    void writeToParameters(ParameterTable &table) const;

    /// Makes the values the current ones of \a tool, in its unit.
    void writeToToolCurrentValues(ToolSpecification &tool) const;
    ToolSpecification toolWithPresetApplied(const ToolSpecification &tool) const;

    // Copies with something else.
    Owned withExpressions(const Expressions &expressions) const;
    Owned withMetadata(Metadata metadata) const;
    Owned inUnit(NCUnit::Unit unit) const;
    Owned clone() const { return inUnit(m_unit); }

    /// Of one kind, in one unit, with the same expressions, and with values that differ by at most \a tolerance; with
    /// \a compareMetadata also the same id, name and description. Which keys are enabled does not count.
    bool isEqual(const ToolFeedsAndSpeedsPreset &other, bool compareMetadata = true, double tolerance = 0) const;

    /// A preset of the kind of \a tool with its current values. Null for a type without presets.
    static Owned fromCurrentValues(const Metadata &metadata, const ToolSpecification &tool);

    /// The same with the values of \a table, whose "tool_type" decides the kind. Throws ToolLibraries::InvalidInput for
    /// a table without that parameter.
    static Owned fromParameterTable(const Metadata &metadata, const ParameterTable &table, NCUnit::Unit unit);

    /// A preset of a kind with those members of \a details that are of it.
    static Owned make(ToolPresetKind kind, Metadata metadata, NCUnit::Unit unit,
                      const ToolFeedsAndSpeedsPresetDetailsBase &details);

protected:
    ToolFeedsAndSpeedsPreset(Metadata metadata, NCUnit::Unit unit) : m_metadata(std::move(metadata)), m_unit(unit) {}

private:
    Metadata m_metadata;
    NCUnit::Unit m_unit;
};

/// The presets of one kind.
template <ToolPresetKind presetKind>
class ToolFeedsAndSpeedsPresetOf final : public ToolFeedsAndSpeedsPreset
{
public:
    class Details : public ToolFeedsAndSpeedsPresetDetails<Details>
    {
    public:
        static constexpr ToolPresetKind kind = presetKind;
        using ToolFeedsAndSpeedsPresetDetails<Details>::ToolFeedsAndSpeedsPresetDetails;
        Details() = default;
        explicit Details(const ToolFeedsAndSpeedsPresetDetailsBase &other)
        {
            static_cast<ToolFeedsAndSpeedsPresetDetailsBase &>(*this) = other;
        }
    };

    ToolFeedsAndSpeedsPresetOf(Metadata metadata, NCUnit::Unit unit, Details details)
        : ToolFeedsAndSpeedsPreset(std::move(metadata), unit), m_details(std::move(details))
    {
    }

    ToolPresetKind kind() const override { return presetKind; }
    const Details &details() const override { return m_details; }

private:
    Details m_details;
};

using MillingToolFeedsAndSpeedsPreset = ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Milling>;
using BoringHoleMakingToolFeedsAndSpeedsPreset = ToolFeedsAndSpeedsPresetOf<ToolPresetKind::BoringHoleMaking>;
using GeneralHoleMakingToolFeedsAndSpeedsPreset = ToolFeedsAndSpeedsPresetOf<ToolPresetKind::GeneralHoleMaking>;
using TurningToolFeedsAndSpeedsPreset = ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Turning>;
using ProbeToolFeedsAndSpeedsPreset = ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Probe>;
using CuttingToolFeedsAndSpeedsPreset =
    ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Cutting>; ///< waterjet, laser, plasma
using DepositingToolFeedsAndSpeedsPreset = ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Depositing>;

// One type information each for all libraries of a process, so that a cast works across them.
extern template class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Milling>;
extern template class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetOf<ToolPresetKind::BoringHoleMaking>;
extern template class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetOf<ToolPresetKind::GeneralHoleMaking>;
extern template class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Turning>;
extern template class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Probe>;
extern template class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Cutting>;
extern template class VARN_PLATFORM_EXPORT ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Depositing>;

} // namespace Varn
