"""The sample libraries, loaded, for check_samples.py."""

import json
import math
import os
import sys

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SAMPLES = os.path.join(ROOT, "samples")
DEFINITIONS = os.path.join(ROOT, "platform", "core", "data", "tool-parameters.json")

from expectations import FAMILIES, LIBRARIES, STRATEGIES  # noqa: E402
from parameter_rules import load_rules  # noqa: E402


def load(name):
    with open(os.path.join(SAMPLES, name + ".json"), encoding="utf-8") as file:
        return json.load(file)


DOCUMENTS = {name: load(name) for name in LIBRARIES}
RULES = load_rules(DEFINITIONS)


def family(tool):
    return FAMILIES.get(tool["type"], "mill")


def rules_of(tool):
    return RULES[STRATEGIES[family(tool)]]


def every_tool():
    """Name of the library and tool."""
    for name in LIBRARIES:
        for tool in DOCUMENTS[name]["data"]:
            yield name, tool


def tools_of(*families):
    return ((name, tool) for name, tool in every_tool() if family(tool) in families)


def presets(tool):
    return tool.get("start-values", {"presets": []})["presets"]


def nearly(a, b):
    return math.isclose(a, b, rel_tol=1e-9, abs_tol=1e-9)


def spoken_length(text, unit):
    """The length that a description tells, such as "1-1/2 in" or "2.5 mm"; the unit must be that of the tool."""
    number, suffix = text.rsplit(" ", 1)
    assert suffix == {"millimeters": "mm", "inches": "in"}[unit], (text, unit)
    whole, _, rest = number.rpartition("-")
    numerator, _, denominator = rest.partition("/")
    return int(whole or 0) + float(numerator) / float(denominator or 1)
