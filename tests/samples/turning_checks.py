"""Tests of the turning tools of the sample libraries. Run by check_samples.py."""

import math
import re
import unittest

from documents import DOCUMENTS, nearly, spoken_length, tools_of
from expectations import MILLIMETERS, UNITS

# Members of a turning tool beside those of its type.
TOOL_MEMBERS = {"BMC", "description", "geometry", "guid", "holder", "post-process", "product-id", "product-link",
                "setup", "start-values", "type", "unit", "vendor"}
HOLDER_MEMBERS = {"CW", "H", "HAND", "LH", "MTP", "OAL", "THSC", "W", "tool_endCutting", "tool_leadingAngle",
                  "tool_roundShank", "tool_sideCutting", "tool_trailingAngle"}
SETUP_MEMBERS = {"HAND", "angle", "compensation", "tool_shaftAxisAngle"}
POST_MEMBERS = {"break-control", "comment", "compensation-offset", "manual-tool-change", "number", "turret"}
INSERT_MEMBERS = {"EPSR", "INSD", "RA", "RE", "S", "SC"}
GENERAL_MEMBERS = INSERT_MEMBERS | {"SCTY", "SIZE_SPECIFICATION_MODE", "TC"}
LONG_MEMBERS = INSERT_MEMBERS | {"LH", "OAL", "tool_insertWidth"}
GEOMETRY_MEMBERS = {
    "turning general": GENERAL_MEMBERS,
    "turning boring": GENERAL_MEMBERS,
    "turning grooving": LONG_MEMBERS | {"tool_grooveWidth"},
    "turning threading": LONG_MEMBERS | {"TP", "TPN", "TPX", "thread-profile-angle", "thread-tip-type",
                                         "tool_internalThread"},
}
PRESET_MEMBERS = {"description", "f_n", "f_n_leadIn", "f_n_leadOut", "guid", "material", "n", "name", "tool-coolant",
                  "use-constant-surface-speed", "use-depth-of-cut", "use-feed-per-revolution", "v_c"}

# ISO 1832, ISO 5608, ISO 5610.
CLEARANCE_LETTERS = {0: "N", 5: "B", 7: "C", 11: "P"}
THICKNESS_CODES = {2.38125: "02", 3.175: "03", 3.96875: "T3", 4.7625: "04", 5.55625: "05", 6.35: "06"}
HOLDER_LENGTHS = {"F": 80, "H": 100, "K": 125, "M": 150, "P": 170, "Q": 180, "R": 200, "S": 250, "T": 300, "U": 350}
INCH_LENGTHS = {"A": 4, "B": 4.5, "D": 6, "E": 7}
OFFSETS = {12: 16, 16: 20, 20: 25, 25: 32, 32: 40}  # f of ISO 5610 by the width of the shank, offset styles

LAYDOWN = {"11": (6.35, 3.175), "16": (9.525, 3.9688), "22": (12.7, 4.7625)}  # circle and thickness by size

HIGHEST_SPEED = 4000
PARTS = re.compile(r"[^,]+?(?:tool|bar) (\S+(?: \w+)?), ([\d.]+)°, ([\w.]+)")


def turning_tools(*types):
    return ((name, tool) for name, tool in tools_of("turning") if not types or tool["type"] in types)


def insert_tools():
    """Tool, designation of the holder, leading angle as told, designation of the insert."""
    for _, tool in turning_tools("turning general", "turning boring"):
        yield (tool, *PARTS.fullmatch(tool["description"]).groups())


def turning_presets(*types):
    for _, tool in turning_tools(*types):
        for preset in tool["start-values"]["presets"]:
            yield tool, preset, "%s %s" % (tool["product-id"], preset["name"])


def edge(g):
    """Length of a cutting edge, from the polygon around the circle."""
    half = math.radians(g["EPSR"] / 2)
    circle = g["INSD"]
    if g["SC"] == "R":
        return circle
    if g["SC"] == "T":
        return 3 ** 0.5 * circle
    if g["SC"] == "W":
        return circle / 2 / math.tan(half) + circle / 2 / math.tan(2 * half)
    return circle / math.sin(2 * half)


def one_letter(left, right):
    """The product ids are those of the two hands of one tool."""
    return len(left) == len(right) and [pair for pair in zip(left, right) if pair[0] != pair[1]] == [("L", "R")]


