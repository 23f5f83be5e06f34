"""Tests of the rotating tools of the sample libraries: mills and hole makers. Run by check_samples.py."""

import math
import re
import unittest

from documents import nearly, tools_of
from expectations import (
    BORING_HOLE_MAKING, CONES, GENERAL_HOLE_MAKING, GEOMETRY_MEMBERS, HIGHEST_SPEED, HOLE_MAKING, LIBRARIES,
    MILLIMETERS, OWN_MEMBERS, PRESET_MEMBERS, TAPS, TOOL_MEMBERS,
)


def rotating_tools():
    return tools_of("mill", "hole making")


def rotating_presets():
    for _, tool in rotating_tools():
        for preset in tool["start-values"]["presets"]:
            yield tool, preset


class Tools(unittest.TestCase):
    """What a tool of its type must be."""

    def test_members_are_those_of_the_type(self):
        for _, tool in rotating_tools():
            kind = tool["type"]
            optional = {"holder", "shaft"} & set(tool) | ({"tapered-type"} if kind == "tapered mill" else set())
            self.assertEqual(TOOL_MEMBERS | optional, set(tool), tool["product-id"])
            angle = {"SIG"} if kind in HOLE_MAKING else {"TA", "shoulder-diameter"}
            self.assertEqual(GEOMETRY_MEMBERS | angle | OWN_MEMBERS.get(kind, set()), set(tool["geometry"]),
                             tool["product-id"])
            self.assertEqual("generic" if kind in HOLE_MAKING else "Mill Generic", tool["GRADE"])

    def test_lengths_are_in_order_and_sizes_positive(self):
        for _, tool in rotating_tools():
            g = tool["geometry"]
            lengths = [0, g["LCF"], g["shoulder-length"], g["LB"], g["OAL"]]
            self.assertEqual(sorted(lengths), lengths, tool["product-id"])
            for key in ("DC", "LCF", "SFDM", "OAL", "NOF"):
                self.assertGreater(g[key], 0, tool["product-id"])
            self.assertGreater(g.get("shoulder-diameter", 1), 0, tool["product-id"])
            self.assertTrue(0 <= g.get("SIG", 0) <= 180 and 0 <= g.get("TA", 0) < 90, tool["product-id"])
            self.assertEqual(tool["type"] in TAPS | {"thread mill"}, g["TP"] > 0, tool["product-id"])
            self.assertEqual(tool["type"] != "left hand tap", g["HAND"], tool["product-id"])

    def test_sizes_are_those_of_machine_tools(self):
        for _, tool in rotating_tools():
            scale = MILLIMETERS[tool["unit"]]
            self.assertTrue(0.5 <= tool["geometry"]["DC"] * scale <= 160, tool["product-id"])
            self.assertTrue(25 <= tool["geometry"]["OAL"] * scale <= 300, tool["product-id"])

    def test_flutes_of_a_cone_cover_the_cone(self):
        for _, tool in rotating_tools():
            if tool["type"] in CONES:
                g = tool["geometry"]
                angle = g["SIG"] / 2 if "SIG" in g else g["TA"]
                cone = (g["DC"] - g["tip-diameter"]) / 2 / math.tan(math.radians(angle))
                self.assertAlmostEqual(cone, g["LCF"], places=5, msg=tool["product-id"])

    def test_a_tapered_ball_touches_its_sides(self):
        for _, tool in rotating_tools():
            if tool.get("tapered-type") == "tapered_ball":
                g = tool["geometry"]
                angle = math.radians(g["TA"])
                # Distance of the center of the ball from the side is the radius of the ball.
                distance = (g["DC"] / 2 + g["RE"] * math.tan(angle)) * math.cos(angle)
                self.assertAlmostEqual(g["RE"], distance, places=5, msg=tool["product-id"])

    def test_shoulders_of_mills_fit_their_shanks(self):
        for _, tool in rotating_tools():
            if tool["type"] in ("tapered mill", "slot mill", "woodruff cutter", "lollipop mill", "back chamfer mill"):
                g = tool["geometry"]
                self.assertLessEqual(g["shoulder-diameter"], g["SFDM"], tool["product-id"])

    def test_shafts_lead_from_the_shoulder_to_the_shank(self):
        for _, tool in rotating_tools():
            g = tool["geometry"]
            if "shaft" in tool:
                self.assertEqual("shaft", tool["shaft"]["type"])
                segments = tool["shaft"]["segments"]
                self.assertLess(segments[0]["lower-diameter"], segments[-1]["upper-diameter"], tool["product-id"])
                self.assertEqual(g["SFDM"], segments[-1]["upper-diameter"], tool["product-id"])
                height = sum(segment["height"] for segment in segments)
                self.assertTrue(0 < height <= g["LB"] - g["shoulder-length"] + 1e-9, tool["product-id"])

    def test_threads_are_those_of_the_description(self):
        counted = 0
        for _, tool in rotating_tools():
            g = tool["geometry"]
            metric = re.search(r"\bM(\d+\.?\d*)x(\d+\.?\d*)", tool["description"])
            inch = re.search(r"(?:#(\d+)|(\d+)(?:/(\d+))?)-(\d+) UN[CF]", tool["description"])
            if not metric and not inch:
                self.assertTrue(g["TP"] == 0 or tool["product-id"].startswith("TM1-"), tool["description"])
                continue
            counted += 1
            if metric:
                nominal, pitch = float(metric.group(1)), float(metric.group(2))
            else:
                number, numerator, denominator, threads = inch.groups()
                nominal = 0.06 + 0.013 * int(number) if number else int(numerator) / int(denominator or 1)
                pitch = 1 / int(threads)
            self.assertTrue(nearly(pitch, g["TP"]), tool["description"])
            if tool["type"] in TAPS:
                self.assertTrue(nearly(nominal, g["DC"]), tool["description"])
            else:  # a thread mill passes through the minor diameter D - 5/8 sqrt(3) P of an internal thread
                self.assertLess(g["DC"], nominal - 5 / 8 * math.sqrt(3) * pitch, tool["description"])
                self.assertAlmostEqual(g["NT"] * pitch, g["LCF"], places=5, msg=tool["description"])
                self.assertTrue(nearly(pitch / 8, g["thread-tip-width"]), tool["description"])
        self.assertGreater(counted, 100)

    def test_tap_drills_leave_the_thread(self):
        named = {}
        for _, tool in rotating_tools():
            if tool["type"] == "drill":
                match = re.match(r"\w+ drill (#\d+|[A-Z]|[\d/-]+ in)[ ,]", tool["description"])
                if match:
                    named[match.group(1).replace(" in", "")] = tool["geometry"]["DC"]
        for _, tool in rotating_tools():
            if tool["type"] not in TAPS:
                continue
            drill = re.fullmatch(r"Tap drill (\S+)( mm)?", tool["post-process"]["comment"])
            text, g = drill.group(1), tool["geometry"]
            if drill.group(2):
                diameter = float(text)
            elif "/" in text:
                diameter = int(text.split("/")[0]) / int(text.split("/")[1])
            else:
                diameter = named[text]
            self.assertLess(abs(diameter - (g["DC"] - g["TP"])), 0.2 * g["TP"], tool["description"])


