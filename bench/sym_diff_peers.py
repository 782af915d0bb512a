#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Times SymEngine (through its Python package) and SymPy on the tasks of sym_diff_bench.cpp.

usage: sym_diff_peers.py

Best of several runs, processor time in microseconds; the loop in Python is lost in it.
"""
import time

import symengine
import sympy
from symengine import printing

ORDERS, TERMS = 8, 125


def best(run, rounds):
    times = []
    for _ in range(rounds):
        start = time.process_time()
        run()
        times.append(time.process_time() - start)
    return min(times) * 1e6


def derivatives(lib, x):
    f = lib.sin(x) * lib.exp(x ** 2) / (1 + x ** 2)
    for _ in range(ORDERS):
        f = f.diff(x)
    return f


def big_sum(lib):
    x = [lib.Symbol(f"x{i}") for i in range(10)]
    return lib.Add(*[lib.sin(x[k % 10] + k) * lib.exp(k * x[k % 7]) / x[k % 10] ** 2 for k in range(1, TERMS + 1)])


def main():
    x = symengine.Symbol("x")
    value = float(derivatives(symengine, x).subs({x: 0.75}))
    print(f"symengine eight derivatives {best(lambda: derivatives(symengine, x), 100):.0f} (value {value:.3f})")
    sympy_x = sympy.Symbol("x")
    uncached = lambda: (sympy.core.cache.clear_cache(), derivatives(sympy, sympy_x))
    print(f"sympy eight derivatives {best(uncached, 3):.0f}")
    printing.init_printing()  # else _repr_latex_ does nothing
    total = big_sum(symengine)
    print(f"symengine latex {best(total._repr_latex_, 20):.0f} ({len(total._repr_latex_())} bytes)")
    sympy_total = big_sum(sympy)
    print(f"sympy latex {best(lambda: sympy.latex(sympy_total), 3):.0f}")


main()
