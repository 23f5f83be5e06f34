"""Tests of the holders of the sample libraries: those that are tools of their own, and those that tools stand in.
Run by check_samples.py."""

import re
import unittest

from documents import DOCUMENTS, every_tool, family, nearly, spoken_length, tools_of
from expectations import MILLIMETERS

MEMBERS = {"description", "expressions", "gaugeLength", "guid", "product-id", "product-link", "segments", "type",
           "unit", "vendor"}
BLANKS = "Holders - Standard Taper Blanks"

# Flanges in mm: height from the gauge line, diameter. ISO 7388-1, ISO 7388-2, ASME B5.50, ISO 12164-1, ISO 26623-1.
FLANGES = {
    "BT30": (22, 46), "BT40": (27, 63), "BT50": (38, 100),
    "CAT30": (19.05, 46), "CAT40": (19.05, 63.5), "CAT50": (19.05, 98.4),
    "HSK40A": (20, 40), "HSK40E": (20, 40), "HSK50A": (26, 50), "HSK63A": (26, 63), "HSK80A": (26, 80),
    "HSK100A": (29, 100),
    "PSC40": (20, 40), "PSC50": (20, 50), "PSC63": (22, 63), "PSC80": (30, 80),
    "SK40": (19.1, 63.55), "SK50": (19.1, 97.5),
}

# Diameters of the nuts for the collets of ISO 15488, in mm.
NUTS = {11: 19, 16: 28, 20: 34, 25: 42, 32: 50, 40: 63}


def holder_tools(*names):
    return ((name, tool) for name, tool in tools_of("holder") if not names or name in names)


def parts(holder):
    """Taper, kind, size and reach of a product id such as "BT40-ER16-70", the last two as numbers."""
    taper, kind, size, reach = re.fullmatch(r"(\w+)-([A-Z]{2})([\d.]+)-([\d.]+)", holder["product-id"]).groups()
    return taper, kind, float(size), float(reach)


