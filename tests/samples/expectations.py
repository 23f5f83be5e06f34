"""What the sample libraries are expected to hold: tables for check_samples.py."""

VENDORS = {"", "Quillon"}
# Name of a preset -> category, group of ISO 513.
WORK_MATERIALS = {"Steel": ("steel", "P"), "Stainless steel": ("stainless", "M"), "Cast iron": ("cast iron", "K"),
                  "Aluminium": ("aluminium", "N")}
UNITS = {"Metric": "millimeters", "Inch": "inches"}
MILLIMETERS = {"millimeters": 1, "inches": 25.4}
HIGHEST_SPEED = 20000

LIBRARIES = [
    "Cutting Tools (Inch)",
    "Cutting Tools (Metric)",
    "Depositing Tools",
    "Holders - Standard Taper Blanks",
    "Holders (Inch)",
    "Holders (Metric)",
    "Hole Making Tools (Inch)",
    "Hole Making Tools (Metric)",
    "Milling Tools (Inch)",
    "Milling Tools (Metric)",
    "Probes",
    "Turning Tools (Inch)",
    "Turning Tools (Metric)",
    "Tutorial Tools (Inch)",
    "Tutorial Tools (Metric)",
]

GENERAL_HOLE_MAKING = {"drill", "center drill", "spot drill", "reamer", "counterbore"}
BORING_HOLE_MAKING = {"multi-spindle drill", "boring head", "countersink"}
TAPS = {"right hand tap", "left hand tap"}
HOLE_MAKING = GENERAL_HOLE_MAKING | BORING_HOLE_MAKING | TAPS
MILLS = {
    "back chamfer mill", "ball end mill", "bull nose end mill", "chamfer mill", "circle segment barrel",
    "circle segment lens", "circle segment oval", "circle segment taper", "corner chamfer end mill", "deburring tool",
    "dovetail mill", "engraving tool", "face mill", "flat end mill", "gear cutter", "lollipop mill", "plunge mill",
    "radius mill", "roughing end mill", "slitting saw", "slot mill", "tapered mill", "thread mill", "woodruff cutter",
}
TURNING = {"turning general", "turning boring", "turning grooving", "turning threading"}
JETS = {"laser cutter", "plasma cutter", "waterjet"}
DEPOSITING = {"laser powder", "laser wire", "electric arc wire"}

# Type -> family, and family -> parameter set.
FAMILIES = {
    **dict.fromkeys(MILLS, "mill"), **dict.fromkeys(HOLE_MAKING, "hole making"), **dict.fromkeys(TURNING, "turning"),
    **dict.fromkeys(JETS, "jet"), **dict.fromkeys(DEPOSITING, "depositing"), "probe": "probe", "holder": "holder",
}
STRATEGIES = {"mill": 198, "hole making": 198, "probe": 198, "holder": 198, "turning": 212, "jet": 213,
              "depositing": 214}

# Library -> least and largest number of tools, types. The tutorial has what the first parts of a learner need.
_TUTORIAL = TURNING | JETS | {
    "ball end mill", "boring head", "bull nose end mill", "center drill", "chamfer mill", "counterbore", "countersink",
    "drill", "face mill", "flat end mill", "probe", "reamer", "right hand tap", "slot mill", "spot drill",
}
LIBRARY_TOOLS = {
    "Cutting Tools (Inch)":            (10, 30,  JETS),
    "Cutting Tools (Metric)":          (10, 30,  JETS),
    "Depositing Tools":                (5,  15,  DEPOSITING),
    "Holders - Standard Taper Blanks": (20, 40,  {"holder"}),
    "Holders (Inch)":                  (60, 120, {"holder"}),
    "Holders (Metric)":                (60, 120, {"holder"}),
    "Hole Making Tools (Inch)":        (80, 250, HOLE_MAKING),
    "Hole Making Tools (Metric)":      (80, 250, HOLE_MAKING),
    "Milling Tools (Inch)":            (80, 250, MILLS),
    "Milling Tools (Metric)":          (80, 250, MILLS),
    "Probes":                          (10, 20,  {"probe"}),
    "Turning Tools (Inch)":            (80, 150, TURNING),
    "Turning Tools (Metric)":          (80, 150, TURNING),
    "Tutorial Tools (Inch)":           (20, 30,  _TUTORIAL),
    "Tutorial Tools (Metric)":         (20, 30,  _TUTORIAL),
}
CONES = {"chamfer mill", "deburring tool", "engraving tool", "back chamfer mill", "countersink"}

TOOL_MEMBERS = {"BMC", "GRADE", "description", "geometry", "guid", "post-process", "product-id", "product-link",
                "start-values", "type", "unit", "vendor"}
