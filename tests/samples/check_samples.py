#!/usr/bin/env python3
"""Tests of the sample libraries: they are what their generator writes, and every tool in them is a sound one.

    python3 tests/samples/check_samples.py

Needs the Python 3 standard library only. Ends with status 1 if a test fails.
"""

import copy
import json
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import uuid

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
SAMPLES = os.path.join(ROOT, "samples")
GENERATOR = os.path.join(SAMPLES, "make_samples.py")
DEFINITIONS = os.path.join(ROOT, "platform", "core", "data", "tool-parameters.json")
sys.path.insert(0, HERE)

from expectations import (  # noqa: E402
    BORING_HOLE_MAKING, CONES, EXPRESSIONS, GENERAL_HOLE_MAKING, GEOMETRY_MEMBERS, HIGHEST_SPEED, HOLE_MAKING,
    KNOWN_SIZES, LIBRARIES, MILLIMETERS, OWN_MEMBERS, PRESET_MEMBERS, SPOILED, TAPS, TOOL_MEMBERS, UNITS, VENDORS,
)
from parameter_rules import Expression, Rules  # noqa: E402


def load(name):
    with open(os.path.join(SAMPLES, name + ".json"), encoding="utf-8") as file:
        return json.load(file)


def every_tool():
    for name in LIBRARIES:
        for tool in DOCUMENTS[name]["data"]:
            yield name, tool


def every_preset():
    for _, tool in every_tool():
        for preset in tool["start-values"]["presets"]:
            yield tool, preset


def nearly(a, b):
    return math.isclose(a, b, rel_tol=1e-9, abs_tol=1e-9)


class Files(unittest.TestCase):
    """The files are what the generator writes, in the form of saved files."""

    def check_option(self, generator):
        return subprocess.run([sys.executable, generator, "--check"], capture_output=True, text=True)

    def test_committed_files_are_those_that_the_generator_writes(self):
        result = self.check_option(GENERATOR)
        self.assertEqual((0, ""), (result.returncode, result.stderr))

    def test_the_folder_holds_no_library_of_another_origin(self):
        found = sorted(name for name in os.listdir(SAMPLES) if name.endswith(".json"))
        self.assertEqual([name + ".json" for name in LIBRARIES], found)

    def test_the_bytes_depend_on_no_setting_of_the_machine(self):
        with tempfile.TemporaryDirectory() as folder:
            copied = shutil.copytree(SAMPLES, os.path.join(folder, "ä b"), ignore=shutil.ignore_patterns("*.json"))
            environment = {**os.environ, "PYTHONHASHSEED": "77", "LC_ALL": "C", "TZ": "Asia/Tokyo"}
            subprocess.run([sys.executable, os.path.join(copied, "make_samples.py")], check=True, cwd=folder,
                           env=environment)
            for name in LIBRARIES:
                with open(os.path.join(copied, name + ".json"), "rb") as file:
                    written = file.read()
                with open(os.path.join(SAMPLES, name + ".json"), "rb") as file:
                    self.assertTrue(written == file.read(), name)

    def test_a_changed_and_a_missing_file_are_named(self):
        with tempfile.TemporaryDirectory() as folder:
            copied = shutil.copytree(SAMPLES, os.path.join(folder, "samples"))
            with open(os.path.join(copied, LIBRARIES[1] + ".json"), "ab") as file:
                file.write(b"\n")
            os.remove(os.path.join(copied, LIBRARIES[2] + ".json"))
            result = self.check_option(os.path.join(copied, "make_samples.py"))
            self.assertEqual(1, result.returncode)
            self.assertEqual(LIBRARIES[1:3], [line.split(".json differs")[0] for line in result.stderr.splitlines()])

    def test_text_is_in_the_form_of_saved_files(self):
        for name in LIBRARIES:
            with open(os.path.join(SAMPLES, name + ".json"), "rb") as file:
                text = file.read().decode("utf-8")
            with self.subTest(name):
                self.assertTrue(text.startswith('{\n    "data": [\n        {\n'))
                self.assertTrue(text.endswith('\n    ],\n    "version": 36\n}\n'))
                indents = {len(line) - len(line.lstrip(" ")) for line in text.splitlines()}
                self.assertEqual([], [indent for indent in indents if indent % 4])
                self.assertEqual([], re.findall(r"[ \t]+\n|\t|\r", text))

    def test_members_are_sorted_and_none_stands_twice(self):
        unsorted = []

        def check(pairs):
            keys = [key for key, _ in pairs]
            if keys != sorted(set(keys)):
                unsorted.append(keys)
            return dict(pairs)

        for name in LIBRARIES:
            with open(os.path.join(SAMPLES, name + ".json"), encoding="utf-8") as file:
                json.load(file, object_pairs_hook=check)
        self.assertEqual([], unsorted)

    def test_numbers_are_the_shortest_and_whole_ones_have_no_fraction(self):
        odd = []

        def check(text):
            number = float(text)
            if number.is_integer() or len(text) > len(repr(number)) or float(text) != float(repr(number)):
                odd.append(text)
            return number

        for name in LIBRARIES:
            with open(os.path.join(SAMPLES, name + ".json"), encoding="utf-8") as file:
                json.load(file, parse_float=check)
        self.assertEqual([], odd)


