"""The library "Depositing Tools": heads for laser powder, laser wire and electric arc wire deposition.

A tool has the outline of its head as a holder, from the nozzle to the flange of the machine; it has no geometry of its
own. What flows follows from what is laid down: beads with the distance s (stepover) in layers of the height h, at the
feedrate v, fill the volume s h v.
    wire feed = s h v / (pi d^2 / 4)       wire of the diameter d
    powder    = s h v density / yield      with a yield of 0.7 of the powder
The tables are in mm, mm/min, W, A, V and l/min.
"""

import math
from typing import NamedTuple

from holders import attached
from jets import GRAMS_PER_OUNCE, rounded
from library import METRIC

LITERS_PER_CUBIC_FOOT = 28.316846592
POWDER_YIELD = 0.7
STEPOVER = 0.7  # of the bead

# Name and density in g/cm³ of what is laid down.
STEEL = ("Unalloyed steel", 7.85)
STAINLESS = ("Stainless steel 1.4404", 7.9)
NICKEL = ("Nickel alloy 2.4856", 8.4)
ALUMINIUM = ("Aluminium alloy AlMg4.5Mn", 2.66)


class Head(NamedTuple):
    """A head as it is set up."""
    tool_type: str
    code: str
    title: str
    bead: float
    layer: float
    feed: float
    stand_off: float
    outline: str
    materials: tuple
    power: float = 0
    wire: float = 0
    current: float = 0
    voltage: float = 0
    program: int = 0  # of the power source, 0 for none


# From the nozzle to the gauge line: height, diameter at the nose side, diameter at the machine side.
OUTLINES = {
    "coaxial powder": ("Powder head, coaxial nozzle",  [(35, 12, 50), (60, 80, 80), (120, 110, 110)]),
    "coaxial wire":   ("Wire head, coaxial laser",     [(50, 8, 60), (80, 90, 90), (140, 130, 130)]),
    "side wire":      ("Laser head, wire from the side", [(40, 20, 60), (70, 100, 100), (120, 110, 110)]),
    "torch":          ("Welding torch, gas nozzle 20 mm", [(45, 20, 24), (60, 30, 30), (90, 60, 60)]),
}

HEADS = [
    #                                                         bead layer feed stand-off
    Head("laser powder", "DP-1", "Laser powder head, bead 1 mm",     1,   0.3, 800,  9,  "coaxial powder",
         (STAINLESS, NICKEL), power=500),
    Head("laser powder", "DP-2", "Laser powder head, bead 2 mm",     2,   0.6, 800,  12, "coaxial powder",
         (STAINLESS, NICKEL), power=1200),
    Head("laser powder", "DP-3", "Laser powder head, bead 3 mm",     3,   0.8, 700,  13, "coaxial powder",
         (STEEL, STAINLESS, NICKEL), power=2000),
    Head("laser powder", "DP-5", "Laser powder head, bead 5 mm",     5,   1.2, 600,  16, "coaxial powder",
         (STEEL, STAINLESS, NICKEL), power=4000),
    Head("laser wire", "DW-08", "Laser wire head, wire 0.8 mm",      2,   0.8, 900,  14, "coaxial wire",
         (STEEL, STAINLESS), power=2000, wire=0.8),
    Head("laser wire", "DW-10", "Laser wire head, wire 1 mm",        2.5, 1,   900,  14, "coaxial wire",
         (STEEL, STAINLESS, NICKEL), power=3000, wire=1),
    Head("laser wire", "DW-12", "Laser wire head, wire 1.2 mm from the side", 3.5, 1.2, 1000, 18, "side wire",
         (STEEL, STAINLESS), power=4000, wire=1.2),
    Head("electric arc wire", "DA-10", "Arc wire torch, wire 1 mm",  5,   1.8, 500,  13, "torch",
         (STEEL, STAINLESS), wire=1, current=120, voltage=17, program=3),
    Head("electric arc wire", "DA-12", "Arc wire torch, wire 1.2 mm", 6,  2.2, 500,  15, "torch",
         (STEEL, STAINLESS, NICKEL), wire=1.2, current=160, voltage=18.5, program=5),
    Head("electric arc wire", "DA-12A", "Arc wire torch, aluminium wire 1.2 mm", 7, 2.5, 600, 15, "torch",
         (ALUMINIUM,), wire=1.2, current=110, voltage=17.5),
]
INCH_HEADS = [
    Head("laser powder", "DP-3", "Laser powder head, bead 1/8 in",   3.175, 0.8, 700, 13, "coaxial powder",
         (STAINLESS, NICKEL), power=2000),
    Head("laser wire", "DW-11", "Laser wire head, wire 0.045 in",    3.175, 1.1, 900, 14, "coaxial wire",
         (STEEL, STAINLESS), power=3500, wire=1.143),
    Head("electric arc wire", "DA-11", "Arc wire torch, wire 0.045 in", 6.35, 2.2, 500, 15, "torch",
         (STEEL, STAINLESS), wire=1.143, current=155, voltage=18.5, program=5),
]


