"""Holders that tools are shown in, as outlines for the check of collisions.

The outline is simplified: nut or nose, body, flange. Flanges after ISO 7388-2 (BT), ISO 12164-1 (HSK-A) and ASME B5.50
(CAT); nuts for the collets of ISO 15488; noses of shrink chucks after DIN 69882-8; spigots of shell mill arbors after
ISO 6462. A row counts from the nose to the gauge line: height, diameter at the nose side, diameter at the spindle side.
"""

from library import INCH, METRIC, VENDOR, guid

# Flanges.
BT40 = (27, 63, 63)
HSK63A = (26, 63, 63)
CAT40 = (0.75, 2.5, 2.5)

METRIC_HOLDERS = {
    "BT40-ER16-70":    ("Collet chuck BT40 ER16, 70 mm", [(2, 24, 28), (41, 28, 28), BT40]),
    "BT40-ER20-70":    ("Collet chuck BT40 ER20, 70 mm", [(2, 30, 34), (41, 34, 34), BT40]),
    "BT40-ER32-70":    ("Collet chuck BT40 ER32, 70 mm", [(2, 45, 50), (41, 50, 50), BT40]),
    "BT40-SL25-90":    ("Side lock holder BT40, 25 mm",  [(2, 61, 65), (61, 65, 65), BT40]),
    "BT40-SL32-100":   ("Side lock holder BT40, 32 mm",  [(2, 68, 72), (71, 72, 72), BT40]),
    "BT40-SA16-45":    ("Shell mill arbor BT40, 16 mm",  [(18, 38, 38), BT40]),
    "BT40-SA22-45":    ("Shell mill arbor BT40, 22 mm",  [(18, 48, 48), BT40]),
    "BT40-SA27-50":    ("Shell mill arbor BT40, 27 mm",  [(23, 58, 58), BT40]),
    "BT40-SA32-60":    ("Shell mill arbor BT40, 32 mm",  [(33, 78, 78), BT40]),
    "BT40-SA40-60":    ("Shell mill arbor BT40, 40 mm",  [(33, 88, 88), BT40]),
    "HSK63A-SF6-80":   ("Shrink chuck HSK-A63, 6 mm",    [(36, 21, 27), (18, 50, 50), HSK63A]),
    "HSK63A-SF8-80":   ("Shrink chuck HSK-A63, 8 mm",    [(36, 21, 27), (18, 50, 50), HSK63A]),
    "HSK63A-SF10-85":  ("Shrink chuck HSK-A63, 10 mm",   [(42, 24, 32), (17, 50, 50), HSK63A]),
    "HSK63A-SF12-90":  ("Shrink chuck HSK-A63, 12 mm",   [(47, 24, 32), (17, 50, 50), HSK63A]),
    "HSK63A-SF16-95":  ("Shrink chuck HSK-A63, 16 mm",   [(50, 27, 34), (19, 50, 50), HSK63A]),
    "HSK63A-SF20-100": ("Shrink chuck HSK-A63, 20 mm",   [(52, 33, 42), (22, 50, 50), HSK63A]),
}

INCH_HOLDERS = {
    "CAT40-ER16-2.75":    ("Collet chuck CAT40 ER16, 2.75 in", [(0.08, 0.94, 1.1), (1.92, 1.1, 1.1), CAT40]),
    "CAT40-ER20-2.75":    ("Collet chuck CAT40 ER20, 2.75 in", [(0.08, 1.18, 1.34), (1.92, 1.34, 1.34), CAT40]),
    "CAT40-ER32-2.75":    ("Collet chuck CAT40 ER32, 2.75 in", [(0.08, 1.77, 1.97), (1.92, 1.97, 1.97), CAT40]),
    "CAT40-ER40-2.75":    ("Collet chuck CAT40 ER40, 2.75 in", [(0.08, 2.2, 2.48), (1.92, 2.48, 2.48), CAT40]),
    "CAT40-SL0.5-2.625":  ("End mill holder CAT40, 1/2 in",    [(0.075, 1.25, 1.375), (1.8, 1.375, 1.375), CAT40]),
    "CAT40-SL0.75-2.625": ("End mill holder CAT40, 3/4 in",    [(0.075, 1.625, 1.75), (1.8, 1.75, 1.75), CAT40]),
    "CAT40-SL1-2.625":    ("End mill holder CAT40, 1 in",      [(0.075, 1.875, 2), (1.8, 2, 2), CAT40]),
    "CAT40-SL1.25-4":     ("End mill holder CAT40, 1-1/4 in",  [(0.075, 2.375, 2.5), (3.175, 2.5, 2.5), CAT40]),
    "CAT40-SA0.5-1.75":   ("Shell mill arbor CAT40, 1/2 in",   [(1, 1.25, 1.25), CAT40]),
    "CAT40-SA0.75-1.75":  ("Shell mill arbor CAT40, 3/4 in",   [(1, 1.75, 1.75), CAT40]),
    "CAT40-SA1-1.75":     ("Shell mill arbor CAT40, 1 in",     [(1, 2.1875, 2.1875), CAT40]),
    "CAT40-SA1.25-2":     ("Shell mill arbor CAT40, 1-1/4 in", [(1.25, 2.75, 2.75), CAT40]),
    "CAT40-SA1.5-2.25":   ("Shell mill arbor CAT40, 1-1/2 in", [(1.5, 3.75, 3.75), CAT40]),
}

