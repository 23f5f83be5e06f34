"""The libraries "Tutorial Tools": a small set for someone who learns, one or a few of every common kind, in the sizes
that the first parts need. The tools are those of the large libraries, picked by the first columns of their tables, and
have product ids of their own, which begin with TU.
"""

from typing import NamedTuple

import hole_making
import hole_making_inch
import hole_making_metric
import jets
import mills
import mills_inch
import mills_metric
import probes
import turning
import turning_inch
import turning_metric
from mills import COPYING, CORNERED, EDGE, FACING, GROOVING, SIDE, Series


class Choice(NamedTuple):
    """The modules with the tables, and what is picked from them."""
    mills: object
    holes: object
    turning: object
    flat: list
    ball: list
    bull: list
    face: list
    chamfer: list
    slot: list
    drills: list
    center: list
    spot: list
    sink: list
    counterbore: list
    reamer: list
    taps: list
    boring_head: list
    external: list
    bars: list
    groove: list
    thread: list
    styli: list


def pick(rows, *firsts):
    """For each, the first row that begins with it; it is a value or a tuple of the first columns."""
    firsts = [first if isinstance(first, tuple) else (first,) for first in firsts]
    return [next(row for row in rows if tuple(row[:len(first)]) == first) for first in firsts]


METRIC_CHOICE = Choice(
    mills_metric, hole_making_metric, turning_metric,
    flat=pick(mills_metric.FLAT, 6, 10, 16),
    ball=pick(mills_metric.BALL, 6, 10),
    bull=pick(mills_metric.BULL, (10, 22, 72, 10, 1)),
    face=pick(mills_metric.FACE_45, 50),
    chamfer=pick(mills_metric.CHAMFER, 10),
    slot=pick(mills_metric.T_SLOT, 21),
    drills=[("DJ", [(None, 5), (None, 6.8), (None, 8.5)])],
    center=pick(hole_making_metric.CENTER_SERIES[0][2], (None, 2.5)),
    spot=pick(hole_making_metric.SPOT, (10, 90)),
    sink=pick(hole_making_metric.COUNTERSINKS, 16.5),
    counterbore=pick(hole_making_metric.COUNTERBORES, "M8"),
    reamer=pick(hole_making_metric.REAMERS, 8),
    taps=pick(hole_making_metric.TAPS_COARSE, "M6x1", "M8x1.25"),
    boring_head=pick(hole_making_metric.BORING_HEADS, 40),
    external=pick(turning_metric.EXTERNAL, ("PCLN 2020K12", "RL", "CNMG120408"), ("SDJC 2020K11", "RL")),
    bars=pick(turning_metric.BORING, "S16R-SCLC09"),
    groove=pick(turning_metric.GROOVES, (3, 0.2)),
    thread=pick(turning_metric.THREADS, ("16", "ISO", 1.5)),
    styli=pick(probes.METRIC_STYLI, (6, 4.5, 50)),
)
INCH_CHOICE = Choice(
    mills_inch, hole_making_inch, turning_inch,
    flat=pick(mills_inch.FLAT, 1/4, 3/8, 1/2),
    ball=pick(mills_inch.BALL, 1/4, 3/8),
    bull=pick(mills_inch.BULL, 3/8),
    face=pick(mills_inch.FACE_45, 2),
    chamfer=pick(mills_inch.CHAMFER, 3/8),
    slot=pick(mills_inch.T_SLOT, 25/32),
    drills=[("DJ", [("#7", 0.201), (None, 3/8)]), ("DL", [("F", 0.257)])],
    center=pick(hole_making_inch.CENTER_SERIES[0][2], "#3"),
    spot=pick(hole_making_inch.SPOT, (3/8, 90)),
    sink=pick(hole_making_inch.COUNTERSINKS, (1/2, 1/8, 82)),
    counterbore=pick(hole_making_inch.COUNTERBORES, "5/16"),
    reamer=pick(hole_making_inch.REAMERS, 5/16),
    taps=pick(hole_making_inch.TAPS_COARSE, "1/4-20 UNC", "5/16-18 UNC"),
    boring_head=pick(hole_making_inch.BORING_HEADS, 1.5),
    external=pick(turning_inch.EXTERNAL, ("PCLN 124B", "RL", "CNMG432"), ("SDJC 123B", "RL")),
    bars=pick(turning_inch.BORING, "S10R-SCLC3"),
    groove=pick(turning_inch.GROOVES, (1/8, 0.008)),
    thread=pick(turning_inch.THREADS, ("16", "UN", 1/16)),
    styli=pick(probes.INCH_STYLI, (0.236, 0.177, 2)),
)


def right_hand(rows, column):
    """The rows with the right hand alone."""
    return [row[:column] + ("R",) + row[column + 1:] for row in rows]


def fill(shelf, choice):
    shelf.prefix = "TU-"
    _mills(shelf, choice)
    _hole_makers(shelf, choice)
    _turning_tools(shelf, choice)
    jets.fill(shelf, [("laser cutter", jets.LASERS[2:3]), ("plasma cutter", jets.PLASMAS[:1]),
                      ("waterjet", jets.WATERJETS[:1])])
    probes.fill(shelf, choice.styli)


def _mills(shelf, choice):
    coated = "coated carbide"
    inserts = Series("FM45", "Face mill", coated, 0, FACING, works=("steel", "stainless", "cast iron", "aluminium"),
                     dry=True, edges="inserts")
    mills.end_mills(shelf, Series("EF4", "Flat end mill", coated, 4, SIDE, "collet"), "flat end mill", choice.flat)
    mills.end_mills(shelf, Series("EB2", "Ball end mill", coated, 2, COPYING, "collet"), "ball end mill", choice.ball)
    mills.end_mills(shelf, Series("EN4", "Bull nose end mill", coated, 4, CORNERED, "collet"), "bull nose end mill",
                    choice.bull)
    mills.face_mills(shelf, inserts, choice.face)
    mills.cones(shelf, Series("CH4", "Chamfer mill", coated, 4, EDGE, "collet"), "chamfer mill", choice.chamfer)
    mills.discs(shelf, Series("TS", "T-slot cutter", "cobalt", 0, GROOVING), "slot mill", choice.slot)


def _hole_makers(shelf, choice):
    sizes = choice.holes
    _, title, _, tip_angle = sizes.CENTER_SERIES[0]
    hole_making.center_drills(shelf, "CD", title, choice.center, tip_angle)
    hole_making.spot_drills(shelf, choice.spot)
    for code, rows in choice.drills:
        hole_making.drills(shelf, code, "Jobber drill", "hss", hole_making.with_lengths(rows, sizes.JOBBER_LENGTHS),
                           tip_angle=118, share=1, holder_kind="collet")
    hole_making.countersinks(shelf, choice.sink)
    hole_making.counterbores(shelf, choice.counterbore)
    hole_making.reamers(shelf, sizes.REAMER_TITLE, choice.reamer)
    hole_making.taps(shelf, "TP", "spiral point for through holes", choice.taps)
    hole_making.boring_heads(shelf, choice.boring_head)


def _turning_tools(shelf, choice):
    turning.external_tools(shelf, choice.turning, right_hand(choice.external, 1))
    turning.boring_bars(shelf, choice.turning, right_hand(choice.bars, 1))
    turning.groovers(shelf, choice.turning, turning.Groover("GE", "Grooving tool", "groove external"),
                     right_hand(choice.groove, 4))
    turning.threading_tools(shelf, choice.turning, right_hand(choice.thread, 6), internal=False)