def smallest_bore(tool):
    match = re.fullmatch(r"Bores from (.+)", tool["post-process"]["comment"])
    return spoken_length(match.group(1), tool["unit"]) if match else None


class TurningInserts(unittest.TestCase):
    """The inserts are what their designations say."""

    def test_members_are_those_of_the_type(self):
        for _, tool in turning_tools():
            where, kind = tool["product-id"], tool["type"]
            g, tip = tool["geometry"], {"thread-tip-width", "thread-tip-radius"} & set(tool["geometry"])
            self.assertEqual(TOOL_MEMBERS, set(tool), where)
            self.assertEqual(HOLDER_MEMBERS, set(tool["holder"]), where)
            self.assertEqual(POST_MEMBERS, set(tool["post-process"]), where)
            self.assertEqual(GEOMETRY_MEMBERS[kind] | tip, set(g), where)
            own = {"tool_grooveCompOppositeEdge"} if kind == "turning grooving" else set()
            self.assertEqual(SETUP_MEMBERS | own, set(tool["setup"]), where)
            if kind == "turning threading":
                self.assertEqual({"thread-tip-" + {"flat": "width", "round": "radius"}[g["thread-tip-type"]]}, tip)

    def test_designations_name_the_geometry(self):
        for tool, _, _, told in insert_tools():
            g = tool["geometry"]
            letters = g["SC"] + CLEARANCE_LETTERS[g["RA"]] + g["TC"] + g["SCTY"]
            if tool["unit"] == "millimeters":
                radius = "M0" if g["SC"] == "R" else "%02d" % round(10 * g["RE"])
                # Whole millimeters; 6.35 tan 60° = 10.998 counts as 11.
                code = letters + "%02d" % math.floor(edge(g) + 0.01) + THICKNESS_CODES[g["S"]] + radius
            else:
                radius = "00" if g["SC"] == "R" else "%g" % (64 * g["RE"])
                code = letters + "%g" % (8 * g["INSD"]) + "%g" % (16 * g["S"]) + radius
            self.assertEqual(code, told, tool["product-id"])

    def test_the_set_up_is_the_plain_one(self):
        for _, tool in turning_tools():
            setup, where = tool["setup"], tool["product-id"]
            self.assertEqual((0, 0), (setup["angle"], setup["tool_shaftAxisAngle"]), where)
            self.assertFalse(setup.get("tool_grooveCompOppositeEdge"), where)
            self.assertEqual(tool["holder"]["HAND"] != "L", setup["HAND"], where)
            round_edge = tool["geometry"]["SC"] in ("R", "groove round")
            self.assertEqual("center" if round_edge else "tip", setup["compensation"], where)

    def test_a_round_insert_is_one_radius(self):
        counted = 0
        for tool, *_ in insert_tools():
            if tool["geometry"]["SC"] == "R":
                counted += 1
                self.assertEqual(tool["geometry"]["INSD"] / 2, tool["geometry"]["RE"], tool["product-id"])
        self.assertEqual(4, counted)

    def test_grooves_are_as_wide_as_told(self):
        for _, tool in turning_tools("turning grooving"):
            g, unit, where = tool["geometry"], tool["unit"], tool["product-id"]
            width, corner, depth = re.match(r"\D+ ([\d./ -]+ \w\w), (.+?), depth ([\d./ -]+ \w\w),",
                                            tool["description"]).groups()
            self.assertTrue(nearly(spoken_length(width, unit), g["tool_grooveWidth"]), where)
            self.assertEqual(g["tool_grooveWidth"], g["INSD"], where)
            full = corner == "full radius"
            self.assertEqual("groove round" if full else "groove square", g["SC"], where)
            radius = g["tool_grooveWidth"] / 2 if full else spoken_length(corner.replace("corner radius ", ""), unit)
            self.assertTrue(math.isclose(radius, g["RE"], rel_tol=1e-4), where)
            self.assertLess(g["tool_insertWidth"], g["tool_grooveWidth"], where)
            self.assertLessEqual(g["LH"], g["OAL"], where)
            self.assertGreater(spoken_length(depth, unit), 0, where)

    def test_threads_are_those_of_the_description(self):
        seen = set()
        for _, tool in turning_tools("turning threading"):
            g, where = tool["geometry"], tool["product-id"]
            size, side, hand, named = re.match(r"Threading tool (\d\d)([EI])([RL]) ([^,]+),",
                                               tool["description"]).groups()
            scale = MILLIMETERS[tool["unit"]]
            self.assertEqual(LAYDOWN[size], tuple(round(g[key] * scale, 4) for key in ("INSD", "S")), where)
            self.assertEqual((0, 7), (g["RE"], g["RA"]), where)
            self.assertEqual(side == "I", g["tool_internalThread"], where)
            self.assertEqual(hand, tool["holder"]["HAND"], where)
            self.assertGreaterEqual(g["tool_insertWidth"], g["TP"], where)
            kind = named.split()[-1]
            seen.add(kind)
            if kind in ("A60", "G60", "AG60"):
                self.assertLess(g["TPN"], g["TP"], where)
                continue
            number = float(named.split()[0])
            pitch = number if kind in ("ISO", "TR") else 1 / number * (25.4 / scale)
            self.assertTrue(nearly(pitch, g["TP"]) and g["TP"] == g["TPN"] == g["TPX"], where)
            angles = {"ISO": 60, "UN": 60, "W": 55, "TR": 30, "ACME": 29}
            self.assertEqual(angles[kind], g["thread-profile-angle"], where)
        self.assertEqual({"ISO", "UN", "W", "TR", "ACME", "A60", "G60", "AG60"}, seen)

    def test_the_tip_of_a_tool_fits_the_bottom_of_its_thread(self):
        for _, tool in turning_tools("turning threading"):
            g, where = tool["geometry"], tool["product-id"]
            angle = math.radians(g["thread-profile-angle"] / 2)
            if g["thread-tip-type"] == "flat":
                # Of a flank of half the pitch, less than the whole and more than a third.
                self.assertTrue(0.29 * g["TPN"] < g["thread-tip-width"] < 0.37 * g["TPN"], where)
                self.assertEqual("thread trapezoid", g["SC"], where)
                continue
            # The radius cuts no more off the sharp thread than a quarter, and not less than a twelfth, of its height.
            height = g["TPN"] / 2 / math.tan(angle)
            cut = g["thread-tip-radius"] * (1 / math.sin(angle) - 1) / height
            self.assertTrue(1 / 12 - 1e-4 < cut < 1 / 4, "%s: %g" % (where, cut))
            self.assertEqual("thread iso triple", g["SC"], where)


