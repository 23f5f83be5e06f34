#!/usr/bin/env python3
"""Writes docs/parameters.md from the definitions of the tool parameters.

make_parameters.py          writes the page
make_parameters.py --check  tells whether it is up to date: status 0 or 1
"""

import json
import os
import re
import sys
import textwrap

HERE = os.path.dirname(os.path.abspath(__file__))
DATA = os.path.join(HERE, "..", "platform", "core", "data", "tool-parameters.json")
UNITS = os.path.join(HERE, "..", "platform", "core", "Units.cpp")
PAGE = os.path.join(HERE, "parameters.md")
WIDTH = 120
LABEL = 16

STRATEGIES = {207: "all tools", 198: "rotating", 212: "turning", 213: "jet", 214: "depositing", 97: "unspecified"}

HEAD = """# Tool parameters

What a `ParameterTable` holds for each kind of tool. This page is made of `platform/core/data/tool-parameters.json` by
`docs/make_parameters.py`; change the definitions, not the page.

A table belongs to a *strategy*, the set of parameters of a family of tools: {strategies}. What is listed for *all
tools* is in each of them. A value is an expression ([the language](expressions.md)) with a unit; until somebody sets
one, the *default* counts, in the unit of the parameter. A parameter is *enabled* where its condition is true, or
always; while it is disabled it keeps its value and its constraints do not count. What stands under *error* and
*warning* must be true for a good value; the text beside it tells people what is wrong. What one strategy has
otherwise follows under *in*.

The {count} parameters have the flag 38 (they belong to the tool library); those of *state* have 1 (they follow the
attachments of the tool and are no column of a spreadsheet). *Preset* marks feeds and speeds.

"""

MIDDLE = """
Numbered parameters, with a number from 1 in place of `<n>`, may be in every table. They have no defaults, are there
once they have been set, and have the flag 2 (computed, never stored):

"""


def unit_symbols():
    """By the number of the unit; the rows of the source begin at -2."""
    with open(UNITS, encoding="utf-8") as file:
        rows = re.findall(r'^    \{ "[^"]+", +"([^"]*)",', file.read(), re.M)
    return {number: symbol.encode().decode("unicode_escape") for number, symbol in enumerate(rows, -2)}


SYMBOLS = unit_symbols()


def paragraph(text):
    return textwrap.fill(text, WIDTH, break_long_words=False, break_on_hyphens=False)


def entry(label, text):
    """An indented line with a label, the text below itself where it is long."""
    first = "    " + label.ljust(LABEL)
    return textwrap.wrap(text, WIDTH, initial_indent=first, subsequent_indent=" " * (4 + LABEL),
                         break_long_words=False, break_on_hyphens=False) or [first.rstrip()]


def expressions(row, units):
    lines = []
    if "defaultExp" in row:
        metric, inch = row["defaultExp"]["metric"], row["defaultExp"]["inch"]
        if metric == inch:
            lines += entry("default", metric)
        else:
            labels = units if units[0] != units[1] else ("metric", "inch")
            lines += entry("default " + labels[0], metric) + entry("default " + labels[1], inch)
    if "enableExp" in row and (row["enableExp"] or "number" not in row):
        lines += entry("enabled", row["enableExp"] or "always")
    if row.get("disabledExp"):
        lines += entry("disabled", row["disabledExp"])
    for kind in ("errors", "warnings"):
        if kind in row and not row[kind] and "number" not in row:
            lines += entry(kind[:-1], "none")
        for constraint in row.get(kind, []):
            lines += entry(kind[:-1], constraint["expression"]) + entry("", constraint["message"])
    return lines


def parameter(row, data):
    kind = {k["kind"]: k for k in data["kinds"]}[row["kind"]]
    value_type = {t["valueType"]: t["name"] for t in data["valueTypes"]}[row["valueType"]]
    units = (SYMBOLS[kind["unitMetric"]], SYMBOLS[kind["unitInch"]])
    what = value_type.capitalize()
    if row["kind"]:
        what += ", " + kind["name"] + " (" + ", ".join(dict.fromkeys(units)) + ")"
    if row["enumeration"]:
        what += " `" + row["enumeration"] + "`"
    marks = (["preset"] if row["feedSpeed"] else []) + (["state"] if 1 in row["flags"] else [])
    where = ", ".join(STRATEGIES[s] for s in row["strategies"])
    page = ["### `%s`" % row["id"], "",
            paragraph("*%s* (%d). %s. %s. In: %s%s." % (row["fullTitle"], row["number"], row["description"], what,
                                                       where, "".join("; " + mark for mark in marks))), ""]
    lines = expressions(row, units)
    for other in row["overrides"]:
        lines += entry("in " + STRATEGIES[other["strategy"]] + ":",
                       ", ".join(other[k] for k in ("fullTitle", "description") if k in other))
        lines += expressions(other, units)
    return page + lines + ([""] if lines else [])


def enumerations(data):
    page = ["## Enumerations", "",
            paragraph("The values of each with what people read, in their order. Where a strategy is named, only its "
                      "tables have the value; where a condition stands below, it is offered while that is true."), ""]
    for name in dict.fromkeys(e["enumeration"] for e in data["enumerations"]):
        page += ["### `%s`" % name, ""]
        for value in (e for e in data["enumerations"] if e["enumeration"] == name):
            where = ""
            if value["strategies"] is not None:
                where = " (" + ", ".join(STRATEGIES[s] for s in value["strategies"]) + ")"
            page += entry("'%s'" % value["key"], " " + value["title"] + where)
            if value["enableExp"]:
                page += entry("", "  " + value["enableExp"])
        page.append("")
    return page


def links(data):
    page = ["## Links", "",
            paragraph("What an edit by a person changes along (`LinkedParameter`), row by row: each sees what the rows "
                      "before it changed, and what they change starts no rows of its own. A division by zero gives "
                      "0."), ""]
    for row in data["links"]:
        page += entry(row["set"], " sets " + row["updates"] + " = " + row["formula"] + "; " +
                      ", ".join(STRATEGIES[s] for s in row["strategies"]))
        if row.get("when"):
            page += entry("", "  when " + row["when"])
    return page + [""]


def make(data):
    names = ", ".join("%s (%d)" % (name, number) for number, name in STRATEGIES.items() if number != 207)
    head = HEAD.format(strategies=names, count=len(data["parameters"]))
    paragraphs = [part if part.startswith("#") else paragraph(part) for part in head.strip().split("\n\n")]
    page = ["\n\n".join(paragraphs), "", "## Parameters", ""]
    for row in data["parameters"]:
        page += parameter(row, data)
    page += [paragraph(MIDDLE.strip()), ""]
    for row in data["dynamicParameters"]:
        page.append("    %-28s %s" % (row["pattern"], row["description"]))
    page += [""] + enumerations(data) + links(data)
    return "\n".join(line.rstrip() for line in page).rstrip() + "\n"


def main():
    with open(DATA, encoding="utf-8") as file:
        page = make(json.load(file))
    if sys.argv[1:] == ["--check"]:
        with open(PAGE, encoding="utf-8") as file:
            if file.read() == page:
                return 0
        print("docs/parameters.md is not what docs/make_parameters.py makes of the definitions", file=sys.stderr)
        return 1
    with open(PAGE, "w", encoding="utf-8", newline="\n") as file:
        file.write(page)
    return 0


if __name__ == "__main__":
    sys.exit(main())
