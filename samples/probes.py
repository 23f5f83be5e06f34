"""The library "Probes": touch probes with their styli.

A stylus is a ball of the diameter DC on a stem of the diameter SFDM; the stem is free up to the shoulder length, where
the stylus gets wider. The body length reaches to the body of the probe, which is its holder.
"""

from holders import attached
from library import INCH, METRIC, plain, size

# Outlines of the probe bodies, from the stylus to the gauge line: height, diameter at the nose side, at the other.
BODIES = {
    METRIC.name: {
        "standard": ("BT40-TP40-95", "Touch probe 40 mm, BT40",
                     [(8, 22, 40), (44, 40, 40), (16, 50, 50), (27, 63, 63)]),
        "compact":  ("HSK63A-TP25-85", "Compact touch probe 25 mm, HSK-A63",
                     [(6, 14, 25), (37, 25, 25), (16, 50, 50), (26, 63, 63)]),
    },
    INCH.name: {
        "standard": ("CAT40-TP1.575-3.75", "Touch probe 1.575 in, CAT40",
                     [(0.315, 0.87, 1.575), (2.06, 1.575, 1.575), (0.625, 1.97, 1.97), (0.75, 2.5, 2.5)]),
        "compact":  ("CAT40-TP1-3.35", "Compact touch probe 1 in, CAT40",
                     [(0.24, 0.55, 1), (1.735, 1, 1), (0.625, 1.97, 1.97), (0.75, 2.5, 2.5)]),
    },
}

METRIC_STYLI = [
    # ball stem free length thread stem of     body
    (1,    0.7, 4,   20,    6,     "carbide",  "compact"),
    (2,    1.4, 10,  20,    6,     "carbide",  "compact"),
    (3,    2,   16,  30,    6,     "carbide",  "compact"),
    (4,    3,   31,  50,    6,     "carbide",  "compact"),
    (2,    1.4, 14,  50,    6,     "carbide",  "standard"),
    (4,    3,   38,  50,    6,     "carbide",  "standard"),
    (6,    4.5, 50,  50,    6,     "ceramics", "standard"),
    (6,    4.5, 100, 100,   6,     "ceramics", "standard"),
    (8,    5.5, 100, 100,   6,     "ceramics", "standard"),
    (6,    4.5, 150, 150,   6,     "ceramics", "standard"),
]
INCH_STYLI = [
    (0.079, 0.055, 0.4,  0.8,   0.236, "carbide",  "compact"),
    (0.118, 0.079, 0.63, 1.2,   0.236, "carbide",  "compact"),
    (0.157, 0.118, 1.5,  2,     0.236, "carbide",  "standard"),
    (0.236, 0.177, 2,    2,     0.236, "ceramics", "standard"),
    (0.236, 0.177, 4,    4,     0.236, "ceramics", "standard"),
    (0.315, 0.217, 4,    4,     0.236, "ceramics", "standard"),
]

MATERIAL_WORDS = {"carbide": "carbide stem", "ceramics": "ceramic stem"}

# Feedrates in mm/min and in/min: lead-in, measuring, link. A thin or long stylus bends, so it goes slower.
FEEDRATES = {
    METRIC.name: {"Standard": (1000, 100, 3000), "Fine": (500, 30, 2000)},
    INCH.name:   {"Standard": (40, 4, 120),      "Fine": (20, 1.2, 80)},
}


def presets(unit):
    return [{"description": "", "name": name, "v_f_leadIn": lead_in, "v_f_link": link, "v_f_measure": measure}
            for name, (lead_in, measure, link) in FEEDRATES[unit.name].items()]


def stylus_geometry(ball, stem, free, length, thread, gauge_length):
    return {
        "CSP": False, "DC": ball, "HAND": True, "LB": length, "LCF": ball, "NOF": 1, "NT": 1,
        "OAL": round(length + thread, 6), "RE": ball / 2, "SFDM": stem, "TA": 0, "TP": 0,
        "assemblyGaugeLength": round(gauge_length + length, 6), "shoulder-length": free, "thread-profile-angle": 60,
        "tip-diameter": 0, "tip-length": 0, "tip-offset": 0,
    }


def fill(shelf, rows):
    """Rows: diameter of the ball, diameter of the stem, free length, length to the body, length of the thread in the
    body, what the stem is made of, body."""
    for ball, stem, free, length, thread, material, body in rows:
        key, title, outline = BODIES[shelf.unit.name][body]
        holder = attached(shelf.unit, key, title, outline)
        shelf.put("probe", "PR-%s%s-%s-%s" % (shelf.unit.letter, plain(ball), plain(length), body.upper()[0]),
                  "Probe, ball %s, length %s, %s, %s body" % (size(ball, shelf.unit), size(length, shelf.unit),
                                                              MATERIAL_WORDS[material], body),
                  BMC=material, holder=holder, post_process=shelf.post_process(),
                  geometry=stylus_geometry(ball, stem, free, length, thread, holder["gaugeLength"]),
                  start_values={"presets": presets(shelf.unit)})
