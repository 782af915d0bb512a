#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the tables of this folder: src/highprecision/*_data.inc.

usage: tables.py            (needs mpmath; writes beside its parent folder, can run again)
"""
import pathlib

import mpmath as mp

HERE = pathlib.Path(__file__).resolve().parent.parent
BASE = 10**7
LIMBS = 52  # one before the point, 51 behind: 357 decimals
BINS = 128  # of the mantissa in the reduction of the logarithm

mp.mp.dps = 400
CONSTANTS = [
    ("ln 2", mp.log(2)),
    ("ln 3", mp.log(3)),
    ("ln 5", mp.log(5)),
    ("pi", mp.pi()),
    ("atan(1/2)", mp.atan(mp.mpf(1) / 2)),
    ("atan(3/4)", mp.atan(mp.mpf(3) / 4)),
    ("atan(3/2)", mp.atan(mp.mpf(3) / 2)),
    ("atan(4)", mp.atan(4)),
    ("e", mp.e()),
]


def filled(cells):
    """Lines of at most 118 characters."""
    lines, row = [], ""
    for cell in cells:
        if len(row) + len(cell) + 1 > 118:
            lines.append(row)
            row = cell
        else:
            row = f"{row} {cell}".strip()
    return lines + [row]


def constants():
    lines = ["// SPDX-License-Identifier: Apache-2.0",
             f"// Cut after {7 * (LIMBS - 1)} decimals, least significant limb first. Written by make/tables.py."]
    for name, value in CONSTANTS:
        digits = int(mp.floor(value * mp.mpf(BASE) ** (LIMBS - 1)))
        lines.append(f"// {name}")
        lines += filled([f"{digits // BASE**i % BASE}," for i in range(LIMBS)])
    return lines


def log_steps():
    """For each bin of [1, 2) the number 2^p 3^q 5^r nearest to the middle of the bin, powers of 3 and 5 below 2^64."""
    near = []
    for q in range(-40, 41):
        for r in range(-27, 28):
            up = 3 ** max(q, 0) * 5 ** max(r, 0)
            down = 3 ** max(-q, 0) * 5 ** max(-r, 0)
            if up >= 2**64 or down >= 2**64:
                continue
            p = 0
            while up < down:
                up, p = 2 * up, p + 1
            while up >= 2 * down:
                down, p = 2 * down, p - 1
            near.append((mp.mpf(up) / down, p, q, r))
    cells = []
    for index in range(BINS):
        middle = 1 + (index + mp.mpf(0.5)) / BINS
        value, p, q, r = min(near, key=lambda entry: (abs(entry[0] - middle), abs(entry[2]) + abs(entry[3])))
        assert abs(value - middle) < mp.mpf(1) / 4 / BINS
        cells.append(f"{{{p}, {q}, {r}}},")
    return ["// SPDX-License-Identifier: Apache-2.0",
            "// Exponents p, q, r of 2^p 3^q 5^r near the middle of each bin of [1, 2). Written by make/tables.py.",
            *filled(cells)]


for name, lines in (("decimal/constants_data.inc", constants()), ("decimal/log_steps_data.inc", log_steps())):
    (HERE / name).write_text("\n".join(lines) + "\n")
