"""Laser, plasma and water jet cutters: a tool is a nozzle as it is set up, a preset what it does to a sheet.

Speeds and settings are guidelines of our own: cautious values from the middle of the bands that textbooks of cutting
give. The tables are in mm, mm/min, bar, W, g/min and s, for both libraries; the inch one has the sheets of inch sizes
and the speeds that follow.

    speed of a sheet between two rows: v = v0 (t0 / t)^p through the rows beside it, p from their speeds
"""

import math
from typing import NamedTuple

from library import METRIC, plain, size

BAR_PER_PSI = 0.0689475729
GRAMS_PER_OUNCE = 28.349523125

# Cutting speed in mm/min by thickness in mm.
SPEEDS = {
    "laser 2 kW nitrogen": {"Stainless steel": {1: 14000, 2: 6500, 3: 3800, 4: 2200, 5: 1400},
                            "Aluminium":       {1: 12000, 2: 5500, 3: 3000, 4: 1700}},
    "laser 4 kW nitrogen": {"Stainless steel": {1: 28000, 2: 14000, 3: 8000, 4: 5000},
                            "Aluminium":       {1: 27000, 2: 13000, 3: 7500, 4: 4800},
                            "Steel":           {1: 29000, 2: 13000, 3: 7500, 4: 4800}},
    "laser 4 kW thick":    {"Stainless steel": {4: 5000, 5: 3500, 6: 2400, 8: 1200, 10: 700},
                            "Aluminium":       {4: 4800, 5: 3000, 6: 2000, 8: 1000}},
    "laser 2 kW oxygen":   {"Steel": {3: 3000, 4: 2500, 5: 2100, 6: 1800, 8: 1350, 10: 1050}},
    "laser 4 kW oxygen":   {"Steel": {6: 2600, 8: 2100, 10: 1700, 12: 1350, 15: 1000, 20: 650}},
    "plasma 45 A":         {"Steel":           {2: 5200, 3: 3600, 4: 2500, 6: 1300, 8: 850},
                            "Stainless steel": {2: 4300, 3: 2900, 4: 2000, 6: 1050},
                            "Aluminium":       {2: 6000, 3: 4300, 4: 3100, 6: 1700}},
    "plasma 65 A":         {"Steel":           {4: 4200, 6: 2500, 8: 1650, 10: 1150, 12: 850},
                            "Stainless steel": {4: 3500, 6: 2000, 8: 1300, 10: 900},
                            "Aluminium":       {4: 4800, 6: 3000, 8: 2000, 10: 1400}},
    "plasma 85 A":         {"Steel":           {6: 3600, 8: 2500, 10: 1750, 12: 1300, 16: 850, 20: 560},
                            "Stainless steel": {6: 2900, 8: 1950, 10: 1350, 12: 1000, 16: 620}},
    "plasma 105 A":        {"Steel":           {8: 3100, 10: 2300, 12: 1700, 16: 1100, 20: 780, 25: 520},
                            "Stainless steel": {8: 2500, 10: 1800, 12: 1350, 16: 850, 20: 580}},
    "waterjet 0.76":       {"Steel":           {3: 430, 6: 200, 10: 112, 15: 70, 20: 50},
                            "Stainless steel": {3: 390, 6: 180, 10: 102, 15: 64, 20: 46},
                            "Aluminium":       {3: 1150, 6: 540, 10: 305, 15: 195, 20: 140}},
    "waterjet 1.02":       {"Steel":           {6: 290, 10: 165, 15: 105, 20: 75, 30: 47, 50: 26},
                            "Stainless steel": {6: 265, 10: 150, 15: 95, 20: 68, 30: 43, 50: 24},
                            "Aluminium":       {6: 790, 10: 450, 15: 285, 20: 205, 30: 128, 50: 71}},
    "waterjet pure":       {"Rubber":          {3: 7000, 6: 3600, 10: 2100},
                            "Foam":            {25: 12000, 50: 8000, 100: 4500}},
}

SHEETS_INCH = [1/32, 1/16, 1/8, 3/16, 1/4, 3/8, 1/2, 3/4, 1, 2, 4]


class Nozzle(NamedTuple):
    """A jet as it is set up. Lengths in mm. The title has a place for each of the bores."""
    code: str
    title: str
    bores: tuple
    kerf: float
    diameter: float     # that the nozzle takes up
    clearance: float    # that the head takes up
    speeds: str         # row of SPEEDS
    cut_height: float
    pressure: float     # bar
    power: float = 0    # W
    gas: str = ""
    abrasive: float = 0  # g/min
    quality: str = ""   # as the control names it
    material: str = "unspecified"


