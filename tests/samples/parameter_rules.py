"""The rules that the parameters of a tool must keep, evaluated over a tool map.

The rules are data of the platform, tool-parameters.json: for each parameter the default, when it is enabled, and the
conditions that must be true while it is ("errors" and "warnings"). A value that a tool does not hold is the default.
"""

import json
import math
import re

EVERY_TOOL = 207  # parameter set that is part of all others
TURNING, JET = 212, 213

# Member of a tool map -> parameter. Members of "geometry" of a rotating tool:
GEOMETRY = {
    "DC": "tool_diameter", "DCX": "tool_maximumCuttingDiameter", "HAND": "tool_clockwise", "LB": "tool_bodyLength",
    "LCF": "tool_fluteLength", "NOF": "tool_numberOfFlutes", "NT": "tool_numberOfTeeth", "OAL": "tool_overallLength",
    "RE": "tool_cornerRadius", "SFDM": "tool_shaftDiameter", "SIG": "tool_tipAngle", "TA": "tool_taperAngle",
    "TP": "tool_threadPitch", "TPN": "tool_minimumThreadPitch", "TPX": "tool_maximumThreadPitch",
    "assemblyGaugeLength": "tool_assemblyGaugeLength", "axial-distance": "tool_axialDistance",
    "chamfer-angle": "tool_chamferAngle", "chamfer-width": "tool_chamferWidth", "lower-radius": "tool_lowerRadius",
    "profile-radius": "tool_profileRadius", "shoulder-diameter": "tool_shoulderDiameter",
    "shoulder-length": "tool_shoulderLength", "thread-profile-angle": "tool_threadProfileAngle",
    "thread-tip-type": "tool_threadTipType", "thread-tip-width": "tool_threadTipWidth",
    "tip-diameter": "tool_tipDiameter", "tip-length": "tool_tipLength", "tip-offset": "tool_tipOffset",
    "upper-radius": "tool_upperRadius",
}
# Members of "geometry" of a turning tool beside those:
TURNING_GEOMETRY = {
    "EPSR": "tool_insertAngle", "INSD": "tool_diameter", "LH": "tool_headLength", "RA": "tool_reliefAngle",
    "S": "tool_thickness", "SC": "tool_insertType", "SCTY": "tool_crossSection",
    "SIZE_SPECIFICATION_MODE": "tool_insertSizeSpecificationMode", "TC": "tool_tolerance",
    "thread-tip-radius": "tool_threadTipRadius", "tool_grooveWidth": "tool_grooveWidth",
    "tool_insertWidth": "tool_insertWidth", "tool_internalThread": "tool_internalThread",
}
# Members of "holder" and "setup" of a turning tool:
TURNING_HOLDER = {
    "CW": "tool_cuttingWidth", "H": "tool_shankHeight", "HAND": "tool_hand", "LH": "tool_holderHeadLength",
    "MTP": "tool_clamping", "OAL": "tool_holderOverallLength", "THSC": "tool_holderType", "W": "tool_shankWidth",
    "tool_endCutting": "tool_endCutting", "tool_leadingAngle": "tool_leadingAngle",
    "tool_roundShank": "tool_roundShank", "tool_sideCutting": "tool_sideCutting",
    "tool_trailingAngle": "tool_trailingAngle",
}
TURNING_SETUP = {
    "HAND": "tool_clockwise", "angle": "tool_angle", "compensation": "tool_compensation",
    "tool_grooveCompOppositeEdge": "groove-comp-opposite-edge", "tool_shaftAxisAngle": "tool_shaftAxisAngle",
}
# Members of "geometry" of a jet:
JET_GEOMETRY = {
    "CW": "tool_kerfWidth", "JET_HEAD_CLEARANCE": "tool_headClearance", "JET_NOZZLE_DIAMETER": "tool_nozzleDiameter",
}
# Members of the tool itself:
TOOL = {
    "BMC": "tool_material", "description": "tool_description", "gaugeLength": "tool_holderGaugeLength",
    "product-id": "tool_productId",
    "product-link": "tool_productLink", "tapered-type": "tool_taperedType", "type": "tool_type", "unit": "tool_unit",
    "vendor": "tool_vendor",
}
# Members of "post-process":
POST_PROCESS = {
    "break-control": "tool_breakControl", "comment": "tool_comment",
    "compensation-offset": "tool_compensationOffset", "diameter-offset": "tool_diameterOffset",
    "length-offset": "tool_lengthOffset", "live": "tool_live", "manual-tool-change": "tool_manualToolChange",
    "number": "tool_number", "turret": "tool_turret",
}
# Members of a preset:
PRESET = {
    "BEAD_WIDTH": "tool_beadWidth", "DEPOSITING_AUXILIARY_GAS_FLOW_RATE": "tool_depositingAuxiliaryGasFlowRate",
    "DEPOSITING_CARRIER_GAS_FLOW_RATE": "tool_depositingCarrierGasFlowRate",
    "DEPOSITING_CURRENT": "tool_depositingCurrent", "DEPOSITING_POWER": "tool_depositingPower",
    "DEPOSITING_SHIELD_GAS_FLOW_RATE": "tool_depositingShieldGasFlowRate",
    "DEPOSITING_VOLTAGE": "tool_depositingVoltage", "LAYER_THICKNESS": "tool_layerThickness",
    "POWDER_FLOW_RATE": "tool_powderFlowRate", "PRESET_PROGRAM": "tool_presetProgram",
    "STAND_OFF_DISTANCE": "tool_standoffDistance", "USE_PRESET_PROGRAM": "use_tool_presetProgram",
    "WIRE_FEED": "tool_feedWire", "abrasiveFlowRate": "tool_abrasiveFlowRate", "assistGas": "tool_assistGas",
    "cutHeight": "tool_cutHeight", "cutPower": "tool_cutPower", "depth-of-cut": "tool_depthOfCut",
    "f_n": "tool_feedPerRevolution", "f_n_leadIn": "tool_feedEntryRel", "f_n_leadOut": "tool_feedExitRel",
    "f_n_retract": "tool_feedRetractPerRevolution", "f_z": "tool_feedPerTooth",
    "machineQualityControl": "tool_machineQualityControl", "n": "tool_spindleSpeed",
    "n_ramp": "tool_rampSpindleSpeed", "pierceHeight": "tool_pierceHeight", "piercePower": "tool_piercePower",
    "pierceTime": "tool_pierceTime", "pressure": "tool_pressure", "ramp-angle": "tool_rampAngle",
    "stepdown": "tool_stepdown", "stepover": "tool_stepover", "tool-coolant": "tool_coolant",
    "use-constant-surface-speed": "tool_useConstantSurfaceSpeed", "use-depth-of-cut": "use_tool_depthOfCut",
    "use-feed-per-revolution": "tool_useFeedPerRevolution", "use-stepdown": "use_tool_stepdown",
    "use-stepover": "use_tool_stepover", "v_c": "tool_surfaceSpeed", "v_f": "tool_feedCutting",
    "v_f_leadIn": "tool_feedEntry", "v_f_leadOut": "tool_feedExit", "v_f_link": "tool_feedProbeLink",
    "v_f_measure": "tool_feedProbeMeasure", "v_f_plunge": "tool_feedPlunge", "v_f_ramp": "tool_feedRamp",
    "v_f_retract": "tool_feedRetract", "v_f_transition": "tool_feedTransition",
}
# The same member is another parameter in the preset of a turning tool:
TURNING_PRESET = {**PRESET, "f_n": "tool_feedCuttingRel"}
PRESET_MATERIAL = {
    "category": "tool_presetMaterialCategory", "query": "tool_presetMaterialQuery",
    "use-hardness": "tool_presetMaterialUseHardness",
}

