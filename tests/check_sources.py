#!/usr/bin/env python3
"""Checks the language of the tree: no leftovers, no tabs, no line that a reader cannot follow.

Prints each line that breaks a rule and ends with status 1 if there is one.
"""

import re
import subprocess
import sys

# What must not stand in any text file: pattern, why.
RULES = [
    (re.compile(r"\b(TODO|FIXME|XXX|HACK)\b"), "unfinished work belongs into the tracker"),
    (re.compile(r"[ \t]+$"), "blanks at the end of the line"),
    (re.compile(r"\t"), "a tab"),
    (re.compile(r"^(<<<<<<<|=======|>>>>>>>)( |$)"), "a conflict marker"),
    (re.compile(r"/(root|work)/\w"), "a path of one machine"),
]
# What sources must not hold beside that.
SOURCE_RULES = [
    (re.compile(r"\b(DISABLED_|GTEST_SKIP)"), "a test that does not run"),
    (re.compile(r"\busing namespace std;"), "all of std in scope"),
    (re.compile(r"\bstd::endl\b"), "a flush that nobody needs"),
]
# What the libraries must not hold beside that.
LIBRARY_RULES = [
    (re.compile(r"\b(printf|std::cout|std::cerr)\b"), "a library prints nothing"),
]
LIBRARIES = ("ToolLibrary/", "platform/")
SOURCES = (".cpp", ".h", ".cmake", "CMakeLists.txt", ".py")
TEXTS = SOURCES + (".md", ".txt", "dev", ".ci/run")
EXCEPT = {"tests/check_sources.py"}
MAXIMUM_LINES = 600


def files():
    listing = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], check=True,
                             capture_output=True, text=True).stdout
    return [name for name in listing.splitlines() if name.endswith(TEXTS) and name not in EXCEPT]


def faults(name):
    try:
        text = open(name, encoding="utf-8").read()
    except FileNotFoundError:  # removed, and not yet told to git
        return
    except UnicodeDecodeError:
        yield 1, "no UTF-8"
        return
    lines = text.split("\n")
    rules = RULES + (SOURCE_RULES if name.endswith((".cpp", ".h")) else [])
    rules += LIBRARY_RULES if name.startswith(LIBRARIES) else []
    for number, line in enumerate(lines, 1):
        for pattern, why in rules:
            if pattern.search(line):
                yield number, why
    if text and not text.endswith("\n"):
        yield len(lines), "no newline at the end"
    if name.endswith((".cpp", ".h")) and len(lines) > MAXIMUM_LINES:
        yield len(lines), "longer than %d lines: does it still hold one thing?" % MAXIMUM_LINES
    if name.endswith(".h") and "#pragma once" not in text:
        yield 1, "no #pragma once"


def main():
    found = 0
    for name in files():
        for number, why in faults(name):
            print("%s:%d: %s" % (name, number, why))
            found += 1
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
