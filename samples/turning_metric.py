"""Sizes of the library "Turning Tools (Metric)", in mm. The functions of turning.py tell the columns.

Shanks and lengths after ISO 5610 and ISO 6261, inserts after ISO 1832, threads after ISO 261, ISO 228-1 and ISO 2904.
"""

# Letters of lengths after ISO 5608.
LENGTHS = {"F": 80, "H": 100, "K": 125, "M": 150, "P": 170, "Q": 180, "R": 200, "S": 250, "T": 300, "U": 350}

SHANKS = {
    #       height width head offset style A style B
    "1212": (12,   12,   16,  16,    12.5,   11),
    "1616": (16,   16,   20,  20,    16.5,   13),
    "2020": (20,   20,   25,  25,    20.5,   17),
    "2525": (25,   25,   32,  32,    25.5,   22),
    "3225": (32,   25,   36,  32,    25.5,   22),
    "3232": (32,   32,   40,  40,    32.5,   27),
}

BARS = {
    #     diameter offset smallest bore head
    "08": (8,      6,     11,           12),
    "10": (10,     7,     13,           16),
    "12": (12,     9,     16,           18),
    "16": (16,     11,    20,           24),
    "20": (20,     13,    25,           30),
    "25": (25,     17,    32,           36),
    "32": (32,     22,    40,           45),
    "40": (40,     27,    50,           55),
}

# Heights of the blades for parting.
BLADES = {"26": 26, "32": 32}

EXTERNAL = [
    # holder        hands insert
    ("PCLN 2020K12", "R",  "CNMG120404"),
    ("PCLN 2020K12", "RL", "CNMG120408"),
    ("PCLN 2525M12", "RL", "CNMG120404"),
    ("PCLN 2525M12", "RL", "CNMG120408"),
    ("PCLN 2525M12", "R",  "CNMG120412"),
    ("PCLN 3232P16", "R",  "CNMG160612"),
    ("PCLN 3232P19", "R",  "CNMG190612"),
    ("PCBN 2525M12", "R",  "CNMG120412"),
    ("PDJN 2020K11", "R",  "DNMG110404"),
    ("PDJN 2525M15", "R",  "DNMG150604"),
    ("PDJN 2525M15", "RL", "DNMG150608"),
    ("PDNN 2525M15", "N",  "DNMG150608"),
    ("MWLN 2020K06", "RL", "WNMG060408"),
    ("MWLN 2525M08", "R",  "WNMG080404"),
    ("MWLN 2525M08", "RL", "WNMG080408"),
    ("MWLN 2525M08", "R",  "WNMG080412"),
    ("MVJN 2525M16", "RL", "VNMG160404"),
    ("MVJN 2525M16", "R",  "VNMG160408"),
    ("MTJN 2020K16", "R",  "TNMG160404"),
    ("MTJN 2525M16", "RL", "TNMG160408"),
    ("PTGN 2525M22", "RL", "TNMG220412"),
    ("PTFN 2525M16", "R",  "TNMG160408"),
    ("PSBN 2525M12", "RL", "SNMG120408"),
    ("PSBN 3232P15", "R",  "SNMG150612"),
    ("PSKN 2525M12", "R",  "SNMG120408"),
    ("PSSN 2525M12", "RL", "SNMG120408"),
    ("PSDN 2525M12", "N",  "SNMG120412"),
    ("SCLC 1212F06", "RL", "CCMT060204"),
    ("SCLC 1616H09", "RL", "CCMT09T304"),
    ("SCLC 2020K09", "RL", "CCMT09T308"),
    ("SCAC 1616H09", "R",  "CCMT09T304"),
    ("SDJC 1212F07", "RL", "DCMT070204"),
    ("SDJC 2020K11", "RL", "DCMT11T304"),
    ("SDJC 2020K11", "R",  "DCMT11T308"),
    ("SDNC 2020K11", "N",  "DCMT11T304"),
    ("SVJB 2020K16", "R",  "VBMT160404"),
    ("SVJB 2525M16", "RL", "VBMT160404"),
    ("SVHB 2525M16", "R",  "VBMT160404"),
    ("SVVB 2525M16", "N",  "VBMT160404"),
    ("STGC 1616H11", "R",  "TCMT110204"),
    ("SRDC 2020K10", "N",  "RCMT10T3M0"),
    ("SRGC 2525M12", "R",  "RCMT1204M0"),
    # For light metal.
    ("SCLC 2020K09", "R",  "CCGT09T304"),
    ("SDJC 2020K11", "R",  "DCGT11T302"),
    ("SDJC 2020K11", "R",  "DCGT11T304"),
    ("SVJB 2020K16", "R",  "VBGT160402"),
]

