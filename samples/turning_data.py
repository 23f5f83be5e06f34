"""Presets of feeds and speeds of turning tools.

The guidelines, lengths in mm: a radius RE takes a feed of up to 0.4 RE per revolution and a depth of cut of up to
2.5 RE; a slender corner, an edge that is short, and a bar in a bore take less. A groover takes 0.02 mm and 0.03 of its
width. A threading tool advances by the pitch.

Turning and grooving keep the cutting speed constant. The spindle speed beside it is that on the diameter of reference:
work of 50 mm (2 in) for external tools, the smallest bore for internal ones. Threads are cut at that spindle speed.
"""

from cutting_data import (
    CUTTING_SPEEDS, preset_material, spindle_speed, surface_speed, work_materials,
)
from library import INCH, METRIC

HIGHEST_SPEED = 4000  # 1/min, of the lathes that the libraries are meant for
WORK_DIAMETERS = {METRIC.name: 50, INCH.name: 2}
FEET_PER_METER = 1 / 0.3048

FERROUS = ("steel", "stainless", "cast iron")
LIGHT = ("aluminium",)

# Share of feed and depth that a corner takes, by its angle.
STRENGTHS = {0: 1, 35: 0.6, 55: 0.8, 60: 0.85, 80: 1, 90: 1}

HIGHEST_FEED = 0.4  # mm
DEPTH_STEPS = {METRIC.name: 0.1, INCH.name: 0.005}
INTERNAL_SPEED, INTERNAL_CUT = 0.8, 0.75  # shares of what an external tool takes


def _feed(unit, millimeters):
    return round(max(millimeters, 0.02) / unit.millimeters, 2 if unit is METRIC else 4)


def _preset(unit, operation, material, column, work, feed, bore, constant):
    """bore: the smallest bore of an internal tool. constant: the cutting speed is kept, not the spindle speed."""
    speed = CUTTING_SPEEDS[operation, material][column] * (INTERNAL_SPEED if bore else 1)
    diameter = bore or WORK_DIAMETERS[unit.name]
    n = spindle_speed(speed, diameter * unit.millimeters, HIGHEST_SPEED)
    if constant:
        speed = round(speed * (1 if unit is METRIC else FEET_PER_METER) / 5) * 5
    else:
        speed = surface_speed(unit, diameter, n)
    return {
        "description": work.description,
        "f_n": feed,
        "f_n_leadIn": feed,
        "f_n_leadOut": feed,
        "material": preset_material(work),
        "n": n,
        "name": work.name,
        "tool-coolant": "disabled" if work.category == "cast iron" else "flood",
        "use-constant-surface-speed": constant,
        "use-depth-of-cut": False,
        "use-feed-per-revolution": True,
        "v_c": speed,
    }


def turning_presets(unit, insert, material, works, bore=None):
    """One preset per work material for turning and boring."""
    strength = STRENGTHS[insert.angle] * (INTERNAL_CUT if bore else 1)
    # A round insert is one large radius, of which only the lowest part cuts.
    radius = (insert.circle / 4 if insert.shape == "R" else insert.radius) * unit.millimeters
    depth = min(2.5 * radius, 0.3 * insert.edge() * unit.millimeters, insert.circle / 5 * unit.millimeters) * strength
    step = DEPTH_STEPS[unit.name]
    depth = round(max(1, round(depth / unit.millimeters / step)) * step, unit.decimals)
    presets = []
    for column, work in work_materials(works):
        share = min(0.4 * work.feed * strength, 0.5)
        feed = _feed(unit, min(share * radius, HIGHEST_FEED))
        preset = _preset(unit, "turn", material, column, work, feed, bore, True)
        preset.update({"use-depth-of-cut": True, "depth-of-cut": depth})
        presets.append(preset)
    return presets


def grooving_presets(unit, material, width, works, bore=None):
    presets = []
    for column, work in work_materials(works):
        feed = (0.02 + 0.03 * width * unit.millimeters) * min(work.feed, 1.2) * (INTERNAL_CUT if bore else 1)
        presets.append(_preset(unit, "groove", material, column, work, _feed(unit, feed), bore, True))
    return presets


def threading_presets(unit, material, pitch, works, bore=None):
    return [_preset(unit, "thread", material, column, work, pitch, bore, False)
            for column, work in work_materials(works)]
