// ToolCuttingGeometry.h -- the sizes of the cutting part and the body of a tool, as its maker gives them. Values, any
// thread.
#pragma once

#include "platform/nc/RecordField.h"
#include "platform/nc/ToolGeometryTypes.h"

#include <optional>

namespace Varn {

/// Mills, drills and probes; turning tools have some of it too. Lengths in the unit of the tool, angles in degrees;
/// symbols of ISO 13399 in parentheses. What is optional follows from the shape where nobody gave it: ToolGeometry
/// answers for it.
struct ToolCuttingGeometry {
    using Types = ToolGeometryTypes;

    double diameter = 0; ///< cutting diameter (DC); of a turning insert the inscribed circle (INSD)
    double tipDiameter = 0;
    double tipOffset = 0;
    double tipLength = 0;
    double cornerRadius = 0;  ///< (RE)
    double shaftDiameter = 0; ///< (SFDM)
    double fluteLength = 0;   ///< (LCF)
    double shoulderLength = 0;
    double bodyLength = 0;               ///< (LB)
    std::optional<double> overallLength; ///< (OAL)
    double tipAngle = 0;                 ///< (SIG); the angle of the types that have a tip angle
    double taperAngle = 0;               ///< (TA); the angle of the others, and the second one of a center drill
    Types::TaperedType taperedType = Types::TAPERED_BULL_NOSE; ///< of a tapered mill

    double threadPitch = 0; ///< (TP)
    double maximumThreadPitch = 0;
    double minimumThreadPitch = 0;
    double threadProfileAngle = 0;
    Types::ThreadTipType threadTipType = Types::THREAD_TIP_POINT;
    double threadTipWidth = 0;
    double threadTipRadius = 0;

    std::optional<double> axialDistance;
    std::optional<double> profileRadius;
    std::optional<double> upperRadius;
    std::optional<double> lowerRadius;
    std::optional<double> shoulderDiameter;
    std::optional<double> chamferAngle;           ///< to the axis
    std::optional<double> chamferWidth;           ///< along the radius
    std::optional<double> maximumCuttingDiameter; ///< (DCX)

    Types::CoolantSupport coolantSupport = Types::COOLANT_SUPPORT_NO; ///< (CSP)
    int numberOfFlutes = 0;                                           ///< (NOF)
    int numberOfTeeth = 0;                                            ///< (NT)
    bool clockwise = true; ///< the spindle turns clockwise, seen from it towards the workpiece
    std::optional<double> assemblyGaugeLength;

    // clang-format off
    static constexpr auto fields = std::tuple{
        recordField(&ToolCuttingGeometry::diameter,               "tool_diameter",               FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::tipDiameter,            "tool_tipDiameter",            FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::tipOffset,              "tool_tipOffset",              FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::tipLength,              "tool_tipLength",              FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::cornerRadius,           "tool_cornerRadius",           FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::shaftDiameter,          "tool_shaftDiameter",          FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::fluteLength,            "tool_fluteLength",            FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::shoulderLength,         "tool_shoulderLength",         FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::bodyLength,             "tool_bodyLength",             FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::overallLength,          "tool_overallLength",          FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::tipAngle,               "tool_tipAngle"),
        recordField(&ToolCuttingGeometry::taperAngle,             "tool_taperAngle"),
        recordField(&ToolCuttingGeometry::taperedType,            "tool_taperedType"),
        recordField(&ToolCuttingGeometry::threadPitch,            "tool_threadPitch",            FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::maximumThreadPitch,     "tool_maximumThreadPitch",     FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::minimumThreadPitch,     "tool_minimumThreadPitch",     FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::threadProfileAngle,     "tool_threadProfileAngle"),
        recordField(&ToolCuttingGeometry::threadTipType,          "tool_threadTipType"),
        recordField(&ToolCuttingGeometry::threadTipWidth,         "tool_threadTipWidth",         FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::threadTipRadius,        "tool_threadTipRadius",        FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::axialDistance,          "tool_axialDistance",          FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::profileRadius,          "tool_profileRadius",          FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::upperRadius,            "tool_upperRadius",            FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::lowerRadius,            "tool_lowerRadius",            FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::shoulderDiameter,       "tool_shoulderDiameter",       FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::chamferAngle,           "tool_chamferAngle"),
        recordField(&ToolCuttingGeometry::chamferWidth,           "tool_chamferWidth",           FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::maximumCuttingDiameter, "tool_maximumCuttingDiameter", FieldQuantity::Length),
        recordField(&ToolCuttingGeometry::coolantSupport,         "tool_coolantSupport"),
        recordField(&ToolCuttingGeometry::numberOfFlutes,         "tool_numberOfFlutes"),
        recordField(&ToolCuttingGeometry::numberOfTeeth,          "tool_numberOfTeeth"),
        recordField(&ToolCuttingGeometry::clockwise,              "tool_clockwise"),
        recordField(&ToolCuttingGeometry::assemblyGaugeLength,    "tool_assemblyGaugeLength",    FieldQuantity::Length),
    };
    // clang-format on
};

/// The head of a waterjet, laser or plasma cutter. Lengths in the unit of the tool.
struct ToolJetGeometry {
    double kerfWidth = 0;
    double nozzleDiameter = 0;
    double headClearance = 0;

    static constexpr auto fields = std::tuple{
        recordField(&ToolJetGeometry::kerfWidth, "tool_kerfWidth", FieldQuantity::Length),
        recordField(&ToolJetGeometry::nozzleDiameter, "tool_nozzleDiameter", FieldQuantity::Length),
        recordField(&ToolJetGeometry::headClearance, "tool_headClearance", FieldQuantity::Length),
    };
};

} // namespace Varn
