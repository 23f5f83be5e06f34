// ToolGeometryTypes.h -- the enumerations of the shape of a tool. Values, any thread.
//
// A value of one of them that is no enumerator of it (read from a damaged file, say) is taken as its value 0.
#pragma once

namespace Varn {

/// Base of ToolGeometry, by whose name they are known: ToolGeometry::TYPE_DRILL.
struct ToolGeometryTypes {
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

    /// The parts of a tool that turns, as a picture of it tells them apart.
    enum ToolSegment : int {
        SEGMENT_PROBE_TIP = 0,
        SEGMENT_FLUTE = 1,
        SEGMENT_SHOULDER = 2,
        SEGMENT_SHAFT = 3,
        SEGMENT_HOLDER = 4,
    };

    enum CoolantSupport : int {
        COOLANT_SUPPORT_NO = 0,
        COOLANT_SUPPORT_YES = 1, ///< the tool can lead coolant through its body
    };
};

} // namespace Varn