class HolderTools(unittest.TestCase):
    """Holders that are tools of their own."""

    def test_members_are_those_of_a_holder(self):
        for _, tool in holder_tools():
            self.assertEqual(MEMBERS, set(tool), tool["product-id"])
            for segment in tool["segments"]:
                self.assertEqual({"height", "lower-diameter", "upper-diameter"}, set(segment))
                self.assertTrue(all(value > 0 for value in segment.values()), tool["product-id"])

    def test_gauge_lengths_are_sums_and_follow_the_segments(self):
        for _, tool in holder_tools():
            heights = [segment["height"] for segment in tool["segments"]]
            self.assertTrue(nearly(sum(heights), tool["gaugeLength"]), tool["product-id"])
            names = ["segment_%d_height" % number for number in range(1, len(heights) + 1)]
            self.assertEqual({"tool_holderGaugeLength": " + ".join(names)}, tool["expressions"], tool["product-id"])

    def test_a_holder_ends_with_the_flange_of_its_taper(self):
        seen = set()
        for _, tool in holder_tools():
            taper = tool["product-id"].split("-")[0]
            seen.add(taper)
            flange, scale = tool["segments"][-1], MILLIMETERS[tool["unit"]]
            self.assertEqual(flange["lower-diameter"], flange["upper-diameter"], tool["product-id"])
            for value, expected in zip((flange["height"], flange["upper-diameter"]), FLANGES[taper]):
                self.assertAlmostEqual(expected, value * scale, delta=0.1, msg=tool["product-id"])
        self.assertEqual(set(FLANGES), seen)

    def test_gauge_lengths_are_the_reach_of_the_product_id(self):
        for _, tool in holder_tools("Holders (Inch)", "Holders (Metric)"):
            *_, reach = parts(tool)
            self.assertTrue(nearly(reach, tool["gaugeLength"]), tool["product-id"])

    def test_a_nose_is_wider_than_what_it_holds(self):
        for _, tool in holder_tools("Holders (Inch)", "Holders (Metric)"):
            _, kind, size, _ = parts(tool)
            nose, scale = tool["segments"][0], MILLIMETERS[tool["unit"]]
            if kind == "ER":
                self.assertAlmostEqual(NUTS[size], nose["upper-diameter"] * scale, delta=0.1, msg=tool["product-id"])
            elif kind not in ("MT", "TC"):
                self.assertGreater(nose["lower-diameter"], 1.3 * size, tool["product-id"])

    def test_a_nose_gets_no_narrower_towards_the_spindle(self):
        for name, tool in holder_tools():
            diameters = [segment[end] for segment in tool["segments"][:-1]
                         for end in ("lower-diameter", "upper-diameter")]
            self.assertEqual(sorted(diameters), diameters, tool["product-id"])

    def test_only_the_nose_is_a_cone(self):
        for _, tool in holder_tools():
            for segment in tool["segments"][1:]:
                self.assertEqual(segment["lower-diameter"], segment["upper-diameter"], tool["product-id"])

    def test_descriptions_name_taper_size_and_reach(self):
        for _, tool in holder_tools("Holders (Inch)", "Holders (Metric)"):
            taper, kind, size, reach = parts(tool)
            text, where = tool["description"], tool["product-id"]
            self.assertIn(re.sub(r"^HSK(\d+)A$", r"HSK-A\1", taper), text.replace(",", "").split(), where)
            lengths = [spoken_length(told, tool["unit"]) for told in re.findall(r"[\d./-]+ (?:mm|in)\b", text)]
            if kind in ("ER", "TC", "MT"):
                self.assertRegex(text, r" %s%g, " % (kind, size), where)
                self.assertEqual([reach], lengths, where)
            else:
                self.assertIn([round(length, 6) for length in lengths], ([size], [size, reach]), where)

    def test_every_kind_is_there_for_the_common_tapers(self):
        for name, taper, kinds in (("Holders (Metric)", "BT40", {"ER", "SL", "SF", "HC", "SA", "DC", "TC", "MC", "MT"}),
                                   ("Holders (Inch)", "CAT40", {"ER", "SL", "SF", "HC", "SA", "DC", "TC", "MC", "MT"}),
                                   ("Holders (Metric)", "HSK63A", {"ER", "SF", "HC", "SA"})):
            found = {parts(tool)[1] for _, tool in holder_tools(name) if parts(tool)[0] == taper}
            self.assertEqual(kinds, found, "%s %s" % (name, taper))

    def test_every_taper_of_the_blanks_has_its_bare_flange(self):
        tools = {tool["product-id"]: tool for tool in DOCUMENTS[BLANKS]["data"]}
        for taper in FLANGES:
            self.assertEqual(1, len(tools[taper + "-FL"]["segments"]), taper)

    def test_a_blank_is_a_bar_no_wider_than_its_flange(self):
        for _, tool in holder_tools(BLANKS):
            if "-BL" not in tool["product-id"]:
                continue
            diameter, length = map(float, re.search(r"-BL([\d.]+)-([\d.]+)$", tool["product-id"]).groups())
            bar, flange = tool["segments"]
            self.assertEqual((diameter, diameter), (bar["lower-diameter"], bar["upper-diameter"]), tool["product-id"])
            self.assertLessEqual(diameter, flange["lower-diameter"], tool["product-id"])
            self.assertTrue(nearly(length, tool["gaugeLength"]), tool["product-id"])
            told = re.search(r", (.+ \w\w) x (.+ \w\w)$", tool["description"]).groups()
            self.assertEqual((diameter, length), tuple(spoken_length(text, tool["unit"]) for text in told))


class AttachedHolders(unittest.TestCase):
    """Holders that tools stand in."""

    def attached(self):
        for _, tool in every_tool():
            if "holder" in tool and family(tool) != "turning":
                yield tool, tool["holder"]

    def test_members_and_gauge_lengths(self):
        for tool, holder in self.attached():
            self.assertEqual(MEMBERS - {"expressions"}, set(holder), tool["product-id"])
            self.assertEqual(("holder", "Quillon", ""), (holder["type"], holder["vendor"], holder["product-link"]))
            self.assertTrue(nearly(sum(segment["height"] for segment in holder["segments"]), holder["gaugeLength"]))

    def test_one_holder_is_the_same_wherever_it_stands(self):
        holders = {tool["guid"]: {key: tool[key] for key in tool if key != "expressions"} for _, tool in holder_tools()}
        own = len(holders)
        for _, holder in self.attached():
            self.assertEqual(holder, holders.setdefault(holder["guid"], holder))
        self.assertEqual(len(holders), len({holder["product-id"] for holder in holders.values()}))
        self.assertEqual(11, len(holders) - own)  # heads for deposition and bodies of probes

    def test_the_holders_of_rotating_tools_are_in_the_holder_libraries(self):
        known = {tool["guid"] for _, tool in holder_tools()}
        for _, tool in tools_of("mill", "hole making"):
            if "holder" in tool:
                self.assertIn(tool["holder"]["guid"], known, tool["holder"]["product-id"])
