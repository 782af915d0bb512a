#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes src/special/integrals/sine_cosine_data.inc from a table of coefficients.

usage: rational_fits.py TABLE     (tab-separated: code, what, power, coefficient; '#' begins a comment)

The table is that of A. J. MacLeod, Numerical Algorithms 12 (1996). A coefficient such as 0.12E-3 may carry more digits
than a double; it is rounded once.
"""
import collections
import pathlib
import sys

if len(sys.argv) != 2:
    sys.exit(__doc__)
fits = collections.OrderedDict()
for line in pathlib.Path(sys.argv[1]).read_text().splitlines():
    if line.startswith(("#", "code")) or not line.strip():
        continue
    code, what, power, coefficient = line.split("\t")
    row = fits.setdefault(int(code), [what, []])
    assert int(power) == len(row[1]), line
    row[1].append(float(coefficient))

out = ["// SPDX-License-Identifier: Apache-2.0", "// Coefficients in ascending powers. Written by make/rational_fits.py."]
for code, (what, values) in fits.items():
    out.append(f"{{  // {code}: {what}")
    row = "   "
    for v in values:
        text = " " + v.hex() + ","
        if len(row) + len(text) > 118:
            out.append(row)
            row = "   "
        row += text
    out += [row, "},"]
target = pathlib.Path(__file__).resolve().parent.parent / "integrals/sine_cosine_data.inc"
target.write_text("\n".join(out) + "\n")
