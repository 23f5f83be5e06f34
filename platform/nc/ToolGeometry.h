// ToolGeometry.h -- the shape of a cutting tool: its type, and for turning tools insert and holder.
//
// The operations by type are stateless and may be called on any thread. A value of one of the enumerations that is no
// enumerator of it (read from a damaged file, say) is taken as the value 0 of that enumeration.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <optional>
#include <string>
#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT ToolGeometry
{
public:
    /// The type of a tool. The values are those that documents store; 0 is no type.
    enum Type : int {
        TYPE_NONE = 0,
        TYPE_DRILL = 1,
        TYPE_CENTER_DRILL = 2,
        TYPE_SPOT_DRILL = 3,
        TYPE_MULTI_SPINDLE_DRILL = 4,
        TYPE_FLAT_END_MILL = 5,
        TYPE_BALL_END_MILL = 6,
        TYPE_BULL_NOSE_END_MILL = 7,
        TYPE_CHAMFER_MILL = 8,
        TYPE_FACE_MILL = 9,
        TYPE_SLOT_MILL = 10,
        TYPE_RADIUS_MILL = 11,
        TYPE_DOVETAIL_MILL = 12,
        TYPE_TAPERED_MILL = 13,
        TYPE_LOLLIPOP_MILL = 14,
        TYPE_RIGHT_HAND_TAP = 15,
        TYPE_LEFT_HAND_TAP = 16,
        TYPE_REAMER = 17,
        TYPE_BORING_HEAD = 18,
        TYPE_COUNTERBORE = 19,
        TYPE_COUNTERSINK = 20,
        TYPE_HOLDER = 21,
        TYPE_TURNING_GENERAL = 22,
        TYPE_TURNING_THREADING = 23,
        TYPE_TURNING_GROOVING = 24,
        TYPE_TURNING_BORING = 25,
        TYPE_PROBE = 26,
        TYPE_ENGRAVING_TOOL = 27,
        TYPE_ROUGHING_END_MILL = 28,
        TYPE_WATERJET = 29,
        TYPE_LASER_CUTTER = 30,
        TYPE_SLITTING_SAW = 31,
        TYPE_WOODRUFF_CUTTER = 32,
        TYPE_FORM_MILL = 33,
        TYPE_BACK_CHAMFER_MILL = 34,
        TYPE_DEBURRING_TOOL = 35,
        TYPE_PLASMA_CUTTER = 36,
        TYPE_GEAR_CUTTER = 37,
        TYPE_THREAD_MILL = 38,
        TYPE_LASER_POWDER = 39,
        TYPE_LASER_WIRE = 40,
        TYPE_ELECTRIC_ARC_WIRE = 41,
        TYPE_CIRCLE_SEGMENT_BARREL = 42,
        TYPE_CIRCLE_SEGMENT_LENS = 43,
        TYPE_CIRCLE_SEGMENT_OVAL = 44,
        TYPE_CIRCLE_SEGMENT_TAPER = 45,
        TYPE_CORNER_CHAMFER_END_MILL = 46,
        TYPE_TOOL_BLOCK = 47,
        TYPE_PLUNGE_MILL = 48,
    };

    /// Shape of a turning insert: a letter of ISO 1832, one of the grooving and threading forms, or a free one.
    enum InsertType : int {
        INSERT_CUSTOM = 0,
        INSERT_A = 1,
        INSERT_B = 2,
        INSERT_C = 3,
        INSERT_D = 4,
        INSERT_E = 5,
        INSERT_H = 6,
        INSERT_K = 7,
        INSERT_L = 8,
        INSERT_M = 9,
        INSERT_O = 10,
        INSERT_P = 11,
        INSERT_R = 12,
        INSERT_S = 13,
        INSERT_T = 14,
        INSERT_V = 15,
        INSERT_W = 16,
        INSERT_GROOVE_SQUARE = 17,
        INSERT_GROOVE_ROUND = 18,
        INSERT_GROOVE_V = 19,
        INSERT_THREAD_ISO_DOUBLE = 20,
        INSERT_THREAD_ISO_TRIPLE = 21,
        INSERT_THREAD_TRAPEZOID = 22,
    };

    /// Style of a turning tool holder: a letter of ISO 5608, a boring bar of ISO 6261, one of the grooving and
    /// threading styles, or a free one.
    enum HolderType : int {
        HOLDER_NONE = 0,
        HOLDER_A = 1,
        HOLDER_B = 2,
        HOLDER_C = 3,
        HOLDER_D = 4,
        HOLDER_E = 5,
        HOLDER_F = 6,
        HOLDER_G = 7,
        HOLDER_H = 8,
        HOLDER_J = 9,
        HOLDER_K = 10,
        HOLDER_L = 11,
        HOLDER_M = 12,
        HOLDER_N = 13,
        HOLDER_P = 14,
        HOLDER_Q = 15,
        HOLDER_R = 16,
        HOLDER_S = 17,
        HOLDER_T = 18,
        HOLDER_U = 19,
        HOLDER_V = 20,
        HOLDER_W = 21,
        HOLDER_Y = 22,
        HOLDER_OFFSET_PROFILE = 23,
        HOLDER_THREAD_STRAIGHT = 24,
        HOLDER_THREAD_OFFSET = 25,
        HOLDER_GROOVE_EXTERNAL = 26,
        HOLDER_PARTING_BLADE = 27,
        HOLDER_GROOVE_FACE = 28,
        HOLDER_GROOVE_INTERNAL = 29,
        HOLDER_THREAD_INTERNAL = 30,
        HOLDER_BORING_BAR_F = 31,
        HOLDER_BORING_BAR_G = 32,
        HOLDER_BORING_BAR_J = 33,
        HOLDER_BORING_BAR_K = 34,
        HOLDER_BORING_BAR_L = 35,
        HOLDER_BORING_BAR_P = 36,
        HOLDER_BORING_BAR_Q = 37,
        HOLDER_BORING_BAR_S = 38,
        HOLDER_BORING_BAR_T = 39,
        HOLDER_BORING_BAR_U = 40,
        HOLDER_BORING_BAR_W = 41,
        HOLDER_BORING_BAR_Y = 42,
        HOLDER_CUSTOM = 43,
    };

    /// Hand of a turning tool holder; the value is the letter that stands for it.
    enum Hand : int {
        HAND_LEFT = 'L',
        HAND_NEUTRAL = 'N',
        HAND_RIGHT = 'R',
    };

    /// The point of a turning insert that the program moves.
    enum CompensationMode : int {
        COMPENSATION_CENTER = 0,  ///< center of the corner radius
        COMPENSATION_TIP = 1,     ///< imaginary tip where the tangents along both axes meet
        COMPENSATION_CORNER = 2,  ///< theoretical sharp corner of the insert
        COMPENSATION_TANGENT = 3, ///< point of the radius that touches in the direction of feed; not for grooving
    };

    enum ThreadTipType : int {
        THREAD_TIP_FLAT = 0,
        THREAD_TIP_ROUND = 1,
        THREAD_TIP_POINT = 2,
    };

    /// End of a tapered mill.
    enum TaperedType : int {
        TAPERED_BALL = 0,
        TAPERED_BULL_NOSE = 1,
    };

    /// How a turning tool sits in its holder.
    class VARN_PLATFORM_EXPORT TurningToolParameterization
    {
    public:
        /// The hand of its letter, in upper case; nothing for any other character.
        static std::optional<Hand> getHandFromChar(char letter);
        static char getHandAsChar(Hand hand);
    };

    // Each type but TYPE_NONE is of exactly one of these families.
    static bool isMill(Type type);
    static bool isDrill(Type type); ///< every hole making tool, also taps, reamers and boring heads
    static bool isProbe(Type type);
    static bool isJetCutter(Type type);
    static bool isTurning(Type type);
    static bool isDepositing(Type type);
    static bool isHolderOnly(Type type);
    static bool isToolBlockOnly(Type type);

    // Members of the mills.
    static bool isFormMill(Type type);
    static bool isCircleSegmentTool(Type type);
    static bool isCornerChamferEndMill(Type type);

    // Members of the drills; a tap is neither.
    static bool isGeneralHoleMaking(Type type); ///< fed straight in, with a feed per revolution
    static bool isBoringHoleMaking(Type type);  ///< fed with a plunge feedrate

    /// True when the angle of the geometry is a tip angle, false when it is a taper angle.
    static bool hasTipAngle(Type type);

    /// True when tools of the type may carry a solid of their own.
    static bool supports3DGeometry(Type type);

    /// The type of a keyword, compared exactly; "unspecified" is TYPE_NONE. Throws ToolLibraries::InvalidInput with the
    /// keyword in its text for an unknown one.
    static Type getToolTypeFromString(std::string_view keyword);
    static Type getToolTypeFromString(std::wstring_view keyword);

    /// The same, with TYPE_NONE for an unknown keyword.
    static Type getToolTypeFromStringNoThrow(std::string_view keyword);
    static Type getToolTypeFromStringNoThrow(std::wstring_view keyword);

    /// The keyword that stands under "type" in a tool map; "unspecified" for TYPE_NONE.
    static std::string getToolTypeAsString(Type type);

    /// The keyword that stands under "thread-tip-type" in a tool map.
    static std::string getThreadTipTypeAsString(ThreadTipType type);

    static bool isCustomInsert(InsertType type);

    /// The shape letter of ISO 1832, or 0 for an insert without one.
    static wchar_t insertTypeChar(InsertType type);

    /// The insert of a shape letter, in upper case; nothing for any other character.
    static std::optional<InsertType> insertTypeFromChar(wchar_t letter);

    /// Length of the cutting edge divided by the diameter of the inscribed circle: L = IC * factor, IC = L / factor.
    /// 1 for an insert whose edge does not follow from a circle (free, grooving and threading forms).
    static double insertTypeCuttingLengthToICFactor(InsertType type);

    /// The same factor for a rhombus of angle \a degrees: 1 / sin(angle). 1 outside of 0 < angle < 180.
    static double insertDiamondInsertCuttingLengthToICFactor(double degrees);

    /// Whether a holder of the style takes the insert on a turning tool of the type. HOLDER_NONE takes nothing.
    static bool doesSupportHolder(Type type, InsertType insert, HolderType holder);
};

} // namespace Varn
