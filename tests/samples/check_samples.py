#!/usr/bin/env python3
"""Tests of the sample libraries: they are what their generator writes, and every tool in them is a sound one.

    python3 tests/samples/check_samples.py

Needs the Python 3 standard library only. Ends with status 1 if a test fails.
"""

import copy
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import uuid

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from documents import (  # noqa: E402
    DOCUMENTS, ROOT, SAMPLES, every_tool, family, presets, rules_of, tools_of,
)
from expectations import (  # noqa: E402
    EXPRESSIONS, KNOWN_SIZES, LIBRARIES, LIBRARY_TOOLS, SPOILED, UNITS, VENDORS, WORK_MATERIALS,
)
from parameter_rules import Expression  # noqa: E402
from holder_checks import *  # noqa: E402, F401, F403  (the tests in it)
from process_checks import *  # noqa: E402, F401, F403
from rotating_checks import *  # noqa: E402, F401, F403
from turning_checks import *  # noqa: E402, F401, F403

GENERATOR = os.path.join(SAMPLES, "make_samples.py")


class Files(unittest.TestCase):
    """The files are what the generator writes, in the form of saved files."""

    def check_option(self, generator):
        return subprocess.run([sys.executable, generator, "--check"], capture_output=True, text=True)

    def test_committed_files_are_those_that_the_generator_writes(self):
        result = self.check_option(GENERATOR)
        self.assertEqual((0, ""), (result.returncode, result.stderr))

    def test_the_folder_holds_no_library_of_another_origin(self):
        found = sorted(name for name in os.listdir(SAMPLES) if name.endswith(".json"))
        self.assertEqual(sorted(name + ".json" for name in LIBRARIES), found)

    def test_the_libraries_are_those_that_the_engine_has_names_for(self):
        with open(os.path.join(ROOT, "ToolLibrary", "IO", "LibraryDisplayNames.cpp"), encoding="utf-8") as file:
            table = re.search(r"sampleLibraryNames\[\] = \{(.*?)\};", file.read(), re.DOTALL).group(1)
        self.assertEqual(LIBRARIES, re.findall(r'"(.*?)"', table))

    def test_the_page_about_the_samples_counts_right(self):
        with open(os.path.join(ROOT, "docs", "samples.md"), encoding="utf-8") as file:
            rows = re.findall(r"^\| ([\w() -]+?) +\| +(\d+) \|", file.read(), re.MULTILINE)
        self.assertEqual([(name, len(DOCUMENTS[name]["data"])) for name in LIBRARIES],
                         [(name, int(count)) for name, count in rows])

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

    def test_a_library_has_about_as_many_tools_as_a_person_expects(self):
        for name, (least, most, _) in LIBRARY_TOOLS.items():
            self.assertTrue(least <= len(DOCUMENTS[name]["data"]) <= most,
                            "%s has %d" % (name, len(DOCUMENTS[name]["data"])))

    def test_version_is_the_current_one(self):
        for name, document in DOCUMENTS.items():
            self.assertEqual((["data", "version"], 36), (sorted(document), document["version"]), name)

    def test_units_are_those_of_the_name(self):
        for name, document in DOCUMENTS.items():
            match = re.search(r"\((\w+)\)$", name)
            expected = {UNITS[match.group(1)]} if match else set(UNITS.values())
            self.assertEqual(expected, {tool["unit"] for tool in document["data"]}, name)

    def test_a_holder_has_the_unit_of_its_tool(self):
        for _, tool in every_tool():
            if "holder" in tool and family(tool) != "turning":
                self.assertEqual(tool["unit"], tool["holder"]["unit"], tool["product-id"])

    def test_types_are_known_and_those_of_the_library(self):
        for name, tool in every_tool():
            self.assertIn(tool["type"], rules_of(tool).keys["toolType"])
        for name, (_, _, types) in LIBRARY_TOOLS.items():
            self.assertEqual(types, {tool["type"] for tool in DOCUMENTS[name]["data"]}, name)

    def test_numbers_of_tools_count_from_one(self):
        offsets = ("compensation-offset", "diameter-offset", "length-offset")
        for name, document in DOCUMENTS.items():
            tools = [tool for tool in document["data"] if family(tool) != "holder"]
            numbers = [tool["post-process"]["number"] for tool in tools]
            self.assertEqual(list(range(1, len(numbers) + 1)), numbers, name)
            for tool in tools:
                post = tool["post-process"]
                held = [post[key] for key in offsets if key in post]
                self.assertEqual([post["number"]] * (1 if family(tool) == "turning" else 2), held)

    def test_guids_are_unique_and_of_version_5(self):
        seen = {}
        for _, tool in every_tool():
            for guid, owner in [(tool["guid"], tool["product-id"])] + [
                    (preset["guid"], tool["product-id"] + preset["name"]) for preset in presets(tool)]:
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
        self.assertEqual("deee823d-4ea8-5ace-bf13-8ecca6500624", guids["PCLNR-2525M12-CNMG120408"])
        self.assertEqual(str(uuid.uuid5(uuid.UUID("7c1f5a3e-90d4-4b6b-8f27-52a1c9e0d364"), "holder/BT40-ER16-70")),
                         guids["BT40-ER16-70"])

    def test_guids_follow_from_the_product_ids(self):
        namespace = uuid.UUID("7c1f5a3e-90d4-4b6b-8f27-52a1c9e0d364")
        for _, tool in every_tool():
            kind, product_id = "holder" if tool["type"] == "holder" else "tool", tool["product-id"]
            self.assertEqual(str(uuid.uuid5(namespace, "%s/%s" % (kind, product_id))), tool["guid"])
            for preset in presets(tool):
                name = "preset/%s/%s" % (product_id, preset["name"])
                self.assertEqual(str(uuid.uuid5(namespace, name)), preset["guid"])

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
            self.assertEqual("", tool["product-link"])

    def test_known_sizes(self):
        for name, start, sizes in KNOWN_SIZES:
            found = [{**tool.get("holder", {}), **tool.get("geometry", {})} for tool in DOCUMENTS[name]["data"]
                     if tool["description"].startswith(start)]
            self.assertEqual(1, len(found), start)
            self.assertEqual(sizes, {key: found[0][key] for key in sizes}, start)

    def test_presets_have_names_that_differ_within_a_tool(self):
        for _, tool in every_tool():
            names = [preset["name"] for preset in presets(tool)]
            self.assertTrue(all(names) and len(names) == len(set(names)), tool["product-id"])
            self.assertEqual(family(tool) == "holder", not names, tool["product-id"])

    def test_presets_for_chips_are_those_of_the_groups_of_work_materials(self):
        for _, tool in tools_of("mill", "hole making", "turning"):
            for preset in presets(tool):
                category, group = WORK_MATERIALS[preset["name"]]
                self.assertEqual({"category": category, "query": "", "use-hardness": False}, preset["material"])
                self.assertTrue(preset["description"].startswith("ISO 513 group %s, " % group), tool["product-id"])

    def test_one_work_material_is_described_in_one_way(self):
        texts = {(preset["name"], preset["description"]) for _, tool in every_tool() for preset in presets(tool)
                 if "material" in preset}
        self.assertEqual(sorted(WORK_MATERIALS), sorted(name for name, _ in texts))

    def test_presets_of_other_processes_name_their_work_in_full(self):
        for _, tool in tools_of("jet", "depositing", "probe"):
            self.assertEqual({""}, {preset["description"] for preset in presets(tool)}, tool["product-id"])

    def test_nothing_waits_for_a_person(self):
        for _, tool in every_tool():
            post = tool.get("post-process", {})
            self.assertFalse(post.get("manual-tool-change"), tool["product-id"])
            self.assertEqual(0, post.get("turret", 0), tool["product-id"])
            self.assertTrue(post.get("live", True), tool["product-id"])
            self.assertRegex(post.get("comment", ""), r"^((Tap drill|Bores from) .+)?$", tool["product-id"])
            if family(tool) not in ("mill", "hole making"):
                self.assertFalse(post.get("break-control"), tool["product-id"])


