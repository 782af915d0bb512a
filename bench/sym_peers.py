#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Times SymEngine (through its Python package, one call a task) and SymPy on the tasks of sym_bench.cpp.

usage: sym_peers.py

Only what runs inside the library is measured: the terms are there before the clock starts. Best of several runs,
processor time in microseconds. SymPy takes part where it ends in a few seconds.
"""
import time

import numpy as np
import symengine
import sympy
from symengine import printing

TERMS, VARIABLES, BLOCKS, SIZE, DERIVATIVES, WAVES, ORDER = 1000, 50, 16, 6, 8, 125, 12


def best(run, rounds):
    times = []
    for _ in range(rounds):
        start = time.process_time()
        run()
        times.append(time.process_time() - start)
    return min(times) * 1e6


def tree(lib, x):
    return sum(lib.sin(k * x[0] + 1) * lib.exp(-1.0 / k * x[1]**2) + lib.cos(x[0] * x[1]) / (k + x[0]**2)
               for k in range(1, BLOCKS + 1))


def derivatives(lib, x):
    f = lib.sin(x) * lib.exp(x**2) / (1 + x**2)
    for _ in range(DERIVATIVES):
        f = f.diff(x)
    return f


def many_waves(lib, x):
    return lib.Add(*[lib.sin(x[k % 10] + k) * lib.exp(k * x[k % 7]) / x[k % 10]**2 for k in range(1, WAVES + 1)])


def main():
    x = [symengine.Symbol(f"x{i}") for i in range(VARIABLES)]
    terms = [(i % 7 + 1) * x[i % VARIABLES]**(1 + i % 3) * x[(7 * i + 3) % VARIABLES] for i in range(TERMS)]
    factors = [symengine.sin(x[3 * i % VARIABLES]) if i % 2 else x[i % VARIABLES]**(1 + i % 3) for i in range(TERMS)]
    print(f"sum {best(lambda: symengine.Add(*terms), 20):.1f}")
    print(f"product {best(lambda: symengine.Mul(*factors), 20):.1f}")
    count = 100000
    points = np.column_stack([0.3 + 1e-9 * np.arange(count), np.full(count, 0.7)])
    for backend in ("lambda", "llvm"):
        call = symengine.Lambdify(x[:2], [tree(symengine, x)], cse=False, backend=backend)
        print(f"evaluate, {backend} {best(lambda: call(points), 3) / count:.3f}")
    value = float(derivatives(symengine, x[0]).subs({x[0]: 0.75}))
    print(f"eight derivatives {best(lambda: derivatives(symengine, x[0]), 100):.0f} (value {value:.3f})")
    printing.init_printing()  # else _repr_latex_ does nothing
    waves = many_waves(symengine, x)
    print(f"latex {best(waves._repr_latex_, 20):.0f} ({len(waves._repr_latex_())} bytes)")
    wave = symengine.exp(symengine.sin(x[0]))
    print(f"taylor {best(lambda: symengine.series(wave, x[0], 0, ORDER + 1), 3):.0f}")
    m = symengine.Matrix(SIZE, SIZE, [symengine.Symbol(f"a{i}") for i in range(SIZE * SIZE)])
    print(f"determinant {best(m.det, 5):.0f}\ninverse {best(m.inv, 3):.0f}")
    y = sympy.symbols(f"x:{VARIABLES}")
    uncached = lambda: (sympy.core.cache.clear_cache(), derivatives(sympy, y[0]))
    print(f"SymPy: eight derivatives {best(uncached, 3):.0f}, latex {best(lambda: sympy.latex(many_waves(sympy, y)), 3):.0f}")


main()
