"""Turning tools: how a row of sizes becomes an insert in its holder, and which series a library has. The sizes are in
turning_metric.py and turning_inch.py, tables of the same names.

Designations of holders after ISO 5608 and of boring bars after ISO 6261: clamping, shape of the insert, style,
clearance of the insert, hand, shank, length of the tool, size of the insert, as in PCLNR 2525M12 and S20S-SCLCR09. The
tables leave the hand out and tell the hands that there are. Angles in degrees: leading angle between the cutting edge
and the feed, trailing angle between the other edge and the face that it leaves.
"""

import math
import re
from typing import NamedTuple

from geometry import millionths
from inserts import LAYDOWN, insert
from library import METRIC, plain, size
from turning_data import FERROUS, LIGHT, grooving_presets, threading_presets, turning_presets

# Styles of ISO 5608 and ISO 6261.
STYLES = {
    #     leading side   end
    "A": (90,    True,  False),
    "B": (75,    True,  False),
    "D": (45,    True,  False),
    "F": (90,    False, True),
    "G": (90,    True,  False),
    "H": (107.5, True,  False),
    "J": (93,    True,  False),
    "K": (75,    False, True),
    "L": (95,    True,  True),
    "N": (63,    True,  False),
    "Q": (107.5, False, True),
    "S": (45,    True,  False),
    "U": (93,    False, True),
    "V": (72.5,  True,  False),
}

# Styles for grooves and threads, by the text under "THSC".
OTHER_STYLES = {
    #                   leading side  end
    "groove external": (0,     False, True),
    "groove face":     (90,    True,  False),
    "groove internal": (0,     False, True),
    "parting blade":   (0,     False, True),
    "thread internal": (90,    True,  False),
    "thread offset":   (90,    True,  False),
}

HAND_WORDS = {"R": "right hand", "L": "left hand", "N": "neutral"}


class Shank(NamedTuple):
    """The shank of a holder. widths: the distance from its back to the cutting point, for the styles that are told
    apart."""
    height: float
    width: float
    length: float
    head: float
    widths: dict
    round: bool = False

    def members(self, style, hand):
        """The members of "holder" that a shank gives."""
        across = self.width / 2 if hand == "N" else self.widths.get(style, self.widths["offset"])
        return {"CW": across, "H": self.height, "LH": self.head, "OAL": self.length, "W": self.width, "HAND": hand,
                "tool_roundShank": self.round}


def external_shank(sizes, code, letter):
    height, width, head, offset, style_a, style_b = sizes.SHANKS[code]
    return Shank(height, width, sizes.LENGTHS[letter], head,
                 {"offset": offset, "A": style_a, "B": style_b, "N": width / 2, "groove external": width})


def bar(sizes, code, letter):
    diameter, offset, _, head = sizes.BARS[code]
    return Shank(diameter, diameter, sizes.LENGTHS[letter], head, {"offset": offset}, True)


def smallest_bore(sizes, code):
    return sizes.BARS[code][2]


def put(shelf, tool_type, identity, description, geometry, holder, presets, *, material="coated carbide",
        compensation="tip", comment="", opposite=None):
    """Adds a turning tool. A holder of the left hand works with the spindle turning counterclockwise."""
    number = shelf.next_number()
    setup = {"HAND": holder["HAND"] != "L", "angle": 0, "compensation": compensation, "tool_shaftAxisAngle": 0}
    if opposite is not None:
        setup["tool_grooveCompOppositeEdge"] = opposite
    shelf.put(tool_type, identity, description, BMC=material, geometry=geometry, holder=holder, setup=setup,
              post_process={"break-control": False, "comment": comment, "compensation-offset": number,
                            "manual-tool-change": False, "number": number, "turret": 0},
              start_values={"presets": presets})


def holder_of_style(style, clamping, leading, side, end, trailing, shank, hand):
    return {"MTP": clamping, "THSC": style, "tool_endCutting": end, "tool_leadingAngle": leading,
            "tool_sideCutting": side, "tool_trailingAngle": trailing, **shank.members(style, hand)}


def insert_holder(clamping, letter, prefix, tip, shank, hand):
    """Holder of an insert of ISO 1832. prefix: "boring bar " for bars."""
    leading, side, end = STYLES[letter]
    trailing = max(0, 180 - leading - tip.angle) if tip.shape != "R" else 0
    style = prefix + letter.lower() if prefix else letter
    return holder_of_style(style, clamping, leading, side, end, trailing, shank, hand)


def edge_material(tip):
    """Ground inserts with a sharp edge are for light metal."""
    return ("carbide", LIGHT) if tip.tolerance == "G" else ("coated carbide", FERROUS)


def put_with_insert(shelf, tool_type, code, words, tip, holder, bore, comment):
    """code: the designation of the holder with its hand."""
    material, works = edge_material(tip)
    description = "%s, %s°, %s" % (words, plain(holder["tool_leadingAngle"]), tip.designation)
    put(shelf, tool_type, "%s-%s" % (code.replace(" ", "-"), tip.designation), description, tip.geometry(), holder,
        turning_presets(shelf.unit, tip, material, works, bore), material=material,
        compensation="center" if tip.shape == "R" else "tip", comment=comment)


