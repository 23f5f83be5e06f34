// TurningToolParameterization.h -- insert, holder and setup of a turning tool. A value, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/nc/RecordField.h"
#include "platform/nc/ToolGeometryTypes.h"
#include "platform/utils/Matrix.h"

#include <optional>
#include <string>

namespace Varn {

/// Lengths in the unit of the tool, angles in degrees; symbols of ISO 13399, ISO 1832 and ISO 5608 in parentheses. The
/// sizes that a turning tool shares with the others are in ToolCuttingGeometry.
struct VARN_PLATFORM_EXPORT TurningToolParameterization {
    using Types = ToolGeometryTypes;
    using Self = TurningToolParameterization;

    // The insert.
    Types::InsertType insertType = Types::INSERT_CUSTOM; ///< (SC)
    std::wstring crossSection;                           ///< letter (SCTY)
    std::wstring tolerance;                              ///< letter (TC)
    std::wstring insertSizeSpecificationMode = L"IC";    ///< "IC": the size is the inscribed circle, "CE": the edge
    double insertSize = 0;                               ///< in that mode
    double lengthNonCuttingEdge = 0;
    double insertAngle = 0; ///< (EPSR)
    double thickness = 0;   ///< (S)
    double reliefAngle = 0; ///< (RA)
    double grooveWidth = 0;
    double insertWidth = 0;
    double headLength = 0; ///< (LH)
    bool internalThread = false;

    // The holder.
    Types::HolderType holderType = Types::HOLDER_NONE; ///< (THSC)
    bool sideCutting = false;
    bool endCutting = false;
    double leadingAngle = 0;
    double trailingAngle = 0;
    std::wstring clamping;                ///< letter (MTP)
    Types::Hand hand = Types::HAND_RIGHT; ///< (HAND)
    double holderOverallLength = 0;       ///< (OAL)
    double holderHeadLength = 0;          ///< (LH)
    bool roundShank = false;
    double shankWidth = 0;   ///< (W)
    double shankHeight = 0;  ///< (H)
    double cuttingWidth = 0; ///< (CW)

    // How it stands in the machine.
    Types::CompensationMode compensation = Types::COMPENSATION_TIP;
    double angle = 0; ///< at which the tool stands in the turret
    double shaftAxisAngle = 0;
    bool grooveCompOppositeEdge = false;
    std::optional<Matrix4x4> toolBlockTransform; ///< where the block stands, when not as its connection says

    /// The hand of its letter, in upper case; nothing for any other character.
    static std::optional<Types::Hand> getHandFromChar(char letter);
    static char getHandAsChar(Types::Hand hand); ///< 'R' for a value that is no hand

    // clang-format off
    static constexpr auto fields = std::tuple{
        recordField(&Self::insertType,                  "tool_insertType"),
        recordField(&Self::crossSection,                "tool_crossSection"),
        recordField(&Self::tolerance,                   "tool_tolerance"),
        recordField(&Self::insertSizeSpecificationMode, "tool_insertSizeSpecificationMode"),
        recordField(&Self::insertSize,                  "tool_insertSize",           FieldQuantity::Length),
        recordField(&Self::lengthNonCuttingEdge,        "tool_lengthNonCuttingEdge", FieldQuantity::Length),
        recordField(&Self::insertAngle,                 "tool_insertAngle"),
        recordField(&Self::thickness,                   "tool_thickness",            FieldQuantity::Length),
        recordField(&Self::reliefAngle,                 "tool_reliefAngle"),
        recordField(&Self::grooveWidth,                 "tool_grooveWidth",          FieldQuantity::Length),
        recordField(&Self::insertWidth,                 "tool_insertWidth",          FieldQuantity::Length),
        recordField(&Self::headLength,                  "tool_headLength",           FieldQuantity::Length),
        recordField(&Self::internalThread,              "tool_internalThread"),
        recordField(&Self::holderType,                  "tool_holderType"),
        recordField(&Self::sideCutting,                 "tool_sideCutting"),
        recordField(&Self::endCutting,                  "tool_endCutting"),
        recordField(&Self::leadingAngle,                "tool_leadingAngle"),
        recordField(&Self::trailingAngle,               "tool_trailingAngle"),
        recordField(&Self::clamping,                    "tool_clamping"),
        recordField(&Self::hand,                        "tool_hand"),
        recordField(&Self::holderOverallLength,         "tool_holderOverallLength",  FieldQuantity::Length),
        recordField(&Self::holderHeadLength,            "tool_holderHeadLength",     FieldQuantity::Length),
        recordField(&Self::roundShank,                  "tool_roundShank"),
        recordField(&Self::shankWidth,                  "tool_shankWidth",           FieldQuantity::Length),
        recordField(&Self::shankHeight,                 "tool_shankHeight",          FieldQuantity::Length),
        recordField(&Self::cuttingWidth,                "tool_cuttingWidth",         FieldQuantity::Length),
        recordField(&Self::compensation,                "tool_compensation"),
        recordField(&Self::angle,                       "tool_angle"),
        recordField(&Self::shaftAxisAngle,              "tool_shaftAxisAngle"),
        recordField(&Self::grooveCompOppositeEdge,      "groove-comp-opposite-edge"),
    };
    // clang-format on
};

} // namespace Varn
