"""Hole making tools: how a row of sizes becomes a tool, and which series a library has. The sizes are in
hole_making_metric.py and hole_making_inch.py, tables of the same names.

Diameters and lengths are in the unit of the shelf, tip angles in degrees between the lips. A tip angle of 0 is a flat
end, which is also what a tap, a reamer and a counterbore have here.
"""

from cutting_data import hole_making_presets, tapping_presets
from geometry import cone_length, geometry
from holders import clamped_length, holder
from library import METRIC, product_id, size, thread_product_id

FRAGILE = 3.0  # mm; thinner drills and all taps are checked for breakage after use

# Share of a shank that stays outside the holder, of tools whose shank is longer than the holder is deep.
SHANK_SHOWN = 0.3


def shown_body(shelf, lcf, oal):
    return round(lcf + SHANK_SHOWN * (oal - lcf), 1 if shelf.unit is METRIC else 3)


def drills(shelf, code, title, material, rows, *, tip_angle, share, coolant="flood", holder_kind=None):
    """Rows: name or None, diameter, flute length, overall length, shank diameter. The name is that of a number or
    letter drill. Coolant through the tool goes with a cylindrical shank that the holder covers."""
    through = coolant == "through tool"
    for name, dc, lcf, oal, shank in rows:
        lb = round(oal - clamped_length(shelf.unit, shank), 6) if through else shown_body(shelf, lcf, oal)
        g = geometry("drill", dc, lcf, lb, oal, shank, 2, SIG=tip_angle, CSP=through)
        presets = hole_making_presets(shelf.unit, "drill", share, material, g, coolant=coolant)
        named = "%s (%s)" % (name, size(dc, shelf.unit)) if name else size(dc, shelf.unit)
        words = "HSS" if material == "hss" else "coolant through, %s" % material
        identity = thread_product_id(code, name) if name else product_id(code, shelf.unit, dc)
        shelf.add("drill", identity, "%s %s, %d°, %s" % (title, named, tip_angle, words), material, g, presets,
                  holder=holder(shelf.unit, holder_kind, shank),
                  break_control=dc * shelf.unit.millimeters < FRAGILE)


def with_lengths(sizes, classes):
    """Rows for drills() from (name or None, diameter) and a table of lengths by diameter: largest diameter, flute
    length, overall length, shank diameter or None for a shank of the diameter of the drill."""
    for name, dc in sizes:
        lcf, oal, shank = next(lengths for limit, *lengths in classes if dc <= limit)
        yield name, dc, lcf, oal, shank or dc


def center_drills(shelf, code, title, rows, tip_angle):
    """A pilot and a cone of 60 degrees. Rows: name or None, pilot diameter, body diameter, pilot length, overall
    length."""
    for name, pilot, dc, pilot_length, oal in rows:
        lcf = round(pilot_length + cone_length(dc, pilot, 30), 3)
        g = geometry("center drill", dc, lcf, shown_body(shelf, lcf, oal), oal, dc, 2, SIG=tip_angle, TA=30,
                     tip_diameter=pilot, tip_length=pilot_length)
        presets = hole_making_presets(shelf.unit, "drill", 0.35, "hss", g)
        named = "%s %s%s x %s, 60°, HSS" % (title, name + ", " if name else "", size(pilot, shelf.unit),
                                            size(dc, shelf.unit))
        identity = thread_product_id(code, name) if name else product_id(code, shelf.unit, pilot)
        shelf.add("center drill", identity, named, "hss", g, presets, holder=holder(shelf.unit, "collet", dc))


def spot_drills(shelf, rows):
    """Rows: diameter, tip angle, flute length, overall length."""
    for dc, angle, lcf, oal in rows:
        lb = round(oal - clamped_length(shelf.unit, dc), 6)
        g = geometry("spot drill", dc, lcf, lb, oal, dc, 2, SIG=angle)
        presets = hole_making_presets(shelf.unit, "drill", 0.5, "cobalt", g)
        shelf.add("spot drill", product_id("SD", shelf.unit, dc, angle),
                  "Spot drill %s, %d°, HSS-Co" % (size(dc, shelf.unit), angle), "cobalt", g, presets,
                  holder=holder(shelf.unit, "collet", dc))


def countersinks(shelf, rows):
    """Rows: largest diameter, smallest diameter, tip angle, shank diameter, overall length."""
    for dc, tip, angle, shank, oal in rows:
        lb = round(oal - clamped_length(shelf.unit, shank), 6)
        g = geometry("countersink", dc, cone_length(dc, tip, angle / 2), lb, oal, shank, 3, SIG=angle,
                     tip_diameter=tip)
        presets = hole_making_presets(shelf.unit, "sink", 0.5, "hss", g, per_revolution=False)
        shelf.add("countersink", product_id("CK", shelf.unit, dc, angle),
                  "Countersink %s, %d°, 3 flutes, HSS" % (size(dc, shelf.unit), angle), "hss", g, presets)


