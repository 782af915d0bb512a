#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the constant tables of this folder: src/special/*_data.inc.

usage: tables.py            (needs mpmath; writes beside its parent folder, can run again)
"""
import pathlib

import mpmath as mp

HERE = pathlib.Path(__file__).resolve().parent.parent


def write(name, comment, values):
    lines = ["// SPDX-License-Identifier: Apache-2.0", f"// {comment} Written by make/tables.py."]
    row = ""
    for v in values:
        text = float(v).hex() + ","
        if len(row) + len(text) + 1 > 118:
            lines.append(row)
            row = text
        else:
            row = f"{row} {text}".strip()
    lines.append(row)
    (HERE / name).write_text("\n".join(lines) + "\n")


def residues():
    mp.mp.prec = 1400  # 2^1023 / 2pi needs 1023 bits before the point and 60 behind
    return [mp.fmod(mp.mpf(2) ** n, 2 * mp.pi) for n in range(3, 1024)]


def inverse_erf():
    mp.mp.dps = 60
    c = [mp.mpf(1)]
    for k in range(1, 95):
        c.append(mp.fsum(c[m] * c[k - 1 - m] / ((m + 1) * (2 * m + 1)) for m in range(k)))
    half = mp.sqrt(mp.pi) / 2
    return [c[k] / (2 * k + 1) * half ** (2 * k + 1) for k in range(95)]


def bernoulli():
    mp.mp.dps = 60
    values = []
    for n in range(260):
        p, q = mp.bernfrac(n)
        values.append(mp.mpf(p) / q)
    values[1] = mp.mpf("-0.5")
    return values


write("elementary/power_of_two_residues_data.inc", "2^n mod 2 pi for n = 3..1023, correctly rounded.", residues())
write("error/inverse_erf_data.inc", "Maclaurin coefficients of the inverse error function in odd powers of y.", inverse_erf())
write("zeta/bernoulli_data.inc", "Bernoulli numbers B_0..B_259, B_1 = -1/2.", bernoulli())
