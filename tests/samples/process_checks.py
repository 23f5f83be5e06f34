"""Tests of the cutting, depositing, probing and tutorial tools of the sample libraries. Run by check_samples.py."""

import math
import re
import unittest

from documents import DOCUMENTS, every_tool, nearly, spoken_length, tools_of
from expectations import MILLIMETERS

JET_MEMBERS = {"BMC", "description", "geometry", "guid", "post-process", "product-id", "product-link", "start-values",
               "type", "unit", "vendor"}
JET_PRESET = {"cutHeight", "description", "guid", "machineQualityControl", "name", "pierceTime", "pressure", "v_f",
              "v_f_leadIn", "v_f_leadOut"}
JET_OWN = {"laser cutter": {"assistGas", "cutPower", "pierceHeight", "piercePower"}, "plasma cutter": set(),
           "waterjet": {"abrasiveFlowRate"}}
ROTATING_POST = {"break-control", "comment", "diameter-offset", "length-offset", "live", "manual-tool-change", "number",
                 "turret"}
DEPOSITING_PRESET = {"BEAD_WIDTH", "DEPOSITING_SHIELD_GAS_FLOW_RATE", "LAYER_THICKNESS", "STAND_OFF_DISTANCE",
                     "description", "guid", "name", "stepover", "use-stepover", "v_f", "v_f_leadIn", "v_f_leadOut",
                     "v_f_plunge"}
DEPOSITING_OWN = {
    "laser powder": {"DEPOSITING_AUXILIARY_GAS_FLOW_RATE", "DEPOSITING_CARRIER_GAS_FLOW_RATE", "DEPOSITING_POWER",
                     "POWDER_FLOW_RATE"},
    "laser wire": {"DEPOSITING_AUXILIARY_GAS_FLOW_RATE", "DEPOSITING_POWER", "WIRE_FEED"},
    "electric arc wire": {"DEPOSITING_CURRENT", "DEPOSITING_VOLTAGE", "USE_PRESET_PROGRAM", "WIRE_FEED"},
}
PROBE_GEOMETRY = {"CSP", "DC", "HAND", "LB", "LCF", "NOF", "NT", "OAL", "RE", "SFDM", "TA", "TP", "assemblyGaugeLength",
                  "shoulder-length", "thread-profile-angle", "tip-diameter", "tip-length", "tip-offset"}
DENSITIES = {"Unalloyed steel": 7.85, "Stainless steel 1.4404": 7.9, "Nickel alloy 2.4856": 8.4}
INCH, METRIC = "Cutting Tools (Inch)", "Cutting Tools (Metric)"


def presets_of(*families):
    for _, tool in tools_of(*families):
        for preset in tool["start-values"]["presets"]:
            yield tool, preset, "%s %s" % (tool["product-id"], preset["name"])


def sheet(tool, preset):
    """Material and thickness in mm, from the name of a preset such as "Steel 1/4 in"."""
    material, thickness = re.fullmatch(r"(\D+?) (\d.*)", preset["name"]).groups()
    return material, spoken_length(thickness, tool["unit"]) * MILLIMETERS[tool["unit"]]


