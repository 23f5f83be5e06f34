"""Indexable inserts: from the designation to the geometry of a turning tool.

ISO 1832: "CNMG120408" is shape C, clearance N, tolerance M, type G, edge length 12, thickness 04, corner radius 08.
ANSI B212.4: "CNMG432" has the same four letters; then the inscribed circle in eighths, the thickness in sixteenths and
the corner radius in sixty-fourths of an inch.

A cutting edge of ISO 1832 is named after its whole millimeters: that of a rhombus with the inscribed circle IC and the
angle e is IC / sin e long, that of a triangle IC tan 60°, that of a trigon IC (cot 40° + cot 80°) / 2.
"""

import math
import re
from typing import NamedTuple

from library import METRIC

# Included angle by shape; 0 for round.
ANGLES = {"C": 80, "D": 55, "R": 0, "S": 90, "T": 60, "V": 35, "W": 80}

# Clearance angle by letter.
CLEARANCES = {"N": 0, "B": 5, "C": 7, "P": 11}

# Inscribed circles in mm by shape and edge length.
CIRCLES = {
    "C": {"06": 6.35, "09": 9.525, "12": 12.7, "16": 15.875, "19": 19.05},
    "D": {"07": 6.35, "11": 9.525, "15": 12.7},
    "R": {"06": 6, "08": 8, "10": 10, "12": 12, "16": 16},
    "S": {"09": 9.525, "12": 12.7, "15": 15.875},
    "T": {"11": 6.35, "16": 9.525, "22": 12.7},
    "V": {"11": 6.35, "16": 9.525},
    "W": {"06": 9.525, "08": 12.7},
}

# Thicknesses in mm.
THICKNESSES = {"02": 2.38125, "T3": 3.96875, "03": 3.175, "04": 4.7625, "05": 5.55625, "06": 6.35}

# Inserts of the laydown form for threads, by the length of their edge: inscribed circle, thickness and width of the
# insert behind the edge, in mm.
LAYDOWN = {
    # size  circle thickness width
    "11":   (6.35,  3.175,   2.5),
    "16":   (9.525, 3.96875, 4),
    "22":   (12.7,  4.7625,  6.5),
}


class Insert(NamedTuple):
    """What a designation says. Lengths in the unit of the shelf, angles in degrees."""
    designation: str
    shape: str
    clearance: float
    tolerance: str
    cross_section: str
    circle: float
    thickness: float
    radius: float

    @property
    def angle(self):
        return ANGLES[self.shape]

    def edge(self):
        """Length of a cutting edge, the diameter for a round insert."""
        angle = math.radians(self.angle)
        if self.shape == "R":
            return self.circle
        if self.shape == "T":
            return self.circle * math.tan(angle)
        if self.shape == "W":
            return self.circle * (1 / math.tan(angle / 2) + 1 / math.tan(angle)) / 2
        return self.circle / math.sin(angle)

    def geometry(self):
        """The members of "geometry" for turning and boring tools."""
        return {"EPSR": self.angle, "INSD": self.circle, "RA": self.clearance, "RE": self.radius, "S": self.thickness,
                "SC": self.shape, "SCTY": self.cross_section, "SIZE_SPECIFICATION_MODE": "IC", "TC": self.tolerance}


def insert(unit, designation):
    """Reads a designation: ISO 1832 for metric tools, ANSI B212.4 for inch ones."""
    return _metric(designation) if unit is METRIC else _inch(designation)


def _metric(designation):
    shape, clearance, tolerance, section, edge, thickness, radius = re.fullmatch(
        r"(.)(.)(.)(.)(\d\d)(\d\d|T\d)(\d\d|M0)", designation).groups()
    circle = CIRCLES[shape][edge]
    return Insert(designation, shape, CLEARANCES[clearance], tolerance, section, circle, THICKNESSES[thickness],
                  circle / 2 if radius == "M0" else int(radius) / 10)


def _inch(designation):
    """A digit may have one decimal: "CCMT32.51" is circle 3, thickness 2.5, radius 1."""
    shape, clearance, tolerance, section, circle, thickness, radius = re.fullmatch(
        r"(.)(.)(.)(.)(\d)(\d(?:\.5)?)(00|0\.5|\d)", designation).groups()
    circle = int(circle) / 8
    corner = circle / 2 if shape == "R" else 1 / 128 if radius == "0.5" else int(radius) / 64
    return Insert(designation, shape, CLEARANCES[clearance], tolerance, section, circle, float(thickness) / 16, corner)