class Libraries(unittest.TestCase):
    """What holds a library together."""

    def test_a_library_has_eighty_to_two_hundred_and_fifty_tools(self):
        for name, document in DOCUMENTS.items():
            self.assertTrue(80 <= len(document["data"]) <= 250, "%s has %d" % (name, len(document["data"])))

    def test_version_is_the_current_one(self):
        for name, document in DOCUMENTS.items():
            self.assertEqual((["data", "version"], 36), (sorted(document), document["version"]), name)

    def test_units_are_those_of_the_name(self):
        for name, tool in every_tool():
            unit = UNITS[re.search(r"\((\w+)\)$", name).group(1)]
            self.assertEqual((unit, unit), (tool["unit"], tool.get("holder", tool)["unit"]), tool["product-id"])

    def test_types_are_known_and_of_the_family_of_the_library(self):
        for name, tool in every_tool():
            self.assertIn(tool["type"], RULES.keys["toolType"])
            self.assertEqual(name.startswith("Hole Making"), tool["type"] in HOLE_MAKING, tool["type"])

    def test_numbers_of_tools_count_from_one(self):
        for name, document in DOCUMENTS.items():
            numbers = [tool["post-process"]["number"] for tool in document["data"]]
            self.assertEqual(list(range(1, len(numbers) + 1)), numbers, name)
            for tool in document["data"]:
                post = tool["post-process"]
                self.assertEqual([post["number"]] * 2, [post["diameter-offset"], post["length-offset"]])

    def test_guids_are_unique_and_of_version_5(self):
        seen = {}
        for _, tool in every_tool():
            for guid, owner in [(tool["guid"], tool["product-id"])] + [
                    (preset["guid"], tool["product-id"] + preset["name"])
                    for preset in tool["start-values"]["presets"]]:
                self.assertEqual(guid, str(uuid.UUID(guid)))
                self.assertEqual(5, uuid.UUID(guid).version)
                self.assertNotIn(guid, seen, "%s and %s" % (owner, seen.get(guid)))
                seen[guid] = owner

    def test_guids_stay_what_they_are(self):
        # The GUID of a tool is how documents find it again; these must never change.
        guids = {tool["product-id"]: tool["guid"] for _, tool in every_tool()}
        self.assertEqual("365c8ec4-e7a4-52af-b11e-6de6fb5e5ff9", guids["EF4-M10"])
        self.assertEqual(str(uuid.uuid5(uuid.UUID("7c1f5a3e-90d4-4b6b-8f27-52a1c9e0d364"), "tool/TP-1_4-20UNC")),
                         guids["TP-1_4-20UNC"])

    def test_product_ids_and_descriptions_tell_tools_apart(self):
        ids = [tool["product-id"] for _, tool in every_tool()]
        self.assertEqual(len(ids), len(set(ids)))
        for product_id in ids:
            self.assertRegex(product_id, r"^[A-Z][A-Z0-9]*(-[A-Za-z0-9._]+)+$")
        for name, document in DOCUMENTS.items():
            texts = [tool["description"] for tool in document["data"]]
            self.assertEqual([], sorted(text for text in set(texts) if texts.count(text) > 1), name)

    def test_vendors_are_our_own(self):
        for _, tool in every_tool():
            self.assertIn(tool["vendor"], VENDORS)
            self.assertIn(tool.get("holder", tool)["vendor"], VENDORS)
            self.assertEqual("", tool["product-link"])

    def test_one_holder_is_the_same_wherever_it_stands(self):
        holders = {}
        for _, tool in every_tool():
            if "holder" in tool:
                self.assertEqual(tool["holder"], holders.setdefault(tool["holder"]["guid"], tool["holder"]))
        self.assertEqual(len(holders), len({holder["product-id"] for holder in holders.values()}))

    def test_known_sizes(self):
        for name, start, sizes in KNOWN_SIZES:
            found = [tool["geometry"] for tool in DOCUMENTS[name]["data"] if tool["description"].startswith(start)]
            self.assertEqual(1, len(found), start)
            self.assertEqual(sizes, {key: found[0][key] for key in sizes}, start)