class TurningHolders(unittest.TestCase):
    """The holders are what their designations say, and take their inserts."""

    def test_designations_name_the_holder(self):
        for tool, code, told_angle, _ in insert_tools():
            h, g, where = tool["holder"], tool["geometry"], tool["product-id"]
            shape, clearance = g["SC"], CLEARANCE_LETTERS[g["RA"]]
            boring = tool["type"] == "turning boring"
            head = code.split("-")[1] if boring else code
            style = h["THSC"][-1].upper()
            self.assertEqual(h["MTP"] + shape + style + clearance + h["HAND"], head[:5], where)
            self.assertEqual("boring bar %s" % style.lower() if boring else style, h["THSC"], where)
            self.assertEqual(float(told_angle), h["tool_leadingAngle"], where)
            self.assertEqual(boring, h["tool_roundShank"], where)

    def test_shanks_are_as_told(self):
        for tool, code, _, _ in insert_tools():
            h, where = tool["holder"], tool["product-id"]
            metric = tool["unit"] == "millimeters"
            if tool["type"] == "turning boring":
                number, letter = re.match(r"[AS](\d\d)([A-Z])", code).groups()
                diameter = int(number) if metric else int(number) / 16
                self.assertEqual((diameter, diameter), (h["H"], h["W"]), where)
            elif metric:
                height, width, letter = re.match(r"\w{5} (\d\d)(\d\d)([A-Z])", code).groups()
                self.assertEqual((int(height), int(width)), (h["H"], h["W"]), where)
            else:
                sixteenths, letter = re.match(r"\w{5} (\d\d)\d([A-Z])", code).groups()
                self.assertEqual((int(sixteenths) / 16,) * 2, (h["H"], h["W"]), where)
            if metric:
                self.assertEqual(HOLDER_LENGTHS[letter], h["OAL"], where)
            elif tool["type"] == "turning general":
                self.assertEqual(INCH_LENGTHS[letter], h["OAL"], where)

    def test_the_cutting_point_lies_where_the_hand_wants_it(self):
        for _, tool in turning_tools():
            h, where = tool["holder"], tool["product-id"]
            if h["HAND"] == "N":
                self.assertEqual(h["W"] / 2, h["CW"], where)
            elif h["THSC"] not in ("N", "parting blade", "B", "groove external", "A"):
                self.assertGreater(h["CW"], h["W"] * 0.6, where)
            if tool["unit"] == "millimeters" and h["THSC"] in ("F", "G", "H", "J", "K", "L", "S"):
                self.assertEqual(OFFSETS[h["W"]], h["CW"], where)

    def test_both_hands_are_there_and_mirror_each_other(self):
        for name in ("Turning Tools (Inch)", "Turning Tools (Metric)"):
            tools = {tool["product-id"]: tool for tool in DOCUMENTS[name]["data"]}
            left = [tool for tool in tools.values() if tool["holder"]["HAND"] == "L"]
            self.assertGreater(len(left), 30)
            self.assertEqual({"turning general", "turning boring", "turning grooving", "turning threading"},
                             {tool["type"] for tool in left})
            for tool in left:
                self.assertFalse(tool["setup"]["HAND"], tool["product-id"])
                right = next(other for product_id, other in tools.items() if one_letter(tool["product-id"], product_id))
                self.assertEqual({**tool["holder"], "HAND": "R"}, right["holder"])
                self.assertEqual(tool["geometry"], right["geometry"])
                self.assertTrue(right["setup"]["HAND"])

    def test_a_holder_takes_its_insert(self):
        for tool, *_ in insert_tools():
            g, h, where = tool["geometry"], tool["holder"], tool["product-id"]
            # The minor edge clears the face, and the insert is smaller than shank and head.
            if g["SC"] == "R":
                self.assertIn(h["THSC"], ("D", "G"), where)
            else:
                self.assertLessEqual(h["tool_leadingAngle"] + g["EPSR"], 180, where)
            self.assertLess(g["INSD"], h["W"], where)
            self.assertLess(g["INSD"], h["LH"], where)
            self.assertLess(h["LH"], h["OAL"] / 2, where)
            # A hole through the insert for a pin or screw, none for an insert that is clamped from above alone.
            self.assertIn(h["MTP"], "PMS", where)
            self.assertEqual("S" if g["RA"] else h["MTP"], h["MTP"], where)

    def test_a_bar_goes_into_its_smallest_bore(self):
        counted = 0
        for _, tool in turning_tools():
            h, bore = tool["holder"], smallest_bore(tool)
            self.assertEqual(h["tool_roundShank"], bore is not None, tool["product-id"])
            if bore:
                counted += 1
                self.assertLessEqual(h["W"] / 2 + h["CW"], bore, tool["product-id"])
                if tool["type"] == "turning grooving":
                    depth = spoken_length(re.search(r"depth (.+? \w\w),", tool["description"]).group(1), tool["unit"])
                    self.assertLessEqual(depth, h["CW"] - h["W"] / 2 + 1e-9, tool["product-id"])
        self.assertGreater(counted, 60)

    def test_a_blade_is_narrower_than_its_groove_and_reaches_as_deep(self):
        blades = [tool for _, tool in turning_tools("turning grooving") if tool["holder"]["THSC"] == "parting blade"]
        self.assertEqual(10, len(blades))
        for tool in blades:
            depth = spoken_length(re.search(r"depth (.+? \w\w),", tool["description"]).group(1), tool["unit"])
            self.assertLess(tool["holder"]["W"], tool["geometry"]["tool_grooveWidth"], tool["product-id"])
            self.assertEqual(depth, tool["holder"]["LH"], tool["product-id"])