class Jets(unittest.TestCase):
    def test_members_are_those_of_the_type(self):
        for _, tool in tools_of("jet"):
            self.assertEqual(JET_MEMBERS, set(tool), tool["product-id"])
            self.assertEqual({"CW", "JET_HEAD_CLEARANCE", "JET_NOZZLE_DIAMETER"}, set(tool["geometry"]))
            self.assertEqual({"comment", "diameter-offset", "length-offset", "manual-tool-change", "number"},
                             set(tool["post-process"]))
            for preset in tool["start-values"]["presets"]:
                self.assertEqual(JET_PRESET | JET_OWN[tool["type"]], set(preset), tool["product-id"])

    def test_kerf_nozzle_and_head_lie_around_each_other(self):
        kerfs = {"laser cutter": (0.1, 0.5), "plasma cutter": (1.3, 3), "waterjet": (0.15, 1.3)}
        for _, tool in tools_of("jet"):
            g, scale = tool["geometry"], MILLIMETERS[tool["unit"]]
            least, most = kerfs[tool["type"]]
            self.assertTrue(least <= g["CW"] * scale <= most, tool["product-id"])
            self.assertTrue(g["CW"] < g["JET_NOZZLE_DIAMETER"] < g["JET_HEAD_CLEARANCE"], tool["product-id"])
            told = re.search(r"kerf (.+)$", tool["description"]).group(1)
            self.assertEqual(g["CW"], spoken_length(told, tool["unit"]), tool["product-id"])

    def test_a_bore_makes_a_kerf_no_narrower_than_the_jet(self):
        counted = 0
        for _, tool in tools_of("jet"):
            bores = re.findall(r"(?:tube|Pure water jet, orifice) ([\d.]+ \w\w)", tool["description"])
            for bore in bores:
                counted += 1
                self.assertGreater(tool["geometry"]["CW"], spoken_length(bore, tool["unit"]), tool["product-id"])
        self.assertEqual(8, counted)

    def test_a_thicker_sheet_is_cut_slower_and_pierced_longer(self):
        for _, tool in tools_of("jet"):
            sheets = {}
            for preset in tool["start-values"]["presets"]:
                material, thickness = sheet(tool, preset)
                sheets.setdefault(material, []).append((thickness, -preset["v_f"], preset["pierceTime"]))
            for material, rows in sheets.items():
                where = "%s %s" % (tool["product-id"], material)
                self.assertGreater(len(rows), 1, where)
                for column in (1, 2):
                    values = [row[column] for row in sorted(rows)]
                    self.assertEqual(sorted(set(values)), values, where)

    def test_stainless_steel_is_no_faster_than_steel_but_for_nitrogen_and_aluminium_is_faster_than_it(self):
        for _, tool in tools_of("jet"):
            feeds = {sheet(tool, preset): preset["v_f"] for preset in tool["start-values"]["presets"]}
            for (material, thickness), feed in feeds.items():
                if material == "Stainless steel" and tool["type"] != "laser cutter":
                    self.assertLess(feed, feeds["Steel", thickness], tool["product-id"])
                    self.assertGreater(feeds.get(("Aluminium", thickness), feed + 1), feed, tool["product-id"])

    def test_the_jet_enters_slowly_and_pierces_from_above(self):
        for tool, preset, where in presets_of("jet"):
            self.assertAlmostEqual(0.8, preset["v_f_leadIn"] / preset["v_f"], delta=0.05, msg=where)
            self.assertEqual(preset["v_f"], preset["v_f_leadOut"], where)
            if "pierceHeight" in preset:
                self.assertGreater(preset["pierceHeight"], preset["cutHeight"], where)

    def test_a_nozzle_is_set_up_once_for_all_its_sheets(self):
        for _, tool in tools_of("jet"):
            for key in ("cutHeight", "machineQualityControl", "pierceHeight", "pressure"):
                values = {preset.get(key) for preset in tool["start-values"]["presets"]}
                self.assertEqual(1, len(values), "%s %s" % (tool["product-id"], key))
            thickest, longest = max((sheet(tool, preset)[1], preset["pierceTime"])
                                    for preset in tool["start-values"]["presets"])
            for preset in tool["start-values"]["presets"]:
                self.assertAlmostEqual(longest * sheet(tool, preset)[1] / thickest, preset["pierceTime"], delta=0.011,
                                       msg="%s %s" % (tool["product-id"], preset["name"]))

    def test_pressures_are_those_of_the_process(self):
        bounds = {"oxygen": (0.4, 2), "nitrogen": (8, 25), "plasma cutter": (4, 8), "waterjet": (3000, 6000)}  # bar
        for tool, preset, where in presets_of("jet"):
            bar = preset["pressure"] / (1 if tool["unit"] == "millimeters" else 14.5)
            least, most = bounds[preset.get("assistGas", tool["type"])]
            self.assertTrue(least <= bar <= most, "%s: %g bar" % (where, bar))

    def test_settings_are_those_of_the_description(self):
        for tool, preset, where in presets_of("jet"):
            text = tool["description"]
            if tool["type"] == "laser cutter":
                kilowatts = float(re.search(r"(\d+) kW", text).group(1))
                self.assertEqual({1000 * kilowatts}, {preset["cutPower"], preset["piercePower"]}, where)
                self.assertIn(preset["assistGas"], text)
            elif tool["type"] == "plasma cutter":
                self.assertIn(preset["machineQualityControl"], text)
            else:
                grams = preset["abrasiveFlowRate"] * (1 if tool["unit"] == "millimeters" else 28.35)
                self.assertTrue(250 < grams < 500 if "Abrasive" in text else grams == 0, where)

    def test_inch_speeds_lie_between_those_of_the_metric_sheets_beside_them(self):
        metric = {}
        for tool in DOCUMENTS[METRIC]["data"]:
            for preset in tool["start-values"]["presets"]:
                material, thickness = sheet(tool, preset)
                metric.setdefault((tool["product-id"][:-1], material), []).append((thickness, preset["v_f"]))
        for tool in DOCUMENTS[INCH]["data"]:
            for preset in tool["start-values"]["presets"]:
                material, thickness = sheet(tool, preset)
                rows = metric[tool["product-id"][:-1], material]
                slow = max((row for row in rows if row[0] <= thickness))[1]
                fast = min((row for row in rows if row[0] >= thickness))[1]
                self.assertTrue(0.94 * fast <= preset["v_f"] * 25.4 <= 1.06 * slow,
                                "%s %s" % (tool["product-id"], preset["name"]))


