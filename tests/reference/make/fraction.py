#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/highprecision/fraction_*.csv with Python's fractions.

usage: fraction.py            (can run again)
"""
import platform
import sys
from fractions import Fraction

import rows

sys.set_int_max_str_digits(0)


def cells(x):
    return f"{x.numerator},{x.denominator}"


def operations():
    yield "# operation,a,of,b,of,result,of,comparison: numerators and denominators; - for a zero divisor"
    for code, *numbers, _, _, _ in rows.cells("highprecision/fraction_operations"):
        x, y = (Fraction(*map(int, pair)) for pair in (numbers[:2], numbers[2:]))
        result = (lambda: x + y, lambda: x - y, lambda: x * y, lambda: x / y if y else None)[int(code)]()
        ends = cells(result) if result is not None else "-,-"
        yield ",".join([code, *numbers, ends, str(0 if x < y else 1 if x == y else 2)])


def powers():
    lines = ["# a,of,b,of,a^b,of"]
    for a, b, result in (((2, 3), (5, 1), None), ((-2, 3), (-5, 1), None), ((6, 4), (100, 1), None), ((-7, 1), (0, 3), None),
                         ((4, 9), (1, 2), (2, 3)), ((8, 27), (-4, 6), (9, 4)), ((2**40, 3**20), (6, 40), (2**6, 3**3)),
                         ((-1, 1), (10**12, 1), (1, 1)), ((0, 1), (3, 7), None), ((1, 1), (1, 3), (1, 1))):
        value = Fraction(*result) if result else Fraction(*a) ** Fraction(*b) if a[0] else Fraction(0)
        lines.append(f"{a[0]},{a[1]},{b[0]},{b[1]},{cells(Fraction(value))}")
    return lines


def sums():
    """Arithmetic progressions: first, step, count, sum of inverses."""
    lines = ["# first,step,count,sum of 1/(first + i step),of"]
    for first, step, count in ((2, 0, 2), (1, 1, 1), (1, 1, 10), (1, 1, 10000), (-50, 1, 50), (3, -2, 7), (1, 2, 1000),
                               (2**62, 12345, 15), (-(2**63), 1, 3), (-5, 2, 6)):
        total = [Fraction(1, first + i * step) for i in range(count)]
        while len(total) > 1:
            total = [sum(total[i : i + 2]) for i in range(0, len(total), 2)]
        lines.append(f"{first},{step},{count},{cells(total[0])}")
    return lines


def main():
    for name, lines in (("fraction_operations", operations()), ("fraction_powers", powers()), ("fraction_sums", sums())):
        rows.save(f"highprecision/{name}", list(lines), f"Python {platform.python_version()}")


main()