BORING = [
    # bar          hands insert
    ("S08H-SCLC06", "R",  "CCMT060204"),
    ("S10K-SCLC06", "RL", "CCMT060204"),
    ("S12M-SCLC06", "R",  "CCMT060204"),
    ("S16R-SCLC09", "RL", "CCMT09T304"),
    ("S20S-SCLC09", "RL", "CCMT09T304"),
    ("S20S-SCLC09", "R",  "CCMT09T308"),
    ("S25T-SCLC12", "R",  "CCMT120408"),
    ("S10K-SDUC07", "R",  "DCMT070202"),
    ("S16R-SDUC07", "R",  "DCMT070204"),
    ("S20S-SDUC11", "RL", "DCMT11T304"),
    ("S25T-SDUC11", "R",  "DCMT11T308"),
    ("S20S-SDQC11", "R",  "DCMT11T304"),
    ("S12M-STFC11", "R",  "TCMT110204"),
    ("S16R-STFC11", "R",  "TCMT110204"),
    ("S20S-STFC16", "R",  "TCMT16T308"),
    ("S25T-SVUB16", "R",  "VBMT160404"),
    ("S25T-SVQB16", "R",  "VBMT160404"),
    ("A25T-PCLN12", "RL", "CNMG120408"),
    ("A32U-PCLN12", "R",  "CNMG120408"),
    ("A32U-PDUN15", "R",  "DNMG150608"),
    ("A32U-MWLN08", "RL", "WNMG080408"),
    ("A40U-PCLN16", "R",  "CNMG160612"),
    ("A32U-PSKN12", "R",  "SNMG120408"),
    # For light metal.
    ("S16R-SCLC09", "R",  "CCGT09T304"),
    ("S20S-SDUC11", "R",  "DCGT11T304"),
]

GROOVE_INSERT = (20, 4.5, 7)  # length, thickness, clearance of the two-edged inserts

GROOVES = [
    # width radius depth shank   hands
    (2,     0.2,   12,   "2020K", "RL"),
    (3,     0.2,   12,   "2020K", "RL"),
    (3,     0.3,   16,   "2525M", "RL"),
    (4,     0.4,   16,   "2525M", "RL"),
    (5,     0.4,   20,   "2525M", "R"),
    (6,     0.8,   20,   "2525M", "R"),
    (3,     1.5,   12,   "2020K", "R"),
    (4,     2,     16,   "2525M", "R"),
    (6,     3,     20,   "2525M", "R"),
]
PARTING = [
    # width radius depth blade  hands
    (2,     0.2,   25,   "26H", "R"),
    (3,     0.2,   35,   "26H", "RL"),
    (3,     0.3,   50,   "32M", "R"),
    (4,     0.3,   50,   "32M", "R"),
]
FACE_GROOVES = [
    # width radius depth shank   hands
    (3,     0.3,   12,   "2525M", "RL"),
    (4,     0.4,   14,   "2525M", "R"),
    (5,     0.4,   16,   "2525M", "R"),
]
INTERNAL_GROOVES = [
    # width radius depth bar    hands
    (2,     0.2,   2.5,  "16R", "R"),
    (2,     0.2,   3,    "20S", "R"),
    (3,     0.3,   4,    "25T", "RL"),
    (4,     0.4,   5.5,  "32U", "R"),
]

THREADS = [
    # size profile finest coarsest named    shank   hands
    ("11", "ISO",  1.0,   1.0,  "1 ISO",    "1616H", "R"),
    ("16", "ISO",  1.0,   1.0,  "1 ISO",    "2020K", "R"),
    ("16", "ISO",  1.25,  1.25, "1.25 ISO", "2020K", "R"),
    ("16", "ISO",  1.5,   1.5,  "1.5 ISO",  "2020K", "RL"),
    ("16", "ISO",  1.75,  1.75, "1.75 ISO", "2525M", "R"),
    ("16", "ISO",  2.0,   2.0,  "2 ISO",    "2525M", "RL"),
    ("16", "ISO",  2.5,   2.5,  "2.5 ISO",  "2525M", "R"),
    ("16", "ISO",  3.0,   3.0,  "3 ISO",    "2525M", "R"),
    ("16", "60",   0.5,   1.5,  "A60",      "2020K", "R"),
    ("16", "60",   1.75,  3.0,  "G60",      "2525M", "R"),
    ("16", "W",    25.4 / 14, 25.4 / 14, "14 W", "2525M", "R"),
    ("16", "W",    25.4 / 11, 25.4 / 11, "11 W", "2525M", "R"),
    ("16", "TR",   2.0,   2.0,  "2 TR",     "2525M", "R"),
    ("16", "TR",   3.0,   3.0,  "3 TR",     "2525M", "R"),
    ("22", "TR",   4.0,   4.0,  "4 TR",     "2525M", "R"),
]
INTERNAL_THREADS = [
    ("11", "ISO",  1.0,   1.0,  "1 ISO",    "12M", "R"),
    ("11", "ISO",  1.5,   1.5,  "1.5 ISO",  "12M", "R"),
    ("16", "ISO",  1.5,   1.5,  "1.5 ISO",  "20S", "RL"),
    ("16", "ISO",  2.0,   2.0,  "2 ISO",    "20S", "R"),
    ("16", "ISO",  3.0,   3.0,  "3 ISO",    "25T", "R"),
    ("16", "60",   0.5,   3.0,  "AG60",     "20S", "R"),
    ("16", "W",    25.4 / 14, 25.4 / 14, "14 W", "20S", "R"),
    ("16", "TR",   3.0,   3.0,  "3 TR",     "25T", "R"),
]