_TOKEN = re.compile(r"\s*(?:(\d+\.?\d*)|('[^']*')|([A-Za-z_][\w.]*)|(&&|\|\||[=!<>]=|[-+*/<>!?:(),]))")
_FUNCTIONS = {"Math.%s" % name: function for name, function in {
    "sin": math.sin, "cos": math.cos, "tan": math.tan, "asin": math.asin, "acos": math.acos, "atan": math.atan,
    "atan2": math.atan2, "sqrt": math.sqrt, "abs": abs, "min": min, "max": max, "pow": math.pow, "floor": math.floor,
    "ceil": math.ceil, "round": round}.items()}


class Expression:
    """An expression of the definitions, turned into one of Python: over v, the values, and f, the functions."""

    _BINARY = [{"||": "or"}, {"&&": "and"}, {"==": "==", "!=": "!="}, {"<": "<", "<=": "<=", ">": ">", ">=": ">="},
               {"+": "+", "-": "-"}, {"*": "*", "/": "/"}]

    def __init__(self, text):
        self.text, self.names = text, set()
        self._tokens, position = [], 0
        while text[position:].strip():
            match = _TOKEN.match(text, position)
            if not match:
                raise ValueError("cannot read %r at %d" % (text, position))
            self._tokens.append(match.groups())
            position = match.end()
        self._next = 0
        source = self._choice()
        if self._next != len(self._tokens):
            raise ValueError("more than an expression: %r" % text)
        self._code = compile(source, "<expression>", "eval")

    def value(self, values):
        # The grammar above lets nothing through but operators, values and the functions.
        return eval(self._code, {"v": values, "f": _FUNCTIONS, "pi": math.pi})

    def _sign(self):
        return self._tokens[self._next][3] if self._next < len(self._tokens) else None

    def _take(self, sign):
        if self._sign() != sign:
            return False
        self._next += 1
        return True

    def _need(self, sign):
        if not self._take(sign):
            raise ValueError("%s missing in %r" % (sign, self.text))

    def _choice(self):
        condition = self._operation(0)
        if not self._take("?"):
            return condition
        chosen = self._choice()
        self._need(":")
        return "(%s if %s else %s)" % (chosen, condition, self._choice())

    def _operation(self, level):
        if level == len(self._BINARY):
            return self._unary()
        left = self._operation(level + 1)
        while self._sign() in self._BINARY[level]:
            sign = self._BINARY[level][self._sign()]
            self._next += 1
            left = "(%s %s %s)" % (left, sign, self._operation(level + 1))
        return left

    def _unary(self):
        if self._take("!"):
            return "(not %s)" % self._unary()
        if self._take("-"):
            return "(-%s)" % self._unary()
        if self._take("("):
            inner = self._choice()
            self._need(")")
            return "(%s)" % inner
        if self._next == len(self._tokens):
            raise ValueError("unfinished: %r" % self.text)
        number, text, name, sign = self._tokens[self._next]
        self._next += 1
        if sign:
            raise ValueError("unexpected %s in %r" % (sign, self.text))
        return number or text and repr(text[1:-1]) or self._named(name)

    def _named(self, name):
        if name in ("true", "false"):
            return name.capitalize()
        if name == "Math.PI":
            return "pi"
        if name in _FUNCTIONS:
            arguments = []
            self._need("(")
            while not self._take(")"):
                arguments.append(self._choice())
                self._take(",")
            return "f[%r](%s)" % (name, ", ".join(arguments))
        self.names.add(name)
        return "v[%r]" % name