class Depositing(unittest.TestCase):
    def test_members_are_those_of_the_type(self):
        for _, tool in tools_of("depositing"):
            self.assertEqual(JET_MEMBERS - {"geometry"} | {"holder"}, set(tool), tool["product-id"])
            self.assertEqual(ROTATING_POST, set(tool["post-process"]), tool["product-id"])
            for preset in tool["start-values"]["presets"]:
                own = DEPOSITING_OWN[tool["type"]] | ({"PRESET_PROGRAM"} if preset.get("USE_PRESET_PROGRAM") else set())
                self.assertEqual(DEPOSITING_PRESET | own, set(preset), tool["product-id"])

    def test_beads_overlap_and_layers_are_flat(self):
        for _, preset, where in presets_of("depositing"):
            self.assertAlmostEqual(0.7, preset["stepover"] / preset["BEAD_WIDTH"], places=3, msg=where)
            self.assertEqual({preset["v_f"]}, {preset[key] for key in ("v_f_leadIn", "v_f_leadOut", "v_f_plunge")})
            self.assertLess(preset["LAYER_THICKNESS"], 0.5 * preset["BEAD_WIDTH"], where)
            self.assertGreater(preset["STAND_OFF_DISTANCE"], 3 * preset["LAYER_THICKNESS"], where)

    def test_what_flows_fills_what_is_laid_down(self):
        # The volume of an overlapping bead in a minute against that of the wire, or of the powder with its losses.
        for tool, preset, where in presets_of("depositing"):
            scale = MILLIMETERS[tool["unit"]]
            volume = preset["stepover"] * preset["LAYER_THICKNESS"] * preset["v_f"] * scale ** 3  # mm³/min
            if "WIRE_FEED" in preset:
                told = re.search(r"wire ([\d.]+ \w\w)", tool["description"]).group(1)
                wire = spoken_length(told, tool["unit"]) * scale
                filled = preset["WIRE_FEED"] * scale * math.pi * wire ** 2 / 4
                self.assertAlmostEqual(1, filled / volume, delta=0.01, msg=where)
            else:
                grams = preset["POWDER_FLOW_RATE"] * (1 if tool["unit"] == "millimeters" else 28.35)
                share = volume / 1000 * DENSITIES[preset["name"]] / grams
                self.assertAlmostEqual(0.7, share, delta=0.01, msg=where)

    def test_beads_and_wires_are_those_of_the_description(self):
        for tool, preset, where in presets_of("depositing"):
            told = re.search(r"bead (.+)$", tool["description"])
            if told:
                self.assertEqual(preset["BEAD_WIDTH"], spoken_length(told.group(1), tool["unit"]), where)

    def test_more_power_lays_down_more(self):
        for kind in ("laser powder", "laser wire"):
            volumes = {}  # mm³/s by power
            for tool, preset, where in presets_of("depositing"):
                if tool["type"] == kind:
                    volume = preset["stepover"] * preset["LAYER_THICKNESS"] * preset["v_f"] / 60
                    volume *= MILLIMETERS[tool["unit"]] ** 3
                    volumes.setdefault(preset["DEPOSITING_POWER"], []).append(volume)
                    # Joule per cubic millimeter: below 20 nothing melts, above 400 the part does.
                    self.assertTrue(20 < preset["DEPOSITING_POWER"] / volume < 400, where)
            means = [sum(volumes[power]) / len(volumes[power]) for power in sorted(volumes)]
            self.assertEqual(sorted(means), means, kind)

    def test_arcs_burn_at_voltages_that_suit_their_current(self):
        for tool, preset, where in presets_of("depositing"):
            if "DEPOSITING_CURRENT" in preset:
                # The load of gas metal arc welding in ISO 60974-1, U = 14 V + 0.05 V/A I; short arcs burn lower.
                usual = 14 + 0.05 * preset["DEPOSITING_CURRENT"]
                self.assertTrue(usual - 5 < preset["DEPOSITING_VOLTAGE"] < usual + 2, where)

    def test_gas_flows_as_for_any_head(self):
        liters = {"SHIELD": 15, "AUXILIARY": 5, "CARRIER": 4}
        for tool, preset, where in presets_of("depositing"):
            for gas, expected in liters.items():
                key = "DEPOSITING_%s_GAS_FLOW_RATE" % gas
                if key in preset:
                    per_minute = preset[key] if tool["unit"] == "millimeters" else preset[key] * 28.3168 / 60
                    self.assertAlmostEqual(expected, per_minute, delta=0.3, msg=where)

    def test_heads_get_wider_towards_the_machine(self):
        for _, tool in tools_of("depositing"):
            diameters = [value for segment in tool["holder"]["segments"]
                         for value in (segment["lower-diameter"], segment["upper-diameter"])]
            self.assertEqual(sorted(diameters), diameters, tool["product-id"])


