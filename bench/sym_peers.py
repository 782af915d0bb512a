#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Times SymEngine (through its Python package, one call a task) on the tasks of sym_bench.cpp.

usage: sym_peers.py

Only what runs inside SymEngine is measured: the terms are there before the clock starts. Best of several runs,
processor time in microseconds.
"""
import time

import numpy as np
import symengine as se

TERMS, VARIABLES, BLOCKS, SIZE = 1000, 50, 16, 6
X = se.symbols(" ".join(f"x{i}" for i in range(VARIABLES)))


def best(run, rounds=20):
    times = []
    for _ in range(rounds):
        start = time.process_time()
        run()
        times.append(time.process_time() - start)
    return min(times) * 1e6


def tree():
    x, y = X[0], X[1]
    total = 0
    for k in range(1, BLOCKS + 1):
        total += se.sin(k * x + 1) * se.exp(-1.0 / k * y**2) + se.cos(x * y) / (k + x**2)
    return total


def main():
    terms = [(i % 7 + 1) * X[i % VARIABLES] ** (1 + i % 3) * X[(7 * i + 3) % VARIABLES] for i in range(TERMS)]
    factors = [se.sin(X[3 * i % VARIABLES]) if i % 2 else X[i % VARIABLES] ** (1 + i % 3) for i in range(TERMS)]
    print(f"sum {best(lambda: se.Add(*terms)):.1f}")
    print(f"product {best(lambda: se.Mul(*factors)):.1f}")
    count = 100000
    points = np.column_stack([0.3 + 1e-9 * np.arange(count), np.full(count, 0.7)])
    for backend in ("lambda", "llvm"):
        call = se.Lambdify([X[0], X[1]], [tree()], cse=False, backend=backend)
        print(f"evaluate, {backend} {best(lambda: call(points), 3) / count:.3f}")
    wave = se.exp(se.sin(X[0]))
    print(f"taylor {best(lambda: se.series(wave, X[0], 0, 13), 3):.0f}")
    m = se.Matrix(SIZE, SIZE, [se.Symbol(f"a{i}{j}") for i in range(SIZE) for j in range(SIZE)])
    print(f"determinant {best(lambda: m.det(), 5):.0f}")
    print(f"inverse {best(lambda: m.inv(), 3):.0f}")


main()