def check_fit(designation, tip, shape, clearance, insert_size):
    """The holder must be one for the insert; its size is written as in the designation of the insert."""
    assert designation[0] == shape and designation[1] == clearance, (designation, shape, clearance)
    assert designation[4:].startswith(insert_size), (designation, insert_size)
    return tip


def external_tools(shelf, sizes, rows):
    """Rows: holder, its hands, insert."""
    for code, hands, designation in rows:
        clamping, shape, letter, clearance, shank, length, insert_size = re.fullmatch(
            r"(.)(.)(.)(.) (\d+)([A-Z])(\d+)", _with_insert_size(shelf, code, designation)).groups()
        tip = check_fit(designation, insert(shelf.unit, designation), shape, clearance, insert_size)
        for hand in hands:
            holder = insert_holder(clamping, letter, "", tip, external_shank(sizes, shank, length), hand)
            named = code[:4] + hand + code[4:]
            put_with_insert(shelf, "turning general", named, "Turning tool %s" % named, tip, holder, None, "")


def _with_insert_size(shelf, code, designation):
    """The inch system writes the size of the insert before the letter of the length: PCLN 164D."""
    if shelf.unit is METRIC:
        return code
    head, shank, insert_size, letter = re.fullmatch(r"(.... )(\d\d)(\d)([A-Z])", code).groups()
    return head + shank + letter + insert_size


def boring_bars(shelf, sizes, rows):
    """Rows: bar, its hands, insert."""
    for code, hands, designation in rows:
        key, letter, clamping, shape, style, clearance, insert_size = re.fullmatch(
            r"[AS](\d+)([A-Z])-(.)(.)(.)(.)(\d+)", code).groups()
        tip = check_fit(designation, insert(shelf.unit, designation), shape, clearance, insert_size)
        bore = smallest_bore(sizes, key)
        for hand in hands:
            holder = insert_holder(clamping, style, "boring bar ", tip, bar(sizes, key, letter), hand)
            front, back = code.split("-")
            named = "%s-%s%s%s" % (front, back[:4], hand, back[4:])
            put_with_insert(shelf, "turning boring", named, "Boring bar %s" % named, tip, holder, bore,
                            "Bores from %s" % size(bore, shelf.unit))


def groovers(shelf, sizes, series, rows):
    """Rows: width, corner radius, largest depth of the groove, shank or bar with the letter of its length, hands. A
    corner radius of half the width is a full radius."""
    for width, radius, depth, shank_code, hands in rows:
        length, thickness, clearance = sizes.GROOVE_INSERT
        key, letter = re.fullmatch(r"(\d+)([A-Z])", shank_code).groups()
        shank, bore, comment = _groove_shank(shelf, sizes, series, key, letter, width, depth)
        full = 2 * radius >= width
        geometry = {"EPSR": 90, "INSD": width, "LH": length / 2, "OAL": length, "RA": clearance, "RE": radius,
                    "S": thickness, "SC": "groove round" if full else "groove square", "tool_grooveWidth": width,
                    "tool_insertWidth": round(0.8 * width, 6)}
        corner = "full radius" if full else "corner radius %s" % size(radius, shelf.unit)
        for hand in hands:
            holder = holder_of_style(series.style, "C", *OTHER_STYLES[series.style], 0, shank, hand)
            put(shelf, "turning grooving",
                "-".join([series.code, "%s%s" % (shelf.unit.letter, plain(width)), "R" + plain(radius), shank_code,
                          hand]),
                "%s %s, %s, depth %s, shank %s, %s" % (series.title, size(width, shelf.unit), corner,
                                                      size(depth, shelf.unit), shank_words(shank, shelf.unit),
                                                      HAND_WORDS[hand]),
                geometry, holder, grooving_presets(shelf.unit, "coated carbide", width, FERROUS, bore),
                comment=comment, compensation="center" if full else "tip", opposite=False)


class Groover(NamedTuple):
    """What the tools of one series for grooves have in common."""
    code: str
    title: str
    style: str  # text under "THSC"


def _groove_shank(shelf, sizes, series, key, letter, width, depth):
    """Shank, smallest bore or None, comment."""
    if series.style == "groove internal":
        bore = smallest_bore(sizes, key)
        return bar(sizes, key, letter), bore, "Bores from %s" % size(bore, shelf.unit)
    if series.style == "parting blade":
        height = sizes.BLADES[key]
        blade = round(0.8 * width, 6)
        return Shank(height, blade, sizes.LENGTHS[letter], depth, {"offset": blade}), None, ""
    return external_shank(sizes, key, letter), None, ""


def shank_words(shank, unit):
    if shank.round:
        return size(shank.width, unit)
    return "%s x %s" % (size(shank.height, unit), size(shank.width, unit))


