// A tool record as an XML element and back.
#include "platform/core/ToolFeedsAndSpeedsPreset.h"
#include "platform/core/ToolFieldText.h"
#include "platform/core/ToolRecordParts.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/Tool3DGeometryBase.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace Varn {

namespace {

using Ox::XMLNode;

constexpr std::array<std::string_view, 7> presetKinds{"milling", "boringHoleMaking", "generalHoleMaking", "turning",
                                                      "probe",   "cutting",          "depositing"};

/// A value that is none; stays within this file.
class BadValue : public std::runtime_error
{
public:
    BadValue(const XMLNode &node, const std::string &member, const std::string &text)
        : runtime_error("Element \"" + node.key() + "\": \"" + member + "\" has no valid value: \"" +
                        text.substr(0, longestQuote) + "\"")
    {
    }

private:
    static constexpr std::size_t longestQuote = 100; // characters of a value that a message repeats
};

template <typename Value>
void writeMember(XMLNode &node, std::string_view name, const Value &value)
{
    if constexpr (!ToolFieldText::isOptional<Value>)
        node.setAttribute(std::string(name), ToolFieldText::write(value));
    else if (value)
        node.setAttribute(std::string(name), ToolFieldText::write(*value));
}

/// A member that is not there leaves \a value.
template <typename Value>
void readMember(const XMLNode &node, std::string_view name, Value &value)
{
    const std::string member(name);
    const std::optional<std::string> text = node.attribute(member);
    if (text && !ToolFieldText::read(*text, value))
        throw BadValue(node, member, *text);
}

template <typename Part, typename Fields>
void writeFields(XMLNode &node, const Part &part, const Fields &fields, unsigned kinds = everyKind)
{
    const auto write = [&](const auto &field) {
        if (field.kinds & kinds)
            writeMember(node, field.name, part.*field.member);
    };
    std::apply([&](const auto &...field) { (write(field), ...); }, fields);
}

/// An optional member that is not there has no value.
template <typename Part, typename Fields>
void readFields(const XMLNode &node, Part &part, const Fields &fields)
{
    std::apply([&](const auto &...field) { (readMember(node, field.name, part.*field.member), ...); }, fields);
}

void writeSections(XMLNode node, const std::vector<ToolSection> &sections)
{
    for (const ToolSection &section : sections) {
        XMLNode child = node.addChild("section");
        writeMember(child, "offset", section.offset);
        writeMember(child, "diameter", section.diameter);
    }
}

std::vector<ToolSection> readSections(const XMLNode &node)
{
    std::vector<ToolSection> sections;
    for (const XMLNode &child : node.getChildren("section")) {
        ToolSection &section = sections.emplace_back();
        readMember(child, "offset", section.offset);
        readMember(child, "diameter", section.diameter);
    }
    return sections;
}

void writeProfile(XMLNode node, const ToolProfile &profile)
{
    for (const ToolProfileEntity &entity : profile) {
        XMLNode child = node.addChild(entity.arc ? "arc" : "line");
        writeMember(child, "x", entity.end.x);
        writeMember(child, "y", entity.end.y);
        writeMember(child, "ccw", entity.ccw);
        writeMember(child, "centerX", entity.center.x);
        writeMember(child, "centerY", entity.center.y);
    }
}

ToolProfile readProfile(const XMLNode &node)
{
    ToolProfile profile;
    for (const XMLNode &child : node.getChildren()) {
        if (child.key() != "arc" && child.key() != "line")
            continue;
        ToolProfileEntity &entity = profile.emplace_back();
        entity.arc = child.key() == "arc";
        readMember(child, "x", entity.end.x);
        readMember(child, "y", entity.end.y);
        readMember(child, "ccw", entity.ccw);
        readMember(child, "centerX", entity.center.x);
        readMember(child, "centerY", entity.center.y);
    }
    return profile;
}

/// The rows of the upper three by four elements.
void writeMotion(XMLNode node, const Matrix4x4 &motion)
{
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column)
            writeMember(node, "m" + std::to_string(row) + std::to_string(column), motion(row, column));
    }
}

Matrix4x4 readMotion(const XMLNode &node)
{
    Matrix3x3 rotation;
    double translation[3] = {};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column)
            readMember(node, "m" + std::to_string(row) + std::to_string(column),
                       column == 3 ? translation[row] : rotation(row, column));
    }
    return {rotation, {translation[0], translation[1], translation[2]}};
}

void writeExpressions(XMLNode node, const std::map<std::wstring, std::wstring> &expressions)
{
    for (const auto &[name, expression] : expressions) {
        XMLNode child = node.addChild("expression");
        writeMember(child, "parameter", name);
        writeMember(child, "text", expression);
    }
}

std::map<std::wstring, std::wstring> readExpressions(const XMLNode &node)
{
    std::map<std::wstring, std::wstring> expressions;
    for (const XMLNode &child : node.getChildren("expression")) {
        std::wstring name;
        readMember(child, "parameter", name);
        if (!name.empty())
            readMember(child, "text", expressions[name]);
    }
    return expressions;
}

