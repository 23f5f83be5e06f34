"""Sizes of the library "Turning Tools (Inch)", in inches. The functions of turning.py tell the columns.

Shanks and lengths after ASME B212.5, inserts after ANSI B212.4, threads after ASME B1.1, ASME B1.5 and ISO 228-1. A
holder is named after its shank in sixteenths, the inscribed circle of the insert in eighths and the letter of its
length.
"""

# Letters of lengths, external holders first.
LENGTHS = {"A": 4, "B": 4.5, "C": 5, "D": 6, "E": 7,
           "H": 4, "K": 5, "M": 6, "Q": 7, "R": 8, "S": 10, "T": 12, "U": 14}

SHANKS = {
    #     height width head   offset style A style B
    "08": (0.5,  0.5,  0.75,  0.625, 33/64,  7/16),
    "10": (5/8,  5/8,  0.875, 0.75,  41/64,  17/32),
    "12": (0.75, 0.75, 1,     1,     49/64,  41/64),
    "16": (1,    1,    1.25,  1.25,  65/64,  7/8),
    "20": (1.25, 1.25, 1.5,   1.5,   81/64,  1.0625),
}

BARS = {
    #     diameter offset smallest bore head
    "05": (5/16,   0.25,  0.45,         0.5),
    "06": (3/8,    0.28,  0.5,          0.625),
    "08": (1/2,    0.35,  0.625,        0.75),
    "10": (5/8,    0.44,  0.8,          0.875),
    "12": (3/4,    0.52,  1,            1.125),
    "16": (1,      0.66,  1.25,         1.375),
    "20": (1.25,   0.86,  1.625,        1.75),
    "24": (1.5,    1.03,  2,            2.125),
}

BLADES = {"26": 1.024, "32": 1.26}

EXTERNAL = [
    # holder     hands insert
    ("PCLN 124B", "R",  "CNMG431"),
    ("PCLN 124B", "RL", "CNMG432"),
    ("PCLN 164D", "RL", "CNMG431"),
    ("PCLN 164D", "RL", "CNMG432"),
    ("PCLN 164D", "R",  "CNMG433"),
    ("PCLN 205D", "R",  "CNMG543"),
    ("PCLN 206E", "R",  "CNMG643"),
    ("PCBN 164D", "R",  "CNMG433"),
    ("PDJN 123B", "R",  "DNMG331"),
    ("PDJN 164D", "R",  "DNMG441"),
    ("PDJN 164D", "RL", "DNMG442"),
    ("PDNN 164D", "N",  "DNMG442"),
    ("MWLN 123B", "RL", "WNMG332"),
    ("MWLN 164D", "R",  "WNMG431"),
    ("MWLN 164D", "RL", "WNMG432"),
    ("MWLN 164D", "R",  "WNMG433"),
    ("MVJN 163D", "RL", "VNMG331"),
    ("MVJN 163D", "R",  "VNMG332"),
    ("MTJN 123B", "R",  "TNMG331"),
    ("MTJN 163D", "RL", "TNMG332"),
    ("PTGN 164D", "RL", "TNMG433"),
    ("PTFN 163D", "R",  "TNMG332"),
    ("PSBN 164D", "RL", "SNMG432"),
    ("PSBN 205D", "R",  "SNMG543"),
    ("PSKN 164D", "R",  "SNMG432"),
    ("PSSN 164D", "RL", "SNMG432"),
    ("PSDN 164D", "N",  "SNMG433"),
    ("SCLC 082A", "RL", "CCMT21.51"),
    ("SCLC 103A", "RL", "CCMT32.51"),
    ("SCLC 123B", "RL", "CCMT32.52"),
    ("SCAC 103A", "R",  "CCMT32.51"),
    ("SDJC 082A", "RL", "DCMT21.51"),
    ("SDJC 123B", "RL", "DCMT32.51"),
    ("SDJC 123B", "R",  "DCMT32.52"),
    ("SDNC 123B", "N",  "DCMT32.51"),
    ("SVJB 123B", "R",  "VBMT331"),
    ("SVJB 163D", "RL", "VBMT331"),
    ("SVHB 163D", "R",  "VBMT331"),
    ("SVVB 163D", "N",  "VBMT331"),
    ("STGC 102A", "R",  "TCMT21.51"),
    ("SRDC 123B", "N",  "RCMT32.500"),
    ("SRGC 164D", "R",  "RCMT4300"),
    # For light metal.
    ("SCLC 123B", "R",  "CCGT32.51"),
    ("SDJC 123B", "R",  "DCGT32.50.5"),
    ("SDJC 123B", "R",  "DCGT32.51"),
    ("SVJB 123B", "R",  "VBGT330.5"),
]