class Definitions(unittest.TestCase):
    """The tools and the definitions of the parameters."""

    def test_every_rule_of_the_parameters_is_kept(self):
        broken = ["%s: %s" % (tool["product-id"], text)
                  for _, tool in every_tool() for text in rules_of(tool).broken(tool)]
        self.assertEqual([], broken)

    def test_a_spoiled_tool_breaks_the_rule_that_it_spoils(self):
        for kind, path, value, text in SPOILED:
            tool = copy.deepcopy(next(tool for _, tool in every_tool() if tool["type"] == kind))
            self.assertEqual([], list(rules_of(tool).broken(tool)))
            target = tool
            for key in path[:-1]:
                target = target[key]
            target[path[-1]] = value
            self.assertTrue(any(text in told for told in rules_of(tool).broken(tool)),
                            "%s %s %s: %s" % (kind, path, value, list(rules_of(tool).broken(tool))))

    def test_expressions_mean_what_they_say(self):
        for text, value in EXPRESSIONS:
            self.assertAlmostEqual(value, Expression(text).value({"a": 3, "b": "y"}), msg=text)
        for text in ("1 +", "(1", "a ? 1", "1 2", "a & b", "", "1 + )"):
            with self.assertRaises(ValueError, msg=text):
                Expression(text)

    def test_what_the_type_wants_is_there(self):
        missing = ["%s: %s" % (tool["product-id"], name)
                   for _, tool in tools_of("turning", "jet", "depositing", "probe", "holder")
                   for name in rules_of(tool).missing(tool)]
        self.assertEqual([], missing)

    def test_a_member_taken_away_is_missed(self):
        for kind, path, name in (("turning grooving", ("geometry", "tool_grooveWidth"), "tool_grooveWidth"),
                                 ("turning general", ("setup", "compensation"), "tool_compensation"),
                                 ("laser cutter", ("start-values", "presets", 0, "cutPower"), "tool_cutPower"),
                                 ("probe", ("geometry", "LB"), "tool_bodyLength")):
            tool = copy.deepcopy(next(tool for _, tool in every_tool() if tool["type"] == kind))
            target = tool
            for key in path[:-1]:
                target = target[key]
            del target[path[-1]]
            self.assertTrue(any(text.endswith(name) for text in rules_of(tool).missing(tool)), name)

    def test_what_follows_from_the_style_of_a_turning_tool_is_what_follows(self):
        underived = ["%s: %s" % (tool["product-id"], text)
                     for _, tool in tools_of("turning") for text in rules_of(tool).underived(tool)]
        self.assertEqual([], underived)


if __name__ == "__main__":
    unittest.main()