class Probes(unittest.TestCase):
    def test_members_are_those_of_the_type(self):
        for _, tool in tools_of("probe"):
            self.assertEqual(JET_MEMBERS | {"holder"}, set(tool), tool["product-id"])
            self.assertEqual(PROBE_GEOMETRY, set(tool["geometry"]), tool["product-id"])
            self.assertEqual(ROTATING_POST, set(tool["post-process"]), tool["product-id"])
            for preset in tool["start-values"]["presets"]:
                self.assertEqual({"description", "guid", "name", "v_f_leadIn", "v_f_link", "v_f_measure"}, set(preset))

    def test_a_ball_is_wider_than_its_stem_and_the_stem_reaches_the_body(self):
        for _, tool in tools_of("probe"):
            g = tool["geometry"]
            ball, length = re.match(r"Probe, ball (.+? \w\w), length (.+? \w\w),", tool["description"]).groups()
            self.assertEqual(g["DC"], spoken_length(ball, tool["unit"]), tool["product-id"])
            self.assertEqual(g["LB"], spoken_length(length, tool["unit"]), tool["product-id"])
            self.assertEqual(g["DC"] / 2, g["RE"], tool["product-id"])
            # What is in the body is the thread M4, 6 mm long.
            self.assertAlmostEqual(6, (g["OAL"] - g["LB"]) * MILLIMETERS[tool["unit"]], delta=0.01)
            self.assertTrue(0.5 * g["DC"] < g["SFDM"] < g["DC"], tool["product-id"])
            self.assertTrue(g["DC"] < g["shoulder-length"] <= g["LB"] < g["OAL"], tool["product-id"])

    def test_gauge_lengths_are_those_of_body_and_stylus(self):
        for _, tool in tools_of("probe"):
            g, body = tool["geometry"], tool["holder"]
            self.assertTrue(nearly(g["LB"] + body["gaugeLength"], g["assemblyGaugeLength"]), tool["product-id"])
            self.assertGreater(body["segments"][0]["lower-diameter"], g["DC"], tool["product-id"])
            reach = float(re.search(r"-([\d.]+)$", body["product-id"]).group(1))
            self.assertTrue(nearly(reach, body["gaugeLength"]), tool["product-id"])

    def test_a_probe_has_neither_cutting_edge_nor_point(self):
        for _, tool in tools_of("probe"):
            g = tool["geometry"]
            self.assertEqual({0}, {g[key] for key in ("TA", "TP", "tip-diameter", "tip-length", "tip-offset")})
            self.assertEqual((False, True, 1, 1, 60), tuple(g[key] for key in ("CSP", "HAND", "NOF", "NT",
                                                                               "thread-profile-angle")))
            self.assertEqual(g["DC"], g["LCF"], tool["product-id"])

    def test_probes_of_one_unit_move_alike(self):
        for unit in MILLIMETERS:
            moves = {tuple((preset["name"], preset["v_f_leadIn"], preset["v_f_link"], preset["v_f_measure"])
                           for preset in tool["start-values"]["presets"])
                     for _, tool in tools_of("probe") if tool["unit"] == unit}
            self.assertEqual(1, len(moves), moves)

    def test_measuring_is_slow_and_linking_fast(self):
        for tool, preset, where in presets_of("probe"):
            scale = MILLIMETERS[tool["unit"]]
            self.assertTrue(preset["v_f_measure"] * 5 < preset["v_f_leadIn"] < preset["v_f_link"], where)
            self.assertTrue(20 <= preset["v_f_measure"] * scale <= 200, where)


