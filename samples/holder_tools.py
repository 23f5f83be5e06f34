"""Holders as tools of their own: how a kind, a taper and a row of sizes become an outline. The sizes are in
holders_metric.py and holders_inch.py, tables of the same names; the holders that the rotating tools stand in, of
holders.py, come first.

An outline counts from the nose to the gauge line, as in holders.py, and ends with the flange of the taper. What lies
between nose and flange follows from the size of the holder, so that a longer one has a longer body.
"""

from holders import HOLDERS, outline_segments
from library import guid, plain, size

# Tapers as people write them, where the product id has it shorter.
TAPER_NAMES = {"HSK40A": "HSK-A40", "HSK40E": "HSK-E40", "HSK50A": "HSK-A50", "HSK63A": "HSK-A63",
               "HSK80A": "HSK-A80", "HSK100A": "HSK-A100"}


def taper_name(taper):
    return TAPER_NAMES.get(taper, taper)


def put_holder(shelf, key, description, outline):
    """Adds a holder. Its gauge length follows its segments when a person edits them."""
    segments = outline_segments(outline)
    following = " + ".join("segment_%d_height" % (number + 1) for number in range(len(segments)))
    shelf.put("holder", key, description, segments=segments,
              gaugeLength=round(sum(segment["height"] for segment in segments), 6),
              expressions={"tool_holderGaugeLength": following})
    # A tool that stands in this holder names it by the same GUID.
    shelf.tools[-1]["guid"] = guid("holder", shelf.tools[-1]["product-id"])


def _body(reach, flange, *nose):
    """Height that is left between the nose and the flange."""
    left = round(reach - flange[0] - sum(nose), 6)
    assert left > 0, (reach, flange, nose)
    return left


def collet_chuck(tables, flange, key, reach):
    """A nut with a chamfered face, and a body as wide as the nut."""
    face, nut = tables.COLLET_NUTS[key]
    chamfer = tables.CHAMFER
    return [(chamfer, face, nut), (_body(reach, flange, chamfer), nut, nut)]


def side_lock(tables, flange, bore, reach):
    body, chamfer = tables.SIDE_LOCKS[bore], tables.CHAMFER
    return [(chamfer, round(body - 2 * chamfer, 6), body), (_body(reach, flange, chamfer), body, body)]


def chuck_body(tables, flange, nose):
    """As wide as usual, or as nose and flange want it."""
    return max(min(tables.CHUCK_BODY, flange[2]), nose)


def shrink_chuck(tables, flange, bore, reach):
    """A cone of 4.5 degrees, and a body."""
    nose, base, cone = tables.SHRINK_NOSES[bore]
    body = chuck_body(tables, flange, base)
    return [(cone, nose, base), (_body(reach, flange, cone), body, body)]


def hydraulic_chuck(tables, flange, bore, reach):
    nose, length = tables.HYDRAULIC_NOSES[bore]
    body = chuck_body(tables, flange, nose)
    return [(length, nose, nose), (_body(reach, flange, length), body, body)]


def shell_mill_arbor(tables, flange, spigot, reach):
    """The contact face of the cutter is the nose; the spigot stands inside the cutter."""
    face = tables.ARBOR_FACES[spigot]
    return [(_body(reach, flange), face, face)]


def drill_chuck(tables, flange, capacity, reach):
    nose, body, cone = tables.DRILL_CHUCKS[capacity]
    return [(cone, nose, body), (_body(reach, flange, cone), body, body)]


def tap_chuck(tables, flange, key, reach):
    """A quick change chuck with length compensation: the holder of the adapter, and a wider body."""
    nose, length, body = tables.TAP_CHUCKS[key]
    return [(length, nose, nose), (_body(reach, flange, length), body, body)]


def milling_chuck(tables, flange, bore, reach):
    nut, length, body = tables.MILLING_CHUCKS[bore]
    return [(length, nut, nut), (_body(reach, flange, length), body, body)]


def morse_sleeve(tables, flange, key, reach):
    body = tables.MORSE_SLEEVES[key]
    return [(_body(reach, flange), body, body)]


# By the code in the product id: how the outline is made, the title, and whether the size is a length.
KINDS = {
    "ER": (collet_chuck,     "Collet chuck",     False),
    "SL": (side_lock,        "Side lock holder", True),
    "SF": (shrink_chuck,     "Shrink chuck",     True),
    "HC": (hydraulic_chuck,  "Hydraulic chuck",  True),
    "SA": (shell_mill_arbor, "Shell mill arbor", True),
    "DC": (drill_chuck,      "Drill chuck",      True),
    "TC": (tap_chuck,        "Tap chuck",        False),
    "MC": (milling_chuck,    "Milling chuck",    True),
    "MT": (morse_sleeve,     "Morse taper sleeve", False),
}


def series(shelf, tables, taper, code, rows):
    """Rows: size, reach from the gauge line to the nose."""
    outline, title, is_length = KINDS[code]
    title = tables.TITLES.get(code, title)
    for row_size, reach in rows:
        key = "%s-%s%s-%s" % (taper, code, plain(row_size), plain(reach))
        named = size(row_size, shelf.unit) if is_length else "%s%s" % (code, plain(row_size))
        comma = "," if is_length else ""
        put_holder(shelf, key,
                   "%s %s%s %s, %s%s" % (title, taper_name(taper), comma, named, "reach " if is_length else "",
                                         size(reach, shelf.unit)),
                   outline(tables, tables.FLANGES[taper], row_size, reach) + [tables.FLANGES[taper]])


def fill(shelf, tables):
    """Puts a library of holders on the shelf. tables: the module with the sizes."""
    for key, (description, outline) in HOLDERS[shelf.unit].items():
        put_holder(shelf, key, description, outline)
    for taper, code, rows in tables.SERIES:
        series(shelf, tables, taper, code, rows)
