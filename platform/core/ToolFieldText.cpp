#include "platform/core/ToolFieldText.h"

#include "platform/core/ToolSpecification.h"
#include "platform/nc/TurningToolParameterization.h"
#include "platform/utils/Format.h"
#include "platform/utils/Messages.h"

namespace Varn::ToolFieldText {

namespace {

using Types = ToolGeometryTypes;

/// Takes over what a lookup found.
template <typename Found, typename Value>
bool take(const Found &found, Value &value)
{
    if (!found)
        return false;
    value = *found;
    return true;
}

/// The value whose text is \a text, of the first \a count ones. For enumerations of few values.
template <typename Value>
bool search(std::string_view text, int count, Value &value)
{
    for (int i = 0; i < count; ++i) {
        if (write(Value(i)) == text) {
            value = Value(i);
            return true;
        }
    }
    return false;
}

} // namespace

std::string write(bool value)
{
    return value ? "true" : "false";
}

std::string write(int value)
{
    return std::to_string(value);
}

std::string write(double value)
{
    return Format::getDouble(value);
}

std::string write(const std::wstring &value)
{
    return Messages::getAsString(value);
}

std::string write(Types::TaperedType value)
{
    return ToolSpecification::getTaperedTypeAsString(value);
}

std::string write(Types::ThreadTipType value)
{
    return ToolGeometry::getThreadTipTypeAsString(value);
}

std::string write(Types::CoolantSupport value)
{
    return value == Types::COOLANT_SUPPORT_YES ? "yes" : "no";
}

std::string write(Types::InsertType value)
{
    return Messages::getAsString(ToolSpecification::getInsertTypeAsWideString(value));
}

std::string write(Types::HolderType value)
{
    return Messages::getAsString(ToolSpecification::getHolderTypeAsWideString(value));
}

std::string write(Types::Hand value)
{
    return {TurningToolParameterization::getHandAsChar(value)};
}

std::string write(Types::CompensationMode value)
{
    return ToolSpecification::getCompensationModeAsString(value);
}

std::string write(ToolBlock::OrientationType value)
{
    return Messages::getAsString(ToolBlock::getOrientationTypeAsWideString(value));
}

std::string write(NCTool::Material value)
{
    return NCTool::getMaterialAsString(value);
}

std::string write(NCTool::Coolant value)
{
    return NCTool::getCoolantAsString(value);
}

std::string write(PresetMaterialTypes::PresetMaterialCategory value)
{
    return ToolSpecification::getPresetMaterialCategoryAsString(value);
}

std::string write(ToolFeedMode value)
{
    return write(value == FEED_PER_REVOLUTION);
}

bool read(std::string_view text, bool &value)
{
    if (text != "true" && text != "false")
        return false;
    value = text == "true";
    return true;
}

bool read(std::string_view text, int &value)
{
    return take(Format::tryInt(text), value);
}

bool read(std::string_view text, double &value)
{
    return take(Format::tryDouble(text), value);
}

bool read(std::string_view text, std::wstring &value)
{
    value = Messages::fromUTF8ToWideUnicode(text);
    return true;
}

bool read(std::string_view text, Types::TaperedType &value)
{
    return search(text, 2, value);
}

bool read(std::string_view text, Types::ThreadTipType &value)
{
    return search(text, 3, value);
}

bool read(std::string_view text, Types::CoolantSupport &value)
{
    return search(text, 2, value);
}

bool read(std::string_view text, Types::InsertType &value)
{
    return take(ToolSpecification::getInsertTypeByString(text), value);
}

bool read(std::string_view text, Types::HolderType &value)
{
    return take(ToolSpecification::getHolderTypeByString(text), value);
}

bool read(std::string_view text, Types::Hand &value)
{
    return text.size() == 1 && take(TurningToolParameterization::getHandFromChar(text.front()), value);
}

bool read(std::string_view text, Types::CompensationMode &value)
{
    return take(ToolSpecification::getCompensationModeByString(text), value);
}

bool read(std::string_view text, ToolBlock::OrientationType &value)
{
    return search(text, 4, value);
}

bool read(std::string_view text, NCTool::Material &value)
{
    return take(NCTool::getAsMaterial(text), value);
}

bool read(std::string_view text, NCTool::Coolant &value)
{
    return take(NCTool::getAsCoolant(text), value);
}

bool read(std::string_view text, PresetMaterialTypes::PresetMaterialCategory &value)
{
    return take(ToolSpecification::getAsPresetMaterialCategory(text), value);
}

bool read(std::string_view text, ToolFeedMode &value)
{
    bool perRevolution = false;
    if (!read(text, perRevolution))
        return false;
    value = perRevolution ? FEED_PER_REVOLUTION : FEED_PER_MINUTE;
    return true;
}

} // namespace Varn::ToolFieldText