class Tutorial(unittest.TestCase):
    """The sets for learners."""

    def test_tools_are_those_of_the_large_libraries_under_ids_of_their_own(self):
        originals = {tool["product-id"]: tool for name, tool in every_tool() if not name.startswith("Tutorial")}
        for name in ("Tutorial Tools (Inch)", "Tutorial Tools (Metric)"):
            for tool in DOCUMENTS[name]["data"]:
                self.assertTrue(tool["product-id"].startswith("TU-"), tool["product-id"])
                original = originals[tool["product-id"][3:]]
                self.assertNotEqual(original["guid"], tool["guid"])
                for key in ("type", "unit", "BMC"):
                    self.assertEqual(original[key], tool[key], tool["product-id"])
                geometry = [{key: value for key, value in each["geometry"].items() if key != "assemblyGaugeLength"}
                            for each in (original, tool)]
                self.assertEqual(*geometry, tool["product-id"])

    def test_sizes_are_comfortable(self):
        for name, tool in tools_of("mill", "hole making", "probe"):
            if name.startswith("Tutorial"):
                diameter = tool["geometry"]["DC"] * MILLIMETERS[tool["unit"]]
                self.assertTrue(4.5 < diameter < 52, tool["product-id"])

    def test_the_holes_for_the_taps_and_screws_are_there(self):
        for name in ("Tutorial Tools (Inch)", "Tutorial Tools (Metric)"):
            tools = DOCUMENTS[name]["data"]
            drills = " ".join(tool["description"] for tool in tools if tool["type"] == "drill")
            for tap in (tool for tool in tools if tool["type"] == "right hand tap"):
                drill = tap["post-process"]["comment"].replace("Tap drill ", "")
                self.assertRegex(drills, r"drill %s[ ,]" % re.escape(drill), tap["product-id"])
