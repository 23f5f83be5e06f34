"""Presets of feeds and speeds.

Formulas, symbols after ISO 3002 (d in mm, vc in m/min, feeds in mm):
    n   = 1000 vc / (pi d)        spindle speed, 1/min
    vf  = n fz z                  feedrate of a mill with z flutes
    vf  = n f                     feedrate of a hole maker with the feed f per revolution
    vf  = n P                     feedrate of a tap of pitch P
What a preset holds beside them is computed back from the rounded n and vf:
    f_z = vf / (n z)    f_n = vf / n    v_c = pi d n / 1000 (m/min) or pi d n / 12 (ft/min, d in inches)

The cutting speeds and feeds are guidelines of our own: cautious values from the middle of the bands that textbooks of
machining give for the work material groups of ISO 513 (P, M, K, N) and for tools of high speed steel and carbide on a
stable machine of medium size. No figure is taken from the catalogue of a maker.
"""

import math
from typing import NamedTuple

from library import METRIC

HIGHEST_SPEED = 20000  # 1/min, of the spindles that the libraries are meant for


class WorkMaterial(NamedTuple):
    """A group of ISO 513, as a category of presets."""
    category: str
    name: str
    description: str
    feed: float  # feed as a share of that in steel
    dry: bool    # coated inserts mill it without coolant


WORK_MATERIALS = [
    #            category     name               description                                              feed  dry
    WorkMaterial("steel",     "Steel",           "ISO 513 group P, unalloyed and low alloy to 850 N/mm²", 1.0,  True),
    WorkMaterial("stainless", "Stainless steel", "ISO 513 group M, austenitic",                           0.75, False),
    WorkMaterial("cast iron", "Cast iron",       "ISO 513 group K, grey and nodular",                     1.1,  True),
    WorkMaterial("aluminium", "Aluminium",       "ISO 513 group N, wrought alloys",                       1.4,  False),
]
COMMON = ("steel", "stainless", "aluminium")

# Cutting speed in m/min by operation and cutting material, one column per work material.
CUTTING_SPEEDS = {
    # operation       cutting material    steel stainless cast iron aluminium
    ("bore",          "coated carbide"): (140,  100,      120,      250),
    ("drill",         "cobalt"):         (30,   14,       28,       70),
    ("drill",         "coated carbide"): (90,   45,       90,       180),
    ("drill",         "hss"):            (26,   11,       24,       65),
    ("face",          "coated carbide"): (200,  130,      180,      500),
    ("groove",        "coated carbide"): (120,  80,       100,      250),
    ("mill",          "carbide"):        (100,  60,       90,       300),
    ("mill",          "coated carbide"): (140,  80,       120,      320),
    ("mill",          "cobalt"):         (28,   14,       25,       80),
    ("mill",          "hss"):            (24,   12,       22,       70),
    ("ream",          "hss"):            (10,   5,        9,        20),
    ("sink",          "hss"):            (20,   9,        18,       50),
    ("tap",           "cobalt"):         (12,   6,        10,       20),
    ("thread",        "coated carbide"): (110,  75,       90,       200),
    ("turn",          "carbide"):        (100,  70,       90,       500),
    ("turn",          "coated carbide"): (220,  150,      190,      450),
}

# Feed per revolution in steel of a twist drill of high speed steel, up to a diameter, both in mm.
DRILL_FEEDS = [
    (1.0, 0.02), (1.5, 0.03), (2.0, 0.04), (2.5, 0.05), (3.0, 0.06), (4.0, 0.08), (5.0, 0.10), (6.0, 0.12),
    (8.0, 0.15), (10.0, 0.18), (12.0, 0.21), (16.0, 0.25), (20.0, 0.30), (math.inf, 0.35),
]


class Cut(NamedTuple):
    """How a kind of mill cuts. The feed per tooth in steel is a share of the diameter up to a limit in mm; stepdown
    and stepover are shares of the diameter, None where the kind has no such value of its own."""
    operation: str
    feed_share: float
    feed_limit: float
    stepdown: float
    stepover: float


def work_materials(categories):
    return [(column, work) for column, work in enumerate(WORK_MATERIALS) if work.category in categories]


def spindle_speed(vc, diameter, highest=HIGHEST_SPEED):
    """n = 1000 vc / (pi d), rounded as one sets a spindle. vc in m/min, diameter in mm."""
    n = min(1000 * vc / (math.pi * diameter), highest)
    step = 100 if n >= 10000 else 10 if n >= 1000 else 5 if n >= 100 else 1
    return int(n / step + 0.5) * step


