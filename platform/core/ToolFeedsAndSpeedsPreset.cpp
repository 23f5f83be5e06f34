#include "platform/core/ToolFeedsAndSpeedsPreset.h"

#include "platform/core/ParameterTable.h"
#include "platform/core/RecordComparison.h"
#include "platform/core/RecordParameters.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/RecordUnits.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <string_view>
#include <unordered_set>

namespace Varn {

namespace {

constexpr const auto &table = toolFeedsAndSpeedsFields;

/// Calls \a visit with each field of a kind.
template <typename Visit>
void forEachFieldOf(ToolPresetKind kind, Visit &&visit)
{
    const unsigned bit = presetKindBit(kind);
    const auto visitIf = [&](const auto &field) {
        if (field.kinds & bit)
            visit(field);
    };
    std::apply([&](const auto &...field) { (visitIf(field), ...); }, table);
}

void copyFields(const ToolFeedsAndSpeeds &from, ToolFeedsAndSpeeds &to, ToolPresetKind kind)
{
    forEachFieldOf(kind, [&](const auto &field) { to.*field.member = from.*field.member; });
}

template <ToolPresetKind kind>
ToolFeedsAndSpeedsPreset::Owned makeOf(ToolFeedsAndSpeedsPreset::Metadata metadata, NCUnit::Unit unit,
                                       const ToolFeedsAndSpeedsPresetDetailsBase &details)
{
    using Preset = ToolFeedsAndSpeedsPresetOf<kind>;
    typename Preset::Details own(details);
    // What is not of the kind does not count, and is left as constructed.
    static_cast<ToolFeedsAndSpeeds &>(own) = ToolFeedsAndSpeeds();
    copyFields(details, own, kind);
    return std::make_unique<Preset>(std::move(metadata), unit, std::move(own));
}

/// Details of any kind, filled for one.
class AnyDetails : public ToolFeedsAndSpeedsPresetDetailsBase
{
public:
    AnyDetails() = default;
    explicit AnyDetails(const ToolFeedsAndSpeedsPresetDetailsBase &details)
        : ToolFeedsAndSpeedsPresetDetailsBase(details)
    {
    }
    using ToolFeedsAndSpeedsPresetDetailsBase::readFrom;
};

/// Of the default preset: made once, in the form in which new presets get theirs.
constexpr const wchar_t *defaultPresetId = L"{e62786f9-7402-4c4f-bcec-e8a552e7cfff}";

} // namespace

template class ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Milling>;
template class ToolFeedsAndSpeedsPresetOf<ToolPresetKind::BoringHoleMaking>;
template class ToolFeedsAndSpeedsPresetOf<ToolPresetKind::GeneralHoleMaking>;
template class ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Turning>;
template class ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Probe>;
template class ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Cutting>;
template class ToolFeedsAndSpeedsPresetOf<ToolPresetKind::Depositing>;

std::optional<ToolPresetKind> getToolPresetKind(ToolGeometryTypes::Type type)
{
    const struct {
        bool (*isOfIt)(ToolGeometry::Type);
        ToolPresetKind kind;
    } families[] = {
        {ToolGeometry::isTurning, ToolPresetKind::Turning},
        {ToolGeometry::isJetCutter, ToolPresetKind::Cutting},
        {ToolGeometry::isDepositing, ToolPresetKind::Depositing},
        {ToolGeometry::isProbe, ToolPresetKind::Probe},
        {ToolGeometry::isBoringHoleMaking, ToolPresetKind::BoringHoleMaking},
        {ToolGeometry::isGeneralHoleMaking, ToolPresetKind::GeneralHoleMaking},
    };
    if (ToolGeometry::isHolderOnly(type) || ToolGeometry::isToolBlockOnly(type))
        return std::nullopt;
    for (const auto &family : families) {
        if (family.isOfIt(type))
            return family.kind;
    }
    return ToolPresetKind::Milling; // taps too, whose feed is bound to the pitch
}

void ToolFeedsAndSpeedsPresetDetailsBase::readFrom(const ParameterTable &parameters, NCUnit::Unit unit,
                                                   ToolPresetKind kind)
{
    forEachFieldOf(kind, [&](const auto &field) {
        RecordParameters::read(parameters, Messages::getAsWideString(field.name),
                               Messages::getAsWideString(field.switchName), unit, this->*field.member);
    });
}

void ToolFeedsAndSpeedsPresetDetailsBase::readFrom(const ToolSpecification &tool, ToolPresetKind kind)
{
    copyFields(tool.currentValues(), *this, kind);
}

void ToolFeedsAndSpeedsPresetDetailsBase::findEnabledKeys(const ParameterTable &parameters, ToolPresetKind kind)
{
    m_enabledKeys = enabledKeysIn(parameters, kind);
}

std::vector<std::wstring> ToolFeedsAndSpeedsPresetDetailsBase::enabledKeysIn(const ParameterTable &parameters,
                                                                             ToolPresetKind kind)
{
    std::vector<std::wstring> keys;
    forEachFieldOf(kind, [&](const auto &field) {
        std::wstring name = Messages::getAsWideString(field.name);
        const auto parameter = parameters.getParameterNoThrow(name);
        if (parameter && parameter->isEnabled())
            keys.push_back(std::move(name));
    });
    return keys;
}

ToolFeedsAndSpeedsPreset::Metadata ToolFeedsAndSpeedsPreset::Metadata::createDefault()
{
    return {ToolFeedsAndSpeedsPresetId(defaultPresetId),
            LocaleRegistry::registerMessage("Default preset").asWideString(), std::wstring()};
}

std::wstring ToolFeedsAndSpeedsPreset::Metadata::createUniquePresetName(const ToolPresets &presets,
                                                                        const std::wstring &name)
{
    std::unordered_set<std::wstring_view> taken;
    for (const auto &preset : presets) {
        if (preset)
            taken.insert(preset->name());
    }
    std::wstring candidate = name;
    for (int number = 2; taken.contains(candidate); ++number)
        candidate = name + L" (" + std::to_wstring(number) + L")";
    return candidate;
}

ToolFeedsAndSpeedsPreset::~ToolFeedsAndSpeedsPreset() = default;

bool ToolFeedsAndSpeedsPreset::isMaterialAware() const
{
    bool aware = false;
    forEachFieldOf(kind(),
                   [&aware](const auto &field) { aware = aware || field.name == "tool_presetMaterialCategory"; });
    return aware;
}

std::vector<std::wstring> ToolFeedsAndSpeedsPreset::parameterKeys(const ParameterTable &parameters) const
{
    return ToolFeedsAndSpeedsPresetDetailsBase::enabledKeysIn(parameters, kind());
}

void ToolFeedsAndSpeedsPreset::writeToParameters(ParameterTable &parameters) const
{
    forEachFieldOf(kind(), [&](const auto &field) {
        RecordParameters::write(details().*field.member, m_unit, Messages::getAsWideString(field.name),
                                Messages::getAsWideString(field.switchName), parameters);
    });
}

void ToolFeedsAndSpeedsPreset::writeToToolCurrentValues(ToolSpecification &tool) const
{
    const Owned converted = inUnit(tool.getUnit());
    copyFields(converted->details(), tool.currentValues(), kind());
}

ToolSpecification ToolFeedsAndSpeedsPreset::toolWithPresetApplied(const ToolSpecification &tool) const
{
    ToolSpecification copy = tool;
    writeToToolCurrentValues(copy);
    return copy;
}

ToolFeedsAndSpeedsPreset::Owned ToolFeedsAndSpeedsPreset::withExpressions(const Expressions &expressions) const
{
    AnyDetails changed(details());
    changed.setExpressions(expressions);
    return make(kind(), m_metadata, m_unit, changed);
}

ToolFeedsAndSpeedsPreset::Owned ToolFeedsAndSpeedsPreset::withMetadata(Metadata metadata) const
{
    return make(kind(), std::move(metadata), m_unit, details());
}

ToolFeedsAndSpeedsPreset::Owned ToolFeedsAndSpeedsPreset::inUnit(NCUnit::Unit unit) const
{
    AnyDetails converted(details());
    convertFields(static_cast<ToolFeedsAndSpeeds &>(converted), table, m_unit, unit);
    return make(kind(), m_metadata, unit, converted);
}

bool ToolFeedsAndSpeedsPreset::isEqual(const ToolFeedsAndSpeedsPreset &other, bool compareMetadata,
                                       double tolerance) const
{
    if (kind() != other.kind() || m_unit != other.m_unit)
        return false;
    if (compareMetadata && !(id() == other.id() && name() == other.name() && description() == other.description()))
        return false;
    return details().getExpressions() == other.details().getExpressions() &&
           RecordComparison::areFieldsSame<ToolFeedsAndSpeeds>(details(), other.details(), table, tolerance,
                                                               presetKindBit(kind()));
}

ToolFeedsAndSpeedsPreset::Owned ToolFeedsAndSpeedsPreset::fromCurrentValues(const Metadata &metadata,
                                                                            const ToolSpecification &tool)
{
    const std::optional<ToolPresetKind> kind = getToolPresetKind(tool.getType());
    if (!kind)
        return nullptr;
    AnyDetails details;
    details.readFrom(tool, *kind);
    return make(*kind, metadata, tool.getUnit(), details);
}

ToolFeedsAndSpeedsPreset::Owned ToolFeedsAndSpeedsPreset::fromParameterTable(const Metadata &metadata,
                                                                             const ParameterTable &parameters,
                                                                             NCUnit::Unit unit)
{
    const auto type = ToolGeometry::getToolTypeFromStringNoThrow(parameters.getWideMessage(L"tool_type"));
    const std::optional<ToolPresetKind> kind = getToolPresetKind(type);
    if (!kind)
        return nullptr;
    AnyDetails details;
    details.readFrom(parameters, unit, *kind);
    return make(*kind, metadata, unit, details);
}

ToolFeedsAndSpeedsPreset::Owned ToolFeedsAndSpeedsPreset::make(ToolPresetKind kind, Metadata metadata,
                                                               NCUnit::Unit unit,
                                                               const ToolFeedsAndSpeedsPresetDetailsBase &details)
{
    using Maker = Owned (*)(Metadata, NCUnit::Unit, const ToolFeedsAndSpeedsPresetDetailsBase &);
    constexpr Maker makers[] = {
        makeOf<ToolPresetKind::Milling>,
        makeOf<ToolPresetKind::BoringHoleMaking>,
        makeOf<ToolPresetKind::GeneralHoleMaking>,
        makeOf<ToolPresetKind::Turning>,
        makeOf<ToolPresetKind::Probe>,
        makeOf<ToolPresetKind::Cutting>,
        makeOf<ToolPresetKind::Depositing>,
    };
    return makers[static_cast<std::size_t>(kind)](std::move(metadata), unit, details);
}

} // namespace Varn
