"""The library "Holders - Standard Taper Blanks": a flange to begin a holder with, and blanks that are turned to shape.

Flanges are those of holders_metric.py and holders_inch.py. A blank is a bar on the flange, no wider than the flange.
"""

import holders_inch
import holders_metric
from holder_tools import put_holder, taper_name
from library import METRIC, plain, size

METRIC_BARS = [
    # taper     bars: diameter and length from the gauge line
    ("BT30",    [(40, 100)]),
    ("BT40",    [(50, 120), (63, 200)]),
    ("BT50",    [(80, 150), (100, 250)]),
    ("SK40",    [(50, 120), (63, 200)]),
    ("SK50",    [(80, 150)]),
    ("HSK40E",  []),
    ("HSK40A",  [(34, 80)]),
    ("HSK50A",  [(42, 100)]),
    ("HSK63A",  [(53, 120), (63, 200)]),
    ("HSK80A",  []),
    ("HSK100A", [(85, 160)]),
    ("PSC40",   [(40, 80)]),
    ("PSC50",   [(50, 100)]),
    ("PSC63",   [(63, 120)]),
    ("PSC80",   []),
]
INCH_BARS = [
    ("CAT30",   [(1.5, 3)]),
    ("CAT40",   [(1.75, 4), (2.5, 8)]),
    ("CAT50",   [(2.75, 6), (3.875, 10)]),
]


def fill(shelf, rows):
    tables = holders_metric if shelf.unit is METRIC else holders_inch
    for taper, bars in rows:
        flange = tables.FLANGES[taper]
        put_holder(shelf, "%s-FL" % taper, "Flange %s" % taper_name(taper), [flange])
        for diameter, length in bars:
            key = "%s-BL%s-%s" % (taper, plain(diameter), plain(length))
            sizes = taper_name(taper), size(diameter, shelf.unit), size(length, shelf.unit)
            put_holder(shelf, key, "Blank %s, %s x %s" % sizes,
                       [(round(length - flange[0], 6), diameter, diameter), flange])