GEOMETRY_MEMBERS = {"CSP", "DC", "HAND", "LB", "LCF", "NOF", "NT", "OAL", "RE", "SFDM", "TP", "assemblyGaugeLength",
                    "shoulder-length", "thread-profile-angle", "tip-diameter", "tip-length", "tip-offset"}
PRESET_MEMBERS = {"description", "f_n", "f_z", "guid", "material", "n", "name", "tool-coolant", "v_c", "v_f",
                  "v_f_leadIn", "v_f_leadOut", "v_f_ramp", "v_f_transition"}
CIRCLE_SEGMENT_MEMBERS = {"axial-distance", "lower-radius", "profile-radius", "upper-radius"}
OWN_MEMBERS = {
    "center drill": {"TA"},
    "circle segment barrel": CIRCLE_SEGMENT_MEMBERS,
    "circle segment lens": CIRCLE_SEGMENT_MEMBERS,
    "circle segment oval": CIRCLE_SEGMENT_MEMBERS,
    "circle segment taper": CIRCLE_SEGMENT_MEMBERS,
    "corner chamfer end mill": {"chamfer-angle", "chamfer-width"},
    "face mill": {"DCX", "upper-radius"},
    "thread mill": {"TPN", "TPX", "thread-tip-type", "thread-tip-width"},
}

# Sizes that a machinist knows by heart: library, start of the description, values of "geometry".
KNOWN_SIZES = [
    ("Hole Making Tools (Metric)", "Jobber drill 1 mm,",     {"LCF": 12, "OAL": 34}),                  # DIN 338
    ("Hole Making Tools (Metric)", "Jobber drill 6.8 mm,",   {"LCF": 69, "OAL": 109}),                 # DIN 338
    ("Hole Making Tools (Metric)", "Jobber drill 10 mm,",    {"LCF": 87, "OAL": 133}),                 # DIN 338
    ("Hole Making Tools (Metric)", "Stub drill 10.2 mm,",    {"LCF": 55, "OAL": 102, "SFDM": 12}),     # DIN 6537
    ("Hole Making Tools (Metric)", "Center drill 2.5 mm",    {"DC": 6.3, "OAL": 45}),                  # DIN 333
    ("Hole Making Tools (Metric)", "Machine reamer 8 mm",    {"LCF": 33, "OAL": 117}),                 # DIN 212
    ("Hole Making Tools (Metric)", "Tap M8x1.25, spiral p",  {"DC": 8, "OAL": 90, "TP": 1.25}),        # DIN 371
    ("Hole Making Tools (Metric)", "Counterbore 11 mm for M6", {"DC": 11}),                            # DIN 974-1
    ("Hole Making Tools (Inch)",   "Jobber drill 1/4 in,",   {"DC": 0.25, "LCF": 2.75, "OAL": 4}),     # ASME B94.11M
    ("Hole Making Tools (Inch)",   "Jobber drill #7 (",      {"DC": 0.201}),                           # ASME B94.11M
    ("Hole Making Tools (Inch)",   "Jobber drill #60 (",     {"DC": 0.04}),                            # ASME B94.11M
    ("Hole Making Tools (Inch)",   "Jobber drill F (",       {"DC": 0.257}),                           # ASME B94.11M
    ("Hole Making Tools (Inch)",   "Jobber drill Z (",       {"DC": 0.413}),                           # ASME B94.11M
    ("Hole Making Tools (Inch)",   "Tap 1/4-20 UNC, spiral p", {"DC": 0.25, "OAL": 2.5, "TP": 0.05}),  # ASME B94.9
    ("Hole Making Tools (Inch)",   "Tap #10-32 UNF",         {"DC": 0.19, "TP": 0.03125}),             # ASME B1.1
    ("Milling Tools (Metric)",     "Flat end mill 10 mm, 4 flutes, coated", {"LCF": 22, "OAL": 72}),   # DIN 6527
    ("Milling Tools (Metric)",     "Flat end mill 20 mm, 4 flutes, HSS",    {"LCF": 38, "OAL": 104}),  # DIN 844
    ("Milling Tools (Inch)",       "Woodruff cutter 3/4 in x 3/16 in, key 606", {"LCF": 0.1875}),        # ASME B17.2
    ("Turning Tools (Metric)",     "Turning tool PCLNR 2525M12, 95°, CNMG120408",                        # ISO 5610
     {"INSD": 12.7, "S": 4.7625, "RE": 0.8, "EPSR": 80, "OAL": 150, "CW": 32, "H": 25, "tool_leadingAngle": 95}),
    ("Turning Tools (Metric)",     "Boring bar S20S-SCLCR09, 95°, CCMT09T304",                           # ISO 6261
     {"INSD": 9.525, "S": 3.96875, "RE": 0.4, "OAL": 250, "CW": 13, "W": 20, "tool_roundShank": True}),
    ("Turning Tools (Metric)",     "Threading tool 16ER 1.5 ISO",                                        # ISO 68-1
     {"TP": 1.5, "thread-tip-radius": 0.216506, "thread-profile-angle": 60, "INSD": 9.525}),
    ("Turning Tools (Metric)",     "Threading tool 16ER 14 W",                                           # ISO 228-1
     {"thread-tip-radius": 0.249154, "thread-profile-angle": 55}),
    ("Turning Tools (Inch)",       "Turning tool PCLNR 164D, 95°, CNMG432",                              # ASME B212.5
     {"INSD": 0.5, "S": 0.1875, "RE": 0.03125, "OAL": 6, "CW": 1.25, "H": 1}),
    ("Turning Tools (Inch)",       "Threading tool 16ER 8 ACME",                                         # ASME B1.5
     {"TP": 0.125, "thread-tip-width": 0.041157, "thread-profile-angle": 29}),
]