BORING = [
    # bar         hands insert
    ("S05H-SCLC2", "R",  "CCMT21.51"),
    ("S06K-SCLC2", "RL", "CCMT21.51"),
    ("S08M-SCLC2", "RL", "CCMT21.51"),
    ("S10R-SCLC3", "RL", "CCMT32.51"),
    ("S12S-SCLC3", "RL", "CCMT32.51"),
    ("S12S-SCLC3", "R",  "CCMT32.52"),
    ("S16T-SCLC4", "R",  "CCMT432"),
    ("S06K-SDUC2", "R",  "DCMT21.50.5"),
    ("S10R-SDUC2", "R",  "DCMT21.51"),
    ("S12S-SDUC3", "RL", "DCMT32.51"),
    ("S16T-SDUC3", "R",  "DCMT32.52"),
    ("S12S-SDQC3", "R",  "DCMT32.51"),
    ("S08M-STFC2", "R",  "TCMT21.51"),
    ("S10R-STFC2", "R",  "TCMT21.51"),
    ("S12S-STFC3", "R",  "TCMT32.52"),
    ("S16T-SVUB3", "R",  "VBMT331"),
    ("S16T-SVQB3", "R",  "VBMT331"),
    ("A16T-PCLN4", "RL", "CNMG432"),
    ("A20U-PCLN4", "R",  "CNMG432"),
    ("A20U-PDUN4", "R",  "DNMG442"),
    ("A20U-MWLN4", "RL", "WNMG432"),
    ("A24U-PCLN5", "R",  "CNMG543"),
    ("A20U-PSKN4", "R",  "SNMG432"),
    # For light metal.
    ("S10R-SCLC3", "R",  "CCGT32.51"),
    ("S12S-SDUC3", "R",  "DCGT32.51"),
]

GROOVE_INSERT = (0.8, 0.18, 7)  # length, thickness, clearance of the two-edged inserts

GROOVES = [
    # width radius depth shank  hands
    (0.079, 0.008, 0.5,  "12B", "RL"),
    (1/8,   0.008, 0.5,  "12B", "RL"),
    (1/8,   0.012, 0.65, "16D", "RL"),
    (5/32,  0.016, 0.65, "16D", "RL"),
    (3/16,  0.016, 0.8,  "16D", "R"),
    (1/4,   1/32,  0.8,  "16D", "R"),
    (1/8,   1/16,  0.5,  "12B", "R"),
    (3/16,  3/32,  0.65, "16D", "R"),
    (1/4,   1/8,   0.8,  "16D", "R"),
]
PARTING = [
    # width radius depth blade  hands
    (0.079, 0.008, 1,    "26C", "R"),
    (1/8,   0.008, 1.4,  "26C", "RL"),
    (1/8,   0.012, 2,    "32D", "R"),
    (5/32,  0.012, 2,    "32D", "R"),
]
FACE_GROOVES = [
    # width radius depth shank  hands
    (1/8,   0.012, 0.5,  "16D", "RL"),
    (5/32,  0.016, 0.55, "16D", "R"),
    (3/16,  0.016, 0.65, "16D", "R"),
]
INTERNAL_GROOVES = [
    # width radius depth bar    hands
    (0.079, 0.008, 0.1,  "10R", "R"),
    (0.079, 0.008, 0.12, "12S", "R"),
    (1/8,   0.012, 0.15, "16T", "RL"),
    (5/32,  0.016, 0.2,  "20U", "R"),
]

THREADS = [
    # size profile finest coarsest named   shank  hands
    ("11", "UN",   1/28,  1/28,    "28 UN",  "10A", "R"),
    ("16", "UN",   1/24,  1/24,    "24 UN",  "12B", "R"),
    ("16", "UN",   1/20,  1/20,    "20 UN",  "12B", "R"),
    ("16", "UN",   1/18,  1/18,    "18 UN",  "12B", "R"),
    ("16", "UN",   1/16,  1/16,    "16 UN",  "16D", "RL"),
    ("16", "UN",   1/14,  1/14,    "14 UN",  "16D", "R"),
    ("16", "UN",   1/12,  1/12,    "12 UN",  "16D", "RL"),
    ("16", "UN",   1/10,  1/10,    "10 UN",  "16D", "R"),
    ("16", "UN",   1/8,   1/8,     "8 UN",   "16D", "R"),
    ("16", "60",   1/48,  1/16,    "A60",    "12B", "R"),
    ("16", "60",   1/14,  1/8,     "G60",    "16D", "R"),
    ("16", "W",    1/14,  1/14,    "14 W",   "16D", "R"),
    ("16", "ACME", 1/10,  1/10,    "10 ACME", "16D", "R"),
    ("16", "ACME", 1/8,   1/8,     "8 ACME", "16D", "R"),
    ("22", "ACME", 1/6,   1/6,     "6 ACME", "16D", "R"),
]
INTERNAL_THREADS = [
    ("11", "UN",   1/20,  1/20,    "20 UN",  "08M", "R"),
    ("11", "UN",   1/16,  1/16,    "16 UN",  "08M", "R"),
    ("16", "UN",   1/16,  1/16,    "16 UN",  "12S", "RL"),
    ("16", "UN",   1/12,  1/12,    "12 UN",  "12S", "R"),
    ("16", "UN",   1/8,   1/8,     "8 UN",   "16T", "R"),
    ("16", "60",   1/48,  1/8,     "AG60",   "12S", "R"),
    ("16", "W",    1/14,  1/14,    "14 W",   "12S", "R"),
    ("16", "ACME", 1/8,   1/8,     "8 ACME", "16T", "R"),
]
