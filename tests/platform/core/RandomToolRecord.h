// RandomToolRecord.h -- tool records in which every field has a value of its own.
#pragma once

#include "platform/core/ToolFeedsAndSpeedsPreset.h"
#include "platform/core/ToolRecordParts.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace TestSupport {

template <typename Value>
struct IsOptional : std::false_type {
};
template <typename Value>
struct IsOptional<std::optional<Value>> : std::true_type {
};

/// How many values an enumeration has that a parameter can have; the hands are letters.
template <typename Enumeration>
constexpr int valuesOf()
{
    using namespace Varn;
    using Types = ToolGeometryTypes;
    if constexpr (std::is_same_v<Enumeration, Types::InsertType>)
        return 23;
    else if constexpr (std::is_same_v<Enumeration, Types::HolderType>)
        return 44;
    else if constexpr (std::is_same_v<Enumeration, NCTool::Material>)
        return 10;
    else if constexpr (std::is_same_v<Enumeration, NCTool::Coolant>)
        return 9;
    else if constexpr (std::is_same_v<Enumeration, PresetMaterialTypes::PresetMaterialCategory>)
        return 12;
    else if constexpr (std::is_same_v<Enumeration, Types::ThreadTipType>)
        return 3;
    else if constexpr (std::is_same_v<Enumeration, Types::CompensationMode> ||
                       std::is_same_v<Enumeration, ToolBlock::OrientationType>)
        return 4;
    else
        return 2;
}

class RandomToolRecord
{
public:
    explicit RandomToolRecord(unsigned seed) : m_random(seed) {}

    int number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }

    /// Three decimals, so that it is the same through any text.
    double decimal() { return (1 + number(199999)) / 1000.0; }

    std::wstring text()
    {
        static const std::vector<std::wstring> pieces{L"a",  L"Z",  L"7",      L" ",      L"'",          L"\"",
                                                      L"<&", L"/>", L"\u00DF", L"\u6B63", L"\U0001F527", L"\\"};
        std::wstring text;
        for (int count = number(8); count >= 0; --count)
            text += pieces[static_cast<std::size_t>(number(static_cast<int>(pieces.size())))];
        return text;
    }

    template <typename Value>
    void fill(Value &value)
    {
        if constexpr (IsOptional<Value>::value)
            fill(value.emplace());
        else if constexpr (std::is_same_v<Value, bool>)
            value = number(2) == 1;
        else if constexpr (std::is_same_v<Value, int>)
            value = 1 + number(999);
        else if constexpr (std::is_same_v<Value, double>)
            value = decimal();
        else if constexpr (std::is_same_v<Value, std::wstring>)
            value = text();
        else if constexpr (std::is_same_v<Value, Varn::ToolGeometryTypes::Hand>)
            value = Value("LNR"[number(3)]);
        else
            value = Value(number(valuesOf<Value>()));
    }

    /// Another value than \a value has.
    template <typename Value>
    void change(Value &value)
    {
        if constexpr (IsOptional<Value>::value) {
            if (number(2) == 1 && value)
                value.reset();
            else
                change(value ? *value : value.emplace());
        } else {
            const Value before = value;
            while (value == before)
                fill(value);
        }
    }

    std::vector<Varn::ToolSection> sections()
    {
        std::vector<Varn::ToolSection> result;
        for (int count = 1 + number(4); count > 0; --count)
            result.push_back({decimal(), decimal()});
        return result;
    }

    Varn::ToolFeedsAndSpeedsPreset::Owned preset(const Varn::ToolSpecification &tool, const std::wstring &id)
    {
        Varn::ToolSpecification other = tool;
        fillFields(other.currentValues(), Varn::toolFeedsAndSpeedsFields, true);
        const auto preset = Varn::ToolFeedsAndSpeedsPreset::fromCurrentValues(
            {Varn::ToolFeedsAndSpeedsPresetId(id), text(), text()}, other);
        return preset ? preset->withExpressions({{L"tool_feedCutting", L"tool_spindleSpeed * 2"}}) : nullptr;
    }

    /// A record that a table of parameters can hold, and all that none holds.
    Varn::ToolSpecification record(Varn::ToolGeometry::Type type, Varn::NCUnit::Unit unit)
    {
        using namespace Varn;
        ToolSpecification tool;
        tool.setType(type);
        tool.setUnit(unit);
        tool.setGUID(text());
        forEachRecordPart([&](const ToolRecordPart &part, const auto &access, const auto &fields) {
            fillFields(access(tool), fields, part.element == "currentValues");
        });
        fillAttachments(tool);
        tool.setShaft(sections());
        tool.setCustomCutter({{{decimal(), decimal()}, false, true, {}},
                              {{decimal(), decimal()}, true, number(2) == 1, {decimal(), decimal()}}});
        tool.set3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"solid" + text()));
        tool.setExpression(L"tool_diameter", L"2 * tool_cornerRadius");
        tool.addPreset(preset(tool, L"one"));
        tool.addPreset(preset(tool, L"two"));
        if (tool.hasPresets())
            tool.setDefaultPresetId(ToolFeedsAndSpeedsPresetId(L"two"));
        return tool;
    }

private:
    template <typename Part, typename Fields>
    void fillFields(Part &part, const Fields &fields, bool withGaps)
    {
        const auto fillOne = [&](const auto &field) {
            auto &member = part.*field.member;
            fill(member);
            if constexpr (IsOptional<std::remove_cvref_t<decltype(member)>>::value) {
                if (withGaps && number(3) == 0)
                    member.reset();
            }
        };
        std::apply([&](const auto &...field) { (fillOne(field), ...); }, fields);
    }

    void fillAttachments(Varn::ToolSpecification &tool)
    {
        using namespace Varn;
        if (ToolGeometry::isHolderOnly(tool.getType()) || ToolGeometry::isToolBlockOnly(tool.getType()))
            tool.removeHolder();
        if (tool.hasHolder() || ToolGeometry::isHolderOnly(tool.getType()))
            tool.holder().sections = sections();
        else
            tool.removeHolder();
        if (!tool.hasAttachedToolBlock()) {
            tool.removeToolBlock();
            return;
        }
        tool.setNested3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"block" + text()));
        tool.getTurningParameterization().toolBlockTransform =
            Matrix4x4(Matrix3x3::getEulerXYZRotation({decimal(), decimal(), decimal()}), {decimal(), 0, -decimal()});
    }

    std::mt19937 m_random;
};

} // namespace TestSupport