def to_unit(unit, millimeters):
    return millimeters if unit is METRIC else round(millimeters / unit.millimeters, 3)


def gas(unit, liters):
    return liters if unit is METRIC else round(liters / LITERS_PER_CUBIC_FOOT * 60)


def preset(unit, head, name, density):
    """The flows follow from the rounded sizes, in the unit of the tool."""
    bead, layer = to_unit(unit, head.bead), to_unit(unit, head.layer)
    feed = head.feed if unit is METRIC else rounded(head.feed / unit.millimeters, 2)
    stepover = round(STEPOVER * bead, 4)
    volume = stepover * layer * feed  # in a minute
    values = {
        "BEAD_WIDTH": bead,
        "DEPOSITING_SHIELD_GAS_FLOW_RATE": gas(unit, 15),
        "LAYER_THICKNESS": layer,
        "STAND_OFF_DISTANCE": to_unit(unit, head.stand_off),
        "description": "",
        "name": name,
        "stepover": stepover,
        "use-stepover": True,
        "v_f": feed,
        "v_f_leadIn": feed,
        "v_f_leadOut": feed,
        "v_f_plunge": feed,
    }
    if head.power:
        values.update({"DEPOSITING_POWER": head.power, "DEPOSITING_AUXILIARY_GAS_FLOW_RATE": gas(unit, 5)})
    if head.wire:
        values["WIRE_FEED"] = rounded(volume / (math.pi * to_unit(unit, head.wire) ** 2 / 4), 3)
    else:
        grams = volume * unit.millimeters ** 3 * density / 1000 / POWDER_YIELD
        values["POWDER_FLOW_RATE"] = rounded(grams if unit is METRIC else grams / GRAMS_PER_OUNCE, 3)
        values["DEPOSITING_CARRIER_GAS_FLOW_RATE"] = gas(unit, 4)
    if head.current:
        values.update({"DEPOSITING_CURRENT": head.current, "DEPOSITING_VOLTAGE": head.voltage,
                       "USE_PRESET_PROGRAM": head.program > 0})
        if head.program:
            values["PRESET_PROGRAM"] = head.program
    return values


def head_holder(unit, key):
    title, outline = OUTLINES[key]
    outline = [tuple(to_unit(unit, value) for value in row) for row in outline]
    return attached(unit, "DH-%s-%s" % (unit.letter, key.replace(" ", ".")), title, outline)


def fill(shelf, heads):
    for head in heads:
        shelf.put(head.tool_type, "%s-%s" % (head.code, shelf.unit.letter), head.title, BMC="unspecified",
                  holder=head_holder(shelf.unit, head.outline), post_process=shelf.post_process(),
                  start_values={"presets": [preset(shelf.unit, head, *material) for material in head.materials]})