class Presets(unittest.TestCase):
    """Feeds and speeds."""

    def test_members_are_those_of_the_kind(self):
        for tool, preset in rotating_presets():
            kind = tool["type"]
            if kind in GENERAL_HOLE_MAKING:
                own = {"use-feed-per-revolution", "f_n_retract"}
            elif kind in BORING_HOLE_MAKING:
                own = {"use-feed-per-revolution", "v_f_plunge", "v_f_retract"}
            else:
                own = {"v_f_plunge", "n_ramp", "ramp-angle", "use-stepdown", "use-stepover"}
                own |= {key for key in ("stepdown", "stepover") if preset["use-" + key]}
            self.assertEqual(PRESET_MEMBERS | own, set(preset), tool["product-id"])
            self.assertEqual(kind in GENERAL_HOLE_MAKING, preset.get("use-feed-per-revolution", False))
            self.assertEqual({"category", "query", "use-hardness"}, set(preset["material"]))

    def test_derived_values_follow_from_feed_and_speed(self):
        for tool, preset in rotating_presets():
            g, n, where = tool["geometry"], preset["n"], "%s %s" % (tool["product-id"], preset["name"])
            self.assertTrue(nearly(preset["f_z"], preset["v_f"] / (n * g["NOF"])), where)
            surface_speed = preset["v_c"] * (1000 if tool["unit"] == "millimeters" else 12)
            self.assertTrue(nearly(surface_speed, math.pi * g["DC"] * n), where)
            self.assertTrue(nearly(preset["f_n"], preset.get("v_f_plunge", preset["v_f"]) / n), where)

    def test_feeds_beside_the_cutting_feed_are_its_like(self):
        for tool, preset in rotating_presets():
            where = "%s %s" % (tool["product-id"], preset["name"])
            self.assertEqual({preset["v_f"]}, {preset["v_f_leadIn"], preset["v_f_leadOut"], preset["v_f_transition"]})
            self.assertEqual(preset["n"], preset.get("n_ramp", preset["n"]), where)
            self.assertEqual(preset["f_n"], preset.get("f_n_retract", preset["f_n"]), where)
            self.assertEqual(preset["v_f"], preset.get("v_f_retract", preset["v_f"]), where)
            self.assertIn(preset["v_f_ramp"], (preset["v_f"], preset.get("v_f_plunge")), where)

    def test_a_tap_advances_by_its_pitch(self):
        for tool, preset in rotating_presets():
            if tool["type"] in TAPS:
                pitch = tool["geometry"]["TP"]
                self.assertTrue(nearly(preset["v_f"], preset["n"] * pitch), tool["product-id"])
                self.assertTrue(nearly(preset["v_f_plunge"], preset["n"] * pitch), tool["product-id"])

    def test_speeds_suit_the_spindle_and_the_cutting_material(self):
        highest = {"hss": 80, "cobalt": 85, "carbide": 330, "coated carbide": 520}  # m/min
        for tool, preset in rotating_presets():
            where = "%s %s" % (tool["product-id"], preset["name"])
            self.assertEqual(int(preset["n"]), preset["n"], where)
            self.assertTrue(0 < preset["n"] <= HIGHEST_SPEED, where)
            meters = preset["v_c"] * (1 if tool["unit"] == "millimeters" else 0.3048)
            self.assertTrue(1 < meters <= highest[tool["BMC"]], "%s: %g m/min" % (where, meters))

    def test_feeds_suit_the_diameter(self):
        for tool, preset in rotating_presets():
            where = "%s %s" % (tool["product-id"], preset["name"])
            if tool["type"] in TAPS:
                continue
            diameter = tool["geometry"]["DC"] * MILLIMETERS[tool["unit"]]
            per_tooth = preset["f_z"] * MILLIMETERS[tool["unit"]]
            self.assertTrue(0.0005 < per_tooth <= 0.3 and per_tooth < 0.05 * diameter, "%s: %g mm" % (where, per_tooth))

    def test_harder_work_is_cut_no_faster(self):
        for _, tool in rotating_tools():
            speeds = {preset["material"]["category"]: preset["n"] for preset in tool["start-values"]["presets"]}
            order = [speeds[category] for category in ("stainless", "steel", "aluminium") if category in speeds]
            self.assertEqual(sorted(order), order, tool["product-id"])


