"""Mills: how a row of sizes becomes a tool, and which series a library has. The sizes are in mills_metric.py and
mills_inch.py, tables of the same names.

Every function takes the shelf to fill and the rows of one series. Diameters, lengths and radii are in the unit of the
shelf, taper angles in degrees between axis and side. What the columns are called after the DIN sheets: d1 cutting
diameter, l2 flute length, l1 overall length, d2 shank diameter, d3 neck diameter, l3 reach of the neck.
"""

import math
from typing import NamedTuple

from cutting_data import COMMON, Cut, milling_presets
from geometry import cone_length, geometry, millionths, neck, tapered_ball_diameter
from holders import clamped_length, holder
from library import plain, product_id, size, thread_product_id

# How each kind of mill cuts: operation, feed per tooth as a share of the diameter and its limit in mm, stepdown and
# stepover as shares of the diameter.
SIDE = Cut("mill", 0.005, 0.10, 1.0, 0.25)
ROUGHING = Cut("mill", 0.004, 0.08, 1.0, 0.5)
COPYING = Cut("mill", 0.006, 0.12, 0.1, 0.1)
CORNERED = Cut("mill", 0.005, 0.10, 0.5, 0.3)
FACING = Cut("face", 1.0, 0.15, 0.03, 0.7)
EDGE = Cut("mill", 0.006, 0.08, None, None)
GROOVING = Cut("mill", 0.002, 0.05, None, None)
SAWING = Cut("mill", 1.0, 0.02, None, None)
ENGRAVING = Cut("mill", 0.003, 0.02, None, None)
THREADING = Cut("mill", 0.004, 0.06, None, None)
SEGMENT = Cut("mill", 0.006, 0.10, None, 0.05)
PLUNGING = Cut("face", 1.0, 0.10, None, 0.3)

MATERIAL_WORDS = {"carbide": "carbide", "coated carbide": "coated carbide", "cobalt": "HSS-Co", "hss": "HSS"}


class Series(NamedTuple):
    """What the tools of one series have in common."""
    code: str            # of the product ids
    title: str
    material: str
    flutes: int
    cut: Cut
    holder: str = None   # kind of holder, see holders.py
    works: tuple = COMMON
    dry: bool = False    # in work materials that are milled dry
    edges: str = "flutes"


def shelve(shelf, series, tool_type, g, identity, sizes, **more):
    """Adds the tool of a series: description from title, sizes, flutes and material; presets; holder for its shank."""
    edges = series.edges[:-1] if g["NOF"] == 1 else series.edges
    description = ", ".join(["%s %s" % (series.title, sizes[0]), *sizes[1:], "%d %s" % (g["NOF"], edges),
                             MATERIAL_WORDS[series.material]])
    presets = milling_presets(shelf.unit, series.cut, series.material, g, series.works, series.dry)
    more.setdefault("holder", holder(shelf.unit, series.holder, g["SFDM"]))
    shelf.add(tool_type, identity, description, series.material, g, presets, **more)


def body_length(shelf, oal, shank):
    return round(oal - clamped_length(shelf.unit, shank), 6)


def end_mills(shelf, series, tool_type, rows, **more):
    """Rows: d1, l2, l1, d2, and for types with rounded corners the corner radius."""
    for dc, lcf, oal, shank, *corner in rows:
        lb = body_length(shelf, oal, shank)
        radius = dc / 2 if tool_type == "ball end mill" else corner[0] if corner else 0
        g = geometry(tool_type, dc, lcf, lb, oal, shank, series.flutes, RE=radius, **more)
        sizes = [size(dc, shelf.unit)] + ["corner radius %s" % size(radius, shelf.unit) for _ in corner]
        identity = product_id(series.code, shelf.unit, dc, *("R%s" % plain(r) for r in corner))
        shelve(shelf, series, tool_type, g, identity, sizes, shaft=neck(dc, shank, lb - lcf))