# What the rules must find in a tool that was sound: type, where, the bad value, what is said of it.
SPOILED = [
    ("flat end mill", ("geometry", "DC"), -1,                   "cutting diameter must be greater than 0"),
    ("flat end mill", ("geometry", "RE"), 0.5,                  "flat end mill has no corner radius"),
    ("flat end mill", ("geometry", "LCF"), 0,                   "flute length must be greater than 0"),
    ("flat end mill", ("geometry", "LB"), 0.01,                 "body length must be at least the flute length"),
    ("flat end mill", ("geometry", "OAL"), 0.01,                "overall length must be at least the body length"),
    ("flat end mill", ("geometry", "NOF"), 0,                   "at least one flute"),
    ("flat end mill", ("BMC",), "cheese",                       "cheese is no material"),
    ("flat end mill", ("start-values", "presets", 0, "n"), 0,   "spindle speed should be greater than 0"),
    ("flat end mill", ("start-values", "presets", 0, "stepdown"), 900, "stepdown is deeper than the flutes"),
    ("ball end mill", ("geometry", "RE"), 0.001,                "should be half the cutting diameter"),
    ("bull nose end mill", ("geometry", "RE"), 0,               "needs a corner radius"),
    ("chamfer mill", ("geometry", "TA"), 90,                    "taper angle must be less than 90"),
    ("thread mill", ("geometry", "TPN"), 50,                    "minimum thread pitch must not exceed"),
    ("drill", ("geometry", "SIG"), 181,                         "tip angle must lie between"),
    ("center drill", ("geometry", "tip-diameter"), 99,          "tip diameter must be smaller"),
    ("right hand tap", ("geometry", "TP"), 0,                   "thread pitch must be greater than 0"),
    ("drill", ("start-values", "presets", 0, "tool-coolant"), "cheese", "cheese is no coolant"),
    ("drill", ("start-values", "presets", 0, "material", "category"), "cheese", "is no preset material category"),
    ("turning general", ("geometry", "RE"), 9,                  "must not exceed half the insert diameter"),
    ("turning general", ("geometry", "SC"), "Q",                "Q is no insert"),
    ("turning general", ("geometry", "TC"), "Z",                "Z is no tolerance"),
    ("turning boring", ("holder", "HAND"), "X",                 "X is no hand"),
    ("turning boring", ("holder", "LH"), 900,                   "head length must not exceed"),
    ("turning grooving", ("geometry", "RE"), 3,                 "must not exceed half the groove width"),
    ("turning threading", ("geometry", "TPN"), 50,              "minimum thread pitch must not exceed"),
    ("turning general", ("setup", "compensation"), "cheese",    "cheese is no compensation"),
    ("turning general", ("start-values", "presets", 0, "depth-of-cut"), 50, "depth of cut is larger than the insert"),
    ("laser cutter", ("geometry", "CW"), 0,                     "kerf width must be greater than 0"),
    ("waterjet", ("start-values", "presets", 0, "abrasiveFlowRate"), -1, "abrasive flow rate must not be negative"),
    ("laser powder", ("start-values", "presets", 0, "stepover"), 9, "stepover is wider than the bead"),
    ("probe", ("geometry", "SFDM"), 0,                          "shaft diameter must be greater than 0"),
    ("holder", ("gaugeLength",), -1,                            "gauge length of the holder must not be negative"),
]

EXPRESSIONS = [
    ("1 + 2 * 3",                        7),
    ("(1 + 2) * 3 / 2 - 1",              3.5),
    ("-a + 4",                           1),
    ("a == 3 && b != 'x' || false",      True),
    ("!(a < 3) && !b == 'x'",            False),
    ("a > 2 ? b == 'y' ? 1 : 2 : 3",     1),
    ("Math.max(a, Math.abs(-5), 1)",     5),
    ("2 * Math.tan(45 * Math.PI / 180)", 2),
    ("true ? 1 : 1 / 0",                 1),
]
