// The part of ToolSpecification that is one tool: identity, presets, attachments, comparing, converting.
#include "platform/core/RecordComparison.h"
#include "platform/core/ToolError.h"
#include "platform/core/ToolFeedsAndSpeedsPreset.h"
#include "platform/core/ToolFieldText.h"
#include "platform/core/ToolRecordParts.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/RecordUnits.h"
#include "platform/nc/Tool3DGeometry.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"
#include "platform/utils/Guid.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <mutex>

namespace Varn {

namespace {

struct Resolver {
    std::mutex mutex;
    ToolSpecification::Tool3DGeometryResolver resolve; // guarded by mutex
};

Resolver &resolver()
{
    static Resolver instance;
    return instance;
}

std::wstring idOf(const ToolGeometry::Raw3DGeometry &geometry)
{
    return geometry ? geometry->id() : std::wstring();
}

bool arePresetsSame(const ToolPresets &a, const ToolPresets &b, bool withIds, double tolerance)
{
    const auto isSame = [&](const auto &one, const auto &other) {
        const bool sameWords = one->name() == other->name() && one->description() == other->description();
        return sameWords && one->isEqual(*other, withIds, tolerance);
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

/// The words for people do not count: they are those of the language in which a fault was found.
bool areErrorsSame(const ToolSpecification::Errors &a, const ToolSpecification::Errors &b)
{
    const auto isSame = [](const std::shared_ptr<ToolError> &one, const std::shared_ptr<ToolError> &other) {
        if (!one || !other)
            return one == other;
        return one->getCode() == other->getCode() && one->getKind() == other->getKind() &&
               one->getParameter() == other->getParameter() && one->getValue() == other->getValue();
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

/// Fields by which the same thing is told from its like, not what it is.
bool isIdentity(std::string_view name)
{
    return name == "holder_guid" || name == "guid";
}

std::string withoutSeparators(std::string text)
{
    for (char &character : text) {
        if (character == '\t' || character == '\n' || character == '\r')
            character = ' ';
    }
    return text;
}

} // namespace

ToolSpecification::ToolSpecification() = default;
ToolSpecification::ToolSpecification(const ToolSpecification &) = default;
ToolSpecification::ToolSpecification(ToolSpecification &&) noexcept = default;
ToolSpecification &ToolSpecification::operator=(const ToolSpecification &) = default;
ToolSpecification &ToolSpecification::operator=(ToolSpecification &&) noexcept = default;
ToolSpecification::~ToolSpecification() = default;

void ToolSpecification::resetGUID()
{
    m_guid = Messages::fromUTF8ToWideUnicode(Guid::create().asString());
}

void ToolSpecification::convertToUnit(NCUnit::Unit unit)
{
    const NCUnit::Unit from = getUnit();
    forEachRecordPart([&](const ToolRecordPart &, const auto &access, const auto &fields) {
        convertFields(access(*this), fields, from, unit);
    });
    holder().sections = inUnit(std::move(holder().sections), from, unit);
    setShaft(inUnit(getShaft(), from, unit));
    setCustomCutter(inUnit(getCustomCutter(), from, unit));
    if (auto &transform = getTurningParameterization().toolBlockTransform)
        transform = inUnit(*transform, from, unit);
    for (auto &preset : m_presets)
        preset = preset->inUnit(unit);
    setUnit(unit);
}

void ToolSpecification::setPresets(ToolPresets presets)
{
    std::erase(presets, nullptr);
    m_presets = std::move(presets);
}

void ToolSpecification::addPreset(std::shared_ptr<const ToolFeedsAndSpeedsPreset> preset)
{
    if (preset)
        m_presets.push_back(std::move(preset));
}

std::shared_ptr<const ToolFeedsAndSpeedsPreset> ToolSpecification::getPreset(const ToolLibraries::PresetId &id) const
{
    const auto found =
        std::find_if(m_presets.begin(), m_presets.end(), [&id](const auto &preset) { return preset->id() == id; });
    return found == m_presets.end() ? nullptr : *found;
}

std::optional<ToolFeedsAndSpeedsPresetId> ToolSpecification::getDefaultPresetId() const
{
    if (m_defaultPresetId && getPreset(*m_defaultPresetId))
        return m_defaultPresetId;
    if (m_presets.empty())
        return std::nullopt;
    return m_presets.front()->id();
}

void ToolSpecification::setExpression(const std::wstring &name, std::optional<std::wstring> expression)
{
    if (expression)
        m_expressions[name] = std::move(*expression);
    else
        m_expressions.erase(name);
}

void ToolSpecification::set3DGeometryResolver(Tool3DGeometryResolver resolve)
{
    const std::lock_guard lock(resolver().mutex);
    resolver().resolve = std::move(resolve);
}

void ToolSpecification::restore3DGeometry()
{
    Tool3DGeometryResolver resolve;
    {
        const std::lock_guard lock(resolver().mutex);
        resolve = resolver().resolve;
    }
    if (!resolve)
        return;
    if (const auto placeholder = getPlaceholder3DGeometry()) {
        if (auto solid = resolve(placeholder->id()))
            set3DGeometry(std::move(solid));
    }
    if (const auto placeholder = getPlaceholderNested3DGeometry()) {
        if (auto solid = resolve(placeholder->id()))
            setNested3DGeometry(std::move(solid));
    }
}

void ToolSpecification::invalidate()
{
    m_expressions.clear();
    m_errors.clear();
    set3DGeometry(std::nullopt);
    removeHolder();
    removeShaft();
    removeToolBlock();
    setCustomCutter({});
}

bool ToolSpecification::isSame(const ToolSpecification &other, const ComparisonOptions &options) const
{
    using RecordComparison::isSame;
    const double tolerance = options.tolerance;
    const bool withIdentity = options.identity == ComparisonOptions::IDENTITY_COMPARED;
    if (getType() != other.getType() || getUnit() != other.getUnit() || (withIdentity && m_guid != other.m_guid))
        return false;

    bool same = true;
    forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
        const bool counts = (withIdentity || !isIdentity(field.name)) &&
                            (options.currentValues.value_or(true) || part.element != "currentValues");
        same = same && (!counts || isSame(access(*this).*field.member, access(other).*field.member, tolerance));
    });
    return same && isSame(getHolder(), other.getHolder(), tolerance) &&
           isSame(getShaft(), other.getShaft(), tolerance) &&
           isSame(getCustomCutter(), other.getCustomCutter(), tolerance) &&
           isSame(getTurningParameterization().toolBlockTransform,
                  other.getTurningParameterization().toolBlockTransform, tolerance) &&
           m_expressions == other.m_expressions && areErrorsSame(m_errors, other.m_errors) &&
           (!withIdentity || (idOf(getRaw3DGeometry()) == idOf(other.getRaw3DGeometry()) &&
                              idOf(getRawNested3DGeometry()) == idOf(other.getRawNested3DGeometry()) &&
                              getDefaultPresetId() == other.getDefaultPresetId())) &&
           arePresetsSame(m_presets, other.m_presets, withIdentity, tolerance);
}

std::wstring ToolSpecification::getAsTabbedValues(bool withNames) const
{
    std::string names = "guid\ttool_type\ttool_unit";
    std::string values = withoutSeparators(Messages::fromWideUnicodeToUTF8(m_guid)) + "\t" +
                         getToolTypeAsString(getType()) + "\t" +
                         Messages::fromWideUnicodeToUTF8(NCUnit::getUnitAsString(getUnit()));
    forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
        names.append("\t").append(isTurning(getType()) ? part.turning : part.stem).append(field.name);
        values.append("\t");
        const auto &value = access(*this).*field.member;
        if constexpr (!ToolFieldText::isOptional<decltype(value)>)
            values.append(withoutSeparators(ToolFieldText::write(value)));
        else if (value)
            values.append(withoutSeparators(ToolFieldText::write(*value)));
    });
    return Messages::fromUTF8ToWideUnicode(withNames ? names + "\n" + values + "\n" : values + "\n");
}

} // namespace Varn
