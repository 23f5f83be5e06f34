#!/usr/bin/env python3
"""Write the sample libraries that a fresh machine has.

    make_samples.py           write them beside this script
    make_samples.py --check   write nothing; exit 1 and name each file that differs from what would be written

The same bytes come out on any machine: nothing is drawn, and no clock or environment is read. Only the Python 3
standard library is used. All tools are invented; sizes are those of public standards, which the tables name.

A library is a row of LIBRARIES: its name, the function that puts its tools on a shelf, and its parts, each a unit and
the module or table with the sizes in it.
"""

import argparse
import os
import sys

sys.dont_write_bytecode = True  # the folder is shipped as it is
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import blanks  # noqa: E402
import depositing  # noqa: E402
import hole_making  # noqa: E402
import hole_making_inch  # noqa: E402
import hole_making_metric  # noqa: E402
import holder_tools  # noqa: E402
import holders_inch  # noqa: E402
import holders_metric  # noqa: E402
import jets  # noqa: E402
import mills  # noqa: E402
import mills_inch  # noqa: E402
import mills_metric  # noqa: E402
import probes  # noqa: E402
import turning  # noqa: E402
import turning_inch  # noqa: E402
import turning_metric  # noqa: E402
import tutorial  # noqa: E402
from library import INCH, METRIC, Shelf  # noqa: E402

LIBRARIES = [
    ("Cutting Tools (Inch)",            jets.fill,         [(INCH, jets.CUTTING)]),
    ("Cutting Tools (Metric)",          jets.fill,         [(METRIC, jets.CUTTING)]),
    ("Depositing Tools",                depositing.fill,   [(METRIC, depositing.HEADS), (INCH, depositing.INCH_HEADS)]),
    ("Holders - Standard Taper Blanks", blanks.fill,       [(METRIC, blanks.METRIC_BARS), (INCH, blanks.INCH_BARS)]),
    ("Holders (Inch)",                  holder_tools.fill, [(INCH, holders_inch)]),
    ("Holders (Metric)",                holder_tools.fill, [(METRIC, holders_metric)]),
    ("Hole Making Tools (Inch)",        hole_making.fill,  [(INCH, hole_making_inch)]),
    ("Hole Making Tools (Metric)",      hole_making.fill,  [(METRIC, hole_making_metric)]),
    ("Milling Tools (Inch)",            mills.fill,        [(INCH, mills_inch)]),
    ("Milling Tools (Metric)",          mills.fill,        [(METRIC, mills_metric)]),
    ("Probes",                          probes.fill,       [(METRIC, probes.METRIC_STYLI), (INCH, probes.INCH_STYLI)]),
    ("Turning Tools (Inch)",            turning.fill,      [(INCH, turning_inch)]),
    ("Turning Tools (Metric)",          turning.fill,      [(METRIC, turning_metric)]),
    ("Tutorial Tools (Inch)",           tutorial.fill,     [(INCH, tutorial.INCH_CHOICE)]),
    ("Tutorial Tools (Metric)",         tutorial.fill,     [(METRIC, tutorial.METRIC_CHOICE)]),
]


def texts():
    """File name and whole text of each library."""
    for name, fill, parts in LIBRARIES:
        shelf = Shelf()
        for shelf.unit, sizes in parts:
            fill(shelf, sizes)
        yield name + ".json", shelf.text()


def differing(folder):
    """Names of the files in the folder that are missing or not as they would be written."""
    for name, text in texts():
        try:
            with open(os.path.join(folder, name), "rb") as file:
                if file.read() == text.encode("utf-8"):
                    continue
        except FileNotFoundError:
            pass
        yield name


def main():
    parser = argparse.ArgumentParser(description="Write the sample libraries beside this script.")
    parser.add_argument("--check", action="store_true", help="write nothing; exit 1 if a file differs, and name it")
    arguments = parser.parse_args()
    folder = os.path.dirname(os.path.abspath(__file__))
    if arguments.check:
        names = list(differing(folder))
        for name in names:
            print("%s differs from what make_samples.py writes" % name, file=sys.stderr)
        return 1 if names else 0
    for name, text in texts():
        with open(os.path.join(folder, name), "wb") as file:
            file.write(text.encode("utf-8"))
    return 0


if __name__ == "__main__":
    sys.exit(main())