def necked_end_mills(shelf, series, tool_type, rows):
    """Ball nose mills with a relieved neck. Rows: d1, l2, d3, l3, l1, d2."""
    for dc, lcf, neck_diameter, reach, oal, shank in rows:
        lb = body_length(shelf, oal, shank)
        g = geometry(tool_type, dc, lcf, lb, oal, shank, series.flutes, RE=dc / 2, shoulder_length=reach,
                     shoulder_diameter=neck_diameter)
        sizes = [size(dc, shelf.unit), "reach %s" % size(reach, shelf.unit)]
        shelve(shelf, series, tool_type, g, product_id(series.code, shelf.unit, dc, "L%s" % reach), sizes,
               shaft=neck(neck_diameter, shank, lb - reach))


def corner_chamfer_mills(shelf, series, rows):
    """Rows: d1, l2, l1, d2, width of the 45 degree chamfer."""
    for dc, lcf, oal, shank, width in rows:
        g = geometry("corner chamfer end mill", dc, lcf, body_length(shelf, oal, shank), oal, shank, series.flutes,
                     chamfer_angle=45, chamfer_width=width)
        shelve(shelf, series, "corner chamfer end mill", g, product_id(series.code, shelf.unit, dc),
               [size(dc, shelf.unit), "corner chamfer %s x 45°" % size(width, shelf.unit)])


def face_mills(shelf, series, rows):
    """Cutters on a shell mill arbor. Rows: d1, depth of cut, height, bore, hub diameter, inserts, taper angle (45 for
    an entering angle of 45 degrees, 0 for a square shoulder), corner radius."""
    for dc, depth, height, bore, hub, inserts, taper, radius in rows:
        g = geometry("face mill", dc, depth, height, height, hub, inserts, TA=taper, RE=radius)
        sizes = [size(dc, shelf.unit), "%d°" % (90 - taper), "bore %s" % size(bore, shelf.unit)]
        shelve(shelf, series, "face mill", g, product_id(series.code, shelf.unit, dc), sizes,
               holder=holder(shelf.unit, "arbor", bore))


def plunge_mills(shelf, series, rows):
    """Rows: d1, depth of cut, body length, l1, d2, inserts, corner radius."""
    for dc, depth, lb, oal, shank, inserts, radius in rows:
        g = geometry("plunge mill", dc, depth, lb, oal, shank, inserts, RE=radius)
        shelve(shelf, series, "plunge mill", g, product_id(series.code, shelf.unit, dc),
               [size(dc, shelf.unit), "corner radius %s" % size(radius, shelf.unit)])


def cones(shelf, series, tool_type, rows):
    """Chamfer mills, deburring tools and engraving tools. Rows: d1, tip diameter, taper angle, l1, d2. The flutes
    cover the cone."""
    for dc, tip, taper, oal, shank in rows:
        g = geometry(tool_type, dc, cone_length(dc, tip, taper), body_length(shelf, oal, shank), oal, shank,
                     series.flutes, TA=taper, tip_diameter=tip)
        sizes, names = [size(dc, shelf.unit), "%s° included" % (2 * taper)], [2 * taper]
        if tip:
            sizes.append("tip %s" % size(tip, shelf.unit))
            names.append(tip)
        shelve(shelf, series, tool_type, g, product_id(series.code, shelf.unit, dc, *names), sizes,
               shaft=neck(dc, shank, g["LB"] - g["LCF"]))


def back_chamfer_mills(shelf, series, rows):
    """Rows: d1, d3, l3, l1, d2; 45 degrees."""
    for dc, neck_diameter, reach, oal, shank in rows:
        g = geometry("back chamfer mill", dc, cone_length(dc, neck_diameter, 45), body_length(shelf, oal, shank), oal,
                     shank, series.flutes, TA=45, tip_diameter=neck_diameter, shoulder_length=reach,
                     shoulder_diameter=neck_diameter)
        shelve(shelf, series, "back chamfer mill", g, product_id(series.code, shelf.unit, dc),
               [size(dc, shelf.unit), "90° included"])