class _Values(dict):
    """The values that a tool holds; a parameter that it does not hold has its default."""

    def __init__(self, rules, column, given):
        super().__init__(given)
        self._rules, self._column = rules, column

    def __missing__(self, name):
        value = self[name] = self._rules.default(name, self._column).value(self)
        return value


def load_rules(path):
    """Parameter set -> the rules of its tools."""
    with open(path, encoding="utf-8") as file:
        definitions = json.load(file)
    return {strategy: Rules(definitions, strategy) for strategy in (198, TURNING, JET, 214)}


class Rules:
    """The definitions for the tools of one parameter set."""

    def __init__(self, definitions, strategy):
        self._strategy = strategy
        self._parameters = {}
        for row in definitions["parameters"]:
            if {strategy, EVERY_TOOL} & set(row["strategies"]):
                own = [change for change in row["overrides"] if change["strategy"] == strategy]
                self._parameters[row["id"]] = {**row, **(own[0] if own else {})}
        self.keys = {}  # enumeration -> its keys
        for row in definitions["enumerations"]:
            if row["strategies"] is None or {strategy, EVERY_TOOL} & set(row["strategies"]):
                self.keys.setdefault(row["enumeration"], set()).add(row["key"])
        self._expressions, self._enabled = {}, {}

    def _expression(self, text):
        if text not in self._expressions:
            self._expressions[text] = Expression(text)
        return self._expressions[text]

    def default(self, name, column):
        return self._expression(self._parameters[name]["defaultExp"][column])

    def _is_enabled(self, row, values):
        if not row["enableExp"]:
            return True
        expression = self._expression(row["enableExp"])
        if expression.names != {"tool_type"}:
            return expression.value(values)
        key = row["enableExp"], values["tool_type"]
        if key not in self._enabled:
            self._enabled[key] = expression.value(values)
        return self._enabled[key]

    def _cases(self, tool):
        """Values, those given, whether they are of a preset, where: the tool and each of its presets."""
        column = "metric" if tool["unit"] == "millimeters" else "inch"
        given = tool_values(tool, self._strategy)
        yield _Values(self, column, given), given, False, ""
        for preset in tool.get("start-values", {"presets": []})["presets"]:
            own = preset_values(preset, column, self._strategy)
            yield _Values(self, column, {**given, **own}), own, True, preset["name"] + ": "

    def broken(self, tool):
        """What the tool does wrong, one text each: a rule of its geometry or of one of its presets that is not kept, a
        choice that is none."""
        for values, _, of_presets, where in self._cases(tool):
            for name, row in self._parameters.items():
                if row["feedSpeed"] != of_presets or not self._is_enabled(row, values):
                    continue
                if row["enumeration"] and values[name] not in self.keys[row["enumeration"]]:
                    yield "%s%s is no %s" % (where, values[name], row["title"].lower())
                for rule in row["errors"] + row["warnings"]:
                    if not self._expression(rule["expression"]).value(values):
                        yield "%s%s (%s is %s)" % (where, rule["message"], name, values[name])

    def missing(self, tool):
        """The parameters that are enabled for the tool and have a member in its map, but are not held."""
        for values, given, of_presets, where in self._cases(tool):
            for name, row in self._parameters.items():
                if (row["feedSpeed"] == of_presets and name in WITH_MEMBER and name not in given
                        and self._is_enabled(row, values)):
                    yield where + name

    def underived(self, tool):
        """The values that the tool holds of parameters that are not enabled, as they follow from others, and that
        differ from what follows."""
        column = "metric" if tool["unit"] == "millimeters" else "inch"
        given = tool_values(tool, self._strategy)
        values = _Values(self, column, given)
        for name, value in given.items():
            row = self._parameters[name]
            if row["enableExp"] and not self._is_enabled(row, values):
                follows = self.default(name, column).value(values)
                if follows != value:
                    yield "%s is %s, not %s" % (name, value, follows)


