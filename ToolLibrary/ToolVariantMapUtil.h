// ToolVariantMapUtil.h -- typed reads of a tool map, and changes of its identity. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/core/Units.h"
#include "platform/nc/ToolGeometry.h"
#include "platform/nc/ToolTypeCategory.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace Varn::Tools {

/// An unknown keyword is the value 0 of its enumeration, and an assertion.
class TOOL_LIBRARY_EXPORT ToolVariantMapUtil
{
public:
    /// Gives the tool another GUID as of now; the old one, if there is one, stays as "reference_guid".
    static void applyGUID(const QString &guid, QVariantMap &tool);

    /// Lets the tool refer to another solid as of now. Does nothing to a tool without "geometry".
    static void apply3DGeometryGuid(const QString &guid, QVariantMap &tool);

    /// The same for the solid of its tool block; does nothing without "tool-block".
    static void applyNested3DGeometryGuid(const QString &guid, QVariantMap &tool);

    /// The id of the solid that the tool refers to.
    static std::optional<QString> get3DGeometryGuid(const QVariantMap &tool);
    static std::optional<QString> getNested3DGeometryGuid(const QVariantMap &tool); ///< that of its tool block

    static ToolGeometry::Type getToolGeometryType(const QVariantMap &tool);
    static ToolTypeCategory getToolTypeCategory(const QVariantMap &tool);
    static bool isAdaptiveItem(const QVariantMap &tool); ///< a holder or a tool block
    static bool isJetTool(const QVariantMap &tool);
    static bool isTurningTool(const QVariantMap &tool);

    /// The hand of a turning tool's holder, by the first letter of its text; nothing for any other letter, or none.
    static std::optional<ToolGeometry::Hand> getToolHand(const QVariantMap &tool);

    /// Millimeters for exactly "millimeters" and inches for any other text; unknown without one.
    static Units::Unit getToolUnits(const QVariantMap &tool);

    /// \param setup the map under "setup" of a turning tool
    static ToolGeometry::CompensationMode getTurningToolCompensationMode(const QVariantMap &setup);

    /// \param holder the map under "holder" of a turning tool
    static ToolGeometry::HolderType getTurningToolHolderType(const QVariantMap &holder);
};

} // namespace Varn::Tools