def tapered_mills(shelf, series, tapered_type, rows):
    """Rows: radius of the ball or diameter at the tip, corner radius, taper angle, l2, l1, d2."""
    ball = tapered_type == "tapered_ball"
    for tip, corner, taper, lcf, oal, shank in rows:
        dc, radius = (tapered_ball_diameter(tip, taper), tip) if ball else (tip, corner)
        g = geometry("tapered mill", dc, lcf, body_length(shelf, oal, shank), oal, shank, series.flutes, TA=taper,
                     RE=radius)
        sizes = [("radius %s" if ball else "%s") % size(tip, shelf.unit), "%s° per side" % taper]
        sizes += [] if ball else ["corner radius %s" % size(corner, shelf.unit)]
        identity = product_id(series.code, shelf.unit, tip, "T%s" % taper)
        shelve(shelf, series, "tapered mill", g, identity, sizes, tapered_type=tapered_type,
               shaft=neck(g["shoulder-diameter"], shank, g["LB"] - lcf))


def discs(shelf, series, tool_type, rows):
    """Disc shaped cutters on a neck. Rows: d1, width, d3, l3, l1, d2, flutes, name or None. The name, such as that of
    the screw of a T-slot, stands in description and product id."""
    for dc, width, neck_diameter, reach, oal, shank, flutes, name in rows:
        g = geometry(tool_type, dc, width, body_length(shelf, oal, shank), oal, shank, flutes, shoulder_length=reach,
                     shoulder_diameter=neck_diameter)
        sizes = ["%s x %s" % (size(dc, shelf.unit), size(width, shelf.unit))] + ([name] if name else [])
        shelve(shelf, series, tool_type, g, product_id(series.code, shelf.unit, dc, width), sizes)


def arbor_discs(shelf, series, tool_type, rows):
    """Saws and gear cutters on a stub arbor. Rows: d1, width, collar diameter, reach of the arbor, flutes, name or
    None."""
    for dc, width, collar, reach, flutes, name in rows:
        g = geometry(tool_type, dc, width, reach, 2 * reach, collar, flutes)
        sizes = ["%s x %s" % (size(dc, shelf.unit), size(width, shelf.unit))] + ([name] if name else [])
        shelve(shelf, series, tool_type, g, product_id(series.code, shelf.unit, dc, width), sizes)


def lollipop_mills(shelf, series, rows):
    """Rows: d1, d3, l3, l1, d2. The flutes cover the ball down to the neck."""
    for dc, neck_diameter, reach, oal, shank in rows:
        lcf = round(dc / 2 + math.sqrt((dc / 2) ** 2 - (neck_diameter / 2) ** 2), 3)
        g = geometry("lollipop mill", dc, lcf, body_length(shelf, oal, shank), oal, shank, series.flutes, RE=dc / 2,
                     shoulder_length=reach, shoulder_diameter=neck_diameter)
        shelve(shelf, series, "lollipop mill", g, product_id(series.code, shelf.unit, dc),
               [size(dc, shelf.unit), "reach %s" % size(reach, shelf.unit)])


def dovetail_mills(shelf, series, rows):
    """Rows: d1, width, taper angle, l1, d2, flutes. The angle of the dovetail is measured to its base."""
    for dc, width, taper, oal, shank, flutes in rows:
        g = geometry("dovetail mill", dc, width, body_length(shelf, oal, shank), oal, shank, flutes, TA=taper)
        sizes = ["%s x %s" % (size(dc, shelf.unit), size(width, shelf.unit)), "%d°" % (90 - taper)]
        shelve(shelf, series, "dovetail mill", g, product_id(series.code, shelf.unit, dc, 90 - taper), sizes)


def radius_mills(shelf, series, rows):
    """Corner rounding cutters. Rows: radius, diameter at the tip, l1, d2."""
    for radius, tip, oal, shank in rows:
        g = geometry("radius mill", tip, 2 * radius, body_length(shelf, oal, shank), oal, shank, series.flutes,
                     RE=radius)
        sizes = ["radius %s" % size(radius, shelf.unit), "tip %s" % size(tip, shelf.unit)]
        shelve(shelf, series, "radius mill", g, product_id(series.code, shelf.unit, radius), sizes)