class Profile(NamedTuple):
    """A thread: its angle and the tip of its tool, "round" or "flat"."""
    name: str
    angle: float
    tip: str


PROFILES = {
    "ISO":  Profile("ISO metric thread", 60, "round"),
    "UN":   Profile("unified thread", 60, "round"),
    "60":   Profile("60° partial profile", 60, "round"),
    "W":    Profile("Whitworth pipe thread", 55, "round"),
    "TR":   Profile("trapezoidal thread", 30, "flat"),
    "ACME": Profile("ACME thread", 29, "flat"),
}

TRAPEZOID_CLEARANCES = [(1.5, 0.15), (5, 0.25), (12, 0.5)]  # largest pitch and a_c of ISO 2904, mm
ACME_ALLOWANCE = 0.02                                       # in, of ASME B1.5 for 10 threads per inch and coarser


def thread_tip(name, pitch, internal):
    """Radius of a round tip, width of a flat one.
    ISO 68-1, ASME B1.1: the root of an external thread is a radius H/6, that of an internal one H/12, H = P cos 30°.
    ISO 228-1: a radius of 0.137329 P. ISO 2904: 0.366025 P less 0.535898 a_c. ASME B1.5: 0.3707 P less 0.259 allowance.
    """
    if name == "W":
        tip = 0.137329 * pitch
    elif name == "TR":
        clearance = next(value for limit, value in TRAPEZOID_CLEARANCES if pitch <= limit)
        tip = 0.366025 * pitch - 0.535898 * clearance
    elif name == "ACME":
        tip = 0.3707 * pitch - 0.259 * ACME_ALLOWANCE
    else:
        tip = pitch * math.sqrt(3) / 2 / (12 if internal else 6)
    return millionths(tip)


def threading_tools(shelf, sizes, rows, internal):
    """Rows: insert size, profile, finest pitch, coarsest pitch, how the pitch is written, shank or bar with the letter
    of its length, hands. A full profile has one pitch, a partial one the tip of the finest."""
    for insert_size, profile_name, finest, coarsest, named, shank_code, hands in rows:
        profile = PROFILES[profile_name]
        key, letter = re.fullmatch(r"(\d+)([A-Z])", shank_code).groups()
        geometry = thread_geometry(shelf.unit, insert_size, profile, coarsest, internal)
        geometry["TPN"] = finest
        geometry["thread-tip-width" if profile.tip == "flat" else "thread-tip-radius"] = thread_tip(
            profile_name, finest, internal)
        style = "thread internal" if internal else "thread offset"
        shank = bar(sizes, key, letter) if internal else external_shank(sizes, key, letter)
        bore = smallest_bore(sizes, key) if internal else None
        comment = "Bores from %s" % size(bore, shelf.unit) if internal else ""
        for hand in hands:
            holder = holder_of_style(style, "S", *OTHER_STYLES[style], 0, shank, hand)
            laydown = "%s%s%s" % (insert_size, "I" if internal else "E", hand)
            put(shelf, "turning threading", "TH-%s-%s-%s" % (laydown, named.replace(" ", ""), shank_code),
                "Threading tool %s %s, %s, shank %s" % (laydown, named, profile.name, shank_words(shank, shelf.unit)),
                geometry, holder,
                threading_presets(shelf.unit, "coated carbide", geometry["TP"], FERROUS, bore), comment=comment)


def thread_geometry(unit, insert_size, profile, pitch, internal):
    """All but the finest pitch and the size of the tip."""
    circle, thickness, width = (millionths(value / unit.millimeters) for value in LAYDOWN[insert_size])
    height = millionths(1.5 * circle)
    return {"EPSR": profile.angle, "INSD": circle, "LH": millionths(height / 2), "OAL": height, "RA": 7, "RE": 0,
            "S": thickness, "SC": "thread trapezoid" if profile.tip == "flat" else "thread iso triple", "TP": pitch,
            "TPX": pitch, "thread-profile-angle": profile.angle, "thread-tip-type": profile.tip,
            "tool_insertWidth": width, "tool_internalThread": internal}


def fill(shelf, sizes):
    """Puts a library of turning tools on the shelf. sizes: the module with the tables."""
    external_tools(shelf, sizes, sizes.EXTERNAL)
    boring_bars(shelf, sizes, sizes.BORING)
    groovers(shelf, sizes, Groover("GE", "Grooving tool", "groove external"), sizes.GROOVES)
    groovers(shelf, sizes, Groover("GP", "Parting blade", "parting blade"), sizes.PARTING)
    groovers(shelf, sizes, Groover("GF", "Face grooving tool", "groove face"), sizes.FACE_GROOVES)
    groovers(shelf, sizes, Groover("GI", "Internal grooving tool", "groove internal"), sizes.INTERNAL_GROOVES)
    threading_tools(shelf, sizes, sizes.THREADS, internal=False)
    threading_tools(shelf, sizes, sizes.INTERNAL_THREADS, internal=True)