class Tools(unittest.TestCase):
    """What a tool of its type must be."""

    def test_members_are_those_of_the_type(self):
        for _, tool in every_tool():
            kind = tool["type"]
            optional = {"holder", "shaft"} & set(tool) | ({"tapered-type"} if kind == "tapered mill" else set())
            self.assertEqual(TOOL_MEMBERS | optional, set(tool), tool["product-id"])
            angle = {"SIG"} if kind in HOLE_MAKING else {"TA", "shoulder-diameter"}
            self.assertEqual(GEOMETRY_MEMBERS | angle | OWN_MEMBERS.get(kind, set()), set(tool["geometry"]),
                             tool["product-id"])
            self.assertEqual("generic" if kind in HOLE_MAKING else "Mill Generic", tool["GRADE"])

    def test_every_rule_of_the_parameters_is_kept(self):
        broken = ["%s: %s" % (tool["product-id"], text) for _, tool in every_tool() for text in RULES.broken(tool)]
        self.assertEqual([], broken)

    def test_a_spoiled_tool_breaks_the_rule_that_it_spoils(self):
        for kind, path, value, text in SPOILED:
            tool = copy.deepcopy(next(tool for _, tool in every_tool() if tool["type"] == kind))
            self.assertEqual([], list(RULES.broken(tool)))
            target = tool
            for key in path[:-1]:
                target = target[key]
            target[path[-1]] = value
            self.assertTrue(any(text in told for told in RULES.broken(tool)),
                            "%s %s %s: %s" % (kind, path, value, list(RULES.broken(tool))))

    def test_expressions_mean_what_they_say(self):
        for text, value in EXPRESSIONS:
            self.assertAlmostEqual(value, Expression(text).value({"a": 3, "b": "y"}), msg=text)
        for text in ("1 +", "(1", "a ? 1", "1 2", "a & b", "", "1 + )"):
            with self.assertRaises(ValueError, msg=text):
                Expression(text)

    def test_lengths_are_in_order_and_sizes_positive(self):
        for _, tool in every_tool():
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
        for _, tool in every_tool():
            scale = MILLIMETERS[tool["unit"]]
            self.assertTrue(0.5 <= tool["geometry"]["DC"] * scale <= 160, tool["product-id"])
            self.assertTrue(25 <= tool["geometry"]["OAL"] * scale <= 300, tool["product-id"])

    def test_flutes_of_a_cone_cover_the_cone(self):
        for _, tool in every_tool():
            if tool["type"] in CONES:
                g = tool["geometry"]
                angle = g["SIG"] / 2 if "SIG" in g else g["TA"]
                cone = (g["DC"] - g["tip-diameter"]) / 2 / math.tan(math.radians(angle))
                self.assertAlmostEqual(cone, g["LCF"], places=5, msg=tool["product-id"])

    def test_a_tapered_ball_touches_its_sides(self):
        for _, tool in every_tool():
            if tool.get("tapered-type") == "tapered_ball":
                g = tool["geometry"]
                angle = math.radians(g["TA"])
                # Distance of the center of the ball from the side is the radius of the ball.
                distance = (g["DC"] / 2 + g["RE"] * math.tan(angle)) * math.cos(angle)
                self.assertAlmostEqual(g["RE"], distance, places=5, msg=tool["product-id"])

    def test_shoulders_of_mills_fit_their_shanks(self):
        for _, tool in every_tool():
            if tool["type"] in ("tapered mill", "slot mill", "woodruff cutter", "lollipop mill", "back chamfer mill"):
                g = tool["geometry"]
                self.assertLessEqual(g["shoulder-diameter"], g["SFDM"], tool["product-id"])

    def test_shafts_lead_from_the_shoulder_to_the_shank(self):
        for _, tool in every_tool():
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
        for _, tool in every_tool():
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
        for _, tool in every_tool():
            if tool["type"] == "drill":
                match = re.match(r"\w+ drill (#\d+|[A-Z]|[\d/-]+ in)[ ,]", tool["description"])
                if match:
                    named[match.group(1).replace(" in", "")] = tool["geometry"]["DC"]
        for _, tool in every_tool():
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
        for tool, preset in every_preset():
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

    def test_names_are_there_and_differ_within_a_tool(self):
        for _, tool in every_tool():
            names = [preset["name"] for preset in tool["start-values"]["presets"]]
            self.assertTrue(names and all(names) and len(names) == len(set(names)), tool["product-id"])

    def test_derived_values_follow_from_feed_and_speed(self):
        for tool, preset in every_preset():
            g, n, where = tool["geometry"], preset["n"], "%s %s" % (tool["product-id"], preset["name"])
            self.assertTrue(nearly(preset["f_z"], preset["v_f"] / (n * g["NOF"])), where)
            surface_speed = preset["v_c"] * (1000 if tool["unit"] == "millimeters" else 12)
            self.assertTrue(nearly(surface_speed, math.pi * g["DC"] * n), where)
            self.assertTrue(nearly(preset["f_n"], preset.get("v_f_plunge", preset["v_f"]) / n), where)

    def test_a_tap_advances_by_its_pitch(self):
        for tool, preset in every_preset():
            if tool["type"] in TAPS:
                pitch = tool["geometry"]["TP"]
                self.assertTrue(nearly(preset["v_f"], preset["n"] * pitch), tool["product-id"])
                self.assertTrue(nearly(preset["v_f_plunge"], preset["n"] * pitch), tool["product-id"])

    def test_speeds_suit_the_spindle_and_the_cutting_material(self):
        highest = {"hss": 80, "cobalt": 85, "carbide": 330, "coated carbide": 520}  # m/min
        for tool, preset in every_preset():
            where = "%s %s" % (tool["product-id"], preset["name"])
            self.assertEqual(int(preset["n"]), preset["n"], where)
            self.assertTrue(0 < preset["n"] <= HIGHEST_SPEED, where)
            meters = preset["v_c"] * (1 if tool["unit"] == "millimeters" else 0.3048)
            self.assertTrue(1 < meters <= highest[tool["BMC"]], "%s: %g m/min" % (where, meters))

    def test_feeds_suit_the_diameter(self):
        for tool, preset in every_preset():
            where = "%s %s" % (tool["product-id"], preset["name"])
            if tool["type"] in TAPS:
                continue
            diameter = tool["geometry"]["DC"] * MILLIMETERS[tool["unit"]]
            per_tooth = preset["f_z"] * MILLIMETERS[tool["unit"]]
            self.assertTrue(0.0005 < per_tooth <= 0.3 and per_tooth < 0.05 * diameter, "%s: %g mm" % (where, per_tooth))

    def test_harder_work_is_cut_no_faster(self):
        for _, tool in every_tool():
            speeds = {preset["material"]["category"]: preset["n"] for preset in tool["start-values"]["presets"]}
            order = [speeds[category] for category in ("stainless", "steel", "aluminium") if category in speeds]
            self.assertEqual(sorted(order), order, tool["product-id"])