LASERS = [
    Nozzle("LC-2KN1.5", "Laser nozzle %s, 2 kW, nitrogen", (1.5,), 0.15, 11, 60, "laser 2 kW nitrogen", 0.7, 14,
           2000, "nitrogen", quality="standard"),
    Nozzle("LC-2KX1.2", "Laser nozzle %s, 2 kW, oxygen",   (1.2,), 0.3,  11, 60, "laser 2 kW oxygen",   1,   0.7,
           2000, "oxygen", quality="standard"),
    Nozzle("LC-4KN2",   "Laser nozzle %s, 4 kW, nitrogen", (2,),   0.2,  11, 60, "laser 4 kW nitrogen", 0.7, 16,
           4000, "nitrogen", quality="standard"),
    Nozzle("LC-4KN3",   "Laser nozzle %s, 4 kW, nitrogen", (3,),   0.3,  11, 60, "laser 4 kW thick",    0.5, 18,
           4000, "nitrogen", quality="fine"),
    Nozzle("LC-4KX1.5", "Laser nozzle %s, 4 kW, oxygen",   (1.5,), 0.4,  11, 60, "laser 4 kW oxygen",   1.2, 0.6,
           4000, "oxygen", quality="standard"),
]
PLASMAS = [
    Nozzle("PC-45A",  "Plasma nozzle 45 A, air",  (), 1.5, 28, 60, "plasma 45 A",  1.5, 5.5, quality="45 A"),
    Nozzle("PC-65A",  "Plasma nozzle 65 A, air",  (), 1.8, 28, 60, "plasma 65 A",  1.5, 5.5, quality="65 A"),
    Nozzle("PC-85A",  "Plasma nozzle 85 A, air",  (), 2,   28, 60, "plasma 85 A",  1.5, 5.5, quality="85 A"),
    Nozzle("PC-105A", "Plasma nozzle 105 A, air", (), 2.3, 28, 60, "plasma 105 A", 3,   5.5, quality="105 A"),
]
WATERJETS = [
    Nozzle("WJ-25-76",  "Abrasive water jet, orifice %s, tube %s", (0.25, 0.76), 0.8, 7.14, 50, "waterjet 0.76", 2,
           3800, abrasive=300, quality="Q3", material="carbide"),
    Nozzle("WJ-35-102", "Abrasive water jet, orifice %s, tube %s", (0.35, 1.02), 1.1, 9.5,  50, "waterjet 1.02", 2,
           3800, abrasive=450, quality="Q3", material="carbide"),
    Nozzle("WJ-P15",    "Pure water jet, orifice %s",              (0.15,),      0.17, 9.5, 40, "waterjet pure", 3,
           3500, quality="Q3"),
]


def speed(rows, thickness):
    """Of a sheet in between, see above; of one that is in the table, that of its row."""
    if thickness in rows:
        return rows[thickness]
    below = max(t for t in rows if t < thickness)
    above = min(t for t in rows if t > thickness)
    power = math.log(rows[below] / rows[above]) / math.log(above / below)
    return rows[below] * (below / thickness) ** power


def sheets(unit, rows):
    """The thicknesses to make presets for, in the unit."""
    if unit is METRIC:
        return sorted(rows)
    return [t for t in SHEETS_INCH if min(rows) <= t * unit.millimeters <= max(rows)]


def rounded(value, digits):
    """To so many digits that tell."""
    return round(value, digits - 1 - math.floor(math.log10(abs(value)))) if value else 0


def length(unit, millimeters):
    return millimeters if unit is METRIC else rounded(millimeters / unit.millimeters, 2)


def pressure(unit, bar):
    return bar if unit is METRIC else rounded(bar / BAR_PER_PSI, 2)


def pierce_time(nozzle, millimeters):
    """Rises with the thickness: a laser bursts through, a plasma arc needs its time, a water jet drills."""
    share = {"laser": 0.1, "plasm": 0.05, "water": 0.8}[nozzle.speeds[:5]]
    if nozzle.speeds == "waterjet pure":
        share = 0.01
    return round(share * millimeters, 2)


def preset(unit, nozzle, material, thickness, feed):
    entry = rounded(0.8 * feed, 2)
    values = {
        "cutHeight": length(unit, nozzle.cut_height),
        "description": "",
        "machineQualityControl": nozzle.quality,
        "name": "%s %s" % (material, size(thickness, unit)),
        "pierceTime": pierce_time(nozzle, thickness * unit.millimeters),
        "pressure": pressure(unit, nozzle.pressure),
        "v_f": feed,
        "v_f_leadIn": entry,
        "v_f_leadOut": feed,
    }
    if nozzle.power:
        values.update({"assistGas": nozzle.gas, "cutPower": nozzle.power, "piercePower": nozzle.power,
                       "pierceHeight": round(3 * length(unit, nozzle.cut_height), 6)})
    if nozzle.speeds.startswith("waterjet"):
        grams = nozzle.abrasive
        values["abrasiveFlowRate"] = grams if unit is METRIC else rounded(grams / GRAMS_PER_OUNCE, 3)
    return values


def presets(unit, nozzle):
    return [preset(unit, nozzle, material, thickness,
                   rounded(speed(rows, thickness * unit.millimeters) / unit.millimeters, 3 if unit is METRIC else 2))
            for material, rows in SPEEDS[nozzle.speeds].items() for thickness in sheets(unit, rows)]


def jets(shelf, tool_type, nozzles):
    for nozzle in nozzles:
        number = shelf.next_number()
        shelf.put(tool_type, "%s-%s" % (nozzle.code, shelf.unit.letter),
                  title(shelf.unit, nozzle), BMC=nozzle.material,
                  geometry={"CW": length(shelf.unit, nozzle.kerf),
                            "JET_HEAD_CLEARANCE": length(shelf.unit, nozzle.clearance),
                            "JET_NOZZLE_DIAMETER": length(shelf.unit, nozzle.diameter)},
                  post_process={"comment": "", "diameter-offset": number, "length-offset": number,
                                "manual-tool-change": False, "number": number},
                  start_values={"presets": presets(shelf.unit, nozzle)})


def title(unit, nozzle):
    bores = tuple("%s %s" % (plain(round(bore / unit.millimeters, 3)), unit.suffix) for bore in nozzle.bores)
    return "%s, kerf %s %s" % (nozzle.title % bores, plain(length(unit, nozzle.kerf)), unit.suffix)


def fill(shelf, parts):
    """Puts a library of jet cutters on the shelf. parts: rows of type and nozzles."""
    for tool_type, nozzles in parts:
        jets(shelf, tool_type, nozzles)


CUTTING = [("laser cutter", LASERS), ("plasma cutter", PLASMAS), ("waterjet", WATERJETS)]
