#include "ToolLibrary/ToolVariantMapUtil.h"

#include "ToolLibrary/ToolLibraryParameter.h"
#include "platform/core/ToolSpecification.h"

#include <QDateTime>

namespace Varn::Tools {

namespace {

const QString guidKey = QStringLiteral("guid");
const QString geometryKey = QStringLiteral("geometry");
const QString solidKey = QStringLiteral("3DGeometry");
const QString idKey = QStringLiteral("id");
const QString toolBlockKey = QStringLiteral("tool-block");

void touch(QVariantMap &tool)
{
    tool.insert(QStringLiteral("last_modified"), QDateTime::currentMSecsSinceEpoch());
}

/// Sets the id of the solid in a map that has, or gets, a geometry.
void setSolid(const QString &guid, QVariantMap &owner)
{
    QVariantMap geometry = owner.value(geometryKey).toMap();
    QVariantMap solid = geometry.value(solidKey).toMap();
    solid.insert(idKey, guid);
    geometry.insert(solidKey, solid);
    owner.insert(geometryKey, geometry);
}

std::string keywordAt(const QVariantMap &map, const QString &key)
{
    return map.value(key).toString().toStdString();
}

} // namespace

void ToolVariantMapUtil::applyGUID(const QString &guid, QVariantMap &tool)
{
    if (tool.contains(guidKey))
        tool.insert(QStringLiteral("reference_guid"), tool.value(guidKey));
    tool.insert(guidKey, guid);
    touch(tool);
}

void ToolVariantMapUtil::apply3DGeometryGuid(const QString &guid, QVariantMap &tool)
{
    if (!tool.contains(geometryKey))
        return;
    setSolid(guid, tool);
    touch(tool);
}

void ToolVariantMapUtil::applyNested3DGeometryGuid(const QString &guid, QVariantMap &tool)
{
    if (!tool.contains(toolBlockKey))
        return;
    QVariantMap block = tool.value(toolBlockKey).toMap();
    setSolid(guid, block);
    tool.insert(toolBlockKey, block);
    touch(tool);
}

std::optional<QString> ToolVariantMapUtil::get3DGeometryGuid(const QVariantMap &tool)
{
    const QVariantMap solid = tool.value(geometryKey).toMap().value(solidKey).toMap();
    const auto id = solid.find(idKey);
    if (id == solid.end())
        return std::nullopt;
    return id->toString();
}

std::optional<QString> ToolVariantMapUtil::getNested3DGeometryGuid(const QVariantMap &tool)
{
    return get3DGeometryGuid(tool.value(toolBlockKey).toMap());
}

ToolGeometry::Type ToolVariantMapUtil::getToolGeometryType(const QVariantMap &tool)
{
    return ToolSpecification::getToolTypeByString(keywordAt(tool, QStringLiteral("type"))).value();
}

ToolTypeCategory ToolVariantMapUtil::getToolTypeCategory(const QVariantMap &tool)
{
    return Varn::getToolTypeCategory(getToolGeometryType(tool));
}

bool ToolVariantMapUtil::isAdaptiveItem(const QVariantMap &tool)
{
    return getToolTypeCategory(tool) == ToolTypeCategory::Adaptive;
}

bool ToolVariantMapUtil::isJetTool(const QVariantMap &tool)
{
    return getToolTypeCategory(tool) == ToolTypeCategory::Jet;
}

bool ToolVariantMapUtil::isTurningTool(const QVariantMap &tool)
{
    return getToolTypeCategory(tool) == ToolTypeCategory::Turning;
}

ToolGeometry::CompensationMode ToolVariantMapUtil::getTurningToolCompensationMode(const QVariantMap &setup)
{
    return ToolSpecification::getCompensationModeByString(keywordAt(setup, QStringLiteral("compensation"))).value();
}

ToolGeometry::HolderType ToolVariantMapUtil::getTurningToolHolderType(const QVariantMap &holder)
{
    return ToolSpecification::getHolderTypeByString(keywordAt(holder, QStringLiteral("THSC"))).value();
}

std::optional<ToolGeometry::Hand> ToolVariantMapUtil::getToolHand(const QVariantMap &tool)
{
    const QString hand = tool.value(ToolLibraryParameterKey(ToolLibraryParametersEnum::HAND)).toString();
    if (hand.isEmpty())
        return std::nullopt;
    return ToolGeometry::TurningToolParameterization::getHandFromChar(hand.front().toLatin1());
}

Units::Unit ToolVariantMapUtil::getToolUnits(const QVariantMap &tool)
{
    const auto unit = tool.constFind(ToolLibraryParameterKey(ToolLibraryParametersEnum::unit));
    if (unit == tool.constEnd())
        return Units::UNIT_UNKNOWN;
    return unit->toString() == QLatin1String("millimeters") ? Units::UNIT_MILLIMETERS : Units::UNIT_INCHES;
}

} // namespace Varn::Tools