def feedrate(unit, value):
    """A feedrate as one sets it: three or four digits."""
    if unit is METRIC:
        return round(value, 0 if value >= 10 else 1)
    return round(value, 1 if value >= 10 else 2)


def surface_speed(unit, diameter, n):
    """v_c = pi d n in m/min or ft/min, diameter in the unit."""
    return math.pi * diameter * n / (1000 if unit is METRIC else 12)


def preset_material(work):
    return {"category": work.category, "query": "", "use-hardness": False}


def rotating_values(unit, work, diameter, flutes, n, feed, coolant):
    """What the presets of all rotating tools have. feed: the cutting feedrate."""
    return {
        "description": work.description,
        "f_z": feed / (n * flutes),
        "material": preset_material(work),
        "n": n,
        "name": work.name,
        "tool-coolant": coolant,
        "v_c": surface_speed(unit, diameter, n),
        "v_f": feed,
        "v_f_leadIn": feed,
        "v_f_leadOut": feed,
        "v_f_ramp": feed,
        "v_f_transition": feed,
    }


def milling_values(n, plunge):
    """What the presets of mills and taps have beyond that. plunge: the plunge feedrate."""
    return {"f_n": plunge / n, "n_ramp": n, "ramp-angle": 2, "use-stepdown": False, "use-stepover": False,
            "v_f_plunge": plunge}


def milling_presets(unit, cut, material, geometry, works=COMMON, dry=False):
    """One preset per work material for a mill. dry: without coolant where the work material allows it."""
    diameter, flutes = geometry["DC"], geometry["NOF"]
    millimeters = diameter * unit.millimeters
    presets = []
    for column, work in work_materials(works):
        n = spindle_speed(CUTTING_SPEEDS[cut.operation, material][column], millimeters)
        per_tooth = min(cut.feed_share * millimeters, cut.feed_limit) * work.feed / unit.millimeters
        feed = feedrate(unit, n * per_tooth * flutes)
        coolant = "disabled" if dry and work.dry else "flood"
        slow = feedrate(unit, feed / 3)  # into the full: a third of the feedrate from the side
        preset = {**rotating_values(unit, work, diameter, flutes, n, feed, coolant), **milling_values(n, slow)}
        preset["v_f_ramp"] = slow
        if cut.stepdown:
            preset["use-stepdown"] = True
            preset["stepdown"] = min(round(cut.stepdown * diameter, unit.decimals), geometry["LCF"])
        if cut.stepover:
            preset["use-stepover"] = True
            preset["stepover"] = round(cut.stepover * diameter, unit.decimals)
        presets.append(preset)
    return presets


def feed_per_revolution(unit, diameter, share, work):
    """f in the unit of the tool; share: of the feed of a twist drill of the same diameter in steel."""
    millimeters = diameter * unit.millimeters
    feed = next(feed for limit, feed in DRILL_FEEDS if millimeters <= limit) * share * work.feed
    return round(max(feed, 0.005) / unit.millimeters, unit.decimals)


def hole_making_presets(unit, operation, share, material, geometry, works=COMMON, coolant="flood", per_revolution=True):
    """One preset per work material for a tool that is fed along its axis. share: see feed_per_revolution.
    per_revolution: drills, reamers and the like are set by their feed per revolution; boring heads, countersinks and
    geared heads by their feedrate."""
    diameter = geometry["DC"]
    presets = []
    for column, work in work_materials(works):
        n = spindle_speed(CUTTING_SPEEDS[operation, material][column], diameter * unit.millimeters)
        feed = feed_per_revolution(unit, diameter, share, work)
        rate = round(n * feed, 6) if per_revolution else feedrate(unit, n * feed)
        preset = rotating_values(unit, work, diameter, geometry["NOF"], n, rate, coolant)
        preset["use-feed-per-revolution"] = per_revolution
        if per_revolution:
            preset.update({"f_n": feed, "f_n_retract": feed})
        else:
            preset.update({"f_n": rate / n, "v_f_plunge": rate, "v_f_retract": rate})
        presets.append(preset)
    return presets


def tapping_presets(unit, material, geometry, works=COMMON):
    """One preset per work material for a tap: pitch and speed give the feedrate, which is not rounded."""
    presets = []
    for column, work in work_materials(works):
        n = spindle_speed(CUTTING_SPEEDS["tap", material][column], geometry["DC"] * unit.millimeters)
        feed = n * geometry["TP"]
        presets.append({**rotating_values(unit, work, geometry["DC"], geometry["NOF"], n, feed, "flood"),
                        **milling_values(n, feed)})
    return presets