void writePreset(XMLNode node, const ToolFeedsAndSpeedsPreset &preset)
{
    node.setAttribute("kind", presetKinds[static_cast<std::size_t>(preset.kind())]);
    writeMember(node, "id", preset.id().asString());
    writeMember(node, "name", preset.name());
    writeMember(node, "description", preset.description());
    writeMember(node, "unit", NCUnit::getUnitAsString(preset.unit()));
    writeFields(node, static_cast<const ToolFeedsAndSpeeds &>(preset.details()), toolFeedsAndSpeedsFields,
                presetKindBit(preset.kind()));
    writeExpressions(node, preset.details().getExpressions());
}

NCUnit::Unit readUnit(const XMLNode &node)
{
    const std::string text = node.attribute("unit").value_or("millimeters");
    if (text != "millimeters" && text != "inches")
        throw BadValue(node, "unit", text);
    return text == "inches" ? NCUnit::inches : NCUnit::millimeters;
}

std::shared_ptr<const ToolFeedsAndSpeedsPreset> readPreset(const XMLNode &node)
{
    const std::string kind = node.attribute("kind").value_or(std::string());
    const auto found = std::find(presetKinds.begin(), presetKinds.end(), kind);
    if (found == presetKinds.end())
        throw BadValue(node, "kind", kind);
    std::wstring id;
    std::wstring name;
    std::wstring description;
    readMember(node, "id", id);
    readMember(node, "name", name);
    readMember(node, "description", description);
    MillingToolFeedsAndSpeedsPreset::Details details; // holds the members of every kind
    readFields(node, static_cast<ToolFeedsAndSpeeds &>(details), toolFeedsAndSpeedsFields);
    details.setExpressions(readExpressions(node));
    return ToolFeedsAndSpeedsPreset::make(ToolPresetKind(found - presetKinds.begin()),
                                          {ToolFeedsAndSpeedsPresetId(id), name, description}, readUnit(node), details);
}

void writeSolid(XMLNode &node, const char *key, const ToolGeometry::Raw3DGeometry &geometry)
{
    if (geometry)
        node.addChild(key).setAttribute("id", Messages::getAsString(geometry->id()));
}

ToolGeometry::Raw3DGeometry readSolid(const XMLNode &node, const char *key)
{
    const std::optional<std::string> id = node.findChild(key).attribute("id");
    if (!id || id->empty())
        return nullptr;
    return std::make_shared<ToolPlaceholder3DGeometry>(Messages::fromUTF8ToWideUnicode(*id));
}

/// \throws BadValue
ToolSpecification readTool(const XMLNode &node)
{
    ToolSpecification tool;
    if (const auto type = node.attribute("type")) {
        const Validified<ToolGeometry::Type> known = ToolSpecification::getToolTypeByString(*type);
        if (!known)
            throw BadValue(node, "type", *type);
        tool.setType(*known);
    }
    tool.setUnit(readUnit(node));
    std::wstring guid;
    readMember(node, "guid", guid);
    tool.setGUID(guid);
    forEachRecordPart([&](const ToolRecordPart &part, const auto &access, const auto &fields) {
        readFields(node.findChild(std::string(part.element)), access(tool), fields);
    });
    tool.holder().sections = readSections(node.findChild("holder"));
    tool.setShaft(readSections(node.findChild("shaft")));
    tool.setCustomCutter(readProfile(node.findChild("profile")));
    if (const XMLNode motion = node.findChild("blockTransform"); motion.exists())
        tool.getTurningParameterization().toolBlockTransform = readMotion(motion);
    tool.set3DGeometry(readSolid(node, "solid"));
    tool.setNested3DGeometry(readSolid(node, "blockSolid"));
    for (const auto &[name, expression] : readExpressions(node.findChild("expressions")))
        tool.setExpression(name, expression);
    const XMLNode presets = node.findChild("presets");
    for (const XMLNode &preset : presets.getChildren("preset"))
        tool.addPreset(readPreset(preset));
    if (const auto id = presets.attribute("default"))
        tool.setDefaultPresetId(ToolFeedsAndSpeedsPresetId(Messages::fromUTF8ToWideUnicode(*id)));
    return tool;
}

} // namespace

void ToolSpecification::exportTo(XMLNode node) const
{
    writeMember(node, "guid", m_guid);
    writeMember(node, "type", getToolTypeAsWideString());
    writeMember(node, "unit", NCUnit::getUnitAsString(getUnit()));
    forEachRecordPart([&](const ToolRecordPart &part, const auto &access, const auto &fields) {
        XMLNode child = node.addChild(std::string(part.element));
        writeFields(child, access(*this), fields);
    });
    writeSections(node.findChild("holder"), getHolder());
    writeSections(node.addChild("shaft"), getShaft());
    writeProfile(node.addChild("profile"), getCustomCutter());
    if (const auto &motion = getTurningParameterization().toolBlockTransform)
        writeMotion(node.addChild("blockTransform"), *motion);
    writeSolid(node, "solid", getRaw3DGeometry());
    writeSolid(node, "blockSolid", getRawNested3DGeometry());
    writeExpressions(node.addChild("expressions"), m_expressions);
    XMLNode presets = node.addChild("presets");
    if (m_defaultPresetId)
        writeMember(presets, "default", m_defaultPresetId->asString());
    for (const auto &preset : m_presets)
        writePreset(presets.addChild("preset"), *preset);
}

Ox::expected<void, std::string> ToolSpecification::importFrom(const XMLNode &node)
{
    try {
        *this = readTool(node);
        return {};
    } catch (const BadValue &bad) {
        return Ox::unexpected<std::string>(bad.what());
    }
}

} // namespace Varn
