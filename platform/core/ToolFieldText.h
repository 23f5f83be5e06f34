// ToolFieldText.h -- the values of the tool record as texts, those that its stored forms hold. Stateless, any thread.
#pragma once

#include "platform/core/ToolFeedsAndSpeeds.h"
#include "platform/nc/ToolBlock.h"
#include "platform/nc/ToolGeometryTypes.h"

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace Varn::ToolFieldText {

// The text of a value, UTF-8: "true", a number with the fewest digits that read back equal, a keyword, the text itself.
std::string write(bool value);
std::string write(int value);
std::string write(double value);
std::string write(const std::wstring &value);
std::string write(ToolGeometryTypes::TaperedType value);
std::string write(ToolGeometryTypes::ThreadTipType value);
std::string write(ToolGeometryTypes::CoolantSupport value); // "no", "yes"
std::string write(ToolGeometryTypes::InsertType value);
std::string write(ToolGeometryTypes::HolderType value);
std::string write(ToolGeometryTypes::Hand value);
std::string write(ToolGeometryTypes::CompensationMode value);
std::string write(ToolBlock::OrientationType value);
std::string write(NCTool::Material value);
std::string write(NCTool::Coolant value);
std::string write(PresetMaterialTypes::PresetMaterialCategory value);
std::string write(ToolFeedMode value); // "true" for a feed per revolution

// The value of a text, for the whole of it. False for a text that is none; the value stays then.
bool read(std::string_view text, bool &value);
bool read(std::string_view text, int &value);
bool read(std::string_view text, double &value);
bool read(std::string_view text, std::wstring &value);
bool read(std::string_view text, ToolGeometryTypes::TaperedType &value);
bool read(std::string_view text, ToolGeometryTypes::ThreadTipType &value);
bool read(std::string_view text, ToolGeometryTypes::CoolantSupport &value);
bool read(std::string_view text, ToolGeometryTypes::InsertType &value);
bool read(std::string_view text, ToolGeometryTypes::HolderType &value);
bool read(std::string_view text, ToolGeometryTypes::Hand &value);
bool read(std::string_view text, ToolGeometryTypes::CompensationMode &value);
bool read(std::string_view text, ToolBlock::OrientationType &value);
bool read(std::string_view text, NCTool::Material &value);
bool read(std::string_view text, NCTool::Coolant &value);
bool read(std::string_view text, PresetMaterialTypes::PresetMaterialCategory &value);
bool read(std::string_view text, ToolFeedMode &value);

template <typename Value>
bool read(std::string_view text, std::optional<Value> &value)
{
    Value some{};
    if (!read(text, some))
        return false;
    value = some;
    return true;
}

template <typename Value>
struct IsOptional : std::false_type {
};
template <typename Value>
struct IsOptional<std::optional<Value>> : std::true_type {
};
template <typename Value>
constexpr bool isOptional = IsOptional<std::remove_cvref_t<Value>>::value;

} // namespace Varn::ToolFieldText