class Holders(unittest.TestCase):
    """Holders that some tools are shown in."""

    def test_some_tools_have_a_holder_and_some_have_none(self):
        for name, document in DOCUMENTS.items():
            share = sum("holder" in tool for tool in document["data"]) / len(document["data"])
            self.assertTrue(0.3 < share < 0.9, "%s: %g" % (name, share))

    def test_gauge_lengths_are_sums(self):
        for _, tool in every_tool():
            reach = 0
            if "holder" in tool:
                reach = tool["holder"]["gaugeLength"]
                self.assertTrue(nearly(sum(s["height"] for s in tool["holder"]["segments"]), reach), tool["holder"])
            self.assertTrue(nearly(tool["geometry"]["LB"] + reach, tool["geometry"]["assemblyGaugeLength"]),
                            tool["product-id"])

    def test_a_holder_is_wider_than_the_shank_and_narrower_than_the_face_mill(self):
        for _, tool in every_tool():
            if "holder" in tool:
                segments = tool["holder"]["segments"]
                self.assertTrue(all(value > 0 for segment in segments for value in segment.values()))
                nose = max(segments[0].values())
                if tool["type"] == "face mill":  # it sits on a spigot, and the arbor must not rub on the work
                    self.assertLess(nose, tool["geometry"]["DC"], tool["product-id"])
                else:
                    self.assertGreater(nose, tool["geometry"]["SFDM"], tool["product-id"])


DOCUMENTS = {name: load(name) for name in LIBRARIES}
RULES = Rules(DEFINITIONS)

if __name__ == "__main__":
    unittest.main()