def counterbores(shelf, rows):
    """Rows: screw, diameter, shank diameter, flute length, overall length."""
    for screw, dc, shank, lcf, oal in rows:
        lb = round(oal - clamped_length(shelf.unit, shank), 6)
        g = geometry("counterbore", dc, lcf, lb, oal, shank, 3)
        presets = hole_making_presets(shelf.unit, "sink", 0.5, "hss", g)
        shelf.add("counterbore", thread_product_id("CB", screw),
                  "Counterbore %s for %s socket head cap screw, HSS" % (size(dc, shelf.unit), screw), "hss", g, presets)


def reamers(shelf, title, rows):
    """Rows: diameter, flute length, overall length, shank diameter, flutes. title has a place for the size."""
    for dc, lcf, oal, shank, flutes in rows:
        lb = round(oal - clamped_length(shelf.unit, shank), 6)
        g = geometry("reamer", dc, lcf, lb, oal, shank, flutes)
        presets = hole_making_presets(shelf.unit, "ream", 1.5, "hss", g)
        shelf.add("reamer", product_id("RM", shelf.unit, dc),
                  "%s, %d flutes, HSS" % (title % size(dc, shelf.unit), flutes), "hss", g, presets,
                  holder=holder(shelf.unit, "collet", shank))


def taps(shelf, code, words, rows, tool_type="right hand tap"):
    """Rows: thread, diameter, pitch, tap drill, thread length, overall length, shank diameter, flutes."""
    left = tool_type == "left hand tap"
    for thread, dc, pitch, drill, lcf, oal, shank, flutes in rows:
        g = geometry(tool_type, dc, lcf, shown_body(shelf, lcf, oal), oal, shank, flutes, TP=pitch)
        title = "Left hand tap %s-LH" if left else "Tap %s"
        shelf.add(tool_type, thread_product_id(code, thread), "%s, %s, HSS-Co" % (title % thread, words), "cobalt", g,
                  tapping_presets(shelf.unit, "cobalt", g), holder=holder(shelf.unit, "tap", shank),
                  comment="Tap drill %s" % drill, break_control=True)


def boring_heads(shelf, rows):
    """Rows: diameter set, smallest and largest diameter, flute length of the insert, body diameter, reach."""
    for dc, smallest, largest, lcf, body, reach in rows:
        radius = 0.2 if shelf.unit is METRIC else 1 / 128
        g = geometry("boring head", dc, lcf, reach, reach, body, 1, RE=radius)
        presets = hole_making_presets(shelf.unit, "bore", 0.3, "coated carbide", g, per_revolution=False)
        shelf.add("boring head", product_id("BH", shelf.unit, dc),
                  "Boring head %s to %s, set to %s" % (size(smallest, shelf.unit), size(largest, shelf.unit),
                                                       size(dc, shelf.unit)), "coated carbide", g, presets)


def multi_spindle_drills(shelf, rows):
    """Geared heads with equal drills. Rows: drill diameter, flute length, body length, overall length, spindles, circle
    or distance on which they stand."""
    for dc, lcf, lb, oal, spindles, spacing in rows:
        g = geometry("multi-spindle drill", dc, lcf, lb, oal, dc, 2, SIG=118)
        presets = hole_making_presets(shelf.unit, "drill", 0.8, "hss", g, per_revolution=False)
        shelf.add("multi-spindle drill", product_id("MS%d" % spindles, shelf.unit, dc),
                  "Multi-spindle drill, %d spindles %s, drills %s, HSS" % (spindles, spacing, size(dc, shelf.unit)),
                  "hss", g, presets)


def fill(shelf, sizes):
    """Puts a library of hole making tools on the shelf. sizes: the module with the tables."""
    for code, rows in sizes.JOBBER_SERIES:
        drills(shelf, code, "Jobber drill", "hss", with_lengths(rows, sizes.JOBBER_LENGTHS), tip_angle=118, share=1)
    drills(shelf, "DS", "Stub drill", "coated carbide", with_lengths(sizes.STUB, sizes.STUB_LENGTHS), tip_angle=140,
           share=1.2, coolant="through tool", holder_kind="collet")
    for code, title, rows, tip_angle in sizes.CENTER_SERIES:
        center_drills(shelf, code, title, rows, tip_angle)
    spot_drills(shelf, sizes.SPOT)
    countersinks(shelf, sizes.COUNTERSINKS)
    counterbores(shelf, sizes.COUNTERBORES)
    reamers(shelf, sizes.REAMER_TITLE, sizes.REAMERS)
    for_blind_holes = [row for row in sizes.TAPS_COARSE if row[1] * shelf.unit.millimeters < 13]
    taps(shelf, "TP", "spiral point for through holes", sizes.TAPS_COARSE)
    taps(shelf, "TF", "spiral flutes for blind holes", for_blind_holes)
    taps(shelf, "TP", "spiral point for through holes", sizes.TAPS_FINE)
    taps(shelf, "TL", "for through holes", sizes.TAPS_LEFT, "left hand tap")
    boring_heads(shelf, sizes.BORING_HEADS)
    multi_spindle_drills(shelf, sizes.MULTI_SPINDLE)
