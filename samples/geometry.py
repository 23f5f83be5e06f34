"""The "geometry" of a rotating tool: which members each type has, and those that follow from the others.

Formulas with an angle pass through sine and tangent, whose last bit may differ between machines; what comes of them is
rounded to a millionth, so that the files do not.
"""

import math

from library import HOLE_MAKING_TYPES

CYLINDRICAL = {"flat end mill", "ball end mill", "bull nose end mill", "corner chamfer end mill"}
CIRCLE_SEGMENT = {"circle segment barrel", "circle segment lens", "circle segment oval", "circle segment taper"}


def millionths(value):
    return round(value, 6)


def tangent(degrees):
    return math.tan(math.radians(degrees))


def cone_length(large, small, half_angle):
    """Axial length of a cone between two diameters; half_angle is the angle between axis and side."""
    return millionths((large - small) / 2 / tangent(half_angle))


def tapered_ball_diameter(radius, taper):
    """Diameter at which the sides of a tapered ball mill, prolonged, meet the plane of the tip: the ball touches the
    sides, so DC = 2 RE (1 - sin TA) / cos TA."""
    angle = math.radians(taper)
    return millionths(2 * radius * (1 - math.sin(angle)) / math.cos(angle))


def shoulder_diameter(tool_type, g):
    """Diameter of the shoulder above the flutes, from the form of each type of mill."""
    dc, taper = g["DC"], g["TA"]
    if tool_type in CYLINDRICAL:
        return dc
    if tool_type == "tapered mill":
        return millionths(dc + 2 * tangent(taper) * g["shoulder-length"])
    if tool_type == "face mill":
        return millionths(dc + 2 * tangent(taper) * g["LCF"])
    if tool_type == "radius mill":
        return millionths(dc + 2 * g["RE"])
    if tool_type == "dovetail mill":
        corner = g["RE"] * (1 + 1 / math.sin(math.radians(taper)))
        return millionths(dc - 2 * tangent(taper) * (g["LCF"] - corner) - 2 * g["RE"])
    if tool_type == "thread mill":
        return millionths(dc - g["TP"] / tangent(g["thread-profile-angle"] / 2))
    if tool_type in ("chamfer mill", "lollipop mill"):
        return min(dc, g["SFDM"])
    return g["SFDM"]


def geometry(tool_type, dc, lcf, lb, oal, sfdm, flutes, **more):
    """Geometry with the members that a tool of the type has. more: members that are not at their usual value, with
    "_" for "-" in their names."""
    g = {
        "CSP": False, "DC": dc, "HAND": tool_type != "left hand tap", "LB": lb, "LCF": lcf, "NOF": flutes, "NT": 1,
        "OAL": oal, "RE": 0, "SFDM": sfdm, "TP": 0, "shoulder-length": lcf, "thread-profile-angle": 60,
        "tip-diameter": 0, "tip-length": 0, "tip-offset": 0,
    }
    if tool_type in HOLE_MAKING_TYPES:
        g["SIG"] = 0
    else:
        g["TA"] = 0
    g.update({name.replace("_", "-"): value for name, value in more.items()})
    if tool_type not in HOLE_MAKING_TYPES:
        g.setdefault("shoulder-diameter", shoulder_diameter(tool_type, g))
    if tool_type == "face mill":
        g["DCX"] = millionths(dc + 2 * tangent(g["TA"]) * lcf)
        g["upper-radius"] = 0
    assert lcf <= g["shoulder-length"] <= lb <= oal, (tool_type, g)
    return g


def neck(lower, upper, free):
    """Shaft of an end mill whose shank is wider than its shoulder: a cone of 15 degrees to the axis, no longer than
    the free length. None for a shank that is not wider."""
    if upper <= lower:
        return None
    height = min(round(cone_length(upper, lower, 15), 3), round(free, 6))
    return [{"height": height, "lower-diameter": lower, "upper-diameter": upper}] if height > 0 else None