def thread_mills(shelf, series, rows):
    """Full profile, for one pitch; the crest of a tooth cuts the root of an internal thread, a flat of P/8 (ISO 68-1,
    ASME B1.1). Rows: thread, d1, pitch, teeth along the axis, l1, d2, flutes."""
    for thread, dc, pitch, teeth, oal, shank, flutes in rows:
        g = geometry("thread mill", dc, round(pitch * teeth, 6), body_length(shelf, oal, shank), oal, shank, flutes,
                     TP=pitch, TPX=pitch, TPN=pitch, NT=teeth, thread_tip_type="flat", thread_tip_width=pitch / 8)
        shelve(shelf, series, "thread mill", g, thread_product_id(series.code, thread), [thread, size(dc, shelf.unit)],
               shaft=neck(dc, shank, g["LB"] - g["LCF"]))


def single_tooth_thread_mills(shelf, series, rows):
    """Partial profile, for a range of pitches; the flat is that of the smallest pitch. Rows: d1, smallest pitch,
    largest pitch, their names, width of the disc, d3, l3, l1, d2."""
    for dc, finest, coarsest, names, width, neck_diameter, reach, oal, shank in rows:
        g = geometry("thread mill", dc, width, body_length(shelf, oal, shank), oal, shank, series.flutes,
                     TP=coarsest, TPX=coarsest, TPN=finest, thread_tip_type="flat", thread_tip_width=finest / 8,
                     shoulder_length=reach, shoulder_diameter=neck_diameter)
        shelve(shelf, series, "thread mill", g, product_id(series.code, shelf.unit, dc), [size(dc, shelf.unit), names])


def segment_center(form, profile, taper, lcf):
    """Height above the tip of the center of the large radius: a barrel bulges at half the flute length, an oval runs
    tangent into the shank, a lens has its bulge at the tip, a taper at half the flute length across the sloped side."""
    return {"barrel": lcf / 2, "lens": profile, "oval": lcf,
            "taper": millionths(lcf / 2 + profile * math.sin(math.radians(taper)))}[form]


def circle_segment_mills(shelf, series, rows):
    """Rows: form, d1, large radius, lower radius, upper radius, taper angle, l2, l1, d2."""
    for form, dc, profile, lower, upper, taper, lcf, oal, shank in rows:
        tool_type = "circle segment " + form
        g = geometry(tool_type, dc, lcf, body_length(shelf, oal, shank), oal, shank, series.flutes, TA=taper,
                     axial_distance=segment_center(form, profile, taper, lcf), profile_radius=profile,
                     lower_radius=lower, upper_radius=upper)
        sizes = [size(dc, shelf.unit), "%s form" % form, "radius %s" % size(profile, shelf.unit)]
        identity = product_id(series.code, shelf.unit, dc, form[0].upper() + "%g" % profile)
        shelve(shelf, series, tool_type, g, identity, sizes)


def fill(shelf, sizes):
    """Puts a library of mills on the shelf. sizes: the module with the tables."""
    _end_mills(shelf, sizes)
    _finishing_mills(shelf, sizes)
    _faces_and_edges(shelf, sizes)
    _grooves_and_forms(shelf, sizes)
    _threads_and_discs(shelf, sizes)


def _end_mills(shelf, sizes):
    coated, flat = "coated carbide", "flat end mill"
    light = [row for row in sizes.FLAT if row[0] in sizes.LIGHT_METAL_DIAMETERS]
    for_light = Series("EA3", "Flat end mill for aluminium", "carbide", 3, SIDE, "slim", ("aluminium",))
    end_mills(shelf, Series("EF4", "Flat end mill", coated, 4, SIDE, "collet"), flat, sizes.FLAT)
    end_mills(shelf, Series("ES2", "Short flat end mill", coated, 2, SIDE, "collet"), flat, sizes.FLAT_SHORT)
    end_mills(shelf, for_light, flat, light, CSP=True)
    end_mills(shelf, Series("EH4", "Flat end mill", "cobalt", 4, SIDE), flat, sizes.FLAT_HSS)
    end_mills(shelf, Series("EL4", "Long flat end mill", "cobalt", 4, SIDE), flat, sizes.FLAT_HSS_LONG)
    end_mills(shelf, Series("ER4", "Roughing end mill", "cobalt", 4, ROUGHING), "roughing end mill", sizes.ROUGHING_HSS)
    corner_chamfer_mills(shelf, Series("EC4", "End mill", coated, 4, SIDE, "collet"), sizes.CORNER_CHAMFER)