class Holders(unittest.TestCase):
    """Holders that some tools are shown in."""

    def test_some_tools_have_a_holder_and_some_have_none(self):
        for name in LIBRARIES:
            tools = [tool for library, tool in rotating_tools() if library == name]
            if tools:
                share = sum("holder" in tool for tool in tools) / len(tools)
                self.assertTrue(0.3 < share < 0.9, "%s: %g" % (name, share))

    def test_gauge_lengths_are_sums(self):
        for _, tool in rotating_tools():
            reach = 0
            if "holder" in tool:
                reach = tool["holder"]["gaugeLength"]
                self.assertTrue(nearly(sum(s["height"] for s in tool["holder"]["segments"]), reach), tool["holder"])
            self.assertTrue(nearly(tool["geometry"]["LB"] + reach, tool["geometry"]["assemblyGaugeLength"]),
                            tool["product-id"])

    def test_a_holder_is_wider_than_the_shank_and_narrower_than_the_face_mill(self):
        for _, tool in rotating_tools():
            if "holder" in tool:
                segments = tool["holder"]["segments"]
                self.assertTrue(all(value > 0 for segment in segments for value in segment.values()))
                nose = max(segments[0].values())
                if tool["type"] == "face mill":  # it sits on a spigot, and the arbor must not rub on the work
                    self.assertLess(nose, tool["geometry"]["DC"], tool["product-id"])
                else:
                    self.assertGreater(nose, tool["geometry"]["SFDM"], tool["product-id"])