# Parameters that have a member in a tool map. The size of an insert is kept as its circle.
WITH_MEMBER = {
    parameter for table in (GEOMETRY, TURNING_GEOMETRY, TURNING_HOLDER, TURNING_SETUP, JET_GEOMETRY, TOOL, POST_PROCESS,
                            TURNING_PRESET, PRESET, PRESET_MATERIAL) for parameter in table.values()}


def _read(table, members, values):
    values.update({parameter: members[key] for key, parameter in table.items() if key in members})


def tool_values(tool, strategy):
    """Parameter -> value, of all that a tool holds beside its presets."""
    values = {}
    geometry = tool.get("geometry", {})
    _read(TOOL, tool, values)
    _read(POST_PROCESS, tool.get("post-process", {}), values)
    if strategy == TURNING:
        _read({**GEOMETRY, **TURNING_GEOMETRY}, geometry, values)
        _read(TURNING_HOLDER, tool["holder"], values)
        _read(TURNING_SETUP, tool["setup"], values)
        if "SIZE_SPECIFICATION_MODE" in geometry:
            values["tool_insertSize"] = geometry["INSD"]
        return values
    _read(JET_GEOMETRY if strategy == JET else GEOMETRY, geometry, values)
    if "CSP" in geometry:
        values["tool_coolantSupport"] = "yes" if geometry["CSP"] else "no"
    values["holder_attached"] = "holder" in tool
    if "holder" in tool:
        values["tool_holderGaugeLength"] = tool["holder"]["gaugeLength"]
    return values


def preset_values(preset, column, strategy):
    """Parameter -> value, of a preset. The surface speed is kept in m/min or ft/min, its parameter in length units."""
    values = {}
    _read(TURNING_PRESET if strategy == TURNING else PRESET, preset, values)
    _read(PRESET_MATERIAL, preset.get("material", {}), values)
    if "tool_surfaceSpeed" in values:
        values["tool_surfaceSpeed"] *= 1000 if column == "metric" else 12
    return values