def _finishing_mills(shelf, sizes):
    coated, ball = "coated carbide", "ball end mill"
    end_mills(shelf, Series("EN4", "Bull nose end mill", coated, 4, CORNERED, "slim"), "bull nose end mill", sizes.BULL)
    end_mills(shelf, Series("EB2", "Ball end mill", coated, 2, COPYING, "slim"), ball, sizes.BALL)
    end_mills(shelf, Series("EB4", "Ball end mill", coated, 4, COPYING, "slim"), ball, sizes.BALL_FINISHING)
    necked_end_mills(shelf, Series("EBN", "Necked ball end mill", coated, 2, COPYING, "slim"), ball, sizes.BALL_NECKED)
    tapered_mills(shelf, Series("TB2", "Tapered ball mill", coated, 2, COPYING), "tapered_ball", sizes.TAPERED_BALL)
    tapered_mills(shelf, Series("TN3", "Tapered mill", "carbide", 3, COPYING), "tapered_bull_nose", sizes.TAPERED_BULL)
    circle_segment_mills(shelf, Series("CS4", "Circle segment mill", coated, 4, SEGMENT, "slim"), sizes.SEGMENTS)


def _faces_and_edges(shelf, sizes):
    carbide = "coated carbide"
    inserts = {"material": carbide, "flutes": 0, "dry": True, "edges": "inserts",
               "works": ("steel", "stainless", "cast iron", "aluminium")}
    face_mills(shelf, Series("FM45", "Face mill", cut=FACING, **inserts), sizes.FACE_45)
    face_mills(shelf, Series("FM90", "Square shoulder face mill", cut=FACING, **inserts), sizes.FACE_90)
    plunge_mills(shelf, Series("PM", "Plunge mill", cut=PLUNGING, holder="side lock", **inserts), sizes.PLUNGE)
    cones(shelf, Series("CH4", "Chamfer mill", carbide, 4, EDGE, "collet"), "chamfer mill", sizes.CHAMFER)
    back_chamfer_mills(shelf, Series("BC4", "Back chamfer mill", "carbide", 4, EDGE), sizes.BACK_CHAMFER)
    cones(shelf, Series("DB4", "Deburring tool", "carbide", 4, EDGE), "deburring tool", sizes.DEBURRING)
    engraving = Series("EG1", "Engraving tool", "carbide", 1, ENGRAVING, "collet", ("steel", "aluminium"))
    cones(shelf, engraving, "engraving tool", sizes.ENGRAVING)


def _grooves_and_forms(shelf, sizes):
    discs(shelf, Series("TS", "T-slot cutter", "cobalt", 0, GROOVING), "slot mill", sizes.T_SLOT)
    discs(shelf, Series("RG", "Disc slot mill", "carbide", 0, GROOVING), "slot mill", sizes.RING_GROOVE)
    discs(shelf, Series("WK", "Woodruff cutter", "cobalt", 0, GROOVING), "woodruff cutter", sizes.WOODRUFF)
    dovetail_mills(shelf, Series("DV", "Dovetail mill", "cobalt", 0, GROOVING), sizes.DOVETAIL)
    lollipop_mills(shelf, Series("LP2", "Lollipop mill", "coated carbide", 2, COPYING), sizes.LOLLIPOP)
    radius_mills(shelf, Series("CR4", "Corner rounding mill", "cobalt", 4, EDGE), sizes.RADIUS)


def _threads_and_discs(shelf, sizes):
    coated = "coated carbide"
    single = Series("TM1", "Single tooth thread mill", coated, 3, THREADING)
    thread_mills(shelf, Series("TM", "Thread mill", coated, 0, THREADING, "collet"), sizes.THREAD)
    single_tooth_thread_mills(shelf, single, sizes.THREAD_SINGLE)
    arbor_discs(shelf, Series("SW", "Slitting saw", "hss", 0, SAWING, edges="teeth"), "slitting saw", sizes.SAWS)
    arbor_discs(shelf, Series("GC", "Involute gear cutter", "hss", 0, SAWING, edges="teeth"), "gear cutter", sizes.GEAR)