HOLDERS = {METRIC: METRIC_HOLDERS, INCH: INCH_HOLDERS}

# Which holder takes which shank or bore: up to the diameter of the row. A slim holder is one for finishing.
CHOICES = {
    METRIC: {
        "collet":    [(10, "BT40-ER16-70"), (20, "BT40-ER32-70"), (25, "BT40-SL25-90"), (32, "BT40-SL32-100")],
        "slim":      [(6, "HSK63A-SF6-80"), (8, "HSK63A-SF8-80"), (10, "HSK63A-SF10-85"), (12, "HSK63A-SF12-90"),
                      (16, "HSK63A-SF16-95"), (20, "HSK63A-SF20-100")],
        "side lock": [(25, "BT40-SL25-90"), (32, "BT40-SL32-100")],
        "tap":       [(13, "BT40-ER20-70"), (20, "BT40-ER32-70")],
        "arbor":     [(16, "BT40-SA16-45"), (22, "BT40-SA22-45"), (27, "BT40-SA27-50"), (32, "BT40-SA32-60"),
                      (40, "BT40-SA40-60")],
    },
    INCH: {
        "collet":    [(0.375, "CAT40-ER16-2.75"), (0.75, "CAT40-ER32-2.75"), (1, "CAT40-SL1-2.625"),
                      (1.25, "CAT40-SL1.25-4")],
        "slim":      [(0.375, "CAT40-ER16-2.75"), (0.75, "CAT40-ER32-2.75"), (1, "CAT40-SL1-2.625")],
        "side lock": [(0.5, "CAT40-SL0.5-2.625"), (0.75, "CAT40-SL0.75-2.625"), (1, "CAT40-SL1-2.625"),
                      (1.25, "CAT40-SL1.25-4")],
        "tap":       [(0.5, "CAT40-ER20-2.75"), (0.75, "CAT40-ER32-2.75"), (1, "CAT40-ER40-2.75")],
        "arbor":     [(0.5, "CAT40-SA0.5-1.75"), (0.75, "CAT40-SA0.75-1.75"), (1, "CAT40-SA1-1.75"),
                      (1.25, "CAT40-SA1.25-2"), (1.5, "CAT40-SA1.5-2.25")],
    },
}

# Length of a cylindrical shank that the holder covers. Metric: the shanks of DIN 6535; inch: twice to six times the
# diameter, what is left of the usual short overall lengths.
SHANK_LENGTHS = {
    METRIC: [(5, 28), (8, 36), (10, 40), (14, 45), (18, 48), (20, 50), (25, 56), (32, 60)],
    INCH: [(0.125, 0.75), (0.1875, 1), (0.375, 1.25), (0.4375, 1.375), (0.5, 1.5), (0.625, 1.625), (0.75, 1.75), (1, 2),
           (1.25, 2.25)],
}


def _first(rows, diameter):
    return next(value for limit, value in rows if diameter <= limit)


def clamped_length(unit, shank):
    """How much of a cylindrical shank is inside the holder."""
    return _first(SHANK_LENGTHS[unit], shank)


def outline_segments(outline):
    return [{"height": height, "lower-diameter": lower, "upper-diameter": upper} for height, lower, upper in outline]


def attached(unit, key, description, outline):
    """A holder as a tool has it."""
    return {
        "description": description,
        "gaugeLength": round(sum(height for height, _, _ in outline), 6),
        "guid": guid("holder", key),
        "product-id": key,
        "product-link": "",
        "segments": outline_segments(outline),
        "type": "holder",
        "unit": unit.name,
        "vendor": VENDOR,
    }


def holder(unit, kind, diameter):
    """The holder of a kind, see CHOICES, for a shank or bore; None for no kind."""
    if kind is None:
        return None
    key = _first(CHOICES[unit][kind], diameter)
    description, outline = HOLDERS[unit][key]
    return attached(unit, key, description, outline)
