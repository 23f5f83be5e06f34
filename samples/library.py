"""A tool library document: tools in, the text of the file out.

A document is one JSON object, {"data":[tool, ...],"version":36}, in the form in which library files are saved: four
blanks per level, members sorted by key, whole doubles without a fraction, UTF-8. All lengths of a tool are in the unit
of the tool, angles in degrees, speeds per minute.
"""

import decimal
import json
import uuid
from fractions import Fraction
from typing import NamedTuple

FORMAT_VERSION = 36
VENDOR = "Quillon"

# GUIDs are of version 5: the same name below this one gives the same GUID for ever.
NAMESPACE = uuid.UUID("7c1f5a3e-90d4-4b6b-8f27-52a1c9e0d364")


class Unit(NamedTuple):
    """A unit of length and how the sizes of tools are written in it."""
    name: str        # text under "unit"
    millimeters: float
    suffix: str      # in descriptions
    letter: str      # in product ids
    decimals: int    # of stepdown, stepover and feed per revolution


METRIC = Unit("millimeters", 1, "mm", "M", 3)
INCH = Unit("inches", 25.4, "in", "I", 4)


# Types whose geometry has a tip angle; all other types of these libraries are mills.
HOLE_MAKING_TYPES = {
    "boring head", "center drill", "counterbore", "countersink", "drill", "left hand tap", "multi-spindle drill",
    "reamer", "right hand tap", "spot drill",
}


def guid(*names):
    """The GUID of what the names lead to, such as ("tool", product id)."""
    return str(uuid.uuid5(NAMESPACE, "/".join(names)))


def plain(value):
    """A number as people write it: 10, 2.5, 0.0625."""
    text = "%.6f" % value
    return text.rstrip("0").rstrip(".")


def fraction(value):
    """Sixty-fourths as people write them, 1-1/2 for 1.5; a number that is none as a decimal."""
    parts = Fraction(value)
    whole, rest = divmod(parts.numerator, parts.denominator)
    if parts.denominator > 64 or rest == 0:
        return plain(value)
    return "%s%d/%d" % ("%d-" % whole if whole else "", rest, parts.denominator)


def size(value, unit):
    """A length in a description: "10 mm", "1-1/2 in"."""
    return "%s %s" % (fraction(value) if unit is INCH else plain(value), unit.suffix)


def product_id(code, unit, value, *more):
    """Our own scheme: series, unit letter and size, then what else tells two tools of a series apart."""
    return "-".join(["%s-%s%s" % (code, unit.letter, plain(value))] + [str(part) for part in more])


def thread_product_id(code, thread):
    """That of a tool for one thread: "TM-M6x1", "TM-1_4-20UNC"."""
    return "%s-%s" % (code, thread.replace("#", "N").replace("/", "_").replace(" ", ""))


class Shelf:
    """The tools of one library, numbered from 1 in the order in which they are added. A library may have parts in
    several units: its unit is that of the tools that are added next. prefix: begins all product ids, for a library
    whose sizes others have as well."""

    def __init__(self):
        self.unit = None
        self.prefix = ""
        self.tools = []

    def next_number(self):
        return len(self.tools) + 1

    def put(self, tool_type, identity, description, **members):
        """Adds a tool of any type: what every tool has, and the members given, with "_" for "-" in their names."""
        identity = self.prefix + identity
        tool = {
            "description": description,
            "guid": guid("tool", identity),
            "product-id": identity,
            "product-link": "",
            "type": tool_type,
            "unit": self.unit.name,
            "vendor": VENDOR,
        }
        tool.update({name.replace("_", "-"): value for name, value in members.items() if value})
        for preset in tool.get("start-values", {"presets": []})["presets"]:
            preset["guid"] = guid("preset", identity, preset["name"])
        self.tools.append(tool)

    def post_process(self, comment="", break_control=False):
        """That of a rotating, probing or depositing tool."""
        number = self.next_number()
        return {"break-control": break_control, "comment": comment, "diameter-offset": number, "length-offset": number,
                "live": True, "manual-tool-change": False, "number": number, "turret": 0}

    def add(self, tool_type, identity, description, material, geometry, presets, *, holder=None, shaft=None,
            tapered_type=None, comment="", break_control=False):
        """Adds a rotating tool. The gauge length of its assembly follows from the body length and the holder."""
        reach = holder["gaugeLength"] if holder else 0
        grade = "generic" if tool_type in HOLE_MAKING_TYPES else "Mill Generic"
        self.put(tool_type, identity, description, BMC=material, GRADE=grade,
                 geometry=dict(geometry, assemblyGaugeLength=round(reach + geometry["LB"], 6)),
                 post_process=self.post_process(comment, break_control),
                 start_values={"presets": [dict(preset) for preset in presets]},
                 holder=holder, shaft=shaft and {"segments": shaft, "type": "shaft"}, tapered_type=tapered_type)

    def text(self):
        """The whole file."""
        return _text({"data": self.tools, "version": FORMAT_VERSION}, 0) + "\n"


def number_text(value):
    """A number as saved files have it: the shortest digits that read back to the same double, and of the plain and
    the exponent form the shorter, the plain one when both are as long."""
    if value == int(value):
        return str(int(value))
    sign, digits, exponent = decimal.Decimal(repr(value)).as_tuple()
    digits = "".join(map(str, digits)).rstrip("0")
    point = len(decimal.Decimal(repr(value)).as_tuple().digits) + exponent  # digits before the decimal point
    minus = "-" if sign else ""
    if point > 0:
        before, after = digits[:point].ljust(point, "0"), digits[point:]
        plain_form = minus + before + ("." + after if after else "")
    else:
        plain_form = minus + "0." + "0" * -point + digits
    power = point - 1
    exponent_form = "%s%s%se%s%02d" % (minus, digits[0], "." + digits[1:] if len(digits) > 1 else "",
                                       "-" if power < 0 else "+", abs(power))
    return plain_form if len(plain_form) <= len(exponent_form) else exponent_form


def _text(value, level):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, (int, float)):
        return number_text(value)
    if isinstance(value, str):
        return json.dumps(value, ensure_ascii=False)
    if isinstance(value, dict):
        lines = ["%s: %s" % (json.dumps(key), _text(value[key], level + 1)) for key in sorted(value)]
        opening, closing = "{}"
    else:
        lines = [_text(element, level + 1) for element in value]
        opening, closing = "[]"
    inner = "\n" + " " * 4 * (level + 1)
    return opening + inner + ("," + inner).join(lines) + "\n" + " " * 4 * level + closing