class TurningPresets(unittest.TestCase):
    """Feeds and speeds of turning tools."""

    def test_members_are_those_of_the_kind(self):
        for tool, preset, where in turning_presets():
            general = tool["type"] in ("turning general", "turning boring")
            self.assertEqual(PRESET_MEMBERS | ({"depth-of-cut"} if general else set()), set(preset), where)
            self.assertEqual(general, preset["use-depth-of-cut"], where)
            self.assertTrue(preset["use-feed-per-revolution"], where)
            self.assertEqual(tool["type"] != "turning threading", preset["use-constant-surface-speed"], where)
            self.assertEqual({preset["f_n"]}, {preset["f_n_leadIn"], preset["f_n_leadOut"]}, where)

    def test_feed_and_depth_suit_the_corner(self):
        for tool, preset, where in turning_presets("turning general", "turning boring"):
            g = tool["geometry"]
            scale = MILLIMETERS[tool["unit"]]
            self.assertTrue(0.02 <= preset["f_n"] * scale <= 0.41, where)
            self.assertLessEqual(preset["f_n"], 0.55 * g["RE"], where)
            self.assertLessEqual(preset["depth-of-cut"], 0.35 * edge(g), where)
            self.assertGreater(preset["depth-of-cut"], preset["f_n"], where)

    def test_a_groover_is_fed_by_its_width(self):
        for tool, preset, where in turning_presets("turning grooving"):
            feed, width = (value * MILLIMETERS[tool["unit"]]
                           for value in (preset["f_n"], tool["geometry"]["tool_grooveWidth"]))
            self.assertTrue(0.015 * width < feed < 0.06 * width, "%s: %g" % (where, feed))

    def test_a_thread_is_fed_by_its_pitch_at_a_constant_spindle_speed(self):
        for tool, preset, where in turning_presets("turning threading"):
            self.assertEqual(tool["geometry"]["TP"], preset["f_n"], where)
            diameter = smallest_bore(tool) or {"millimeters": 50, "inches": 2}[tool["unit"]]
            surface_speed = preset["v_c"] * (1000 if tool["unit"] == "millimeters" else 12)
            self.assertTrue(nearly(surface_speed, math.pi * diameter * preset["n"]), where)
            # What the slide must reach on the way: 6 m/min.
            self.assertLess(preset["f_n"] * preset["n"] * MILLIMETERS[tool["unit"]], 6000, where)

    def test_speed_and_surface_speed_meet_on_the_diameter_of_reference(self):
        for tool, preset, where in turning_presets("turning general", "turning boring", "turning grooving"):
            diameter = smallest_bore(tool) or {"millimeters": 50, "inches": 2}[tool["unit"]]
            n = preset["v_c"] * (1000 if tool["unit"] == "millimeters" else 12) / math.pi / diameter
            self.assertTrue(abs(min(n, HIGHEST_SPEED) - preset["n"]) < 0.02 * n, "%s: %g" % (where, n))
            self.assertEqual(int(preset["n"]), preset["n"], where)

    def test_speeds_suit_the_cutting_material(self):
        for tool, preset, where in turning_presets():
            meters = preset["v_c"] * (1 if tool["unit"] == "millimeters" else 0.3048)
            light = preset["material"]["category"] == "aluminium"
            self.assertTrue(50 <= meters <= (510 if light else 230), "%s: %g m/min" % (where, meters))
            self.assertEqual(light, tool["BMC"] == "carbide", where)
            self.assertEqual(light, tool["geometry"].get("TC") == "G", where)

    def test_harder_work_is_turned_no_faster(self):
        for _, tool in turning_tools():
            speeds = {preset["material"]["category"]: preset["v_c"] for preset in tool["start-values"]["presets"]}
            if len(speeds) > 1:
                self.assertTrue(speeds["stainless"] < speeds["cast iron"] < speeds["steel"], tool["product-id"])


class TurningLibraries(unittest.TestCase):
    def test_every_common_shape_and_style_is_there(self):
        for name in ("Turning Tools (Inch)", "Turning Tools (Metric)"):
            tools = DOCUMENTS[name]["data"]
            self.assertEqual(set(UNITS.values()) & {tools[0]["unit"]}, {tool["unit"] for tool in tools})
            self.assertLessEqual(set("CDRSTVW"), {tool["geometry"]["SC"] for tool in tools}, name)
            styles = {tool["holder"]["THSC"] for tool in tools}
            self.assertLessEqual({"J", "L", "G", "S", "V", "boring bar l", "boring bar u", "groove external",
                                  "groove face", "groove internal", "parting blade", "thread offset",
                                  "thread internal"}, styles, name)
            self.assertEqual({"R", "L", "N"}, {tool["holder"]["HAND"] for tool in tools}, name)
